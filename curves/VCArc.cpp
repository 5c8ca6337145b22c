#include "curves/VCArc.h"

#include "curves/VCLine.h"
#include "curves/VNurbsAlgorithms.h"

#include <cmath>

namespace {
constexpr double kDegree = 3.14159265358979323846 / 180.0;
}

VCurveStatus VCArc::SetRadii(double u, double v) {
    if (!std::isfinite(u) || !std::isfinite(v) || u <= -kCurveEqualEps || v <= -kCurveEqualEps)
        return kCurveNegativeRadius;
    Change(uRadius, u);
    Change(vRadius, v);
    return kCurveOK;
}

VCurveStatus VCArc::SetStartAngle(double a) {
    if (!std::isfinite(a)) return kCurveBadBezierArgument;
    Change(startAngle, a);
    return kCurveOK;
}

VCurveStatus VCArc::SetEndAngle(double a) {
    if (!std::isfinite(a)) return kCurveBadBezierArgument;
    Change(endAngle, a);
    return kCurveOK;
}

VCurveStatus VCArc::SetAll(double u, double v, double start, double end, const KVector3D& c,
                           const KVector3D& ua, const KVector3D& va) {
    if (!std::isfinite(u) || !std::isfinite(v) || u <= -kCurveEqualEps || v <= -kCurveEqualEps)
        return kCurveNegativeRadius;
    if (!std::isfinite(start) || !std::isfinite(end)) return kCurveBadBezierArgument;
    VCurveStatus st = CheckAxes(ua, va);
    if (st != kCurveOK) return st;
    if ((st = SetFrame(c, ua, va)) != kCurveOK) return st;
    SetRadii(u, v);
    SetStartAngle(start);
    SetEndAngle(end);
    return kCurveOK;
}

VCurveStatus VCArc::Build() {
    curve.reset();
    double end = endAngle;
    if (!(end > startAngle)) end += 360.0;
    if (end > startAngle + 360.0) end = startAngle + 360.0;
    const double sweep = end - startAngle;
    const std::int32_t segments = sweep <= 90.0 ? 1 : sweep <= 180.0 ? 2 : sweep <= 270.0 ? 3 : 4;
    const std::int32_t count = 2 * segments + 1;
    const std::int32_t knotCount = 2 * segments + 4;
    double knots[12] = {0, 0, 0};
    for (std::int32_t i = 1; i < segments; ++i) {
        knots[1 + 2 * i] = double(i) / segments;
        knots[2 + 2 * i] = double(i) / segments;
    }
    for (std::int32_t i = knotCount - 3; i < knotCount; ++i)
        knots[i] = 1.0;

    KVector3D pts[9];
    if (uRadius <= 0.0001 && vRadius <= 0.0001) {
        for (std::int32_t i = 0; i < count; ++i)
            pts[i] = InPlane(0, 0);
    } else {
        const double delta = sweep / segments;
        const double w1 = std::cos(delta / 2.0 * kDegree);
        double a = startAngle * kDegree;
        KVector3D P0 = InPlane(uRadius * std::cos(a), vRadius * std::sin(a));
        KVector3D T0 = uAxis * float(-std::sin(a)) + vAxis * float(std::cos(a));
        pts[0] = P0;
        for (std::int32_t s = 1; s <= segments; ++s) {
            a = (startAngle + s * delta) * kDegree;
            KVector3D P2 = InPlane(uRadius * std::cos(a), vRadius * std::sin(a));
            KVector3D T2 = uAxis * float(-std::sin(a)) + vAxis * float(std::cos(a));
            KVector3D mid;
            double t0 = 0, t2 = 0;
            bool found = false;
            VCLine(P0, T0).Intersect(VCLine(P2, T2), mid, t0, t2, found);
            // Tangents too close to parallel to meet (a sweep of almost
            // nothing): the middle point lies between the two ends.
            if (!found) mid = (P0 + P2) * 0.5f;
            pts[2 * s - 1] =
                KVector3D(mid.x * float(w1), mid.y * float(w1), mid.z * float(w1), float(w1));
            pts[2 * s] = P2;
            P0 = P2;
            T0 = T2;
        }
    }
    const std::int32_t closed = std::fabs(sweep - 360.0) < kCurveEqualEps ? 1 : 0;
    auto made = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
    if (!made) return kCurveNoMemory;
    VCurveStatus st = made->Set(2, count, pts, knotCount, knots, closed);
    if (st != kCurveOK) return st;
    curve = std::move(made);
    return kCurveOK;
}

VCurveStatus VCArc::MakeBezierPieces() {
    if (!curve) {
        VCurveStatus st = Build();
        if (st != kCurveOK) return st;
    }
    VBezierPieces quadratic;
    VCurveStatus st = curve->DecomposeToBezier(quadratic);
    if (st != kCurveOK) return st;
    auto block = NewCurveArray<KVector3D>(std::int64_t(quadratic.count) * 4);
    if (!block) return kCurveNoMemory;
    for (std::int32_t i = 0; i < quadratic.count; ++i) {
        st = ElevateBezier(2, 1, quadratic.pieces[i], block.get() + 4 * i);
        if (st != kCurveOK) return st;
    }
    pieceCount = quadratic.count;
    pieceSize = 4;
    pieces = std::move(block);
    return kCurveOK;
}
