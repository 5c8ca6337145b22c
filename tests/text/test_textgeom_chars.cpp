// Solid and hollow letters: closed bodies facing out, bands, transparency,
// side colours and the plain outlines.

#include "tests/text/TextGeomFixture.h"
#include "text/VHollowChar.h"
#include "text/VSolidChar.h"

#include <cmath>
#include <numbers>

using namespace textgeom;

namespace {

// Whether (x, y) lies in the filled part of an outer contour with its holes.
bool InFill(const OuterContour& outer, float x, float y) {
    int c = 0;
    auto cross = [&](const float* p, std::uint32_t n) {
        for (std::uint32_t i = 0; i + 1 < n; ++i) {
            const float x0 = p[2 * i], y0 = p[2 * i + 1], x1 = p[2 * i + 2], y1 = p[2 * i + 3];
            if ((y0 > y) != (y1 > y) && x < x0 + (y - y0) / (y1 - y0) * (x1 - x0)) ++c;
        }
    };
    cross(outer.points, outer.count);
    for (const HoleContour* h = outer.holes; h; h = h->next)
        cross(h->points, h->count);
    return c % 2 == 1;
}

double FillArea(const OuterContour& outer) {
    double a = std::fabs(TwiceArea(outer.points, outer.count));
    for (const HoleContour* h = outer.holes; h; h = h->next)
        a -= std::fabs(TwiceArea(h->points, h->count));
    return a / 2;
}

// Whether a band vertex's normal looks toward the air beside at least one
// of the point's two edges.
bool LooksOut(const OuterContour& outer, const WalkedGrid& g, std::uint32_t i) {
    const WalkedVertex& v = g.vertices[i];
    bool out = false;
    for (std::uint32_t j : {i == 0 ? g.columns - 2 : i - 1, i == g.columns - 1 ? 1 : i + 1}) {
        const TQ3Point3D& o = g.vertices[j].point;
        const float len = std::hypot(o.x - v.point.x, o.y - v.point.y);
        if (!(len > 0)) continue;
        float px = -(o.y - v.point.y) / len, py = (o.x - v.point.x) / len;
        const float mx = (v.point.x + o.x) / 2 + 1e-4f * px,
                    my = (v.point.y + o.y) / 2 + 1e-4f * py;
        if (InFill(outer, mx, my)) px = -px, py = -py;
        out |= v.normal.x * px + v.normal.y * py > 0;
    }
    return out;
}

} // namespace

TEST_F(TextGeomTest, SolidLettersAreClosedBodiesFacingOut) {
    Chain chain = Read("Lumerra 3D B8%@&g");
    ASSERT_TRUE(chain);
    int withHoles = 0;
    for (const OuterContour* outer : Outers(chain.get())) {
        // The fonts deliver outer contours clockwise seen from +z.
        ASSERT_LT(TwiceArea(outer->points, outer->count), 0);
        VSolidChar solid(*outer, 10, -0.3f, 0.8f, 1.0f, nullptr); // 2 deep
        const Walked w = Walk(solid.object);
        const size_t contours = 1 + HoleCount(*outer);
        withHoles += contours > 1;
        ASSERT_EQ(w.polygons.size(), 2u);
        ASSERT_EQ(w.polygons[0].contours.size(), contours);
        EXPECT_EQ(w.grids.size(), contours) << "a band for each contour";
        EXPECT_EQ(UnpairedEdges(w), 0u) << "faces and bands meet without gaps";
        // Everything faces out, and the body is the letter's area times 2.
        const double volume = FillArea(*outer) * 2.0;
        EXPECT_NEAR(SignedVolume(w), volume, 1e-3 * volume);
        EXPECT_FLOAT_EQ(w.polygons[0].contours[0][0].point.z, -1.0f);
        EXPECT_FLOAT_EQ(w.polygons[1].contours[0][0].point.z, 1.0f);
        for (const WalkedGrid& g : w.grids)
            for (std::uint32_t i = 0; i < g.columns; ++i)
                if (g.vertices[i].hasNormal) {
                    EXPECT_TRUE(LooksOut(*outer, g, i)) << g.vertices[i].point.x;
                }
    }
    EXPECT_GE(withHoles, 5);
    // Depth 0: two coincident faces turned opposite ways, and no band.
    const OuterContour& b = *Outers(chain.get()).at(0);
    VSolidChar flat(b, 0, 0, 1, 1.0f, nullptr);
    const Walked w = Walk(flat.object);
    ASSERT_EQ(w.polygons.size(), 2u);
    EXPECT_TRUE(w.grids.empty());
    EXPECT_EQ(w.polygons[1].contours[0][0].point.z, 0.0f);
    EXPECT_NEAR(SignedVolume(w), 0, 1e-9);
    EXPECT_EQ(UnpairedEdges(w), 0u);
}

