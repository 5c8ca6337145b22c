// Hostile input: values at the edge of float range, degenerate and tangled
// shapes, random scenes, calls on the wrong objects. Nothing may crash,
// leak or write outside the pixmap, and no pixel may come out of a NaN.
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace q3test;

namespace {

using Robustness = q3test::LibraryTest;

TEST_F(Robustness, RandomScenesRenderPickAndBound) {
    std::mt19937 rng(12345);
    std::uniform_real_distribution<float> coord(-3, 3), wide(-1e6f, 1e6f), unit(0, 1);
    TQ3GroupObject group = Q3DisplayGroup_New();
    TQ3Object styles[] = {Q3PhongIllumination_New(), Q3BackfacingStyle_New(kQ3BackfacingStyleFlip),
                          Q3InterpolationStyle_New(kQ3InterpolationStyleNone)};
    for (TQ3Object s : styles) {
        Q3Group_AddObject(group, s);
        Q3Object_Dispose(s);
    }
    for (int i = 0; i < 300; ++i) {
        TQ3Vertex3D v[3];
        for (TQ3Vertex3D& x : v) {
            bool far = i % 7 == 0;
            x.point = {far ? wide(rng) : coord(rng), far ? wide(rng) : coord(rng),
                       far ? wide(rng) : coord(rng)};
            x.attributeSet = nullptr;
        }
        if (i % 11 == 0) v[2].point = v[1].point = v[0].point; // degenerate
        TQ3AttributeSet set = colourSet(unit(rng), unit(rng), unit(rng));
        if (i % 3 == 0) {
            TQ3ColorRGB t{unit(rng), unit(rng), unit(rng)};
            Q3AttributeSet_Add(set, kQ3AttributeTypeTransparencyColor, &t);
        }
        TQ3TriangleData td{{v[0], v[1], v[2]}, set};
        TQ3Object tri = Q3Triangle_New(&td);
        ASSERT_NE(tri, nullptr);
        Q3Group_AddObject(group, tri);
        Q3Object_Dispose(tri);
        Q3Object_Dispose(set);
    }
    TestView tv(97, 61, 4, false);
    TQ3PointLightData pd{{kQ3True, 1, {1, 1, 1}},
                         kQ3False,
                         kQ3AttenuationTypeInverseDistance,
                         {0, 0, 0}}; // a light inside the scene
    tv.addLight(Q3PointLight_New(&pd));
    EXPECT_EQ(tv.render([&](TQ3ViewObject v) { Q3DisplayGroup_Submit(group, v); }), 1);
    tv.save("qd3d_random");
    // every pixel was written and is a valid premultiplied colour
    for (int y = 0; y < tv.height; ++y)
        for (int x = 0; x < tv.width; ++x) {
            Pixel p = tv.at(x, y);
            ASSERT_LE(p.r, p.a);
            ASSERT_LE(p.g, p.a);
            ASSERT_LE(p.b, p.a);
        }
    for (float px : {0.f, 48.f, 96.f}) {
        TQ3WindowPointPickData d{{kQ3PickSortNearToFar, 0x3F, 0}, {px, 30}, 2, 2};
        TQ3PickObject pick = Q3WindowPointPick_New(&d);
        ASSERT_EQ(Q3View_StartPicking(tv.view, pick), kQ3Success);
        Q3DisplayGroup_Submit(group, tv.view);
        Q3View_EndPicking(tv.view);
        TQ3Uns32 n = 0;
        Q3Pick_GetNumHits(pick, &n);
        float last = -1;
        for (TQ3Uns32 i = 0; i < n; ++i) {
            float dist = 0;
            Q3Pick_GetPickDetailData(pick, i, kQ3PickDetailMaskDistance, &dist);
            EXPECT_TRUE(std::isfinite(dist));
            EXPECT_GE(dist, last);
            last = dist;
        }
        Q3Object_Dispose(pick);
    }
    TQ3BoundingBox box;
    Q3View_StartBoundingBox(tv.view, kQ3ComputeBoundsExact);
    Q3DisplayGroup_Submit(group, tv.view);
    Q3View_EndBoundingBox(tv.view, &box);
    EXPECT_TRUE(std::isfinite(box.min.x) && std::isfinite(box.max.z));
    Q3Object_Dispose(group);
}

TEST_F(Robustness, ValuesBeyondFloatRangeAreRefusedOrHarmless) {
    TQ3AttributeSet set = Q3AttributeSet_New();
    TQ3ColorRGB bad{NAN, 0, 0};
    EXPECT_EQ(Q3AttributeSet_Add(set, kQ3AttributeTypeDiffuseColor, &bad), kQ3Failure);
    TQ3Matrix4x4 m;
    Q3Matrix4x4_SetIdentity(&m);
    m.value[1][1] = INFINITY;
    EXPECT_EQ(Q3MatrixTransform_New(&m), nullptr);
    // huge but finite: the product overflows inside the pass
    TQ3Vector3D huge{1e30f, 1e30f, 1e30f};
    TQ3Object scale = Q3ScaleTransform_New(&huge);
    TQ3Object sq = square(1e30f, 0, nullptr);
    TQ3Uns8 bits[1] = {0xFF};
    TQ3MarkerData md{
        {1e30f, -1e30f, 0}, 2000000000, -2000000000, {bits, 8, 1, 1, kQ3EndianBig}, nullptr};
    TQ3Object marker = Q3Marker_New(&md);
    TQ3LineData ld{{{{0, 0, 10}, nullptr}, {{1, 1, 20}, nullptr}}, nullptr}; // behind the eye
    TQ3Object line = Q3Line_New(&ld);
    TestView tv(16, 16);
    tv.render([&](TQ3ViewObject v) {
        Q3Object_Submit(line, v);
        Q3Object_Submit(marker, v);
        Q3Object_Submit(scale, v);
        Q3Object_Submit(sq, v);
    });
    for (TQ3Object o : {set, scale, sq, marker, line})
        Q3Object_Dispose(o);
}

TEST_F(Robustness, CallsOnTheWrongObjectsFailCleanly) {
    TQ3Object set = Q3AttributeSet_New();
    TestView tv(8, 8);
    ASSERT_EQ(Q3View_StartRendering(tv.view), kQ3Success);
    EXPECT_EQ(Q3Style_Submit(set, tv.view), kQ3Failure);
    EXPECT_EQ(Q3Shader_Submit(set, tv.view), kQ3Failure);
    EXPECT_EQ(Q3Transform_Submit(set, tv.view), kQ3Failure);
    EXPECT_EQ(Q3Geometry_Submit(set, tv.view), kQ3Failure);
    EXPECT_EQ(Q3DisplayGroup_Submit(set, tv.view), kQ3Failure);
    EXPECT_EQ(Q3Object_Submit(set, set), kQ3Failure);
    EXPECT_EQ(Q3View_EndRendering(tv.view), kQ3ViewStatusDone);
    EXPECT_EQ(Q3Group_AddObject(set, set), nullptr);
    EXPECT_EQ(Q3Light_SetBrightness(set, 1), kQ3Failure);
    EXPECT_EQ(Q3Camera_GetData(set, nullptr), kQ3Failure);
    EXPECT_EQ(Q3Pick_GetNumHits(set, nullptr), kQ3Failure);
    EXPECT_EQ(Q3TextureShader_SetTexture(set, set), kQ3Failure);
    EXPECT_EQ(Q3NURBCurve_GetControlPoint(set, 0, nullptr), kQ3Failure);
    EXPECT_EQ(Q3HitPath_EmptyData(nullptr), kQ3Failure);
    TQ3Object view = tv.view;
    EXPECT_EQ(Q3Shared_GetReference(view), nullptr); // a view is not shared
    Q3Object_Dispose(set);
}

TEST_F(Robustness, DisposingTheViewInAPassEndsThePass) {
    TQ3Object sq = square(1, 0);
    auto tv = std::make_unique<TestView>(8, 8);
    ASSERT_EQ(Q3View_StartRendering(tv->view), kQ3Success);
    Q3Object_Submit(sq, tv->view);
    tv.reset(); // disposes of the view with its pass open
    Q3Object_Dispose(sq);
}

} // namespace
