// NURBS core: basis functions, evaluation, length, frames, tessellation and
// the status codes for bad input.
#include "CurveTestUtil.h"
#include "curves/VCNurbsCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace curvetest;

TEST(NurbsBasis, FunctionsAgreeWithEachOtherAndWithFiniteDifferences) {
    std::mt19937 rng(11);
    for (int trial = 0; trial < 200; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, false, 6);
        VCurveStatus st = kCurveOK;
        VKnots k(st, int(s.knots.size()), s.knots.data());
        ASSERT_EQ(st, kCurveOK);
        const int p = s.degree;
        const double a = s.knots.front(), b = s.knots.back();
        std::uniform_real_distribution<double> ud(a, b);
        for (int q = 0; q < 10; ++q) {
            double u = ud(rng);
            double N[8];
            int span = 0;
            ASSERT_EQ(k.BasisFuns(p, u, true, N, span), kCurveOK);
            double sum = 0.0;
            for (int j = 0; j <= p; ++j) {
                EXPECT_GE(N[j], -1e-12);
                sum += N[j];
                double one = -1.0;
                ASSERT_EQ(k.OneBasisFun(span - p + j, p, u, true, one), kCurveOK);
                EXPECT_NEAR(one, N[j], 1e-10);
            }
            EXPECT_NEAR(sum, 1.0, 1e-12);

            double ders[3 * 7];
            int span2 = 0;
            ASSERT_EQ(k.DersBasisFuns(p, u, true, 2, ders, span2), kCurveOK);
            ASSERT_EQ(span2, span);
            for (int j = 0; j <= p; ++j) {
                EXPECT_NEAR(ders[j], N[j], 1e-12);
                double one[3];
                ASSERT_EQ(k.DersOneBasisFun(span - p + j, p, u, true, 2, one), kCurveOK);
                EXPECT_NEAR(one[1], ders[(p + 1) + j], 1e-7 * (1 + std::fabs(one[1])));
                EXPECT_NEAR(one[2], ders[2 * (p + 1) + j], 1e-6 * (1 + std::fabs(one[2])));
            }
            // First derivative against a central difference inside the span.
            double h = 1e-6;
            if (u - h > s.knots[span] && u + h < s.knots[span + 1]) {
                double Np[8], Nm[8];
                int sp = 0;
                k.BasisFuns(p, u + h, true, Np, sp);
                k.BasisFuns(p, u - h, true, Nm, sp);
                for (int j = 0; j <= p; ++j)
                    EXPECT_NEAR((Np[j] - Nm[j]) / (2 * h), ders[(p + 1) + j],
                                1e-4 * (1 + std::fabs(ders[(p + 1) + j])));
            }
        }
    }
}

TEST(NurbsBasis, SpanRulesAtEndsAndAtFullMultiplicity) {
    const double U[] = {0, 0, 0, 0, 0.5, 0.5, 0.5, 1, 1, 1, 1};
    VCurveStatus st = kCurveOK;
    VKnots k(st, 11, U);
    int span = -1;
    ASSERT_EQ(k.FindSpan(3, 0.5, true, span), kCurveOK);
    EXPECT_EQ(span, 6); // the span to the right of the triple knot
    ASSERT_EQ(k.FindSpan(3, 0.5, false, span), kCurveOK);
    EXPECT_EQ(span, 3); // left-continuous: the span that ends at 0.5
    ASSERT_EQ(k.FindSpan(3, 1.0, true, span), kCurveOK);
    EXPECT_EQ(span, 6);
    ASSERT_EQ(k.FindSpan(3, 0.0, false, span), kCurveOK);
    EXPECT_EQ(span, 3);
    int mult = 0;
    ASSERT_EQ(k.FindSpanMult(3, 0.5, true, span, mult), kCurveOK);
    EXPECT_EQ(mult, 3);
    EXPECT_EQ(k.FindSpan(3, 1.5, true, span), kCurveParamOutOfRange);
    EXPECT_EQ(k.FindSpan(3, std::nan(""), true, span), kCurveParamOutOfRange);
    EXPECT_EQ(k.CountSpans(3), 2);
    double v = 0;
    EXPECT_EQ(k.OneBasisFun(7, 3, 0.5, true, v), kCurveBadBasisIndex);
    EXPECT_EQ(k.OneBasisFun(-1, 3, 0.5, true, v), kCurveBadBasisIndex);
    EXPECT_EQ(k.OneBasisFun(6, 3, 1.0, true, v), kCurveOK);
    EXPECT_EQ(v, 1.0);
    int count = 0;
    std::unique_ptr<double[]> distinct;
    ASSERT_EQ(k.Distinct(count, distinct), kCurveOK);
    ASSERT_EQ(count, 3);
    EXPECT_EQ(distinct[1], 0.5);

    VKnots bad(st, 0, nullptr);
    EXPECT_EQ(st, kCurveBadPointCount);
}

