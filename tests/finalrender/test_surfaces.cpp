// Transparency, textures, back faces and the outline of shapes in the final
// renderer, the last two against the interactive renderer.
#include "tests/finalrender/FinalRenderTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

using namespace frtest;
using q3test::Pixel;
using q3test::TestView;

namespace {

TQ3AttributeSet seeThroughSet(float r, float g, float b, float opacity) {
    TQ3AttributeSet set = q3test::colourSet(r, g, b);
    TQ3ColorRGB t{opacity, opacity, opacity};
    Q3AttributeSet_Add(set, kQ3AttributeTypeTransparencyColor, &t);
    return set;
}

// A square with UV from (0, 0) at the bottom left to (1, 1) at the top right.
TQ3GeometryObject uvSquare(float half, float z) {
    const float u[4] = {0, 1, 1, 0}, v[4] = {0, 0, 1, 1};
    const float x[4] = {-half, half, half, -half}, y[4] = {-half, -half, half, half};
    TQ3Vertex3D corners[4];
    for (int i = 0; i < 4; ++i) {
        TQ3AttributeSet s = Q3AttributeSet_New();
        TQ3Param2D uv{u[i], v[i]};
        Q3AttributeSet_Add(s, kQ3AttributeTypeSurfaceUV, &uv);
        corners[i] = {{x[i], y[i], z}, s};
    }
    TQ3PolygonData d{4, corners, nullptr};
    TQ3GeometryObject g = Q3Polygon_New(&d);
    for (TQ3Vertex3D& c : corners)
        Q3Object_Dispose(c.attributeSet);
    return g;
}

// Which pixels have any alpha.
std::vector<bool> coverage(const TestView& v) {
    std::vector<bool> m(static_cast<size_t>(v.width) * v.height);
    for (int y = 0; y < v.height; ++y)
        for (int x = 0; x < v.width; ++x)
            m[static_cast<size_t>(y) * v.width + x] = v.at(x, y).a > 0;
    return m;
}

} // namespace

// A half see-through white square partly over a red one: what lies behind
// shows through; over the transparent background the picture's alpha is
// partial with the flag and coverage without it, the colour premultiplied.
TEST(FinalSurfaces, SeeThroughSurfacesShowWhatIsBehindAndSetAlphaWithTheFlag) {
    TQ3AttributeSet glassSet = seeThroughSet(1, 1, 1, 0.5f);
    TQ3AttributeSet redSet = q3test::colourSet(1, 0, 0);
    TQ3GeometryObject glass = q3test::square(0.5f, 0.5f, glassSet);
    TQ3GeometryObject red = q3test::square(0.3f, 0, redSet);
    for (bool flag : {false, true}) {
        SCOPED_TRACE(flag ? "with the flag" : "without the flag");
        TestView v(32, 32, 5.0f, true);
        TQ3RendererObject r = useFinalRenderer(v, 2, flag);
        v.render([&](TQ3ViewObject view) { submitAll(view, {glass, red}); });
        if (flag) v.save("final_see_through");
        const Pixel behind = v.at(16, 16), glassOnly = v.at(10, 10);
        EXPECT_EQ(behind.a, 255);
        EXPECT_NEAR(behind.r, 255, 1); // half white + half red
        EXPECT_NEAR(behind.g, 128, 1);
        EXPECT_NEAR(glassOnly.a, flag ? 128 : 255, 1);
        EXPECT_NEAR(glassOnly.g, 128, 1); // half of white over transparent black
        EXPECT_EQ(v.at(2, 2).a, 0);
        EXPECT_EQ(premultipliedFaults(v), 0);
        Q3Object_Dispose(r);
    }
    for (TQ3Object o : {glass, red, glassSet, redSet})
        Q3Object_Dispose(o);
}

