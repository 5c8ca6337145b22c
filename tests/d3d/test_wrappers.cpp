// Geometry, group, light, style and transform wrappers: what each passes to
// the library, and that a throw on the way leaves nothing behind.
#include "d3d/DAttributeSet.h"
#include "d3d/DGeometryObject.h"
#include "d3d/DGridObject.h"
#include "d3d/DGroupObject.h"
#include "d3d/DLightObject.h"
#include "d3d/DNURBSCurveObject.h"
#include "d3d/DPolyLine.h"
#include "d3d/DPolygon.h"
#include "d3d/DStyleObject.h"
#include "d3d/DTriGrid.h"
#include "tests/d3d/D3DTestSupport.h"

#include <cmath>

using Wrappers = D3DTest;

namespace {

bool HasAttribute(TQ3AttributeSet set, TQ3AttributeType type) {
    return set && Q3AttributeSet_Contains(set, type) == kQ3True;
}

} // namespace

TEST_F(Wrappers, AttributeGroupEmptyKeepsItsSetAndColour) {
    DAttributeDisplayGroup group;
    group.SetDiffuseColor(0.1f, 0.2f, 0.3f);
    DLineObject a({0, 0, 0}, {1, 0, 0}, -1, 0, 0), b({0, 0, 0}, {0, 1, 0}, -1, 0, 0);
    group.AddObject(a);
    group.AddObject(b);
    EXPECT_EQ(group.CountObjects(), 3u);
    group.Empty();
    auto members = Members(group.object);
    ASSERT_EQ(members.size(), 1u);
    EXPECT_EQ(members[0], group.attributes.object);
    TQ3ColorRGB color{};
    ASSERT_TRUE(group.attributes.Get(kQ3AttributeTypeDiffuseColor, &color));
    EXPECT_FLOAT_EQ(color.b, 0.3f);
    DisposeAll(members);
    // AddObjectFirst goes in front of every member, the set included.
    group.AddObjectFirst(a);
    members = Members(group.object);
    ASSERT_EQ(members.size(), 2u);
    EXPECT_EQ(members[0], a.object);
    DisposeAll(members);
}

TEST_F(Wrappers, RemoveInsertAfterAndTypes) {
    DDisplayGroup group;
    DLineObject a({0, 0, 0}, {1, 0, 0}, -1, 0, 0), b({0, 0, 0}, {0, 1, 0}, -1, 0, 0);
    DPickIDStyle id(5);
    group.AddObject(a);
    group.InsertAfter(a, b);
    group.AddObjectFirst(id);
    auto members = Members(group.object);
    ASSERT_EQ(members.size(), 3u);
    EXPECT_EQ(members[0], id.object);
    EXPECT_EQ(members[1], a.object);
    EXPECT_EQ(members[2], b.object);
    DisposeAll(members);

    group.Remove(a);
    EXPECT_EQ(group.CountObjects(), 2u);
    EXPECT_EQ(ThrownCode([&] { group.Remove(a); }), kFailPlin);
    EXPECT_EQ(ThrownCode([&] { group.InsertAfter(a, b); }), kFailPlin);
    group.EmptyOfType(kQ3ShapeTypeStyle);
    EXPECT_EQ(group.CountObjects(), 1u);
    // A light does not belong in a display group: the add fails quietly.
    DAmbientLight light(0.5f);
    EXPECT_EQ(group.AddObject(light), nullptr);
    EXPECT_EQ(group.CountObjects(), 1u);
}

TEST_F(Wrappers, SetDrawnTouchesOnlyTheDrawnBit) {
    DDisplayGroup group;
    Q3DisplayGroup_SetState(group.object,
                            kQ3DisplayGroupStateMaskIsDrawn | kQ3DisplayGroupStateMaskIsPicked);
    group.SetDrawn(false);
    TQ3DisplayGroupState state = 0;
    Q3DisplayGroup_GetState(group.object, &state);
    EXPECT_EQ(state, TQ3DisplayGroupState(kQ3DisplayGroupStateMaskIsPicked));
    group.SetDrawn(true);
    Q3DisplayGroup_GetState(group.object, &state);
    EXPECT_EQ(state, TQ3DisplayGroupState(kQ3DisplayGroupStateMaskIsDrawn |
                                          kQ3DisplayGroupStateMaskIsPicked));
}

