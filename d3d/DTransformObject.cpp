#include "d3d/DTransformObject.h"

#include "d3d/DViewerObject.h"

#include <algorithm>
#include <cmath>

namespace {

float FiniteOrZero(double v) {
    return std::isfinite(v) ? static_cast<float>(v) : 0.0f;
}

TQ3Axis AxisFromNumber(int axis) {
    if (axis == 0) return kQ3AxisX;
    if (axis == 1) return kQ3AxisY;
    return kQ3AxisZ;
}

// x, y, z in either case; any other letter (the "w" of the tables among
// them) turns about z.
TQ3Axis AxisFromLetter(char axis) {
    switch (axis) {
    case 'x':
    case 'X':
        return kQ3AxisX;
    case 'y':
    case 'Y':
        return kQ3AxisY;
    default:
        return kQ3AxisZ;
    }
}

} // namespace

KVector3D RotationFromMatrix(const TQ3Matrix4x4& matrix, bool allowPoleCase) {
    const auto m = [&](int r, int c) { return static_cast<double>(matrix.value[r][c]); };
    // With the rotation about x, then y, then z: m[0][2] = -sin y,
    // m[0][0] = cos y cos z, m[0][1] = cos y sin z, m[2][2] = cos y cos x and
    // m[1][2] = cos y sin x. Since cos y is not negative for y from asin, the
    // quadrant of x and z follows from the signs of those entries; atan2
    // reads both at once and keeps its precision where cos y is small, which
    // a cosine divided by cos y does not.
    const double y = std::asin(std::clamp(-m(0, 2), -1.0, 1.0));
    const double cy = std::cos(y);
    double x, z;
    if (allowPoleCase && std::fabs(cy) <= 1e-5) {
        // At the poles x and z turn about the same axis; all of it goes to x.
        // There m[1][1] = cos x and m[2][1] = -sin x.
        z = 0.0;
        x = std::atan2(-m(2, 1), m(1, 1));
    } else {
        z = std::atan2(m(0, 1), m(0, 0));
        x = std::atan2(m(1, 2), m(2, 2));
    }
    return {FiniteOrZero(x), FiniteOrZero(y), FiniteOrZero(z), 0.0f};
}

TQ3Matrix4x4 MatrixFromRotation(float x, float y, float z) {
    TQ3Matrix4x4 result, factor, product;
    Q3Matrix4x4_SetIdentity(&result);
    if (x != 0.0f) {
        Q3Matrix4x4_SetIdentity(&factor);
        const float c = std::cos(x), s = std::sin(x);
        factor.value[1][1] = factor.value[2][2] = c;
        factor.value[1][2] = s;
        factor.value[2][1] = -s;
        Q3Matrix4x4_Multiply(&result, &factor, &product);
        result = product;
    }
    if (y != 0.0f) {
        Q3Matrix4x4_SetIdentity(&factor);
        const float c = std::cos(y), s = std::sin(y);
        factor.value[0][0] = factor.value[2][2] = c;
        factor.value[2][0] = s;
        factor.value[0][2] = -s;
        Q3Matrix4x4_Multiply(&result, &factor, &product);
        result = product;
    }
    if (z != 0.0f) {
        Q3Matrix4x4_SetIdentity(&factor);
        const float c = std::cos(z), s = std::sin(z);
        factor.value[0][0] = factor.value[1][1] = c;
        factor.value[0][1] = s;
        factor.value[1][0] = -s;
        Q3Matrix4x4_Multiply(&result, &factor, &product);
        result = product;
    }
    return result;
}

DTransformObject::~DTransformObject() {
    if (object) Q3Object_Dispose(object);
}

void DTransformObject::Submit(const DViewerObject& viewer) const {
    SubmitTo(viewer.GetObject());
}

void DTransformObject::SubmitTo(TQ3ViewObject view) const {
    CheckStatus(Q3Transform_Submit(object, view));
}

void DTransformObject::GetMatrix(TQ3Matrix4x4& out) const {
    CheckStatus(Q3Transform_GetMatrix(object, &out));
}

DMatrixTransform::DMatrixTransform() {
    Q3Matrix4x4_SetIdentity(&matrix);
    object = Q3MatrixTransform_New(&matrix);
    CheckObject(object);
}

void DMatrixTransform::SetRotation(float x, float y, float z) {
    rotation = {x, y, z, 0.0f};
    matrix = MatrixFromRotation(x, y, z);
    CheckStatus(Q3MatrixTransform_Set(object, &matrix));
}

void DMatrixTransform::SetMatrix(const TQ3Matrix4x4& m) {
    matrix = m;
    CheckStatus(Q3MatrixTransform_Set(object, &matrix));
    rotation = RotationFromMatrix(matrix, true);
}

void DMatrixTransform::GetRotation(float& x, float& y, float& z) const {
    x = rotation.x;
    y = rotation.y;
    z = rotation.z;
}

DRotateAboutTransform::DRotateAboutTransform(char axis, float angle) {
    TQ3RotateAboutPointTransformData data{AxisFromLetter(axis), angle, {0, 0, 0}};
    object = Q3RotateAboutPointTransform_New(&data);
    CheckObject(object);
}

