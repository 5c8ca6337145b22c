/* The interface through which a library adds a renderer class.
 *
 * During a rendering pass the view walks what is submitted, keeps the
 * transforms, styles, shaders and attribute inheritance, and hands the
 * renderer finished primitives in world coordinates: triangle batches with
 * every vertex's attributes resolved, lines, points and markers. Before the
 * first primitive of each traversal the renderer gets the camera, the
 * matrices, the lights in world coordinates and the draw context's pixmap.
 * A renderer that wants the scene twice answers kQ3ViewStatusRetraverse from
 * endPass; a ray tracer collects everything in the submit methods and
 * renders in endPass. */
#ifndef QD3D_RENDEREREXTENSION_H
#define QD3D_RENDEREREXTENSION_H

#include "platform/qd3d/QD3DCamera.h"
#include "platform/qd3d/QD3DDrawContext.h"
#include "platform/qd3d/QD3DLight.h"
#include "platform/qd3d/QD3DRenderer.h"
#include "platform/qd3d/QD3DShader.h"
#include "platform/qd3d/QD3DStyle.h"
#include "platform/qd3d/QD3DView.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Defaults of attributes that nothing sets. */
#define kQ3DefaultDiffuseColor 1.0f    /* white */
#define kQ3DefaultSpecularColor 0.5f   /* grey */
#define kQ3DefaultSpecularControl 8.0f /* Phong exponent */
#define kQ3DefaultAmbientCoefficient 1.0f

/* A light of the pass, in world coordinates; direction is normalised and is
 * the way the light travels. Fields that a type lacks are zero. */
typedef struct TQ3XLight {
    TQ3ObjectType type;
    float brightness;
    TQ3ColorRGB color;
    TQ3Point3D location;
    TQ3Vector3D direction;
    TQ3AttenuationType attenuation;
    float hotAngle;
    float outerAngle;
    TQ3FallOffType fallOff;
    TQ3Boolean castsShadows;
} TQ3XLight;

typedef struct TQ3XPassInfo {
    TQ3Uns32 passIndex; /* 0 for the first traversal of a frame */
    TQ3ObjectType cameraType;
    TQ3CameraData camera;
    TQ3Matrix4x4 worldToView;
    TQ3Matrix4x4 viewToFrustum;
    TQ3Matrix4x4 frustumToWindow;
    TQ3Matrix4x4 worldToWindow; /* worldToView * viewToFrustum * frustumToWindow */
    TQ3Uns32 numLights;         /* lights that are on */
    const TQ3XLight* lights;
    TQ3DrawContextData drawContext;
    TQ3Pixmap pixmap; /* target; image is NULL when the view has no pixmap */
    TQ3Area window;   /* the pixels drawn: the pane, or the whole pixmap */
} TQ3XPassInfo;

enum {
    kQ3XVertexHasNormal = 1 << 0, /* else the face normal was filled in */
    kQ3XVertexHasUV = 1 << 1
};

/* One vertex with its attributes resolved: vertex over face over geometry
 * over what the groups set. Colours are not lit. */
typedef struct TQ3XVertex {
    TQ3Point3D point;   /* world */
    TQ3Vector3D normal; /* world, unit length, facing the front side */
    TQ3Param2D uv;
    TQ3ColorRGB diffuse;
    TQ3ColorRGB transparency; /* 1: opaque */
    TQ3ColorRGB specular;
    float specularControl;
    float ambientCoefficient;
    TQ3Uns32 flags;
} TQ3XVertex;

/* The state of styles and shaders that a primitive is drawn with. */
typedef struct TQ3XDrawState {
    TQ3ObjectType illumination; /* kQ3IlluminationTypePhong, ...Lambert, ...NULL */
    TQ3InterpolationStyle interpolation;
    TQ3BackfacingStyle backfacing;
    TQ3FillStyle fill;
    TQ3OrientationStyle orientation;
    TQ3Boolean receiveShadows;
    TQ3SubdivisionStyleData subdivision;
    TQ3Uns32 pickID;
    TQ3TextureObject texture; /* of the texture shader in force, or NULL */
    TQ3ShaderUVBoundary uBoundary, vBoundary;
    TQ3Matrix4x4 localToWorld;
} TQ3XDrawState;

