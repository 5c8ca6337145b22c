// Bounds of each geometry through the bounding passes, transforms on the
// way, the sphere's second traversal, and the maths the passes lean on.
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class Bounds : public q3test::LibraryTest {
  protected:
    void SetUp() override {
        LibraryTest::SetUp();
        view = Q3View_New();
    }
    void TearDown() override {
        Q3Object_Dispose(view);
        LibraryTest::TearDown();
    }
    // The box of one object, submitted after the given transforms.
    TQ3BoundingBox box(TQ3Object o, std::initializer_list<TQ3Object> before = {}) {
        TQ3BoundingBox b{};
        EXPECT_EQ(Q3View_StartBoundingBox(view, kQ3ComputeBoundsExact), kQ3Success);
        do {
            for (TQ3Object t : before)
                Q3Object_Submit(t, view);
            Q3Object_Submit(o, view);
        } while (Q3View_EndBoundingBox(view, &b) == kQ3ViewStatusRetraverse);
        return b;
    }
    TQ3ViewObject view = nullptr;
};

void expectBox(const TQ3BoundingBox& b, TQ3Point3D lo, TQ3Point3D hi, float tol = 1e-4f) {
    ASSERT_FALSE(b.isEmpty);
    EXPECT_NEAR(b.min.x, lo.x, tol);
    EXPECT_NEAR(b.min.y, lo.y, tol);
    EXPECT_NEAR(b.min.z, lo.z, tol);
    EXPECT_NEAR(b.max.x, hi.x, tol);
    EXPECT_NEAR(b.max.y, hi.y, tol);
    EXPECT_NEAR(b.max.z, hi.z, tol);
}

TEST_F(Bounds, SimpleGeometries) {
    TQ3BoxData bd{{1, 2, 3}, {0, 2, 0}, {0, 0, 3}, {4, 0, 0}, nullptr, nullptr};
    TQ3Object box3 = Q3Box_New(&bd);
    expectBox(box(box3), {1, 2, 3}, {5, 4, 6});
    Q3Object_Dispose(box3);

    TQ3LineData ld{{{{-1, 0, 2}, nullptr}, {{3, -2, 0}, nullptr}}, nullptr};
    TQ3Object line = Q3Line_New(&ld);
    expectBox(box(line), {-1, -2, 0}, {3, 0, 2});
    Q3Object_Dispose(line);

    TQ3Vertex3D tv[3] = {{{0, 0, 0}, nullptr}, {{2, 0, 0}, nullptr}, {{0, 5, -1}, nullptr}};
    TQ3TriangleData td{{tv[0], tv[1], tv[2]}, nullptr};
    TQ3Object tri = Q3Triangle_New(&td);
    expectBox(box(tri), {0, 0, -1}, {2, 5, 0});
    Q3Object_Dispose(tri);

    TQ3Vertex3D grid[6] = {{{0, 0, 0}, nullptr}, {{1, 0, 0}, nullptr}, {{2, 0, 0}, nullptr},
                           {{0, 1, 1}, nullptr}, {{1, 1, 1}, nullptr}, {{2, 1, 7}, nullptr}};
    TQ3TriGridData gd{2, 3, grid, nullptr, nullptr};
    TQ3Object tg = Q3TriGrid_New(&gd);
    expectBox(box(tg), {0, 0, 0}, {2, 1, 7});
    Q3Object_Dispose(tg);

    TQ3MarkerData md{{4, 5, 6}, -3, -3, {nullptr, 0, 0, 0, kQ3EndianBig}, nullptr};
    TQ3Object marker = Q3Marker_New(&md);
    expectBox(box(marker), {4, 5, 6}, {4, 5, 6});
    Q3Object_Dispose(marker);
}

TEST_F(Bounds, GeneralPolygonWithHoleKeepsItsOutline) {
    TQ3Vertex3D outer[4] = {
        {{0, 0, 0}, nullptr}, {{4, 0, 0}, nullptr}, {{4, 4, 0}, nullptr}, {{0, 4, 0}, nullptr}};
    TQ3Vertex3D hole[4] = {
        {{1, 1, 0}, nullptr}, {{1, 3, 0}, nullptr}, {{3, 3, 0}, nullptr}, {{3, 1, 0}, nullptr}};
    TQ3GeneralPolygonContourData c[2] = {{4, outer}, {4, hole}};
    TQ3GeneralPolygonData gd{2, c, kQ3GeneralPolygonShapeHintComplex, nullptr};
    TQ3Object gp = Q3GeneralPolygon_New(&gd);
    ASSERT_NE(gp, nullptr);
    expectBox(box(gp), {0, 0, 0}, {4, 4, 0});
    Q3Object_Dispose(gp);
}

