// Curve shapes: arcs must lie on their circle, polygons and stars have their
// vertices where asked, and bad sizes or frames give their status.
#include "CurveTestUtil.h"
#include "curves/VCArc.h"
#include "curves/VCLine.h"
#include "curves/VCNgon.h"
#include "curves/VCRect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace curvetest;

namespace {
constexpr double kPi = 3.14159265358979323846;

// Position of a point in the shape's plane: (along u, along v, off plane).
std::array<double, 3> InFrame(const VC2DNCurveShape& s, const KVector3D& p) {
    KVector3D d = p - s.center;
    KVector3D n = s.uAxis.Cross(s.vAxis).Unit();
    return {d.Dot(s.uAxis), d.Dot(s.vAxis), d.Dot(n)};
}
} // namespace

TEST(ShapeArc, RandomArcsLieOnTheirCircleFromStartToEndAngle) {
    std::mt19937 rng(41);
    std::uniform_real_distribution<double> ang(-400, 400), rad(0.1, 10), c(-5, 5);
    for (int trial = 0; trial < 200; ++trial) {
        VCArc arc;
        KVector3D u = KVector3D(float(c(rng)), float(c(rng)), float(c(rng)));
        KVector3D v = KVector3D(float(c(rng)), float(c(rng)), float(c(rng)));
        v = (v - u.Unit() * v.Dot(u.Unit())); // perpendicular axes
        const double r = rad(rng), start = ang(rng), end = ang(rng);
        ASSERT_EQ(arc.SetAll(r, r, start, end, KVector3D(float(c(rng)), float(c(rng)), 0), u, v),
                  kCurveOK);
        ASSERT_EQ(arc.Build(), kCurveOK);
        const VCNurbsCurve& curve = *arc.curve;
        EXPECT_EQ(curve.degree, 2);
        double sweep = end > start ? end - start : end + 360 - start;
        if (sweep > 360) sweep = 360;
        const int segments = sweep <= 90 ? 1 : sweep <= 180 ? 2 : sweep <= 270 ? 3 : 4;
        EXPECT_EQ(curve.GetControlPointCount(), 2 * segments + 1);
        for (int i = 0; i <= 40; ++i) {
            KVector3D p;
            ASSERT_EQ(curve.Evaluate(i / 40.0, true, p), kCurveOK);
            auto f = InFrame(arc, p);
            EXPECT_NEAR(std::hypot(f[0], f[1]), r, 2e-5 * (1 + r)) << trial;
            EXPECT_NEAR(f[2], 0.0, 2e-5 * (1 + r));
        }
        KVector3D p0, p1;
        curve.Evaluate(0.0, true, p0);
        curve.Evaluate(1.0, true, p1);
        auto f0 = InFrame(arc, p0), f1 = InFrame(arc, p1);
        EXPECT_NEAR(f0[0], r * std::cos(start * kPi / 180), 1e-4 * (1 + r));
        EXPECT_NEAR(f1[1], r * std::sin((start + sweep) * kPi / 180), 1e-4 * (1 + r));

        // Cubic pieces of the arc reproduce it.
        ASSERT_EQ(arc.MakeBezierPieces(), kCurveOK);
        EXPECT_EQ(arc.pieceCount, segments);
        EXPECT_EQ(arc.pieceSize, 4);
        for (int k = 0; k < arc.pieceCount; ++k) {
            auto q = Casteljau(arc.pieces.get() + 4 * k, 3, 0.37);
            double x = q[0] - arc.center.x, y = q[1] - arc.center.y, z = q[2] - arc.center.z;
            EXPECT_NEAR(std::sqrt(x * x + y * y + z * z), r, 2e-5 * (1 + r));
        }
    }
}