/* Triangles with shared vertices. faceNormals are in world coordinates and
 * follow the orientation style. edgeFlags: bit i set when the edge from
 * corner i to corner i + 1 lies on the outline of the submitted geometry. */
typedef struct TQ3XTriangleBatch {
    TQ3GeometryObject geometry;
    const TQ3XDrawState* state;
    TQ3Uns32 numVertices;
    const TQ3XVertex* vertices;
    TQ3Uns32 numTriangles;
    const TQ3Uns32* indices; /* 3 per triangle */
    const TQ3Vector3D* faceNormals;
    const TQ3Uns8* edgeFlags;
} TQ3XTriangleBatch;

/* Segments: vertices 2i and 2i + 1. */
typedef struct TQ3XLineBatch {
    TQ3GeometryObject geometry;
    const TQ3XDrawState* state;
    TQ3Uns32 numSegments;
    const TQ3XVertex* vertices;
} TQ3XLineBatch;

typedef struct TQ3XPointBatch {
    TQ3GeometryObject geometry;
    const TQ3XDrawState* state;
    TQ3Uns32 numPoints;
    const TQ3XVertex* vertices;
} TQ3XPointBatch;

typedef struct TQ3XMarker {
    TQ3GeometryObject geometry;
    const TQ3XDrawState* state;
    TQ3XVertex location;
    TQ3Int32 xOffset, yOffset;
    const TQ3Bitmap* bitmap;
} TQ3XMarker;

/* A renderer class's methods. instance is what newInstance answered. Any
 * method may be NULL; startPass and the submit methods answer kQ3Failure to
 * stop the pass with an error. */
typedef struct TQ3XRendererMethods {
    void* (*newInstance)(void);
    void (*deleteInstance)(void* instance);
    TQ3Boolean isInteractive;
    TQ3Status (*startPass)(void* instance, TQ3ViewObject view, const TQ3XPassInfo* pass);
    TQ3Status (*submitTriangles)(void* instance, const TQ3XTriangleBatch* batch);
    TQ3Status (*submitLines)(void* instance, const TQ3XLineBatch* batch);
    TQ3Status (*submitPoints)(void* instance, const TQ3XPointBatch* batch);
    TQ3Status (*submitMarker)(void* instance, const TQ3XMarker* marker);
    TQ3ViewStatus (*endPass)(void* instance, TQ3ViewObject view);
    /* called when a pass is abandoned (error or cancel) */
    void (*cancelPass)(void* instance);
    TQ3Status (*modalConfigure)(void* instance, TQ3DialogAnchor anchor, TQ3Boolean* canceled);
} TQ3XRendererMethods;

/* Registers a renderer class below 'rddr'. type is the class's four-character
 * type, or 0 for a new negative one; the type is stored in *outType. The
 * methods are copied. NULL if the name or type is taken. */
TQ3XObjectClass Q3XRendererClass_Register(TQ3ObjectType type, const char* className,
                                          const char* nickName, const TQ3XRendererMethods* methods,
                                          TQ3ObjectType* outType);
/* The instance data of a renderer object of a registered class. */
void* Q3XRenderer_GetInstance(TQ3RendererObject renderer);

/* Tells the view's idle progress method how far a long pass has come:
 * current of completed units of work. A renderer calls it now and then from
 * the thread that ends the pass, never from a worker. Answers kQ3Failure when
 * the method asks to stop; the renderer then gives up the picture and its
 * endPass answers kQ3ViewStatusCancelled. With no method set it answers
 * kQ3Success. */
TQ3Status Q3XView_IdleProgress(TQ3ViewObject view, TQ3Uns32 current, TQ3Uns32 completed);

/* Reads a pixel of a pixmap texture at (u, v) with bilinear filtering and
 * the boundary modes; answers opaque white for a NULL texture. Worker
 * threads of a renderer may call it while the pass waits in endPass; no
 * other call of the library is safe from another thread. */
TQ3Status Q3XTexture_Sample(TQ3TextureObject texture, float u, float v,
                            TQ3ShaderUVBoundary uBoundary, TQ3ShaderUVBoundary vBoundary,
                            TQ3ColorARGB* color);

#ifdef __cplusplus
}
#endif

#endif
