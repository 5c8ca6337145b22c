#include "curves/VCNgon.h"

#include <cmath>
#include <vector>

namespace {
constexpr double kTwoPi = 6.28318530717958647692;

bool BadRadius(double r) {
    return !std::isfinite(r) || r <= 0.0001;
}
} // namespace

VCurveStatus VCNgon::SetSides(std::int32_t n) {
    if (n < 3) return kCurveTooFewSides;
    if (n > kMaxSides) return kCurveBadPointCount;
    Change(sides, n);
    return kCurveOK;
}

VCurveStatus VCNgon::SetRadii(double u, double v) {
    if (BadRadius(u) || BadRadius(v)) return kCurveSizeTooSmall;
    Change(uRadius, u);
    Change(vRadius, v);
    return kCurveOK;
}

VCurveStatus VCNgon::SetAll(std::int32_t n, double u, double v) {
    if (n < 3) return kCurveTooFewSides;
    if (n > kMaxSides) return kCurveBadPointCount;
    if (BadRadius(u) || BadRadius(v)) return kCurveSizeTooSmall;
    SetSides(n);
    return SetRadii(u, v);
}

VCurveStatus VCNgon::SetStartAngle(double a) {
    if (!std::isfinite(a)) return kCurveBadBezierArgument;
    Change(startAngle, a);
    return kCurveOK;
}

KVector3D VCNgon::Vertex(double angle, double u, double v) const {
    return InPlane(u * std::cos(angle), v * std::sin(angle));
}

VCurveStatus VCNgon::MakePolyline(std::int32_t count, const KVector3D* points) {
    // Degree 1, closed: knots 0, 0, 1/n, ..., (n - 1)/n, 1, 1 for n edges.
    const std::int32_t edges = count - 1;
    try {
        std::vector<double> knots(std::size_t(count) + 2);
        knots[0] = 0.0;
        for (std::int32_t i = 0; i < edges; ++i)
            knots[std::size_t(i) + 1] = double(i) / edges;
        knots[std::size_t(count)] = 1.0;
        knots[std::size_t(count) + 1] = 1.0;
        auto made = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
        if (!made) return kCurveNoMemory;
        VCurveStatus st = made->Set(1, count, points, count + 2, knots.data(), 1);
        if (st != kCurveOK) return st;
        curve = std::move(made);
        return kCurveOK;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

VCurveStatus VCNgon::Build() {
    curve.reset();
    try {
        std::vector<KVector3D> pts(std::size_t(sides) + 1);
        for (std::int32_t i = 0; i < sides; ++i)
            pts[std::size_t(i)] = Vertex(startAngle + i * kTwoPi / sides, uRadius, vRadius);
        pts[std::size_t(sides)] = pts[0];
        return MakePolyline(sides + 1, pts.data());
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

VCurveStatus VCStar::SetInnerRadii(double u, double v) {
    if (BadRadius(u) || BadRadius(v)) return kCurveSizeTooSmall;
    Change(uInnerRadius, u);
    Change(vInnerRadius, v);
    return kCurveOK;
}

VCurveStatus VCStar::SetAll(std::int32_t points, double u, double v, double innerU, double innerV) {
    if (BadRadius(innerU) || BadRadius(innerV)) return kCurveSizeTooSmall;
    VCurveStatus st = VCNgon::SetAll(points, u, v);
    if (st != kCurveOK) return st;
    return SetInnerRadii(innerU, innerV);
}

VCurveStatus VCStar::Build() {
    curve.reset();
    try {
        const std::int32_t n = 2 * sides;
        std::vector<KVector3D> pts(std::size_t(n) + 1);
        for (std::int32_t i = 0; i < sides; ++i) {
            const double a = startAngle + i * kTwoPi / sides;
            pts[std::size_t(2 * i)] = Vertex(a, uRadius, vRadius);
            pts[std::size_t(2 * i + 1)] =
                Vertex(a + kTwoPi / 2 / sides, uInnerRadius, vInnerRadius);
        }
        pts[std::size_t(n)] = pts[0];
        return MakePolyline(n + 1, pts.data());
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}
