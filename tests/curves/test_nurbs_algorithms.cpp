// Curve construction and transformation: each result must reproduce the
// curve it came from, measured by an independent evaluation.
#include "CurveTestUtil.h"
#include "curves/VNurbsAlgorithms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace curvetest;

namespace {
std::vector<double> DistinctKnots(const std::vector<double>& U) {
    std::vector<double> d;
    for (double k : U)
        if (d.empty() || k - d.back() > 1e-12) d.push_back(k);
    return d;
}

std::vector<KVector3D> RandomBezier(std::mt19937& rng, int p, bool rational) {
    std::uniform_real_distribution<double> c(-1, 1), w(0.5, 2);
    std::vector<KVector3D> pts;
    for (int i = 0; i <= p; ++i) {
        float ww = rational ? float(w(rng)) : 1.0f;
        pts.push_back(KVector3D(float(c(rng)) * ww, float(c(rng)) * ww, float(c(rng)) * ww, ww));
    }
    return pts;
}
} // namespace

TEST(NurbsDecompose, PiecesReproduceTheCurve) {
    std::mt19937 rng(17);
    double worst = 0.0;
    for (int trial = 0; trial < 200; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto c = MakeCurve(s);
        VBezierPieces pcs;
        ASSERT_EQ(c->DecomposeToBezier(pcs), kCurveOK);
        std::vector<double> d = DistinctKnots(s.knots);
        ASSERT_EQ(pcs.count, int(d.size()) - 1);
        ASSERT_EQ(pcs.count, c->knots->CountSpans(s.degree));
        ASSERT_EQ(pcs.size, s.degree + 1);
        for (int i = 0; i < pcs.count; ++i)
            for (int j = 0; j <= 8; ++j) {
                double t = j / 8.0;
                double u = d[i] + (d[i + 1] - d[i]) * t;
                worst = std::max(worst, Dist(Casteljau(pcs.pieces[i], s.degree, t),
                                             DeBoor(s.degree, s.knots, s.points, u)));
            }
    }
    EXPECT_LT(worst, 1e-6);
}

TEST(BezierSplit, BothHalvesAndExtractedPartsReproduceTheSegment) {
    std::mt19937 rng(23);
    std::uniform_real_distribution<double> ud(0.0, 1.0);
    double worst = 0.0;
    for (int trial = 0; trial < 300; ++trial) {
        int p = 1 + trial % 6;
        auto P = RandomBezier(rng, p, trial % 3 == 0);
        double t = ud(rng);
        std::vector<KVector3D> L(p + 1), R(p + 1), E(p + 1);
        ASSERT_EQ(SplitBezier(p, P.data(), t, L.data(), R.data()), kCurveOK);
        double t1 = ud(rng) * 0.9, t2 = t1 + (1 - t1) * ud(rng);
        ASSERT_EQ(ExtractBezier(p, P.data(), t1, t2, E.data()), kCurveOK);
        for (int j = 0; j <= 10; ++j) {
            double v = j / 10.0;
            worst = std::max(worst, Dist(Casteljau(L.data(), p, v), Casteljau(P.data(), p, v * t)));
            worst = std::max(
                worst, Dist(Casteljau(R.data(), p, v), Casteljau(P.data(), p, t + v * (1 - t))));
            worst = std::max(
                worst, Dist(Casteljau(E.data(), p, v), Casteljau(P.data(), p, t1 + v * (t2 - t1))));
        }
    }
    EXPECT_LT(worst, 1e-6);
}

