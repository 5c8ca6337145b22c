/* Vectors, points, matrices (row vectors: p' = p * M) and quaternions.
 * Each call answers its result pointer. */
#ifndef QD3D_MATH_H
#define QD3D_MATH_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

TQ3Point2D* Q3Point2D_Set(TQ3Point2D* point2D, float x, float y);
TQ3Point3D* Q3Point3D_Set(TQ3Point3D* point3D, float x, float y, float z);
TQ3Vector3D* Q3Vector3D_Set(TQ3Vector3D* vector3D, float x, float y, float z);
TQ3Point2D* Q3PolarPoint_ToPoint2D(const TQ3PolarPoint* polarPoint, TQ3Point2D* result);
TQ3PolarPoint* Q3Point2D_ToPolar(const TQ3Point2D* point2D, TQ3PolarPoint* result);

float Q3Vector3D_Length(const TQ3Vector3D* vector3D);
float Q3Vector3D_Dot(const TQ3Vector3D* v1, const TQ3Vector3D* v2);
TQ3Vector3D* Q3Vector3D_Cross(const TQ3Vector3D* v1, const TQ3Vector3D* v2, TQ3Vector3D* result);
TQ3Vector3D* Q3Vector3D_Normalize(const TQ3Vector3D* vector3D, TQ3Vector3D* result);
TQ3Vector3D* Q3Vector3D_Add(const TQ3Vector3D* v1, const TQ3Vector3D* v2, TQ3Vector3D* result);
TQ3Vector3D* Q3Vector3D_Subtract(const TQ3Vector3D* v1, const TQ3Vector3D* v2, TQ3Vector3D* result);
TQ3Vector3D* Q3Vector3D_Scale(const TQ3Vector3D* vector3D, float scalar, TQ3Vector3D* result);
TQ3Vector3D* Q3Vector3D_Negate(const TQ3Vector3D* vector3D, TQ3Vector3D* result);
/* Directions ignore the translation row. */
TQ3Vector3D* Q3Vector3D_Transform(const TQ3Vector3D* vector3D, const TQ3Matrix4x4* matrix4x4,
                                  TQ3Vector3D* result);
TQ3Vector3D* Q3Point3D_Subtract(const TQ3Point3D* p1, const TQ3Point3D* p2, TQ3Vector3D* result);
TQ3Point3D* Q3Point3D_Vector3D_Add(const TQ3Point3D* point3D, const TQ3Vector3D* vector3D,
                                   TQ3Point3D* result);
float Q3Point3D_Distance(const TQ3Point3D* p1, const TQ3Point3D* p2);
/* Points divide by w afterwards. */
TQ3Point3D* Q3Point3D_Transform(const TQ3Point3D* point3D, const TQ3Matrix4x4* matrix4x4,
                                TQ3Point3D* result);
TQ3RationalPoint4D* Q3RationalPoint4D_Transform(const TQ3RationalPoint4D* point4D,
                                                const TQ3Matrix4x4* matrix4x4,
                                                TQ3RationalPoint4D* result);

TQ3Matrix4x4* Q3Matrix4x4_SetIdentity(TQ3Matrix4x4* matrix4x4);
TQ3Matrix4x4* Q3Matrix4x4_Copy(const TQ3Matrix4x4* matrix4x4, TQ3Matrix4x4* result);
TQ3Matrix4x4* Q3Matrix4x4_Transpose(const TQ3Matrix4x4* matrix4x4, TQ3Matrix4x4* result);
/* result = m1 * m2: m1 acts first on a row vector. */
TQ3Matrix4x4* Q3Matrix4x4_Multiply(const TQ3Matrix4x4* m1, const TQ3Matrix4x4* m2,
                                   TQ3Matrix4x4* result);
/* A singular matrix leaves result unchanged and posts an error; NULL then. */
TQ3Matrix4x4* Q3Matrix4x4_Invert(const TQ3Matrix4x4* matrix4x4, TQ3Matrix4x4* result);
float Q3Matrix4x4_Determinant(const TQ3Matrix4x4* matrix4x4);
TQ3Matrix4x4* Q3Matrix4x4_SetTranslate(TQ3Matrix4x4* matrix4x4, float xTrans, float yTrans,
                                       float zTrans);