TEST(ShapeArc, QuarterFullCircleEllipseAndDegenerateRadii) {
    VCArc arc;
    ASSERT_EQ(arc.SetAll(2, 2, 0, 90, KVector3D(0, 0, 0), KVector3D(1, 0, 0), KVector3D(0, 1, 0)),
              kCurveOK);
    auto quarter = arc.TakeCurve();
    ASSERT_TRUE(quarter);
    EXPECT_EQ(quarter->GetControlPointCount(), 3);
    ASSERT_EQ(quarter->knots->count, 6);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(quarter->knots->values[i], 0.0);
    for (int i = 3; i < 6; ++i)
        EXPECT_EQ(quarter->knots->values[i], 1.0);
    EXPECT_EQ(quarter->closed, 0);

    ASSERT_EQ(arc.SetEndAngle(360), kCurveOK);
    auto full = arc.TakeCurve();
    auto again = arc.TakeCurve();
    ASSERT_TRUE(full && again);
    EXPECT_NE(full.get(), again.get());
    EXPECT_EQ(full->GetControlPointCount(), 9);
    EXPECT_EQ(full->closed, 1);
    KVector3D first, last;
    full->GetControlPoint(0, first);
    full->GetControlPoint(8, last);
    EXPECT_LT((first - last).Length(), 1e-5);

    // An ellipse passes through its points at the segment ends.
    ASSERT_EQ(arc.SetRadii(3, 1), kCurveOK);
    ASSERT_EQ(arc.Build(), kCurveOK);
    for (int s = 0; s <= 4; ++s) {
        KVector3D p;
        arc.curve->Evaluate(s / 4.0, true, p);
        EXPECT_NEAR(p.x, 3 * std::cos(s * kPi / 2), 1e-5);
        EXPECT_NEAR(p.y, std::sin(s * kPi / 2), 1e-5);
    }
    // Tiny radii collapse onto the centre.
    ASSERT_EQ(arc.SetCenter(KVector3D(1, 2, 3)), kCurveOK);
    ASSERT_EQ(arc.SetRadii(0, 0), kCurveOK);
    auto dot = arc.TakeCurve();
    ASSERT_TRUE(dot);
    KVector3D p;
    dot->Evaluate(0.3, true, p);
    EXPECT_LT((p - KVector3D(1, 2, 3)).Length(), 1e-6);
    EXPECT_EQ(arc.SetRadii(-1, 1), kCurveNegativeRadius);
    EXPECT_EQ(arc.SetRadii(std::nan(""), 1), kCurveNegativeRadius);
    EXPECT_EQ(arc.uRadius, 0.0);
    EXPECT_EQ(arc.SetStartAngle(INFINITY), kCurveBadBezierArgument);
}

TEST(ShapeFrame, AxesMustBeNonZeroAndNotParallel) {
    VCRect rect;
    EXPECT_EQ(rect.SetFrame(KVector3D(0, 0, 0), KVector3D(1, 0, 0), KVector3D(2, 0, 0)),
              kCurveBadAxis);
    EXPECT_EQ(rect.SetFrame(KVector3D(0, 0, 0), KVector3D(1, 2, 3), KVector3D(-2, -4, -6)),
              kCurveBadAxis);
    EXPECT_EQ(rect.SetFrame(KVector3D(0, 0, 0), KVector3D(1, 0, 0), KVector3D(0, 0, 0)),
              kCurveBadAxis);
    EXPECT_EQ(rect.SetFrame(KVector3D(0, 0, 0), KVector3D(0, 0, 0), KVector3D(0, 1, 0)),
              kCurveBadAxis);
    EXPECT_EQ(rect.SetFrame(KVector3D(0, 0, 0), KVector3D(NAN, 0, 0), KVector3D(0, 1, 0)),
              kCurveBadAxis);
    EXPECT_EQ(rect.SetVAxis(KVector3D(5, 0, 0)), kCurveBadAxis);
    EXPECT_EQ(rect.vAxis.y, 1.0f); // unchanged
    // Axes with zero components are fine, and are normalised.
    ASSERT_EQ(rect.SetFrame(KVector3D(1, 1, 1), KVector3D(0, 0, 3), KVector3D(0, 2, 0)), kCurveOK);
    EXPECT_EQ(rect.uAxis.z, 1.0f);
    EXPECT_EQ(rect.vAxis.y, 1.0f);
    ASSERT_EQ(rect.SetSize(2, 4), kCurveOK);
    ASSERT_EQ(rect.Build(), kCurveOK);
    KVector3D p;
    rect.curve->GetControlPoint(0, p);
    EXPECT_LT((p - KVector3D(1, 3, 2)).Length(), 1e-6); // centre + 1 u + 2 v
    // Moving the centre moves a built curve along.
    ASSERT_EQ(rect.SetCenter(KVector3D(2, 1, 1)), kCurveOK);
    ASSERT_TRUE(rect.curve);
    rect.curve->GetControlPoint(4, p);
    EXPECT_LT((p - KVector3D(2, 3, 2)).Length(), 1e-6);
}

