// Whole gestures through the view's tool handler, with mouse events as the
// window sends them, on a real view with its text and lights.
#include "SceneTestSupport.h"
#include "d3d/DGeometryObject.h"
#include "foundation/Messages.h"
#include "resources/Strings.h"
#include "scene/SceneAlerts.h"
#include "scene/VZarbesoView.h"
#include "text/FontList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {
std::vector<int> gAlerts;
struct Tools : ::testing::Test {
    static void SetUpTestSuite() { BuildFontList(); }
    void SetUp() override {
        gAlerts.clear();
        SetSceneAlert([](int id) { gAlerts.push_back(id); });
        view.AddListener(&heard);
    }
    void TearDown() override {
        SetSceneAlert(nullptr);
        SetScenePickColor(nullptr);
    }
    void Gesture(std::vector<QPoint> points, std::uint16_t modifiers = 0) {
        ::Gesture(view, points, modifiers);
    }
    VCLight* LightAt(const KVector3D& where) {
        VCLight* light = scene.AddLight(&view);
        light->Translate(where);
        return light;
    }
    KVector3D PositionOf(const K3DObject& object) {
        KVector3D p;
        object.GetPosition(p);
        p.w = 1;
        return p;
    }
    float ViewDepthOf(const KVector3D& p) {
        VCViewMatrix m;
        m.Compute(&view);
        KVector3D v;
        m.WorldToView(p, v);
        return v.z;
    }

    VC3DSystem system;
    VZarbesoView view{400, 300};
    VZarbesoSceneManager& scene = *view.GetSceneManager();
    Heard heard;
};
} // namespace

TEST_F(Tools, AMovedLightFollowsThePointerInTheScreensPlane) {
    scene.ScaleLights(3);
    VCLight* light = LightAt({1, 0.5f, 0, 0});
    ASSERT_TRUE(view.SetTool(kToolMove));
    const QPoint at = WindowPointOf(view, PositionOf(*light));
    const float depth = ViewDepthOf(PositionOf(*light));
    Gesture({at, at + QPoint(15, -5), at + QPoint(40, -20)});
    // The point hit on the front of the icon follows the pointer; the
    // centre behind it moves a few per cent less on the screen.
    EXPECT_LT(Distance(WindowPointOf(view, PositionOf(*light)), at + QPoint(40, -20)), 3.0f);
    EXPECT_NEAR(ViewDepthOf(PositionOf(*light)), depth, 1e-3) << "the light keeps its depth";
    ASSERT_NE(scene.GetSelection()->GetSingle(), nullptr);
    EXPECT_EQ(scene.GetSelection()->GetSingle()->GetWidget()->GetWidgetKind(), kTranslateWidget);

    // Ctrl: along the view direction only; dragging down brings it nearer.
    const QPoint now = WindowPointOf(view, PositionOf(*light));
    // (The first move with a key held anchors the constrained move.)
    Gesture({now, now, now + QPoint(0, 10), now + QPoint(3, 20)}, kModCtrl);
    EXPECT_LT(Distance(WindowPointOf(view, PositionOf(*light)), now), 1.5f);
    EXPECT_GT(ViewDepthOf(PositionOf(*light)), depth + 1.0f);

    // Shift: along the screen axis the step follows more.
    const QPoint then = WindowPointOf(view, PositionOf(*light));
    Gesture({then, then, then + QPoint(20, 3), then + QPoint(40, 6)}, kModShift);
    const QPoint moved = WindowPointOf(view, PositionOf(*light));
    EXPECT_NEAR(moved.x(), then.x() + 40, 3);
    EXPECT_NEAR(moved.y(), then.y(), 1.0);

    // A press in empty space clears the selection, and its drag moves nothing.
    const KVector3D kept = PositionOf(*light);
    Gesture({{5, 5}, {60, 60}});
    EXPECT_EQ(scene.GetSelection()->GetCount(), 0u);
    EXPECT_FLOAT_EQ(PositionOf(*light).x, kept.x);
}

