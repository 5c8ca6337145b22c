// The data of geometries going in and out: copies, the references held on
// attribute sets, and the per-vertex and per-face attributes reaching the
// renderer of another library.
#include "platform/qd3d/QD3DRendererExtension.h"
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

using namespace q3test;

namespace {

class GeometryData : public LibraryTest {
  protected:
    void SetUp() override {
        LibraryTest::SetUp();
        set = colourSet(1, 0, 0);
    }
    void TearDown() override {
        EXPECT_EQ(Q3Shared_GetReferenceCount(set), 1u) << "a reference to the set was kept";
        Q3Object_Dispose(set);
        LibraryTest::TearDown();
    }
    TQ3AttributeSet set = nullptr;
};

TEST_F(GeometryData, PolyLineCopiesAndReleasesItsSets) {
    TQ3Vertex3D v[3] = {{{0, 0, 0}, set}, {{1, 0, 0}, nullptr}, {{1, 1, 0}, set}};
    TQ3AttributeSet segs[2] = {set, nullptr};
    TQ3PolyLineData d{3, v, segs, set};
    TQ3Object line = Q3PolyLine_New(&d);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 5u); // two vertices, a segment, the line
    v[1].point.x = 99;                              // the object holds its own copy
    TQ3Point3D p{};
    Q3PolyLine_GetVertexPosition(line, 1, &p);
    EXPECT_EQ(p.x, 1);
    EXPECT_EQ(Q3PolyLine_GetVertexPosition(line, 3, &p), kQ3Failure);
    TQ3PolyLineData out{};
    ASSERT_EQ(Q3PolyLine_GetData(line, &out), kQ3Success);
    EXPECT_EQ(out.numVertices, 3u);
    EXPECT_EQ(out.vertices[2].attributeSet, set);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 9u);
    Q3PolyLine_EmptyData(&out);
    EXPECT_EQ(out.vertices, nullptr);
    // new data lets go of the old sets
    TQ3Vertex3D w[2] = {{{0, 0, 0}, nullptr}, {{0, 1, 0}, nullptr}};
    TQ3PolyLineData d2{2, w, nullptr, nullptr};
    ASSERT_EQ(Q3PolyLine_SetData(line, &d2), kQ3Success);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 1u);
    TQ3PolyLineData bad{1, w, nullptr, nullptr};
    EXPECT_EQ(Q3PolyLine_SetData(line, &bad), kQ3Failure);
    Q3Object_Dispose(line);
}

TEST_F(GeometryData, EveryKindGivesItsDataBack) {
    TQ3Vertex3D g[4] = {
        {{0, 0, 0}, set}, {{1, 0, 0}, nullptr}, {{0, 1, 0}, nullptr}, {{1, 1, 0}, nullptr}};
    TQ3AttributeSet facets[2] = {set, nullptr};
    TQ3TriGridData gd{2, 2, g, facets, nullptr};
    TQ3Object grid = Q3TriGrid_New(&gd);
    TQ3TriGridData go{};
    ASSERT_EQ(Q3TriGrid_GetData(grid, &go), kQ3Success);
    EXPECT_EQ(go.numColumns, 2u);
    EXPECT_EQ(go.facetAttributeSet[0], set);
    EXPECT_EQ(go.facetAttributeSet[1], nullptr);
    Q3TriGrid_EmptyData(&go);
    TQ3TriGridData tooSmall{1, 2, g, nullptr, nullptr};
    EXPECT_EQ(Q3TriGrid_SetData(grid, &tooSmall), kQ3Failure);

    TQ3RationalPoint4D pts[2] = {{0, 0, 0, 1}, {2, 0, 0, 2}};
    float knots[4] = {0, 0, 1, 1};
    TQ3NURBCurveData nd{2, 2, pts, knots, set};
    TQ3Object curve = Q3NURBCurve_New(&nd);
    TQ3NURBCurveData no{};
    ASSERT_EQ(Q3NURBCurve_GetData(curve, &no), kQ3Success);
    EXPECT_EQ(no.knots[3], 1);
    EXPECT_EQ(no.controlPoints[1].w, 2);
    Q3NURBCurve_EmptyData(&no);
    TQ3RationalPoint4D cp{};
    Q3NURBCurve_GetControlPoint(curve, 1, &cp);
    EXPECT_EQ(cp.x, 2);
    TQ3RationalPoint4D zeroW{1, 1, 1, 0};
    EXPECT_EQ(Q3NURBCurve_SetControlPoint(curve, 0, &zeroW), kQ3Failure);

    TQ3Uns8 bits[2] = {0xF0, 0x0F};
    TQ3MarkerData md{{1, 1, 1}, -3, -3, {bits, 8, 2, 1, kQ3EndianBig}, set};
    TQ3Object marker = Q3Marker_New(&md);
    bits[0] = 0; // copied
    TQ3MarkerData mo{};
    ASSERT_EQ(Q3Marker_GetData(marker, &mo), kQ3Success);
    EXPECT_EQ(mo.bitmap.image[0], 0xF0);
    EXPECT_EQ(mo.xOffset, -3);
    Q3Marker_EmptyData(&mo);

    TQ3LineData ld{{{{0, 0, 0}, set}, {{1, 1, 1}, nullptr}}, nullptr};
    TQ3Object line = Q3Line_New(&ld);
    TQ3LineData lo{};
    Q3Line_GetData(line, &lo);
    TQ3Point3D q{5, 5, 5};
    lo.vertices[1].point = q;
    ASSERT_EQ(Q3Line_SetData(line, &lo), kQ3Success); // the DLineObject way to move ends
    Q3Line_EmptyData(&lo);
    TQ3Point3D back{};
    Q3Line_GetVertexPosition(line, 1, &back);
    EXPECT_EQ(back.x, 5);

    for (TQ3Object o : {grid, curve, marker, line})
        Q3Object_Dispose(o);
}

