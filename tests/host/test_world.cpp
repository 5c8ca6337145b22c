// Offscreen worlds in plain memory.
#include "foundation/Failures.h"
#include "host/WGWorld.h"

#include <gtest/gtest.h>

TEST(World, RowLengthAndBoundsFollowTheDepthAtAnyWidth) {
    WGWorld w({10, 20, 13, 27}, 32);
    EXPECT_EQ(w.GetWidth(), 7);
    EXPECT_EQ(w.GetHeight(), 3);
    EXPECT_EQ(w.GetRowBytes(), 28);
    WGWorld w24({0, 0, 1, 5}, 24);
    EXPECT_EQ(w24.GetRowBytes(), 16); // 15 bytes padded to a multiple of four
    EXPECT_EQ(w.Pixel32(6, 2), 0u) << "a new world is empty";
    // Wider than 8191 pixels the rows stay whole.
    WGWorld wide({0, 0, 2, 9000}, 32);
    EXPECT_EQ(wide.GetRowBytes(), 36000);
    wide.SetPixel32(8999, 1, 0x80112233);
    EXPECT_EQ(wide.Pixel32(8999, 1), 0x80112233u);
    EXPECT_EQ(wide.Pixel32(8999, 0), 0u);
}

TEST(World, WhatCannotBeHadThrowsPlin) {
    auto make = [](Rect r, int depth) {
        try {
            WGWorld w(r, depth);
            return 0;
        } catch (int32_t code) {
            return code;
        }
    };
    EXPECT_EQ(make({0, 0, 0, 10}, 32), kFailPlin);
    EXPECT_EQ(make({5, 5, 4, 10}, 32), kFailPlin);
    EXPECT_EQ(make({0, 0, 10, 10}, 7), kFailPlin);
    EXPECT_EQ(make({0, 0, 10, 10}, 32), 0);
}

TEST(World, CopiesAreClippedToBothSides) {
    WGWorld a({0, 0, 2, 2}, 32), b({0, 0, 3, 1}, 32);
    a.Fill32(0xFF010203);
    b.CopyFromWorld(a);
    EXPECT_EQ(b.Pixel32(0, 1), 0xFF010203u);
    EXPECT_EQ(b.Pixel32(0, 2), 0u);

    uint32_t pixels[4 * 3] = {};
    PISurface surface{4, 3, 16, pixels};
    a.CopyToWindow(&surface, {1, 3, 3, 5}); // half of it falls off the right edge
    EXPECT_EQ(pixels[1 * 4 + 3], 0x010203u);
    EXPECT_EQ(pixels[2 * 4 + 3], 0x010203u);
    EXPECT_EQ(pixels[1 * 4 + 2], 0u);
    EXPECT_EQ(pixels[0], 0u);
}