// A 2 by 2 texture over a square with null illumination: each quarter of the
// square shows its texel, the top row of the image at the top.
TEST(FinalSurfaces, TexturedQuadShowsItsTexels) {
    const std::uint32_t texels[4] = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFFFFFFu};
    TQ3StorageObject storage =
        Q3MemoryStorage_New(reinterpret_cast<const unsigned char*>(texels), sizeof texels);
    TQ3StoragePixmap pm{storage, 2, 2, 8, 32, kQ3PixelTypeRGB32, kQ3EndianLittle, kQ3EndianLittle};
    TQ3TextureObject texture = Q3PixmapTexture_New(&pm);
    ASSERT_NE(texture, nullptr);
    TQ3ShaderObject shader = Q3TextureShader_New(texture);
    Q3Shader_SetUBoundary(shader, kQ3ShaderUVBoundaryClamp);
    Q3Shader_SetVBoundary(shader, kQ3ShaderUVBoundaryClamp);
    TQ3GeometryObject sq = uvSquare(0.75f, 0); // texel centres fall on pixel centres
    TestView final(40, 40, 5.0f, true);
    TQ3RendererObject r = useFinalRenderer(final, 1);
    final.render([&](TQ3ViewObject view) { submitAll(view, {shader, sq}); });
    final.save("final_texture");
    struct Quarter {
        float x, y;
        int r, g, b;
    };
    for (Quarter q :
         {Quarter{-0.375f, 0.375f, 255, 0, 0}, Quarter{0.375f, 0.375f, 0, 255, 0},
          Quarter{-0.375f, -0.375f, 0, 0, 255}, Quarter{0.375f, -0.375f, 255, 255, 255}}) {
        SCOPED_TRACE(testing::Message() << "quarter " << q.x << ", " << q.y);
        const int px = pixelX(final, q.x), py = pixelY(final, q.y);
        const Pixel p = final.at(px, py);
        EXPECT_NEAR(p.r, q.r, 2);
        EXPECT_NEAR(p.g, q.g, 2);
        EXPECT_NEAR(p.b, q.b, 2);
        EXPECT_EQ(p.a, 255);
    }
    // between two quarters the texels blend
    const Pixel mid = final.at(pixelX(final, 0.0f), pixelY(final, 0.375f));
    EXPECT_GT(mid.r, 60);
    EXPECT_GT(mid.g, 60);
    Q3Object_Dispose(r);
    Q3Object_Dispose(sq);
    Q3Object_Dispose(shader);
    Q3Object_Dispose(texture);
    Q3Object_Dispose(storage);
}

// A square that turns its back to the camera is gone with the style that
// removes back faces, lit as a front face with the style that flips it, and
// lit from behind (dark here) with the style that keeps both; the orientation
// style decides which side is the front. Both renderers alike.
TEST(FinalSurfaces, BackFacesFollowTheBackfacingAndOrientationStyles) {
    TQ3Point3D corners[4] = {
        {-0.5f, -0.5f, 0}, {-0.5f, 0.5f, 0}, {0.5f, 0.5f, 0}, {0.5f, -0.5f, 0}};
    TQ3GeometryObject back = polygon(corners, 4); // clockwise seen from +z
    TQ3Point3D front[4] = {{-0.5f, -0.5f, 0}, {0.5f, -0.5f, 0}, {0.5f, 0.5f, 0}, {-0.5f, 0.5f, 0}};
    TQ3GeometryObject facing = polygon(front, 4);
    TQ3ShaderObject lambert = Q3LambertIllumination_New();
    struct Case {
        TQ3BackfacingStyle backfacing;
        TQ3OrientationStyle orientation;
        int backRed, frontRed; // -1: not drawn
    };
    for (Case c : {Case{kQ3BackfacingStyleRemove, kQ3OrientationStyleCounterClockwise, -1, 255},
                   Case{kQ3BackfacingStyleRemove, kQ3OrientationStyleClockwise, 255, -1},
                   Case{kQ3BackfacingStyleBoth, kQ3OrientationStyleCounterClockwise, 0, 255},
                   Case{kQ3BackfacingStyleFlip, kQ3OrientationStyleCounterClockwise, 255, 255}}) {
        SCOPED_TRACE(testing::Message()
                     << "backfacing " << c.backfacing << ", orientation " << c.orientation);
        TQ3StyleObject b = Q3BackfacingStyle_New(c.backfacing);
        TQ3StyleObject o = Q3OrientationStyle_New(c.orientation);
        for (bool useFinal : {false, true}) {
            SCOPED_TRACE(useFinal ? "final" : "interactive");
            TestView v(24, 24, 5.0f, true);
            TQ3RendererObject r = useFinal ? useFinalRenderer(v) : nullptr;
            v.addLight(q3test::directional(0, 0, -1, 1.0f)); // from the camera
            for (auto [shape, red] : {std::pair{back, c.backRed}, {facing, c.frontRed}}) {
                v.render([&](TQ3ViewObject view) { submitAll(view, {lambert, b, o, shape}); });
                const Pixel p = v.at(12, 12);
                EXPECT_EQ(p.a, red < 0 ? 0 : 255);
                if (red >= 0) {
                    EXPECT_NEAR(p.r, red, 2);
                }
            }
            if (r) Q3Object_Dispose(r);
        }
        Q3Object_Dispose(b);
        Q3Object_Dispose(o);
    }
    Q3Object_Dispose(lambert);
    Q3Object_Dispose(back);
    Q3Object_Dispose(facing);
}

