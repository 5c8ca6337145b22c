// Knot refinement, segment extraction, derivatives, basis extents, knot
// merging and knot removal within its error bound.
#include "CurveTestUtil.h"
#include "curves/VNurbsAlgorithms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace curvetest;

namespace {
// Largest distance between two curves over the same parameters.
double Deviation(const VCNurbsCurve& a, const VCNurbsCurve& b, double u0, double u1, int n = 200) {
    double worst = 0.0;
    for (int i = 0; i <= n; ++i) {
        double u = u0 + (u1 - u0) * i / n;
        KVector3D pa, pb;
        if (a.Evaluate(u, true, pa) != kCurveOK || b.Evaluate(u, true, pb) != kCurveOK) return 1e9;
        worst = std::max(worst, double((pa - pb).Length()));
    }
    return worst;
}

// Random new inner knots, kept 1% of the domain away from the others: a
// knot closer than that gives control points whose single-precision
// rounding is all that its removal can measure.
std::vector<double> RandomInsertions(std::mt19937& rng, const RandomCurveSpec& s, int count) {
    const double a = s.knots.front(), b = s.knots.back();
    std::uniform_real_distribution<double> ud(a, b);
    std::vector<double> X;
    for (int tries = 0; int(X.size()) < count && tries < 1000; ++tries) {
        double x = ud(rng);
        bool clear = true;
        for (double k : s.knots)
            if (std::fabs(k - x) < 0.01 * (b - a)) clear = false;
        for (double k : X)
            if (std::fabs(k - x) < 0.01 * (b - a)) clear = false;
        if (clear) X.push_back(x);
    }
    std::sort(X.begin(), X.end());
    return X;
}
} // namespace

TEST(NurbsRefine, InsertedKnotsReproduceTheCurve) {
    std::mt19937 rng(51);
    double worst = 0.0;
    for (int trial = 0; trial < 200; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto c = MakeCurve(s);
        auto original = MakeCurve(s);
        std::vector<double> X = RandomInsertions(rng, s, 1 + trial % 7);
        ASSERT_EQ(c->RefineKnots(int(X.size()), X.data()), kCurveOK);
        EXPECT_EQ(c->GetControlPointCount(), int(s.points.size() + X.size()));
        EXPECT_FALSE(X.empty());
        EXPECT_EQ(c->knots->Validate(c->degree, c->GetControlPointCount()), kCurveOK);
        worst = std::max(worst, Deviation(*c, *original, s.knots.front(), s.knots.back()));
    }
    EXPECT_LT(worst, 1e-6);

    RandomCurveSpec s = MakeRandomSpec(rng, false);
    auto c = MakeCurve(s);
    double outside[] = {s.knots.back() + 1};
    EXPECT_EQ(c->RefineKnots(1, outside), kCurveParamOutOfRange);
    double unsorted[] = {s.knots.back() - 0.1, s.knots.front() + 0.1};
    EXPECT_EQ(c->RefineKnots(2, unsorted), kCurveParamOutOfRange);
    std::vector<double> tooMany(std::size_t(s.degree + 2),
                                0.5 * (s.knots.front() + s.knots.back()));
    EXPECT_EQ(c->RefineKnots(int(tooMany.size()), tooMany.data()), kCurveBadKnotCount);
    EXPECT_EQ(c->GetControlPointCount(), int(s.points.size())); // left as it was
}