TEST(ShapePolygon, VerticesStarsRectanglesAndTheirLimits) {
    VCNgon gon;
    EXPECT_EQ(gon.SetSides(2), kCurveTooFewSides);
    EXPECT_EQ(gon.sides, 4);
    EXPECT_EQ(gon.SetSides(VCNgon::kMaxSides + 1), kCurveBadPointCount);
    EXPECT_EQ(gon.SetRadius(0.0001), kCurveSizeTooSmall);
    ASSERT_EQ(gon.SetAll(7, 2, 1), kCurveOK);
    ASSERT_EQ(gon.SetStartAngle(0.3), kCurveOK);
    auto c = gon.TakeCurve();
    ASSERT_TRUE(c);
    EXPECT_EQ(c->degree, 1);
    EXPECT_EQ(c->closed, 1);
    ASSERT_EQ(c->GetControlPointCount(), 8);
    for (int i = 0; i < 7; ++i) {
        KVector3D p;
        c->GetControlPoint(i, p);
        const double a = 0.3 + i * 2 * kPi / 7;
        EXPECT_NEAR(p.x, 2 * std::cos(a), 1e-6);
        EXPECT_NEAR(p.y, std::sin(a), 1e-6);
        // The polyline passes through vertex i at knot i / 7.
        KVector3D q;
        c->Evaluate(double(i) / 7, true, q);
        EXPECT_LT((q - p).Length(), 1e-5);
    }
    KVector3D first, last;
    c->GetControlPoint(0, first);
    c->GetControlPoint(7, last);
    EXPECT_EQ((first - last).Length(), 0.0f);

    VCStar star;
    ASSERT_EQ(star.SetAll(5, 2, 2, 1, 1), kCurveOK);
    EXPECT_EQ(star.SetInnerRadii(0, 1), kCurveSizeTooSmall);
    auto s = star.TakeCurve();
    ASSERT_TRUE(s);
    ASSERT_EQ(s->GetControlPointCount(), 11);
    for (int i = 0; i < 10; ++i) {
        KVector3D p;
        s->GetControlPoint(i, p);
        EXPECT_NEAR(p.Length(), i % 2 ? 1.0f : 2.0f, 1e-6);
        EXPECT_NEAR(std::atan2(p.y, p.x), std::remainder(i * kPi / 5, 2 * kPi), 1e-5);
    }

    VCRect rect;
    EXPECT_EQ(rect.SetSize(0.0001, 3), kCurveSizeTooSmall);
    EXPECT_EQ(rect.width, 1.0);
    ASSERT_EQ(rect.SetSize(3), kCurveOK);
    auto r = rect.TakeCurve();
    ASSERT_TRUE(r);
    r->CalcLength();
    EXPECT_NEAR(r->arcLength, 12.0f, 1e-4);
    EXPECT_EQ(rect.MakeBezierPieces(), kCurveNoSuchOperation);
}

TEST(ShapeLine, IntersectionOfRandomLinesAndParallelOrBoundedMisses) {
    std::mt19937 rng(43);
    std::uniform_real_distribution<double> c(-5, 5);
    for (int trial = 0; trial < 100; ++trial) {
        KVector3D X(float(c(rng)), float(c(rng)), float(c(rng)));
        KVector3D d1(float(c(rng)), float(c(rng)), float(c(rng)));
        KVector3D d2(float(c(rng)), float(c(rng)), float(c(rng)));
        VCLine a(X - d1 * 0.5f, d1, true), b(X + d2 * 2.0f, d2);
        KVector3D meet;
        double s = 0, t = 0;
        bool found = false;
        ASSERT_EQ(a.Intersect(b, meet, s, t, found), kCurveOK);
        if (d1.Cross(d2).Length() < 1e-3f * d1.Length() * d2.Length()) continue;
        ASSERT_TRUE(found);
        EXPECT_LT((meet - X).Length(), 1e-3);
        EXPECT_NEAR(s, 0.5 * d1.Length(), 1e-3);
        EXPECT_NEAR(t, -2.0 * d2.Length(), 1e-3);
        // The same meeting lies outside a bounded second line.
        VCLine bb(X + d2 * 2.0f, d2, true);
        ASSERT_EQ(a.Intersect(bb, meet, s, t, found), kCurveOK);
        EXPECT_FALSE(found);
    }
    VCLine a(KVector3D(0, 0, 0), KVector3D(1, 1, 0)), b(KVector3D(0, 1, 0), KVector3D(2, 2, 0));
    KVector3D meet;
    double s, t;
    bool found = true;
    ASSERT_EQ(a.Intersect(b, meet, s, t, found), kCurveOK);
    EXPECT_FALSE(found);
    VCLine zero(KVector3D(0, 0, 0), KVector3D(0, 0, 0));
    found = true;
    ASSERT_EQ(a.Intersect(zero, meet, s, t, found), kCurveOK);
    EXPECT_FALSE(found);
    // Skew lines meet halfway between their closest points.
    VCLine x(KVector3D(0, 0, 0), KVector3D(1, 0, 0)), y(KVector3D(0, 0, 2), KVector3D(0, 1, 0));
    ASSERT_EQ(x.Intersect(y, meet, s, t, found), kCurveOK);
    ASSERT_TRUE(found);
    EXPECT_LT((meet - KVector3D(0, 0, 1)).Length(), 1e-6);
}