TEST(BezierSplit, EndValuesAndBadArguments) {
    const KVector3D P[3] = {{0, 0, 0, 1}, {1, 2, 0, 1}, {2, 0, 0, 1}};
    KVector3D L[3], R[3];
    ASSERT_EQ(SplitBezier(2, P, 0.0, L, R), kCurveOK);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(L[i].x, 0.0f);
        EXPECT_EQ(R[i].x, P[i].x);
    }
    ASSERT_EQ(SplitBezier(2, P, 1.0, L, R), kCurveOK);
    EXPECT_EQ(R[0].x, 2.0f);
    EXPECT_EQ(L[1].y, 2.0f);
    EXPECT_EQ(SplitBezier(2, P, 1.5, L, R), kCurveBadBezierArgument);
    EXPECT_EQ(SplitBezier(2, P, std::nan(""), L, R), kCurveBadBezierArgument);
    EXPECT_EQ(SplitBezier(0, P, 0.5, L, R), kCurveBadBezierArgument);
    EXPECT_EQ(SplitBezier(2, nullptr, 0.5, L, R), kCurveBadBezierArgument);
    EXPECT_EQ(ExtractBezier(2, P, 0.9999, 1.0, L), kCurveBadBezierArgument);
    EXPECT_EQ(ExtractBezier(2, P, 0.2, 0.1, L), kCurveBadBezierArgument);
}

TEST(BezierElevate, RaisedSegmentsAreTheSameCurve) {
    std::mt19937 rng(29);
    double worst = 0.0;
    for (int trial = 0; trial < 200; ++trial) {
        int p = 1 + trial % 5;
        int times = 1 + (trial / 5) % 4;
        auto P = RandomBezier(rng, p, trial % 2 == 0);
        std::vector<KVector3D> Q(p + times + 1);
        ASSERT_EQ(ElevateBezier(p, times, P.data(), Q.data()), kCurveOK);
        EXPECT_EQ(Q.front().x, P.front().x);
        EXPECT_EQ(Q.back().y, P.back().y);
        for (int j = 0; j <= 10; ++j)
            worst = std::max(worst, Dist(Casteljau(Q.data(), p + times, j / 10.0),
                                         Casteljau(P.data(), p, j / 10.0)));
    }
    EXPECT_LT(worst, 1e-6);

    const KVector3D line[2] = {{0, 0, 0, 1}, {3, 6, 0, 1}};
    KVector3D out[4];
    ASSERT_EQ(ElevateBezier(1, 2, line, out), kCurveOK);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(out[i].x, float(i), 1e-6);
        EXPECT_NEAR(out[i].y, 2.0f * i, 1e-6);
    }
    EXPECT_EQ(ElevateBezier(1, 0, line, out), kCurveOK);
    EXPECT_EQ(ElevateBezier(40, 40, line, out), kCurveBadBezierArgument);

    std::unique_ptr<std::int64_t[]> table;
    ASSERT_EQ(MakeBinomialTable(table, 10), kCurveOK);
    EXPECT_EQ(table[10 * 11 + 5], 252);
    EXPECT_EQ(table[7 * 11 + 3], 35);
}

TEST(BezierLength, AgreesWithFineSamplingAndNeedsNoSplitOnALine) {
    std::mt19937 rng(31);
    for (int trial = 0; trial < 100; ++trial) {
        int p = 1 + trial % 5;
        auto P = RandomBezier(rng, p, trial % 2 == 0);
        double ref = 0.0;
        auto prev = Casteljau(P.data(), p, 0.0);
        for (int j = 1; j <= 20000; ++j) {
            auto q = Casteljau(P.data(), p, j / 20000.0);
            ref += Dist(prev, q);
            prev = q;
        }
        double len = 0;
        ASSERT_EQ(BezierLength(p, P.data(), 1e-5, len), kCurveOK);
        EXPECT_NEAR(len, ref, 2e-5 + 1e-6 * ref);
    }
    const KVector3D line[4] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {2, 0, 0, 1}, {3, 0, 0, 1}};
    double len = 0;
    ASSERT_EQ(BezierLength(3, line, 1e-12, len), kCurveOK);
    EXPECT_DOUBLE_EQ(len, 3.0);
    EXPECT_EQ(BezierLength(3, line, 0.0, len), kCurveBadBezierArgument);
    // Pieces that never flatten (a vanishing middle weight, coordinates near
    // the float limit) still end, with a finite length or a status.
    const KVector3D spike[3] = {{0, 0, 0, 1}, {1e-9f, 1e-9f, 0, 1e-9f}, {2, 0, 0, 1}};
    ASSERT_EQ(BezierLength(2, spike, 1e-9, len), kCurveOK);
    EXPECT_TRUE(std::isfinite(len));
    EXPECT_GE(len, 2.0);
    const KVector3D huge[3] = {{0, 0, 0, 1}, {1e30f, -1e30f, 3e30f, 1}, {-2e30f, 1e30f, 0, 1}};
    VCurveStatus st = BezierLength(2, huge, 1e-3, len);
    EXPECT_TRUE(st == kCurveOK || st == kCurveDivisionOverflow);
    EXPECT_EQ(BezierLength(3, line, std::nan(""), len), kCurveBadBezierArgument);
}