// A renderer that keeps the colours of the vertices it is given.
struct Seen {
    std::vector<TQ3XVertex> vertices;
    std::vector<TQ3Uns32> indices;
    std::vector<TQ3Vector3D> faceNormals;
};
Seen* seen = nullptr;

TEST_F(GeometryData, RendererGetsResolvedWorldVertices) {
    TQ3XRendererMethods m{};
    m.newInstance = []() -> void* { return seen = new Seen; };
    m.deleteInstance = [](void* p) { delete static_cast<Seen*>(p); };
    m.submitTriangles = [](void* p, const TQ3XTriangleBatch* b) {
        auto* s = static_cast<Seen*>(p);
        s->vertices.assign(b->vertices, b->vertices + b->numVertices);
        s->indices.assign(b->indices, b->indices + 3 * b->numTriangles);
        s->faceNormals.assign(b->faceNormals, b->faceNormals + b->numTriangles);
        return kQ3Success;
    };
    TQ3ObjectType type = 0;
    TQ3XObjectClass cls = Q3XRendererClass_Register(0, "TestCollector", "Collector", &m, &type);
    ASSERT_NE(cls, nullptr);
    {
        TestView tv(8, 8);
        Q3View_SetRendererByType(tv.view, type);
        // green vertex, red face (the trigrid's facet), blue group colour
        TQ3AttributeSet green = colourSet(0, 1, 0), blue = colourSet(0, 0, 1);
        TQ3Vector3D n{0, 0, 1};
        Q3AttributeSet_Add(green, kQ3AttributeTypeNormal, &n);
        // rows run down the grid, so that its facets face +z
        TQ3Vertex3D g[4] = {
            {{0, 1, 0}, green}, {{1, 1, 0}, nullptr}, {{0, 0, 0}, nullptr}, {{1, 0, 0}, nullptr}};
        TQ3AttributeSet facets[2] = {set, nullptr};
        TQ3TriGridData gd{2, 2, g, facets, nullptr};
        TQ3Object grid = Q3TriGrid_New(&gd);
        TQ3Vector3D up{0, 0, 3};
        TQ3Object move = Q3TranslateTransform_New(&up);
        tv.render([&](TQ3ViewObject v) {
            Q3Object_Submit(blue, v);
            Q3Object_Submit(move, v);
            Q3Object_Submit(grid, v);
        });
        ASSERT_NE(seen, nullptr);
        ASSERT_EQ(seen->indices.size(), 6u);
        // in world coordinates
        for (const TQ3XVertex& v : seen->vertices)
            EXPECT_EQ(v.point.z, 3);
        // facet 0 holds vertex 0 with its own green over the face's red
        bool greenSeen = false, redSeen = false, blueSeen = false;
        for (int k = 0; k < 3; ++k) {
            const TQ3XVertex& v = seen->vertices[seen->indices[k]];
            greenSeen |= v.diffuse.g == 1;
            redSeen |= v.diffuse.r == 1 && v.diffuse.g == 0;
        }
        for (int k = 3; k < 6; ++k)
            blueSeen |= seen->vertices[seen->indices[k]].diffuse.b == 1;
        EXPECT_TRUE(greenSeen && redSeen && blueSeen);
        // counter-clockwise seen from +z
        for (const TQ3Vector3D& fn : seen->faceNormals)
            EXPECT_NEAR(fn.z, 1, 1e-5);
        for (TQ3Object o : {green, blue, grid, move})
            Q3Object_Dispose(o);
    }
    EXPECT_EQ(Q3XObjectHierarchy_UnregisterClass(cls), kQ3Success);
}

} // namespace