TQ3Matrix4x4* Q3Matrix4x4_SetScale(TQ3Matrix4x4* matrix4x4, float xScale, float yScale,
                                   float zScale);
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_X(TQ3Matrix4x4* matrix4x4, float angle);
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_Y(TQ3Matrix4x4* matrix4x4, float angle);
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_Z(TQ3Matrix4x4* matrix4x4, float angle);
/* about x, then y, then z */
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_XYZ(TQ3Matrix4x4* matrix4x4, float xAngle, float yAngle,
                                        float zAngle);
TQ3Matrix4x4* Q3Matrix4x4_SetRotateAboutPoint(TQ3Matrix4x4* matrix4x4, const TQ3Point3D* origin,
                                              float xAngle, float yAngle, float zAngle);
TQ3Matrix4x4* Q3Matrix4x4_SetRotateAboutAxis(TQ3Matrix4x4* matrix4x4, const TQ3Point3D* origin,
                                             const TQ3Vector3D* orientation, float angle);
/* The rotation that turns direction v1 into direction v2. */
TQ3Matrix4x4* Q3Matrix4x4_SetRotateVectorToVector(TQ3Matrix4x4* matrix4x4, const TQ3Vector3D* v1,
                                                  const TQ3Vector3D* v2);
TQ3Matrix4x4* Q3Matrix4x4_SetQuaternion(TQ3Matrix4x4* matrix, const TQ3Quaternion* quaternion);

TQ3Quaternion* Q3Quaternion_Set(TQ3Quaternion* quaternion, float w, float x, float y, float z);
TQ3Quaternion* Q3Quaternion_SetIdentity(TQ3Quaternion* quaternion);
TQ3Quaternion* Q3Quaternion_Copy(const TQ3Quaternion* quaternion, TQ3Quaternion* result);
TQ3Quaternion* Q3Quaternion_Normalize(const TQ3Quaternion* quaternion, TQ3Quaternion* result);
TQ3Quaternion* Q3Quaternion_Invert(const TQ3Quaternion* quaternion, TQ3Quaternion* result);
/* result = q1 q2: the rotation q2 followed by q1. */
TQ3Quaternion* Q3Quaternion_Multiply(const TQ3Quaternion* q1, const TQ3Quaternion* q2,
                                     TQ3Quaternion* result);
TQ3Quaternion* Q3Quaternion_SetRotate_X(TQ3Quaternion* quaternion, float angle);
TQ3Quaternion* Q3Quaternion_SetRotate_Y(TQ3Quaternion* quaternion, float angle);
TQ3Quaternion* Q3Quaternion_SetRotate_Z(TQ3Quaternion* quaternion, float angle);
/* about x, then y, then z */
TQ3Quaternion* Q3Quaternion_SetRotate_XYZ(TQ3Quaternion* quaternion, float xAngle, float yAngle,
                                          float zAngle);
TQ3Quaternion* Q3Quaternion_SetRotateAboutAxis(TQ3Quaternion* quaternion, const TQ3Vector3D* axis,
                                               float angle);
TQ3Quaternion* Q3Quaternion_SetRotateVectorToVector(TQ3Quaternion* quaternion,
                                                    const TQ3Vector3D* v1, const TQ3Vector3D* v2);
TQ3Quaternion* Q3Quaternion_SetMatrix(TQ3Quaternion* quaternion, const TQ3Matrix4x4* matrix);
TQ3Vector3D* Q3Vector3D_TransformQuaternion(const TQ3Vector3D* vector3D,
                                            const TQ3Quaternion* quaternion, TQ3Vector3D* result);
TQ3Point3D* Q3Point3D_TransformQuaternion(const TQ3Point3D* point3D,
                                          const TQ3Quaternion* quaternion, TQ3Point3D* result);

TQ3BoundingBox* Q3BoundingBox_Reset(TQ3BoundingBox* bBox);
TQ3BoundingBox* Q3BoundingBox_UnionPoint3D(const TQ3BoundingBox* bBox, const TQ3Point3D* point3D,
                                           TQ3BoundingBox* result);
TQ3BoundingBox* Q3BoundingBox_Union(const TQ3BoundingBox* b1, const TQ3BoundingBox* b2,
                                    TQ3BoundingBox* result);

#ifdef __cplusplus
}
#endif

#endif
