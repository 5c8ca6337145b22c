// Widgets: handle geometry, pick ids of every part, Update from empty
// groups, guides and highlights, and the handle-versus-body rule on a pick.
#include "d3d/DAxesObject.h"
#include "d3d/DGeometryObject.h"
#include "d3d/DGetViewMatrixLoop.h"
#include "d3d/DMarkWidgets.h"
#include "d3d/DPickingLoop.h"
#include "d3d/DPolygon.h"
#include "d3d/DRotateWidget.h"
#include "d3d/DScaleWidget.h"
#include "d3d/DStyleObject.h"
#include "d3d/DSubmitLoop.h"
#include "d3d/DWidgetFactory.h"
#include "tests/d3d/D3DTestSupport.h"
#include "tests/d3d/TestViewer.h"

#include <cmath>
#include <functional>
#include <sstream>
#include <string>

using Widgets = D3DTest;

namespace {

// A text that names every member of a group, recursively: kinds, pick ids,
// colours and coordinates. Two groups with equal signatures hold the same.
void Describe(TQ3Object o, std::ostringstream& out) {
    const TQ3ObjectType leaf = Q3Object_GetLeafType(o);
    out << std::hex << leaf << std::dec << "(";
    if (Q3Object_IsType(o, kQ3ShapeTypeGroup)) {
        auto members = Members(o);
        for (TQ3Object m : members)
            Describe(m, out);
        DisposeAll(members);
    } else if (leaf == kQ3StyleTypePickID) {
        TQ3Uns32 id = 0;
        Q3PickIDStyle_Get(o, &id);
        out << std::hex << id << std::dec;
    } else if (leaf == kQ3SetTypeAttribute) {
        TQ3ColorRGB c{-1, -1, -1};
        Q3AttributeSet_Get(o, kQ3AttributeTypeDiffuseColor, &c);
        out << c.r << "," << c.g << "," << c.b;
    } else if (leaf == kQ3GeometryTypeLine) {
        TQ3LineData d;
        Q3Line_GetData(o, &d);
        for (auto& v : d.vertices)
            out << v.point.x << "," << v.point.y << "," << v.point.z << ";";
        Q3Line_EmptyData(&d);
    } else if (leaf == kQ3GeometryTypePolygon) {
        TQ3PolygonData d;
        Q3Polygon_GetData(o, &d);
        for (TQ3Uns32 i = 0; i < d.numVertices; ++i)
            out << d.vertices[i].point.x << "," << d.vertices[i].point.y << ","
                << d.vertices[i].point.z << ";";
        Q3Polygon_EmptyData(&d);
    } else if (leaf == kQ3GeometryTypePolyLine) {
        TQ3PolyLineData d;
        Q3PolyLine_GetData(o, &d);
        out << d.numVertices;
        Q3PolyLine_EmptyData(&d);
    } else if (leaf == kQ3TransformTypeScale || leaf == kQ3TransformTypeTranslate) {
        TQ3Matrix4x4 m;
        Q3Transform_GetMatrix(o, &m);
        out << m.value[0][0] << "," << m.value[3][0];
    }
    out << ")";
}

std::string Signature(const DGroupObject& group) {
    std::ostringstream out;
    Describe(group.object, out);
    return out.str();
}

// The pick ids of the pick id styles directly in a group or one level down.
std::vector<std::uint32_t> PickIds(TQ3GroupObject group, int depth = 1) {
    std::vector<std::uint32_t> ids;
    auto members = Members(group);
    for (TQ3Object m : members) {
        if (Q3Object_GetLeafType(m) == kQ3StyleTypePickID) {
            TQ3Uns32 id = 0;
            Q3PickIDStyle_Get(m, &id);
            ids.push_back(id);
        } else if (depth > 0 && Q3Object_IsType(m, kQ3ShapeTypeGroup)) {
            auto inner = PickIds(m, depth - 1);
            ids.insert(ids.end(), inner.begin(), inner.end());
        }
    }
    DisposeAll(members);
    return ids;
}

TQ3BoundingBox Box(float x0, float y0, float z0, float x1, float y1, float z1) {
    return {{x0, y0, z0}, {x1, y1, z1}, kQ3False};
}

} // namespace