TEST(NurbsBasis, RescaleMapsOntoNewRangeAndLeavesNearMatchesAlone) {
    const double U[] = {1, 1, 2, 5, 5};
    VCurveStatus st = kCurveOK;
    VKnots k(st, 5, U);
    ASSERT_EQ(k.Rescale(1, 0.0, 1.0), kCurveOK);
    EXPECT_DOUBLE_EQ(k.values[0], 0.0);
    EXPECT_DOUBLE_EQ(k.values[2], 0.25);
    EXPECT_DOUBLE_EQ(k.values[4], 1.0);
    k.values[2] = 0.3;
    ASSERT_EQ(k.Rescale(1, 0.000001, 1.000001), kCurveOK);
    EXPECT_DOUBLE_EQ(k.values[2], 0.3);
    EXPECT_EQ(k.Rescale(1, 1.0, 1.0), kCurveParamOutOfRange);
}

TEST(NurbsEvaluate, MatchesDeBoorOnRandomCurves) {
    std::mt19937 rng(7);
    double worst = 0.0;
    for (int trial = 0; trial < 300; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 1);
        auto c = MakeCurve(s);
        ASSERT_TRUE(c);
        double a, b;
        c->GetDomain(a, b);
        for (int i = 0; i <= 40; ++i) {
            double u = a + (b - a) * i / 40.0;
            KVector3D pt;
            ASSERT_EQ(c->Evaluate(u, true, pt), kCurveOK);
            worst = std::max(worst, Dist(DeBoor(s.degree, s.knots, s.points, u), pt));
        }
    }
    EXPECT_LT(worst, 1e-5);
}

TEST(NurbsEvaluate, EndsAreTheEndControlPointsExactly) {
    std::mt19937 rng(3);
    for (int trial = 0; trial < 50; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, false);
        auto c = MakeCurve(s);
        double a, b;
        c->GetDomain(a, b);
        KVector3D first, last;
        ASSERT_EQ(c->Evaluate(a, true, first), kCurveOK);
        ASSERT_EQ(c->Evaluate(b, true, last), kCurveOK);
        EXPECT_EQ(first.x, s.points.front().x);
        EXPECT_EQ(last.x, s.points.back().x);
        EXPECT_EQ(last.y, s.points.back().y);
        EXPECT_EQ(last.z, s.points.back().z);
    }
}