TEST(NurbsExtract, SegmentsRunExactlyBetweenTheirParameters) {
    std::mt19937 rng(53);
    std::uniform_real_distribution<double> unit(0, 1);
    double worst = 0.0;
    for (int trial = 0; trial < 200; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto c = MakeCurve(s);
        const double a = s.knots.front(), b = s.knots.back();
        double u1 = a + (b - a) * unit(rng), u2 = a + (b - a) * unit(rng);
        if (trial % 5 == 0) u1 = a;
        if (trial % 7 == 0) u2 = b;
        if (trial % 11 == 0) u1 = s.knots[std::size_t(s.degree + 1)]; // on a knot
        if (std::fabs(u1 - u2) < 1e-6) continue;
        VCurveStatus st = kCurveOK;
        auto part = c->ExtractSegment(u1, u2, st);
        ASSERT_EQ(st, kCurveOK);
        ASSERT_TRUE(part);
        double p0, p1;
        part->GetDomain(p0, p1);
        EXPECT_DOUBLE_EQ(p0, std::min(u1, u2));
        EXPECT_DOUBLE_EQ(p1, std::max(u1, u2));
        worst = std::max(worst, Deviation(*part, *c, p0, p1, 50));
    }
    EXPECT_LT(worst, 1e-6);
    RandomCurveSpec s = MakeRandomSpec(rng, false);
    auto c = MakeCurve(s);
    VCurveStatus st = kCurveOK;
    EXPECT_FALSE(c->ExtractSegment(s.knots.front() - 1, s.knots.back(), st));
    EXPECT_EQ(st, kCurveParamOutOfRange);
    EXPECT_FALSE(c->ExtractSegment(s.knots.front(), s.knots.front(), st));
    EXPECT_EQ(st, kCurveParamOutOfRange);
    VCNurbsCurve empty;
    EXPECT_FALSE(empty.ExtractSegment(0, 1, st));
    EXPECT_NE(st, kCurveOK);
}

TEST(NurbsDerivatives, MatchDifferencesOfTheCurveAndGiveAFrenetFrame) {
    std::mt19937 rng(57);
    std::uniform_real_distribution<double> unit(0.05, 0.95);
    for (int trial = 0; trial < 150; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto c = MakeCurve(s);
        const double a = s.knots.front(), b = s.knots.back();
        double u = a + (b - a) * unit(rng);
        // Stay inside one span so that the differences see one polynomial.
        int span = 0;
        c->knots->FindSpan(s.degree, u, true, span);
        const double h = 1e-4 * (s.knots[span + 1] - s.knots[span]);
        if (u - 2 * h < s.knots[span] || u + 2 * h > s.knots[span + 1]) continue;
        KVector3D D[3];
        ASSERT_EQ(c->EvaluateDerivatives(u, true, 2, D), kCurveOK);
        auto p = DeBoor(s.degree, s.knots, s.points, u);
        auto pp = DeBoor(s.degree, s.knots, s.points, u + h);
        auto pm = DeBoor(s.degree, s.knots, s.points, u - h);
        EXPECT_LT(Dist(p, D[0]), 1e-5);
        for (int k = 0; k < 3; ++k) {
            double d1 = (pp[k] - pm[k]) / (2 * h);
            double d2 = (pp[k] - 2 * p[k] + pm[k]) / (h * h);
            auto comp = [k](const KVector3D& v) { return k == 0 ? v.x : k == 1 ? v.y : v.z; };
            EXPECT_NEAR(comp(D[1]), d1, 1e-3 * (1 + std::fabs(d1)));
            if (s.degree > 1) {
                EXPECT_NEAR(comp(D[2]), d2, 2e-2 * (1 + std::fabs(d2)));
            }
        }
        KVector3D t, n, bn;
        if (c->GetFrenetFrame(u, true, t, n, bn) == kCurveOK) {
            EXPECT_LT(FrameError(t, n, bn), 1e-4);
            EXPECT_GT(t.Dot(D[1]), 0.0f);
        }
    }
    // Derivatives beyond the degree vanish; a straight line has no Frenet
    // frame but leaves no NaN.
    const KVector3D line[2] = {{0, 0, 0, 1}, {2, 0, 0, 1}};
    const double U[] = {0, 0, 1, 1};
    VCNurbsCurve c;
    ASSERT_EQ(c.Set(1, 2, line, 4, U, 0), kCurveOK);
    KVector3D D[4];
    ASSERT_EQ(c.EvaluateDerivatives(0.5, true, 3, D), kCurveOK);
    EXPECT_NEAR(D[1].x, 2.0f, 1e-6);
    EXPECT_EQ(D[2].Length(), 0.0f);
    KVector3D t, n, b;
    EXPECT_EQ(c.GetFrenetFrame(0.5, true, t, n, b), kCurveDivisionOverflow);
    EXPECT_TRUE(Finite(t) && Finite(n) && Finite(b));
    EXPECT_EQ(c.EvaluateDerivatives(0.5, true, -1, D), kCurveBadBezierArgument);
}