DRotateAboutTransform::DRotateAboutTransform(const KVector3D& axis, float angle) {
    TQ3RotateAboutAxisTransformData data{{0, 0, 0}, {axis.x, axis.y, axis.z}, angle};
    object = Q3RotateAboutAxisTransform_New(&data);
    CheckObject(object);
}

bool DRotateAboutTransform::AboutPoint() const {
    return Q3Transform_GetType(object) == kQ3TransformTypeRotateAboutPoint;
}

void DRotateAboutTransform::SetOrigin(float x, float y, float z) {
    TQ3Point3D p{x, y, z};
    if (AboutPoint())
        CheckStatus(Q3RotateAboutPointTransform_SetAboutPoint(object, &p));
    else
        CheckStatus(Q3RotateAboutAxisTransform_SetOrigin(object, &p));
}

void DRotateAboutTransform::SetAngle(float angle) {
    if (AboutPoint())
        CheckStatus(Q3RotateAboutPointTransform_SetAngle(object, angle));
    else
        CheckStatus(Q3RotateAboutAxisTransform_SetAngle(object, angle));
}

float DRotateAboutTransform::GetAngle() const {
    float angle = 0.0f;
    if (AboutPoint())
        CheckStatus(Q3RotateAboutPointTransform_GetAngle(object, &angle));
    else
        CheckStatus(Q3RotateAboutAxisTransform_GetAngle(object, &angle));
    return angle;
}

DTranslateTransform::DTranslateTransform(float x, float y, float z) {
    TQ3Vector3D v{x, y, z};
    object = Q3TranslateTransform_New(&v);
    CheckObject(object);
}

void DTranslateTransform::Set(float x, float y, float z) {
    TQ3Vector3D v{x, y, z};
    CheckStatus(Q3TranslateTransform_Set(object, &v));
}

void DTranslateTransform::Get(float* x, float* y, float* z) const {
    TQ3Vector3D v;
    CheckStatus(Q3TranslateTransform_Get(object, &v));
    if (x) *x = v.x;
    if (y) *y = v.y;
    if (z) *z = v.z;
}

void DTranslateTransform::Get(KVector3D& v) const {
    Get(&v.x, &v.y, &v.z);
}

void DTranslateTransform::Add(const KVector3D& v) {
    KVector3D now;
    Get(now);
    Set(now.x + v.x, now.y + v.y, now.z + v.z);
}

DScaleTransform::DScaleTransform(float x, float y, float z) {
    TQ3Vector3D v{x, y, z};
    object = Q3ScaleTransform_New(&v);
    CheckObject(object);
}

void DScaleTransform::MultiplyBy(const KVector3D& v) {
    KVector3D now;
    Get(now);
    Set({now.x * v.x, now.y * v.y, now.z * v.z});
}

void DScaleTransform::Get(KVector3D& v) const {
    TQ3Vector3D s;
    CheckStatus(Q3ScaleTransform_Get(object, &s));
    v = {s.x, s.y, s.z, 0.0f};
}

void DScaleTransform::Set(const KVector3D& v) {
    TQ3Vector3D s{v.x, v.y, v.z};
    CheckStatus(Q3ScaleTransform_Set(object, &s));
}

DQuaternionTransform::DQuaternionTransform(int axis, float angle) {
    TQ3Quaternion q;
    switch (AxisFromNumber(axis)) {
    case kQ3AxisX:
        Q3Quaternion_SetRotate_X(&q, angle);
        break;
    case kQ3AxisY:
        Q3Quaternion_SetRotate_Y(&q, angle);
        break;
    default:
        Q3Quaternion_SetRotate_Z(&q, angle);
        break;
    }
    object = Q3QuaternionTransform_New(&q);
    CheckObject(object);
}

void DQuaternionTransform::RotateAbout(const KVector3D& axis, float angle) {
    TQ3Vector3D a{axis.x, axis.y, axis.z};
    TQ3Quaternion turn, stored, result;
    Q3Quaternion_SetRotateAboutAxis(&turn, &a, angle);
    CheckStatus(Q3QuaternionTransform_Get(object, &stored));
    Q3Quaternion_Multiply(&turn, &stored, &result);
    CheckStatus(Q3QuaternionTransform_Set(object, &result));
}

void DQuaternionTransform::SetRotation(float x, float y, float z) {
    TQ3Quaternion q;
    Q3Quaternion_SetRotate_XYZ(&q, x, y, z);
    CheckStatus(Q3QuaternionTransform_Set(object, &q));
}

void DQuaternionTransform::GetRotation(float& x, float& y, float& z) const {
    KVector3D angles;
    GetRotation(angles);
    x = angles.x;
    y = angles.y;
    z = angles.z;
}

void DQuaternionTransform::GetRotation(KVector3D& angles) const {
    TQ3Quaternion q;
    CheckStatus(Q3QuaternionTransform_Get(object, &q));
    TQ3Matrix4x4 m;
    Q3Matrix4x4_SetQuaternion(&m, &q);
    angles = RotationFromMatrix(m, false);
}

DRotateTransform::DRotateTransform(int axis, float angle) {
    TQ3RotateTransformData data{AxisFromNumber(axis), angle};
    object = Q3RotateTransform_New(&data);
    CheckObject(object);
}

DRotateTransform::DRotateTransform(char axis, float angle) {
    TQ3RotateTransformData data{AxisFromLetter(axis), angle};
    object = Q3RotateTransform_New(&data);
    CheckObject(object);
}
