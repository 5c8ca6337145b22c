// Derivatives of a (rational) curve and its Frenet frame.
#include "curves/VCNurbsCurve.h"
#include "curves/VNurbsAlgorithms.h"

#include <array>
#include <cmath>
#include <vector>

VCurveStatus VCNurbsCurve::EvaluateDerivatives(double u, bool fromRight, std::int32_t d,
                                               KVector3D* out) const {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    if (!out || d < 0 || d > 62) return kCurveBadBezierArgument;
    const std::int32_t p = degree;
    try {
        std::vector<double> ders(std::size_t(d + 1) * std::size_t(p + 1));
        std::int32_t span = 0;
        st = knots->DersBasisFuns(p, u, fromRight, d, ders.data(), span);
        if (st != kCurveOK) return st;
        // Derivatives of the homogeneous curve.
        std::vector<std::array<double, 4>> A(std::size_t(d + 1), {0, 0, 0, 0});
        const KVector3D* P = ctrlPoints->points.get();
        for (std::int32_t k = 0; k <= d; ++k)
            for (std::int32_t j = 0; j <= p; ++j) {
                const double N = ders[std::size_t(k) * std::size_t(p + 1) + std::size_t(j)];
                const KVector3D& c = P[span - p + j];
                A[std::size_t(k)][0] += N * c.x;
                A[std::size_t(k)][1] += N * c.y;
                A[std::size_t(k)][2] += N * c.z;
                A[std::size_t(k)][3] += N * c.w;
            }
        // Leibniz's rule: C(k) = (A(k) - sum C(k-i) w(i) binom(k, i)) / w.
        const double w0 = A[0][3];
        if (WouldOverflow(1.0, w0, VCurveOp::Divide)) return kCurveDivisionOverflow;
        std::unique_ptr<std::int64_t[]> bin;
        if ((st = MakeBinomialTable(bin, d)) != kCurveOK) return st;
        std::vector<std::array<double, 3>> C(std::size_t(d + 1));
        for (std::int32_t k = 0; k <= d; ++k) {
            std::array<double, 3> v{A[std::size_t(k)][0], A[std::size_t(k)][1],
                                    A[std::size_t(k)][2]};
            for (std::int32_t i = 1; i <= k; ++i) {
                const double f = double(bin[std::size_t(k) * std::size_t(d + 1) + std::size_t(i)]) *
                                 A[std::size_t(i)][3];
                for (int c = 0; c < 3; ++c)
                    v[std::size_t(c)] -= f * C[std::size_t(k - i)][std::size_t(c)];
            }
            for (int c = 0; c < 3; ++c)
                C[std::size_t(k)][std::size_t(c)] = v[std::size_t(c)] / w0;
        }
        for (std::int32_t k = 0; k <= d; ++k)
            out[k] = KVector3D(float(C[std::size_t(k)][0]), float(C[std::size_t(k)][1]),
                               float(C[std::size_t(k)][2]), k == 0 ? 1.0f : 0.0f);
        return kCurveOK;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

VCurveStatus VCNurbsCurve::GetFrenetFrame(double u, bool fromRight, KVector3D& tangent,
                                          KVector3D& normal, KVector3D& binormal) const {
    KVector3D D[3];
    VCurveStatus st = EvaluateDerivatives(u, fromRight, 2, D);
    if (st != kCurveOK) return st;
    using V = std::array<double, 3>;
    auto dot = [](const V& a, const V& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    auto cross = [](const V& a, const V& b) {
        return V{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    };
    const V d1{D[1].x, D[1].y, D[1].z}, d2{D[2].x, D[2].y, D[2].z};
    const double l1 = std::sqrt(dot(d1, d1)), l2 = std::sqrt(dot(d2, d2));
    V b = cross(d1, d2);
    const double lb = std::sqrt(dot(b, b));
    // Where the curve stands still or runs straight (the second derivative
    // along the first, within the rounding of single-precision points) the
    // frame has no direction to take: zero vectors and status 15.
    if (!(l1 > 0.0) || !(lb > 1e-5 * l1 * l2)) {
        tangent = normal = binormal = KVector3D(0, 0, 0);
        if (l1 > 0.0) tangent = KVector3D(float(d1[0] / l1), float(d1[1] / l1), float(d1[2] / l1));
        return kCurveDivisionOverflow;
    }
    const V t{d1[0] / l1, d1[1] / l1, d1[2] / l1};
    // Take out what rounding left of the tangent in the binormal.
    const double along = dot(b, t);
    b = V{b[0] - along * t[0], b[1] - along * t[1], b[2] - along * t[2]};
    const double lb2 = std::sqrt(dot(b, b));
    b = V{b[0] / lb2, b[1] / lb2, b[2] / lb2};
    const V n = cross(b, t);
    tangent = KVector3D(float(t[0]), float(t[1]), float(t[2]));
    normal = KVector3D(float(n[0]), float(n[1]), float(n[2]));
    binormal = KVector3D(float(b[0]), float(b[1]), float(b[2]));
    return kCurveOK;
}
