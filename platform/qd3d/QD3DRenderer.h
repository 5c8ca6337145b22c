/* Renderers. Every renderer class stands below 'rddr' in the class
 * hierarchy with a nick name for menus. The library registers the generic
 * renderer 'gnrr' (draws nothing) and the interactive renderer 'ctwn' (a
 * z-buffer rasteriser); another library adds its own with
 * Q3XRendererClass_Register (QD3DRendererExtension.h). */
#ifndef QD3D_RENDERER_H
#define QD3D_RENDERER_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void* TQ3DialogAnchor;
typedef TQ3Int32 TQ3RaveVendorID;
typedef TQ3Int32 TQ3RaveEngineID;

TQ3RendererObject Q3Renderer_NewFromType(TQ3ObjectType rendererObjectType);
TQ3ObjectType Q3Renderer_GetType(TQ3RendererObject renderer);
TQ3Boolean Q3Renderer_IsInteractive(TQ3RendererObject renderer);
TQ3Boolean Q3Renderer_HasModalConfigure(TQ3RendererObject renderer);
TQ3Status Q3Renderer_ModalConfigure(TQ3RendererObject renderer, TQ3DialogAnchor dialogAnchor,
                                    TQ3Boolean* canceled);
TQ3Status Q3RendererClass_GetNickNameString(TQ3ObjectType rendererClassType,
                                            TQ3ObjectClassNameString rendererClassString);

TQ3Status Q3InteractiveRenderer_SetDoubleBufferBypass(TQ3RendererObject renderer,
                                                      TQ3Boolean bypass);
TQ3Status Q3InteractiveRenderer_GetDoubleBufferBypass(TQ3RendererObject renderer,
                                                      TQ3Boolean* bypass);
TQ3Status Q3InteractiveRenderer_SetPreferences(TQ3RendererObject renderer, TQ3RaveVendorID vendorID,
                                               TQ3RaveEngineID engineID);
TQ3Status Q3InteractiveRenderer_GetPreferences(TQ3RendererObject renderer,
                                               TQ3RaveVendorID* vendorID,
                                               TQ3RaveEngineID* engineID);

#ifdef __cplusplus
}
#endif

#endif