TEST(NurbsSet, BadInputGivesItsStatusAndLeavesTheCurveEmpty) {
    const KVector3D pts[4] = {{0, 0, 0, 1}, {1, 1, 0, 1}, {2, -1, 0, 1}, {3, 0, 0, 1}};
    const double U[] = {0, 0, 0, 0, 1, 1, 1, 1, 1};
    VCNurbsCurve c;
    EXPECT_EQ(c.Set(3, 4, pts, 9, U, 0), kCurveBadKnotCount); // one knot too many
    EXPECT_EQ(c.GetControlPointCount(), 0);
    EXPECT_EQ(c.Set(0, 4, pts, 5, U, 0), kCurveBadDegree);
    EXPECT_EQ(c.Set(3, 4, nullptr, 8, U, 0), kCurveMissingCtrlPoints);
    EXPECT_EQ(c.Set(3, 4, pts, 8, nullptr, 0), kCurveMissingKnots);
    EXPECT_EQ(c.Set(3, 0, pts, 4, U, 0), kCurveBadPointCount);
    EXPECT_EQ(c.Set(3, 1 << 30, pts, 8, U, 0), kCurveBadPointCount);
    // Degrees beyond the library's limit are refused before any table grows.
    std::vector<KVector3D> many(100, KVector3D(0, 0, 0, 1));
    std::vector<double> manyKnots(200, 0.0);
    std::fill(manyKnots.begin() + 100, manyKnots.end(), 1.0);
    EXPECT_EQ(c.Set(99, 100, many.data(), 200, manyKnots.data(), 0), kCurveBadDegree);
    VCurveStatus big = kCurveOK;
    VCNurbsCurve huge(big, 100000, 100001);
    EXPECT_EQ(big, kCurveBadDegree);
    const double decreasing[] = {0, 0, 0, 0, 1, 1, 1, 0.5};
    EXPECT_EQ(c.Set(3, 4, pts, 8, decreasing, 0), kCurveBadKnotCount);
    const double unclamped[] = {0, 0.1, 0.2, 0.3, 0.6, 0.7, 0.8, 1};
    EXPECT_EQ(c.Set(3, 4, pts, 8, unclamped, 0), kCurveBadKnotCount);
    const double empty[] = {0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(c.Set(3, 4, pts, 8, empty, 0), kCurveBadKnotCount);
    const double nanKnots[] = {0, 0, 0, 0, NAN, 1, 1, 1};
    EXPECT_EQ(c.Set(3, 4, pts, 8, nanKnots, 0), kCurveBadKnotCount);
    KVector3D nanPts[4] = {{0, 0, 0, 1}, {NAN, 1, 0, 1}, {2, -1, 0, 1}, {3, 0, 0, 1}};
    EXPECT_EQ(c.Set(3, 4, nanPts, 8, U, 0), kCurveMissingCtrlPoints);

    KVector3D out{9, 9, 9, 1};
    EXPECT_EQ(c.Evaluate(0.5, true, out), kCurveBadDegree);
    EXPECT_EQ(out.x, 9.0f);
    EXPECT_EQ(c.CalcLength(), kCurveBadDegree);
    KVector3D t, n, b;
    EXPECT_FALSE(c.GetFrameAt(0.0f, out, t, n, b));
    EXPECT_FALSE(c.GetTangentAt(0.0f, t));
    double d, u;
    EXPECT_NE(c.FindNearest(out, d, u), kCurveOK);
    EXPECT_NE(c.Tessellate(0.01), kCurveOK);

    ASSERT_EQ(c.Set(3, 4, pts, 8, U, 0), kCurveOK);
    EXPECT_EQ(c.Evaluate(1.5, true, out), kCurveParamOutOfRange);
    EXPECT_EQ(c.Evaluate(std::nan(""), true, out), kCurveParamOutOfRange);
    EXPECT_EQ(c.SetControlPoint(4, out), kCurveBadPointCount);
    EXPECT_EQ(c.ctrlPoints->dimension, 2);
    EXPECT_EQ(c.ctrlPoints->rational, 0);

    // Weights that sum to zero cannot be divided by.
    KVector3D zeroW[4] = {{0, 0, 0, 1}, {0, 0, 0, -1}, {0, 0, 0, 1}, {0, 0, 0, -1}};
    ASSERT_EQ(c.Set(1, 4, zeroW, 6, std::array<double, 6>{0, 0, 0.4, 0.6, 1, 1}.data(), 0),
              kCurveOK);
    out = {7, 7, 7, 1};
    EXPECT_EQ(c.Evaluate(0.5, true, out), kCurveDivisionOverflow);
    EXPECT_EQ(out.x, 7.0f);
}

TEST(NurbsSet, ClosedCurveKeepsItsEndsTogetherAndChangesDropTheCaches) {
    const KVector3D pts[5] = {{0, 0, 0, 1}, {1, 0, 0, 1}, {1, 1, 0, 1}, {0, 1, 0, 1}, {0, 0, 0, 1}};
    const double U[] = {0, 0, 0.25, 0.5, 0.75, 1, 1};
    VCNurbsCurve c;
    ASSERT_EQ(c.Set(1, 5, pts, 7, U, 1), kCurveOK);
    ASSERT_EQ(c.Tessellate(0.01), kCurveOK);
    ASSERT_TRUE(c.drawingData);
    ASSERT_EQ(c.SetControlPoint(0, KVector3D(-1, -1, 0.5f, 1)), kCurveOK);
    EXPECT_FALSE(c.drawingData);
    KVector3D last;
    c.GetControlPoint(4, last);
    EXPECT_EQ(last.x, -1.0f);
    EXPECT_EQ(last.z, 0.5f);
    EXPECT_EQ(c.ctrlPoints->dimension, 3);
    ASSERT_EQ(c.AddToControlPoint(4, KVector3D(1, 1, -0.5f)), kCurveOK);
    KVector3D first;
    c.GetControlPoint(0, first);
    EXPECT_EQ(first.x, 0.0f);
    EXPECT_EQ(first.z, 0.0f);
    ASSERT_EQ(c.Translate(KVector3D(2, 0, 0)), kCurveOK);
    c.GetControlPoint(2, last);
    EXPECT_EQ(last.x, 3.0f);
}

TEST(NurbsLength, ChordPolygonAgreesWithAFineReferenceAndFindAtLengthInverts) {
    std::mt19937 rng(21);
    for (int trial = 0; trial < 60; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 3 == 0);
        auto c = MakeCurve(s);
        ASSERT_EQ(c->CalcLength(), kCurveOK);
        double a, b;
        c->GetDomain(a, b);
        // Reference: the same 100 chords in double precision.
        double ref = 0.0;
        auto prev = DeBoor(s.degree, s.knots, s.points, a);
        for (int i = 1; i <= 100; ++i) {
            auto q = DeBoor(s.degree, s.knots, s.points, a + (b - a) * i / 100.0);
            ref += Dist(prev, q);
            prev = q;
        }
        EXPECT_NEAR(c->arcLength, ref, 1e-4 * (1 + ref));

        KVector3D pt;
        double u = -1;
        EXPECT_FALSE(c->FindAtLength(c->arcLength, pt, u));
        EXPECT_FALSE(c->FindAtLength(-0.1f, pt, u));
        EXPECT_TRUE(c->FindAtLength(0.0f, pt, u));
        EXPECT_NEAR(u, a, 1e-9);
        float prevS = 0;
        double prevU = a;
        for (int i = 1; i < 20; ++i) {
            float sLen = c->arcLength * i / 20.0f;
            ASSERT_TRUE(c->FindAtLength(sLen, pt, u));
            EXPECT_GE(u, prevU); // arc length is monotone in the parameter
            EXPECT_LT(Dist(DeBoor(s.degree, s.knots, s.points, u), pt), 1e-5);
            prevU = u;
            prevS = sLen;
        }
        (void)prevS;
        // Just below the end never fails.
        EXPECT_TRUE(c->FindAtLength(std::nextafter(c->arcLength, 0.0f), pt, u));
        EXPECT_TRUE(Finite(pt));
        // A change of shape is seen by the next search.
        s.points[0] = KVector3D(5 * s.points[0].w, 5 * s.points[0].w, 0, s.points[0].w);
        ASSERT_EQ(c->SetControlPoint(0, s.points[0]), kCurveOK);
        ASSERT_EQ(c->CalcLength(), kCurveOK);
        ASSERT_TRUE(c->FindAtLength(c->arcLength * 0.3f, pt, u));
        auto fresh = MakeCurve(s);
        ASSERT_EQ(fresh->CalcLength(), kCurveOK);
        KVector3D freshPt;
        double freshU = 0;
        ASSERT_TRUE(fresh->FindAtLength(c->arcLength * 0.3f, freshPt, freshU));
        EXPECT_DOUBLE_EQ(u, freshU);
    }
}

