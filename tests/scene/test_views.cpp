// The view: its camera transforms, placements, field of view and frames.
#include "SceneTestSupport.h"
#include "foundation/Messages.h"
#include "scene/K3DSystem.h"
#include "scene/VZarbesoView.h"
#include "text/FontList.h"
#include "text/VAlignedText.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {
// Counts frames: a view whose draw passes are recorded.
class CountingView : public VZarbesoView {
  public:
    void BeginFrame() override {
        ++frames;
        if (nest) Render(); // a paint from inside a frame
    }
    int frames = 0;
    bool nest = false;
};

struct Views : ::testing::Test {
    VC3DSystem system;
};

float Angle(const TQ3Matrix4x4& m) {
    return std::atan2(m.value[1][2], m.value[1][1]);
}
} // namespace

TEST_F(Views, NewViewScalesByThreeAndHomeResetsIt) {
    VZarbesoView view;
    TQ3Matrix4x4 scale, orbit, pan;
    view.GetAll(&scale, &orbit, &pan);
    EXPECT_FLOAT_EQ(scale.value[0][0], 3.0f);
    EXPECT_FLOAT_EQ(scale.value[2][2], 3.0f);
    view.SetStandardView(VZarbesoView::kHome, 0, false);
    view.GetAll(&scale, &orbit, &pan);
    EXPECT_FLOAT_EQ(scale.value[1][1], 1.0f);
    EXPECT_NEAR(Angle(orbit), 0.17453292f, 1e-6);
    EXPECT_NEAR(view.camera->fieldOfView * 180 / 3.1415927f, 45.0f, 1e-3);
    EXPECT_FLOAT_EQ(pan.value[3][2], 0.0f);
    view.SetStandardView(VZarbesoView::kBottom, 0, false);
    view.GetAll(&scale, &orbit, &pan);
    EXPECT_FLOAT_EQ(pan.value[3][2], 1.0f);
    EXPECT_NEAR(Angle(orbit), -1.5707964f, 1e-6);
}

TEST_F(Views, FieldOfViewIsHeldBetween25And175) {
    VZarbesoView square(300, 300);
    square.SetFieldOfView(10, true, false);
    EXPECT_NEAR(square.GetFieldOfView(), 25.0f, 1e-3);
    square.SetFieldOfView(200, true, false);
    EXPECT_NEAR(square.GetFieldOfView(), 175.0f, 1e-3);
    // Relative: half the pixel delta comes off the present angle.
    square.SetFieldOfView(60, true, false);
    square.SetFieldOfView(20, false, false);
    EXPECT_NEAR(square.GetFieldOfView(), 50.0f, 1e-3);
    // On a wide view the angle spans the longer side.
    VZarbesoView wide(400, 200);
    Heard heard;
    wide.AddListener(&heard);
    wide.SetFieldOfView(40, true, true);
    EXPECT_NEAR(wide.GetFieldOfView(), 80.0f, 1e-3);
    EXPECT_EQ(heard.messages, std::vector<std::int32_t>{kMsgFieldOfViewChanged});
}

TEST_F(Views, CustomViewSlotsSaveRestoreAndDelete) {
    VZarbesoView view;
    const KVector3D twice{2, 2, 2, 0};
    view.SaveCustomView(0); // scale 3
    view.ApplyTo(K3DViewAdorner::kScale, K3DViewAdorner::kApply, &twice, false);
    view.SaveCustomView(1); // scale 6
    view.SaveCustomView(4); // no such slot: nothing
    view.ResetAll();
    view.SetStandardView(VZarbesoView::kCustom, 1, true);
    TQ3Matrix4x4 scale;
    view.GetAll(&scale, nullptr, nullptr);
    EXPECT_FLOAT_EQ(scale.value[0][0], 6.0f);
    view.DeleteCustomView(0); // slot 1 moves up to 0, the last becomes identity
    view.SetStandardView(VZarbesoView::kCustom, 0, false);
    view.GetAll(&scale, nullptr, nullptr);
    EXPECT_FLOAT_EQ(scale.value[0][0], 6.0f);
    view.SetStandardView(VZarbesoView::kCustom, 3, false);
    view.GetAll(&scale, nullptr, nullptr);
    EXPECT_FLOAT_EQ(scale.value[0][0], 1.0f);
}

