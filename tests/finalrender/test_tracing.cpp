// Where the final renderer spends its rays: only where the scene can be seen,
// more samples only where a pixel's first ones disagree; and how it tells
// its progress and stops when asked.
#include "tests/finalrender/FinalRenderTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace frtest;
using q3test::TestView;

namespace {

TQ3LightWorksSLStatistics figuresOf(TQ3RendererObject r) {
    TQ3LightWorksSLStatistics st{};
    EXPECT_EQ(Q3LightWorks_SL_GetStatistics(r, &st), kQ3Success);
    return st;
}

TQ3GeometryObject quad(TQ3Point3D a, TQ3Point3D b, TQ3Point3D c, TQ3Point3D d) {
    const TQ3Point3D corners[4] = {a, b, c, d};
    return polygon(corners, 4);
}

} // namespace

TEST(FinalTracing, TracesOnlyWhereTheSceneCanBeSeen) {
    // a small square in the middle of an orthographic view
    TestView small(200, 100, 5.0f, true);
    TQ3RendererObject r = useFinalRenderer(small, 2);
    TQ3GeometryObject sq = q3test::square(0.1f, 0);
    small.render([&](TQ3ViewObject view) { submitAll(view, {sq}); });
    TQ3LightWorksSLStatistics st = figuresOf(r);
    EXPECT_GT(st.tracedPixels, 20.0 * 10);
    EXPECT_LT(st.tracedPixels, 1000.0);
    EXPECT_EQ(st.primaryRays, 4 * st.tracedPixels);
    int drawn = 0;
    for (int y = 0; y < small.height; ++y)
        for (int x = 0; x < small.width; ++x) {
            const bool inside = std::abs(x + 0.5f - 100) < 10 && std::abs(y + 0.5f - 50) < 5;
            if (inside)
                EXPECT_EQ(small.at(x, y).a, 255) << x << "," << y;
            else
                drawn += small.pixels[std::size_t(y) * small.width + x] != 0;
        }
    EXPECT_LE(drawn, 2 * (20 + 10) + 4) << "nothing beyond the square's rim";

    // a floor that runs from behind the eye into the distance: its box cannot
    // be taken to the window, so every pixel is traced
    TestView wide(60, 40, 5.0f);
    TQ3RendererObject r2 = useFinalRenderer(wide, 1);
    TQ3GeometryObject floor = quad({-30, -1, 20}, {30, -1, 20}, {30, -1, -40}, {-30, -1, -40});
    wide.render([&](TQ3ViewObject view) { submitAll(view, {floor}); });
    st = figuresOf(r2);
    EXPECT_EQ(st.tracedPixels, 60.0 * 40);
    EXPECT_EQ(wide.at(30, 38).a, 255);
    EXPECT_EQ(wide.at(30, 2).a, 0);
    for (TQ3Object o : {TQ3Object(sq), TQ3Object(floor), TQ3Object(r), TQ3Object(r2)})
        Q3Object_Dispose(o);
}

// A slanted edge: with the extra samples every pixel's alpha is close to the
// part of it the shape covers, and only pixels on the edge get them.
TEST(FinalTracing, EdgePixelsGetMoreSamplesAndComeOutCloseToTheirCover) {
    constexpr int kSide = 64;
    const float slope = 0.37f, offset = 0.05f; // the edge y = slope x + offset
    auto below = [&](float wx, float wy) { return wy < slope * wx + offset; };
    auto maxError = [&](bool adaptive, double* refined) {
        TestView v(kSide, kSide, 5.0f, true);
        TQ3RendererObject r = useFinalRenderer(v, 2);
        Q3LightWorks_SL_SetAdaptiveSamples(r, adaptive ? kQ3True : kQ3False);
        TQ3GeometryObject shape =
            quad({-2, -2, 0}, {2, -2, 0}, {2, slope * 2 + offset, 0}, {-2, -slope * 2 + offset, 0});
        v.render([&](TQ3ViewObject view) { submitAll(view, {shape}); });
        *refined = figuresOf(r).refinedPixels;
        double worst = 0;
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x) {
                int in = 0;
                for (int j = 0; j < 32; ++j)
                    for (int i = 0; i < 32; ++i)
                        in += below(((x + (i + 0.5f) / 32) / kSide) * 2 - 1,
                                    1 - ((y + (j + 0.5f) / 32) / kSide) * 2);
                worst = std::max(worst, std::fabs(v.at(x, y).a / 255.0 - in / 1024.0));
            }
        Q3Object_Dispose(shape);
        Q3Object_Dispose(r);
        return worst;
    };
    double refined = 0, none = 0;
    const double adaptive = maxError(true, &refined);
    const double fixed = maxError(false, &none);
    EXPECT_LT(adaptive, 0.09);
    EXPECT_GT(fixed, adaptive * 1.5);
    EXPECT_EQ(none, 0);
    EXPECT_GT(refined, kSide / 2.0);
    EXPECT_LT(refined, 3.0 * kSide) << "flat pixels keep their first samples";
}

namespace {
struct Idler {
    std::vector<std::pair<TQ3Uns32, TQ3Uns32>> calls;
    std::size_t stopAt = 0; // 1-based call that asks to stop; 0: never
    static TQ3Status Method(TQ3ViewObject, const void* data, TQ3Uns32 current, TQ3Uns32 completed) {
        auto* self = static_cast<Idler*>(const_cast<void*>(data));
        self->calls.emplace_back(current, completed);
        return self->calls.size() == self->stopAt ? kQ3Failure : kQ3Success;
    }
};

TQ3ViewStatus renderOnce(TestView& v, TQ3Object geometry) {
    if (Q3View_StartRendering(v.view) != kQ3Success) return kQ3ViewStatusError;
    Q3Object_Submit(geometry, v.view);
    return Q3View_EndRendering(v.view);
}
} // namespace

TEST(FinalTracing, TellsItsProgressAndStopsWhenAsked) {
    TestView v(300, 200, 5.0f, true);
    TQ3RendererObject r = useFinalRenderer(v, 2);
    TQ3GeometryObject sq = q3test::square(3.0f, 0); // fills the view
    Idler going;
    Q3View_SetIdleProgressMethod(v.view, &Idler::Method, &going);
    EXPECT_EQ(renderOnce(v, sq), kQ3ViewStatusDone);
    ASSERT_GE(going.calls.size(), 2u);
    EXPECT_EQ(going.calls.front(), std::make_pair(TQ3Uns32(0), TQ3Uns32(300 * 200)));
    EXPECT_EQ(going.calls.back(), std::make_pair(TQ3Uns32(300 * 200), TQ3Uns32(300 * 200)));
    for (std::size_t i = 1; i < going.calls.size(); ++i)
        EXPECT_GE(going.calls[i].first, going.calls[i - 1].first);

    for (std::size_t stopAt : {1, 2}) {
        Idler stopping;
        stopping.stopAt = stopAt;
        Q3View_SetIdleProgressMethod(v.view, &Idler::Method, &stopping);
        EXPECT_EQ(renderOnce(v, sq), kQ3ViewStatusCancelled);
        EXPECT_EQ(stopping.calls.size(), stopAt) << "no word after the stop";
        EXPECT_LT(figuresOf(r).primaryRays, 4.0 * 300 * 200);
    }
    Q3View_SetIdleProgressMethod(v.view, nullptr, nullptr);
    Q3Object_Dispose(sq);
    Q3Object_Dispose(r);
}
