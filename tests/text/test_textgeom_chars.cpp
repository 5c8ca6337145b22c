// Solid and hollow letters: closed bodies facing out, bands, transparency,
// side colours, texture coordinates and the plain outlines.

#include "tests/text/TextGeomFixture.h"
#include "text/VHollowChar.h"
#include "text/VSolidChar.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace textgeom;

namespace {

// Whether (x, y) lies in the filled part of an outer contour with its holes
// (even-odd over all of them).
bool InFill(const OuterContour& outer, float x, float y) {
    auto crossings = [&](const float* p, std::uint32_t n) {
        int c = 0;
        for (std::uint32_t i = 0; i + 1 < n; ++i) {
            const float x0 = p[2 * i], y0 = p[2 * i + 1], x1 = p[2 * i + 2], y1 = p[2 * i + 3];
            if ((y0 > y) != (y1 > y) && x < x0 + (y - y0) / (y1 - y0) * (x1 - x0)) ++c;
        }
        return c;
    };
    int c = crossings(outer.points, outer.count);
    for (const HoleContour* h = outer.holes; h; h = h->next)
        c += crossings(h->points, h->count);
    return c % 2 == 1;
}

double FillArea(const OuterContour& outer) {
    double a = std::fabs(TwiceArea(outer.points, outer.count));
    for (const HoleContour* h = outer.holes; h; h = h->next)
        a -= std::fabs(TwiceArea(h->points, h->count));
    return a / 2;
}

TQ3Vector3D Newell(const std::vector<WalkedVertex>& contour) {
    TQ3Vector3D n{0, 0, 0};
    for (size_t i = 0; i < contour.size(); ++i) {
        const TQ3Point3D& a = contour[i].point;
        const TQ3Point3D& b = contour[(i + 1) % contour.size()].point;
        n.x += (a.y - b.y) * (a.z + b.z);
        n.y += (a.z - b.z) * (a.x + b.x);
        n.z += (a.x - b.x) * (a.y + b.y);
    }
    return n;
}

// A hand-made square of side 2 with a square hole of side 1, the outer
// clockwise seen from +z as the fonts deliver it.
struct SquareWithHole {
    float outerPoints[10] = {0, 0, 0, 2, 2, 2, 2, 0, 0, 0};
    float holePoints[10] = {0.5f, 0.5f, 1.5f, 0.5f, 1.5f, 1.5f, 0.5f, 1.5f, 0.5f, 0.5f};
    HoleContour hole{holePoints, nullptr, 5, nullptr};
    OuterContour outer{outerPoints, nullptr, 5, nullptr, &hole};
};

} // namespace