TEST_F(Bounds, CurvedGeometriesReachTheirExtent) {
    // with 4 steps around, the cone's base has points on both radii
    TQ3SubdivisionStyleData sd{kQ3SubdivisionMethodConstant, 4, 1};
    TQ3Object sub = Q3SubdivisionStyle_New(&sd);
    TQ3ConeData cd{{0, 0, 0}, {0, 3, 0},           {0, 0, 2}, {1, 0, 0}, 0,       1,      0,
                   1,         kQ3EndCapMaskBottom, nullptr,   nullptr,   nullptr, nullptr};
    TQ3Object cone = Q3Cone_New(&cd);
    expectBox(box(cone, {sub}), {-1, 0, -2}, {1, 3, 2});
    TQ3EllipsoidData ed{{1, 1, 1}, {0, 2, 0}, {3, 0, 0}, {0, 0, 1}, 0,      1,
                        0,         1,         4,         nullptr,   nullptr};
    TQ3Object ell = Q3Ellipsoid_New(&ed);
    TQ3SubdivisionStyleData fine{kQ3SubdivisionMethodConstant, 8, 8};
    Q3SubdivisionStyle_SetData(sub, &fine);
    expectBox(box(ell, {sub}), {-2, -1, 0}, {4, 3, 2});
    Q3Object_Dispose(sub);
    Q3Object_Dispose(cone);
    Q3Object_Dispose(ell);
}

TEST_F(Bounds, NURBCurveStaysInItsHull) {
    // a quadratic arc from (0,0,0) to (2,0,0) pulled up towards (1,2,0)
    TQ3RationalPoint4D pts[3] = {{0, 0, 0, 1}, {1, 2, 0, 1}, {2, 0, 0, 1}};
    float knots[6] = {0, 0, 0, 1, 1, 1};
    TQ3NURBCurveData nd{3, 3, pts, knots, nullptr};
    TQ3Object curve = Q3NURBCurve_New(&nd);
    TQ3BoundingBox b = box(curve);
    // the apex of this Bezier arc is at y = 1
    expectBox(b, {0, 0, 0}, {2, 1, 0}, 0.01f);
    TQ3RationalPoint4D moved{1, 4, 0, 1};
    Q3NURBCurve_SetControlPoint(curve, 1, &moved);
    EXPECT_NEAR(box(curve).max.y, 2.0f, 0.01f);
    Q3Object_Dispose(curve);
}

TEST_F(Bounds, TransformsComposeLastFirst) {
    TQ3PointData pd{{1, 0, 0}, nullptr};
    TQ3Object pt = Q3Point_New(&pd);
    TQ3Vector3D move{0, 0, 5}, grow{2, 2, 2};
    TQ3Object t = Q3TranslateTransform_New(&move), s = Q3ScaleTransform_New(&grow);
    // translate then scale as submitted: the scale acts first on the point
    expectBox(box(pt, {t, s}), {2, 0, 5}, {2, 0, 5});
    expectBox(box(pt, {s, t}), {2, 0, 10}, {2, 0, 10});
    TQ3RotateTransformData rd{kQ3AxisZ, 1.5707964f};
    TQ3Object r = Q3RotateTransform_New(&rd);
    expectBox(box(pt, {r}), {0, 1, 0}, {0, 1, 0});
    TQ3Quaternion q;
    Q3Quaternion_SetRotate_Y(&q, 1.5707964f);
    TQ3Object qt = Q3QuaternionTransform_New(&q);
    expectBox(box(pt, {qt}), {0, 0, -1}, {0, 0, -1});
    TQ3RotateAboutPointTransformData ap{kQ3AxisZ, 3.1415927f, {2, 0, 0}};
    TQ3Object rap = Q3RotateAboutPointTransform_New(&ap);
    expectBox(box(pt, {rap}), {3, 0, 0}, {3, 0, 0});
    TQ3Matrix4x4 m;
    Q3Transform_GetMatrix(rap, &m);
    TQ3Point3D moved;
    Q3Point3D_Transform(&pd.point, &m, &moved);
    EXPECT_NEAR(moved.x, 3.0f, 1e-5f);
    for (TQ3Object o : {pt, t, s, r, qt, rap})
        Q3Object_Dispose(o);
}

