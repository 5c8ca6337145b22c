#include "curves/VNurbsAlgorithms.h"

#include <cmath>
#include <vector>

VCurveStatus ChooseParameters(const KVector3D* points, std::int32_t count, std::int32_t mode,
                              double* u) {
    if (!points || !u || count < 2 || count > kCurveMaxCount) return kCurveBadBezierArgument;
    auto chords = NewCurveArray<double>(count);
    if (!chords) return kCurveNoMemory;
    double total = 0.0;
    for (std::int32_t i = 1; i < count; ++i) {
        double d = 1.0;
        if (mode != kParamUniform) {
            const KVector3D& a = points[i - 1];
            const KVector3D& b = points[i];
            double dx = double(b.x) - a.x, dy = double(b.y) - a.y, dz = double(b.z) - a.z;
            d = std::sqrt(dx * dx + dy * dy + dz * dz);
            if (mode == kParamCentripetal) d = std::sqrt(d);
        }
        if (!std::isfinite(d)) return kCurveBadBezierArgument;
        chords[i] = d;
        total += d;
    }
    // Points that all coincide leave no chord to measure by: fall back to
    // uniform steps so that the parameters still run from 0 to 1.
    const bool uniform = !(total > 0.0) || !std::isfinite(total);
    u[0] = 0.0;
    double run = 0.0;
    for (std::int32_t i = 1; i < count - 1; ++i) {
        if (uniform) {
            u[i] = double(i) / (count - 1);
        } else {
            run += chords[i];
            u[i] = run / total;
        }
    }
    u[count - 1] = 1.0;
    return kCurveOK;
}

