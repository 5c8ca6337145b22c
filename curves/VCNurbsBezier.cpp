// Decomposition of a NURBS curve into its Bezier pieces, and the length of
// the curve measured piece by piece.
#include "curves/VCNurbsCurve.h"
#include "curves/VNurbsAlgorithms.h"

#include <cmath>
#include <vector>

namespace {
// Visits the Bezier pieces of a valid clamped curve one by one (knot
// insertion up to full multiplicity at every inner knot). visit receives a
// pointer to p + 1 homogeneous points and returns a status; a non-zero
// status ends the walk.
template <class Visit> VCurveStatus WalkPieces(const VCNurbsCurve& curve, Visit visit) {
    const std::int32_t p = curve.degree;
    const double* U = curve.knots->values.get();
    const KVector3D* Pw = curve.ctrlPoints->points.get();
    const std::int32_t m = curve.knots->count - 1;
    std::vector<KVector3D> cur(std::size_t(p + 1)), nxt(std::size_t(p + 1));
    std::vector<double> alphas(std::size_t(p + 1), 0.0);
    std::int32_t a = p, b = p + 1;
    for (std::int32_t i = 0; i <= p; ++i)
        cur[std::size_t(i)] = Pw[i];
    while (b < m) {
        std::int32_t i = b;
        while (b < m && std::fabs(U[b + 1] - U[b]) < kCurveEqualEps)
            ++b;
        std::int32_t mult = b - i + 1;
        if (mult < p) {
            double numer = U[b] - U[a];
            for (std::int32_t j = p; j > mult; --j)
                alphas[std::size_t(j - mult - 1)] = numer / (U[a + j] - U[a]);
            std::int32_t r = p - mult;
            for (std::int32_t j = 1; j <= r; ++j) {
                std::int32_t save = r - j, s = mult + j;
                for (std::int32_t k = p; k >= s; --k) {
                    double alpha = alphas[std::size_t(k - s)];
                    const KVector3D& q = cur[std::size_t(k)];
                    const KVector3D& q1 = cur[std::size_t(k - 1)];
                    cur[std::size_t(k)] = KVector3D(float(alpha * q.x + (1 - alpha) * q1.x),
                                                    float(alpha * q.y + (1 - alpha) * q1.y),
                                                    float(alpha * q.z + (1 - alpha) * q1.z),
                                                    float(alpha * q.w + (1 - alpha) * q1.w));
                }
                if (b < m) nxt[std::size_t(save)] = cur[std::size_t(p)];
            }
        }
        // A span of zero length cannot occur: runs stop at distinct knots.
        VCurveStatus st = visit(cur.data());
        if (st != kCurveOK) return st;
        if (b < m) {
            std::int32_t from = p - mult < 0 ? 0 : p - mult;
            for (std::int32_t k = from; k <= p; ++k)
                nxt[std::size_t(k)] = Pw[b - p + k];
            cur.swap(nxt);
            a = b;
            ++b;
        }
    }
    return kCurveOK;
}
} // namespace

VCurveStatus VCNurbsCurve::DecomposeToBezier(VBezierPieces& out) const {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    if ((st = knots->Validate(degree, ctrlPoints->count)) != kCurveOK) return st;
    const std::int32_t spans = knots->CountSpans(degree);
    const std::int32_t size = degree + 1;
    VBezierPieces result;
    result.block = NewCurveArray<KVector3D>(std::int64_t(spans) * size);
    result.pieces = NewCurveArray<KVector3D*>(spans);
    if (!result.block || !result.pieces) return kCurveNoMemory;
    result.size = size;
    std::int32_t n = 0;
    try {
        st = WalkPieces(*this, [&](const KVector3D* piece) {
            if (n >= spans) return kCurveBadKnotCount;
            KVector3D* dst = result.block.get() + std::int64_t(n) * size;
            for (std::int32_t k = 0; k < size; ++k)
                dst[k] = piece[k];
            result.pieces[n] = dst;
            ++n;
            return kCurveOK;
        });
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
    if (st != kCurveOK) return st;
    result.count = n;
    out = std::move(result);
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::LengthByBezierPieces(double tolerance, double& length) const {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    if ((st = knots->Validate(degree, ctrlPoints->count)) != kCurveOK) return st;
    const std::int32_t spans = knots->CountSpans(degree);
    if (spans < 1) return kCurveBadKnotCount;
    const double each = tolerance / spans;
    double sum = 0.0;
    try {
        st = WalkPieces(*this, [&](const KVector3D* piece) {
            double l = 0.0;
            VCurveStatus s = BezierLength(degree, piece, each, l);
            sum += l;
            return s;
        });
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
    if (st != kCurveOK) return st;
    length = sum;
    return kCurveOK;
}
