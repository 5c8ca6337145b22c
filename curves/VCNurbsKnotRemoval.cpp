// Knot removal within an error bound: inner knots go one at a time, the
// removal with the smallest bound first, as long as the error that the
// removals add up to stays within the tolerance everywhere on the curve.
#include "curves/VCNurbsCurve.h"

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {
using P4 = std::array<double, 4>;

P4 Load(const KVector3D& v) {
    return {v.x, v.y, v.z, v.w};
}

double Distance4D(const P4& a, const P4& b) {
    double s = 0.0;
    for (int c = 0; c < 4; ++c)
        s += (a[c] - b[c]) * (a[c] - b[c]);
    return std::sqrt(s);
}

P4 Mix(double f, const P4& a, double g, const P4& b) {
    return {f * a[0] + g * b[0], f * a[1] + g * b[1], f * a[2] + g * b[2], f * a[3] + g * b[3]};
}

// The two sweeps of one removal of knot r (multiplicity s): temp holds the
// new points from first - 1 on. Returns false when a division would overflow.
// ii and jj are where the two sweeps stopped; i and j the control point
// indices they reached.
struct Sweep {
    std::vector<P4> temp;
    std::int32_t first = 0, last = 0, off = 0, i = 0, j = 0, ii = 0, jj = 0;
};

bool RunSweeps(std::int32_t p, const double* U, const KVector3D* Pw, std::int32_t r, std::int32_t s,
               Sweep& w) {
    const double u = U[r];
    const std::int32_t ord = p + 1;
    w.last = r - s;
    w.first = r - p;
    w.off = w.first - 1;
    w.temp.assign(std::size_t(w.last - w.off + 2), P4{0, 0, 0, 0});
    w.temp[0] = Load(Pw[w.off]);
    w.temp[std::size_t(w.last + 1 - w.off)] = Load(Pw[w.last + 1]);
    w.i = w.first;
    w.j = w.last;
    w.ii = 1;
    w.jj = w.last - w.off;
    while (w.j - w.i > 0) {
        const double di = U[w.i + ord] - U[w.i], dj = U[w.j + ord] - U[w.j];
        if (WouldOverflow(u - U[w.i], di, VCurveOp::Divide) ||
            WouldOverflow(u - U[w.j], dj, VCurveOp::Divide))
            return false;
        const double alfi = (u - U[w.i]) / di;
        const double alfj = (u - U[w.j]) / dj;
        if (WouldOverflow(1.0, alfi, VCurveOp::Divide) ||
            WouldOverflow(1.0, 1.0 - alfj, VCurveOp::Divide))
            return false;
        const P4 pi = Load(Pw[w.i]), pj = Load(Pw[w.j]);
        for (int c = 0; c < 4; ++c) {
            w.temp[std::size_t(w.ii)][c] =
                (pi[c] - (1.0 - alfi) * w.temp[std::size_t(w.ii - 1)][c]) / alfi;
            w.temp[std::size_t(w.jj)][c] =
                (pj[c] - alfj * w.temp[std::size_t(w.jj + 1)][c]) / (1.0 - alfj);
        }
        ++w.i;
        ++w.ii;
        --w.j;
        --w.jj;
    }
    return true;
}
} // namespace

