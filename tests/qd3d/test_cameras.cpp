// Cameras and the matrices of a pass: where a point of the world lands in
// the window for each kind of camera, the view port, and the matrices the
// view hands out only while a pass is open.
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace q3test;

namespace {

using Cameras = q3test::LibraryTest;

// The window position of a world point through a view's pass matrices.
TQ3Point3D toWindow(TQ3ViewObject view, TQ3Point3D p) {
    TQ3Matrix4x4 worldToFrustum, frustumToWindow, all;
    EXPECT_EQ(Q3View_GetWorldToFrustumMatrixState(view, &worldToFrustum), kQ3Success);
    EXPECT_EQ(Q3View_GetFrustumToWindowMatrixState(view, &frustumToWindow), kQ3Success);
    Q3Matrix4x4_Multiply(&worldToFrustum, &frustumToWindow, &all);
    TQ3Point3D out;
    Q3Point3D_Transform(&p, &all, &out);
    return out;
}

TEST_F(Cameras, PerspectiveMapsTheFieldOntoTheWindow) {
    TestView tv(200, 100, 10, false); // 90 degrees high, aspect 2
    ASSERT_EQ(Q3View_StartRendering(tv.view), kQ3Success);
    // the centre of interest lands in the middle; the top of the field at the
    // top edge; x reaches twice as far because of the aspect
    TQ3Point3D c = toWindow(tv.view, {0, 0, 0});
    EXPECT_NEAR(c.x, 100, 1e-3);
    EXPECT_NEAR(c.y, 50, 1e-3);
    TQ3Point3D top = toWindow(tv.view, {0, 10, 0});
    EXPECT_NEAR(top.y, 0, 1e-3);
    TQ3Point3D right = toWindow(tv.view, {20, 0, 0});
    EXPECT_NEAR(right.x, 200, 1e-3);
    // depth: 0 at the hither plane, -1 at yon
    EXPECT_NEAR(toWindow(tv.view, {0, 0, 10 - 0.1f}).z, 0, 1e-4);
    EXPECT_NEAR(toWindow(tv.view, {0, 0, 10 - 100}).z, -1, 1e-4);
    Q3View_EndRendering(tv.view);
    // outside a pass the view hands out no matrices
    TQ3Matrix4x4 m;
    EXPECT_EQ(Q3View_GetFrustumToWindowMatrixState(tv.view, &m), kQ3Failure);
}

TEST_F(Cameras, ViewToFrustumHasTheLastColumnOfAPerspective) {
    TQ3CameraData cd{{{0, 0, 5}, {0, 0, 0}, {0, 1, 0}}, {1, 11}, {{-1, 1}, 2, 2}};
    TQ3ViewAngleAspectCameraData ad{cd, 1.5707964f, 1};
    TQ3CameraObject cam = Q3ViewAngleAspectCamera_New(&ad);
    TQ3Matrix4x4 v2f, w2v;
    ASSERT_EQ(Q3Camera_GetViewToFrustum(cam, &v2f), kQ3Success);
    EXPECT_FLOAT_EQ(v2f.value[2][3], -1);
    EXPECT_FLOAT_EQ(v2f.value[3][3], 0);
    EXPECT_NEAR(v2f.value[0][0], 1, 1e-6);
    EXPECT_NEAR(v2f.value[1][1], 1, 1e-6);
    ASSERT_EQ(Q3Camera_GetWorldToView(cam, &w2v), kQ3Success);
    // the camera's location goes to the view's origin, looking down -z
    TQ3Point3D eye{0, 0, 5}, ahead{0, 0, 0}, out;
    Q3Point3D_Transform(&eye, &w2v, &out);
    EXPECT_NEAR(out.z, 0, 1e-6);
    Q3Point3D_Transform(&ahead, &w2v, &out);
    EXPECT_NEAR(out.z, -5, 1e-6);
    // a narrower field enlarges
    Q3ViewAngleAspectCamera_SetFOV(cam, 0.5f);
    Q3Camera_GetViewToFrustum(cam, &v2f);
    EXPECT_NEAR(v2f.value[1][1], 1 / std::tan(0.25f), 1e-4);
    // an up vector along the line of sight still gives a camera
    TQ3CameraPlacement along{{0, 0, 5}, {0, 0, 0}, {0, 0, 1}};
    Q3Camera_SetPlacement(cam, &along);
    EXPECT_EQ(Q3Camera_GetWorldToView(cam, &w2v), kQ3Success);
    // a zero field does not
    Q3ViewAngleAspectCamera_SetFOV(cam, 0);
    EXPECT_EQ(Q3Camera_GetViewToFrustum(cam, &v2f), kQ3Failure);
    Q3Object_Dispose(cam);
}

TEST_F(Cameras, OrthographicAndViewPlaneCamerasProject) {
    TQ3CameraData cd{{{0, 0, 5}, {0, 0, 0}, {0, 1, 0}}, {0.5f, 20}, {{-1, 1}, 2, 2}};
    TQ3OrthographicCameraData od{cd, -4, 2, 4, -2};
    TQ3CameraObject ortho = Q3OrthographicCamera_New(&od);
    TQ3Matrix4x4 w2f;
    ASSERT_EQ(Q3Camera_GetWorldToFrustum(ortho, &w2f), kQ3Success);
    TQ3Point3D corner{4, 2, -7}, f;
    Q3Point3D_Transform(&corner, &w2f, &f);
    EXPECT_NEAR(f.x, 1, 1e-5);
    EXPECT_NEAR(f.y, 1, 1e-5);
    // depth does not shrink sizes
    corner.z = 3;
    Q3Point3D_Transform(&corner, &w2f, &f);
    EXPECT_NEAR(f.x, 1, 1e-5);
    od.left = od.right; // an empty frame cannot project
    Q3OrthographicCamera_SetData(ortho, &od);
    EXPECT_EQ(Q3Camera_GetWorldToFrustum(ortho, &w2f), kQ3Failure);

    // a view plane 5 away with a half width of 2, moved 1 to the right
    TQ3ViewPlaneCameraData pd{cd, 5, 2, 1, 1, 0};
    TQ3CameraObject plane = Q3ViewPlaneCamera_New(&pd);
    ASSERT_EQ(Q3Camera_GetWorldToFrustum(plane, &w2f), kQ3Success);
    TQ3Point3D edge{3, 1, 0};
    Q3Point3D_Transform(&edge, &w2f, &f);
    EXPECT_NEAR(f.x, 1, 1e-5);
    EXPECT_NEAR(f.y, 1, 1e-5);
    Q3Object_Dispose(ortho);
    Q3Object_Dispose(plane);
}

TEST_F(Cameras, ViewPortSelectsAPartOfTheField) {
    TestView tv(100, 100, 5, true);
    // the upper right quarter of the frame fills the window
    TQ3CameraViewPort vp{{0, 1}, 1, 1};
    ASSERT_EQ(Q3Camera_SetViewPort(tv.camera, &vp), kQ3Success);
    ASSERT_EQ(Q3View_StartRendering(tv.view), kQ3Success);
    TQ3Point3D c = toWindow(tv.view, {0.5f, 0.5f, 0});
    EXPECT_NEAR(c.x, 50, 1e-3);
    EXPECT_NEAR(c.y, 50, 1e-3);
    Q3View_EndRendering(tv.view);
}

TEST_F(Cameras, ViewRefusesWhatIsNoCameraAndTheGenericRendererDrawsNothing) {
    TestView tv(8, 8);
    EXPECT_EQ(Q3View_SetCamera(tv.view, tv.lights), kQ3Failure);
    ASSERT_EQ(Q3View_SetRendererByType(tv.view, kQ3RendererTypeGeneric), kQ3Success);
    TQ3Object sq = square(5, 0);
    tv.render([&](TQ3ViewObject v) { Q3Object_Submit(sq, v); });
    EXPECT_EQ(tv.at(4, 4).a, 0xDE); // untouched
    Q3Object_Dispose(sq);
}

TEST_F(Cameras, SettersRefuseTheWrongKindAndNonsense) {
    TQ3SpotLightData sd{{kQ3True, 0.5f, {1, 0.5f, 0}},
                        kQ3True,
                        kQ3AttenuationTypeInverseDistance,
                        {1, 2, 3},
                        {0, 0, -1},
                        0.2f,
                        0.4f,
                        kQ3FallOffTypeCosine};
    TQ3LightObject spot = Q3SpotLight_New(&sd);
    TQ3Point3D at{4, 5, 6};
    EXPECT_EQ(Q3SpotLight_SetFallOff(spot, static_cast<TQ3FallOffType>(9)), kQ3Failure);
    EXPECT_EQ(Q3Light_SetBrightness(spot, NAN), kQ3Failure);
    EXPECT_EQ(Q3PointLight_SetLocation(spot, &at), kQ3Failure); // a spot is no point light
    TQ3StyleObject id = Q3PickIDStyle_New(0x80000001u);
    TQ3FillStyle f = kQ3FillStyleFilled;
    EXPECT_EQ(Q3FillStyle_Get(id, &f), kQ3Failure); // a pick id style is no fill style

    // Half a turn about an axis through (1, 0, 0), then through the origin.
    TQ3RotateAboutAxisTransformData ad{{1, 0, 0}, {0, 0, 1}, 3.1415927f};
    TQ3TransformObject t = Q3RotateAboutAxisTransform_New(&ad);
    TQ3Matrix4x4 m;
    Q3Transform_GetMatrix(t, &m);
    TQ3Point3D p{2, 0, 0}, out;
    Q3Point3D_Transform(&p, &m, &out);
    EXPECT_NEAR(out.x, 0, 1e-5);
    TQ3Point3D origin{0, 0, 0};
    Q3RotateAboutAxisTransform_SetOrigin(t, &origin);
    Q3Transform_GetMatrix(t, &m);
    Q3Point3D_Transform(&p, &m, &out);
    EXPECT_NEAR(out.x, -2, 1e-5);
    EXPECT_EQ(Q3RotateAboutPointTransform_SetAngle(t, 1), kQ3Failure); // other kind
    TQ3RotateTransformData bad{static_cast<TQ3Axis>(5), 1};
    EXPECT_EQ(Q3RotateTransform_New(&bad), nullptr);
    for (TQ3Object o : {spot, id, t})
        Q3Object_Dispose(o);
}

} // namespace
