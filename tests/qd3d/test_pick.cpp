// Window point picks on a known scene: order, pick ids, the tolerance on
// lines, hit paths and the details of a hit.
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

using namespace q3test;

namespace {

// The number of hits of a pick, which it disposes of.
TQ3Uns32 hitsOf(TQ3PickObject pick) {
    TQ3Uns32 n = 99;
    Q3Pick_GetNumHits(pick, &n);
    Q3Object_Dispose(pick);
    return n;
}

class Pick : public LibraryTest {
  protected:
    void SetUp() override {
        LibraryTest::SetUp();
        tv = std::make_unique<TestView>(64, 64, 5, true);
        root = Q3DisplayGroup_New();
        // far square, id 1; near small square, id 2, moved by a translation
        // inside its own group; a line at y = 0.75, id 3
        TQ3Object id1 = Q3PickIDStyle_New(1), id2 = Q3PickIDStyle_New(2),
                  id3 = Q3PickIDStyle_New(3);
        far = square(1, 0);
        nearSquare = square(0.5f, 0);
        TQ3LineData ld{{{{-1, 0.75f, 2}, nullptr}, {{1, 0.75f, 2}, nullptr}}, nullptr};
        line = Q3Line_New(&ld);
        inner = Q3DisplayGroup_New();
        TQ3Vector3D up{0, 0, 1};
        TQ3Object move = Q3TranslateTransform_New(&up);
        Q3Group_AddObject(inner, id2);
        Q3Group_AddObject(inner, move);
        nearPosition = Q3Group_AddObject(inner, nearSquare);
        Q3Group_AddObject(root, id1);
        Q3Group_AddObject(root, far);
        innerPosition = Q3Group_AddObject(root, inner);
        Q3Group_AddObject(root, id3);
        Q3Group_AddObject(root, line);
        for (TQ3Object o : {id1, id2, id3, move})
            Q3Object_Dispose(o);
    }
    void TearDown() override {
        for (TQ3Object o : {far, nearSquare, line, inner, root})
            Q3Object_Dispose(o);
        tv.reset();
        LibraryTest::TearDown();
    }

    TQ3PickObject pickAt(float x, float y) {
        TQ3WindowPointPickData d{{kQ3PickSortNearToFar, 0x3F, 0}, {x, y}, 2.0f, 2.0f};
        TQ3PickObject pick = Q3WindowPointPick_New(&d);
        EXPECT_EQ(Q3View_StartPicking(tv->view, pick), kQ3Success);
        do {
            Q3DisplayGroup_Submit(root, tv->view);
        } while (Q3View_EndPicking(tv->view) == kQ3ViewStatusRetraverse);
        return pick;
    }
    TQ3Uns32 idOf(TQ3PickObject pick, TQ3Uns32 i) {
        TQ3Uns32 id = 0;
        EXPECT_EQ(Q3Pick_GetPickDetailData(pick, i, kQ3PickDetailMaskPickID, &id), kQ3Success);
        return id;
    }

    std::unique_ptr<TestView> tv;
    TQ3GroupObject root = nullptr, inner = nullptr;
    TQ3Object far = nullptr, nearSquare = nullptr, line = nullptr;
    TQ3GroupPosition nearPosition = nullptr, innerPosition = nullptr;
};

TEST_F(Pick, NearestFirstWithIdsPointAndDistance) {
    TQ3PickObject pick = pickAt(32, 32);
    TQ3Uns32 n = 0;
    Q3Pick_GetNumHits(pick, &n);
    ASSERT_EQ(n, 2u);
    EXPECT_EQ(idOf(pick, 0), 2u);
    EXPECT_EQ(idOf(pick, 1), 1u);
    float d0 = 0, d1 = 0;
    Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskDistance, &d0);
    Q3Pick_GetPickDetailData(pick, 1, kQ3PickDetailMaskDistance, &d1);
    EXPECT_NEAR(d0, 4.0f, 0.05f);
    EXPECT_NEAR(d1, 5.0f, 0.05f);
    TQ3Point3D p{};
    Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskXYZ, &p);
    EXPECT_NEAR(p.z, 1.0f, 1e-4f);
    EXPECT_NEAR(p.x, 1.0f / 64, 0.03f);
    TQ3Object hit = nullptr;
    Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskObject, &hit);
    EXPECT_EQ(hit, nearSquare);
    Q3Object_Dispose(hit);
    TQ3Matrix4x4 m{};
    Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskLocalToWorldMatrix, &m);
    EXPECT_FLOAT_EQ(m.value[3][2], 1.0f);
    Q3Object_Dispose(pick);
}

