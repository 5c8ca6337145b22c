// Groups: positions and order, what each kind accepts, removal and the
// display state.
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Groups = q3test::LibraryTest;

std::vector<TQ3Object> members(TQ3GroupObject g) {
    std::vector<TQ3Object> out = q3test::Members(g);
    for (TQ3Object o : out)
        Q3Object_Dispose(o); // the group keeps its own reference
    return out;
}

TQ3Object point(float x) {
    TQ3PointData d{{x, 0, 0}, nullptr};
    return Q3Point_New(&d);
}

TEST_F(Groups, AddBeforeAfterAndRemoveKeepOrder) {
    TQ3GroupObject g = Q3DisplayGroup_New();
    TQ3Object a = point(1), b = point(2), c = point(3), d = point(4);
    TQ3GroupPosition pa = Q3Group_AddObject(g, a);
    TQ3GroupPosition pc = Q3Group_AddObject(g, c);
    ASSERT_NE(Q3Group_AddObjectBefore(g, pc, b), nullptr);
    ASSERT_NE(Q3Group_AddObjectAfter(g, pc, d), nullptr);
    EXPECT_EQ(members(g), (std::vector<TQ3Object>{a, b, c, d}));
    TQ3Object taken = Q3Group_RemovePosition(g, pa);
    EXPECT_EQ(taken, a);
    Q3Object_Dispose(taken); // the group's reference came with it
    EXPECT_EQ(members(g), (std::vector<TQ3Object>{b, c, d}));
    // the removed position is gone: using it again is refused
    EXPECT_EQ(Q3Group_RemovePosition(g, pa), nullptr);
    EXPECT_EQ(Q3Group_AddObjectBefore(g, pa, a), nullptr);
    TQ3GroupPosition found = nullptr;
    Q3Group_GetFirstObjectPosition(g, d, &found);
    EXPECT_NE(found, nullptr);
    Q3Group_GetFirstObjectPosition(g, a, &found);
    EXPECT_EQ(found, nullptr);
    TQ3Uns32 n = 0;
    Q3Group_CountObjects(g, &n);
    EXPECT_EQ(n, 3u);
    for (TQ3Object o : {a, b, c, d})
        Q3Object_Dispose(o);
    Q3Object_Dispose(g);
}

TEST_F(Groups, PositionOfAnotherGroupIsRefused) {
    TQ3GroupObject g1 = Q3Group_New(), g2 = Q3Group_New();
    TQ3Object a = point(1);
    TQ3GroupPosition p1 = Q3Group_AddObject(g1, a);
    EXPECT_EQ(Q3Group_AddObjectAfter(g2, p1, a), nullptr);
    EXPECT_EQ(Q3Error_Get(nullptr), kQ3ErrorInvalidPositionForGroup);
    Q3Object_Dispose(a);
    Q3Object_Dispose(g1);
    Q3Object_Dispose(g2);
}

TEST_F(Groups, KindsAcceptWhatTheyHold) {
    TQ3GroupObject lights = Q3LightGroup_New(), display = Q3DisplayGroup_New();
    TQ3LightData ld{kQ3True, 1, {1, 1, 1}};
    TQ3Object light = Q3AmbientLight_New(&ld), p = point(0);
    EXPECT_EQ(Q3Group_AddObject(lights, p), nullptr);
    EXPECT_NE(Q3Group_AddObject(lights, light), nullptr);
    EXPECT_EQ(Q3Group_AddObject(display, light), nullptr); // a light is not drawable
    EXPECT_NE(Q3Group_AddObject(display, p), nullptr);
    // no cycles: a group cannot hold itself or its holder
    TQ3GroupObject inner = Q3DisplayGroup_New();
    EXPECT_NE(Q3Group_AddObject(display, inner), nullptr);
    EXPECT_EQ(Q3Group_AddObject(inner, display), nullptr);
    EXPECT_EQ(Q3Group_AddObject(inner, inner), nullptr);
    for (TQ3Object o : {light, p, inner, lights, display})
        Q3Object_Dispose(o);
}

TEST_F(Groups, OrderedGroupSortsByKind) {
    TQ3GroupObject g = Q3OrderedDisplayGroup_New();
    TQ3Object geom = point(0);
    TQ3Vector3D t{1, 2, 3};
    TQ3Object xf = Q3TranslateTransform_New(&t);
    TQ3Object style = Q3FillStyle_New(kQ3FillStyleEdges);
    TQ3Object set = Q3AttributeSet_New();
    TQ3Object shader = Q3PhongIllumination_New();
    for (TQ3Object o : {geom, shader, set, style, xf})
        ASSERT_NE(Q3Group_AddObject(g, o), nullptr);
    EXPECT_EQ(members(g), (std::vector<TQ3Object>{xf, style, set, shader, geom}));
    // emptying one kind leaves the others
    Q3Group_EmptyObjectsOfType(g, kQ3ShapeTypeStyle);
    EXPECT_EQ(members(g), (std::vector<TQ3Object>{xf, set, shader, geom}));
    TQ3Uns32 n = 0;
    Q3Group_CountObjectsOfType(g, kQ3ShapeTypeGeometry, &n);
    EXPECT_EQ(n, 1u);
    for (TQ3Object o : {geom, xf, style, set, shader, g})
        Q3Object_Dispose(o);
}

} // namespace
