// Light, shadow and anti-aliasing of the final renderer, checked against the
// lighting equation and against the interactive renderer.
#include "tests/finalrender/FinalRenderTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace frtest;
using q3test::Pixel;
using q3test::TestView;

namespace {

struct Scene {
    TQ3ShaderObject phong = Q3PhongIllumination_New();
    ~Scene() { Q3Object_Dispose(phong); }
};

int to8(float v) {
    return static_cast<int>(std::clamp(v, 0.0f, 1.0f) * 255.0f + 0.5f);
}

void expectNear(const Pixel& p, int r, int g, int b, int a, int tolerance = 2) {
    EXPECT_NEAR(p.r, r, tolerance);
    EXPECT_NEAR(p.g, g, tolerance);
    EXPECT_NEAR(p.b, b, tolerance);
    EXPECT_NEAR(p.a, a, tolerance);
}

} // namespace

// A square at z = 0 lit by an ambient and a point light, seen by an
// orthographic camera: each pixel is ambient plus N.L diffuse plus the Phong
// highlight with the default specular colour 0.5 and exponent 8.
TEST(FinalShading, PixelsFollowTheLightingEquation) {
    TestView v(64, 64, 5.0f, true);
    TQ3RendererObject r = useFinalRenderer(v);
    const float lx = 0.3f, ly = 0.2f, lz = 1.5f, bright = 0.9f, amb = 0.2f;
    v.addLight(q3test::ambient(amb));
    v.addLight(pointLight(lx, ly, lz, bright));
    const float kd[3] = {0.8f, 0.5f, 0.2f};
    TQ3AttributeSet set = q3test::colourSet(kd[0], kd[1], kd[2]);
    TQ3GeometryObject sq = q3test::square(1.0f, 0.0f, set);
    Scene s;
    v.render([&](TQ3ViewObject view) { submitAll(view, {s.phong, sq}); });
    v.save("final_equation");
    for (auto [x, y] : {std::pair{0.0f, 0.0f}, {0.3f, 0.2f}, {-0.6f, 0.5f}, {0.7f, -0.8f}}) {
        const int px = pixelX(v, x), py = pixelY(v, y);
        // the centre of that pixel in the world
        const float wx = (px + 0.5f) / v.width * 2 - 1, wy = 1 - (py + 0.5f) / v.height * 2;
        float L[3] = {lx - wx, ly - wy, lz};
        const float d = std::sqrt(L[0] * L[0] + L[1] * L[1] + L[2] * L[2]);
        for (float& c : L)
            c /= d;
        const float nl = L[2];
        const float rv = 2 * nl - L[2]; // R.V with N = V = +z
        const float spec = bright * std::pow(std::max(rv, 0.0f), 8.0f) * 0.5f;
        const float diff = amb + bright * nl;
        SCOPED_TRACE(testing::Message() << "at " << x << ", " << y);
        expectNear(v.at(px, py), to8(kd[0] * diff + spec), to8(kd[1] * diff + spec),
                   to8(kd[2] * diff + spec), 255);
    }
    EXPECT_EQ(premultipliedFaults(v), 0);
    Q3Object_Dispose(sq);
    Q3Object_Dispose(set);
    Q3Object_Dispose(r);
}

