/* Views and their passes. A pass is opened with a Start call, objects are
 * submitted, and the matching End call answers a view status: with
 * kQ3ViewStatusRetraverse the caller submits the same objects again and ends
 * again. */
#ifndef QD3D_VIEW_H
#define QD3D_VIEW_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3ViewStatus {
    kQ3ViewStatusDone = 0,
    kQ3ViewStatusRetraverse = 1,
    kQ3ViewStatusError = 2,
    kQ3ViewStatusCancelled = 3
} TQ3ViewStatus;

typedef enum TQ3ComputeBounds {
    kQ3ComputeBoundsExact = 0,
    kQ3ComputeBoundsApproximate = 1
} TQ3ComputeBounds;

/* Called during a long rendering pass with the units of work done so far
 * (current) of all (completed); answering kQ3Failure stops the pass, which
 * then ends with kQ3ViewStatusCancelled. idlerData is what the method was set
 * with. */
typedef TQ3Status (*TQ3ViewIdleProgressMethod)(TQ3ViewObject view, const void* idlerData,
                                               TQ3Uns32 current, TQ3Uns32 completed);

TQ3ViewObject Q3View_New(void);
/* The camera, light group, draw context and renderer are held with a
 * reference of the view's own; the getters hand out new references. */
TQ3Status Q3View_SetCamera(TQ3ViewObject view, TQ3CameraObject camera);
TQ3Status Q3View_GetCamera(TQ3ViewObject view, TQ3CameraObject* camera);
TQ3Status Q3View_SetLightGroup(TQ3ViewObject view, TQ3GroupObject lightGroup);
TQ3Status Q3View_GetLightGroup(TQ3ViewObject view, TQ3GroupObject* lightGroup);
TQ3Status Q3View_SetDrawContext(TQ3ViewObject view, TQ3DrawContextObject drawContext);
TQ3Status Q3View_GetDrawContext(TQ3ViewObject view, TQ3DrawContextObject* drawContext);
TQ3Status Q3View_SetRenderer(TQ3ViewObject view, TQ3RendererObject renderer);
TQ3Status Q3View_SetRendererByType(TQ3ViewObject view, TQ3ObjectType theType);
TQ3Status Q3View_GetRenderer(TQ3ViewObject view, TQ3RendererObject* renderer);
TQ3Status Q3View_SetIdleProgressMethod(TQ3ViewObject view, TQ3ViewIdleProgressMethod method,
                                       const void* idlerData);

TQ3Status Q3View_StartRendering(TQ3ViewObject view);
TQ3ViewStatus Q3View_EndRendering(TQ3ViewObject view);
TQ3Status Q3View_Flush(TQ3ViewObject view);
TQ3Status Q3View_Sync(TQ3ViewObject view);
TQ3Status Q3View_Cancel(TQ3ViewObject view);

TQ3Status Q3View_StartPicking(TQ3ViewObject view, TQ3PickObject pick);
TQ3ViewStatus Q3View_EndPicking(TQ3ViewObject view);

/* Bounds are in world coordinates. The sphere pass takes two traversals. */
TQ3Status Q3View_StartBoundingBox(TQ3ViewObject view, TQ3ComputeBounds computeBounds);
TQ3ViewStatus Q3View_EndBoundingBox(TQ3ViewObject view, TQ3BoundingBox* result);
TQ3Status Q3View_StartBoundingSphere(TQ3ViewObject view, TQ3ComputeBounds computeBounds);
TQ3ViewStatus Q3View_EndBoundingSphere(TQ3ViewObject view, TQ3BoundingSphere* result);

/* Matrices of the present pass; outside a pass these fail. */
TQ3Status Q3View_GetLocalToWorldMatrixState(TQ3ViewObject view, TQ3Matrix4x4* matrix);
TQ3Status Q3View_GetWorldToFrustumMatrixState(TQ3ViewObject view, TQ3Matrix4x4* matrix);
TQ3Status Q3View_GetFrustumToWindowMatrixState(TQ3ViewObject view, TQ3Matrix4x4* matrix);

/* Extension: an element's traverse method may write data in a writing pass;
 * there is no writing pass here, so the call only checks the view. */
TQ3Status Q3XView_SubmitWriteData(TQ3ViewObject view, TQ3Uns32 size, void* data,
                                  void (*deleteData)(void*));

#ifdef __cplusplus
}
#endif

#endif
