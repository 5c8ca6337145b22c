// Drawing each kind of geometry: holes, facet colours, highlights, curves
// cut by the subdivision style, the hither plane, panes, and targets that
// the renderer cannot use.
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace q3test;

namespace {

class Geometry : public LibraryTest {
  protected:
    void SetUp() override {
        LibraryTest::SetUp();
        nul = Q3NULLIllumination_New();
    }
    void TearDown() override {
        Q3Object_Dispose(nul);
        LibraryTest::TearDown();
    }
    // Draws one object with null illumination, its colours as they are.
    void drawFlat(TestView& tv, TQ3Object o) {
        tv.render([&](TQ3ViewObject v) {
            Q3Object_Submit(nul, v);
            Q3Object_Submit(o, v);
        });
    }
    TQ3Object nul = nullptr;
};

int coverage(const TestView& tv) {
    int n = 0;
    for (int y = 0; y < tv.height; ++y)
        for (int x = 0; x < tv.width; ++x)
            n += tv.at(x, y).a > 0;
    return n;
}

TEST_F(Geometry, GeneralPolygonLeavesItsHoleEmpty) {
    TQ3AttributeSet red = colourSet(1, 0, 0);
    TQ3Vertex3D outer[4] = {
        {{-1, -1, 0}, nullptr}, {{1, -1, 0}, nullptr}, {{1, 1, 0}, nullptr}, {{-1, 1, 0}, nullptr}};
    TQ3Vertex3D hole[4] = {{{-0.5f, -0.5f, 0}, nullptr},
                           {{-0.5f, 0.5f, 0}, nullptr},
                           {{0.5f, 0.5f, 0}, nullptr},
                           {{0.5f, -0.5f, 0}, nullptr}};
    TQ3GeneralPolygonContourData c[2] = {{4, outer}, {4, hole}};
    TQ3GeneralPolygonData gd{2, c, kQ3GeneralPolygonShapeHintComplex, red};
    TQ3Object gp = Q3GeneralPolygon_New(&gd);
    TestView tv(32, 32, 5, true);
    drawFlat(tv, gp);
    tv.save("qd3d_hole");
    EXPECT_EQ(tv.at(16, 16).a, 0);
    EXPECT_EQ(tv.at(3, 16).r, 255);
    EXPECT_EQ(tv.at(16, 28).r, 255);
    // three quarters of the square are covered
    EXPECT_NEAR(coverage(tv), 32 * 32 * 3 / 4, 40);
    Q3Object_Dispose(gp);
    Q3Object_Dispose(red);
}

TEST_F(Geometry, TriGridFacetsTakeTheirOwnColours) {
    TQ3Vertex3D v[4] = {
        {{-1, 1, 0}, nullptr}, {{1, 1, 0}, nullptr}, {{-1, -1, 0}, nullptr}, {{1, -1, 0}, nullptr}};
    TQ3AttributeSet facets[2] = {colourSet(0, 1, 0), colourSet(0, 0, 1)};
    TQ3TriGridData gd{2, 2, v, facets, nullptr};
    TQ3Object grid = Q3TriGrid_New(&gd);
    ASSERT_NE(grid, nullptr);
    TestView tv(32, 32, 5, true);
    drawFlat(tv, grid);
    // facet 0 is (0,0) (1,0) (1,1): upper-left, lower-left, lower-right
    Pixel lowerLeft = tv.at(4, 28), upperRight = tv.at(28, 4);
    EXPECT_EQ(lowerLeft.g, 255);
    EXPECT_EQ(upperRight.b, 255);
    Q3Object_Dispose(grid);
    for (TQ3AttributeSet s : facets)
        Q3Object_Dispose(s);
}

TEST_F(Geometry, HighlightStyleReplacesTheColourOfHighlightedGeometry) {
    TQ3AttributeSet plain = colourSet(0, 0, 1), lit = colourSet(0, 0, 1);
    TQ3Switch on = kQ3On;
    Q3AttributeSet_Add(lit, kQ3AttributeTypeHighlightState, &on);
    TQ3AttributeSet magenta = colourSet(1, 0, 1);
    TQ3Object style = Q3HighlightStyle_New(magenta);
    TQ3Object left = Q3Polygon_New(nullptr);
    EXPECT_EQ(left, nullptr);
    Q3Error_Get(nullptr);
    TQ3Vertex3D lv[3] = {{{-1, -1, 0}, nullptr}, {{0, -1, 0}, nullptr}, {{-1, 1, 0}, nullptr}};
    TQ3Vertex3D rv[3] = {{{0, -1, 0}, nullptr}, {{1, -1, 0}, nullptr}, {{1, 1, 0}, nullptr}};
    TQ3TriangleData ld{{lv[0], lv[1], lv[2]}, plain}, rd{{rv[0], rv[1], rv[2]}, lit};
    TQ3Object a = Q3Triangle_New(&ld), b = Q3Triangle_New(&rd);
    TestView tv(32, 32, 5, true);
    tv.render([&](TQ3ViewObject v) {
        Q3Object_Submit(nul, v);
        Q3Object_Submit(style, v);
        Q3Object_Submit(a, v);
        Q3Object_Submit(b, v);
    });
    Pixel pa = tv.at(4, 24), pb = tv.at(28, 24);
    EXPECT_EQ(pa.r, 0);
    EXPECT_EQ(pa.b, 255);
    EXPECT_EQ(pb.r, 255);
    EXPECT_EQ(pb.b, 255);
    for (TQ3Object o : {plain, lit, magenta, style, a, b})
        Q3Object_Dispose(o);
}

TEST_F(Geometry, NURBCurveFollowsTheSubdivisionStyle) {
    // a half circle as a rational quadratic of two arcs
    const float r = 0.8f, w = 0.70710678f;
    TQ3RationalPoint4D pts[5] = {
        {r, 0, 0, 1}, {r * w, r * w, 0, w}, {0, r, 0, 1}, {-r * w, r * w, 0, w}, {-r, 0, 0, 1}};
    float knots[8] = {0, 0, 0, 1, 1, 2, 2, 2};
    TQ3AttributeSet green = colourSet(0, 1, 0);
    TQ3NURBCurveData nd{3, 5, pts, knots, green};
    TQ3Object curve = Q3NURBCurve_New(&nd);
    ASSERT_NE(curve, nullptr);
    TestView tv(64, 64, 5, true);
    auto drawWith = [&](TQ3SubdivisionStyleData sd) {
        TQ3Object style = Q3SubdivisionStyle_New(&sd);
        tv.render([&](TQ3ViewObject v) {
            Q3Object_Submit(style, v);
            Q3Object_Submit(curve, v);
        });
        Q3Object_Dispose(style);
        return coverage(tv);
    };
    // one segment a span is two chords; fine steps follow the arc
    int coarse = drawWith({kQ3SubdivisionMethodConstant, 1, 1});
    int fine = drawWith({kQ3SubdivisionMethodScreenSpace, 2, 2});
    tv.save("qd3d_nurb");
    EXPECT_EQ(tv.at(32, 6).g, 255); // the top of the arc at y = 0.8
    EXPECT_EQ(tv.at(32, 32).a, 0);
    EXPECT_GT(fine, coarse);
    // the arc is about pi * 0.8 / 2 * 32 = 40 pixels long on either side
    EXPECT_NEAR(fine, 84, 16);
    Q3Object_Dispose(curve);
    Q3Object_Dispose(green);
}

TEST_F(Geometry, TrianglesThroughTheHitherPlaneAreCut) {
    // a floor from behind the camera to far in front of it
    TQ3AttributeSet grey = colourSet(0.5f, 0.5f, 0.5f);
    TQ3Vertex3D v[4] = {{{-5, -1, 20}, nullptr},
                        {{5, -1, 20}, nullptr},
                        {{5, -1, -50}, nullptr},
                        {{-5, -1, -50}, nullptr}};
    TQ3PolygonData pd{4, v, grey};
    TQ3Object floor = Q3Polygon_New(&pd);
    TestView tv(64, 48, 5, false);
    drawFlat(tv, floor);
    tv.save("qd3d_floor");
    // below the horizon the floor, above it nothing
    EXPECT_EQ(tv.at(32, 47).r, 128);
    EXPECT_EQ(tv.at(32, 5).a, 0);
    Q3Object_Dispose(floor);
    Q3Object_Dispose(grey);
}

TEST_F(Geometry, PaneLimitsWhereTheRendererDraws) {
    TestView tv(32, 32, 5, true);
    TQ3Area pane{{8, 8}, {24, 24}};
    Q3DrawContext_SetPane(tv.context, &pane);
    Q3DrawContext_SetPaneState(tv.context, kQ3True);
    TQ3AttributeSet white = colourSet(1, 1, 1);
    TQ3Object big = square(5, 0, white);
    drawFlat(tv, big);
    EXPECT_EQ(tv.at(16, 16).r, 255);
    EXPECT_EQ(tv.at(4, 4).a, 0xDE); // outside the pane the memory is untouched
    Q3Object_Dispose(big);
    Q3Object_Dispose(white);
}

TEST_F(Geometry, LongLinesAreCutToTheWindowWithoutGaps) {
    // far longer than the window, so each window pixel needs its own step
    TQ3AttributeSet white = colourSet(1, 1, 1);
    TQ3LineData ld{{{{-1e5f, 0.01f, 0}, nullptr}, {{1e5f, 0.01f, 0}, nullptr}}, white};
    TQ3Object line = Q3Line_New(&ld);
    TestView tv(64, 64, 5, true);
    tv.render([&](TQ3ViewObject v) { Q3Object_Submit(line, v); });
    int lit = 0;
    for (int x = 0; x < 64; ++x)
        lit += tv.at(x, 31).a == 255 || tv.at(x, 32).a == 255;
    EXPECT_EQ(lit, 64);
    Q3Object_Dispose(line);
    Q3Object_Dispose(white);
}

TEST_F(Geometry, UnalignedAndRGBPixmapsGetTheSamePicture) {
    TQ3AttributeSet teal = colourSet(0, 0.5f, 0.5f);
    TQ3Object sq = square(0.6f, 0, teal);
    TestView tv(16, 16, 5, true);
    auto scene = [&](TQ3ViewObject v) {
        Q3Object_Submit(nul, v);
        Q3Object_Submit(sq, v);
    };
    tv.render(scene);
    // the same picture into memory one byte off a word boundary, 32-bit RGB
    std::vector<unsigned char> odd(16 * 16 * 4 + 1, 0x11);
    TQ3Pixmap pm{odd.data() + 1, 16, 16, 64, 32, kQ3PixelTypeRGB32, kQ3EndianLittle,
                 kQ3EndianLittle};
    ASSERT_EQ(Q3PixmapDrawContext_SetPixmap(tv.context, &pm), kQ3Success);
    tv.render(scene);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) {
            std::uint32_t word;
            std::memcpy(&word, odd.data() + 1 + (y * 16 + x) * 4, 4);
            Pixel p = tv.at(x, y);
            std::uint32_t expected =
                0xFF000000u | (unsigned(p.r) << 16) | (unsigned(p.g) << 8) | unsigned(p.b);
            ASSERT_EQ(word, expected) << x << "," << y;
        }
    EXPECT_EQ(odd[0], 0x11); // nothing before the pixmap was touched
    Q3Object_Dispose(sq);
    Q3Object_Dispose(teal);
}