TEST_F(Tools, ADoubleClickOnALightEditsItsColour) {
    scene.ScaleLights(3);
    VCLight* light = LightAt({0, 1, 0, 0});
    view.SetTool(kToolMove);
    const QPoint at = WindowPointOf(view, PositionOf(*light));
    SetScenePickColor([](const char* prompt, std::uint16_t rgb[3]) {
        EXPECT_STREQ(prompt, " Select light color:");
        EXPECT_EQ(rgb[1], 65535);
        rgb[1] = rgb[2] = 0;
        return true;
    });
    view.SetClickCount(1);
    view.MouseDown(X(at), Y(at));
    view.MouseUp(X(at), Y(at));
    view.SetClickCount(2);
    view.MouseDown(X(at), Y(at)); // no release follows a double click
    float r, g, b;
    light->GetColor(r, g, b);
    EXPECT_FLOAT_EQ(r, 1.0f);
    EXPECT_FLOAT_EQ(g, 0.0f);
}

TEST_F(Tools, TheLightToolPlacesALightUnderThePointerUntilTheLimit) {
    view.SetTool(kToolLight);
    const QPoint at{250, 100};
    Gesture({at});
    ASSERT_EQ(scene.GetLightCount(), 1u);
    EXPECT_LT(Distance(WindowPointOf(view, PositionOf(*scene.GetLight(1))), at), 1.5f);
    // 70 per cent of the way to the point of interest, 10 away.
    EXPECT_NEAR(ViewDepthOf(PositionOf(*scene.GetLight(1))), -7.0f, 1e-3);
    EXPECT_EQ(heard.Count(kMsgLightPlaced), 1);
    for (int i = 0; i < 5; ++i)
        Gesture({{static_cast<int>(50 + 40 * i), 200}});
    EXPECT_EQ(scene.GetLightCount(), 5u);
    EXPECT_EQ(gAlerts, std::vector<int>{plumet::kStrLightLimit});
    EXPECT_EQ(heard.Count(kMsgLightPlaced), 6) << "the tool ends even when the light was refused";
}

TEST_F(Tools, CameraToolsTurnMoveAndRollTheSceneNotTheCamera) {
    view.SetStandardView(VZarbesoView::kFront, 0, false);
    const TQ3CameraData camera = view.camera->GetData();
    TQ3Matrix4x4 orbit;
    // A horizontal drag of half the height turns a quarter about y.
    view.SetTool(kToolOrbit);
    Gesture({{100, 150}, {175, 150}, {250, 150}});
    view.GetAll(nullptr, &orbit, nullptr);
    const KVector3D x = TransformVector({1, 0, 0, 0}, orbit);
    EXPECT_NEAR(x.z, -1.0f, 1e-5);
    EXPECT_NEAR(x.x, 0.0f, 1e-5);
    // A vertical drag of 100 pixels on a width of 400 turns pi / 4 about x.
    view.ResetAll();
    Gesture({{200, 100}, {200, 200}});
    view.GetAll(nullptr, &orbit, nullptr);
    EXPECT_NEAR(std::atan2(orbit.value[1][2], orbit.value[1][1]), 3.1415927f / 4, 1e-5);
    // A roll to the left across the whole width is half a turn about z.
    view.ResetAll();
    view.SetTool(kToolRoll);
    Gesture({{400, 150}, {200, 150}, {0, 150}});
    view.GetAll(nullptr, &orbit, nullptr);
    EXPECT_NEAR(orbit.value[0][0], -1.0f, 1e-5);
    // The pan: the point of interest follows the pointer.
    view.ResetAll();
    view.SetTool(kToolPan);
    Gesture({{200, 150}, {230, 140}, {260, 110}});
    EXPECT_LT(Distance(WindowPointOf(view, {0, 0, 0, 1}), {260, 110}), 1.0f);
    // The truck: up brings the scene nearer.
    view.SetTool(kToolTruck);
    Gesture({{200, 150}, {200, 100}});
    EXPECT_GT(ViewDepthOf({0, 0, 0, 1}), -9.0f);
    EXPECT_EQ(std::memcmp(&view.camera->GetData(), &camera, sizeof camera), 0)
        << "the camera itself stays";
    EXPECT_GT(heard.Count(kMsgViewMatrixChanged), 5);
}

