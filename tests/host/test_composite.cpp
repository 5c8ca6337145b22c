// The composite of the rendered scene over the host's pixels, byte for byte.
#include "host/Composite.h"
#include "host/WGWorld.h"

#include <gtest/gtest.h>
#include <vector>

namespace {
uint32_t Argb(int a, int r, int g, int b) {
    return uint32_t(a) << 24 | r << 16 | g << 8 | b;
}

void ExpectBlend(const BlendResult& r, int red, int green, int blue, int alpha) {
    EXPECT_EQ(r.r, red);
    EXPECT_EQ(r.g, green);
    EXPECT_EQ(r.b, blue);
    EXPECT_EQ(r.alpha, alpha);
}
} // namespace

TEST(Blend, LimitingToAlpha) {
    uint8_t r = 200, g = 100, b = 50;
    LimitToAlpha(128, &r, &g, &b);
    EXPECT_EQ(r, 128);
    EXPECT_EQ(g, 64);
    EXPECT_EQ(b, 32);
    uint8_t r2 = 100, g2 = 90, b2 = 0;
    LimitToAlpha(128, &r2, &g2, &b2); // already within its alpha
    EXPECT_EQ(r2, 100);
    EXPECT_EQ(g2, 90);
    LimitToAlpha(0, &r2, &g2, &b2);
    EXPECT_EQ(r2, 100);
}

TEST(Blend, NormalBlendTable) {
    const uint8_t d[3] = {200, 100, 0};
    const uint8_t s[3] = {90, 50, 10};
    ExpectBlend(NormalBlend(s, 0, d, 77), 200, 100, 0, 77);
    ExpectBlend(NormalBlend(s, 255, d, 77), 90, 50, 10, 255);
    // Over an opaque destination: trunc(d * single(1 - a K)) + s.
    ExpectBlend(NormalBlend(s, 100, d, 255), 211, 110, 10, 255);
    // Over a transparent destination the colours are un-premultiplied.
    const uint8_t half[3] = {128, 64, 32};
    ExpectBlend(NormalBlend(half, 128, d, 0), 255, 127, 63, 128);
    // Between the two: mixed, then scaled by single(255 / max alpha).
    ExpectBlend(NormalBlend(s, 100, d, 150), 255, 144, 17, 150);
    // The 32-bit rounding of the scale decides this one: 7 * 36.42857 (single)
    // is just below 255.
    const uint8_t d2[3] = {220, 220, 220};
    const uint8_t s2[3] = {1, 1, 1};
    ExpectBlend(NormalBlend(s2, 1, d2, 7), 254, 254, 254, 7);
    // A result over 255 is held at 255.
    const uint8_t white[3] = {255, 255, 255};
    const uint8_t s3[3] = {200, 200, 200};
    ExpectBlend(NormalBlend(s3, 200, white, 100), 255, 255, 255, 200);
}

TEST(Blend, ProtectedBlendLeavesAlphaAndTransparentPixels) {
    const uint8_t d[3] = {200, 100, 0};
    const uint8_t s[3] = {90, 50, 10};
    ExpectBlend(ProtectedBlend(s, 100, d, 150), 211, 110, 10, 150);
    ExpectBlend(ProtectedBlend(s, 100, d, 0), 200, 100, 0, 0);
    ExpectBlend(ProtectedBlend(s, 0, d, 150), 200, 100, 0, 150);
}

TEST(Composite, CmykKeepsItsFourthPlaneAndAlphaIsWrittenOnlyWithAPlane) {
    WGWorld world({0, 0, 2, 3}, 32);
    world.SetPixel32(0, 0, Argb(255, 10, 20, 30));
    world.SetPixel32(1, 0, Argb(128, 200, 100, 50));
    world.SetPixel32(2, 1, Argb(100, 90, 50, 10));
    // Two rows of three CMYK pixels; the last one of the second row is under
    // the third source pixel.
    std::vector<uint8_t> in = {1, 2, 3, 4, 200, 100, 0, 9, 5,  6,  7,   8,
                               9, 9, 9, 9, 9,   9,   9, 9, 40, 80, 120, 9};
    std::vector<uint8_t> out(in.size(), 0xEE);
    HostBinding b = MakeHostBinding(in.data(), 12, out.data(), 12, 3, 2, 4, -1, 0);
    CompositeToHost(b, world, false);
    const std::vector<uint8_t> expected = {10, 20, 30, 0xEE, 227, 113, 32, 0xEE, 5,   6,  7,  0xEE,
                                           9,  9,  9,  0xEE, 9,   9,   9,  0xEE, 114, 98, 82, 0xEE};
    EXPECT_EQ(out, expected);
}

TEST(Composite, LayerGetsTheGreaterAlphaAndEmptyPixelsCopyTheInput) {
    WGWorld world({0, 0, 1, 2}, 32);
    world.SetPixel32(0, 0, Argb(100, 90, 50, 10));
    std::vector<uint8_t> in = {200, 100, 0, 150, 1, 2, 3, 4};
    std::vector<uint8_t> out(8, 0);
    HostBinding b = MakeHostBinding(in.data(), 8, out.data(), 8, 2, 1, 4, 3, 0);
    CompositeToHost(b, world, false);
    EXPECT_EQ((std::vector<uint8_t>(out.begin(), out.begin() + 4)),
              (std::vector<uint8_t>{255, 144, 17, 150}));
    EXPECT_EQ((std::vector<uint8_t>(out.begin() + 4, out.end())),
              (std::vector<uint8_t>{1, 2, 3, 4}));
}

TEST(Composite, ProtectedLayerWritesThreePlanesOnly) {
    WGWorld world({0, 0, 1, 2}, 32);
    world.Fill32(Argb(100, 90, 50, 10));
    std::vector<uint8_t> in = {200, 100, 0, 150, 200, 100, 0, 0};
    std::vector<uint8_t> out(6, 0);
    HostBinding b = MakeHostBinding(in.data(), 8, out.data(), 6, 2, 1, 4, 3, 1);
    EXPECT_EQ(b.outPlanes, 3);
    CompositeToHost(b, world, false); // plane counts differ: the normal blend may not run
    EXPECT_EQ(out, std::vector<uint8_t>(6, 0));
    CompositeToHost(b, world, true);
    EXPECT_EQ(out, (std::vector<uint8_t>{211, 110, 10, 200, 100, 0}));
}

TEST(Composite, BuffersWhoseRowsCannotHoldThePixelsAreLeftAlone) {
    WGWorld world({0, 0, 2, 2}, 32);
    world.Fill32(Argb(255, 1, 2, 3));
    // Two rows of two RGB pixels need 6 bytes a row; the host says 5.
    std::vector<uint8_t> in(10, 7), out(10, 0);
    CompositeToHost(MakeHostBinding(in.data(), 5, out.data(), 5, 2, 2, 3, -1, 0), world, false);
    EXPECT_EQ(out, std::vector<uint8_t>(10, 0));
    CompositeToHost(MakeHostBinding(in.data(), 6, out.data(), 5, 2, 2, 3, -1, 0), world, false);
    EXPECT_EQ(out, std::vector<uint8_t>(10, 0));
}
