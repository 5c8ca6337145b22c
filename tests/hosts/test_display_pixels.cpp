// displayPixels onto the filter's PISurface.
#include "TestSupport.h"
#include "hosts/DisplayPixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

// A surface inside a larger block whose margin must stay untouched.
struct GuardedSurface {
    static constexpr uint32_t kGuard = 0xDEADBEEF;
    static constexpr int kMargin = 16;
    int width, height, stride;
    std::vector<uint32_t> block;
    PISurface surface{};

    GuardedSurface(int w, int h) : width(w), height(h), stride(w + 3) {
        block.assign(size_t(stride) * size_t(h) + 2 * kMargin, kGuard);
        surface.width = w;
        surface.height = h;
        surface.rowBytes = stride * 4;
        surface.pixels = block.data() + kMargin;
        for (int r = 0; r < h; ++r)
            for (int c = 0; c < w; ++c)
                At(r, c) = 0x123456;
    }
    uint32_t& At(int r, int c) { return surface.pixels[size_t(r) * size_t(stride) + size_t(c)]; }
    bool GuardsIntact() {
        for (int i = 0; i < kMargin; ++i)
            if (block[size_t(i)] != kGuard || block[block.size() - 1 - size_t(i)] != kGuard)
                return false;
        for (int r = 0; r < height; ++r)
            for (int c = width; c < stride; ++c)
                if (At(r, c) != kGuard) return false;
        return true;
    }
    std::vector<uint32_t> Picture() {
        std::vector<uint32_t> out;
        for (int r = 0; r < height; ++r)
            for (int c = 0; c < width; ++c)
                out.push_back(At(r, c));
        return out;
    }
};

// Interleaved pixels with 3 or 4 planes, plus optional alpha after them.
struct PixelSource {
    std::vector<uint8_t> bytes;
    std::vector<uint8_t> alpha;
    PSPixelMap map{};
    PSPixelMask mask{};

    PixelSource(int w, int h, int mode, int planes, VRect bounds) {
        bytes.resize(size_t(w) * size_t(h) * size_t(planes));
        map.version = 1;
        map.bounds = bounds;
        map.imageMode = mode;
        map.rowBytes = w * planes;
        map.colBytes = planes;
        map.planeBytes = 1;
        map.baseAddr = bytes.data();
    }
    uint8_t* At(int r, int c) { return bytes.data() + r * map.rowBytes + c * map.colBytes; }
    void WithAlpha(int w, int h) {
        alpha.assign(size_t(w) * size_t(h), 255);
        mask.maskData = alpha.data();
        mask.rowBytes = w;
        mask.colBytes = 1;
        map.masks = &mask;
    }
};

} // namespace

TEST(HostDisplayPixels, RgbLandsAtTheDestinationClippedToTheSurface) {
    PixelSource src(10, 6, plugInModeRGBColor, 3, VRect{100, 200, 106, 210});
    for (int r = 0; r < 6; ++r)
        for (int c = 0; c < 10; ++c) {
            uint8_t* px = src.At(r, c);
            px[0] = uint8_t(r * 40), px[1] = uint8_t(c * 20), px[2] = 7;
        }
    GuardedSurface dst(8, 5);
    // Source rows 101..105, columns 202..209 drawn at surface (1, 3): the
    // right part and bottom row fall off the surface.
    const VRect srcRect{101, 202, 106, 210};
    ASSERT_EQ(DisplayPixelsOnSurface(&src.map, &srcRect, 1, 3, &dst.surface), noErr);
    EXPECT_TRUE(dst.GuardsIntact());
    for (int r = 0; r < 5; ++r)
        for (int c = 0; c < 8; ++c) {
            const bool drawn = r >= 1 && c >= 3;
            const int sr = r - 1 + 1, sc = c - 3 + 2; // source row/column inside the map
            const uint32_t expected =
                drawn ? uint32_t(sr * 40) << 16 | uint32_t(sc * 20) << 8 | 7 : 0x123456;
            ASSERT_EQ(dst.At(r, c), expected) << r << "," << c;
        }
    // Negative destinations and a source rectangle beyond the bounds are clipped too.
    const VRect wide{90, 190, 120, 230};
    ASSERT_EQ(DisplayPixelsOnSurface(&src.map, &wide, -12, -12, &dst.surface), noErr);
    EXPECT_TRUE(dst.GuardsIntact());
    EXPECT_EQ(dst.At(0, 0), uint32_t(2 * 40) << 16 | uint32_t(2 * 20) << 8 | 7);
}

TEST(HostDisplayPixels, CmykIsConvertedNaively) {
    PixelSource src(3, 1, plugInModeCMYKColor, 4, VRect{0, 0, 1, 3});
    // Stored inverted: 255 = no ink.
    const uint8_t pixels[3][4] = {{255, 255, 255, 255},  // no ink: white
                                  {0, 255, 255, 255},    // full cyan
                                  {255, 255, 255, 127}}; // half black
    for (int c = 0; c < 3; ++c)
        std::copy(pixels[c], pixels[c] + 4, src.At(0, c));
    GuardedSurface dst(3, 1);
    const VRect all{0, 0, 1, 3};
    ASSERT_EQ(DisplayPixelsOnSurface(&src.map, &all, 0, 0, &dst.surface), noErr);
    EXPECT_EQ(dst.At(0, 0), 0xFFFFFFu);
    EXPECT_EQ(dst.At(0, 1), 0x00FFFFu);
    EXPECT_EQ(dst.At(0, 2), 0x7F7F7Fu);
    EXPECT_TRUE(dst.GuardsIntact());
}

