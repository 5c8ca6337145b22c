/* Shaders: illumination (Phong, Lambert, none) and the texture shader over
 * a pixmap texture. */
#ifndef QD3D_SHADER_H
#define QD3D_SHADER_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3ShaderUVBoundary {
    kQ3ShaderUVBoundaryWrap = 0,
    kQ3ShaderUVBoundaryClamp = 1
} TQ3ShaderUVBoundary;

TQ3ObjectType Q3Shader_GetType(TQ3ShaderObject shader);
TQ3Status Q3Shader_Submit(TQ3ShaderObject shader, TQ3ViewObject view);
TQ3Status Q3Shader_SetUBoundary(TQ3ShaderObject shader, TQ3ShaderUVBoundary uBoundary);
TQ3Status Q3Shader_SetVBoundary(TQ3ShaderObject shader, TQ3ShaderUVBoundary vBoundary);
TQ3Status Q3Shader_GetUBoundary(TQ3ShaderObject shader, TQ3ShaderUVBoundary* uBoundary);
TQ3Status Q3Shader_GetVBoundary(TQ3ShaderObject shader, TQ3ShaderUVBoundary* vBoundary);

TQ3ShaderObject Q3PhongIllumination_New(void);
TQ3ShaderObject Q3LambertIllumination_New(void);
TQ3ShaderObject Q3NULLIllumination_New(void);
TQ3ObjectType Q3IlluminationShader_GetType(TQ3ShaderObject shader);

/* The shader holds a reference of its own to its texture; _GetTexture hands
 * out a new one. */
TQ3ShaderObject Q3TextureShader_New(TQ3TextureObject texture);
TQ3Status Q3TextureShader_GetTexture(TQ3ShaderObject shader, TQ3TextureObject* texture);
TQ3Status Q3TextureShader_SetTexture(TQ3ShaderObject shader, TQ3TextureObject texture);

/* A pixmap texture keeps a reference to the storage of its pixels; rows run
 * from the top, v = 0 at the bottom row. Pixels are 32-bit words. */
TQ3TextureObject Q3PixmapTexture_New(const TQ3StoragePixmap* pixmap);
TQ3Status Q3PixmapTexture_GetPixmap(TQ3TextureObject texture, TQ3StoragePixmap* pixmap);
TQ3Status Q3PixmapTexture_SetPixmap(TQ3TextureObject texture, const TQ3StoragePixmap* pixmap);
TQ3Status Q3Texture_GetWidth(TQ3TextureObject texture, TQ3Uns32* width);
TQ3Status Q3Texture_GetHeight(TQ3TextureObject texture, TQ3Uns32* height);

#ifdef __cplusplus
}
#endif

#endif
