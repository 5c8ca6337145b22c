// The maximum and the span-wise extents of one basis function, the input of
// the error bound of knot removal; and the merging of knot vectors.
#include "curves/VKnots.h"
#include "curves/VNurbsAlgorithms.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {
bool Same(double a, double b) {
    return std::fabs(a - b) < kCurveEqualEps;
}
} // namespace

VCurveStatus VKnots::FindBasisMaximum(std::int32_t i, std::int32_t p, double tolerance,
                                      double& value, double& location) const {
    if (p < 1 || p > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (i < 0 || i > count - p - 2) return kCurveBadBasisIndex;
    const double* U = values.get();
    bool spike = true;
    for (std::int32_t k = i + 1; k < i + p; ++k)
        if (!Same(U[k], U[k + 1])) spike = false;
    if (p == 1 || spike) {
        value = 1.0;
        location = U[i + 1];
        return kCurveOK;
    }
    if (!(tolerance > 0.0)) tolerance = 1e-9;
    const double a = U[i], b = U[i + p + 1];
    auto d1At = [&](double u, bool fromRight, double* out) {
        return DersOneBasisFun(i, p, u, fromRight, 2, out);
    };
    // Scan for the first step whose end has a falling slope.
    auto bracket = [&](double lo, double hi, int parts, double& bl, double& bh) {
        const double step = (hi - lo) / parts;
        for (int k = 1; k <= parts; ++k) {
            double end = k == parts ? hi : lo + step * k;
            double d[3];
            if (d1At(end, false, d) != kCurveOK) return false;
            // The end of the support counts as falling: where the function
            // meets it tangentially its slope there is zero, not negative.
            if (d[1] < 0.0 || k == parts) {
                bl = end - step;
                bh = end;
                return true;
            }
        }
        return false;
    };
    double lo = a, hi = b;
    if (!bracket(a, b, 10 * p, lo, hi)) return kCurveNoBasisMaximum;
    for (int attempt = 0; attempt < 20; ++attempt) {
        double u = 0.5 * (lo + hi);
        for (int step = 0; step < 20; ++step) {
            double d[3];
            if (d1At(u, true, d) != kCurveOK) break;
            if (std::fabs(d[1]) < tolerance && d[0] > tolerance) {
                value = d[0];
                location = u;
                return kCurveOK;
            }
            if (WouldOverflow(d[1], d[2], VCurveOp::Divide)) break;
            u -= d[1] / d[2];
            if (!(u > a && u < b)) break;
        }
        // A bracket narrower than the tolerance holds the maximum.
        if (hi - lo < tolerance) {
            double v = 0.0;
            u = 0.5 * (lo + hi);
            if (OneBasisFun(i, p, u, true, v) != kCurveOK) break;
            value = v;
            location = u;
            return kCurveOK;
        }
        double nl = lo, nh = hi;
        if (!bracket(lo, hi, 10, nl, nh)) break;
        lo = nl;
        hi = nh;
    }
    return kCurveNoBasisMaximum;
}

VCurveStatus VKnots::GetBasisExtents(std::int32_t i, std::int32_t p, double tolerance, double* L,
                                     double* R, double& location) const {
    if (p < 1 || p > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (!L || !R) return kCurveBadBezierArgument;
    if (i < 0 || i > count - p - 2) return kCurveBadBasisIndex;
    const double* U = values.get();
    if (p == 1) {
        L[0] = L[1] = 0.0;
        R[0] = R[1] = 1.0;
        location = U[i + 1];
        return kCurveOK;
    }
    bool spike = true;
    for (std::int32_t k = i + 1; k < i + p; ++k)
        if (!Same(U[k], U[k + 1])) spike = false;
    if (spike) {
        for (std::int32_t j = 0; j <= p; ++j) {
            R[j] = 1.0;
            L[j] = 1.0;
        }
        L[0] = Same(U[i], U[i + 1]) ? 1.0 : 0.0;
        L[p] = Same(U[i + p], U[i + p + 1]) ? 1.0 : 0.0;
        location = U[i + 1];
        return kCurveOK;
    }
    double maximum = 0.0;
    VCurveStatus st = FindBasisMaximum(i, p, tolerance, maximum, location);
    if (st != kCurveOK) return st;
    std::int32_t m = 0;
    for (std::int32_t j = 0; j <= p; ++j)
        if (U[i + j] <= location && location < U[i + j + 1]) m = j;
    for (std::int32_t j = 0; j <= p; ++j) {
        double left = 0.0, right = 0.0;
        if ((st = OneBasisFun(i, p, U[i + j], true, left)) != kCurveOK) return st;
        if ((st = OneBasisFun(i, p, U[i + j + 1], true, right)) != kCurveOK) return st;
        if (j < m) {
            L[j] = left;
            R[j] = right;
        } else if (j > m) {
            L[j] = right;
            R[j] = left;
        } else {
            R[j] = maximum;
            L[j] = left < right ? left : right;
        }
    }
    return kCurveOK;
}

VCurveStatus MergeKnots(std::int32_t count, const VKnots* const* vectors,
                        std::unique_ptr<VKnots>* merged) {
    if (count < 1 || !vectors || !merged) return kCurveBadBezierArgument;
    try {
        // Distinct values with the highest multiplicity any input has.
        std::vector<std::pair<double, std::int32_t>> runs;
        for (std::int32_t v = 0; v < count; ++v) {
            const VKnots* k = vectors[v];
            if (!k || !k->values || k->count < 1) return kCurveMissingKnots;
            for (std::int32_t i = 0; i < k->count;) {
                std::int32_t run = 1;
                while (i + run < k->count && Same(k->values[i + run], k->values[i]))
                    ++run;
                const double value = k->values[i];
                bool found = false;
                for (auto& r : runs)
                    if (Same(r.first, value)) {
                        if (run > r.second) r.second = run;
                        found = true;
                    }
                if (!found) runs.push_back({value, run});
                i += run;
            }
        }
        std::sort(runs.begin(), runs.end());
        std::vector<double> all;
        for (const auto& r : runs)
            for (std::int32_t k = 0; k < r.second; ++k)
                all.push_back(r.first);
        if (all.size() > std::size_t(kCurveMaxCount)) return kCurveBadPointCount;
        for (std::int32_t v = 0; v < count; ++v) {
            VCurveStatus st = kCurveOK;
            auto k = std::unique_ptr<VKnots>(new (std::nothrow)
                                                 VKnots(st, std::int32_t(all.size()), all.data()));
            if (!k) return kCurveNoMemory;
            if (st != kCurveOK) return st;
            merged[v] = std::move(k);
        }
        return kCurveOK;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}