TEST(HostDisplayPixels, TransparencyIsShownOverACheckerboard) {
    const int w = 64, h = 32;
    for (const int mode : {plugInModeRGBColor, plugInModeCMYKColor}) {
        SCOPED_TRACE(mode);
        const int planes = mode == plugInModeRGBColor ? 3 : 4;
        PixelSource src(w, h, mode, planes, VRect{0, 0, h, w});
        src.WithAlpha(w, h);
        for (int r = 0; r < h; ++r)
            for (int c = 0; c < w; ++c) {
                uint8_t* px = src.At(r, c);
                // Red in RGB; in inverted CMYK no cyan, full magenta and yellow.
                px[0] = 255, px[1] = 0, px[2] = 0;
                if (planes == 4) px[3] = 255;
                src.alpha[size_t(r * w + c)] = uint8_t(c * 255 / (w - 1));
            }
        GuardedSurface dst(w, h);
        const VRect all{0, 0, h, w};
        ASSERT_EQ(DisplayPixelsOnSurface(&src.map, &all, 0, 0, &dst.surface), noErr);
        EXPECT_TRUE(dst.GuardsIntact());
        // Fully transparent: the checkerboard, light and dark squares of 8.
        EXPECT_EQ(dst.At(0, 0), kCheckerLight);
        EXPECT_EQ(dst.At(8, 0), kCheckerDark);
        EXPECT_EQ(dst.At(9, 0), kCheckerDark);
        EXPECT_EQ(dst.At(16, 0), kCheckerLight);
        // Opaque: the colour itself; in between a mix.
        EXPECT_EQ(dst.At(5, w - 1), 0xFF0000u);
        const uint32_t mid = dst.At(4, 32);
        EXPECT_EQ(mid >> 16, 0xFFu);
        EXPECT_GT(mid & 0xFF, 0x40u);
        EXPECT_LT(mid & 0xFF, 0xC0u);
        if (mode == plugInModeRGBColor) SaveSurfacePng("hosts_display_mask", dst.Picture(), w, h);
        // The mask phase shifts the squares.
        src.map.maskPhaseRow = 8;
        ASSERT_EQ(DisplayPixelsOnSurface(&src.map, &all, 0, 0, &dst.surface), noErr);
        EXPECT_EQ(dst.At(0, 0), kCheckerDark);
    }
}

TEST(HostDisplayPixels, BadArgumentsAreRefusedWithoutWriting) {
    PixelSource src(4, 4, plugInModeRGBColor, 3, VRect{0, 0, 4, 4});
    GuardedSurface dst(4, 4);
    const VRect all{0, 0, 4, 4};
    EXPECT_EQ(DisplayPixelsOnSurface(nullptr, &all, 0, 0, &dst.surface), filterBadParameters);
    EXPECT_EQ(DisplayPixelsOnSurface(&src.map, nullptr, 0, 0, &dst.surface), filterBadParameters);
    EXPECT_EQ(DisplayPixelsOnSurface(&src.map, &all, 0, 0, nullptr), filterBadParameters);

    const auto refused = [&](auto change, OSErr expected) {
        PixelSource s(4, 4, plugInModeRGBColor, 3, VRect{0, 0, 4, 4});
        GuardedSurface d(4, 4);
        const PISurface original = d.surface;
        change(s, d);
        EXPECT_EQ(DisplayPixelsOnSurface(&s.map, &all, 0, 0, &d.surface), expected);
        d.surface = original;
        EXPECT_EQ(d.At(0, 0), 0x123456u);
        EXPECT_TRUE(d.GuardsIntact());
    };
    refused([](PixelSource& s, GuardedSurface&) { s.map.version = 2; }, filterBadParameters);
    refused([](PixelSource& s, GuardedSurface&) { s.map.baseAddr = nullptr; }, filterBadParameters);
    refused([](PixelSource& s, GuardedSurface&) { s.map.imageMode = plugInModeGrayScale; },
            filterBadMode);
    refused([](PixelSource& s, GuardedSurface&) { s.map.colBytes = 2; }, filterBadParameters);
    refused([](PixelSource& s, GuardedSurface&) { s.map.rowBytes = 11; }, filterBadParameters);
    refused([](PixelSource& s, GuardedSurface&) { s.map.planeBytes = 0; }, filterBadParameters);
    refused(
        [](PixelSource& s, GuardedSurface&) {
            s.map.bounds = VRect{4, 0, 0, 4};
        },
        filterBadParameters);
    refused([](PixelSource&, GuardedSurface& d) { d.surface.rowBytes = 12; }, filterBadParameters);
    refused([](PixelSource&, GuardedSurface& d) { d.surface.pixels = nullptr; },
            filterBadParameters);
    refused(
        [](PixelSource& s, GuardedSurface&) {
            s.WithAlpha(4, 4);
            s.mask.maskDescription = 1;
        },
        filterBadParameters);
    refused(
        [](PixelSource& s, GuardedSurface&) {
            s.WithAlpha(4, 4);
            s.mask.maskData = nullptr;
        },
        filterBadParameters);
}