TEST_F(Widgets, HandleIsThreeFlatDiamondsInRed) {
    DWidgetHandle handle({1, 2, 3}, KVector3D{0.1f, 0.2f, 0.3f}, "ScaleHotBox", 77);
    auto members = Members(handle.object);
    ASSERT_EQ(members.size(), 6u);
    EXPECT_EQ(members[0], handle.attributes.object);
    TQ3ColorRGB red{};
    ASSERT_TRUE(handle.attributes.Get(kQ3AttributeTypeDiffuseColor, &red));
    EXPECT_EQ(red.r, 1.0f);
    EXPECT_EQ(red.g, 0.0f);
    TQ3Uns32 id = 0;
    Q3PickIDStyle_Get(members[1], &id);
    EXPECT_EQ(id, 77u);
    TQ3BackfacingStyle both = kQ3BackfacingStyleRemove;
    Q3BackfacingStyle_Get(members[2], &both);
    EXPECT_EQ(both, kQ3BackfacingStyleBoth);

    // Diamond 1 lies in y = 2 with normal y, 2 in z = 3 with normal z, 3 in
    // x = 1 with normal x; the first vertex of each is the table's.
    const TQ3Point3D firsts[3] = {{1.1f, 2, 3}, {1.1f, 2, 3}, {1, 2, 3.3f}};
    for (int d = 0; d < 3; ++d) {
        TQ3PolygonData data;
        ASSERT_EQ(Q3Polygon_GetData(members[3 + d], &data), kQ3Success);
        ASSERT_EQ(data.numVertices, 4u);
        EXPECT_NEAR(data.vertices[0].point.x, firsts[d].x, 1e-6f);
        EXPECT_NEAR(data.vertices[0].point.z, firsts[d].z, 1e-6f);
        for (TQ3Uns32 i = 0; i < 4; ++i) {
            const TQ3Point3D& p = data.vertices[i].point;
            const float flat = d == 0 ? p.y - 2 : (d == 1 ? p.z - 3 : p.x - 1);
            EXPECT_NEAR(flat, 0.0f, 1e-6f) << "diamond " << d;
            TQ3Vector3D n{};
            ASSERT_EQ(Q3AttributeSet_Get(data.vertices[i].attributeSet, kQ3AttributeTypeNormal, &n),
                      kQ3Success);
            EXPECT_EQ(d == 0 ? n.y : (d == 1 ? n.z : n.x), 1.0f);
        }
        // Opposite corners sit at the half sizes.
        const TQ3Point3D& a = data.vertices[1].point;
        const TQ3Point3D& b = data.vertices[3].point;
        if (d == 0) {
            EXPECT_NEAR(b.z - a.z, 0.6f, 1e-5f);
        } else if (d == 1) {
            EXPECT_NEAR(b.y - a.y, 0.4f, 1e-5f);
        }
        Q3Polygon_EmptyData(&data);
    }
    DisposeAll(members);
}

TEST_F(Widgets, BoxWidgetsCarryTheirPartsInTheirPickIds) {
    DScaleWidget widget(Box(-1, -2, -3, 1, 2, 3), 0x123);
    // Handles 0 to 7 carry pickId + i * 2^24; the wire box pickId + 2^28.
    auto ids = PickIds(widget.object);
    ASSERT_EQ(ids.size(), 9u);
    for (std::uint32_t i = 0; i < 8; ++i)
        EXPECT_EQ(ids[i], 0x80000123u + i * (1u << 24));
    EXPECT_EQ(ids[8], 0x90000123u);
    // The translate widget is the wire box alone.
    DTranslateWidget wire(Box(0, 0, 0, 1, 1, 1), 4);
    EXPECT_EQ(PickIds(wire.object, 0), std::vector<std::uint32_t>{0x90000004u});
}

TEST_F(Widgets, UpdateTwiceIsUpdateOnce) {
    const auto twice = [](const DGroupObject& widget, const std::function<void()>& update) {
        update();
        const std::string once = Signature(widget);
        update();
        EXPECT_EQ(Signature(widget), once);
    };
    DScaleWidget scale(Box(0, 0, 0, 2, 1, 1), 9);
    twice(scale, [&] { scale.Update({2, 1, 1}, {4, 4, 4}); });
    DRotateWidget rotate({{5, 5, 5}, 2, kQ3False}, {1, 1, 1}, 9);
    twice(rotate, [&] { rotate.Update({1, 1, 1}, 3); });
    DLightWidget light(3);
    twice(light, [&] { light.Update({2, 2, 2}); });
}

