// The analytic paths: sample grids, lengths, the arc-length search, direct
// frames, the frame table and the slider table.
#include "CurveTestUtil.h"
#include "PathPlot.h"
#include "curves/VAnalyticPathTable.h"
#include "curves/VCurveAnalyticPaths.h"
#include "curves/VCurveFrameTable.h"
#include "curves/VNurbsAlgorithms.h"
#include "curves/VNurbsCurvePath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace curvetest;

namespace {
std::vector<KVector3D> Grid(const VCurveAnalytical& c) {
    std::vector<KVector3D> pts(std::size_t(std::max(c.sampleCount, 0)));
    c.GetGridPoints(pts.data(), std::int32_t(pts.size()));
    return pts;
}

// Length of the same formula sampled 50 times finer, up to the last grid sample.
double FineLength(const VCurveAnalytical& c) {
    double len = 0.0;
    KVector3D prev;
    c.Evaluate(c.paramMin, prev);
    const float lastT = c.paramMin + c.paramStep * float(c.sampleCount - 1);
    const int n = (c.sampleCount - 1) * 50;
    for (int i = 1; i <= n; ++i) {
        KVector3D p;
        c.Evaluate(c.paramMin + (lastT - c.paramMin) * float(i) / float(n), p);
        len += (p - prev).Length();
        prev = p;
    }
    return len;
}

// Worst frame error over many arc lengths, including both ends.
double WorstFrame(VCurve& c, int steps = 300) {
    double worst = 0.0;
    const float len = c.GetLength();
    for (int i = 0; i <= steps; ++i) {
        KVector3D p, t, n, b;
        if (!c.GetFrame(len * float(i) / float(steps), p, t, n, b)) return 1e9;
        if (!Finite(p)) return 1e9;
        worst = std::max(worst, FrameError(t, n, b));
    }
    return worst;
}
} // namespace

TEST(AnalyticPaths, GridsHaveTheirSampleCountsAndLengthsMatchFineSampling) {
    const int expected[kAnalyticPathCount] = {3, 181, 109, 145, 200, 145, 180, 181};
    for (int index = 1; index <= kAnalyticPathCount; ++index) {
        auto c = MakeAnalyticPath(index);
        ASSERT_TRUE(c);
        if (index != 7) {
            EXPECT_EQ(c->sampleCount, expected[index - 1]) << index;
        }
        double fine = FineLength(*c);
        EXPECT_GT(c->GetLength(), 0.0f);
        EXPECT_LE(c->GetLength(), fine * (1 + 1e-5)) << index; // a chord is never longer
        EXPECT_NEAR(c->GetLength(), fine, 0.01 * fine) << index;
        EXPECT_EQ(c->IsClosed(), index == 2);
    }
    // The Spherical Helix's range follows its parameters after any change.
    auto sh = MakeAnalyticPathWithSliders(7, 11, 33);
    auto& helix = dynamic_cast<VCurveSphericalHelix&>(*sh);
    EXPECT_EQ(helix.sampleCount, 201);
    EXPECT_FLOAT_EQ(helix.paramMin, -360.0f * helix.second / helix.first + 2.0f);
    EXPECT_FLOAT_EQ(helix.paramMax, -helix.paramMin);
    // Whatever the parameters, the rounding of the grid keeps 201 samples.
    for (int pitch = 0; pitch <= 100; pitch += 5)
        for (int radius = 0; radius <= 100; radius += 5) {
            ApplyPathSlider(helix, 7, 0, pitch);
            ApplyPathSlider(helix, 7, 1, radius);
            EXPECT_EQ(helix.sampleCount, 201) << pitch << " " << radius;
        }
    // 2 degrees short of the pole the radius is small but not zero.
    KVector3D end;
    helix.Evaluate(helix.paramMin, end);
    double r = std::sqrt(double(end.x) * end.x + double(end.z) * end.z);
    EXPECT_GT(r, 0.0);
    EXPECT_LT(r, 0.2 * helix.second);
    EXPECT_NEAR(std::fabs(end.y), helix.second - 2.0f * helix.first / 360.0f, 1e-4);

    VCurveAxis line;
    EXPECT_FLOAT_EQ(line.GetLength(), 48.0f);
}