TEST_F(Bounds, SphereTakesTwoTraversals) {
    TQ3BoxData bd{{-1, -1, -1}, {0, 2, 0}, {0, 0, 2}, {2, 0, 0}, nullptr, nullptr};
    TQ3Object b = Q3Box_New(&bd);
    TQ3BoundingSphere s{};
    ASSERT_EQ(Q3View_StartBoundingSphere(view, kQ3ComputeBoundsExact), kQ3Success);
    int traversals = 0;
    TQ3ViewStatus st;
    do {
        ++traversals;
        Q3Object_Submit(b, view);
        st = Q3View_EndBoundingSphere(view, &s);
    } while (st == kQ3ViewStatusRetraverse);
    EXPECT_EQ(st, kQ3ViewStatusDone);
    EXPECT_EQ(traversals, 2);
    EXPECT_FALSE(s.isEmpty);
    EXPECT_NEAR(s.radius, std::sqrt(3.0f), 1e-4f);
    EXPECT_NEAR(s.origin.x, 0, 1e-5f);
    Q3Object_Dispose(b);
}

TEST_F(Bounds, PassesRefuseMisuse) {
    TQ3BoundingBox b;
    EXPECT_EQ(Q3View_EndBoundingBox(view, &b), kQ3ViewStatusError); // never started
    TQ3PointData pd{{0, 0, 0}, nullptr};
    TQ3Object pt = Q3Point_New(&pd);
    EXPECT_EQ(Q3Object_Submit(pt, view), kQ3Failure); // outside a pass
    ASSERT_EQ(Q3View_StartBoundingBox(view, kQ3ComputeBoundsExact), kQ3Success);
    EXPECT_EQ(Q3View_StartBoundingBox(view, kQ3ComputeBoundsExact), kQ3Failure); // no nesting
    EXPECT_EQ(Q3View_EndRendering(view), kQ3ViewStatusError);                    // not this pass
    EXPECT_EQ(Q3View_EndBoundingBox(view, &b), kQ3ViewStatusDone);
    EXPECT_TRUE(b.isEmpty);
    Q3Object_Dispose(pt);
    Q3Error_Get(nullptr);
}

TEST(Maths, InverseRotationsAndPolar) {
    TQ3Matrix4x4 m, inv, prod;
    Q3Matrix4x4_SetRotate_XYZ(&m, 0.3f, -0.7f, 1.1f);
    m.value[3][0] = 4;
    m.value[3][1] = -2;
    ASSERT_NE(Q3Matrix4x4_Invert(&m, &inv), nullptr);
    Q3Matrix4x4_Multiply(&m, &inv, &prod);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            EXPECT_NEAR(prod.value[i][j], i == j ? 1.f : 0.f, 1e-5f);
    TQ3Matrix4x4 singular{};
    EXPECT_EQ(Q3Matrix4x4_Invert(&singular, &inv), nullptr);
    Q3Error_Get(nullptr);

    TQ3Vector3D a{1, 0, 0}, b{0, 0.6f, 0.8f}, r;
    for (TQ3Vector3D to : {b, TQ3Vector3D{-1, 0, 0}, a}) {
        Q3Matrix4x4_SetRotateVectorToVector(&m, &a, &to);
        Q3Vector3D_Transform(&a, &m, &r);
        EXPECT_NEAR(r.x, to.x, 1e-5f);
        EXPECT_NEAR(r.y, to.y, 1e-5f);
        EXPECT_NEAR(r.z, to.z, 1e-5f);
    }
    // the quaternion and the matrix of x, then y, then z agree
    TQ3Quaternion q;
    Q3Quaternion_SetRotate_XYZ(&q, 0.3f, -0.7f, 1.1f);
    TQ3Matrix4x4 mq;
    Q3Matrix4x4_SetQuaternion(&mq, &q);
    Q3Matrix4x4_SetRotate_XYZ(&m, 0.3f, -0.7f, 1.1f);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(mq.value[i][j], m.value[i][j], 1e-5f);

    TQ3PolarPoint pp{2, 3.1415927f / 2};
    TQ3Point2D p2;
    Q3PolarPoint_ToPoint2D(&pp, &p2);
    EXPECT_NEAR(p2.x, 0, 1e-5f);
    EXPECT_NEAR(p2.y, 2, 1e-5f);
}

} // namespace