namespace {
struct Abc {
    double a, b, c;
};

VCurveStatus BasisAt(const VKnots& knots, double u, Abc& out) {
    double N[4];
    std::int32_t span = 0;
    VCurveStatus st = knots.BasisFuns(3, u, true, N, span);
    if (st != kCurveOK) return st;
    out = {N[0], N[1], N[2]};
    return kCurveOK;
}

struct P4 {
    double x = 0, y = 0, z = 0;
};

P4 FromPoint(const KVector3D& p) {
    return {p.x, p.y, p.z};
}
P4 operator-(const P4& a, const P4& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
P4 operator*(double f, const P4& a) {
    return {f * a.x, f * a.y, f * a.z};
}

VCurveStatus Divide(const P4& num, double den, P4& out) {
    if (WouldOverflow(1.0, den, VCurveOp::Divide)) return kCurveDivisionOverflow;
    out = {num.x / den, num.y / den, num.z / den};
    if (!std::isfinite(out.x) || !std::isfinite(out.y) || !std::isfinite(out.z))
        return kCurveDivisionOverflow;
    return kCurveOK;
}
} // namespace

VCurveStatus InterpolateCubic(const KVector3D* Q, std::int32_t n, const KVector3D& D0,
                              const KVector3D& Dn, std::int32_t mode,
                              std::unique_ptr<VCNurbsCurve>& curve) {
    if (!Q || n < 2 || n > kCurveMaxCount - 8) return kCurveBadBezierArgument;
    for (std::int32_t i = 0; i < n; ++i)
        if (!std::isfinite(Q[i].x) || !std::isfinite(Q[i].y) || !std::isfinite(Q[i].z))
            return kCurveBadBezierArgument;
    try {
        std::vector<double> u(std::size_t(n), 0.0);
        VCurveStatus st = ChooseParameters(Q, n, mode, u.data());
        if (st != kCurveOK) return st;
        const std::int32_t pointCount = n + 2;
        const std::int32_t knotCount = n + 6;
        std::vector<double> U(std::size_t(knotCount), 0.0);
        for (std::int32_t i = 0; i < 4; ++i) {
            U[std::size_t(i)] = 0.0;
            U[std::size_t(knotCount - 1 - i)] = 1.0;
        }
        for (std::int32_t i = 1; i <= n - 2; ++i)
            U[std::size_t(i + 3)] = u[std::size_t(i)];
        VKnots knots(st, knotCount, U.data());
        if (st != kCurveOK) return st;

        std::vector<P4> P(static_cast<std::size_t>(pointCount));
        auto q = [&](std::int32_t i) { return FromPoint(Q[i]); };
        const P4 d0 = FromPoint(D0), dn = FromPoint(Dn);
        P[0] = q(0);
        P[1] = {q(0).x + U[4] / 3 * d0.x, q(0).y + U[4] / 3 * d0.y, q(0).z + U[4] / 3 * d0.z};
        P[std::size_t(n + 1)] = q(n - 1);
        const double e = (U[std::size_t(n + 1)] - 1.0) / 3.0;
        P[std::size_t(n)] = {q(n - 1).x + e * dn.x, q(n - 1).y + e * dn.y, q(n - 1).z + e * dn.z};

        if (n == 3) {
            Abc k;
            if ((st = BasisAt(knots, U[4], k)) != kCurveOK) return st;
            if ((st = Divide(q(1) - k.a * P[1] - k.c * P[3], k.b, P[2])) != kCurveOK) return st;
        } else if (n > 3) {
            std::vector<double> d(std::size_t(n + 1), 0.0);
            Abc k;
            if ((st = BasisAt(knots, U[4], k)) != kCurveOK) return st;
            double den = k.b;
            if ((st = Divide(q(1) - k.a * P[1], den, P[2])) != kCurveOK) return st;
            for (std::int32_t i = 3; i <= n - 2; ++i) {
                if (WouldOverflow(k.c, den, VCurveOp::Divide)) return kCurveDivisionOverflow;
                d[std::size_t(i)] = k.c / den;
                if ((st = BasisAt(knots, U[std::size_t(i + 2)], k)) != kCurveOK) return st;
                den = k.b - k.a * d[std::size_t(i)];
                st = Divide(q(i - 1) - k.a * P[std::size_t(i - 1)], den, P[std::size_t(i)]);
                if (st != kCurveOK) return st;
            }
            if (WouldOverflow(k.c, den, VCurveOp::Divide)) return kCurveDivisionOverflow;
            d[std::size_t(n - 1)] = k.c / den;
            if ((st = BasisAt(knots, U[std::size_t(n + 1)], k)) != kCurveOK) return st;
            den = k.b - k.a * d[std::size_t(n - 1)];
            st = Divide(q(n - 2) - k.c * P[std::size_t(n)] - k.a * P[std::size_t(n - 2)], den,
                        P[std::size_t(n - 1)]);
            if (st != kCurveOK) return st;
            for (std::int32_t i = n - 2; i >= 2; --i)
                P[std::size_t(i)] =
                    P[std::size_t(i)] - d[std::size_t(i + 1)] * P[std::size_t(i + 1)];
        }

        std::vector<KVector3D> pts(static_cast<std::size_t>(pointCount));
        for (std::int32_t i = 0; i < pointCount; ++i) {
            const P4& p = P[std::size_t(i)];
            pts[std::size_t(i)] = KVector3D(float(p.x), float(p.y), float(p.z), 1.0f);
        }
        const KVector3D& a = Q[0];
        const KVector3D& b = Q[n - 1];
        auto same = [](float x, float y) { return std::fabs(x - y) < float(kCurveEqualEps); };
        const bool isClosed = same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z) &&
                              same(D0.x, Dn.x) && same(D0.y, Dn.y) && same(D0.z, Dn.z);
        auto made = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
        if (!made) return kCurveNoMemory;
        st = made->Set(3, pointCount, pts.data(), knotCount, U.data(), isClosed ? 1 : 0);
        if (st != kCurveOK) return st;
        curve = std::move(made);
        return kCurveOK;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

std::unique_ptr<VCNurbsCurve> MakeBezierCurve(std::int32_t count, const KVector3D* points) {
    if (count < 2 || count > kCurveMaxDegree + 1 || !points) return nullptr;
    auto knots = NewCurveArray<double>(2 * std::int64_t(count));
    if (!knots) return nullptr;
    for (std::int32_t i = 0; i < count; ++i)
        knots[count + i] = 1.0;
    auto curve = std::unique_ptr<VCNurbsCurve>(new (std::nothrow) VCNurbsCurve());
    if (!curve) return nullptr;
    if (curve->Set(count - 1, count, points, 2 * count, knots.get(), 0) != kCurveOK) return nullptr;
    return curve;
}

VCurveStatus SplitBezier(std::int32_t degree, const KVector3D* points, double t, KVector3D* left,
                         KVector3D* right) {
    if (degree < 1 || degree > 4096 || !points || !left || !right) return kCurveBadBezierArgument;
    if (!(t >= 0.0 && t <= 1.0)) return kCurveBadBezierArgument;
    const std::int32_t p = degree;
    if (t < 1e-12) {
        for (std::int32_t i = 0; i <= p; ++i) {
            left[i] = points[0];
            right[i] = points[i];
        }
        return kCurveOK;
    }
    if (t > 0.999999999999) {
        for (std::int32_t i = 0; i <= p; ++i) {
            left[i] = points[i];
            right[i] = points[p];
        }
        return kCurveOK;
    }
    std::vector<double> w;
    try {
        w.resize(std::size_t(p + 1) * 4);
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
    for (std::int32_t i = 0; i <= p; ++i) {
        w[std::size_t(4 * i)] = points[i].x;
        w[std::size_t(4 * i + 1)] = points[i].y;
        w[std::size_t(4 * i + 2)] = points[i].z;
        w[std::size_t(4 * i + 3)] = points[i].w;
    }
    auto at = [&](std::int32_t i) {
        return KVector3D(float(w[std::size_t(4 * i)]), float(w[std::size_t(4 * i + 1)]),
                         float(w[std::size_t(4 * i + 2)]), float(w[std::size_t(4 * i + 3)]));
    };
    left[0] = points[0];
    right[p] = points[p];
    for (std::int32_t k = 1; k <= p; ++k) {
        for (std::int32_t i = 0; i <= p - k; ++i)
            for (int c = 0; c < 4; ++c)
                w[std::size_t(4 * i + c)] =
                    (1.0 - t) * w[std::size_t(4 * i + c)] + t * w[std::size_t(4 * (i + 1) + c)];
        left[k] = at(0);
        right[p - k] = at(p - k);
    }
    return kCurveOK;
}

VCurveStatus ExtractBezier(std::int32_t degree, const KVector3D* points, double t1, double t2,
                           KVector3D* result) {
    if (degree < 1 || degree > 4096 || !points || !result) return kCurveBadBezierArgument;
    if (!(t1 >= 0.0) || t1 >= 0.9999) return kCurveBadBezierArgument;
    try {
        std::vector<KVector3D> a(std::size_t(degree + 1)), b(std::size_t(degree + 1)),
            c(std::size_t(degree + 1));
        VCurveStatus st = SplitBezier(degree, points, t1, a.data(), b.data());
        if (st != kCurveOK) return st;
        st = SplitBezier(degree, b.data(), (t2 - t1) / (1.0 - t1), result, c.data());
        return st;
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

namespace {
// The subdivision runs in double precision, so that rounding of the points
// never passes for a difference between polygon and chord.
struct LengthWalk {
    std::int32_t p = 1;
    double sum = 0.0;
    bool bad = false;
    std::int64_t budget = std::int64_t(1) << 20;
    std::vector<double> scratch; // 2 (p + 1) homogeneous points per level

    static void Euclid(const double* h, double* e) {
        e[0] = h[0] / h[3];
        e[1] = h[1] / h[3];
        e[2] = h[2] / h[3];
    }
    static double Distance(const double* a, const double* b) {
        return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) +
                         (a[2] - b[2]) * (a[2] - b[2]));
    }

    double Recurse(const double* pts, double tolerance, int depth) {
        double polygon = 0.0;
        double prev[3], cur[3], first[3];
        Euclid(pts, first);
        prev[0] = first[0], prev[1] = first[1], prev[2] = first[2];
        for (std::int32_t i = 1; i <= p; ++i) {
            Euclid(pts + 4 * i, cur);
            polygon += Distance(prev, cur);
            prev[0] = cur[0], prev[1] = cur[1], prev[2] = cur[2];
        }
        const double chord = Distance(first, prev);
        if (!std::isfinite(polygon) || !std::isfinite(chord)) {
            bad = true;
            return 0.0;
        }
        const double diff = std::fabs(polygon - chord);
        // Forty halvings leave pieces far below any length a float point
        // can tell apart, and the budget of pieces bounds the work on a
        // curve that never flattens (a weight near zero): stop there
        // whatever the tolerance asks.
        if (diff <= tolerance || depth >= 40 || --budget < 0) {
            sum += polygon + chord;
            return diff;
        }
        const std::size_t stride = 4 * std::size_t(p + 1);
        double* left = scratch.data() + std::size_t(depth) * 2 * stride;
        double* right = left + stride;
        // de Casteljau at one half.
        std::vector<double>::size_type n = stride;
        double* w = right; // work in place in the right half
        for (std::size_t k = 0; k < n; ++k)
            w[k] = pts[k];
        for (int c = 0; c < 4; ++c)
            left[c] = w[c];
        for (std::int32_t k = 1; k <= p; ++k) {
            for (std::int32_t i = 0; i <= p - k; ++i)
                for (int c = 0; c < 4; ++c)
                    w[4 * i + c] = 0.5 * (w[4 * i + c] + w[4 * (i + 1) + c]);
            for (int c = 0; c < 4; ++c)
                left[4 * k + c] = w[c];
        }
        double errLeft = Recurse(left, tolerance * 0.5, depth + 1);
        // The right half gets what the left half left over; never less than
        // its own half, which only a stopped left half could eat into.
        double rest = tolerance - errLeft;
        if (!(rest >= tolerance * 0.5)) rest = tolerance * 0.5;
        double errRight = Recurse(right, rest, depth + 1);
        return errLeft + errRight;
    }
};
} // namespace

VCurveStatus BezierLength(std::int32_t degree, const KVector3D* points, double tolerance,
                          double& length) {
    if (degree < 1 || degree > 4096 || !points) return kCurveBadBezierArgument;
    if (!(tolerance > 0.0) || !std::isfinite(tolerance)) return kCurveBadBezierArgument;
    for (std::int32_t i = 0; i <= degree; ++i)
        if (!(points[i].w != 0.0f)) return kCurveDivisionOverflow;
    LengthWalk walk;
    walk.p = degree;
    std::vector<double> start;
    try {
        walk.scratch.resize(std::size_t(41) * 2 * 4 * std::size_t(degree + 1));
        start.resize(4 * std::size_t(degree + 1));
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
    for (std::int32_t i = 0; i <= degree; ++i) {
        start[std::size_t(4 * i)] = points[i].x;
        start[std::size_t(4 * i + 1)] = points[i].y;
        start[std::size_t(4 * i + 2)] = points[i].z;
        start[std::size_t(4 * i + 3)] = points[i].w;
    }
    // The work grows as one over the tolerance: a tolerance finer than a
    // millionth of the control polygon is taken as that millionth.
    double polygon = 0.0;
    for (std::int32_t i = 1; i <= degree; ++i)
        polygon += (ToEuclidean(points[i]) - ToEuclidean(points[i - 1])).Length();
    if (tolerance < 1e-6 * polygon) tolerance = 1e-6 * polygon;
    walk.Recurse(start.data(), 2.0 * tolerance, 0);
    if (walk.bad) return kCurveDivisionOverflow;
    length = walk.sum * 0.5;
    return kCurveOK;
}

VCurveStatus MakeBinomialTable(std::unique_ptr<std::int64_t[]>& table, std::int32_t n) {
    if (n < 0 || n > 62) return kCurveBadBezierArgument;
    const std::int64_t w = n + 1;
    auto t = NewCurveArray<std::int64_t>(w * w);
    if (!t) return kCurveNoMemory;
    for (std::int64_t i = 0; i <= n; ++i) {
        t[i * w] = 1;
        for (std::int64_t j = 1; j < i; ++j)
            t[i * w + j] = t[(i - 1) * w + j - 1] + t[(i - 1) * w + j];
        t[i * w + i] = 1;
    }
    table = std::move(t);
    return kCurveOK;
}

VCurveStatus ElevateBezier(std::int32_t degree, std::int32_t times, const KVector3D* points,
                           KVector3D* result) {
    if (degree < 1 || !points || !result) return kCurveBadBezierArgument;
    if (times < 1) return kCurveOK;
    if (degree > 62 || times > 62 - degree) return kCurveBadBezierArgument;
    const std::int32_t ph = degree + times;
    std::unique_ptr<std::int64_t[]> bin;
    VCurveStatus st = MakeBinomialTable(bin, ph);
    if (st != kCurveOK) return st;
    const std::int64_t w = ph + 1;
    auto C = [&](std::int32_t n, std::int32_t k) { return double(bin[n * w + k]); };
    for (std::int32_t i = 0; i <= ph; ++i) {
        // The coefficients are symmetric about the middle row: compute the
        // upper half and mirror it.
        const bool mirrored = i > ph / 2;
        const std::int32_t row = mirrored ? ph - i : i;
        double acc[4] = {0, 0, 0, 0};
        const std::int32_t lo = row - times > 0 ? row - times : 0;
        const std::int32_t hi = degree < row ? degree : row;
        for (std::int32_t j = lo; j <= hi; ++j) {
            double coef = C(degree, j) * C(times, row - j) / C(ph, row);
            const KVector3D& P = points[mirrored ? degree - j : j];
            acc[0] += coef * P.x;
            acc[1] += coef * P.y;
            acc[2] += coef * P.z;
            acc[3] += coef * P.w;
        }
        result[i] = KVector3D(float(acc[0]), float(acc[1]), float(acc[2]), float(acc[3]));
    }
    return kCurveOK;
}