TEST_F(TextGeomTest, SolidLettersAreClosedBodiesFacingOut) {
    Chain chain = Read("Lumerra 3D B8%@&g");
    ASSERT_TRUE(chain);
    const float depthValue = 10; // a body 2 deep
    int withHoles = 0;
    for (const OuterContour* outer : Outers(chain.get())) {
        // The fonts deliver outer contours clockwise seen from +z.
        ASSERT_LT(TwiceArea(outer->points, outer->count), 0);
        VSolidChar solid(*outer, depthValue, -0.3f, 0.8f, 1.0f, nullptr);
        const Walked w = Walk(solid.object);
        const int holes = HoleCount(*outer);
        withHoles += holes > 0;
        ASSERT_EQ(w.polygons.size(), 2u);
        ASSERT_EQ(w.polygons[0].contours.size(), 1u + holes);
        EXPECT_EQ(w.grids.size(), 1u + holes) << "a band for each contour";
        EXPECT_EQ(UnpairedEdges(w), 0u) << "faces and bands meet without gaps";
        // Positive volume: every face and band looks out of the body; it is
        // as large as the letter's area times the depth.
        const double expected = FillArea(*outer) * 2.0;
        EXPECT_NEAR(SignedVolume(w), expected, 1e-3 * expected + 1e-6);
        // The near face lies at -1 and looks toward -z, the far one at +1.
        EXPECT_FLOAT_EQ(w.polygons[0].contours[0][0].point.z, -1.0f);
        EXPECT_FLOAT_EQ(w.polygons[1].contours[0][0].point.z, 1.0f);
        EXPECT_LT(Newell(w.polygons[0].contours[0]).z, 0);
        EXPECT_GT(Newell(w.polygons[1].contours[0]).z, 0);
        // Round parts carry normals that look out of the body: toward the
        // air (or the hole) beside at least one of the point's two edges.
        for (const WalkedGrid& g : w.grids)
            for (std::uint32_t i = 0; i < g.columns; ++i) {
                const WalkedVertex& v = g.vertices[i];
                if (!v.hasNormal) continue;
                EXPECT_NEAR(v.normal.z, 0, 1e-6);
                bool outward = false;
                for (std::uint32_t j :
                     {i == 0 ? g.columns - 2 : i - 1, i == g.columns - 1 ? 1 : i + 1}) {
                    const TQ3Point3D& o = g.vertices[j].point;
                    const float mx = (v.point.x + o.x) / 2, my = (v.point.y + o.y) / 2;
                    const float len = std::hypot(o.x - v.point.x, o.y - v.point.y);
                    if (!(len > 0)) continue;
                    // Of the edge's two sides, the one away from the fill.
                    float px = -(o.y - v.point.y) / len, py = (o.x - v.point.x) / len;
                    const float e = 1e-4f;
                    if (InFill(*outer, mx + e * px, my + e * py)) px = -px, py = -py;
                    outward |= v.normal.x * px + v.normal.y * py > 0;
                }
                EXPECT_TRUE(outward) << v.point.x << "," << v.point.y;
            }
    }
    EXPECT_GE(withHoles, 5) << "e, a, D, B, 8, % and @ have holes";
}

TEST_F(TextGeomTest, SmoothAndCornerPointsOfTheBand) {
    Chain chain = Read("O");
    ASSERT_TRUE(chain);
    VSolidChar o(*chain->contours, 10, 0, 1, 1.0f, nullptr);
    const Walked round = Walk(o.object);
    for (const WalkedGrid& g : round.grids)
        for (const WalkedVertex& v : g.vertices)
            EXPECT_TRUE(v.hasNormal) << "an O is curves all round";
    // A square has four corners between straight edges: no normals at all.
    SquareWithHole square;
    VSolidChar flat(square.outer, 10, 0, 2, 1.0f, nullptr);
    for (const WalkedGrid& g : Walk(flat.object).grids)
        for (const WalkedVertex& v : g.vertices)
            EXPECT_FALSE(v.hasNormal);
    // A straight wall that runs into a curve keeps its own normal at the
    // joint: (0,0)-(2,0) is straight, the point (2,0) starts a curve.
    float points[] = {0, 0, 0, 2, 2, 2, 2, 0, 0, 0};
    std::uint8_t smooth[] = {0, 0, 0, 0, 0};
    smooth[2] = 1; // (2,2) lies inside a curve
    OuterContour joint{points, smooth, 5, nullptr, nullptr};
    VSolidChar joined(joint, 10, 0, 2, 1.0f, nullptr);
    const Walked joinedWalk = Walk(joined.object);
    ASSERT_EQ(joinedWalk.grids.size(), 1u);
    const WalkedGrid& band = joinedWalk.grids[0];
    // (0,2) comes before the curve: its next point is smooth and it is
    // not, so it takes the edge from (0,0) to it, whose normal looks to -x.
    const WalkedVertex& before = band.vertices[1];
    ASSERT_TRUE(before.hasNormal);
    EXPECT_NEAR(before.normal.x, -1, 1e-6);
    EXPECT_NEAR(before.normal.y, 0, 1e-6);
    // (2,0) after the curve takes the edge to (0,0): normal toward -y.
    const WalkedVertex& after = band.vertices[3];
    ASSERT_TRUE(after.hasNormal);
    EXPECT_NEAR(after.normal.x, 0, 1e-6);
    EXPECT_NEAR(after.normal.y, -1, 1e-6);
    // The smooth point takes the chord from (0,2) to (2,0): a diagonal.
    const WalkedVertex& middle = band.vertices[2];
    ASSERT_TRUE(middle.hasNormal);
    EXPECT_NEAR(middle.normal.x, std::numbers::sqrt2 / 2, 1e-6);
    EXPECT_NEAR(middle.normal.y, std::numbers::sqrt2 / 2, 1e-6);
    // The corner (0,0) between two straight edges has none.
    EXPECT_FALSE(band.vertices[0].hasNormal);
}