TEST_F(Wrappers, PolyLineFinishClosesAndCommits) {
    DPolyLine line(4);
    for (float x : {0.f, 1.f, 1.f, 0.f})
        line.AddPoint({x, x == 0 ? 0.f : 1.f, 0});
    line.Finish(true);
    TQ3PolyLineData data{};
    ASSERT_EQ(Q3PolyLine_GetData(line.object, &data), kQ3Success);
    EXPECT_EQ(data.numVertices, 5u);
    EXPECT_EQ(data.vertices[4].point.x, data.vertices[0].point.x);
    EXPECT_EQ(data.vertices[4].point.y, data.vertices[0].point.y);
    Q3PolyLine_EmptyData(&data);

    // Once made, Finish acts as Commit: the changed point reaches the library.
    line.SetPoint(2, {7, 8, 9});
    line.Finish(true);
    TQ3Point3D p{};
    Q3PolyLine_GetVertexPosition(line.object, 2, &p);
    EXPECT_EQ(p.x, 7.0f);
    EXPECT_EQ(line.GetCount(), 5);
    EXPECT_EQ(line.GetPoint(99).x, 0.0f);

    // A point's set outlives the caller's wrapper until the line is made.
    DPolyLine coloured;
    {
        DAttributeSet set;
        TQ3ColorRGB green{0, 1, 0};
        set.Add(kQ3AttributeTypeDiffuseColor, &green);
        coloured.AddPoint({0, 0, 0}, set.object);
        coloured.AddPoint({1, 0, 0}, set.object);
    }
    coloured.Finish(false);
    ASSERT_EQ(Q3PolyLine_GetData(coloured.object, &data), kQ3Success);
    TQ3ColorRGB c{};
    EXPECT_EQ(Q3AttributeSet_Get(data.vertices[1].attributeSet, kQ3AttributeTypeDiffuseColor, &c),
              kQ3Success);
    EXPECT_EQ(c.g, 1.0f);
    Q3PolyLine_EmptyData(&data);
    coloured.Clear();
    EXPECT_EQ(coloured.GetCount(), 0);

    DPolyLine full;
    for (int i = 0; i < DPolyLine::kCapacity; ++i)
        full.AddPoint({float(i), 0, 0});
    EXPECT_EQ(ThrownCode([&] { full.AddPoint({0, 0, 0}); }), kFailPlin);
}

TEST_F(Wrappers, PolygonRaisesTenBeyond260Vertices) {
    DPolygon polygon;
    for (int i = 0; i < 261; ++i)
        polygon.AddVertex({std::cos(i * 0.024f), std::sin(i * 0.024f), 0});
    EXPECT_EQ(ThrownCode([&] { polygon.AddVertex({0, 0, 0}); }), 10);
    polygon.Finish();
    TQ3PolygonData data{};
    ASSERT_EQ(Q3Polygon_GetData(polygon.object, &data), kQ3Success);
    EXPECT_EQ(data.numVertices, 261u);
    Q3Polygon_EmptyData(&data);
}

TEST_F(Wrappers, GenPolygonShapeHintAndNormals) {
    TQ3Point3D outer[4] = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
    TQ3Point3D hole[3] = {{1, 1, 0}, {2, 1, 0}, {1, 2, 0}};
    TQ3Vector3D up[4] = {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}};
    const TQ3Point3D* points[2] = {outer, hole};
    const TQ3Vector3D* normals[2] = {up, nullptr};
    int counts[2] = {4, 3};
    DGenPolygon two(2, counts, points, normals);
    TQ3GeneralPolygonData data{};
    ASSERT_EQ(Q3GeneralPolygon_GetData(two.object, &data), kQ3Success);
    EXPECT_EQ(data.numContours, 2u);
    EXPECT_EQ(data.shapeHint, kQ3GeneralPolygonShapeHintComplex);
    EXPECT_TRUE(HasAttribute(data.contours[0].vertices[2].attributeSet, kQ3AttributeTypeNormal));
    EXPECT_EQ(data.contours[1].vertices[0].attributeSet, nullptr);
    Q3GeneralPolygon_EmptyData(&data);

    DGenPolygon one(4, outer, up);
    ASSERT_EQ(Q3GeneralPolygon_GetData(one.object, &data), kQ3Success);
    EXPECT_EQ(data.shapeHint, kQ3GeneralPolygonShapeHintConcave);
    Q3GeneralPolygon_EmptyData(&data);
}