TEST(NurbsFrame, FramesAreOrthonormalEverywhereIncludingStraightStretches) {
    std::mt19937 rng(5);
    for (int trial = 0; trial < 60; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto c = MakeCurve(s);
        c->CalcLength();
        for (int i = 0; i <= 50; ++i) {
            float sl = c->arcLength * i / 50.0f;
            KVector3D p, t, n, b;
            ASSERT_TRUE(c->GetFrameAt(sl, p, t, n, b));
            EXPECT_LT(FrameError(t, n, b), 1e-5) << trial << " " << i;
            KVector3D tan;
            ASSERT_TRUE(c->GetTangentAt(sl, tan));
            EXPECT_NEAR(tan.Length(), 1.0, 1e-5);
        }
    }
    // Three collinear control points: the straight fallback with its reference.
    const KVector3D line[3] = {{0, 0, 0, 1}, {0, 1, 0, 1}, {0, 2, 0, 1}};
    const double U[] = {0, 0, 0, 1, 1, 1};
    VCNurbsCurve c;
    ASSERT_EQ(c.Set(2, 3, line, 6, U, 0), kCurveOK);
    c.CalcLength();
    EXPECT_NEAR(c.arcLength, 2.0f, 1e-5);
    KVector3D p, t, n, b;
    ASSERT_TRUE(c.GetFrameAt(1.0f, p, t, n, b));
    EXPECT_NEAR(t.y, 1.0f, 1e-6);
    EXPECT_NEAR(std::fabs(n.z), 1.0f, 1e-6); // tangent x (1, 0, 0)
    EXPECT_LT(FrameError(t, n, b), 1e-6);
    // The far end itself still gives a frame.
    ASSERT_TRUE(c.GetFrameAt(c.arcLength, p, t, n, b));
    EXPECT_NEAR(p.y, 2.0f, 0.01f);

    // A curve of zero length: all points equal.
    const KVector3D dot[3] = {{1, 1, 1, 1}, {1, 1, 1, 1}, {1, 1, 1, 1}};
    ASSERT_EQ(c.Set(2, 3, dot, 6, U, 0), kCurveOK);
    ASSERT_EQ(c.CalcLength(), kCurveOK);
    EXPECT_EQ(c.arcLength, 0.0f);
    if (c.GetFrameAt(0.0f, p, t, n, b)) {
        EXPECT_LT(FrameError(t, n, b), 1e-6);
    }
    EXPECT_EQ(c.Tessellate(0.01), kCurveDivisionOverflow);
}