TEST(NurbsInterpolate, PassesThroughItsPointsWithTheGivenEndTangents) {
    std::mt19937 rng(37);
    std::uniform_real_distribution<double> c(-5, 5);
    for (int trial = 0; trial < 90; ++trial) {
        int n = 2 + trial % 22;
        int mode = trial % 3;
        std::vector<KVector3D> Q;
        for (int i = 0; i < n; ++i)
            Q.push_back(KVector3D(float(c(rng)), float(c(rng)), float(c(rng)), 1));
        KVector3D D0 = KVector3D(float(c(rng)), float(c(rng)), float(c(rng))).Unit();
        KVector3D Dn = KVector3D(float(c(rng)), float(c(rng)), float(c(rng))).Unit();
        std::unique_ptr<VCNurbsCurve> curve;
        ASSERT_EQ(InterpolateCubic(Q.data(), n, D0, Dn, mode, curve), kCurveOK) << n;
        ASSERT_TRUE(curve);
        ASSERT_EQ(curve->GetControlPointCount(), n + 2);
        EXPECT_EQ(curve->closed, 0);
        std::vector<double> u(n);
        ASSERT_EQ(ChooseParameters(Q.data(), n, mode, u.data()), kCurveOK);
        for (int i = 0; i < n; ++i) {
            KVector3D p;
            ASSERT_EQ(curve->Evaluate(u[i], true, p), kCurveOK);
            EXPECT_LT((p - Q[i]).Length(), 1e-4) << "n " << n << " point " << i;
        }
        // End derivatives of a clamped cubic: C'(0) = 3 (P1 - P0) / U[4] and
        // C'(1) = 3 (Pn+1 - Pn) / (1 - U[n + 1]).
        const double* U = curve->knots->values.get();
        KVector3D P0, P1, Pn, Pl;
        curve->GetControlPoint(0, P0);
        curve->GetControlPoint(1, P1);
        curve->GetControlPoint(n, Pn);
        curve->GetControlPoint(n + 1, Pl);
        EXPECT_LT(((P1 - P0) * float(3.0 / U[4]) - D0).Length(), 1e-4);
        EXPECT_LT(((Pl - Pn) * float(3.0 / (1.0 - U[n + 1])) - Dn).Length(), 1e-4);
    }
}

TEST(NurbsInterpolate, CollinearPointsGiveAStraightCurveAndClosedInputAClosedCurve) {
    std::vector<KVector3D> Q;
    for (int i = 0; i < 20; ++i)
        Q.push_back(KVector3D(float(i) * 0.5f, float(i), 0, 1));
    KVector3D d = KVector3D(0.5f, 1, 0).Unit();
    std::unique_ptr<VCNurbsCurve> curve;
    ASSERT_EQ(InterpolateCubic(Q.data(), 20, d, d, kParamChordLength, curve), kCurveOK);
    for (int i = 0; i < curve->GetControlPointCount(); ++i) {
        KVector3D p;
        curve->GetControlPoint(i, p);
        EXPECT_NEAR(p.x * 2.0f, p.y, 1e-4) << i; // on the line y = 2x
    }
    // A ring of points with matching end tangents.
    Q.clear();
    for (int i = 0; i < 20; ++i) {
        float a = 2.0f * 3.14159265f * float(i) / 19.0f;
        Q.push_back(KVector3D(std::cos(a), std::sin(a), 0, 1));
    }
    Q[19] = Q[0];
    ASSERT_EQ(InterpolateCubic(Q.data(), 20, KVector3D(0, 1, 0), KVector3D(0, 1, 0), 1, curve),
              kCurveOK);
    EXPECT_EQ(curve->closed, 1);
}

