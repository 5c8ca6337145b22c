// Classification, point in contour and flattening on contours made by hand.

#include "text/CharacterChain.h"
#include "text/Flattening.h"
#include "text/GlyphRecord.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <memory>

namespace {

// A raw contour from (x, y, onCurve) triples; raw y points downward.
std::unique_ptr<RawContour> Contour(std::initializer_list<std::initializer_list<float>> points) {
    auto contour = std::make_unique<RawContour>();
    for (auto p : points) {
        auto it = p.begin();
        const float x = it[0], y = it[1];
        const auto on = static_cast<std::uint16_t>(p.size() > 2 ? it[2] : 1);
        contour->AddPoint(x, y, on);
    }
    return contour;
}

// A square, counter-clockwise in raw axes (positive area: outer).
std::unique_ptr<RawContour> Square(float x0, float y0, float size, bool outer = true) {
    auto c = Contour({{x0, y0}, {x0 + size, y0}, {x0 + size, y0 + size}, {x0, y0 + size}});
    if (!outer) c->Reverse();
    return c;
}

void Add(GlyphRecord& glyph, std::unique_ptr<RawContour> contour) {
    glyph.contours.Append(contour.release());
}

int SmoothCount(const CExpList& list) {
    int n = 0;
    for (auto s : list.smooth)
        n += s;
    return n;
}

} // namespace

TEST(TextPointInContour, InsideOutsideEdgesAndVertices) {
    auto square = Square(0, 0, 2);
    EXPECT_TRUE(PointInContour(1, 1, *square));
    EXPECT_FALSE(PointInContour(3, 1, *square));
    EXPECT_FALSE(PointInContour(-1, 1, *square));
    EXPECT_FALSE(PointInContour(1, 3, *square));
    // On an edge or a vertex is outside.
    EXPECT_FALSE(PointInContour(0, 1, *square));
    EXPECT_FALSE(PointInContour(1, 0, *square));
    EXPECT_FALSE(PointInContour(2, 2, *square));
    // A ray through a vertex counts once: a diamond seen from its middle.
    auto diamond = Contour({{0, 1}, {1, 0}, {2, 1}, {1, 2}});
    EXPECT_TRUE(PointInContour(1, 1, *diamond));
    EXPECT_FALSE(PointInContour(-1, 1, *diamond));
    EXPECT_FALSE(PointInContour(0.2f, 0.2f, *diamond));
    // Flat and steep edges both cut right: a thin slanted parallelogram.
    auto slanted = Contour({{0, 0}, {10, 1}, {10, 2}, {0, 1}});
    EXPECT_TRUE(PointInContour(5, 1.0f, *slanted));
    EXPECT_FALSE(PointInContour(5, 0.2f, *slanted));
    EXPECT_FALSE(PointInContour(5, 1.8f, *slanted));
    auto steep = Contour({{0, 0}, {1, 10}, {2, 10}, {1, 0}});
    EXPECT_TRUE(PointInContour(1, 5, *steep));
    EXPECT_FALSE(PointInContour(0.2f, 5, *steep));
    // Degenerate contours hold nothing.
    EXPECT_FALSE(PointInContour(0, 0, *Contour({{0, 0}})));
    EXPECT_FALSE(PointInContour(0, 0, RawContour()));
}

TEST(TextClassify, HolesFindTheInnermostOuterAndZeroAreaIsAHole) {
    GlyphRecord glyph;
    Add(glyph, Square(0, 0, 10));          // 1: big outer ring
    Add(glyph, Square(1, 1, 8, false));    // 2: its hole
    Add(glyph, Square(2, 2, 6));           // 3: outer inside the hole
    Add(glyph, Square(3, 3, 4, false));    // 4: hole of 3 (also inside 1)
    Add(glyph, Square(20, 20, 1, false));  // 5: a hole outside everything
    Add(glyph, Contour({{0, 0}, {1, 1}})); // 6: no area at all
    ClassifyContours(glyph);
    EXPECT_EQ(glyph.ContourAt(1)->kind, RawContour::kOuter);
    EXPECT_EQ(glyph.ContourAt(2)->kind, RawContour::kHole);
    EXPECT_EQ(glyph.ContourAt(2)->parent, 1);
    EXPECT_EQ(glyph.ContourAt(3)->kind, RawContour::kOuter);
    EXPECT_EQ(glyph.ContourAt(4)->parent, 3);
    EXPECT_EQ(glyph.ContourAt(5)->parent, 0);
    EXPECT_EQ(glyph.ContourAt(6)->kind, RawContour::kHole);
    EXPECT_EQ(glyph.ContourAt(6)->parent, 0);

    // In the chain: two outers with one hole each; free holes are dropped,
    // and y is turned upward.
    KList records;
    auto* record = new GlyphRecord;
    records.Append(record);
    for (std::uint32_t i = 1; i <= glyph.contours.GetCount(); ++i) {
        auto copy = std::make_unique<RawContour>(*glyph.ContourAt(i));
        record->contours.Append(copy.release());
    }
    ClassifyContours(*record);
    record->advance = 12;
    TextCharacter* chain = BuildCharacterChain(records);
    ASSERT_NE(chain, nullptr);
    ASSERT_NE(chain->contours, nullptr);
    ASSERT_NE(chain->contours->next, nullptr);
    EXPECT_EQ(chain->contours->next->next, nullptr);
    ASSERT_NE(chain->contours->holes, nullptr);
    EXPECT_EQ(chain->contours->holes->next, nullptr);
    ASSERT_NE(chain->contours->next->holes, nullptr);
    EXPECT_EQ(chain->contours->count, 5u);
    EXPECT_EQ(chain->advance, 12.0f);
    EXPECT_EQ(chain->xMin, 0.0f);
    EXPECT_EQ(chain->xMax, 10.0f);
    EXPECT_EQ(chain->yMin, -10.0f);
    EXPECT_EQ(chain->yMax, 0.0f);
    FreeTextCharacters(chain);
    EXPECT_EQ(BuildCharacterChain(KList()), nullptr);
}

