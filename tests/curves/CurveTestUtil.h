// Helpers shared by the curve tests: random clamped curves and an
// independent evaluation by de Boor's algorithm in double precision.
#pragma once

#include "curves/VCNurbsCurve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace curvetest {

struct RandomCurveSpec {
    int degree;
    std::vector<KVector3D> points; // homogeneous
    std::vector<double> knots;
};

// A clamped curve with coordinates in [-1, 1], inner knots that may repeat
// up to the degree, and weights in [0.5, 2] when rational.
inline RandomCurveSpec MakeRandomSpec(std::mt19937& rng, bool rational, int maxDegree = 5) {
    std::uniform_int_distribution<int> degDist(1, maxDegree);
    RandomCurveSpec s;
    s.degree = degDist(rng);
    std::uniform_int_distribution<int> extra(0, 10);
    int n = s.degree + 1 + extra(rng);
    std::uniform_real_distribution<double> coord(-1.0, 1.0);
    std::uniform_real_distribution<double> weight(0.5, 2.0);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    std::uniform_real_distribution<double> lo(-3.0, 3.0);
    for (int i = 0; i < n; ++i) {
        float w = rational ? float(weight(rng)) : 1.0f;
        s.points.push_back(
            KVector3D(float(coord(rng)) * w, float(coord(rng)) * w, float(coord(rng)) * w, w));
    }
    double a = lo(rng);
    double b = a + 0.5 + 4.0 * unit(rng);
    int inner = n - s.degree - 1;
    std::vector<double> in;
    while (int(in.size()) < inner) {
        double k = a + (b - a) * (0.05 + 0.9 * unit(rng));
        int mult = 1 + int(unit(rng) * 4.0);
        if (mult > s.degree) mult = s.degree;
        for (int j = 0; j < mult && int(in.size()) < inner; ++j)
            in.push_back(k);
    }
    std::sort(in.begin(), in.end());
    for (int i = 0; i <= s.degree; ++i)
        s.knots.push_back(a);
    for (double k : in)
        s.knots.push_back(k);
    for (int i = 0; i <= s.degree; ++i)
        s.knots.push_back(b);
    return s;
}

inline std::unique_ptr<VCNurbsCurve> MakeCurve(const RandomCurveSpec& s) {
    auto c = std::make_unique<VCNurbsCurve>();
    VCurveStatus st = c->Set(s.degree, int(s.points.size()), s.points.data(), int(s.knots.size()),
                             s.knots.data(), 0);
    if (st != kCurveOK) return nullptr;
    return c;
}

// de Boor's algorithm (The NURBS Book A2.1/A3.1 free formulation) on the
// homogeneous points, span chosen right-continuous except at the last knot.
inline std::array<double, 3> DeBoor(int p, const std::vector<double>& U,
                                    const std::vector<KVector3D>& P, double u) {
    int n = int(P.size()) - 1;
    int k = p;
    if (u >= U[n + 1]) {
        k = n;
    } else {
        while (k < n && !(u >= U[k] && u < U[k + 1]))
            ++k;
    }
    std::vector<std::array<double, 4>> d(p + 1);
    for (int j = 0; j <= p; ++j) {
        const KVector3D& q = P[j + k - p];
        d[j] = {q.x, q.y, q.z, q.w};
    }
    for (int r = 1; r <= p; ++r) {
        for (int j = p; j >= r; --j) {
            int i = j + k - p;
            double den = U[i + p - r + 1] - U[i];
            double alpha = den == 0.0 ? 0.0 : (u - U[i]) / den;
            for (int c = 0; c < 4; ++c)
                d[j][c] = (1.0 - alpha) * d[j - 1][c] + alpha * d[j][c];
        }
    }
    return {d[p][0] / d[p][3], d[p][1] / d[p][3], d[p][2] / d[p][3]};
}

// de Casteljau on homogeneous Bezier points at t, Euclidean result.
inline std::array<double, 3> Casteljau(const KVector3D* P, int p, double t) {
    std::vector<std::array<double, 4>> d(p + 1);
    for (int j = 0; j <= p; ++j)
        d[j] = {P[j].x, P[j].y, P[j].z, P[j].w};
    for (int r = 1; r <= p; ++r)
        for (int j = 0; j <= p - r; ++j)
            for (int c = 0; c < 4; ++c)
                d[j][c] = (1.0 - t) * d[j][c] + t * d[j + 1][c];
    return {d[0][0] / d[0][3], d[0][1] / d[0][3], d[0][2] / d[0][3]};
}

inline double Dist(const std::array<double, 3>& a, const KVector3D& b) {
    return std::sqrt((a[0] - b.x) * (a[0] - b.x) + (a[1] - b.y) * (a[1] - b.y) +
                     (a[2] - b.z) * (a[2] - b.z));
}
inline double Dist(const std::array<double, 3>& a, const std::array<double, 3>& b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) +
                     (a[2] - b[2]) * (a[2] - b[2]));
}

inline bool Finite(const KVector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Largest deviation from an orthonormal right-handed frame.
inline double FrameError(const KVector3D& t, const KVector3D& n, const KVector3D& b) {
    double e = 0.0;
    auto upd = [&](double v) { e = std::max(e, std::fabs(v)); };
    upd(t.Length() - 1.0);
    upd(n.Length() - 1.0);
    upd(b.Length() - 1.0);
    upd(t.Dot(n));
    upd(t.Dot(b));
    upd(n.Dot(b));
    KVector3D c = t.Cross(n);
    upd((c - b).Length());
    if (!Finite(t) || !Finite(n) || !Finite(b)) return 1e9;
    return e;
}

} // namespace curvetest
