// Selection, widgets and the pick: the id scheme, what replaces what, and
// which of several things under the pointer is taken.
#include "SceneTestSupport.h"
#include "d3d/DGeometryObject.h"
#include "d3d/DScaleWidget.h"
#include "scene/MouseEvent.h"
#include "scene/VZarbesoView.h"

#include <gtest/gtest.h>

namespace {
struct Selection : ::testing::Test {
    void SetUp() override { SetCurrent3DView(&view); }
    VC3DSystem system;
    VZarbesoView view{240, 240};
    VZarbesoSceneManager& scene = *view.GetSceneManager();
    VCSelection& selection = *scene.GetSelection();
};

// A picker that tells how many hits on bodies and on widget parts lay
// under the pointer.
struct CountingPicker : VCPicker {
    void BeginHits() override {
        for (std::uint32_t i = 0; i < GetHitCount(); ++i) {
            DHitData hit;
            GetHit(i, hit);
            ++((hit.pickId & kPartMask) ? parts : bodies);
        }
    }
    void PickAt(VC3DView& view, QPoint at) {
        bodies = parts = 0;
        SetView(&view);
        VCPicker::PickAt(MakeMouseEvent(static_cast<std::int16_t>(at.x()),
                                        static_cast<std::int16_t>(at.y()), 0));
    }
    int bodies = 0, parts = 0;
};
} // namespace

TEST_F(Selection, SelectReplacesExtendsAndTogglesAndWidgetsLeaveWithTheirObject) {
    VCLight* a = scene.AddLight(&view);
    VCLight* b = scene.AddLight(&view);
    const std::uint32_t bare = a->CountObjects();
    selection.Select(a, kTranslateWidget, false);
    DWidget* widget = selection.GetSingle()->GetWidget();
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(a->CountObjects(), bare + 1) << "the widget sits in the light's group";
    selection.Select(a, kTranslateWidget, false);
    EXPECT_EQ(selection.GetCount(), 1u);
    EXPECT_EQ(selection.GetSingle()->GetWidget(), widget) << "selecting again keeps the widget";
    selection.Select(b, kTranslateWidget, false);
    EXPECT_EQ(selection.GetSingle()->GetObject(), b);
    EXPECT_EQ(a->CountObjects(), bare) << "the old widget left the old object";
    selection.Select(a, kTranslateWidget, true);
    EXPECT_EQ(selection.GetCount(), 2u);
    selection.Select(b, kTranslateWidget, true);
    EXPECT_EQ(selection.GetSingle()->GetObject(), a) << "extending with a selected one drops it";
    selection.SetWidgetKind(kScaleWidget);
    EXPECT_EQ(selection.GetSingle()->GetWidget()->GetWidgetKind(), kScaleWidget);
    EXPECT_EQ(a->CountObjects(), bare + 1);
    selection.Select(nullptr, kTranslateWidget, false);
    EXPECT_EQ(selection.GetCount(), 0u);
    EXPECT_EQ(a->CountObjects(), bare);
}

TEST_F(Selection, PickIdsNameTheEntryTheWidgetPartAndTheHandle) {
    DDisplayGroup content;
    scene.NewTextModelFromGroup(content); // id 1
    for (int i = 0; i < 4; ++i)
        scene.AddLight(&view); // ids 2 to 5
    VCLight* five = scene.GetLightByPickId(5);
    ASSERT_NE(five, nullptr);
    selection.Select(five, kTranslateWidget, false);
    EXPECT_EQ(selection.FindByPickId(0x00000005u), nullptr) << "a plain id is no widget";
    auto* entry = static_cast<VCSelectedObject*>(selection.FindByPickId(0x80000005u));
    ASSERT_NE(entry, nullptr);
    std::int16_t part = -1, handle = -1;
    EXPECT_FALSE(entry->GetWidgetPart(&part));
    EXPECT_TRUE(entry->GetHandlePart(&handle));
    EXPECT_EQ(handle, 0);
    ASSERT_EQ(selection.FindByPickId(0xA3000005u), entry);
    EXPECT_TRUE(entry->GetWidgetPart(&part));
    EXPECT_EQ(part, 2);
    EXPECT_TRUE(entry->GetHandlePart(&handle));
    EXPECT_EQ(handle, 3);
}