// Under a directional light and an orthographic camera every point of a flat
// square has the same colour, so both renderers must give the same pixels,
// highlight included, whatever the Phong exponent: whole, not whole, beyond
// 64 or none.
TEST(FinalShading, SameColoursAsTheInteractiveRenderer) {
    for (float exponent : {8.0f, 5.0f, 12.5f, 0.0f, 80.0f}) {
        SCOPED_TRACE(testing::Message() << "exponent " << exponent);
        TQ3AttributeSet set = q3test::colourSet(0.3f, 0.6f, 0.9f);
        Q3AttributeSet_Add(set, kQ3AttributeTypeSpecularControl, &exponent);
        TQ3Point3D corners[4] = {
            {-0.8f, -0.7f, 0}, {0.9f, -0.5f, 0}, {0.6f, 0.8f, 0}, {-0.7f, 0.6f, 0}};
        TQ3GeometryObject quad = polygon(corners, 4, set);
        Scene s;
        auto draw = [&](TestView& v) {
            v.addLight(q3test::ambient(0.25f));
            v.addLight(q3test::directional(-0.3f, -0.4f, -1.0f, 0.8f));
            v.render([&](TQ3ViewObject view) { submitAll(view, {s.phong, quad}); });
        };
        TestView interactive(48, 48, 5.0f, true);
        draw(interactive);
        TestView final(48, 48, 5.0f, true);
        TQ3RendererObject r = useFinalRenderer(final);
        draw(final);
        final.save("final_same_colour");
        const Pixel want = interactive.at(24, 24);
        EXPECT_EQ(want.a, 255);
        for (auto [x, y] : {std::pair{24, 24}, {10, 30}, {35, 12}}) {
            SCOPED_TRACE(testing::Message() << "pixel " << x << ", " << y);
            expectNear(final.at(x, y), want.r, want.g, want.b, 255, 2);
            expectNear(interactive.at(x, y), want.r, want.g, want.b, 255, 2);
        }
        Q3Object_Dispose(quad);
        Q3Object_Dispose(set);
        Q3Object_Dispose(r);
    }
}

// A small quad above a large plane, lit from the side: the plane is dark
// (ambient only) where the quad hides the light, unless shadows are off for
// the light or the renderer; a see-through quad lets half the light through.
TEST(FinalShading, QuadCastsAShadowOnAPlane) {
    Scene s;
    TQ3AttributeSet grey = q3test::colourSet(0.8f, 0.8f, 0.8f);
    TQ3AttributeSet glass = q3test::colourSet(0.8f, 0.8f, 0.8f);
    TQ3ColorRGB half{0.5f, 0.5f, 0.5f};
    Q3AttributeSet_Add(glass, kQ3AttributeTypeTransparencyColor, &half);
    TQ3GeometryObject plane = q3test::square(6.0f, 0.0f, grey);
    TQ3GeometryObject blocker = q3test::square(0.5f, 1.0f, grey);
    TQ3GeometryObject pane = q3test::square(0.5f, 1.0f, glass);
    const float amb = 0.2f;
    // world x on the plane (y = 0) to pixel, for the camera at z = 5 with a
    // 90 degree field
    auto px = [](const TestView& v, float x) {
        return static_cast<int>((x / 5 + 1) / 2 * v.width);
    };
    struct Case {
        bool lightCasts, rendererShadows, shadowed, seeThrough;
        const char* name;
    };
    int open = 0; // the plane where nothing casts
    for (Case c : {Case{false, true, false, false, "final_no_cast"},
                   Case{true, true, true, false, "final_shadow"},
                   Case{true, false, false, false, "final_shadows_off"},
                   Case{true, true, false, true, "final_pale_shadow"}}) {
        SCOPED_TRACE(c.name);
        TestView v(96, 96);
        TQ3RendererObject r = useFinalRenderer(v);
        Q3LightWorks_SL_SetShadows(r, c.rendererShadows ? kQ3True : kQ3False);
        v.addLight(q3test::ambient(amb));
        v.addLight(pointLight(-2, 0, 3, 1.0f, c.lightCasts));
        TQ3GeometryObject top = c.seeThrough ? pane : blocker;
        v.render([&](TQ3ViewObject view) { submitAll(view, {s.phong, plane, top}); });
        v.save(c.name);
        const Pixel inShadow = v.at(px(v, 1.2f), v.height / 2);
        const Pixel lit = v.at(px(v, -1.2f), v.height / 2);
        const int ambientOnly = to8(0.8f * amb);
        if (!c.lightCasts) open = inShadow.r;
        if (c.seeThrough)
            EXPECT_NEAR(inShadow.r, (open + ambientOnly) / 2, 3);
        else if (c.shadowed)
            EXPECT_NEAR(inShadow.r, ambientOnly, 2);
        else
            EXPECT_GT(inShadow.r, ambientOnly + 60);
        EXPECT_GT(lit.r, ambientOnly + 60);
        EXPECT_EQ(premultipliedFaults(v), 0);
        Q3Object_Dispose(r);
    }
    for (TQ3Object o : {plane, blocker, pane, grey, glass})
        Q3Object_Dispose(o);
}