TEST(AnalyticPaths, FormulasPassThroughKnownPointsAndTheLineStandsUpright) {
    struct Known {
        int index;
        float t;
        KVector3D point;
    };
    // The table's default parameters; the Spherical Helix at 1000 degrees
    // brings its height back into range for the radius but keeps it for y.
    const Known known[] = {
        {1, 5, {5, 0, 0, 1}},
        {2, 90, {0, 4, 0, 1}},
        {2, 180, {-6, 0, 0, 1}},
        {3, 0, {0, 3, 0, 1}},
        {3, 90, {2, 0, 0, 1}},
        {4, 90, {1.75f, 1.3740831f, 0, 1}},
        {5, 5, {5, 0.8925206f, 0, 1}},
        {6, 90, {0, 0.5f, -4, 1}},
        {7, 90, {0, 0.5f, 3.9686270f, 1}},
        {7, 1000, {0.6399176f, 5.5555556f, -3.6291531f, 1}},
        {8, 180, {-1.2459664f, 0.4712389f, 0, 1}},
    };
    for (const Known& k : known) {
        KVector3D p;
        MakeAnalyticPath(k.index)->Evaluate(k.t, p);
        EXPECT_LT((p - k.point).Length(), 1e-5) << k.index << " at " << k.t;
    }
    // Letters stand on the Line with their up along +Y; on every flat path
    // the normal is the tangent turned left, so their depth runs along +Z.
    for (int index = 1; index <= 5; ++index) {
        auto c = MakeAnalyticPath(index);
        KVector3D p, t, n, b;
        ASSERT_TRUE(c->GetFrame(c->GetLength() / 3, p, t, n, b));
        EXPECT_LT((b - KVector3D(0, 0, 1)).Length(), 1e-5) << index;
        if (index == 1) {
            EXPECT_LT((t - KVector3D(1, 0, 0)).Length(), 1e-6);
            EXPECT_LT((n - KVector3D(0, 1, 0)).Length(), 1e-6);
        }
    }
}

TEST(AnalyticPaths, FramesAreOrthonormalEverywhereInBothModes) {
    for (int index = 1; index <= kAnalyticPathCount; ++index) {
        const VAnalyticPathEntry* e = GetAnalyticPathEntry(index);
        auto c = MakeAnalyticPathWithSliders(index, e->startSliders[0], e->startSliders[1]);
        EXPECT_LT(WorstFrame(*c), 1e-5) << e->name;
        if (index >= 6) {
            // The 3D paths keep their letters upright along the binormal.
            KVector3D p, t, n, b, t2, n2, b2;
            ASSERT_TRUE(c->GetFrame(c->GetLength() / 3, p, t, n, b));
            auto& c3 = dynamic_cast<VCurveAnalytic3D&>(*c);
            ASSERT_TRUE(c3.VCurveAnalytic3D::GetFrameAt(c->GetLength() / 3, p, t2, n2, b2));
            EXPECT_LT((n - b2 * (index == 6 ? 1.0f : -1.0f)).Length(), 1e-6);
        }
        std::vector<KVector3D> grid = Grid(*c);
        EXPECT_TRUE(PlotPath(*c, grid, "curves_path_" + std::to_string(index) + ".png"));
        c->SetFrameMode(kFrameModeTable);
        ASSERT_TRUE(c->frameTable);
        EXPECT_LT(WorstFrame(*c), 1e-5) << e->name << " table";
        EXPECT_TRUE(PlotPath(*c, grid, "curves_path_" + std::to_string(index) + "_table.png"));
    }
}