TEST_F(Wrappers, OpacityGoesOnAsTransparencyOnlyBelowOne) {
    DAttributeSet shared;
    TQ3Vector3D up{0, 0, 1};
    shared.Add(kQ3AttributeTypeNormal, &up);
    TQ3Vertex3D square[4] = {{{0, 0, 0}, shared.object},
                             {{1, 0, 0}, shared.object},
                             {{1, 1, 0}, shared.object},
                             {{0, 1, 0}, nullptr}};
    const TQ3Vertex3D* contours[1] = {square};
    int counts[1] = {4};

    DGenPolygon opaque(1, counts, contours, 1.0f);
    TQ3GeneralPolygonData data{};
    ASSERT_EQ(Q3GeneralPolygon_GetData(opaque.object, &data), kQ3Success);
    EXPECT_FALSE(HasAttribute(data.generalPolygonAttributeSet, kQ3AttributeTypeTransparencyColor));
    for (TQ3Uns32 i = 0; i < 4; ++i)
        EXPECT_FALSE(HasAttribute(data.contours[0].vertices[i].attributeSet,
                                  kQ3AttributeTypeTransparencyColor));
    Q3GeneralPolygon_EmptyData(&data);

    DGenPolygon clear(1, counts, contours, 0.25f);
    ASSERT_EQ(Q3GeneralPolygon_GetData(clear.object, &data), kQ3Success);
    TQ3ColorRGB t{};
    ASSERT_EQ(
        Q3AttributeSet_Get(data.generalPolygonAttributeSet, kQ3AttributeTypeTransparencyColor, &t),
        kQ3Success);
    EXPECT_FLOAT_EQ(t.g, 0.25f);
    for (TQ3Uns32 i = 0; i < 4; ++i)
        EXPECT_TRUE(HasAttribute(data.contours[0].vertices[i].attributeSet,
                                 kQ3AttributeTypeTransparencyColor));
    // The vertex keeps its normal; the caller's shared set is left as it was.
    EXPECT_TRUE(HasAttribute(data.contours[0].vertices[0].attributeSet, kQ3AttributeTypeNormal));
    EXPECT_FALSE(HasAttribute(shared.object, kQ3AttributeTypeTransparencyColor));
    Q3GeneralPolygon_EmptyData(&data);
}

TEST_F(Wrappers, TriGridRowsStandAFixedStrideApart) {
    std::vector<TQ3Point3D> points(2 * DTriGrid::kRowStride, TQ3Point3D{-99, -99, -99});
    for (int c = 0; c < 3; ++c) {
        points[c] = {float(c), 0, 0};
        points[DTriGrid::kRowStride + c] = {float(c), 1, 0};
    }
    DTriGrid grid(3, 2, points.data(), nullptr);
    TQ3TriGridData data{};
    ASSERT_EQ(Q3TriGrid_GetData(grid.object, &data), kQ3Success);
    EXPECT_EQ(data.numRows, 2u);
    EXPECT_EQ(data.numColumns, 3u);
    EXPECT_EQ(data.vertices[3].point.y, 1.0f);
    EXPECT_EQ(data.vertices[5].point.x, 2.0f);
    Q3TriGrid_EmptyData(&data);

    std::vector<TQ3Vertex3D> vertices(6);
    for (int i = 0; i < 6; ++i)
        vertices[i] = {{float(i % 3), float(i / 3), 0}, nullptr};
    DTriGrid clear(3, 2, vertices.data(), 0.5f);
    ASSERT_EQ(Q3TriGrid_GetData(clear.object, &data), kQ3Success);
    ASSERT_NE(data.facetAttributeSet, nullptr);
    for (int f = 0; f < 3 * 2 - 2; ++f)
        EXPECT_TRUE(HasAttribute(data.facetAttributeSet[f], kQ3AttributeTypeTransparencyColor));
    EXPECT_TRUE(HasAttribute(data.vertices[4].attributeSet, kQ3AttributeTypeTransparencyColor));
    Q3TriGrid_EmptyData(&data);
    EXPECT_EQ(ThrownCode([&] { DTriGrid wide(501, 2, points.data(), nullptr); }), kFailPlin);
}

TEST_F(Wrappers, NurbsCurveThatDoesNotFitStaysEmpty) {
    TQ3RationalPoint4D points[4] = {{0, 0, 0, 1}, {2, 2, 0, 2}, {3, 0, 0, 1}, {4, 1, 0, 1}};
    double knots[8] = {0, 0, 0, 0, 1, 1, 1, 1};
    DNURBSCurveObject wrong(4, points, 7, knots, 3);
    EXPECT_FALSE(wrong.IsValid());
    EXPECT_EQ(wrong.order, 0u);
    wrong.MoveControlPoint({1, 1, 1}, 0); // nothing to move, nothing raised
    DNURBSCurveObject flat(4, points, 8, knots, 0);
    EXPECT_FALSE(flat.IsValid());

    DNURBSCurveObject curve(4, points, 8, knots, 3);
    ASSERT_TRUE(curve.IsValid());
    EXPECT_EQ(curve.order, 4u);
    // Point 1 is (1, 1, 0) with weight 2; the move is in space.
    curve.MoveControlPoint({1, 0, 0}, 1);
    TQ3RationalPoint4D p{};
    Q3NURBCurve_GetControlPoint(curve.object, 1, &p);
    EXPECT_FLOAT_EQ(p.x, 4.0f);
    EXPECT_FLOAT_EQ(p.y, 2.0f);
    EXPECT_FLOAT_EQ(p.w, 2.0f);
}