TEST_F(Views, AdornerChangesBroadcastTheTotalWithoutDrawingUnlessAskedAndFramesDoNotNest) {
    CountingView view;
    Heard heard;
    view.AddListener(&heard);
    const int before = view.frames;
    view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kReset, nullptr, false);
    EXPECT_EQ(heard.messages, std::vector<std::int32_t>{kMsgViewMatrixChanged});
    EXPECT_EQ(view.frames, before);
    const KVector3D half{0.5f, 0.5f, 0.5f, 0};
    view.ApplyTo(K3DViewAdorner::kScale, K3DViewAdorner::kApply, &half, true);
    EXPECT_EQ(view.frames, before + 1);
    TQ3Matrix4x4 total;
    view.GetTotal(total);
    EXPECT_FLOAT_EQ(total.value[0][0], 1.5f); // 3 x 0.5
    // A paint from inside a frame draws nothing more.
    view.nest = true;
    view.Refresh();
    EXPECT_EQ(view.frames, before + 2);
    EXPECT_FALSE(view.drawing);
}

TEST_F(Views, OffscreenFramesLandInTheFrontWorldWithCoverageAsAlpha) {
    BuildFontList();
    VZarbesoView view(200, 120);
    view.SetupText("Lumerra 3D");
    view.SetStandardView(VZarbesoView::kHome, 0, false);
    view.GetSceneManager()->SetGridVisible(false);
    view.GetPathModel()->SetDrawn(false);
    view.SetOffscreen(true);
    view.Refresh();
    int covered = 0, premultipliedOk = 0;
    for (int y = 0; y < 120; ++y)
        for (int x = 0; x < 200; ++x) {
            const uint32_t p = view.frontWorld->Pixel32(x, y);
            const uint32_t a = p >> 24;
            if (a) ++covered;
            if (((p >> 16) & 0xFF) <= a && ((p >> 8) & 0xFF) <= a && (p & 0xFF) <= a)
                ++premultipliedOk;
        }
    EXPECT_GT(covered, 200 * 120 / 20);
    EXPECT_LT(covered, 200 * 120 / 2);
    EXPECT_EQ(premultipliedOk, 200 * 120) << "colours never exceed their alpha";
    EXPECT_EQ(view.frontWorld->Pixel32(0, 0), 0u) << "the background stays transparent";
}

TEST_F(Views, LayoutAndPathSetBeforeTheTextStayAndOutlinesAreReadOnlyForANewText) {
    BuildFontList();
    VZarbesoView view(200, 120);
    EXPECT_NEAR(view.SetLayout(TextLayoutValue::kSlide, 20, true, true), 20.0f, 1e-5);
    ASSERT_TRUE(view.SetPath(2, 40, 60));
    const VCurve* path = view.GetCurve();
    view.SetupText("Abc");
    EXPECT_EQ(view.GetCurve(), path);
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kSlide), 20.0f, 1e-5);
    const TextCharacter* chars = view.GetTextChars();
    ASSERT_NE(chars, nullptr);
    const std::uint32_t before = view.GetAlignedText()->CountObjects();
    view.SetLayout(TextLayoutValue::kSlide, 30, true, true);
    view.SetFaceColor(1, 2, 3);
    view.SetOpacity(40);
    view.SetPath(2, 45, 60);
    EXPECT_EQ(view.GetTextChars(), chars) << "layout, colour, opacity and path keep the outlines";
    EXPECT_EQ(view.GetAlignedText()->CountObjects(), before) << "but every letter is rebuilt";
    view.SetText("Abcd");
    // the new text's own outlines (the old chain's memory may be reused, so
    // its address tells nothing)
    int letters = 0;
    for (const TextCharacter* c = view.GetTextChars(); c; c = c->next)
        ++letters;
    EXPECT_EQ(letters, 4);
    EXPECT_GT(view.GetAlignedText()->CountObjects(), before);
    EXPECT_NEAR(view.GetLayout(TextLayoutValue::kSlide), 30.0f, 1e-5);
    EXPECT_NEAR(view.SetLayout(TextLayoutValue::kRevolve, 190, false, true), -170.0f, 1e-4);
}