TEST_F(Widgets, HandleSizeFollowsTheScreenScale) {
    DScaleWidget widget(Box(-1, -1, -1, 1, 1, 1), 0);
    widget.Update({1, 1, 1}, {5, 2, 10});
    auto members = Members(widget.object);
    auto handle = Members(members[1]); // handle 0, at (1, 1, 1)
    TQ3PolygonData d;
    Q3Polygon_GetData(handle[3], &d); // diamond 1: x and z extents
    EXPECT_NEAR(d.vertices[0].point.x - 1, 0.1f, 1e-6f);
    EXPECT_NEAR(d.vertices[3].point.z - 1, 0.05f, 1e-6f);
    Q3Polygon_EmptyData(&d);
    DisposeAll(handle);
    DisposeAll(members);
    // A zero scale from a careless caller gives no infinite handle.
    widget.Update({0, 1, 1}, {0, 1, 1});
    members = Members(widget.object);
    handle = Members(members[1]);
    Q3Polygon_GetData(handle[3], &d);
    EXPECT_TRUE(std::isfinite(d.vertices[0].point.x));
    Q3Polygon_EmptyData(&d);
    DisposeAll(handle);
    DisposeAll(members);
}

TEST_F(Widgets, CueHandleAddsGuidesAtTheNextUpdate) {
    DScaleWidget widget(Box(-1, -1, -1, 1, 1, 1), 0);
    widget.Update({2, 2, 2}, {1, 1, 1});
    const std::uint32_t plain = widget.CountObjects();
    widget.CueHandle({0.5f, 0.25f, 0}, true);
    EXPECT_EQ(widget.CountObjects(), plain);
    widget.Update({2, 2, 2}, {1, 1, 1});
    EXPECT_EQ(widget.CountObjects(), plain + 3);
    auto members = Members(widget.object);
    const size_t n = members.size();
    EXPECT_EQ(Q3Object_GetLeafType(members[n - 3]), kQ3TransformTypeTranslate);
    TQ3Vector3D s{};
    Q3ScaleTransform_Get(members[n - 2], &s);
    EXPECT_FLOAT_EQ(s.x, 0.5f);
    EXPECT_EQ(members[n - 1], widget.guides->object);
    DisposeAll(members);

    // The guides run through the point, their ends at 500 times it.
    auto lines = Members(widget.guides->object);
    ASSERT_EQ(lines.size(), 4u);
    TQ3LineData d;
    Q3Line_GetData(lines[1], &d);
    EXPECT_FLOAT_EQ(d.vertices[0].point.x, 250.0f);
    EXPECT_FLOAT_EQ(d.vertices[1].point.x, -250.0f);
    EXPECT_FLOAT_EQ(d.vertices[0].point.y, 0.25f);
    Q3Line_EmptyData(&d);
    DisposeAll(lines);

    widget.CueHandle({0, 0, 0}, false);
    widget.Update({2, 2, 2}, {1, 1, 1});
    EXPECT_EQ(widget.CountObjects(), plain);
}

