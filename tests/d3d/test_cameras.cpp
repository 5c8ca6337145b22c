// Cameras: the angle that spans the longer side, the orthographic frame and
// its scale factors, and going back to a saved state.
#include "d3d/DCameraObject.h"
#include "tests/d3d/D3DTestSupport.h"

#include <cmath>

using Cameras = D3DTest;

TEST_F(Cameras, AngleSpansTheLongerSide) {
    DAngleAspectCamera camera;
    EXPECT_EQ(camera.kind, 1);
    camera.SetPane({{0, 0}, {200, 100}});
    EXPECT_FLOAT_EQ(camera.GetAspect(), 2.0f);
    camera.SetFieldOfView(60);
    float fov = 0;
    Q3ViewAngleAspectCamera_GetFOV(camera.object, &fov);
    // Wider than high: the library's vertical angle is the wanted one over
    // the aspect, and the camera still answers the wanted angle.
    EXPECT_NEAR(fov, 60 * 3.1415927f / 180 / 2, 1e-6f);
    EXPECT_NEAR(camera.GetFieldOfView(), 60.0f, 1e-4f);
    camera.SetPane({{0, 0}, {100, 200}});
    camera.SetFieldOfView(60);
    Q3ViewAngleAspectCamera_GetFOV(camera.object, &fov);
    EXPECT_NEAR(fov, 60 * 3.1415927f / 180, 1e-6f);
    // An empty pane leaves a usable aspect.
    camera.SetPane({{0, 0}, {0, 0}});
    EXPECT_EQ(camera.GetAspect(), 1.0f);
    camera.SetAspect(std::nanf(""));
    EXPECT_EQ(camera.GetAspect(), 1.0f);
}

TEST_F(Cameras, OrthographicFrameAndScale) {
    DOrthographicCamera camera;
    EXPECT_EQ(camera.kind, 2);
    camera.FitToPane(8, 6);
    camera.SetScale(2, 4);
    TQ3OrthographicCameraData data{};
    Q3OrthographicCamera_GetData(camera.object, &data);
    EXPECT_FLOAT_EQ(data.right, 2.0f);
    EXPECT_FLOAT_EQ(data.top, 0.75f);
    camera.Zoom(0.5f);
    Q3OrthographicCamera_GetData(camera.object, &data);
    EXPECT_FLOAT_EQ(data.left, -4.0f);
    camera.ScaleBy(0, 1); // ignored: no division by zero
    Q3OrthographicCamera_GetData(camera.object, &data);
    EXPECT_FLOAT_EQ(data.left, -4.0f);
}

TEST_F(Cameras, RestoreGoesBackToWhatSaveKept) {
    DAngleAspectCamera camera;
    camera.SetPlacement({0, 0, 10}, {0, 0, 0}, {0, 1, 0});
    camera.Save();
    camera.Zoom(2);
    TQ3CameraPlacement placement{};
    Q3Camera_GetPlacement(camera.object, &placement);
    EXPECT_FLOAT_EQ(placement.cameraLocation.z, 5.0f);
    TQ3Matrix4x4 turn;
    Q3Matrix4x4_SetRotate_Y(&turn, 3.1415927f / 2);
    camera.Rotate(turn);
    Q3Camera_GetPlacement(camera.object, &placement);
    EXPECT_NEAR(placement.cameraLocation.x, 5.0f, 1e-5f);
    camera.Restore();
    Q3Camera_GetPlacement(camera.object, &placement);
    EXPECT_FLOAT_EQ(placement.cameraLocation.z, 10.0f);
    EXPECT_FLOAT_EQ(camera.GetData().placement.cameraLocation.x, 0.0f);
}
