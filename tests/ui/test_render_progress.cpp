// A final render tells its progress and can be stopped: through the host's
// progressProc and abortProc in the run without a window, and through the
// document's own hook, which the window uses. A picture drawn in bands of
// rows is the picture drawn whole.
#include "scene/K3DSystem.h"
#include "tests/ui/FilterStart.h"
#include "ui/NoWindowRun.h"
#include "ui/VZarbesoDocument.h"

#include <gtest/gtest.h>
#include <vector>

namespace {
std::vector<std::pair<int32, int32>> gProgress;
int gAbortAfter = 0; // abortProc answers yes from this call on; 0: never
int gAbortCalls = 0;

void Progress(int32 done, int32 total) {
    gProgress.emplace_back(done, total);
}
Boolean Abort() {
    return gAbortAfter && ++gAbortCalls >= gAbortAfter;
}

// A document whose renders stop once they are further than `stopAt`.
class StoppingDocument : public VZarbesoDocument {
  public:
    StoppingDocument() : VZarbesoDocument(false) {}
    double stopAt = 2;
    std::vector<double> told;

  protected:
    bool RenderProgress(double done) override {
        told.push_back(done);
        return done < stopAt;
    }
};

constexpr int kWidth = 240, kHeight = 160;

struct Image {
    std::vector<uint8> in, out;
    Image() : in(std::size_t(kWidth) * kHeight * 3), out(in.size()) {
        for (std::size_t i = 0; i < in.size(); ++i)
            in[i] = static_cast<uint8>(i * 13 / 7);
        out = in;
    }
};

// The default scene rendered over `image` at its size; answers RenderScene's.
bool Render(StoppingDocument& document, Image& image, std::int64_t bandPixels) {
    document.ApplyDefaults();
    VZarbesoView& view = *document.GetView();
    view.Resize(kWidth, kHeight, 515, 324, false);
    view.SetHostImage(image.in.data(), kWidth * 3, image.out.data(), kWidth * 3, kWidth, kHeight, 3,
                      -1, 0, plugInModeRGBColor);
    view.SetOffscreen(true);
    view.SetBandPixels(bandPixels);
    return document.RenderScene(false);
}
} // namespace

TEST(RenderProgress, TheHostHearsItAndItsAbortEndsTheRunAsACancelWithTheOutputUntouched) {
    for (int abortAfter : {0, 2}) {
        FakeHost host(320, 200, 3, plugInModeRGBColor, filterCaseFlatImageNoSelection);
        host.record.progressProc = &Progress;
        host.record.abortProc = &Abort;
        gProgress.clear();
        gAbortAfter = abortAfter;
        gAbortCalls = 0;
        const int16 result = StartFilter(host, &RunWithoutWindow);
        ASSERT_FALSE(gProgress.empty());
        for (std::size_t i = 1; i < gProgress.size(); ++i)
            EXPECT_GE(gProgress[i].first, gProgress[i - 1].first);
        if (!abortAfter) {
            EXPECT_EQ(result, 0);
            EXPECT_EQ(gProgress.back().first, gProgress.back().second) << "it ends at the whole";
            EXPECT_NE(host.outBuffer, host.image);
        } else {
            EXPECT_GT(result, 0) << "a stop ends as a cancel";
            EXPECT_EQ(host.outBuffer, host.image) << "the output is as the host gave it";
            EXPECT_EQ(std::size_t(gAbortCalls), gProgress.size()) << "nothing after the stop";
        }
    }
}

TEST(RenderProgress, BandsGiveTheWholePictureAndAStopInTheThirdLeavesTheOutputAsItWas) {
    VC3DSystem system;
    Image whole, banded, stopped;
    StoppingDocument a, b, c;
    ASSERT_TRUE(Render(a, whole, std::int64_t(kWidth) * kHeight));
    ASSERT_TRUE(Render(b, banded, std::int64_t(kWidth) * kHeight / 4 + 7));
    EXPECT_NE(whole.out, whole.in) << "the text is in the picture";
    EXPECT_EQ(banded.out, whole.out) << "bands meet without a seam";
    ASSERT_GE(b.told.size(), 4u);
    EXPECT_DOUBLE_EQ(b.told.back(), 1.0);

    c.stopAt = 0.6; // in the third of four bands, after the second drew letters
    EXPECT_FALSE(Render(c, stopped, std::int64_t(kWidth) * kHeight / 4 + 7));
    EXPECT_TRUE(c.RenderStopped());
    EXPECT_EQ(stopped.out, stopped.in);
    EXPECT_FALSE(c.GetView()->IsRenderShowing());
}
