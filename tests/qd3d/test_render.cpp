// The interactive renderer: pixels that follow from the lighting equation,
// depth order, transparency, textures, inherited attributes, styles, and a
// renderer class of another library that asks for a second traversal.
#include "platform/qd3d/QD3DRendererExtension.h"
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace q3test;

namespace {

using Render = q3test::LibraryTest;

void expectPixel(const Pixel& p, int a, int r, int g, int b, int tol = 2) {
    EXPECT_NEAR(p.a, a, tol);
    EXPECT_NEAR(p.r, r, tol);
    EXPECT_NEAR(p.g, g, tol);
    EXPECT_NEAR(p.b, b, tol);
}

// Submits the objects in order, then gives back the caller's references.
struct Scene {
    std::vector<TQ3Object> objects;
    ~Scene() {
        for (TQ3Object o : objects)
            Q3Object_Dispose(o);
    }
    void add(TQ3Object o) { objects.push_back(o); }
    void submit(TQ3ViewObject v) const {
        for (TQ3Object o : objects)
            Q3Object_Submit(o, v);
    }
};

TEST_F(Render, LambertFollowsTheCosineAndTheAmbient) {
    TestView tv(32, 32, 5, true);
    // light at 60 degrees from the normal: cos = 0.5; ambient 0.2
    tv.addLight(directional(0, -std::sin(1.0471976f), -std::cos(1.0471976f)));
    tv.addLight(ambient(0.2f));
    Scene s;
    s.add(Q3LambertIllumination_New());
    TQ3AttributeSet set = colourSet(1, 0.5f, 0.25f);
    s.add(square(2, 0, set));
    Q3Object_Dispose(set);
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    // (0.5 + 0.2) * colour
    expectPixel(tv.at(16, 16), 255, int(0.7f * 255 + 0.5f), int(0.35f * 255 + 0.5f),
                int(0.175f * 255 + 0.5f));
    tv.save("qd3d_lambert");
}

TEST_F(Render, PhongAddsTheSpecularTermAndNullIgnoresLights) {
    TestView tv(16, 16, 5, true);
    tv.addLight(directional(0, 0, -1));
    TQ3AttributeSet set = colourSet(0.2f, 0.2f, 0.2f);
    TQ3ColorRGB spec{0.3f, 0.1f, 0.0f};
    Q3AttributeSet_Add(set, kQ3AttributeTypeSpecularColor, &spec);
    Scene s;
    s.add(Q3PhongIllumination_New());
    s.add(square(2, 0, set));
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    // straight on: R.V = 1, so colour = diffuse + specular colour
    expectPixel(tv.at(8, 8), 255, int(0.5f * 255 + 0.5f), int(0.3f * 255 + 0.5f),
                int(0.2f * 255 + 0.5f));
    Scene flat;
    flat.add(Q3NULLIllumination_New());
    flat.add(square(2, 0, set));
    tv.render([&](TQ3ViewObject v) { flat.submit(v); });
    expectPixel(tv.at(8, 8), 255, 51, 51, 51);
    Q3Object_Dispose(set);
}

TEST_F(Render, PointAndSpotLightsAttenuateAndCut) {
    // Lighting is worked out at the vertices, so small squares are read
    // at their middles: one on the axis, one at (0.9, 0.9).
    TestView tv(33, 33, 5, true);
    TQ3PointLightData pd{
        {kQ3True, 4, {1, 1, 1}}, kQ3False, kQ3AttenuationTypeInverseDistanceSquared, {0, 0, 2}};
    tv.addLight(Q3PointLight_New(&pd));
    TQ3SpotLightData sd{{kQ3True, 1, {1, 1, 1}},
                        kQ3False,
                        kQ3AttenuationTypeNone,
                        {0, 0, 1},
                        {0, 0, -1},
                        0.1f,
                        0.2f,
                        kQ3FallOffTypeNone};
    Scene s;
    s.add(Q3LambertIllumination_New());
    TQ3AttributeSet set = colourSet(1, 1, 1);
    s.add(square(0.05f, 0, set));
    TQ3Vector3D corner{0.9f, 0.9f, 0};
    s.add(Q3TranslateTransform_New(&corner));
    s.add(square(0.05f, 0, set));
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    // on the axis d = 2: 4 / 4 = 1
    expectPixel(tv.at(16, 16), 255, 255, 255, 255, 3);
    // off it d^2 = 5.62 and N.L = 2 / sqrt(5.62): 4 / 5.62 * 0.844 = 0.600
    EXPECT_NEAR(tv.at(31, 1).r, 0.600f * 255, 4);
    // a narrow spot lights the middle and not the corner
    Q3Group_EmptyObjects(tv.lights);
    tv.addLight(Q3SpotLight_New(&sd));
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    EXPECT_GT(tv.at(16, 16).r, 250);
    expectPixel(tv.at(31, 1), 255, 0, 0, 0);
    Q3Object_Dispose(set);
}

TEST_F(Render, NearerSurfaceWinsWhateverTheOrder) {
    TestView tv(32, 32, 5, false);
    TQ3AttributeSet red = colourSet(1, 0, 0), green = colourSet(0, 1, 0);
    Scene s;
    s.add(square(0.5f, 1, green));
    s.add(square(3, 0, red));
    Q3Object_Dispose(red);
    Q3Object_Dispose(green);
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    expectPixel(tv.at(16, 16), 255, 0, 255, 0);
    // the red square shows beyond the small green one; the corner is empty
    expectPixel(tv.at(16, 11), 255, 255, 0, 0);
    expectPixel(tv.at(0, 0), 0, 0, 0, 0);
    tv.save("qd3d_depth");
}

TEST_F(Render, SeeThroughSurfacesBlendBackToFront) {
    TestView tv(32, 32, 5, true);
    TQ3AttributeSet red = colourSet(1, 0, 0), blue = colourSet(0, 0, 1);
    TQ3ColorRGB half{0.5f, 0.5f, 0.5f};
    Q3AttributeSet_Add(blue, kQ3AttributeTypeTransparencyColor, &half);
    Scene s;
    s.add(square(0.5f, 1, blue)); // nearer, submitted first
    s.add(square(2, 0, red));
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    expectPixel(tv.at(16, 16), 255, 128, 0, 128);
    // over the clear background: alpha is the coverage, colour premultiplied
    Scene alone;
    alone.add(square(0.5f, 1, blue));
    tv.render([&](TQ3ViewObject v) { alone.submit(v); });
    expectPixel(tv.at(16, 16), 128, 0, 0, 128);
    Q3Object_Dispose(red);
    Q3Object_Dispose(blue);
}

TEST_F(Render, FlatShadingLightsEachFaceOnceWithItsOwnNormal) {
    // vertex normals that lean apart: blended across the face by vertex
    // interpolation, ignored by none
    TQ3AttributeSet left = Q3AttributeSet_New(), right = Q3AttributeSet_New();
    TQ3Vector3D nl{-0.6f, 0, 0.8f}, nr{0.6f, 0, 0.8f};
    Q3AttributeSet_Add(left, kQ3AttributeTypeNormal, &nl);
    Q3AttributeSet_Add(right, kQ3AttributeTypeNormal, &nr);
    TQ3Vertex3D v[4] = {
        {{-1, -1, 0}, left}, {{1, -1, 0}, right}, {{1, 1, 0}, right}, {{-1, 1, 0}, left}};
    TQ3PolygonData pd{4, v, nullptr};
    TQ3Object quad = Q3Polygon_New(&pd);
    TestView tv(32, 32, 5, true);
    tv.addLight(directional(0, 0, -1));
    TQ3Object lambert = Q3LambertIllumination_New();
    TQ3Object flat = Q3InterpolationStyle_New(kQ3InterpolationStyleNone);
    tv.render([&](TQ3ViewObject vw) {
        Q3Object_Submit(lambert, vw);
        Q3Object_Submit(quad, vw);
    });
    // N.L is 0.8 at both edges and the blend of the two normals between
    EXPECT_NEAR(tv.at(1, 16).r, 204, 3);
    EXPECT_NEAR(tv.at(30, 16).r, 204, 3);
    tv.render([&](TQ3ViewObject vw) {
        Q3Object_Submit(lambert, vw);
        Q3Object_Submit(flat, vw);
        Q3Object_Submit(quad, vw);
    });
    // flat: the face normal (0, 0, 1) everywhere
    EXPECT_EQ(tv.at(1, 16).r, 255);
    EXPECT_EQ(tv.at(30, 16).r, 255);
    for (TQ3Object o : {left, right, quad, lambert, flat})
        Q3Object_Dispose(o);
}

TEST_F(Render, SeveralSeeThroughLayersBlendFarthestFirst) {
    // red far, green middle, blue near, each half see-through, submitted
    // nearest first: the result is as if drawn from the back
    TestView tv(16, 16, 5, true);
    TQ3ColorRGB half{0.5f, 0.5f, 0.5f};
    TQ3AttributeSet sets[3] = {colourSet(0, 0, 1), colourSet(0, 1, 0), colourSet(1, 0, 0)};
    Scene s;
    s.add(Q3NULLIllumination_New());
    for (int i = 0; i < 3; ++i) {
        Q3AttributeSet_Add(sets[i], kQ3AttributeTypeTransparencyColor, &half);
        s.add(square(1, 2.0f - i, sets[i]));
        Q3Object_Dispose(sets[i]);
    }
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    // red 0.5 over nothing, then green, then blue, each over what is behind
    // alpha: 0.5, 0.75, 0.875; red 0.125, green 0.25, blue 0.5
    expectPixel(tv.at(8, 8), 223, 32, 64, 128, 3);
}

TEST_F(Render, TextureIsLookedUpBilinearly) {
    // 2 by 2: red green on the top row, blue white below
    std::uint32_t texels[4] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};
    TQ3StorageObject storage =
        Q3MemoryStorage_NewBuffer(reinterpret_cast<unsigned char*>(texels), 16, 16);
    TQ3StoragePixmap sp{storage, 2, 2, 8, 32, kQ3PixelTypeRGB32, kQ3EndianBig, kQ3EndianBig};
    TQ3TextureObject tex = Q3PixmapTexture_New(&sp);
    TQ3ShaderObject shader = Q3TextureShader_New(tex);
    Q3Shader_SetUBoundary(shader, kQ3ShaderUVBoundaryClamp);
    Q3Shader_SetVBoundary(shader, kQ3ShaderUVBoundaryClamp);
    TQ3AttributeSet uv[4];
    const TQ3Param2D corners[4] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    TQ3Vertex3D v[4] = {
        {{-1, -1, 0}, nullptr}, {{1, -1, 0}, nullptr}, {{1, 1, 0}, nullptr}, {{-1, 1, 0}, nullptr}};
    for (int i = 0; i < 4; ++i) {
        uv[i] = Q3AttributeSet_New();
        Q3AttributeSet_Add(uv[i], kQ3AttributeTypeSurfaceUV, &corners[i]);
        v[i].attributeSet = uv[i];
    }
    TQ3PolygonData pd{4, v, nullptr};
    Scene s;
    s.add(Q3NULLIllumination_New());
    s.add(shader);
    s.add(Q3Polygon_New(&pd));
    for (TQ3AttributeSet a : uv)
        Q3Object_Dispose(a);
    TestView tv(64, 64, 5, true);
    tv.render([&](TQ3ViewObject vw) { s.submit(vw); });
    // texel centres fall a quarter of the way in (the pixel centre lies half
    // a pixel further, so 1.6 percent of each neighbour mixes in)
    expectPixel(tv.at(16, 16), 255, 247, 4, 4, 2);
    expectPixel(tv.at(48, 16), 255, 4, 255, 4, 2);
    expectPixel(tv.at(16, 48), 255, 4, 4, 255, 2);
    expectPixel(tv.at(48, 48), 255, 255, 255, 255, 2);
    // halfway between red and green: the mean of the two
    expectPixel(tv.at(32, 16), 255, 124, 131, 4, 2);
    tv.save("qd3d_texture");
    Q3Object_Dispose(tex);
    Q3Object_Dispose(storage);
}