TEST_F(Pick, HitPathLeadsFromTheRootToTheGeometry) {
    TQ3PickObject pick = pickAt(32, 32);
    TQ3PickDetail mask = 0;
    Q3Pick_GetPickDetailValidMask(pick, 0, &mask);
    ASSERT_TRUE(mask & kQ3PickDetailMaskPath);
    TQ3HitPath path{};
    ASSERT_EQ(Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskPath, &path), kQ3Success);
    EXPECT_EQ(path.rootGroup, root);
    ASSERT_EQ(path.depth, 2u);
    EXPECT_EQ(path.positions[0], innerPosition);
    EXPECT_EQ(path.positions[1], nearPosition);
    Q3HitPath_EmptyData(&path);
    EXPECT_EQ(path.positions, nullptr);
    Q3Object_Dispose(pick);
}

TEST_F(Pick, LinesWithinTwoPixelsOnly) {
    // the line lies on window row 8
    TQ3PickObject pick = pickAt(20, 9.5f);
    EXPECT_EQ(idOf(pick, 0), 3u);
    EXPECT_EQ(hitsOf(pick), 2u);
    pick = pickAt(20, 11);
    EXPECT_EQ(idOf(pick, 0), 1u);
    EXPECT_EQ(hitsOf(pick), 1u);
}

TEST_F(Pick, EmptySpaceAndHiddenGroupsGiveNothing) {
    TQ3PickObject pick = pickAt(70, 70);
    TQ3Uns32 n = 5;
    Q3Pick_GetNumHits(pick, &n);
    EXPECT_EQ(n, 0u);
    EXPECT_EQ(Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskPickID, &n), kQ3Failure);
    Q3Object_Dispose(pick);
    Q3DisplayGroup_SetState(inner, kQ3DisplayGroupStateMaskIsPicked);
    pick = pickAt(32, 32);
    Q3Pick_GetNumHits(pick, &n);
    EXPECT_EQ(n, 1u); // only the far square: the hidden group is not picked
    Q3Object_Dispose(pick);
    Q3Error_Get(nullptr);
}

TEST_F(Pick, PickDisposedDuringThePassEndsCleanly) {
    TQ3WindowPointPickData d{{kQ3PickSortNearToFar, 0x3F, 0}, {32, 32}, 2.0f, 2.0f};
    TQ3PickObject pick = Q3WindowPointPick_New(&d);
    ASSERT_EQ(Q3View_StartPicking(tv->view, pick), kQ3Success);
    Q3DisplayGroup_Submit(root, tv->view);
    Q3Object_Dispose(pick);
    Q3DisplayGroup_Submit(root, tv->view);
    EXPECT_EQ(Q3View_EndPicking(tv->view), kQ3ViewStatusDone);
}

// Picks against a scene of its own, with a sort and a limit.
TQ3PickObject pickScene(TestView& tv, TQ3Point2D at, TQ3PickSort sort, TQ3Uns32 limit,
                        const std::vector<TQ3Object>& objects) {
    TQ3WindowPointPickData d{{sort, 0x3F, limit}, at, 2.0f, 2.0f};
    TQ3PickObject pick = Q3WindowPointPick_New(&d);
    EXPECT_EQ(Q3View_StartPicking(tv.view, pick), kQ3Success);
    for (TQ3Object o : objects)
        Q3Object_Submit(o, tv.view);
    Q3View_EndPicking(tv.view);
    return pick;
}