TEST(AnalyticPaths, ClosedPathsWrapAndOpenPathsRefuseOffPathLengths) {
    VCurveEllipse ellipse;
    const float L = ellipse.GetLength();
    KVector3D p1, t1, n1, b1, p2, t2, n2, b2;
    ASSERT_TRUE(ellipse.GetFrame(1.0f, p1, t1, n1, b1));
    ASSERT_TRUE(ellipse.GetFrame(L + 1.0f, p2, t2, n2, b2));
    EXPECT_LT((p1 - p2).Length(), 1e-3);
    EXPECT_LT((t1 - t2).Length(), 1e-3);
    ASSERT_TRUE(ellipse.GetFrame(1.0f - 3 * L, p2, t2, n2, b2));
    EXPECT_LT((p1 - p2).Length(), 1e-3);
    ASSERT_TRUE(ellipse.GetFrame(1e30f, p2, t2, n2, b2)); // ends at once
    EXPECT_TRUE(Finite(p2));
    EXPECT_FALSE(ellipse.GetFrame(std::numeric_limits<float>::infinity(), p2, t2, n2, b2));
    EXPECT_FALSE(ellipse.GetFrame(std::nanf(""), p2, t2, n2, b2));

    VCurveSinCurve wave;
    const float W = wave.GetLength();
    EXPECT_FALSE(wave.GetFrame(W + 1.0f, p2, t2, n2, b2));
    EXPECT_FALSE(wave.GetFrame(-0.01f, p2, t2, n2, b2));
    ASSERT_TRUE(wave.GetFrame(W, p2, t2, n2, b2)); // the very end is on the path
    KVector3D last;
    wave.Evaluate(540, last);
    EXPECT_LT((p2 - last).Length(), 1e-3);
    EXPECT_LT(FrameError(t2, n2, b2), 1e-5);

    KVector3D untouched{7, 7, 7, 1};
    float t = -1;
    EXPECT_FALSE(wave.FindParameterAt(W, untouched, t));
    EXPECT_FALSE(wave.FindParameterAt(-1, untouched, t));
    EXPECT_FALSE(wave.GetPointAt(W + 5, untouched));
    EXPECT_EQ(untouched.x, 7.0f);
    EXPECT_EQ(t, -1.0f);
}

TEST(AnalyticPaths, ArcLengthSearchIsLinearWithinAChordAndMonotone) {
    for (int index = 1; index <= kAnalyticPathCount; ++index) {
        auto c = MakeAnalyticPath(index);
        std::vector<KVector3D> grid = Grid(*c);
        float prevT = -std::numeric_limits<float>::infinity();
        // Walking the chord polygon independently: position at s must lie on it.
        std::vector<double> cum(1, 0.0);
        for (std::size_t i = 1; i < grid.size(); ++i)
            cum.push_back(cum.back() + (grid[i] - grid[i - 1]).Length());
        for (int k = 0; k < 97; ++k) {
            float s = c->GetLength() * float(k) / 97.0f;
            KVector3D p;
            float t = 0;
            ASSERT_TRUE(c->FindParameterAt(s, p, t));
            EXPECT_GE(t, prevT);
            prevT = t;
            std::size_t j = 1;
            while (j + 1 < cum.size() && cum[j] <= s)
                ++j;
            double f = (s - cum[j - 1]) / (cum[j] - cum[j - 1]);
            float tExpected = c->paramMin + c->paramStep * (float(j - 1) + float(f));
            EXPECT_NEAR(t, tExpected, 1e-3 * std::max(1.0f, std::fabs(tExpected))) << index;
        }
    }
}

