#include "curves/VC2DNCurveShape.h"

#include <cmath>

VCurveStatus CheckAxes(const KVector3D& a, const KVector3D& b) {
    const double ax = a.x, ay = a.y, az = a.z, bx = b.x, by = b.y, bz = b.z;
    if (!std::isfinite(ax + ay + az + bx + by + bz)) return kCurveBadAxis;
    const double la = std::sqrt(ax * ax + ay * ay + az * az);
    const double lb = std::sqrt(bx * bx + by * by + bz * bz);
    if (!(la >= kCurveEqualEps) || !(lb >= kCurveEqualEps)) return kCurveBadAxis;
    // Parallel when the cross product vanishes relative to the two lengths;
    // unlike a comparison of component quotients this needs no division by
    // a zero component.
    const double cx = ay * bz - az * by, cy = az * bx - ax * bz, cz = ax * by - ay * bx;
    if (std::sqrt(cx * cx + cy * cy + cz * cz) <= kCurveEqualEps * la * lb) return kCurveBadAxis;
    return kCurveOK;
}

VCurveStatus VC2DNCurveShape::SetFrame(const KVector3D& c, const KVector3D& u, const KVector3D& v) {
    if (!std::isfinite(c.x) || !std::isfinite(c.y) || !std::isfinite(c.z)) return kCurveBadAxis;
    VCurveStatus st = CheckAxes(u, v);
    if (st != kCurveOK) return st;
    center = KVector3D(c.x, c.y, c.z, 1.0f);
    uAxis = u.Unit();
    vAxis = v.Unit();
    curve.reset();
    return kCurveOK;
}

VCurveStatus VC2DNCurveShape::SetUAxis(const KVector3D& u) {
    VCurveStatus st = CheckAxes(u, vAxis);
    if (st != kCurveOK) return st;
    uAxis = u.Unit();
    curve.reset();
    return kCurveOK;
}

VCurveStatus VC2DNCurveShape::SetVAxis(const KVector3D& v) {
    VCurveStatus st = CheckAxes(uAxis, v);
    if (st != kCurveOK) return st;
    vAxis = v.Unit();
    curve.reset();
    return kCurveOK;
}

VCurveStatus VC2DNCurveShape::SetCenter(const KVector3D& c) {
    if (!std::isfinite(c.x) || !std::isfinite(c.y) || !std::isfinite(c.z)) return kCurveBadAxis;
    KVector3D delta = KVector3D(c.x, c.y, c.z) - KVector3D(center.x, center.y, center.z);
    center = KVector3D(c.x, c.y, c.z, 1.0f);
    if (curve) curve->Translate(delta);
    return kCurveOK;
}

std::unique_ptr<VCNurbsCurve> VC2DNCurveShape::TakeCurve() {
    if (!curve && Build() != kCurveOK) curve.reset();
    return std::move(curve);
}

VCurveStatus VC2DNCurveShape::TakePieces(std::int32_t& count, std::int32_t& size,
                                         std::unique_ptr<KVector3D[]>& block) {
    if (!pieces) {
        VCurveStatus st = MakeBezierPieces();
        if (st != kCurveOK) return st;
    }
    count = pieceCount;
    size = pieceSize;
    block = std::move(pieces);
    pieceCount = 0;
    pieceSize = 0;
    return kCurveOK;
}

void VC2DNCurveShape::Change(double& field, double value) {
    if (std::fabs(field - value) > kCurveEqualEps || std::isnan(field) != std::isnan(value))
        curve.reset();
    field = value;
}

void VC2DNCurveShape::Change(std::int32_t& field, std::int32_t value) {
    if (field != value) curve.reset();
    field = value;
}

KVector3D VC2DNCurveShape::InPlane(double x, double y, double w) const {
    const double px = center.x + x * uAxis.x + y * vAxis.x;
    const double py = center.y + x * uAxis.y + y * vAxis.y;
    const double pz = center.z + x * uAxis.z + y * vAxis.z;
    return KVector3D(float(px * w), float(py * w), float(pz * w), float(w));
}