TEST_F(Tools, TheTruckWithCtrlWidensTheAngleWithinItsLimits) {
    view.SetTool(kToolTruck);
    view.SetFieldOfView(60, true, false);
    const float before = view.GetFieldOfView();
    Gesture({{200, 100}, {200, 110}}, kModCtrl);
    EXPECT_NEAR(view.GetFieldOfView(), before + 5.0f, 1e-3) << "2 pixels down widen by a degree";
    heard.messages.clear();
    Gesture({{200, 0}, {200, 290}}, kModCtrl);
    EXPECT_NEAR(view.GetFieldOfView(), 175.0f, 1e-3);
    Gesture({{200, 290}, {200, 0}, {200, -300}}, kModCtrl);
    EXPECT_NEAR(view.GetFieldOfView(), 25.0f, 1e-3);
    EXPECT_GE(heard.Count(kMsgFieldOfViewChanged), 3) << "the angle is told even at its limit";
}

TEST_F(Tools, ProtocolChangesOfToolAndKeys) {
    struct Counting : KManipulator {
        void Press(const MouseEvent& e) override {
            ++presses;
            pressKeys = e.modifiers;
        }
        bool Activate(WView*) override { return ++activations, true; }
        bool Deactivate(WView*) override { return ++deactivations, true; }
        void DoRelease(const MouseEvent&, bool&) override { ++releases; }
        int presses = 0, activations = 0, deactivations = 0, releases = 0;
        std::uint16_t pressKeys = 0;
    };
    auto* a = new Counting;
    auto* b = new Counting;
    KTool toolA{std::unique_ptr<KManipulator>(a)}, toolB{std::unique_ptr<KManipulator>(b)};
    view.SetTool(&toolA);
    EXPECT_TRUE(view.SetTool(&toolA));
    EXPECT_EQ(a->activations, 1) << "the same tool is neither deactivated nor activated";
    EXPECT_EQ(a->deactivations, 0);
    view.SetModifier(kModCtrl, std::int16_t(0x8000));
    view.MouseDown(10, 10);
    EXPECT_EQ(a->pressKeys, kModCtrl) << "a key held before the press shows in it";
    view.SetTool(&toolB); // in the middle of the drag
    EXPECT_EQ(a->deactivations, 1);
    view.MouseUp(10, 10);
    EXPECT_EQ(a->releases, 0);
    EXPECT_EQ(b->releases, 0) << "a tool that never had a press ignores the release";
    view.ResetModifiers();
    view.MouseDown(10, 10);
    EXPECT_EQ(b->pressKeys, 0) << "a key released outside the window does not stick";
    view.SetTool(kToolOrbit);
}

