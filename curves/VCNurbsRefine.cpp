// Knot refinement and extraction of a part of a curve.
#include "curves/VCNurbsCurve.h"

#include <array>
#include <cmath>
#include <vector>

VCurveStatus VCNurbsCurve::RefineKnots(std::int32_t count, const double* X) {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) {
        Invalidate();
        return st;
    }
    if (count < 1) {
        Invalidate();
        return kCurveOK;
    }
    if (!X || count > kCurveMaxCount) {
        Invalidate();
        return kCurveBadBezierArgument;
    }
    const std::int32_t p = degree;
    const double* U = knots->values.get();
    const std::int32_t n = ctrlPoints->count - 1;
    const std::int32_t m = n + p + 1;
    // Only inner values may be inserted, in order, and no knot may end up
    // with more than degree + 1 copies.
    for (std::int32_t j = 0; j < count; ++j) {
        if (!(X[j] > U[0] + kCurveEqualEps && X[j] < U[m] - kCurveEqualEps)) {
            Invalidate();
            return kCurveParamOutOfRange;
        }
        if (j > 0 && X[j] < X[j - 1]) {
            Invalidate();
            return kCurveParamOutOfRange;
        }
    }
    try {
        for (std::int32_t j = 0; j < count;) {
            std::int32_t run = 1;
            while (j + run < count && X[j + run] - X[j] < kCurveEqualEps)
                ++run;
            std::int32_t have = 0;
            for (std::int32_t k = 0; k <= m; ++k)
                if (std::fabs(U[k] - X[j]) < kCurveEqualEps) ++have;
            if (have + run > p + 1) {
                Invalidate();
                return kCurveBadKnotCount;
            }
            j += run;
        }
        const std::int32_t r = count - 1;
        std::int32_t a = 0, b = 0;
        knots->FindSpan(p, X[0], true, a);
        knots->FindSpan(p, X[r], true, b);
        ++b;
        const KVector3D* Pw = ctrlPoints->points.get();
        std::vector<std::array<double, 4>> Q(std::size_t(n + count + 1));
        std::vector<double> Ubar(std::size_t(m + count + 1));
        auto load = [](const KVector3D& v) { return std::array<double, 4>{v.x, v.y, v.z, v.w}; };
        for (std::int32_t j = 0; j <= a - p; ++j)
            Q[std::size_t(j)] = load(Pw[j]);
        for (std::int32_t j = b - 1; j <= n; ++j)
            Q[std::size_t(j + r + 1)] = load(Pw[j]);
        for (std::int32_t j = 0; j <= a; ++j)
            Ubar[std::size_t(j)] = U[j];
        for (std::int32_t j = b + p; j <= m; ++j)
            Ubar[std::size_t(j + r + 1)] = U[j];
        std::int32_t i = b + p - 1, k = b + p + r;
        for (std::int32_t j = r; j >= 0; --j) {
            while (X[j] <= U[i] && i > a) {
                Q[std::size_t(k - p - 1)] = load(Pw[i - p - 1]);
                Ubar[std::size_t(k)] = U[i];
                --k;
                --i;
            }
            Q[std::size_t(k - p - 1)] = Q[std::size_t(k - p)];
            for (std::int32_t l = 1; l <= p; ++l) {
                const std::int32_t ind = k - p + l;
                double alfa = Ubar[std::size_t(k + l)] - X[j];
                if (std::fabs(alfa) < kCurveEqualEps) {
                    Q[std::size_t(ind - 1)] = Q[std::size_t(ind)];
                } else {
                    alfa = alfa / (Ubar[std::size_t(k + l)] - U[i - p + l]);
                    for (int c = 0; c < 4; ++c)
                        Q[std::size_t(ind - 1)][c] = alfa * Q[std::size_t(ind - 1)][c] +
                                                     (1.0 - alfa) * Q[std::size_t(ind)][c];
                }
            }
            Ubar[std::size_t(k)] = X[j];
            --k;
        }
        std::vector<KVector3D> pts(Q.size());
        for (std::size_t q = 0; q < Q.size(); ++q)
            pts[q] = KVector3D(float(Q[q][0]), float(Q[q][1]), float(Q[q][2]), float(Q[q][3]));
        const std::int32_t keepClosed = closed;
        st = Set(p, std::int32_t(pts.size()), pts.data(), std::int32_t(Ubar.size()), Ubar.data(),
                 keepClosed);
    } catch (const std::bad_alloc&) {
        st = kCurveNoMemory;
    }
    Invalidate();
    return st;
}

std::unique_ptr<VCNurbsCurve> VCNurbsCurve::ExtractSegment(double u1, double u2,
                                                           VCurveStatus& status) const {
    status = CheckValid();
    if (status != kCurveOK) return nullptr;
    if (u1 > u2) std::swap(u1, u2);
    double uMin = 0, uMax = 0;
    GetDomain(uMin, uMax);
    if (!(u1 >= uMin - kCurveEqualEps && u2 <= uMax + kCurveEqualEps) ||
        !(u2 - u1 > kCurveEqualEps)) {
        status = kCurveParamOutOfRange;
        return nullptr;
    }
    if (u1 < uMin) u1 = uMin;
    if (u2 > uMax) u2 = uMax;
    const std::int32_t p = degree;
    auto work = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
    if (!work) {
        status = kCurveNoMemory;
        return nullptr;
    }
    status = work->Set(p, ctrlPoints->count, ctrlPoints->points.get(), knots->count,
                       knots->values.get(), 0);
    if (status != kCurveOK) return nullptr;
    // Bring both ends up to degree copies, so that the points between them
    // are exactly those of the part.
    try {
        std::vector<double> X;
        for (double v : {u1, u2}) {
            if (v - uMin < kCurveEqualEps || uMax - v < kCurveEqualEps) continue;
            std::int32_t span = 0, mult = 0;
            work->knots->FindSpanMult(p, v, true, span, mult);
            for (std::int32_t k = mult; k < p; ++k)
                X.push_back(v);
        }
        if (!X.empty()) {
            status = work->RefineKnots(std::int32_t(X.size()), X.data());
            if (status != kCurveOK) return nullptr;
        }
        const double* U = work->knots->values.get();
        const std::int32_t m = work->knots->count - 1;
        // Last index of u1's run and first index of u2's run.
        std::int32_t lastOf1 = 0;
        for (std::int32_t k = 0; k <= m; ++k)
            if (U[k] < u1 + kCurveEqualEps) lastOf1 = k;
        std::int32_t firstOf2 = m;
        for (std::int32_t k = m; k >= 0; --k)
            if (U[k] > u2 - kCurveEqualEps) firstOf2 = k;
        const std::int32_t first = lastOf1 - p;
        const std::int32_t last = firstOf2 - 1;
        const std::int32_t count = last - first + 1;
        if (first < 0 || count < p + 1 || last >= work->ctrlPoints->count) {
            status = kCurveBadKnotCount;
            return nullptr;
        }
        std::vector<double> K;
        for (std::int32_t k = 0; k <= p; ++k)
            K.push_back(u1);
        for (std::int32_t k = lastOf1 + 1; k < firstOf2; ++k)
            K.push_back(U[k]);
        for (std::int32_t k = 0; k <= p; ++k)
            K.push_back(u2);
        auto result = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
        if (!result) {
            status = kCurveNoMemory;
            return nullptr;
        }
        status = result->Set(p, count, work->ctrlPoints->points.get() + first,
                             std::int32_t(K.size()), K.data(), 0);
        if (status != kCurveOK) return nullptr;
        return result;
    } catch (const std::bad_alloc&) {
        status = kCurveNoMemory;
        return nullptr;
    }
}