TEST_F(TextGeomTest, NormalsOfCurvesJointsAndCorners) {
    // A square whose corner (2, 2) subdivision put inside a curve.
    float points[] = {0, 0, 0, 2, 2, 2, 2, 0, 0, 0};
    std::uint8_t smooth[] = {0, 0, 1, 0, 0};
    OuterContour joint{points, smooth, 5, nullptr, nullptr};
    VSolidChar solid(joint, 10, 0, 2, 1.0f, nullptr);
    const Walked w = Walk(solid.object);
    ASSERT_EQ(w.grids.size(), 1u);
    const std::vector<WalkedVertex>& v = w.grids[0].vertices;
    // The corner between two straight edges takes its triangles' normals.
    EXPECT_FALSE(v[0].hasNormal);
    // Straight walls that run into the curve keep their own normals.
    ASSERT_TRUE(v[1].hasNormal && v[3].hasNormal && v[2].hasNormal);
    EXPECT_NEAR(v[1].normal.x, -1, 1e-6);
    EXPECT_NEAR(v[3].normal.y, -1, 1e-6);
    // The curve's point takes the chord of its neighbours.
    EXPECT_NEAR(v[2].normal.x, std::numbers::sqrt2 / 2, 1e-6);
    EXPECT_NEAR(v[2].normal.y, std::numbers::sqrt2 / 2, 1e-6);
    EXPECT_EQ(v[7].normal.x, v[2].normal.x) << "both rows of a column alike";
}

TEST_F(TextGeomTest, TransparencyAndSideColour) {
    Chain chain = Read("B");
    ASSERT_TRUE(chain);
    const std::uint16_t side[3] = {65535, 0, 32768};
    for (float opacity : {1.0f, 0.4f}) {
        VSolidChar solid(*chain->contours, 10, 0, 1, opacity, side);
        const Walked w = Walk(solid.object);
        const bool glass = opacity < 1;
        // Both sides of a see-through letter are drawn; nothing else is.
        EXPECT_EQ(w.backfacing.size(), glass ? 1u : 0u);
        if (glass) {
            EXPECT_EQ(w.backfacing[0], kQ3BackfacingStyleBoth);
        }
        for (const WalkedPolygon& p : w.polygons) {
            EXPECT_EQ(p.transparent, glass);
            for (const auto& contour : p.contours)
                for (const WalkedVertex& v : contour)
                    EXPECT_TRUE(v.transparent == glass && v.hasUV);
        }
        ASSERT_EQ(w.grids.size(), 3u);
        for (const WalkedGrid& g : w.grids) {
            EXPECT_EQ(g.transparent, glass);
            EXPECT_EQ(g.transparentFacets, glass ? 2 * g.columns - 2 : 0u);
            for (const WalkedVertex& v : g.vertices)
                EXPECT_EQ(v.transparent, glass);
            EXPECT_TRUE(g.coloured);
            EXPECT_FLOAT_EQ(g.colour.r, 1.0f);
            EXPECT_NEAR(g.colour.b, 0.5f, 1e-4);
        }
    }
    VSolidChar plain(*chain->contours, 10, 0.5f, 0.5f, 1.0f, nullptr);
    EXPECT_EQ(plain.textureScale, 1.0f) << "a text of no height";
    for (const WalkedGrid& g : Walk(plain.object).grids)
        EXPECT_FALSE(g.coloured);
}