TEST(AnalyticPaths, DegenerateShapesGiveFalseOrAReferenceFrameNeverNaN) {
    // An ellipse with both sliders at 0 has no length: no letter is placed.
    auto e = MakeAnalyticPathWithSliders(2, 0, 0);
    EXPECT_EQ(e->GetLength(), 0.0f);
    KVector3D p, t, n, b;
    for (float s : {0.0f, 0.5f, -1.0f, 100.0f})
        EXPECT_FALSE(e->GetFrame(s, p, t, n, b));

    // A helix of radius 0 is a straight line up the Y axis.
    auto h = MakeAnalyticPathWithSliders(6, 40, 0);
    EXPECT_GT(h->GetLength(), 0.0f);
    EXPECT_LT(WorstFrame(*h), 1e-5);
    ASSERT_TRUE(h->GetFrame(h->GetLength() / 2, p, t, n, b));
    EXPECT_NEAR(t.y, 1.0f, 1e-5);

    // A wave with no x stretch is its vertical swings only; the tangent
    // flips between +Y and -Y at the crests.
    auto w = MakeAnalyticPathWithSliders(3, 30, 0);
    auto& wave = dynamic_cast<VCurveSinCurve&>(*w);
    EXPECT_NEAR(wave.GetLength(), 4 * 3 * wave.first, 1e-3);
    ASSERT_TRUE(wave.GetFrame(wave.GetLength() * 0.1f, p, t, n, b));
    EXPECT_NEAR(std::fabs(t.y), 1.0f, 1e-6);
    EXPECT_LT(WorstFrame(wave), 1e-5);

    // Nonsense parameters never leave NaN in a frame or a length.
    for (int index = 2; index <= kAnalyticPathCount; ++index) {
        for (float bad :
             {std::nanf(""), std::numeric_limits<float>::infinity(), 0.0f, -5.0f, 1e30f}) {
            auto c = MakeAnalyticPath(index);
            SetPathParameter(*c, true, bad);
            SetPathParameter(*c, false, bad);
            EXPECT_TRUE(std::isfinite(c->GetLength())) << index;
            for (int i = 0; i <= 10; ++i) {
                if (c->GetFrame(c->GetLength() * float(i) / 10.0f, p, t, n, b)) {
                    EXPECT_TRUE(Finite(p) && Finite(t) && Finite(n) && Finite(b)) << index;
                }
            }
            c->SetFrameMode(kFrameModeTable);
            KVector3D st, sn;
            if (c->GetStartFrame(st, sn)) {
                EXPECT_TRUE(Finite(st) && Finite(sn));
            }
        }
    }
    // A grid that cannot advance ends at once.
    VCurveAxis stuck(0.0f, 1e9f, 1e-6f);
    EXPECT_LE(stuck.sampleCount, VCurveAnalytical::kMaxSamples);
    VCurveAxis none(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(none.sampleCount, 0);
    EXPECT_FALSE(none.GetFrame(0.0f, p, t, n, b));
}

TEST(FrameTable, KeepsTheStartTwistThroughAChangeOfShape) {
    // The user twists the wave's start frame by 30 degrees about its
    // tangent; after a change of swing the start normal must keep that
    // twist relative to the plane of the wave.
    VCurveSinCurve wave;
    KVector3D p, t, n, b;
    ASSERT_TRUE(wave.GetFrameAt(0.0f, p, t, n, b));
    const float angle = 0.5236f;
    const KVector3D twisted = n * std::cos(angle) + b * std::sin(angle);
    wave.SetStartFrame(t, twisted);
    KVector3D st, sn;
    ASSERT_TRUE(wave.GetStartFrame(st, sn));
    EXPECT_LT((sn - twisted).Length(), 1e-6);
    wave.SetFirst(5.0f);
    ASSERT_TRUE(wave.GetFrameAt(0.0f, p, t, n, b));
    ASSERT_TRUE(wave.GetStartFrame(st, sn));
    EXPECT_LT((st - t).Length(), 1e-5);
    EXPECT_NEAR(sn.Dot(n), std::cos(angle), 1e-5);
    EXPECT_NEAR(sn.Dot(b), std::sin(angle), 1e-5);
    EXPECT_LT(WorstFrame(wave), 1e-5);

    // On a helix whose start tangent turns with the radius, the new start
    // normal is the old one carried by the smallest rotation.
    VCurveHelix helix;
    helix.SetFrameMode(kFrameModeTable);
    KVector3D t0, n0;
    ASSERT_TRUE(helix.GetStartFrame(t0, n0));
    helix.SetSecond(2.0f);
    KVector3D t1, n1;
    ASSERT_TRUE(helix.GetStartFrame(t1, n1));
    KVector3D expected = RotateVectorToVector(t0, t1, n0);
    EXPECT_LT((n1 - expected).Length(), 1e-4);
    EXPECT_LT(std::fabs(n1.Dot(t1)), 1e-5);

    // Mode 1 again drops the table.
    helix.SetFrameMode(kFrameModeDirect);
    EXPECT_FALSE(helix.frameTable);
}

TEST(FrameTable, TransportIsRotationMinimisingAndTheLastHundredthIsConstant) {
    VCurveHelix helix;
    helix.SetFrameMode(kFrameModeTable);
    const VCurveFrameTable& table = *helix.frameTable;
    ASSERT_EQ(table.count, 100);
    for (int i = 1; i < table.count; ++i) {
        const VCurveFrame& a = table.frames[i - 1];
        const VCurveFrame& b = table.frames[i];
        EXPECT_NEAR(b.normal.Length(), 1.0f, 1e-5);
        EXPECT_LT(std::fabs(b.normal.Dot(b.tangent)), 1e-5);
        // Parallel transport: the normal turns no more than the tangent does.
        float turnT = std::acos(std::clamp(a.tangent.Dot(b.tangent), -1.0f, 1.0f));
        float turnN = std::acos(std::clamp(a.normal.Dot(b.normal), -1.0f, 1.0f));
        EXPECT_LE(turnN, turnT + 1e-3f) << i;
    }
    const float L = helix.GetLength();
    KVector3D p, t1, n1, b1, t2, n2, b2;
    ASSERT_TRUE(helix.GetFrame(L * 0.995f, p, t1, n1, b1));
    ASSERT_TRUE(helix.GetFrame(L, p, t2, n2, b2));
    EXPECT_LT((t1 - t2).Length(), 1e-6);
    EXPECT_LT((n1 - n2).Length(), 1e-6);

    // Reversal of the tangent: half a turn that keeps the normal.
    KVector3D r = RotateVectorToVector(KVector3D(1, 0, 0), KVector3D(-1, 0, 0), KVector3D(0, 1, 0));
    EXPECT_LT((r - KVector3D(0, 1, 0)).Length(), 1e-6);
    r = RotateVectorToVector(KVector3D(1, 0, 0), KVector3D(0, 1, 0), KVector3D(0, 1, 0));
    EXPECT_LT((r - KVector3D(-1, 0, 0)).Length(), 1e-6);
}

TEST(AnalyticPaths, ConversionSamplesCoverTheRangeWithEndTangents) {
    for (int index = 1; index <= kAnalyticPathCount; ++index) {
        auto c = MakeAnalyticPath(index);
        KVector3D pts[VCurveAnalytical::kConversionSamples];
        KVector3D st, et, sn;
        std::int32_t count = 0;
        c->SampleForConversion(count, pts, st, et, sn);
        ASSERT_EQ(count, 20);
        KVector3D first, last;
        c->Evaluate(c->paramMin, first);
        c->Evaluate(c->paramMax, last);
        EXPECT_LT((pts[0] - first).Length(), 1e-5);
        if (c->IsClosed())
            EXPECT_EQ((pts[19] - pts[0]).Length(), 0.0f);
        else
            EXPECT_LT((pts[19] - last).Length(), 1e-3);
        EXPECT_NEAR(st.Length(), 1.0f, 1e-5);
        EXPECT_NEAR(et.Length(), 1.0f, 1e-5);
        EXPECT_LT(std::fabs(st.Dot(sn)), 1e-5);
        // The conversion can be interpolated into a custom path.
        std::unique_ptr<VCNurbsCurve> curve;
        EXPECT_EQ(InterpolateCubic(pts, count, st, et, kParamChordLength, curve), kCurveOK);
        if (c->IsClosed()) {
            EXPECT_EQ(curve->closed, 1);
        }
    }
}

TEST(AnalyticPaths, SlidersMapLinearlyOntoTheirParameters) {
    auto e = MakeAnalyticPathWithSliders(2, 40, 60);
    auto& ellipse = dynamic_cast<VCurveEllipse&>(*e);
    EXPECT_FLOAT_EQ(ellipse.second, 4.0f); // row 1 "Height:" feeds second
    EXPECT_FLOAT_EQ(ellipse.first, 6.0f);
    auto b = MakeAnalyticPathWithSliders(5, 40, 73);
    auto& bump = dynamic_cast<VCurveNormal&>(*b);
    EXPECT_FLOAT_EQ(bump.first, 4.0f);
    EXPECT_NEAR(bump.second, 0.2f + 0.73f * (0.01f - 0.2f), 1e-6); // falling row
    auto v = MakeAnalyticPathWithSliders(8, 12, 27);
    auto& vortex = dynamic_cast<VCurveVortex&>(*v);
    EXPECT_NEAR(vortex.first, 0.1f + 0.12f * 0.4f, 1e-6);
    EXPECT_NEAR(vortex.second, 0.02f + 0.27f * 0.18f, 1e-6);
    EXPECT_FALSE(GetAnalyticPathEntry(0));
    EXPECT_FALSE(GetAnalyticPathEntry(9));
    EXPECT_FALSE(MakeAnalyticPath(9));
    auto line = MakeAnalyticPath(1);
    EXPECT_FALSE(ApplyPathSlider(*line, 1, 0, 50));
    EXPECT_FALSE(SetPathParameter(*line, true, 3.0f));
    // Values outside 0..100 are held to the ends of the row.
    EXPECT_FLOAT_EQ(SliderToParameter(GetAnalyticPathEntry(6)->rows[1], 150), 10.0f);
    EXPECT_FLOAT_EQ(SliderToParameter(GetAnalyticPathEntry(6)->rows[1], -3), 0.0f);
}

TEST(NurbsPath, FollowsADrawnCurveInBothFrameModes) {
    const KVector3D P[7] = {{-6, 0, 0, 1},  {-4, 3, 1, 1}, {-1, -2, 2, 1}, {1, 3, 0, 1},
                            {3, -1, -2, 1}, {5, 2, 0, 1},  {7, 0, 1, 1}};
    const double U[] = {0, 0, 0, 0, 0.25, 0.5, 0.75, 1, 1, 1, 1};
    VCNurbsCurve curve;
    ASSERT_EQ(curve.Set(3, 7, P, 11, U, 0), kCurveOK);
    VNurbsCurvePath path;
    KVector3D p, t, n, b;
    EXPECT_FALSE(path.GetFrame(0.0f, p, t, n, b)); // no curve yet
    path.curve = &curve;
    path.Rebuild();
    EXPECT_EQ(path.GetLength(), curve.arcLength);
    EXPECT_GT(path.GetLength(), 14.0f);
    EXPECT_FALSE(path.IsClosed());
    EXPECT_LT(WorstFrame(path), 1e-5);
    EXPECT_FALSE(path.GetFrame(path.GetLength() + 0.5f, p, t, n, b));

    std::vector<KVector3D> poly;
    for (int i = 0; i <= 200; ++i) {
        KVector3D q;
        curve.Evaluate(i / 200.0, true, q);
        poly.push_back(q);
    }
    EXPECT_TRUE(PlotPath(path, poly, "curves_path_nurbs.png"));
    path.SetFrameMode(kFrameModeTable);
    EXPECT_LT(WorstFrame(path), 1e-5);
    EXPECT_TRUE(PlotPath(path, poly, "curves_path_nurbs_table.png"));

    // Moving a control point and rebuilding keeps the start normal.
    KVector3D t0, n0;
    ASSERT_TRUE(path.GetStartFrame(t0, n0));
    curve.AddToControlPoint(3, KVector3D(0, 0, 2));
    path.Rebuild();
    KVector3D t1, n1;
    ASSERT_TRUE(path.GetStartFrame(t1, n1));
    EXPECT_LT((n1 - RotateVectorToVector(t0, t1, n0)).Length(), 1e-4);
    EXPECT_LT(WorstFrame(path), 1e-5);
}