TEST_F(Render, AttributesInheritDownTheGroupsAndVerticesWin) {
    TestView tv(48, 16, 5, true);
    TQ3GroupObject group = Q3DisplayGroup_New();
    TQ3AttributeSet green = colourSet(0, 1, 0), red = colourSet(1, 0, 0), blue = colourSet(0, 0, 1);
    Q3Group_AddObject(group, green);
    TQ3Object nul = Q3NULLIllumination_New();
    Q3Group_AddObject(group, nul);
    // left: no colour of its own; middle: its own red; right: blue vertices
    auto strip = [](float x0, float x1, TQ3AttributeSet geom, TQ3AttributeSet vertex) {
        TQ3Vertex3D v[4] = {{{x0, -1, 0}, vertex},
                            {{x1, -1, 0}, vertex},
                            {{x1, 1, 0}, vertex},
                            {{x0, 1, 0}, vertex}};
        TQ3PolygonData d{4, v, geom};
        return Q3Polygon_New(&d);
    };
    TQ3Object a = strip(-1, -1.0f / 3, nullptr, nullptr),
              b = strip(-1.0f / 3, 1.0f / 3, red, nullptr), c = strip(1.0f / 3, 1, red, blue);
    for (TQ3Object o : {a, b, c}) {
        Q3Group_AddObject(group, o);
        Q3Object_Dispose(o);
    }
    tv.render([&](TQ3ViewObject v) { Q3DisplayGroup_Submit(group, v); });
    expectPixel(tv.at(8, 8), 255, 0, 255, 0);
    expectPixel(tv.at(24, 8), 255, 255, 0, 0);
    expectPixel(tv.at(40, 8), 255, 0, 0, 255);
    // what the group sets stays inside it
    TQ3Vector3D nearer{0, 0, 0.5f};
    TQ3Object lift = Q3TranslateTransform_New(&nearer);
    TQ3Object after = strip(-1, 1, nullptr, nullptr);
    tv.render([&](TQ3ViewObject v) {
        Q3Object_Submit(nul, v);
        Q3DisplayGroup_Submit(group, v);
        Q3Object_Submit(lift, v);
        Q3Object_Submit(after, v);
    });
    expectPixel(tv.at(8, 8), 255, 255, 255, 255);
    // a group that is not drawn keeps its members out of the picture
    TQ3DisplayGroupState st;
    Q3DisplayGroup_GetState(group, &st);
    Q3DisplayGroup_SetState(group, st & ~kQ3DisplayGroupStateMaskIsDrawn);
    tv.render([&](TQ3ViewObject v) { Q3DisplayGroup_Submit(group, v); });
    expectPixel(tv.at(24, 8), 0, 0, 0, 0);
    for (TQ3Object o : {green, red, blue, nul, after, lift, group})
        Q3Object_Dispose(o);
}

