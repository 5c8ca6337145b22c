#include "scene/K3DViewMatrix.h"

#include "scene/K3DObject.h"
#include "scene/K3DView.h"

#include <algorithm>
#include <cmath>

KVector3D TransformPoint(const KVector3D& p, const TQ3Matrix4x4& m) {
    float out[4];
    for (int j = 0; j < 4; ++j)
        out[j] = p.x * m.value[0][j] + p.y * m.value[1][j] + p.z * m.value[2][j] + m.value[3][j];
    const float w = out[3] != 0.0f && std::isfinite(out[3]) ? out[3] : 1.0f;
    return {out[0] / w, out[1] / w, out[2] / w, 1.0f};
}

KVector3D TransformVector(const KVector3D& v, const TQ3Matrix4x4& m) {
    float out[3];
    for (int j = 0; j < 3; ++j)
        out[j] = v.x * m.value[0][j] + v.y * m.value[1][j] + v.z * m.value[2][j];
    return {out[0], out[1], out[2], 0.0f};
}

TQ3Matrix4x4 InvertedMatrix(const TQ3Matrix4x4& m) {
    TQ3Matrix4x4 inverse;
    if (!Q3Matrix4x4_Invert(&m, &inverse)) return IdentityMatrix();
    return inverse;
}

TQ3Matrix4x4 MultiplyMatrices(const TQ3Matrix4x4& a, const TQ3Matrix4x4& b) {
    TQ3Matrix4x4 r{};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            float s = 0;
            for (int k = 0; k < 4; ++k)
                s += a.value[i][k] * b.value[k][j];
            r.value[i][j] = s;
        }
    return r;
}

void K3DViewMatrix::ScreenToCameraWorld(std::int32_t point, KVector3D& result, float depth) const {
    KVector3D v;
    ScreenToView(point, v, depth);
    result = TransformPoint(v, viewToWorld);
}

void K3DViewMatrix::GetPickRay(std::int32_t point, KVector3D& origin, KVector3D& direction) const {
    KVector3D eye{0, 0, 0, 1}, far;
    ScreenToView(point, far, -1.0f);
    KVector3D a, b;
    ViewToWorld(eye, a);
    ViewToWorld(far, b);
    origin = a;
    direction = (b - a).Unit();
}

bool K3DViewMatrix::ClosestPointOnLine(std::int32_t point, const KVector3D& linePoint,
                                       const KVector3D& lineDirection, KVector3D& result) const {
    KVector3D origin, ray;
    GetPickRay(point, origin, ray);
    const KVector3D d = lineDirection;
    const KVector3D n = d.Cross(ray);
    const float nn = n.Dot(n);
    if (!(nn > 0.0f)) return false;
    // The parameter along the line where the common perpendicular meets it.
    const KVector3D n2 = ray.Cross(n);
    const float t = (origin - linePoint).Dot(n2) / d.Dot(n2);
    if (!std::isfinite(t)) return false;
    result = linePoint + d * t;
    result.w = 1.0f;
    return true;
}

float K3DViewMatrix::DistanceToLine(std::int32_t point, const KVector3D& linePoint,
                                    const KVector3D& lineDirection) const {
    KVector3D origin, ray;
    GetPickRay(point, origin, ray);
    const KVector3D n = lineDirection.Cross(ray);
    const float len = n.Length();
    if (!(len > 0.0f)) {
        // Parallel: the distance of the line's point from the ray.
        const KVector3D w = linePoint - origin;
        return (w - ray * w.Dot(ray)).Length();
    }
    return std::fabs((linePoint - origin).Dot(n)) / len;
}

float K3DViewMatrix::GetDepth(const KVector3D& point) const {
    // The point is where the library put it, in front of the adorners.
    return TransformPoint(point, worldToView).z;
}

void K3DViewMatrix::IntersectSphere(std::int32_t point, const KVector3D& centre, float radius,
                                    KVector3D& front, KVector3D& back) const {
    const float r = LengthToView(radius);
    KVector3D c;
    WorldToView(centre, c);
    KVector3D d;
    ScreenToView(point, d, -1.0f);
    const KVector3D v = -c;
    float a = d.Dot(d), b = 2 * v.Dot(d);
    const float cc = v.Dot(v) - r * r;
    float q = b * b - 4 * a * cc;
    float s = 0;
    if (q >= 0) {
        s = std::sqrt(q);
    } else {
        // Bend the ray in x and y just enough to touch the sphere.
        const float u = v.x * d.x + v.y * d.y;
        const float A = u * u - (d.x * d.x + d.y * d.y) * cc;
        const float B = 2 * u * v.z * d.z;
        const float E = (v.z * d.z) * (v.z * d.z) - d.z * d.z * cc;
        float k = 1.0f;
        if (A != 0.0f) {
            const float disc = std::max(0.0f, B * B - 4 * A * E);
            const float k1 = (-B + std::sqrt(disc)) / (2 * A);
            const float k2 = (-B - std::sqrt(disc)) / (2 * A);
            k = std::fabs(k1 - 1) < std::fabs(k2 - 1) ? k1 : k2;
        } else if (B != 0.0f) {
            k = -E / B;
        }
        if (std::isfinite(k)) {
            d.x *= k;
            d.y *= k;
        }
        a = d.Dot(d);
        b = 2 * v.Dot(d);
    }
    if (!(a > 0.0f)) a = 1.0f;
    // The two meetings along the ray; the nearer one faces the eye.
    const float t1 = (-b + s) / 2 / a;
    const float t2 = (-b - s) / 2 / a;
    ScreenToWorld(point, front, -std::min(t1, t2));
    ScreenToWorld(point, back, -std::max(t1, t2));
}

void VCViewMatrix::MatricesReady() {
    adorner = IdentityMatrix();
    if (auto* view = dynamic_cast<K3DView*>(extViewer)) view->GetAdornerMatrix(adorner);
    adornerInverse = InvertedMatrix(adorner);
}

void VCViewMatrix::ViewToWorld(const KVector3D& point, KVector3D& result) const {
    KVector3D world;
    K3DViewMatrix::ViewToWorld(point, world);
    result = TransformPoint(world, adornerInverse);
}

void VCViewMatrix::WorldToView(const KVector3D& point, KVector3D& result) const {
    K3DViewMatrix::WorldToView(TransformPoint(point, adorner), result);
}

float VCViewMatrix::LengthToView(float length) const {
    const float row = std::sqrt(adorner.value[0][0] * adorner.value[0][0] +
                                adorner.value[0][1] * adorner.value[0][1] +
                                adorner.value[0][2] * adorner.value[0][2]);
    return K3DViewMatrix::LengthToView(length * row);
}
