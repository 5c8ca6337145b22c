// Showing the composite through the host's displayPixels.
#include "host/ModuleState.h"
#include "host/ShowOffscreen.h"
#include "host/WGWorld.h"

#include <gtest/gtest.h>
#include <vector>

namespace {
struct Shown {
    PSPixelMap map;
    PSPixelMask mask;
    bool hasMask;
    VRect source;
    int32 row, col;
    void* context;
} gShown;

OSErr RecordDisplay(const PSPixelMap* map, const VRect* src, int32 row, int32 col, void* ctx) {
    gShown.map = *map;
    gShown.hasMask = map->masks != nullptr;
    if (map->masks) gShown.mask = *map->masks;
    gShown.source = *src;
    gShown.row = row;
    gShown.col = col;
    gShown.context = ctx;
    return noErr;
}

struct Show : ::testing::Test {
    PluginParameters params{};
    void SetUp() override {
        params.displayPixels = &RecordDisplay;
        params.imageMode = plugInModeRGBColor;
        gPluginParameters = &params;
    }
    void TearDown() override { gPluginParameters = nullptr; }
};
} // namespace

TEST_F(Show, RgbWithoutTransparencyHasNoMask) {
    WGWorld world({0, 0, 4, 5}, 32);
    world.SetPixel32(0, 0, 0xFF102030);
    std::vector<uint8_t> in(5 * 4 * 3, 7), out(5 * 4 * 3, 0);
    HostBinding b = MakeHostBinding(in.data(), 15, out.data(), 15, 5, 4, 3, -1, 0);
    uint32_t pixels[16] = {};
    PISurface surface{4, 4, 16, pixels};
    EXPECT_EQ(ShowOffscreen(b, world, {10, 20, 14, 25}, plugInModeRGBColor, &surface), noErr);
    EXPECT_FALSE(gShown.hasMask);
    EXPECT_EQ(gShown.map.version, 1);
    EXPECT_EQ(gShown.map.baseAddr, out.data());
    EXPECT_EQ(gShown.map.colBytes, 3);
    EXPECT_EQ(gShown.map.rowBytes, 15);
    EXPECT_EQ(gShown.map.imageMode, plugInModeRGBColor);
    EXPECT_EQ(gShown.source.bottom, 4);
    EXPECT_EQ(gShown.source.right, 5);
    EXPECT_EQ(gShown.row, 10);
    EXPECT_EQ(gShown.col, 20);
    EXPECT_EQ(gShown.context, &surface);
    EXPECT_EQ(out[0], 0x10) << "composited before it was shown";
    EXPECT_EQ(out[3], 7);
}

TEST_F(Show, TransparencyMaskComesFromOutputOrProtectedInput) {
    WGWorld world({0, 0, 2, 2}, 32);
    std::vector<uint8_t> in(2 * 2 * 4, 9), out(2 * 2 * 4, 0);
    HostBinding editable = MakeHostBinding(in.data(), 8, out.data(), 8, 2, 2, 4, 3, 0);
    ShowOffscreen(editable, world, {0, 0, 2, 2}, plugInModeRGBColor, nullptr);
    ASSERT_TRUE(gShown.hasMask);
    EXPECT_EQ(gShown.mask.maskData, out.data() + 3);
    EXPECT_EQ(gShown.mask.colBytes, 4);

    std::vector<uint8_t> out3(2 * 2 * 3, 0);
    HostBinding prot = MakeHostBinding(in.data(), 8, out3.data(), 6, 2, 2, 4, 3, 1);
    ShowOffscreen(prot, world, {0, 0, 2, 2}, plugInModeRGBColor, nullptr);
    ASSERT_TRUE(gShown.hasMask);
    EXPECT_EQ(gShown.mask.maskData, in.data() + 3);
    EXPECT_EQ(gShown.mask.rowBytes, 8);
    EXPECT_EQ(gShown.map.colBytes, 3);
}