// With one sample a pixel is in or out; with several, pixels along a slanted
// edge get the share of their area that the shape covers.
TEST(FinalShading, AntiAliasedEdgesGiveIntermediateAlpha) {
    TQ3Point3D corners[3] = {{-0.83f, -0.71f, 0}, {0.77f, -0.37f, 0}, {-0.13f, 0.81f, 0}};
    TQ3GeometryObject tri = polygon(corners, 3);
    for (unsigned samples : {1u, 3u}) {
        TestView v(64, 64, 5.0f, true);
        TQ3RendererObject r = useFinalRenderer(v, samples);
        v.addLight(q3test::ambient(1.0f));
        v.render([&](TQ3ViewObject view) { submitAll(view, {tri}); });
        int partial = 0, full = 0;
        for (int y = 0; y < v.height; ++y)
            for (int x = 0; x < v.width; ++x) {
                int a = v.at(x, y).a;
                partial += a > 0 && a < 255;
                full += a == 255;
            }
        EXPECT_GT(full, 500);
        if (samples == 1) {
            EXPECT_EQ(partial, 0);
        } else {
            v.save("final_antialiased");
            EXPECT_GT(partial, 60); // the outline is some 180 pixels long
        }
        EXPECT_EQ(premultipliedFaults(v), 0);
        Q3Object_Dispose(r);
    }
    Q3Object_Dispose(tri);
}

// Normals given at the corners are interpolated across the triangle and
// made unit length at each pixel; with flat interpolation the face normal
// lights the whole triangle.
TEST(FinalShading, VertexNormalsAreInterpolated) {
    const float s = 0.70710678f;
    const TQ3Point3D p[3] = {{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}};
    const TQ3Vector3D n[3] = {{-s, 0, s}, {s, 0, s}, {0, 0, 1}};
    TQ3TriangleData d{};
    for (int i = 0; i < 3; ++i) {
        d.vertices[i].point = p[i];
        d.vertices[i].attributeSet = Q3AttributeSet_New();
        Q3AttributeSet_Add(d.vertices[i].attributeSet, kQ3AttributeTypeNormal, &n[i]);
    }
    TQ3GeometryObject tri = Q3Triangle_New(&d);
    for (TQ3Vertex3D& v : d.vertices)
        Q3Object_Dispose(v.attributeSet);
    TQ3ShaderObject lambert = Q3LambertIllumination_New();
    for (bool flat : {false, true}) {
        TestView v(64, 64, 5.0f, true);
        TQ3RendererObject r = useFinalRenderer(v);
        v.addLight(q3test::directional(0, 0, -1, 1.0f)); // from the camera
        TQ3StyleObject style = Q3InterpolationStyle_New(flat ? kQ3InterpolationStyleNone
                                                             : kQ3InterpolationStyleVertex);
        v.render([&](TQ3ViewObject view) { submitAll(view, {lambert, style, tri}); });
        if (!flat) v.save("final_vertex_normals");
        for (auto [x, y] : {std::pair{-0.5f, -0.6f}, {0.4f, -0.8f}, {0.0f, 0.3f}}) {
            const int px = pixelX(v, x), py = pixelY(v, y);
            const float wx = (px + 0.5f) / v.width * 2 - 1, wy = 1 - (py + 0.5f) / v.height * 2;
            const float w2 = (wy + 1) / 2, w1 = (1 - w2 + wx) / 2, w0 = 1 - w1 - w2;
            float N[3] = {w0 * n[0].x + w1 * n[1].x + w2 * n[2].x, 0,
                          w0 * n[0].z + w1 * n[1].z + w2 * n[2].z};
            const float nz = N[2] / std::sqrt(N[0] * N[0] + N[2] * N[2]);
            SCOPED_TRACE(testing::Message()
                         << (flat ? "flat" : "smooth") << " at " << x << ", " << y);
            EXPECT_NEAR(v.at(px, py).r, flat ? 255 : to8(nz), 2);
        }
        Q3Object_Dispose(style);
        Q3Object_Dispose(r);
    }
    Q3Object_Dispose(lambert);
    Q3Object_Dispose(tri);
}