TEST_F(TextGeomTest, HolesCutThroughTheBody) {
    SquareWithHole square;
    VSolidChar solid(square.outer, 5, 0, 2, 1.0f, nullptr);
    const Walked w = Walk(solid.object);
    ASSERT_EQ(w.polygons.size(), 2u);
    EXPECT_EQ(w.polygons[1].contours.size(), 2u);
    ASSERT_EQ(w.grids.size(), 2u);
    EXPECT_EQ(w.grids[1].columns, 5u);
    EXPECT_EQ(UnpairedEdges(w), 0u);
    EXPECT_NEAR(SignedVolume(w), 3.0 * 1.0, 1e-5);
}

TEST_F(TextGeomTest, DepthZeroGivesTwoFacesAndNoBand) {
    SquareWithHole square;
    VSolidChar flat(square.outer, 0, 0, 2, 1.0f, nullptr);
    EXPECT_EQ(flat.depth, 0.0f);
    const Walked w = Walk(flat.object);
    ASSERT_EQ(w.polygons.size(), 2u);
    EXPECT_TRUE(w.grids.empty());
    for (const WalkedPolygon& p : w.polygons)
        for (const auto& contour : p.contours)
            for (const WalkedVertex& v : contour)
                EXPECT_EQ(v.point.z, 0.0f);
    // Coincident and turned opposite ways: one is always culled.
    EXPECT_LT(Newell(w.polygons[0].contours[0]).z * Newell(w.polygons[1].contours[0]).z, 0);
}

TEST_F(TextGeomTest, TransparencyReachesEveryPartOnlyBelowFullOpacity) {
    Chain chain = Read("B");
    ASSERT_TRUE(chain);
    const OuterContour& b = *chain->contours;
    {
        VSolidChar opaque(b, 10, 0, 1, 1.0f, nullptr);
        const Walked w = Walk(opaque.object);
        EXPECT_TRUE(w.backfacing.empty());
        EXPECT_EQ(w.transparentSets, 0u);
        for (const WalkedPolygon& p : w.polygons) {
            EXPECT_FALSE(p.transparent);
            for (const auto& contour : p.contours)
                for (const WalkedVertex& v : contour)
                    EXPECT_FALSE(v.transparent);
        }
        for (const WalkedGrid& g : w.grids) {
            EXPECT_FALSE(g.transparent);
            EXPECT_EQ(g.transparentFacets, 0u);
            for (const WalkedVertex& v : g.vertices)
                EXPECT_FALSE(v.transparent);
        }
    }
    VSolidChar glass(b, 10, 0, 1, 0.4f, nullptr);
    const Walked w = Walk(glass.object);
    ASSERT_EQ(w.backfacing.size(), 1u);
    EXPECT_EQ(w.backfacing[0], kQ3BackfacingStyleBoth);
    for (const WalkedPolygon& p : w.polygons) {
        EXPECT_TRUE(p.transparent);
        for (const auto& contour : p.contours)
            for (const WalkedVertex& v : contour) {
                EXPECT_TRUE(v.transparent);
                EXPECT_TRUE(v.hasUV) << "the vertex keeps its texture coordinates";
            }
    }
    for (const WalkedGrid& g : w.grids) {
        EXPECT_TRUE(g.transparent);
        EXPECT_EQ(g.transparentFacets, 2 * g.columns - 2);
        for (const WalkedVertex& v : g.vertices)
            EXPECT_TRUE(v.transparent);
    }
}