TEST_F(Selection, DeletingTheSelectionTakesLightsAndLeavesModels) {
    DDisplayGroup content;
    VZarbesoModel* model = scene.NewTextModelFromGroup(content);
    VCLight* light = scene.AddLight(&view);
    selection.Select(model, kTranslateWidget, true);
    selection.Select(light, kTranslateWidget, true);
    EXPECT_EQ(selection.FindObject(model)->GetWidget(), nullptr) << "models have no widget";
    scene.DeleteSelected();
    EXPECT_EQ(scene.GetLightCount(), 0u);
    EXPECT_EQ(selection.GetSingle()->GetObject(), model);
    // A model or light deleted any other way leaves the selection first.
    VCLight* other = scene.AddLight(&view);
    selection.Select(other, kTranslateWidget, true);
    scene.DeleteAllLights();
    scene.RemoveModel(model);
    EXPECT_EQ(selection.GetCount(), 0u);
}

TEST_F(Selection, ABodyUnderAWidgetIsPickedAndAWidgetAloneNamesItsEntry) {
    view.SetStandardView(VZarbesoView::kFront, 0, false);
    // Turned so that the near vertical edge of the light's box runs down
    // the middle of its icon.
    const TQ3Matrix4x4 turn = MatrixFromRotation(0, -0.7853982f, 0);
    view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &turn, false);
    scene.ScaleLights(10); // an icon of its full size, radius 0.5
    VCLight* light = scene.AddLight(&view);
    selection.Select(light, kTranslateWidget, false);
    CountingPicker picker;
    picker.PickAt(view, WindowPointOf(view, {0, 0.2f, 0, 1}));
    EXPECT_GT(picker.bodies, 0) << "the icon";
    EXPECT_GT(picker.parts, 0) << "and the edge in front of it";
    EXPECT_EQ(picker.GetPickedObject(), light);
    EXPECT_EQ(picker.GetPickedSelected(), nullptr);
    // Above the icon only the edge lies under the pointer.
    picker.PickAt(view, WindowPointOf(view, {0.5f, 0.5f, 0.5f, 1}));
    EXPECT_EQ(picker.bodies, 0);
    EXPECT_EQ(picker.GetPickedObject(), nullptr);
    ASSERT_EQ(picker.GetPickedSelected(), selection.GetSingle());
    std::int16_t part = 0;
    EXPECT_TRUE(picker.GetPickedSelected()->GetWidgetPart(&part));
    EXPECT_EQ(part, 1) << "the wire box";
    // Empty space picks nothing.
    picker.PickAt(view, {3, 3});
    EXPECT_EQ(picker.GetPickedObject(), nullptr);
    EXPECT_EQ(picker.GetPickedSelected(), nullptr);
}

TEST_F(Selection, ScaleHandlesKeepTheirSizeOnTheScreenAndTheWidgetsHideForTheFinalPicture) {
    DBoxGeometry box(1, 1, 1);
    VZarbesoModel* model = scene.NewTextModelFromGeometry(box);
    model->CenterOnBounds(&view);
    selection.Select(model, kScaleWidget, false);
    K3DSelectedObject& entry = *selection.GetSingle();
    entry.SetWidget(kScaleWidget);
    auto* widget = dynamic_cast<DScaleWidget*>(entry.GetWidget());
    ASSERT_NE(widget, nullptr);
    const float near = static_cast<VCSelectedObject&>(entry).SizeFactor();
    const KVector3D away{0, 0, -10, 0};
    model->Translate(away);
    view.ApplyTo(K3DViewAdorner::kPan, K3DViewAdorner::kReset, nullptr, false); // 20003
    EXPECT_LT(static_cast<VCSelectedObject&>(entry).SizeFactor(), near / 1.5f);
    scene.SetWidgetsVisible(false);
    EXPECT_FALSE(widget->IsDrawn());
    scene.SetWidgetsVisible(true);
    EXPECT_TRUE(widget->IsDrawn());
}