VCurveStatus VCNurbsCurve::GetRemovalBound(std::int32_t r, std::int32_t s, double& bound) const {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    const std::int32_t p = degree;
    const std::int32_t n = ctrlPoints->count;
    if (r <= p || r >= n || s < 1 || s > p + 1 || r - p - 1 < 0) return kCurveParamOutOfRange;
    const double* U = knots->values.get();
    try {
        Sweep w;
        if (!RunSweeps(p, U, ctrlPoints->points.get(), r, s, w)) return kCurveDivisionOverflow;
        if (w.j - w.i < 0) {
            bound = Distance4D(w.temp[std::size_t(w.ii - 1)], w.temp[std::size_t(w.jj + 1)]);
        } else {
            const double d = U[w.i + p + 1] - U[w.i];
            if (WouldOverflow(U[r] - U[w.i], d, VCurveOp::Divide)) return kCurveDivisionOverflow;
            const double alfi = (U[r] - U[w.i]) / d;
            bound = Distance4D(Load(ctrlPoints->points[w.i]),
                               Mix(alfi, w.temp[std::size_t(w.ii + 1)], 1.0 - alfi,
                                   w.temp[std::size_t(w.ii - 1)]));
        }
        return kCurveOK;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

VCurveStatus VCNurbsCurve::RemoveKnots(float tolerance) {
    VCurveStatus st = CheckValid();
    if (st == kCurveOK) st = knots->Validate(degree, ctrlPoints->count);
    if (st != kCurveOK) {
        Invalidate();
        return st;
    }
    if (!(tolerance >= 0.0f) || !std::isfinite(tolerance)) {
        Invalidate();
        return kCurveBadBezierArgument;
    }
    const std::int32_t p = degree;
    std::int32_t n = ctrlPoints->count;
    std::int32_t m = knots->count;
    double* U = knots->values.get();
    KVector3D* Pw = ctrlPoints->points.get();
    const double big = std::numeric_limits<double>::max();
    auto isBig = [&](double b) { return std::fabs(b - big) < kCurveEqualEps || b >= big; };

    double wmin = 0, wmax = 0, nmin = 0, pmax = 0;
    ctrlPoints->GetBounds(wmin, wmax, nmin, pmax);
    const double search = std::fabs(U[m - 1] - U[0]) * 0.00001;
    const float limit = float(tolerance * wmin / (1.0 + pmax));

    try {
        std::vector<double> B(std::size_t(m), big), e(std::size_t(m), 0.0), te(std::size_t(m), 0.0);
        std::vector<std::int32_t> mult(std::size_t(m), 0);

        // Bound and multiplicity at the last index of every inner knot run.
        auto computeBound = [&](std::int32_t idx) {
            std::int32_t s = 1;
            while (idx - s >= 0 && std::fabs(U[idx - s] - U[idx]) < kCurveEqualEps)
                ++s;
            mult[std::size_t(idx)] = s;
            double b = big;
            if (s <= p + 1 && GetRemovalBound(idx, s, b) == kCurveOK && std::isfinite(b))
                B[std::size_t(idx)] = b;
            else
                B[std::size_t(idx)] = big;
        };
        for (std::int32_t i = p + 1; i < n; ++i)
            if (U[i + 1] - U[i] > kCurveEqualEps) computeBound(i);

        std::vector<double> E(std::size_t(p + 2)), L1(std::size_t(p + 1)), R1(std::size_t(p + 1)),
            L2(std::size_t(p + 1)), R2(std::size_t(p + 1));
        while (n > p + 1) {
            // The smallest bound among the inner knots.
            std::int32_t r = -1;
            for (std::int32_t i = p + 1; i <= n - 1; ++i)
                if (r < 0 || B[std::size_t(i)] < B[std::size_t(r)]) r = i;
            if (r < 0 || isBig(B[std::size_t(r)])) break;
            const std::int32_t s = mult[std::size_t(r)];
            const double Br = B[std::size_t(r)];

            // Coefficients of the error that the removal adds to each span.
            std::int32_t i = 0, last = 0;
            double lam = 0.0;
            const bool odd = ((p + s) % 2) != 0;
            double location = 0.0;
            if (!odd) {
                const std::int32_t k = (p + s) / 2;
                i = r - k;
                last = i + p;
                if (i < 0 || knots->GetBasisExtents(i, p, search, L1.data(), R1.data(), location) !=
                                 kCurveOK)
                    for (std::int32_t j = 0; j <= p; ++j)
                        R1[std::size_t(j)] = 1.0;
                for (std::int32_t j = 0; j <= p; ++j)
                    E[std::size_t(j)] = R1[std::size_t(j)];
            } else {
                const std::int32_t k = (p + s + 1) / 2;
                i = r - k;
                last = i + p + 1;
                const double alpha = (U[r] - U[i]) / (U[i + p + 1] - U[i]);
                const double beta = (U[r] - U[i + 1]) / (U[i + p + 2] - U[i + 1]);
                lam = (alpha + beta) != 0.0 ? alpha / (alpha + beta) : 0.5;
                const double c1 = lam * alpha;
                const double c2 = (1.0 - lam) * (1.0 - beta);
                auto extents = [&](std::int32_t f, std::vector<double>& L, std::vector<double>& R) {
                    if (f < 0 || knots->GetBasisExtents(f, p, search, L.data(), R.data(),
                                                        location) != kCurveOK)
                        for (std::int32_t j = 0; j <= p; ++j) {
                            L[std::size_t(j)] = 0.0;
                            R[std::size_t(j)] = 1.0;
                        }
                };
                extents(i, L1, R1);
                extents(i + 1, L2, R2);
                E[0] = c1 * R1[0];
                for (std::int32_t j = 1; j <= p; ++j) {
                    const double a =
                        std::fabs(c1 * R1[std::size_t(j)] - c2 * L2[std::size_t(j - 1)]);
                    const double b =
                        std::fabs(c2 * R2[std::size_t(j - 1)] - c1 * L1[std::size_t(j)]);
                    E[std::size_t(j)] = a > b ? a : b;
                }
                E[std::size_t(p + 1)] = c2 * R2[std::size_t(p)];
            }

            // Would the accumulated error stay within the limit on every span?
            bool keep = false;
            for (std::int32_t j = i; j <= last && j < m - 1; ++j) {
                if (!(U[j + 1] - U[j] > kCurveEqualEps)) continue;
                te[std::size_t(j)] = E[std::size_t(j - i)] * Br + e[std::size_t(j)];
                if (te[std::size_t(j)] > limit) keep = true;
            }
            Sweep w;
            if (!keep && !RunSweeps(p, U, Pw, r, s, w)) keep = true;
            if (!keep) {
                if (odd)
                    w.temp[std::size_t(w.jj + 1)] = Mix(1.0 - lam, w.temp[std::size_t(w.ii - 1)],
                                                        lam, w.temp[std::size_t(w.jj + 1)]);
                // The weights of the points that will be written; without a
                // crossing the middle entry is never computed and is dropped.
                if (ctrlPoints->rational)
                    for (std::int32_t q = 1; q <= w.last - w.off; ++q)
                        if ((w.j - w.i < 0 || q != w.ii) && w.temp[std::size_t(q)][3] < 0.01)
                            keep = true;
            }
            if (keep) {
                B[std::size_t(r)] = big;
                continue;
            }
            for (std::int32_t j = i; j <= last && j < m - 1; ++j)
                if (U[j + 1] - U[j] > kCurveEqualEps) e[std::size_t(j)] = te[std::size_t(j)];

            // Write the new points: pairs from both sweeps towards the middle.
            {
                std::int32_t a = w.first, b = w.last;
                while (b - a > 0) {
                    const P4& qa = w.temp[std::size_t(a - w.off)];
                    const P4& qb = w.temp[std::size_t(b - w.off)];
                    Pw[a] = KVector3D(float(qa[0]), float(qa[1]), float(qa[2]), float(qa[3]));
                    Pw[b] = KVector3D(float(qb[0]), float(qb[1]), float(qb[2]), float(qb[3]));
                    ++a;
                    --b;
                }
                // With a crossing the point kept at the meeting is the blend
                // of both sweeps (no pair above reaches it when the knot had
                // degree + 1 copies).
                if (odd) {
                    const P4& q = w.temp[std::size_t(w.jj + 1)];
                    Pw[w.jj + 1 + w.off] =
                        KVector3D(float(q[0]), float(q[1]), float(q[2]), float(q[3]));
                }
            }
            const std::int32_t nBefore = n;
            e[std::size_t(r - 1)] = std::max(e[std::size_t(r - 1)], e[std::size_t(r)]);
            if (s > 1) mult[std::size_t(r - 1)] = s - 1;
            for (std::int32_t k = r + 1; k < m; ++k) {
                B[std::size_t(k - 1)] = B[std::size_t(k)];
                mult[std::size_t(k - 1)] = mult[std::size_t(k)];
                e[std::size_t(k - 1)] = e[std::size_t(k)];
                U[k - 1] = U[k];
            }
            const std::int32_t fout = (2 * r - s - p) / 2;
            for (std::int32_t k = fout + 1; k < n; ++k)
                Pw[k - 1] = Pw[k];
            --n;
            --m;
            ctrlPoints->count = n;
            knots->count = m;
            if (n <= p + 1) break;

            // New bounds around the removal.
            const std::int32_t lo = std::max(p + 1, r - p);
            const std::int32_t hi = std::min(nBefore - 2, r + p - s);
            for (std::int32_t k = lo; k <= hi && k < n; ++k) {
                if (U[k + 1] - U[k] > kCurveEqualEps)
                    computeBound(k);
                else
                    B[std::size_t(k)] = big;
            }
            if (s > 1 && r - 1 >= p + 1 && r - 1 < n) computeBound(r - 1);
        }
    } catch (const std::bad_alloc&) {
        st = kCurveNoMemory;
    }
    ctrlPoints->UpdateRational();
    ctrlPoints->UpdateDimension();
    if (closed && n > 0) Pw[n - 1] = Pw[0];
    Invalidate();
    return st;
}