TEST(NurbsBasisExtents, BoundTheFunctionOnEverySpanOfItsSupport) {
    std::mt19937 rng(59);
    for (int trial = 0; trial < 100; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, false, 5);
        VCurveStatus st = kCurveOK;
        VKnots k(st, int(s.knots.size()), s.knots.data());
        const int p = s.degree;
        const int nFuns = int(s.knots.size()) - p - 1;
        for (int i = 0; i < nFuns; ++i) {
            std::vector<double> L(p + 1), R(p + 1);
            double location = 0;
            const double tol = 1e-5 * (s.knots.back() - s.knots.front());
            ASSERT_EQ(k.GetBasisExtents(i, p, tol, L.data(), R.data(), location), kCurveOK);
            double bestU = 0, best = -1;
            for (int j = 0; j <= p; ++j) {
                double a = s.knots[i + j], b = s.knots[i + j + 1];
                if (b - a < 1e-12) continue;
                for (int q = 0; q <= 200; ++q) {
                    double u = a + (b - a) * q / 200.0;
                    double v = 0;
                    k.OneBasisFun(i, p, u, q < 200, v);
                    EXPECT_LE(v, R[j] + 1e-6) << "span " << j;
                    EXPECT_GE(v, L[j] - 1e-6) << "span " << j;
                    if (v > best) {
                        best = v;
                        bestU = u;
                    }
                }
            }
            double value = 0, where = 0;
            ASSERT_EQ(k.FindBasisMaximum(i, p, tol, value, where), kCurveOK);
            EXPECT_NEAR(value, best, 1e-4);
            EXPECT_NEAR(where, bestU, 0.02 * (s.knots[i + p + 1] - s.knots[i]) + 1e-9);
        }
        double L[8], R[8], loc;
        EXPECT_EQ(k.GetBasisExtents(nFuns, p, 1e-5, L, R, loc), kCurveBadBasisIndex);
        EXPECT_EQ(k.GetBasisExtents(-1, p, 1e-5, L, R, loc), kCurveBadBasisIndex);
    }
}

TEST(NurbsMergeKnots, EveryResultHoldsEveryInputWithItsHighestMultiplicity) {
    const double a[] = {0, 0, 0, 0.3, 0.5, 0.5, 1, 1, 1};
    const double b[] = {0, 0, 0, 0.5, 0.7, 0.7, 0.7, 1, 1, 1};
    VCurveStatus st = kCurveOK;
    VKnots ka(st, 9, a), kb(st, 10, b);
    const VKnots* in[2] = {&ka, &kb};
    std::unique_ptr<VKnots> out[2];
    ASSERT_EQ(MergeKnots(2, in, out), kCurveOK);
    const std::vector<double> expected = {0, 0, 0, 0.3, 0.5, 0.5, 0.7, 0.7, 0.7, 1, 1, 1};
    for (auto& o : out) {
        ASSERT_EQ(o->count, int(expected.size()));
        for (int i = 0; i < o->count; ++i)
            EXPECT_EQ(o->values[i], expected[std::size_t(i)]);
    }
    const VKnots* bad[1] = {nullptr};
    EXPECT_EQ(MergeKnots(1, bad, out), kCurveMissingKnots);
    EXPECT_EQ(MergeKnots(0, in, out), kCurveBadBezierArgument);
}