TEST_F(TextGeomTest, SideColourGoesOnTheBandAlone) {
    Chain chain = Read("o");
    ASSERT_TRUE(chain);
    const std::uint16_t red[3] = {65535, 0, 32768};
    VSolidChar coloured(*chain->contours, 10, 0, 1, 1.0f, red);
    const Walked w = Walk(coloured.object);
    ASSERT_EQ(w.grids.size(), 2u);
    for (const WalkedGrid& g : w.grids) {
        EXPECT_TRUE(g.coloured);
        EXPECT_FLOAT_EQ(g.colour.r, 1.0f);
        EXPECT_FLOAT_EQ(g.colour.g, 0.0f);
        EXPECT_NEAR(g.colour.b, 0.5f, 1e-4);
    }
    VSolidChar plain(*chain->contours, 10, 0, 1, 1.0f, nullptr);
    for (const WalkedGrid& g : Walk(plain.object).grids)
        EXPECT_FALSE(g.coloured);
}

TEST_F(TextGeomTest, TextureCoordinatesSpanTheTextsHeight) {
    Chain chain = Read("Hg");
    ASSERT_TRUE(chain);
    float yMin = 1e30f, yMax = -1e30f;
    for (const TextCharacter* c = chain.get(); c; c = c->next) {
        yMin = std::min(yMin, c->yMin);
        yMax = std::max(yMax, c->yMax);
    }
    float vLow = 1e30f, vHigh = -1e30f;
    for (const OuterContour* outer : Outers(chain.get())) {
        VSolidChar solid(*outer, 10, yMin, yMax, 1.0f, nullptr);
        const Walked w = Walk(solid.object);
        for (const auto& contour : w.polygons[0].contours)
            for (const WalkedVertex& v : contour) {
                ASSERT_TRUE(v.hasUV);
                vLow = std::min(vLow, v.uv.v);
                vHigh = std::max(vHigh, v.uv.v);
            }
        // Across the band v follows the contour's length and u the depth.
        const WalkedGrid& band = w.grids.at(0);
        const WalkedVertex& last = band.vertices[band.columns - 1];
        double perimeter = 0;
        for (std::uint32_t i = 1; i < outer->count; ++i)
            perimeter += std::hypot(outer->points[2 * i] - outer->points[2 * i - 2],
                                    outer->points[2 * i + 1] - outer->points[2 * i - 1]);
        EXPECT_NEAR(last.uv.v, perimeter * solid.textureScale, 1e-3);
        float uLow = 1e30f, uHigh = -1e30f;
        for (const WalkedVertex& v : band.vertices) {
            uLow = std::min(uLow, v.uv.u);
            uHigh = std::max(uHigh, v.uv.u);
        }
        EXPECT_EQ(uLow, 0.0f);
        EXPECT_NEAR(uHigh, solid.depth / 2 * solid.textureScale, 1e-6);
    }
    // The g reaches the bottom and the H the top of the text.
    EXPECT_NEAR(vLow, 0.0f, 1e-5);
    EXPECT_NEAR(vHigh, 1.0f, 1e-5);

    // A text of no height (a dash) keeps a scale of 1.
    SquareWithHole square;
    VSolidChar dash(square.outer, 10, 0.25f, 0.25f, 1.0f, nullptr);
    EXPECT_EQ(dash.textureScale, 1.0f);
}

TEST_F(TextGeomTest, ShortAndEmptyContoursAreLeftOut) {
    float dot[] = {1, 1, 1, 1};
    OuterContour single{dot, nullptr, 2, nullptr, nullptr};
    VSolidChar nothing(single, 10, 0, 1, 1.0f, nullptr);
    Walked w = Walk(nothing.object);
    EXPECT_TRUE(w.polygons.empty());
    EXPECT_TRUE(w.grids.empty());
    OuterContour none{nullptr, nullptr, 0, nullptr, nullptr};
    VHollowChar hollowNothing(none, 0);
    EXPECT_TRUE(Walk(hollowNothing.object).lines.empty());
    // A hole of a single point does not spoil the letter around it.
    SquareWithHole square;
    HoleContour speck{dot, nullptr, 2, nullptr};
    square.hole.next = &speck;
    VSolidChar solid(square.outer, 10, 0, 2, 1.0f, nullptr);
    w = Walk(solid.object);
    EXPECT_EQ(w.polygons.at(0).contours.size(), 2u);
    EXPECT_EQ(UnpairedEdges(w), 0u);
    // Depths from outside the range give no NaN: none counts as 0.
    VSolidChar odd(square.outer, std::nanf(""), 0, 2, std::nanf(""), nullptr);
    EXPECT_EQ(odd.depth, 0.0f);
    EXPECT_EQ(odd.opacity, 1.0f);
}