TEST_F(Render, BackfacingAndFillStyles) {
    TestView tv(32, 32, 5, true);
    TQ3AttributeSet white = colourSet(1, 1, 1);
    // clockwise as seen from the camera: its back faces us
    TQ3Vertex3D v[4] = {
        {{-1, -1, 0}, nullptr}, {{-1, 1, 0}, nullptr}, {{1, 1, 0}, nullptr}, {{1, -1, 0}, nullptr}};
    TQ3PolygonData pd{4, v, white};
    TQ3Object back = Q3Polygon_New(&pd);
    TQ3Object nul = Q3NULLIllumination_New();
    TQ3Object remove = Q3BackfacingStyle_New(kQ3BackfacingStyleRemove);
    TQ3Object cw = Q3OrientationStyle_New(kQ3OrientationStyleClockwise);
    tv.render([&](TQ3ViewObject vw) {
        Q3Object_Submit(nul, vw);
        Q3Object_Submit(remove, vw);
        Q3Object_Submit(back, vw);
    });
    expectPixel(tv.at(16, 16), 0, 0, 0, 0);
    // clockwise front faces turn it round
    tv.render([&](TQ3ViewObject vw) {
        Q3Object_Submit(nul, vw);
        Q3Object_Submit(remove, vw);
        Q3Object_Submit(cw, vw);
        Q3Object_Submit(back, vw);
    });
    expectPixel(tv.at(16, 16), 255, 255, 255, 255);
    // edges: the outline and not the inside, nor the fan's diagonal
    TQ3Object edges = Q3FillStyle_New(kQ3FillStyleEdges);
    TQ3Object small = square(0.5f, 0, white);
    tv.render([&](TQ3ViewObject vw) {
        Q3Object_Submit(nul, vw);
        Q3Object_Submit(edges, vw);
        Q3Object_Submit(small, vw);
    });
    expectPixel(tv.at(16, 16), 0, 0, 0, 0);
    expectPixel(tv.at(14, 14), 0, 0, 0, 0);
    int lit = 0; // the top edge of the small square lies on row 8
    for (int x = 0; x < 32; ++x)
        lit += tv.at(x, 7).a > 0 || tv.at(x, 8).a > 0;
    EXPECT_GE(lit, 14);
    tv.save("qd3d_edges");
    for (TQ3Object o : {white, back, nul, remove, cw, edges, small})
        Q3Object_Dispose(o);
}