TEST(NurbsTessellate, EqualChordsOnCurvesAndFewPassesOnLines) {
    std::mt19937 rng(9);
    for (int trial = 0; trial < 30; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, false);
        auto c = MakeCurve(s);
        c->pointsPerSpan = 8;
        ASSERT_EQ(c->Tessellate(0.05), kCurveOK);
        const VCurveDrawingData& d = *c->drawingData;
        ASSERT_EQ(d.count, 8 * c->knots->CountSpans(s.degree));
        for (int i = 0; i < d.count; ++i) {
            EXPECT_LT(Dist(DeBoor(s.degree, s.knots, s.points, d.parameters[i]), d.points[i]),
                      1e-5);
            if (i % 8) {
                EXPECT_GE(d.parameters[i], d.parameters[i - 1]);
            }
        }
    }
    const KVector3D line[2] = {{0, 0, 0, 1}, {4, 3, 0, 1}};
    const double U[] = {0, 0, 1, 1};
    VCNurbsCurve c;
    ASSERT_EQ(c.Set(1, 2, line, 4, U, 0), kCurveOK);
    ASSERT_EQ(c.Tessellate(1e-9), kCurveOK);
    for (int i = 1; i < 5; ++i)
        EXPECT_NEAR((c.drawingData->points[i] - c.drawingData->points[i - 1]).Length(), 1.25f,
                    1e-5);

    double dist = -1, u = -1;
    ASSERT_EQ(c.FindNearest(KVector3D(2, 1.5f, 1, 1), dist, u), kCurveOK);
    EXPECT_NEAR(u, 0.5, 0.02);
    EXPECT_NEAR(dist, 1.0, 0.01);
    EXPECT_EQ(c.pointsPerSpan, 30);
}