TEST_F(Pick, SortOrdersAndLimits) {
    TQ3Vector3D step{0, 0, 1};
    TQ3Object lift = Q3TranslateTransform_New(&step);
    TQ3Object a = square(1, 0), b = square(1, 0), c = square(1, 0);
    std::vector<TQ3Object> scene{a, lift, b, lift, c}; // at z = 0, 1, 2
    TQ3PickObject far = pickScene(*tv, {32, 32}, kQ3PickSortFarToNear, 0, scene);
    TQ3Uns32 n = 0;
    Q3Pick_GetNumHits(far, &n);
    ASSERT_EQ(n, 3u);
    TQ3Object first = nullptr;
    Q3Pick_GetPickDetailData(far, 0, kQ3PickDetailMaskObject, &first);
    EXPECT_EQ(first, a);
    Q3Object_Dispose(first);
    TQ3PickObject nearest = pickScene(*tv, {32, 32}, kQ3PickSortNearToFar, 1, scene);
    Q3Pick_GetNumHits(nearest, &n);
    ASSERT_EQ(n, 1u);
    Q3Pick_GetPickDetailData(nearest, 0, kQ3PickDetailMaskObject, &first);
    EXPECT_EQ(first, c);
    Q3Object_Dispose(first);
    // a geometry without a group has no path
    TQ3PickDetail mask = 0;
    Q3Pick_GetPickDetailValidMask(nearest, 0, &mask);
    EXPECT_FALSE(mask & kQ3PickDetailMaskPath);
    TQ3HitPath path{};
    EXPECT_EQ(Q3Pick_GetPickDetailData(nearest, 0, kQ3PickDetailMaskPath, &path), kQ3Failure);
    for (TQ3Object o : {far, nearest, lift, a, b, c})
        Q3Object_Dispose(o);
}

TEST_F(Pick, PointsAndMarkersWithinTheVertexTolerance) {
    TQ3PointData pd{{0.5f, 0.5f, 0}, nullptr}; // window (48, 16)
    TQ3Object point = Q3Point_New(&pd);
    TQ3Uns8 bits[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    TQ3MarkerData md{{-0.5f, -0.5f, 0}, 0, 0, {bits, 8, 8, 1, kQ3EndianBig}, nullptr}; // (16, 48)
    TQ3Object marker = Q3Marker_New(&md);
    std::vector<TQ3Object> scene{point, marker};
    struct Case {
        TQ3Point2D at;
        TQ3Uns32 hits;
    } cases[] = {
        {{49.5f, 17}, 1}, {{51, 16}, 0}, {{20, 52}, 1}, {{14.5f, 47}, 1}, {{27.5f, 48}, 0}};
    for (const Case& k : cases)
        EXPECT_EQ(hitsOf(pickScene(*tv, k.at, kQ3PickSortNearToFar, 0, scene)), k.hits)
            << k.at.x << "," << k.at.y;
    Q3Object_Dispose(point);
    Q3Object_Dispose(marker);
}

TEST_F(Pick, StylesDecideWhatCanBeHit) {
    TQ3Object edges = Q3FillStyle_New(kQ3FillStyleEdges);
    TQ3Object remove = Q3BackfacingStyle_New(kQ3BackfacingStyleRemove);
    TQ3Object sq = square(0.5f, 0);
    TQ3Uns32 n = 0;
    // drawn as edges: the middle is empty, the outline is there
    EXPECT_EQ(hitsOf(pickScene(*tv, {32, 32}, kQ3PickSortNearToFar, 0, {edges, sq})), 0u);
    EXPECT_EQ(hitsOf(pickScene(*tv, {32, 17}, kQ3PickSortNearToFar, 0, {edges, sq})), 1u);
    // turned away and removed: no hit
    TQ3RotateTransformData turn{kQ3AxisY, 3.1415927f};
    TQ3Object flip = Q3RotateTransform_New(&turn);
    EXPECT_EQ(hitsOf(pickScene(*tv, {32, 32}, kQ3PickSortNearToFar, 0, {remove, flip, sq})), 0u);
    TQ3PickObject pick = pickScene(*tv, {32, 32}, kQ3PickSortNearToFar, 0, {flip, sq});
    Q3Pick_GetNumHits(pick, &n);
    EXPECT_EQ(n, 1u);
    TQ3Vector3D normal{};
    ASSERT_EQ(Q3Pick_GetPickDetailData(pick, 0, kQ3PickDetailMaskNormal, &normal), kQ3Failure);
    Q3Object_Dispose(pick);
    for (TQ3Object o : {edges, remove, sq, flip})
        Q3Object_Dispose(o);
}

} // namespace
