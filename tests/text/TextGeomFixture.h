// A fixture for the letter geometry: the 3D library started, DejaVu Sans
// chosen, and at the end a check that every library object was given back.
#pragma once

#include "tests/text/GroupWalk.h"
#include "tests/text/TextTestSupport.h"
#include "text/Type1Fonts.h"
#include "text/Type1Service.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

class TextGeomTest : public q3test::LibraryTest {
  protected:
    void SetUp() override {
        LibraryTest::SetUp();
        // TrueType faces are enough here; the Type 1 module stays unloaded.
        if (GetFontList().GetCount() == 0) {
            SetType1ModulePath("");
            ResetType1FontDirectory();
            BuildFontList();
        }
        ASSERT_TRUE(SelectFont("DejaVu Sans"));
    }
};

// The outer contours of a chain, in text order.
inline std::vector<const OuterContour*> Outers(const TextCharacter* chain) {
    std::vector<const OuterContour*> out;
    for (; chain; chain = chain->next)
        for (const OuterContour* c = chain->contours; c; c = c->next)
            out.push_back(c);
    return out;
}

inline int HoleCount(const OuterContour& outer) {
    int n = 0;
    for (const HoleContour* h = outer.holes; h; h = h->next)
        ++n;
    return n;
}

// Twice the signed area of a closed contour, positive counter-clockwise seen
// from +z.
inline double TwiceArea(const float* p, std::uint32_t count) {
    double a = 0;
    for (std::uint32_t i = 0; i + 1 < count; ++i)
        a += double(p[2 * i]) * p[2 * i + 3] - double(p[2 * i + 2]) * p[2 * i + 1];
    return a;
}