TEST(NurbsArcLengthTable, InvertsTheLengthAndFallsBackToBezierPieces) {
    std::mt19937 rng(13);
    for (int trial = 0; trial < 20; ++trial) {
        RandomCurveSpec s = MakeRandomSpec(rng, trial % 2 == 0);
        auto c = MakeCurve(s);
        double a, b;
        c->GetDomain(a, b);
        // Reference: fine chords within each knot span, so no corner is cut.
        double ref = 0.0;
        for (std::size_t k = 0; k + 1 < s.knots.size(); ++k) {
            double k0 = s.knots[k], k1 = s.knots[k + 1];
            if (k1 - k0 < 1e-12) continue;
            auto prev = DeBoor(s.degree, s.knots, s.points, k0);
            for (int i = 1; i <= 2000; ++i) {
                auto q = DeBoor(s.degree, s.knots, s.points,
                                i == 2000 ? k1 : k0 + (k1 - k0) * i / 2000.0);
                ref += Dist(prev, q);
                prev = q;
            }
        }
        double byPieces = 0.0, byTable = 0.0;
        ASSERT_EQ(c->GetTotalLength(1e-5, byPieces), kCurveOK);
        EXPECT_NEAR(byPieces, ref, 1e-4 * (1 + ref));
        double u = 0;
        EXPECT_EQ(c->GetParameterAt(0.5, u), kCurveNoSuchOperation);
        ASSERT_EQ(c->BuildArcLengthTable(200, 1e-5), kCurveOK);
        ASSERT_EQ(c->GetTotalLength(1e-5, byTable), kCurveOK);
        EXPECT_NEAR(byTable, ref, 1e-4 * (1 + ref));
        ASSERT_EQ(c->GetParameterAt(-1.0, u), kCurveOK);
        EXPECT_EQ(u, a);
        ASSERT_EQ(c->GetParameterAt(byTable + 1, u), kCurveOK);
        EXPECT_EQ(u, b);
        double prevU = a;
        for (int i = 1; i < 10; ++i) {
            ASSERT_EQ(c->GetParameterAt(byTable * i / 10, u), kCurveOK);
            EXPECT_GE(u, prevU);
            prevU = u;
        }
    }
}

TEST(NurbsGuards, WouldOverflowFollowsTheRangeOfDoubles) {
    const double big = std::numeric_limits<double>::max();
    EXPECT_TRUE(WouldOverflow(1.0, 0.0, VCurveOp::Divide));
    EXPECT_FALSE(WouldOverflow(0.0, 3.0, VCurveOp::Divide));
    EXPECT_TRUE(WouldOverflow(1e300, 1e-10, VCurveOp::Divide));
    EXPECT_TRUE(WouldOverflow(1e-300, 1e10, VCurveOp::Divide));
    EXPECT_FALSE(WouldOverflow(6.0, 3.0, VCurveOp::Divide));
    EXPECT_TRUE(WouldOverflow(1e200, 1e200, VCurveOp::Multiply));
    EXPECT_FALSE(WouldOverflow(0.0, 1e308, VCurveOp::Multiply));
    EXPECT_TRUE(WouldOverflow(big, big, VCurveOp::Add));
    EXPECT_FALSE(WouldOverflow(big, -big, VCurveOp::Add));
    EXPECT_TRUE(WouldOverflow(big, -big, VCurveOp::Subtract));
    EXPECT_FALSE(WouldOverflow(big, big, VCurveOp::Subtract));
    EXPECT_TRUE(WouldOverflow(std::nan(""), 1.0, VCurveOp::Divide));
}
