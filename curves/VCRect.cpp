#include "curves/VCRect.h"

#include <cmath>

VCurveStatus VCRect::SetSize(double w, double h) {
    if (!std::isfinite(w) || !std::isfinite(h) || w <= 0.0001 || h <= 0.0001)
        return kCurveSizeTooSmall;
    Change(width, w);
    Change(height, h);
    return kCurveOK;
}

VCurveStatus VCRect::Build() {
    curve.reset();
    const double h = width / 2, k = height / 2;
    const KVector3D pts[5] = {InPlane(h, k), InPlane(-h, k), InPlane(-h, -k), InPlane(h, -k),
                              InPlane(h, k)};
    const double knots[7] = {0, 0, 0.25, 0.5, 0.75, 1, 1};
    auto made = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
    if (!made) return kCurveNoMemory;
    VCurveStatus st = made->Set(1, 5, pts, 7, knots, 1);
    if (st != kCurveOK) return st;
    curve = std::move(made);
    return kCurveOK;
}