TEST_F(TextGeomTest, HollowLettersAreCagesOrPlainLines) {
    Chain chain = Read("a");
    ASSERT_TRUE(chain);
    const OuterContour& a = *chain->contours;
    ASSERT_EQ(HoleCount(a), 1);
    VHollowChar cage(a, 10);
    EXPECT_EQ(cage.halfDepth, 1.0f);
    Walked w = Walk(cage.object);
    EXPECT_TRUE(w.polygons.empty());
    ASSERT_EQ(w.fills.size(), 1u);
    EXPECT_EQ(w.fills[0], kQ3FillStyleEdges);
    ASSERT_EQ(w.backfacing.size(), 1u);
    EXPECT_EQ(w.backfacing[0], kQ3BackfacingStyleBoth);
    ASSERT_EQ(w.grids.size(), 2u);
    EXPECT_EQ(w.grids[0].columns, a.count);
    // Total width 2, from -1 to 1, the same as the solid body of that depth.
    for (const WalkedGrid& g : w.grids)
        for (std::uint32_t i = 0; i < g.columns; ++i) {
            EXPECT_EQ(g.vertices[i].point.z, 1.0f);
            EXPECT_EQ(g.vertices[g.columns + i].point.z, -1.0f);
            EXPECT_FALSE(g.vertices[i].hasUV);
            EXPECT_FALSE(g.vertices[i].hasNormal);
        }

    VHollowChar flat(a, 0);
    w = Walk(flat.object);
    EXPECT_TRUE(w.grids.empty());
    EXPECT_TRUE(w.fills.empty());
    ASSERT_EQ(w.lines.size(), 2u);
    ASSERT_EQ(w.lines[0].points.size(), a.count);
    for (std::uint32_t i = 0; i < a.count; ++i) {
        EXPECT_EQ(w.lines[0].points[i].x, a.points[2 * i]);
        EXPECT_EQ(w.lines[0].points[i].y, a.points[2 * i + 1]);
        EXPECT_EQ(w.lines[0].points[i].z, 0.0f);
    }
}

TEST_F(TextGeomTest, LongOutlinesRunOnInSeveralLines) {
    // A circle of 700 points, more than one polyline holds.
    const std::uint32_t n = 701;
    std::vector<float> points(2 * n);
    for (std::uint32_t i = 0; i < n; ++i) {
        const double t = -2 * std::numbers::pi * (i % (n - 1)) / (n - 1);
        points[2 * i] = static_cast<float>(std::cos(t));
        points[2 * i + 1] = static_cast<float>(std::sin(t));
    }
    OuterContour circle{points.data(), nullptr, n, nullptr, nullptr};
    VHollowChar flat(circle, 0);
    const Walked w = Walk(flat.object);
    ASSERT_GE(w.lines.size(), 3u);
    std::vector<TQ3Point3D> joined;
    for (const WalkedLine& line : w.lines) {
        EXPECT_LE(line.points.size(), 262u);
        // Each piece starts where the one before ended.
        if (!joined.empty()) {
            EXPECT_EQ(line.points.front().x, joined.back().x);
            EXPECT_EQ(line.points.front().y, joined.back().y);
            joined.pop_back();
        }
        joined.insert(joined.end(), line.points.begin(), line.points.end());
    }
    ASSERT_EQ(joined.size(), n);
    for (std::uint32_t i = 0; i < n; ++i)
        EXPECT_EQ(joined[i].x, points[2 * i]);
    // The solid letter of a contour that long is one body all the same.
    VSolidChar solid(circle, 5, -1, 1, 1.0f, nullptr);
    const Walked s = Walk(solid.object);
    EXPECT_EQ(UnpairedEdges(s), 0u);
    EXPECT_GT(SignedVolume(s), 0);
}