TEST_F(Views, LayoutValuesAreShownAndBroadcastOnceScaled) {
    struct Value {
        TextLayoutValue which;
        float shown;
        std::int32_t message;
    };
    const Value values[] = {
        {TextLayoutValue::kSlide, 30, kMsgTextPositionChanged},
        {TextLayoutValue::kRevolve, -45, kMsgTextRevolveChanged},
        {TextLayoutValue::kRotate, 20, kMsgTextRotationChanged},
        {TextLayoutValue::kTilt, 10, kMsgTextTiltChanged},
        {TextLayoutValue::kWidth, 15, kMsgTextWidthChanged},
        {TextLayoutValue::kHeight, 5, kMsgTextHeightChanged},
        {TextLayoutValue::kSpacing, 25, kMsgTextSpacingChanged},
        {TextLayoutValue::kDepth, 40, kMsgTextDepthChanged},
    };
    BuildFontList();
    VZarbesoView view;
    view.SetupText("A");
    struct Wholes : KListener {
        std::vector<std::pair<std::int32_t, std::int32_t>> heard;
        void HearMessage(std::int32_t message, void* data) override {
            heard.emplace_back(message, *static_cast<std::int32_t*>(data));
        }
    } wholes;
    view.AddListener(&wholes);
    for (const Value& v : values) {
        wholes.heard.clear();
        EXPECT_NEAR(view.SetLayout(v.which, v.shown, false, true), v.shown, 1e-4);
        EXPECT_NEAR(view.GetLayout(v.which), v.shown, 1e-4);
        ASSERT_EQ(wholes.heard.size(), 1u);
        EXPECT_EQ(wholes.heard[0].first, v.message);
        EXPECT_EQ(wholes.heard[0].second, static_cast<std::int32_t>(v.shown));
    }
}

TEST_F(Views, WindowPointsAndScenePointsMeetThroughTheAdorners) {
    VZarbesoView view(300, 300);
    view.SetStandardView(VZarbesoView::kFront, 0, false);
    VCViewMatrix matrix;
    matrix.Compute(&view);
    // The centre of the window looks down the axis at the origin.
    KVector3D origin, direction;
    matrix.GetPickRay(MakeScreenPoint(150, 150), origin, direction);
    EXPECT_NEAR(direction.x, 0.0f, 1e-3);
    EXPECT_NEAR(direction.z, -1.0f, 1e-3);
    // A scene point goes to the view and back.
    const KVector3D p{0.5f, -0.25f, 0.3f, 1};
    KVector3D v, back;
    matrix.WorldToView(p, v);
    matrix.ViewToWorld(v, back);
    EXPECT_NEAR(back.x, p.x, 1e-4);
    EXPECT_NEAR(back.y, p.y, 1e-4);
    EXPECT_NEAR(back.z, p.z, 1e-4);
    // A ray through the sphere meets it in front and behind; one just past
    // its rim is bent onto the rim, where front and back are one point.
    KVector3D front, rear;
    matrix.IntersectSphere(MakeScreenPoint(150, 150), {0, 0, 0, 1}, 1.0f, front, rear);
    EXPECT_NEAR(front.z, 1.0f, 1e-2);
    EXPECT_NEAR(rear.z, -1.0f, 1e-2);
    matrix.IntersectSphere(MakeScreenPoint(185, 150), {0, 0, 0, 1}, 1.0f, front, rear);
    EXPECT_NEAR((front - rear).Length(), 0.0f, 1e-2);
    EXPECT_NEAR(front.Length(), 1.0f, 0.2);
}