TEST(NurbsInterpolate, DegenerateInputGivesAStatusAndNoCurve) {
    std::unique_ptr<VCNurbsCurve> curve;
    KVector3D one[1] = {{0, 0, 0, 1}};
    EXPECT_EQ(InterpolateCubic(one, 1, KVector3D(1, 0, 0), KVector3D(1, 0, 0), 1, curve),
              kCurveBadBezierArgument);
    EXPECT_EQ(InterpolateCubic(nullptr, 5, KVector3D(1, 0, 0), KVector3D(1, 0, 0), 1, curve),
              kCurveBadBezierArgument);
    // Coincident neighbours make a zero-length knot span: no division by it.
    std::vector<KVector3D> Q = {
        {0, 0, 0, 1}, {0, 0, 0, 1}, {1, 1, 0, 1}, {2, 0, 0, 1}, {3, 1, 0, 1}};
    EXPECT_NE(InterpolateCubic(Q.data(), 5, KVector3D(1, 0, 0), KVector3D(1, 0, 0), 1, curve),
              kCurveOK);
    std::vector<KVector3D> same(6, KVector3D(1, 1, 1, 1));
    VCurveStatus st =
        InterpolateCubic(same.data(), 6, KVector3D(1, 0, 0), KVector3D(1, 0, 0), 1, curve);
    if (st == kCurveOK) {
        KVector3D p;
        for (int i = 0; i <= 10; ++i) {
            ASSERT_EQ(curve->Evaluate(i / 10.0, true, p), kCurveOK);
            EXPECT_TRUE(Finite(p));
        }
    }
    EXPECT_FALSE(curve && curve->GetControlPointCount() == 0);
    KVector3D nanPts[3] = {{0, 0, 0, 1}, {NAN, 0, 0, 1}, {1, 0, 0, 1}};
    std::unique_ptr<VCNurbsCurve> none;
    EXPECT_NE(InterpolateCubic(nanPts, 3, KVector3D(1, 0, 0), KVector3D(1, 0, 0), 1, none),
              kCurveOK);
    EXPECT_FALSE(none);
}

TEST(NurbsParameters, ModesSpaceByCountChordOrRootOfChord) {
    const KVector3D Q[4] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {1, 4, 0, 1}, {1, 4, 4, 1}};
    double u[4];
    ASSERT_EQ(ChooseParameters(Q, 4, kParamUniform, u), kCurveOK);
    EXPECT_DOUBLE_EQ(u[1], 1.0 / 3);
    ASSERT_EQ(ChooseParameters(Q, 4, kParamChordLength, u), kCurveOK);
    EXPECT_DOUBLE_EQ(u[1], 1.0 / 9);
    EXPECT_DOUBLE_EQ(u[2], 5.0 / 9);
    ASSERT_EQ(ChooseParameters(Q, 4, kParamCentripetal, u), kCurveOK);
    EXPECT_DOUBLE_EQ(u[1], 1.0 / 5);
    EXPECT_DOUBLE_EQ(u[3], 1.0);
    EXPECT_EQ(ChooseParameters(Q, 1, 0, u), kCurveBadBezierArgument);
}

TEST(NurbsBezierCurve, MakesASingleSegmentWithClampedKnots) {
    const KVector3D P[4] = {{0, 0, 0, 1}, {1, 2, 0, 1}, {2, 2, 0, 1}, {3, 0, 0, 1}};
    auto c = MakeBezierCurve(4, P);
    ASSERT_TRUE(c);
    EXPECT_EQ(c->degree, 3);
    EXPECT_EQ(c->knots->count, 8);
    KVector3D p;
    ASSERT_EQ(c->Evaluate(0.5, true, p), kCurveOK);
    EXPECT_LT(Dist(Casteljau(P, 3, 0.5), p), 1e-6);
    EXPECT_FALSE(MakeBezierCurve(1, P));
    EXPECT_FALSE(MakeBezierCurve(4, nullptr));
}