TEST_F(Tools, TextToolsDragTheLayoutWithHollowLettersUntilTheRelease) {
    view.SetupText("Lumerra 3D");
    view.SetLayout(TextLayoutValue::kSlide, 50, true, true);
    view.SetTool(kToolMoveText);
    view.MouseDown(100, 150);
    view.MouseMove(120, 150);
    EXPECT_TRUE(view.GetDragOutline());
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kSlide), 52.5f, 1e-4) << "0.125 per pixel";
    // Ctrl in the middle: no jump, then the spacing moves.
    view.SetModifier(kModCtrl, std::int16_t(0x8000));
    view.MouseMove(120, 150);
    view.MouseMove(140, 150);
    view.MouseUp(140, 150);
    EXPECT_FALSE(view.GetDragOutline());
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kSlide), 52.5f, 1e-4);
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kSpacing), 6.25f, 1e-3);
    EXPECT_GT(heard.Count(kMsgTextPositionChanged), 0);

    const float width = view.GetLayout(TextLayoutValue::kWidth);
    const float height = view.GetLayout(TextLayoutValue::kHeight);
    view.SetTool(kToolScaleText);
    Gesture({{100, 150}, {116, 142}}); // right 16, up 8
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kWidth), width + 10, 1e-3);
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kHeight), height + 5, 1e-3);
    Gesture({{100, 150}, {116, 146}}, kModShift); // the larger, 16, for both
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kWidth), width + 20, 1e-3);
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kHeight), height + 15, 1e-3);

    view.SetTool(kToolRotateText);
    Gesture({{100, 150}, {200, 151}}); // almost level: rotation only
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kRotate), 125.0f, 1e-3);
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kRevolve), 0.0f, 1e-3);
    Gesture({{100, 150}, {100, 170}}); // down raises the revolve
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kRevolve), 25.0f, 1e-3);

    view.SetTool(kToolDepthText);
    const float deep = view.GetLayout(TextLayoutValue::kDepth);
    Gesture({{100, 150}, {100, 142}});
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kDepth), deep + 1, 1e-3);
    EXPECT_FALSE(view.GetDragOutline());
}

TEST_F(Tools, WidgetToolsScaleByACornerAndTurnAboutARing) {
    DBoxGeometry box(1, 1, 1);
    VZarbesoModel* model = scene.NewTextModelFromGeometry(box);
    model->CenterOnBounds(&view);
    view.SetStandardView(VZarbesoView::kFront, 0, false);
    VCSelection& selection = *scene.GetSelection();
    selection.Select(model, kScaleWidget, false);
    selection.GetSingle()->SetWidget(kScaleWidget);

    // The handle of corner 0, the box's maximum, where it stands out of the
    // box (a body under the pointer would win), dragged outwards.
    view.SetTool(kToolScaleObject);
    const QPoint corner = WindowPointOf(view, {1.12f, 1.12f, 1, 1});
    Gesture({corner, corner + QPoint(6, -6), corner + QPoint(12, -12)});
    KVector3D scales;
    model->GetAxisScales(scales);
    EXPECT_GT(scales.x, 1.1f);
    EXPECT_GT(scales.y, 1.1f);

    // Ring 1 holds the turn about z: the z axis stays where it was.
    view.SetTool(kToolRotateObject);
    TQ3BoundingSphere sphere; // as the widget was made over it
    model->GetBoundingSphere(sphere);
    // A point of ring 1 between its handles and clear of the box; the rings
    // stand about the centre.
    const TQ3Point3D& c = sphere.origin;
    const float r = sphere.radius;
    const QPoint ring = WindowPointOf(view, {c.x + r * 0.38268f, c.y + r * 0.92388f, c.z, 1});
    Gesture({ring, ring + QPoint(10, 2), ring + QPoint(20, 6)});
    TQ3Matrix4x4 rotation;
    model->GetRotationMatrix(rotation);
    EXPECT_NEAR(rotation.value[2][2], 1.0f, 1e-4);
    EXPECT_LT(rotation.value[0][0], 0.999f) << "it turned";
}

TEST_F(Tools, WithoutAViewMatrixEveryGestureLeavesTheSceneAlone) {
    view.SetupText("Plumet");
    scene.ScaleLights(3);
    VCLight* light = LightAt({1, 0.5f, 0, 0});
    const KVector3D where = PositionOf(*light);
    const QPoint at = WindowPointOf(view, where);
    // A system that offers neither a picker nor a view matrix stands in
    // for the real one while it lives.
    struct Bare : K3DSystem {
        K3DPicker* GetPicker() override { return nullptr; }
        K3DViewMatrix* GetViewMatrix() override { return nullptr; }
    } bare;
    for (int tool = 0; tool < kToolCount; ++tool) {
        ASSERT_TRUE(view.SetTool(tool));
        Gesture({at, at + QPoint(15, -5), at + QPoint(40, -20)});
        EXPECT_LT((PositionOf(*light) - where).Length(), 1e-5f) << "tool " << tool;
    }
}