TEST(TextFlatten, PolygonsKeepTheirPointsAndClose) {
    auto triangle = Contour({{0, 0}, {4, 0}, {0, -3}});
    CExpList out;
    FlattenQuadraticContour(*triangle, out);
    ASSERT_EQ(out.count, 4u);
    EXPECT_EQ(SmoothCount(out), 0);
    EXPECT_EQ(out.points[0], out.points[6]);
    EXPECT_EQ(out.points[1], out.points[7]);
    EXPECT_EQ(out.points[5], 3.0f); // y turned upward
    // One point: the point and its repeat, in both walks.
    CExpList single, singleCubic;
    FlattenQuadraticContour(*Contour({{1, 2}}), single);
    FlattenCubicContour(*Contour({{1, 2}}), singleCubic);
    EXPECT_EQ(single.count, 2u);
    EXPECT_EQ(singleCubic.count, 2u);
    EXPECT_EQ(singleCubic.points[3], -2.0f);
    CExpList none;
    FlattenCubicContour(RawContour(), none);
    EXPECT_EQ(none.count, 0u);
}

TEST(TextFlatten, QuadraticArcRefinesWithQualityWithinTheDepthLimit) {
    // A quarter circle of radius 1 as one quadratic, closed by two lines.
    auto arc = Contour({{1, 0}, {1, -1, 0}, {0, -1}, {0, 0}});
    std::uint32_t counts[3];
    for (int q = 0; q < 3; ++q) {
        SetFlattenQuality(q);
        CExpList out;
        FlattenQuadraticContour(*arc, out);
        counts[q] = out.count;
        // Every inner point lies on the parabola's hull side of the chord.
        for (std::uint32_t i = 0; i < out.count; ++i)
            if (out.smooth[i]) {
                EXPECT_GT(out.points[2 * i] + out.points[2 * i + 1], 1.0f);
            }
        EXPECT_EQ(out.points[0], out.points[2 * out.count - 2]);
    }
    SetFlattenQuality(1);
    EXPECT_LT(counts[0], counts[1]);
    EXPECT_LT(counts[1], counts[2]);
    // A huge curve is split down to depth 6 and no further: 63 inner points.
    const float big[6] = {0, 0, 5000, 10000, 10000, 0};
    CExpList out;
    FlattenSegment(big, 2, out);
    EXPECT_EQ(out.count, 64u);
    EXPECT_EQ(SmoothCount(out), 63);
    // A curve with its control point on an end point (no angle) stays whole.
    const float flat[6] = {0, 0, 0, 0, 0.01f, 0};
    CExpList straight;
    FlattenSegment(flat, 2, straight);
    EXPECT_EQ(straight.count, 1u);
}

TEST(TextFlatten, CubicWalkStartingOnAControlPoint) {
    // The form the Type 1 reader gives after reversing: two control points,
    // an on-curve point, and the start point last.
    auto c = Contour({{1, -1, 0}, {0, -1, 0}, {0, 0, 1}, {1, 0, 1}});
    CExpList out;
    FlattenCubicContour(*c, out);
    ASSERT_GE(out.count, 4u);
    EXPECT_EQ(out.points[0], 1.0f); // starts at the last point
    EXPECT_EQ(out.points[1], 0.0f);
    EXPECT_EQ(out.points[2 * out.count - 2], 1.0f);
    EXPECT_EQ(out.points[2 * out.count - 1], 0.0f);
    EXPECT_GT(SmoothCount(out), 0);
    // Starting on the curve, the last curve running into the start point:
    // closed once, without a repeated point.
    auto onStart = Contour({{1, 0, 1}, {0, 0, 1}, {0, -1, 0}, {1, -1, 0}});
    CExpList closed;
    FlattenCubicContour(*onStart, closed);
    const std::uint32_t n = closed.count;
    ASSERT_GE(n, 4u);
    EXPECT_EQ(closed.points[2 * n - 2], 1.0f);
    EXPECT_EQ(closed.points[2 * n - 1], 0.0f);
    EXPECT_FALSE(closed.points[2 * n - 4] == 1.0f && closed.points[2 * n - 3] == 0.0f);
    // Damaged control flags never read past the end.
    auto odd = Contour({{0, 0, 1}, {1, 0, 0}});
    CExpList oddOut;
    FlattenCubicContour(*odd, oddOut);
    EXPECT_GE(oddOut.count, 2u);
    for (float v : oddOut.points)
        EXPECT_TRUE(std::isfinite(v));
}
