#include "curves/VCurveAnalyticPaths.h"

#include <cmath>

namespace {
// Polar to Cartesian in the plane: x = r cos angle, y = r sin angle.
void PolarToPoint2D(float r, float angle, float& x, float& y) {
    x = r * std::cos(angle);
    y = r * std::sin(angle);
}

// Swaps the normal for the binormal (negated when asked), so that letters
// keep their up direction along the path's axis rather than towards the
// centre of curvature.
void UpAlongBinormal(bool negate, KVector3D& tangent, KVector3D& normal, KVector3D& binormal) {
    normal = negate ? -binormal : binormal;
    normal.w = 0.0f;
    binormal = tangent.Cross(normal);
}
} // namespace

VCurveAxis::VCurveAxis(float min, float max, float step) : VCurveAnalytic2D(min, max, step) {
    Recalculate();
}

void VCurveAxis::Evaluate(float t, KVector3D& point) const {
    point = KVector3D(t, 0, 0, 1);
}

VCurveEllipse::VCurveEllipse(float a, float b, float min, float max, float step)
    : VCurveAnalytic2D(min, max, step), first(a), second(b) {
    Recalculate();
    closed = 1;
}

void VCurveEllipse::Evaluate(float t, KVector3D& point) const {
    const float r = DegreesToRadians(t);
    point = KVector3D(first * std::cos(r), second * std::sin(r), 0, 1);
}

void VCurveEllipse::SetFirst(float v) {
    first = v;
    Rebuild();
}
void VCurveEllipse::SetSecond(float v) {
    second = v;
    Rebuild();
}

VCurveSinCurve::VCurveSinCurve(float a, float b, float min, float max, float step)
    : VCurveAnalytic2D(min, max, step), first(a), second(b) {
    Recalculate();
}

void VCurveSinCurve::Evaluate(float t, KVector3D& point) const {
    point = KVector3D(second * t / 360.0f, first * std::cos(DegreesToRadians(t)), 0, 1);
}

void VCurveSinCurve::SetFirst(float v) {
    first = v;
    Rebuild();
}
void VCurveSinCurve::SetSecond(float v) {
    second = v;
    Rebuild();
}

VCurveDecayingSin::VCurveDecayingSin(float a, float b, float d, float min, float max, float step)
    : VCurveAnalytic2D(min, max, step), first(a), second(b), decay(d) {
    Recalculate();
}

void VCurveDecayingSin::Evaluate(float t, KVector3D& point) const {
    point = KVector3D(second * t / 360.0f,
                      first * std::sin(DegreesToRadians(t)) * std::exp(-decay * t), 0, 1);
}

void VCurveDecayingSin::SetFirst(float v) {
    first = v;
    Rebuild();
}
void VCurveDecayingSin::SetSecond(float v) {
    second = v;
    Rebuild();
}

VCurveNormal::VCurveNormal(float a, float b, float min, float max, float step)
    : VCurveAnalytic2D(min, max, step), first(a), second(b) {
    Recalculate();
}

void VCurveNormal::Evaluate(float t, KVector3D& point) const {
    point = KVector3D(t, first * std::exp(-second * t * t), 0, 1);
}

void VCurveNormal::SetFirst(float v) {
    first = v;
    Rebuild();
}
void VCurveNormal::SetSecond(float v) {
    second = v;
    Rebuild();
}

VCurveHelix::VCurveHelix(float a, float b, float min, float max, float step)
    : VCurveAnalytic3D(min, max, step), first(a), second(b) {
    Recalculate();
}

void VCurveHelix::Evaluate(float t, KVector3D& point) const {
    const float r = DegreesToRadians(t);
    point = KVector3D(second * std::cos(r), first * t / 360.0f, -second * std::sin(r), 1);
}

bool VCurveHelix::GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                             KVector3D& binormal) {
    if (!VCurveAnalytic3D::GetFrameAt(s, point, tangent, normal, binormal)) return false;
    UpAlongBinormal(false, tangent, normal, binormal);
    return true;
}

void VCurveHelix::SetFirst(float v) {
    first = v;
    Rebuild();
}
void VCurveHelix::SetSecond(float v) {
    second = v;
    Rebuild();
}

VCurveSphericalHelix::VCurveSphericalHelix(float a, float b, float min, float max, float step)
    : VCurveAnalytic3D(min, max, step), first(a), second(b) {
    Recalculate();
}

void VCurveSphericalHelix::Evaluate(float t, KVector3D& point) const {
    const float a = first;
    const float b = second;
    const float h = t * a / 360.0f;
    float r = 0.0f;
    if (b > 0.0f && std::isfinite(h)) {
        // Bring a copy of the height into -b..b by whole steps of b; the
        // count of steps is computed at once so a far-off t costs no loop.
        float c = h;
        if (c < -b) c += std::ceil((-b - c) / b) * b;
        if (c > b) c -= std::ceil((c - b) / b) * b;
        for (int i = 0; i < 4 && c < -b; ++i)
            c += b;
        for (int i = 0; i < 4 && c > b; ++i)
            c -= b;
        const float q = b * b - c * c;
        r = q > 0.0f ? std::sqrt(q) : 0.0f;
    }
    float x = 0.0f, z = 0.0f;
    PolarToPoint2D(r, DegreesToRadians(t), x, z);
    point = KVector3D(x, h, z, 1);
}

bool VCurveSphericalHelix::GetFrameAt(float s, KVector3D& point, KVector3D& tangent,
                                      KVector3D& normal, KVector3D& binormal) {
    if (!VCurveAnalytic3D::GetFrameAt(s, point, tangent, normal, binormal)) return false;
    UpAlongBinormal(true, tangent, normal, binormal);
    return true;
}

void VCurveSphericalHelix::ComputeRange() {
    const float min = -360.0f * second / first + 2.0f;
    const float max = -min;
    if (!std::isfinite(min) || !(max > min)) {
        // No sphere to wind on (zero pitch or radius): an empty range, so
        // the path has no length and places no letter.
        paramMin = 0.0f;
        paramMax = 0.0f;
        paramStep = 1.0f;
        return;
    }
    paramMin = min;
    paramMax = max;
    // A hair under a 200th of the range, so that the rounding of the 200
    // single-precision additions of the grid never pushes the last sample
    // past paramMax: the grid always has 201 samples.
    paramStep = (max - min) / 200.0f * (1.0f - 1e-5f);
}

void VCurveSphericalHelix::SetFirst(float v) {
    first = v;
    ComputeRange();
    Rebuild();
}
void VCurveSphericalHelix::SetSecond(float v) {
    second = v;
    ComputeRange();
    Rebuild();
}

VCurveVortex::VCurveVortex(float a, float b, float min, float max, float step)
    : VCurveAnalytic3D(min, max, step), first(a), second(b) {
    Recalculate();
}

void VCurveVortex::Evaluate(float t, KVector3D& point) const {
    const float theta = DegreesToRadians(t);
    const float r = std::exp(theta * second);
    float x = 0.0f, z = 0.0f;
    PolarToPoint2D(r, theta, x, z);
    point = KVector3D(x, first * theta, z, 1);
}

bool VCurveVortex::GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                              KVector3D& binormal) {
    if (!VCurveAnalytic3D::GetFrameAt(s, point, tangent, normal, binormal)) return false;
    UpAlongBinormal(true, tangent, normal, binormal);
    return true;
}

void VCurveVortex::SetFirst(float v) {
    first = v;
    Rebuild();
}
void VCurveVortex::SetSecond(float v) {
    second = v;
    Rebuild();
}