// Both renderers cover the same pixels of a shape in perspective; they may
// differ only on the outline, where a pixel's centre lies within a rounding
// of the edge.
TEST(FinalSurfaces, CoversThePixelsTheInteractiveRendererCovers) {
    TQ3Point3D star[10];
    for (int i = 0; i < 10; ++i) {
        const float a = 0.3f + i * 0.6283185f, rad = i % 2 ? 1.1f : 2.6f;
        star[i] = {rad * std::cos(a), rad * std::sin(a), 0.4f * std::sin(a)};
    }
    // a star is not convex, so it goes as ten triangles round its middle
    std::vector<TQ3GeometryObject> parts;
    TQ3AttributeSet blue = q3test::colourSet(0.2f, 0.3f, 0.9f);
    for (int i = 0; i < 10; ++i) {
        TQ3Point3D t[3] = {{0, 0, 0}, star[i], star[(i + 1) % 10]};
        parts.push_back(polygon(t, 3, blue));
    }
    TQ3Point3D slab[4] = {
        {-3.5f, -3.2f, -1}, {3.1f, -2.9f, -2}, {3.3f, -2.0f, -2}, {-3.4f, -2.4f, -1}};
    parts.push_back(polygon(slab, 4, blue));
    auto draw = [&](TestView& v) {
        v.addLight(q3test::ambient(1.0f));
        v.render([&](TQ3ViewObject view) {
            for (TQ3GeometryObject g : parts)
                Q3Object_Submit(g, view);
        });
    };
    TestView interactive(120, 90);
    draw(interactive);
    TestView final(120, 90);
    TQ3RendererObject r = useFinalRenderer(final);
    draw(final);
    final.save("final_coverage");
    interactive.save("final_coverage_interactive");
    const std::vector<bool> a = coverage(interactive), b = coverage(final);
    int covered = 0, outline = 0, inner = 0;
    for (int y = 0; y < final.height; ++y)
        for (int x = 0; x < final.width; ++x) {
            const size_t i = static_cast<size_t>(y) * final.width + x;
            covered += b[i];
            if (a[i] == b[i]) continue;
            // a mismatch must have a neighbour of the other kind in the same picture
            bool edge = false;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx) {
                    int nx = x + dx, ny = y + dy;
                    if (nx < 0 || ny < 0 || nx >= final.width || ny >= final.height) continue;
                    if (b[static_cast<size_t>(ny) * final.width + nx] != b[i]) edge = true;
                }
            (edge ? outline : inner)++;
        }
    EXPECT_GT(covered, 800);
    EXPECT_EQ(inner, 0);
    EXPECT_LT(outline, covered / 20);
    Q3Object_Dispose(r);
    for (TQ3GeometryObject g : parts)
        Q3Object_Dispose(g);
    Q3Object_Dispose(blue);
}