namespace {

struct GridLines {
    int count = 0;
    float lo[3] = {1e30f, 1e30f, 1e30f}, hi[3] = {-1e30f, -1e30f, -1e30f};
};

GridLines LinesOf(const DGridObject& grid) {
    GridLines out;
    auto members = Members(grid.object);
    for (TQ3Object o : members) {
        if (Q3Object_IsType(o, kQ3GeometryTypeLine) != kQ3True) continue;
        ++out.count;
        TQ3LineData d;
        Q3Line_GetData(o, &d);
        for (auto& v : d.vertices) {
            const float c[3] = {v.point.x, v.point.y, v.point.z};
            for (int i = 0; i < 3; ++i) {
                out.lo[i] = std::min(out.lo[i], c[i]);
                out.hi[i] = std::max(out.hi[i], c[i]);
            }
        }
        Q3Line_EmptyData(&d);
    }
    DisposeAll(members);
    return out;
}

} // namespace

TEST_F(Wrappers, GridLineCountAndExtent) {
    DGridObject grid;
    // 200 by 200 in 20 steps of 10, reaching 100 beyond each side: 41 lines
    // each way, from -200 to 200, on y = 0.
    GridLines lines = LinesOf(grid);
    EXPECT_EQ(lines.count, 82);
    EXPECT_FLOAT_EQ(lines.lo[0], -200);
    EXPECT_FLOAT_EQ(lines.hi[2], 200);
    EXPECT_EQ(lines.lo[1], 0.0f);
    EXPECT_EQ(lines.hi[1], 0.0f);
    TQ3ColorRGB grey{};
    ASSERT_TRUE(grid.attributes.Get(kQ3AttributeTypeDiffuseColor, &grey));
    EXPECT_NEAR(grey.r, 0.4901961f, 1e-6f);

    // A 40 by 10 area in 5 steps: the step follows the shorter side.
    grid.SetBounds({0, -3, 0}, {40, 7, 10}, 5);
    lines = LinesOf(grid);
    // step 2, h 5: x from -5 to 45 (26 lines), z from -5 to 15 (11 lines),
    // all at the minimum y.
    EXPECT_EQ(lines.count, 37);
    EXPECT_FLOAT_EQ(lines.lo[0], -5);
    EXPECT_FLOAT_EQ(lines.hi[0], 45);
    EXPECT_FLOAT_EQ(lines.hi[2], 15);
    EXPECT_EQ(lines.lo[1], -3.0f);
    EXPECT_EQ(lines.hi[1], -3.0f);

    grid.SetPlane(2);
    lines = LinesOf(grid);
    EXPECT_EQ(lines.lo[0], 0.0f);
    EXPECT_EQ(lines.hi[0], 0.0f);
    EXPECT_FLOAT_EQ(lines.hi[1], 7 + 5);

    // Degenerate bounds draw nothing rather than loop without end.
    grid.SetBounds({0, 0, 0}, {0, 0, 0}, 20);
    EXPECT_EQ(LinesOf(grid).count, 0);
    grid.SetBounds({0, 0, 0}, {10, 10, 10}, std::nanf(""));
    EXPECT_EQ(LinesOf(grid).count, 0);
    grid.SetBounds({0, 0, 0}, {10, 10, 10}, 0);
    EXPECT_EQ(LinesOf(grid).count, 0);
}

TEST_F(Wrappers, ConstructorThrowsLeakNothing) {
    // The library refuses a polygon of two points after the normal sets were
    // made; they must all be given back.
    TQ3Point3D two[2] = {{0, 0, 0}, {1, 0, 0}};
    TQ3Vector3D normals[2] = {{0, 0, 1}, {0, 0, 1}};
    EXPECT_EQ(ThrownCode([&] { DPolygon p(2, two, normals); }), kFailPlin);
    EXPECT_EQ(ThrownCode([&] { DGenPolygon p(2, two, normals); }), kFailPlin);
    TQ3Vertex3D vertices[2] = {{{0, 0, 0}, nullptr}, {{1, 0, 0}, nullptr}};
    const TQ3Vertex3D* contours[1] = {vertices};
    int counts[1] = {2};
    EXPECT_EQ(ThrownCode([&] { DGenPolygon p(1, counts, contours, 0.5f); }), kFailPlin);
    EXPECT_EQ(ThrownCode([&] { DGenPolygon p(0, counts, contours, 0.5f); }), kFailPlin);
    int huge[1] = {1 << 30};
    EXPECT_EQ(ThrownCode([&] { DGenPolygon p(1, huge, contours, 0.5f); }), kFailPlin);
    EXPECT_EQ(ThrownCode([&] { DTriGrid g(1 << 16, 1 << 16, vertices, 1.0f); }), kFailPlin);
    DPolyLine single;
    single.AddPoint({0, 0, 0});
    EXPECT_EQ(ThrownCode([&] { single.Finish(false); }), kFailPlin);
    EXPECT_EQ(Q3Memory_CountObjects(), before);
}