TEST_F(Render, ClearColourIsPremultipliedAndLinesAndMarkersDraw) {
    TestView tv(32, 32, 5, true);
    TQ3ColorARGB clear{0.5f, 1, 0, 0};
    Q3DrawContext_SetClearImageColor(tv.context, &clear);
    TQ3AttributeSet yellow = colourSet(1, 1, 0);
    TQ3LineData ld{{{{-1, 0, 0}, nullptr}, {{1, 0, 0}, nullptr}}, yellow};
    TQ3Object line = Q3Line_New(&ld);
    TQ3Uns8 bits[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    TQ3MarkerData md{{0.5f, 0.5f, 0}, -3, -3, {bits, 8, 8, 1, kQ3EndianBig}, yellow};
    TQ3Object marker = Q3Marker_New(&md);
    tv.render([&](TQ3ViewObject v) {
        Q3Object_Submit(line, v);
        Q3Object_Submit(marker, v);
    });
    expectPixel(tv.at(2, 2), 128, 128, 0, 0);
    expectPixel(tv.at(5, 16), 255, 255, 255, 0); // on the line
    expectPixel(tv.at(24, 8), 255, 255, 255, 0); // inside the marker around (24, 8)
    expectPixel(tv.at(24, 24), 128, 128, 0, 0);
    for (TQ3Object o : {yellow, line, marker})
        Q3Object_Dispose(o);
}

// A renderer of another library that wants every frame twice.
struct TwoPass {
    int passes = 0;
    TQ3Uns32 triangles[2] = {0, 0};
    TQ3Uns32 lights = 0;
};

TEST_F(Render, RegisteredRendererGetsTheSceneAgainOnRetraverse) {
    static TwoPass* seen = nullptr;
    TQ3XRendererMethods m{};
    m.newInstance = []() -> void* { return seen = new TwoPass; };
    m.deleteInstance = [](void* p) { delete static_cast<TwoPass*>(p); };
    m.startPass = [](void* p, TQ3ViewObject, const TQ3XPassInfo* info) {
        auto* t = static_cast<TwoPass*>(p);
        t->passes = static_cast<int>(info->passIndex) + 1;
        t->lights = info->numLights;
        return kQ3Success;
    };
    m.submitTriangles = [](void* p, const TQ3XTriangleBatch* b) {
        auto* t = static_cast<TwoPass*>(p);
        t->triangles[t->passes - 1] += b->numTriangles;
        return kQ3Success;
    };
    m.endPass = [](void* p, TQ3ViewObject) {
        return static_cast<TwoPass*>(p)->passes == 1 ? kQ3ViewStatusRetraverse : kQ3ViewStatusDone;
    };
    TQ3ObjectType type = 0;
    TQ3XObjectClass cls =
        Q3XRendererClass_Register(0, "TestTwoPassRenderer", "Two Pass", &m, &type);
    ASSERT_NE(cls, nullptr);
    {
        TestView tv(16, 16);
        tv.addLight(ambient(0.5f));
        ASSERT_EQ(Q3View_SetRendererByType(tv.view, type), kQ3Success);
        Scene s;
        s.add(square(1, 0));
        EXPECT_EQ(tv.render([&](TQ3ViewObject v) { s.submit(v); }), 2);
        ASSERT_NE(seen, nullptr);
        EXPECT_EQ(seen->triangles[0], 2u);
        EXPECT_EQ(seen->triangles[1], 2u);
        EXPECT_EQ(seen->lights, 1u);
        TQ3ObjectClassNameString nick;
        Q3RendererClass_GetNickNameString(type, nick);
        EXPECT_STREQ(nick, "Two Pass");
    }
    EXPECT_EQ(Q3XObjectHierarchy_UnregisterClass(cls), kQ3Success);
}

TEST_F(Render, LitSolidsLookRight) {
    TestView tv(320, 240, 3.5f, false);
    TQ3PointLightData pd{{kQ3True, 1, {1, 1, 1}}, kQ3False, kQ3AttenuationTypeNone, {-10, 10, 10}};
    tv.addLight(Q3PointLight_New(&pd));
    tv.addLight(ambient(0.2f));
    TQ3AttributeSet gold = colourSet(0.9f, 0.7f, 0.2f), teal = colourSet(0.1f, 0.6f, 0.7f);
    TQ3EllipsoidData ed{{-1.6f, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}, 0, 1, 0, 1, 0,
                        nullptr,       gold};
    TQ3ConeData cd{{1.6f, -1, 0},       {0, 2, 0}, {0, 0, 1}, {1, 0, 0}, 0,   1, 0, 1,
                   kQ3EndCapMaskBottom, nullptr,   nullptr,   nullptr,   teal};
    Scene s;
    s.add(Q3PhongIllumination_New());
    TQ3SubdivisionStyleData sd{kQ3SubdivisionMethodConstant, 32, 16};
    s.add(Q3SubdivisionStyle_New(&sd));
    s.add(Q3Ellipsoid_New(&ed));
    s.add(Q3Cone_New(&cd));
    Q3Object_Dispose(gold);
    Q3Object_Dispose(teal);
    tv.render([&](TQ3ViewObject v) { s.submit(v); });
    tv.save("qd3d_solids");
    // the sphere's lit side (towards the light, upper left) is brighter than its far side
    Pixel litSide = tv.at(93, 107), darkSide = tv.at(120, 135);
    EXPECT_EQ(litSide.a, 255);
    EXPECT_EQ(darkSide.a, 255);
    EXPECT_GT(litSide.r, darkSide.r + 40);
    EXPECT_EQ(tv.at(160, 10).a, 0);
}

} // namespace