TEST_F(Widgets, RotateWidgetRingsIdsAndHighlight) {
    DRotateWidget widget({{5, 5, 5}, 2, kQ3False}, {3, 3, 3}, 0x42);
    EXPECT_FALSE(widget.IsBoxWidget());
    EXPECT_EQ(widget.GetWidgetKind(), 2);
    // The rings stand around the origin, not the sphere's centre.
    EXPECT_EQ(widget.ringPoints[0].x, 2.0f);
    EXPECT_EQ(widget.ringPoints[5].z, -2.0f);
    auto ids = PickIds(widget.object);
    ASSERT_EQ(ids.size(), 9u);
    for (std::uint32_t i = 0; i < 6; ++i)
        EXPECT_EQ(ids[i], 0x80000042u + (i + 1) * (1u << 24));
    for (std::uint32_t k = 1; k <= 3; ++k)
        EXPECT_EQ(ids[5 + k], 0x80000042u + k * (1u << 28));

    // Ring 2 lies in the plane x = 0 at radius 2, closed with 33 points.
    TQ3PolyLineData d;
    auto ring = Members(widget.rings[1].object);
    ASSERT_EQ(ring.size(), 3u);
    ASSERT_EQ(Q3PolyLine_GetData(ring[2], &d), kQ3Success);
    EXPECT_EQ(d.numVertices, 33u);
    for (TQ3Uns32 i = 0; i < d.numVertices; ++i) {
        const TQ3Point3D& p = d.vertices[i].point;
        EXPECT_EQ(p.x, 0.0f);
        EXPECT_NEAR(std::hypot(p.y, p.z), 2.0f, 1e-5f);
    }
    Q3PolyLine_EmptyData(&d);
    DisposeAll(ring);

    const std::string before = Signature(widget);
    widget.HighlightRing(2, true);
    TQ3ColorRGB c{};
    widget.rings[1].attributes.Get(kQ3AttributeTypeDiffuseColor, &c);
    EXPECT_EQ(c.r, 1.0f);
    EXPECT_EQ(c.g, 0.0f);
    EXPECT_EQ(c.b, 1.0f);
    EXPECT_EQ(PickIds(widget.object), ids);
    widget.HighlightRing(2, false);
    widget.HighlightRing(0, true); // no such ring
    widget.HighlightRing(4, true);
    EXPECT_EQ(Signature(widget), before);
}

TEST_F(Widgets, AxesArrowsAndTheirTags) {
    DAxesObject axes({1, 0, 0}, {2, 4, 8}, "CentroidAxes");
    auto members = Members(axes.object);
    ASSERT_EQ(members.size(), 9u);
    // The Y arrow: a shaft from the origin to (1, 4, 0) and its first head
    // T, T - (0.1a, 0.25b, 0), T - (-0.1a, 0.25b, 0).
    TQ3PolyLineData shaft;
    Q3PolyLine_GetData(members[3], &shaft);
    EXPECT_EQ(shaft.vertices[1].point.y, 4.0f);
    Q3PolyLine_EmptyData(&shaft);
    TQ3TriangleData head;
    Q3Triangle_GetData(members[4], &head);
    EXPECT_FLOAT_EQ(head.vertices[1].point.x, 1 - 0.2f);
    EXPECT_FLOAT_EQ(head.vertices[1].point.y, 3.0f);
    EXPECT_FLOAT_EQ(head.vertices[2].point.x, 1 + 0.2f);
    Q3Triangle_EmptyData(&head);
    std::string text;
    std::int32_t number = -1;
    for (TQ3Object m : members) {
        EXPECT_TRUE(DGeometryObject::GetTag(m, text, number));
        EXPECT_EQ(text, "CentroidAxes");
        EXPECT_EQ(number, 0);
    }
    DisposeAll(members);

    DAxesObject plain({0, 0, 0}, {1, 1, 1});
    members = Members(plain.object);
    EXPECT_FALSE(DGeometryObject::GetTag(members[0], text, number));
    DisposeAll(members);
}

TEST_F(Widgets, OrbitRingsAreTaggedForTheCameraTools) {
    DOrbitWidget orbit(0);
    EXPECT_EQ(orbit.GetRing(0), nullptr);
    EXPECT_EQ(orbit.GetRing(4), nullptr);
    ASSERT_NE(orbit.GetRing(3), nullptr);
    auto ring = Members(orbit.GetRing(3)->object);
    std::string text;
    std::int32_t n = 0;
    ASSERT_EQ(ring.size(), 2u);
    EXPECT_TRUE(DGeometryObject::GetTag(ring[1], text, n));
    EXPECT_EQ(text, "OrbitHotBox");
    EXPECT_EQ(n, 3);
    DisposeAll(ring);
}

TEST_F(Widgets, FactoryMakesEachTemplateOnce) {
    DWidgetFactory& factory = TheWidgetFactory();
    EXPECT_EQ(DWidgetFactory::Instance(), &factory);
    EXPECT_EQ(factory.Get(0), nullptr);
    EXPECT_EQ(factory.Get(7), nullptr);
    DWidget* scale = factory.Get(1);
    ASSERT_NE(scale, nullptr);
    EXPECT_EQ(factory.Get(1), scale);
    EXPECT_EQ(scale->GetWidgetKind(), 1);
    factory.Clear();
}

