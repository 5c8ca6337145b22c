/* Cameras. View space has the camera at its origin looking down -z with y
 * up. Frustum space has x and y in [-1, 1] over the camera's view and z from
 * 0 at the hither plane to -1 at the yon plane. The view port picks the part
 * of frustum space that fills the window; by default all of it. */
#ifndef QD3D_CAMERA_H
#define QD3D_CAMERA_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct TQ3CameraPlacement {
    TQ3Point3D cameraLocation;
    TQ3Point3D pointOfInterest;
    TQ3Vector3D upVector;
} TQ3CameraPlacement;

typedef struct TQ3CameraRange {
    float hither;
    float yon;
} TQ3CameraRange;

typedef struct TQ3CameraViewPort {
    TQ3Point2D origin; /* upper left corner in frustum x, y */
    float width;
    float height;
} TQ3CameraViewPort;

typedef struct TQ3CameraData {
    TQ3CameraPlacement placement;
    TQ3CameraRange range;
    TQ3CameraViewPort viewPort;
} TQ3CameraData;

/* fov is the full vertical angle in radians; the horizontal half angle has
 * the tangent tan(fov / 2) * aspectRatioXToY. */
typedef struct TQ3ViewAngleAspectCameraData {
    TQ3CameraData cameraData;
    float fov;
    float aspectRatioXToY;
} TQ3ViewAngleAspectCameraData;

typedef struct TQ3OrthographicCameraData {
    TQ3CameraData cameraData;
    float left, top, right, bottom;
} TQ3OrthographicCameraData;

typedef struct TQ3ViewPlaneCameraData {
    TQ3CameraData cameraData;
    float viewPlane;
    float halfWidthAtViewPlane;
    float halfHeightAtViewPlane;
    float centerXOnViewPlane;
    float centerYOnViewPlane;
} TQ3ViewPlaneCameraData;

TQ3ObjectType Q3Camera_GetType(TQ3CameraObject camera);
TQ3Status Q3Camera_SetData(TQ3CameraObject camera, const TQ3CameraData* cameraData);
TQ3Status Q3Camera_GetData(TQ3CameraObject camera, TQ3CameraData* cameraData);
TQ3Status Q3Camera_SetPlacement(TQ3CameraObject camera, const TQ3CameraPlacement* placement);
TQ3Status Q3Camera_GetPlacement(TQ3CameraObject camera, TQ3CameraPlacement* placement);
TQ3Status Q3Camera_SetRange(TQ3CameraObject camera, const TQ3CameraRange* range);
TQ3Status Q3Camera_GetRange(TQ3CameraObject camera, TQ3CameraRange* range);
TQ3Status Q3Camera_SetViewPort(TQ3CameraObject camera, const TQ3CameraViewPort* viewPort);
TQ3Status Q3Camera_GetViewPort(TQ3CameraObject camera, TQ3CameraViewPort* viewPort);
TQ3Status Q3Camera_GetWorldToView(TQ3CameraObject camera, TQ3Matrix4x4* worldToView);
TQ3Status Q3Camera_GetWorldToFrustum(TQ3CameraObject camera, TQ3Matrix4x4* worldToFrustum);
TQ3Status Q3Camera_GetViewToFrustum(TQ3CameraObject camera, TQ3Matrix4x4* viewToFrustum);

TQ3CameraObject Q3ViewAngleAspectCamera_New(const TQ3ViewAngleAspectCameraData* data);
TQ3Status Q3ViewAngleAspectCamera_SetData(TQ3CameraObject camera,
                                          const TQ3ViewAngleAspectCameraData* data);
TQ3Status Q3ViewAngleAspectCamera_GetData(TQ3CameraObject camera,
                                          TQ3ViewAngleAspectCameraData* data);
TQ3Status Q3ViewAngleAspectCamera_SetFOV(TQ3CameraObject camera, float fov);
TQ3Status Q3ViewAngleAspectCamera_GetFOV(TQ3CameraObject camera, float* fov);
TQ3Status Q3ViewAngleAspectCamera_SetAspectRatio(TQ3CameraObject camera, float aspectRatioXToY);
TQ3Status Q3ViewAngleAspectCamera_GetAspectRatio(TQ3CameraObject camera, float* aspectRatioXToY);

TQ3CameraObject Q3OrthographicCamera_New(const TQ3OrthographicCameraData* data);
TQ3Status Q3OrthographicCamera_SetData(TQ3CameraObject camera,
                                       const TQ3OrthographicCameraData* data);
TQ3Status Q3OrthographicCamera_GetData(TQ3CameraObject camera, TQ3OrthographicCameraData* data);

TQ3CameraObject Q3ViewPlaneCamera_New(const TQ3ViewPlaneCameraData* data);
TQ3Status Q3ViewPlaneCamera_SetData(TQ3CameraObject camera, const TQ3ViewPlaneCameraData* data);
TQ3Status Q3ViewPlaneCamera_GetData(TQ3CameraObject camera, TQ3ViewPlaneCameraData* data);

#ifdef __cplusplus
}
#endif

#endif