TEST_F(Geometry, UnusableTargetsAndViewsAreRefused) {
    std::uint32_t pixels[16];
    TQ3PixmapDrawContextData pd{};
    pd.pixmap = {pixels, 4, 4, 16, 16, kQ3PixelTypeRGB16, kQ3EndianLittle, kQ3EndianLittle};
    EXPECT_EQ(Q3PixmapDrawContext_New(&pd), nullptr);
    pd.pixmap = {pixels, 4, 4, 8, 32, kQ3PixelTypeARGB32, kQ3EndianLittle, kQ3EndianLittle};
    EXPECT_EQ(Q3PixmapDrawContext_New(&pd), nullptr); // rows shorter than the width
    TQ3ViewObject view = Q3View_New();
    EXPECT_EQ(Q3View_StartRendering(view), kQ3Failure); // no renderer, camera or context
    Q3View_SetRendererByType(view, kQ3RendererTypeInteractive);
    EXPECT_EQ(Q3View_StartRendering(view), kQ3Failure);
    EXPECT_EQ(Q3Error_Get(nullptr), kQ3ErrorCameraNotSet);
    // a camera whose eye sits on its point of interest cannot project
    TQ3CameraData cd{{{0, 0, 0}, {0, 0, 0}, {0, 1, 0}}, {0.1f, 10}, {{-1, 1}, 2, 2}};
    TQ3ViewAngleAspectCameraData ad{cd, 1, 1};
    TQ3Object camera = Q3ViewAngleAspectCamera_New(&ad);
    pd.pixmap.rowBytes = 16;
    TQ3Object context = Q3PixmapDrawContext_New(&pd);
    Q3View_SetCamera(view, camera);
    Q3View_SetDrawContext(view, context);
    EXPECT_EQ(Q3View_StartRendering(view), kQ3Failure);
    cd.placement.cameraLocation = {0, 0, 5};
    Q3Camera_SetData(camera, &cd);
    EXPECT_EQ(Q3View_StartRendering(view), kQ3Success);
    EXPECT_EQ(Q3View_SetCamera(view, camera), kQ3Failure); // not while a pass is open
    EXPECT_EQ(Q3View_EndRendering(view), kQ3ViewStatusDone);
    for (TQ3Object o : {view, camera, context})
        Q3Object_Dispose(o);
    Q3Error_Get(nullptr);
}

} // namespace
