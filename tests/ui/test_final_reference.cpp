// The final render of two letter scenes against pictures recorded before the
// renderer learnt to skip what the scene cannot cover: with the same fixed
// samples the picture must stay the same, word for word. The scenes are the
// default one (in a fixed face, so that a change of the default font does not
// move it) and see-through letters lit by a point light that casts shadows.
#include "d3d/DLightObject.h"
#include "platform/finalrender/LightWorksSL.h"
#include "scene/K3DSystem.h"
#include "text/FontList.h"
#include "ui/VZarbesoDocument.h"

#include <QImage>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {
constexpr int kWidth = 400, kHeight = 250;

// The world the final renderer drew, as words 0xAARRGGBB.
QImage RenderDocument(VZarbesoDocument& document) {
    std::vector<uint8> in(std::size_t(kWidth) * kHeight * 3, 128), out(in.size());
    VZarbesoView& view = *document.GetView();
    view.Resize(kWidth, kHeight, 515, 324, false);
    view.SetHostImage(in.data(), kWidth * 3, out.data(), kWidth * 3, kWidth, kHeight, 3, -1, 0,
                      plugInModeRGBColor);
    view.SetOffscreen(true);
    QRenderer& renderer = *document.GetRenderer();
    DRendererObject* final = renderer.table.Find(renderer.GetFinalType());
    EXPECT_NE(final, nullptr);
    if (final) {
        EXPECT_EQ(Q3LightWorks_SL_SetSamplesPerSide(final->object, 3), kQ3Success);
        EXPECT_EQ(Q3LightWorks_SL_SetAdaptiveSamples(final->object, kQ3False), kQ3Success);
    }
    document.RenderScene(false);
    // Premultiplied words kept as they are: the file holds them exactly.
    QImage picture(kWidth, kHeight, QImage::Format_ARGB32);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            picture.setPixel(x, y, view.frontWorld->Pixel32(x, y));
    return picture;
}

void ExpectSameAsRecorded(const QImage& picture, const std::string& name) {
    picture.save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name));
    const QImage recorded(
        QString::fromStdString(std::string(PLUMET_SOURCE_DIR) + "/tests/ui/reference/" + name));
    ASSERT_FALSE(recorded.isNull()) << name << " is missing";
    const QImage expected = recorded.convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(expected.size(), picture.size());
    int differing = 0, covered = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            differing += expected.pixel(x, y) != picture.pixel(x, y);
            covered += qAlpha(picture.pixel(x, y)) != 0;
        }
    EXPECT_EQ(differing, 0) << name;
    EXPECT_GT(covered, kWidth * kHeight / 20) << name << ": the letters are in the picture";
}

class FinalReference : public ::testing::Test {
  protected:
    void SetUp() override {
        document.ApplyDefaults();
        const std::uint32_t face = FindFontListPosition("DejaVu Sans Bold");
        ASSERT_NE(face, 0u) << "DejaVu Sans Bold is installed";
        document.GetView()->SetFont(face);
    }
    VC3DSystem system;
    VZarbesoDocument document{false};
};
} // namespace

TEST_F(FinalReference, DefaultScene) {
    ExpectSameAsRecorded(RenderDocument(document), "final-default.png");
}

TEST_F(FinalReference, SeeThroughLettersWithShadows) {
    VZarbesoView& view = *document.GetView();
    view.SetOpacity(55);
    view.GetSceneManager()->SetAmbientBrightness(0.35f);
    // low on the left, so that each letter shades the next
    DPointLight light({-30, 3, 4});
    light.SetBrightness(1.0f);
    view.lightGroup.AddObject(light);
    ExpectSameAsRecorded(RenderDocument(document), "final-see-through.png");
    QRenderer& renderer = *document.GetRenderer();
    TQ3LightWorksSLStatistics figures{};
    ASSERT_EQ(Q3LightWorks_SL_GetStatistics(renderer.table.Find(renderer.GetFinalType())->object,
                                            &figures),
              kQ3Success);
    EXPECT_GT(figures.shadowRays, figures.primaryRays / 20) << "the light casts shadows";
}
