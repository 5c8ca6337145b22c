/* Transforms. Submitted in a pass, a transform multiplies the local-to-world
 * matrix on the left: the last one submitted acts first on a point. */
#ifndef QD3D_TRANSFORM_H
#define QD3D_TRANSFORM_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct TQ3RotateTransformData {
    TQ3Axis axis;
    float radians;
} TQ3RotateTransformData;

typedef struct TQ3RotateAboutPointTransformData {
    TQ3Axis axis;
    float radians;
    TQ3Point3D about;
} TQ3RotateAboutPointTransformData;

typedef struct TQ3RotateAboutAxisTransformData {
    TQ3Point3D origin;
    TQ3Vector3D orientation;
    float radians;
} TQ3RotateAboutAxisTransformData;

TQ3ObjectType Q3Transform_GetType(TQ3TransformObject transform);
TQ3Status Q3Transform_GetMatrix(TQ3TransformObject transform, TQ3Matrix4x4* matrix);
TQ3Status Q3Transform_Submit(TQ3TransformObject transform, TQ3ViewObject view);

TQ3TransformObject Q3MatrixTransform_New(const TQ3Matrix4x4* matrix);
TQ3Status Q3MatrixTransform_Set(TQ3TransformObject transform, const TQ3Matrix4x4* matrix);
TQ3Status Q3MatrixTransform_Get(TQ3TransformObject transform, TQ3Matrix4x4* matrix);
TQ3Status Q3MatrixTransform_Submit(const TQ3Matrix4x4* matrix, TQ3ViewObject view);

TQ3TransformObject Q3TranslateTransform_New(const TQ3Vector3D* translate);
TQ3Status Q3TranslateTransform_Set(TQ3TransformObject transform, const TQ3Vector3D* translate);
TQ3Status Q3TranslateTransform_Get(TQ3TransformObject transform, TQ3Vector3D* translate);
TQ3Status Q3TranslateTransform_Submit(const TQ3Vector3D* translate, TQ3ViewObject view);

TQ3TransformObject Q3ScaleTransform_New(const TQ3Vector3D* scale);
TQ3Status Q3ScaleTransform_Set(TQ3TransformObject transform, const TQ3Vector3D* scale);
TQ3Status Q3ScaleTransform_Get(TQ3TransformObject transform, TQ3Vector3D* scale);
TQ3Status Q3ScaleTransform_Submit(const TQ3Vector3D* scale, TQ3ViewObject view);

TQ3TransformObject Q3RotateTransform_New(const TQ3RotateTransformData* data);
TQ3Status Q3RotateTransform_SetData(TQ3TransformObject transform,
                                    const TQ3RotateTransformData* data);
TQ3Status Q3RotateTransform_GetData(TQ3TransformObject transform, TQ3RotateTransformData* data);
TQ3Status Q3RotateTransform_SetAxis(TQ3TransformObject transform, TQ3Axis axis);
TQ3Status Q3RotateTransform_GetAxis(TQ3TransformObject transform, TQ3Axis* axis);
TQ3Status Q3RotateTransform_SetAngle(TQ3TransformObject transform, float radians);
TQ3Status Q3RotateTransform_GetAngle(TQ3TransformObject transform, float* radians);
TQ3Status Q3RotateTransform_Submit(const TQ3RotateTransformData* data, TQ3ViewObject view);

TQ3TransformObject Q3RotateAboutPointTransform_New(const TQ3RotateAboutPointTransformData* data);
TQ3Status Q3RotateAboutPointTransform_SetData(TQ3TransformObject transform,
                                              const TQ3RotateAboutPointTransformData* data);
TQ3Status Q3RotateAboutPointTransform_GetData(TQ3TransformObject transform,
                                              TQ3RotateAboutPointTransformData* data);
TQ3Status Q3RotateAboutPointTransform_SetAxis(TQ3TransformObject transform, TQ3Axis axis);
TQ3Status Q3RotateAboutPointTransform_GetAxis(TQ3TransformObject transform, TQ3Axis* axis);
TQ3Status Q3RotateAboutPointTransform_SetAngle(TQ3TransformObject transform, float radians);
TQ3Status Q3RotateAboutPointTransform_GetAngle(TQ3TransformObject transform, float* radians);
TQ3Status Q3RotateAboutPointTransform_SetAboutPoint(TQ3TransformObject transform,
                                                    const TQ3Point3D* about);
TQ3Status Q3RotateAboutPointTransform_GetAboutPoint(TQ3TransformObject transform,
                                                    TQ3Point3D* about);

TQ3TransformObject Q3RotateAboutAxisTransform_New(const TQ3RotateAboutAxisTransformData* data);
TQ3Status Q3RotateAboutAxisTransform_SetData(TQ3TransformObject transform,
                                             const TQ3RotateAboutAxisTransformData* data);
TQ3Status Q3RotateAboutAxisTransform_GetData(TQ3TransformObject transform,
                                             TQ3RotateAboutAxisTransformData* data);
TQ3Status Q3RotateAboutAxisTransform_SetOrigin(TQ3TransformObject transform,
                                               const TQ3Point3D* origin);
TQ3Status Q3RotateAboutAxisTransform_GetOrigin(TQ3TransformObject transform, TQ3Point3D* origin);
TQ3Status Q3RotateAboutAxisTransform_SetOrientation(TQ3TransformObject transform,
                                                    const TQ3Vector3D* axis);
TQ3Status Q3RotateAboutAxisTransform_GetOrientation(TQ3TransformObject transform,
                                                    TQ3Vector3D* axis);
TQ3Status Q3RotateAboutAxisTransform_SetAngle(TQ3TransformObject transform, float radians);
TQ3Status Q3RotateAboutAxisTransform_GetAngle(TQ3TransformObject transform, float* radians);

TQ3TransformObject Q3QuaternionTransform_New(const TQ3Quaternion* quaternion);
TQ3Status Q3QuaternionTransform_Set(TQ3TransformObject transform, const TQ3Quaternion* quaternion);
TQ3Status Q3QuaternionTransform_Get(TQ3TransformObject transform, TQ3Quaternion* quaternion);
TQ3Status Q3QuaternionTransform_Submit(const TQ3Quaternion* quaternion, TQ3ViewObject view);

#ifdef __cplusplus
}
#endif

#endif