TEST_F(TextGeomTest, ShortContoursAndOddNumbersAreLeftOut) {
    float dot[] = {1, 1, 1, 1};
    OuterContour single{dot, nullptr, 2, nullptr, nullptr};
    VSolidChar nothing(single, 10, 0, 1, 1.0f, nullptr);
    EXPECT_TRUE(Walk(nothing.object).polygons.empty());
    OuterContour none{nullptr, nullptr, 0, nullptr, nullptr};
    VHollowChar hollowNothing(none, 0);
    EXPECT_TRUE(Walk(hollowNothing.object).lines.empty());
    // A hole of one point does not spoil the letter around it.
    Chain chain = Read("o");
    ASSERT_TRUE(chain);
    OuterContour o = *chain->contours;
    HoleContour speck{dot, nullptr, 2, o.holes};
    o.holes = &speck;
    VSolidChar solid(o, 10, 0, 1, std::nanf(""), nullptr);
    const Walked w = Walk(solid.object);
    EXPECT_EQ(w.polygons.at(0).contours.size(), 2u);
    EXPECT_EQ(UnpairedEdges(w), 0u);
    EXPECT_EQ(solid.opacity, 1.0f);
    VSolidChar noDepth(o, std::nanf(""), 0, 1, 1.0f, nullptr);
    EXPECT_EQ(noDepth.depth, 0.0f);
}

TEST_F(TextGeomTest, HollowLettersAreCagesOrPlainLines) {
    Chain chain = Read("a");
    ASSERT_TRUE(chain);
    const OuterContour& a = *chain->contours;
    VHollowChar cage(a, 10);
    Walked w = Walk(cage.object);
    EXPECT_TRUE(w.polygons.empty());
    ASSERT_EQ(w.fills.size(), 1u);
    EXPECT_EQ(w.fills[0], kQ3FillStyleEdges);
    ASSERT_EQ(w.backfacing.size(), 1u);
    EXPECT_EQ(w.backfacing[0], kQ3BackfacingStyleBoth);
    ASSERT_EQ(w.grids.size(), 2u);
    // From -1 to 1: as wide as the solid body of that depth is deep.
    for (const WalkedGrid& g : w.grids)
        for (std::uint32_t i = 0; i < g.columns; ++i) {
            EXPECT_EQ(g.vertices[i].point.z, 1.0f);
            EXPECT_EQ(g.vertices[g.columns + i].point.z, -1.0f);
            EXPECT_FALSE(g.vertices[i].hasUV || g.vertices[i].hasNormal);
        }
    VHollowChar flat(a, 0);
    w = Walk(flat.object);
    EXPECT_TRUE(w.grids.empty() && w.fills.empty());
    ASSERT_EQ(w.lines.size(), 2u);
    ASSERT_EQ(w.lines[0].size(), a.count);
    EXPECT_EQ(w.lines[0][3].y, a.points[7]);

    // A circle of 700 points runs on in several lines, each starting where
    // the last ended.
    const std::uint32_t n = 701;
    std::vector<float> circle(2 * n);
    for (std::uint32_t i = 0; i < n; ++i) {
        circle[2 * i] = std::cos(-2 * std::numbers::pi_v<float> * (i % (n - 1)) / (n - 1));
        circle[2 * i + 1] = std::sin(-2 * std::numbers::pi_v<float> * (i % (n - 1)) / (n - 1));
    }
    OuterContour round{circle.data(), nullptr, n, nullptr, nullptr};
    VHollowChar long_(round, 0);
    w = Walk(long_.object);
    ASSERT_GE(w.lines.size(), 3u);
    std::vector<TQ3Point3D> joined;
    for (const auto& line : w.lines) {
        EXPECT_LE(line.size(), 262u);
        if (!joined.empty()) {
            EXPECT_EQ(line.front().x, joined.back().x);
            joined.pop_back();
        }
        joined.insert(joined.end(), line.begin(), line.end());
    }
    ASSERT_EQ(joined.size(), n);
    EXPECT_EQ(joined[400].y, circle[801]);
}
