// Three coloured point lights, drawn by the interactive renderer and by the
// final renderer: the lit sides face the lights, the icons show only in
// the interactive picture, and a camera turn carries the lights with the
// scene.
#include "scene/K3DSystem.h"
#include "tests/scene/SceneTestSupport.h"
#include "text/FontList.h"
#include "ui/VZarbesoDocument.h"

#include <gtest/gtest.h>

namespace {
struct Rgb {
    double r = 0, g = 0, b = 0;
    int n = 0;
    // How much redder than green.
    double Red() const { return r - g; }
};

struct LightRender : ::testing::Test {
    void SetUp() override {
        doc.ApplyDefaults();
        view.GetSceneManager()->SetGridVisible(false);
        view.GetPathModel()->SetDrawn(false);
        // Wide letters whose faces outweigh their sides.
        ASSERT_TRUE(view.SetFont(FindFontListPosition("DejaVu Sans Bold")));
        // White letters show the colour of the light they face.
        view.SetFaceColor(0xFFFF, 0xFFFF, 0xFFFF);
        view.SetSideColor(0xC000, 0xC000, 0xC000);
        Add({-6, 1, 4, 0}, 0.8f, 0, 0);
        Add({6, 1, 4, 0}, 0, 0.8f, 0);
        blue = Add({0, 2, 3, 0}, 0, 0, 0.8f);
        view.GetSceneManager()->SetAmbientBrightness(0.1f);
    }
    VCLight* Add(const KVector3D& where, float r, float g, float b) {
        VCLight* light = view.GetSceneManager()->AddLight(&view);
        light->Translate(where);
        light->SetColor(r, g, b);
        return light;
    }
    // The mean colour of the covered pixels of a band of columns.
    Rgb Band(int from, int to) const {
        Rgb sum;
        for (int y = 0; y < view.GetFrame().bottom; ++y)
            for (int x = from; x < to; ++x) {
                const std::uint32_t p = view.frontWorld->Pixel32(x, y);
                if ((p >> 24) < 200) continue;
                sum.r += (p >> 16) & 0xFF;
                sum.g += (p >> 8) & 0xFF;
                sum.b += p & 0xFF;
                ++sum.n;
            }
        if (sum.n) sum.r /= sum.n, sum.g /= sum.n, sum.b /= sum.n;
        return sum;
    }
    VC3DSystem system;
    VZarbesoDocument doc{false};
    VZarbesoView& view = *doc.GetView();
    VCLight* blue = nullptr;
};
} // namespace

TEST_F(LightRender, EachRendererLightsTheSidesThatFaceTheLights) {
    const int w = view.GetFrame().right;
    KVector3D iconAt;
    blue->GetPosition(iconAt);
    const QPoint icon = WindowPointOf(view, iconAt);
    ASSERT_TRUE(view.GetFrame().right > icon.x() && icon.y() > 0);

    // Faces turned to the red light on the left, to the green one on the
    // right; sides turned the other way take the other colour, so the two
    // ends are compared with each other.
    view.Refresh();
    SaveFrontWorld(view, "lights-three-interactive.png");
    Rgb left = Band(0, w / 3), right = Band(2 * w / 3, w);
    ASSERT_GT(left.n, 100);
    ASSERT_GT(right.n, 100);
    EXPECT_GT(left.Red(), right.Red() + 60);
    const std::uint32_t iconPixel = view.frontWorld->Pixel32(icon.x(), icon.y());
    EXPECT_GT(iconPixel >> 24, 200u) << "the blue light's icon is drawn where it stands";
    EXPECT_GT(iconPixel & 0xFF, (iconPixel >> 16) & 0xFF);

    doc.RenderScene(true);
    SaveFrontWorld(view, "lights-three-final.png");
    left = Band(0, w / 3);
    right = Band(2 * w / 3, w);
    EXPECT_GT(left.Red(), right.Red() + 60);
    EXPECT_EQ(view.frontWorld->Pixel32(icon.x(), icon.y()) >> 24, 0u)
        << "the final picture has no icons";
    EXPECT_TRUE(view.GetSceneManager()->GetLightsVisible()) << "and the icons come back";
}

TEST_F(LightRender, AfterAHalfTurnTheLightsShineFromWhereTheyStandInTheScene) {
    const int w = view.GetFrame().right;
    view.Refresh();
    const Rgb front = Band(0, w);
    // Seen from behind, the letters turn their backs to the eye and the
    // lights stay in front of them, so little light reaches what is seen.
    const TQ3Matrix4x4 half = MatrixFromRotation(0, 3.1415927f, 0);
    view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &half, true);
    SaveFrontWorld(view, "lights-three-turned.png");
    const Rgb back = Band(0, w);
    ASSERT_GT(back.n, 100);
    EXPECT_LT(back.r + back.g + back.b, (front.r + front.g + front.b) / 2);
}