namespace {

class WidgetPicker : public DPickingLoop {
  public:
    bool WantsHit(DHitData& hit) override {
        accepted = hit.pickId;
        return true;
    }
    void HandleHit(DHitData& first) override { nearest = first.pickId; }
    void EndHits() override { hits = GetHitCount(); }
    std::uint32_t accepted = 0, hits = 0, nearest = 0;
};

} // namespace

TEST_F(Widgets, ABodyBehindAHandleWinsOnARealPick) {
    // A box body of pick id 6 with its scale widget, seen from the front.
    TestViewer view(96, 96);
    DDisplayGroup model;
    DPickIDStyle bodyId(6);
    model.AddObject(bodyId);
    TQ3Point3D face[4] = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    DGenPolygon body(4, face, nullptr);
    DReference blue = MakeColorSet(0.2f, 0.3f, 0.9f);
    Q3Geometry_SetAttributeSet(body.object, blue.get());
    model.AddObject(body);
    DScaleWidget widget(Box(-1, -1, -0.5f, 1, 1, 0.5f), 6);
    widget.Update({1, 1, 1}, {1, 1, 1});
    model.AddObject(widget);
    view.scene.AddObject(model);

    DSubmitDraw draw;
    draw.Run(&view);
    view.Save("d3d_scale_widget.png");

    // Project corner 3, (1, -1, 0.5), the near lower right, into the window.
    DGetViewMatrixLoop matrices;
    matrices.Compute(&view);
    TQ3Matrix4x4 a, b;
    Q3Matrix4x4_Multiply(&matrices.worldToView, &matrices.viewToFrustum, &a);
    Q3Matrix4x4_Multiply(&a, &matrices.frustumToWindow, &b);
    auto windowOf = [&](TQ3Point3D p) {
        TQ3Point3D w;
        Q3Point3D_Transform(&p, &b, &w);
        return w;
    };
    WidgetPicker picker;
    picker.SetExtViewer(&view);
    // Just inside corner 3 the handle (a diamond of half size 0.5) lies over
    // the body, whose face is farther off: both are hit, the body wins.
    TQ3Point3D inside = windowOf({0.8f, -0.8f, 0.5f});
    picker.PickAt(MouseEvent{inside.x, inside.y});
    ASSERT_TRUE(picker.hit);
    EXPECT_GE(picker.hits, 2u);
    // The nearest hit of all was a part of the widget, handed to HandleHit.
    EXPECT_NE(picker.nearest & DPickingLoop::kPartMask, 0u);
    EXPECT_EQ(picker.accepted, 6u);
    // Just outside the body the handle alone is hit: corner 3's id.
    TQ3Point3D outside = windowOf({1.2f, -1.0f, 0.5f});
    picker.PickAt(MouseEvent{outside.x, outside.y});
    ASSERT_TRUE(picker.hit);
    EXPECT_EQ(picker.accepted, 0x80000006u + 3u * (1u << 24));
    EXPECT_EQ(picker.accepted & DPickingLoop::kPartMask, 0x83000000u);
}

TEST_F(Widgets, HighlightedRingIsDrawnMagenta) {
    TestViewer view(96, 96);
    view.camera->SetPlacement({3, 4, 5}, {0, 0, 0}, {0, 1, 0});
    DRotateWidget widget({{0, 0, 0}, 1.5f, kQ3False}, {1, 1, 1}, 1);
    widget.Update({1, 1, 1}, 4);
    widget.HighlightRing(1, true);
    view.scene.AddObject(widget);
    DSubmitDraw draw;
    draw.Run(&view);
    view.Save("d3d_rotate_widget.png");
    int magenta = 0, grey = 0;
    for (std::uint32_t p : view.pixels) {
        const int r = p >> 16 & 0xFF, g = p >> 8 & 0xFF, b = p & 0xFF;
        magenta += r > 100 && b > 100 && g < 60;
        grey += r > 60 && r == g && g == b;
    }
    EXPECT_GT(magenta, 30);
    EXPECT_GT(grey, 30);
}