TEST(NurbsRemoveKnots, RefinedKnotsComeOutAgainWithinTheBound) {
    std::mt19937 rng(61);
    for (int trial = 0; trial < 100; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto original = MakeCurve(s);
        auto c = MakeCurve(s);
        std::vector<double> X = RandomInsertions(rng, s, 1 + trial % 5);
        ASSERT_EQ(c->RefineKnots(int(X.size()), X.data()), kCurveOK);
        const int refined = c->GetControlPointCount();
        const float tol = 1e-3f;
        ASSERT_EQ(c->RemoveKnots(tol), kCurveOK);
        EXPECT_LE(c->GetControlPointCount(), refined - int(X.size())) << trial;
        EXPECT_GE(c->GetControlPointCount(), c->degree + 1);
        EXPECT_EQ(c->knots->Validate(c->degree, c->GetControlPointCount()), kCurveOK);
        EXPECT_LE(Deviation(*c, *original, s.knots.front(), s.knots.back()), tol) << trial;
    }
}

TEST(NurbsRemoveKnots, StaysWithinItsBoundAndKeepsAtLeastDegreePlusOnePoints) {
    std::mt19937 rng(67);
    std::uniform_real_distribution<double> lg(-4, 1);
    for (int trial = 0; trial < 150; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto original = MakeCurve(s);
        auto c = MakeCurve(s);
        const float tol = float(std::pow(10.0, lg(rng)));
        ASSERT_EQ(c->RemoveKnots(tol), kCurveOK);
        EXPECT_GE(c->GetControlPointCount(), s.degree + 1);
        EXPECT_EQ(c->knots->count, c->GetControlPointCount() + s.degree + 1);
        EXPECT_EQ(c->knots->Validate(c->degree, c->GetControlPointCount()), kCurveOK);
        EXPECT_LE(Deviation(*c, *original, s.knots.front(), s.knots.back()), tol * 1.0001 + 1e-6)
            << trial << " tol " << tol;
    }
    // A huge tolerance still leaves a usable curve of at least p + 1 points.
    RandomCurveSpec s = MakeRandomSpec(rng, false);
    auto c = MakeCurve(s);
    ASSERT_EQ(c->RemoveKnots(1e30f), kCurveOK);
    EXPECT_GE(c->GetControlPointCount(), s.degree + 1);
    KVector3D p;
    EXPECT_EQ(c->Evaluate(s.knots.front(), true, p), kCurveOK);
    EXPECT_EQ(c->RemoveKnots(std::nanf("")), kCurveBadBezierArgument);
    VCNurbsCurve empty;
    EXPECT_NE(empty.RemoveKnots(0.1f), kCurveOK);
}

TEST(NurbsRemoveKnots, TwoPiecesOfOneCubicJoinAgain) {
    const KVector3D P[4] = {{0, 0, 0, 1}, {1, 3, 0, 1}, {3, -2, 1, 1}, {4, 1, 0, 1}};
    KVector3D L[4], R[4];
    ASSERT_EQ(SplitBezier(3, P, 0.4, L, R), kCurveOK);
    KVector3D pts[8];
    for (int i = 0; i < 4; ++i) {
        pts[i] = L[i];
        pts[4 + i] = R[i];
    }
    const double U[] = {0, 0, 0, 0, 0.4, 0.4, 0.4, 0.4, 1, 1, 1, 1};
    VCNurbsCurve c;
    ASSERT_EQ(c.Set(3, 8, pts, 12, U, 0), kCurveOK);
    ASSERT_EQ(c.RemoveKnots(0.001f), kCurveOK);
    EXPECT_EQ(c.GetControlPointCount(), 4);
    auto whole = MakeBezierCurve(4, P);
    EXPECT_LT(Deviation(c, *whole, 0, 1), 1e-4);
}
