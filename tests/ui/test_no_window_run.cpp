// The run without a window, end to end inside the filter: the host's image
// goes in, the default text is rendered at full size and composited.
#include "host/ModuleState.h"
#include "scene/K3DSystem.h"
#include "tests/ui/FilterStart.h"
#include "ui/NoWindowRun.h"
#include "ui/VZarbesoDocument.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {
// Fills the image with a soft gradient, so the text stands out from it.
void Paint(FakeHost& host, int alpha = -1) {
    for (int y = 0; y < host.height; ++y)
        for (int x = 0; x < host.width; ++x) {
            uint8* p = &host.image[(std::size_t(y) * host.width + x) * host.planes];
            p[0] = static_cast<uint8>(200 - y / 2);
            p[1] = static_cast<uint8>(120 + x / 4);
            p[2] = 60;
            if (host.planes == 4) p[3] = static_cast<uint8>(alpha >= 0 ? alpha : 77);
        }
}

// Which pixels of the output differ from the image.
std::vector<bool> Covered(const FakeHost& host, int planes) {
    std::vector<bool> covered(std::size_t(host.width) * host.height);
    for (std::size_t i = 0; i < covered.size(); ++i)
        for (int p = 0; p < planes; ++p)
            if (host.outBuffer[i * host.planes + p] != host.image[i * host.planes + p])
                covered[i] = true;
    return covered;
}
} // namespace

TEST(NoWindowRun, DefaultTextLandsInTheMiddleOfAnRgbImage) {
    FakeHost host(320, 200, 3, plugInModeRGBColor, filterCaseFlatImageNoSelection);
    Paint(host);
    ASSERT_EQ(StartFilter(host, &RunWithoutWindow), 0);
    SaveHostOutput(host, "nowindow-rgb.png");
    const std::vector<bool> covered = Covered(host, 3);
    int inMiddle = 0, inCorners = 0;
    for (int y = 0; y < host.height; ++y)
        for (int x = 0; x < host.width; ++x) {
            if (!covered[std::size_t(y) * host.width + x]) continue;
            if (y > host.height / 3 && y < 2 * host.height / 3) ++inMiddle;
            if (y < 10 || y >= host.height - 10) ++inCorners;
        }
    EXPECT_GT(inMiddle, host.width * host.height / 20) << "the text covers the middle band";
    EXPECT_EQ(inCorners, 0) << "top and bottom rows keep the image";
    EXPECT_EQ(static_cast<PluginParameters*>(host.record.parameters)->invocation, 0);
}

TEST(NoWindowRun, CmykKeepsItsBlackPlane) {
    FakeHost host(160, 100, 4, plugInModeCMYKColor, filterCaseFlatImageNoSelection);
    Paint(host);
    ASSERT_EQ(StartFilter(host, &RunWithoutWindow), 0);
    const std::vector<bool> covered = Covered(host, 3);
    int changed = 0;
    for (std::size_t i = 0; i < covered.size(); ++i) {
        changed += covered[i];
        ASSERT_EQ(host.outBuffer[i * 4 + 3], host.image[i * 4 + 3]) << "pixel " << i;
    }
    EXPECT_GT(changed, 100);
}

TEST(NoWindowRun, LayerGetsTheGreaterAlphaWhereTheTextLies) {
    FakeHost host(160, 100, 4, plugInModeRGBColor, filterCaseEditableTransparencyNoSelection);
    Paint(host, 77);
    ASSERT_EQ(StartFilter(host, &RunWithoutWindow), 0);
    SaveHostOutput(host, "nowindow-layer.png");
    int opaque = 0, kept = 0;
    for (std::size_t i = 0; i < std::size_t(host.width) * host.height; ++i) {
        const uint8 a = host.outBuffer[i * 4 + 3];
        ASSERT_GE(a, 77) << "never less than the layer's own alpha";
        opaque += a == 255;
        kept += a == 77;
    }
    EXPECT_GT(opaque, 100);
    EXPECT_GT(kept, 100);
}

TEST(Document, SeeThroughTextGivesPartialAlphaAndBothRenderersCoverTheSamePixels) {
    FakeHost host(200, 120, 4, plugInModeRGBColor, filterCaseEditableTransparencyNoSelection);
    Paint(host, 0); // a fully transparent layer: the picture's own alpha shows
    ASSERT_EQ(StartFilter(host, [] { return true; }), 0); // the test drives the document

    VC3DSystem system;
    auto coverage = [&](TQ3ObjectType renderer, float opacity, std::vector<uint8>* alpha) {
        VZarbesoDocument document(false);
        document.ApplyDefaults();
        document.GetView()->SetOpacity(opacity);
        document.GetRenderer()->finalType = renderer;
        document.BindImage(false);
        ASSERT_TRUE(document.RenderFinal());
        alpha->resize(std::size_t(host.width) * host.height);
        for (std::size_t i = 0; i < alpha->size(); ++i)
            (*alpha)[i] = host.outBuffer[i * 4 + 3];
    };
    std::vector<uint8> finalAlpha, interactiveAlpha, halfAlpha;
    VZarbesoDocument probe(false);
    const TQ3ObjectType finalType = probe.GetRenderer()->GetFinalType();
    ASSERT_NE(finalType, 0u) << "the final renderer is registered and chosen";
    coverage(finalType, 100, &finalAlpha);
    SaveHostOutput(host, "document-final.png");
    coverage(kQ3RendererTypeInteractive, 100, &interactiveAlpha);
    SaveHostOutput(host, "document-interactive.png");
    coverage(finalType, 50, &halfAlpha);
    SaveHostOutput(host, "document-half.png");

    int both = 0, either = 0, partial = 0;
    for (std::size_t i = 0; i < finalAlpha.size(); ++i) {
        const bool f = finalAlpha[i] > 127, g = interactiveAlpha[i] > 127;
        both += f && g;
        either += f || g;
        if (halfAlpha[i] > 40 && halfAlpha[i] < 215) ++partial;
    }
    ASSERT_GT(either, 500);
    EXPECT_GT(double(both) / either, 0.9) << "the two renderers cover the same letters";
    EXPECT_GT(partial, either / 2) << "see-through letters leave a partial alpha";
}

TEST(Document, OkAfterAFullSizePreviewDoesNotRenderAgain) {
    FakeHost host(160, 100, 3, plugInModeRGBColor, filterCaseFlatImageNoSelection);
    Paint(host);
    ASSERT_EQ(StartFilter(host, [] { return true; }), 0);
    VC3DSystem system;
    for (int16 scale : {int16(1), int16(2)}) {
        gPluginParameters->previewScale = scale;
        VZarbesoDocument document(false);
        document.ApplyDefaults();
        document.BindImage(false);
        document.RenderScene(true); // Preview
        ASSERT_TRUE(document.GetView()->IsRenderShowing());
        // This host hands out fresh buffers, so only a new render can change them.
        ASSERT_TRUE(document.RenderFinal());
        const std::vector<bool> covered = Covered(host, 3);
        const auto changed = std::count(covered.begin(), covered.end(), true);
        if (scale == 1)
            EXPECT_EQ(changed, 0) << "the preview already was the result";
        else
            EXPECT_GT(changed, 100) << "a reduced preview is rendered again at full size";
    }
}
