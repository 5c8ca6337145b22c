// Lights: the limit of five, their place through the camera transforms,
// icon sizes and deletion.
#include "foundation/Messages.h"
#include "resources/Strings.h"
#include "scene/K3DSystem.h"
#include "scene/SceneAlerts.h"
#include "scene/VZarbesoView.h"

#include <gtest/gtest.h>
#include <vector>

namespace {
std::vector<int> gAlerts;

struct Lights : ::testing::Test {
    void SetUp() override {
        gAlerts.clear();
        SetSceneAlert([](int id) { gAlerts.push_back(id); });
    }
    void TearDown() override { SetSceneAlert(nullptr); }
    VC3DSystem system;
    VZarbesoView view{200, 120};
    VZarbesoSceneManager& scene = *view.GetSceneManager();
};

TQ3Point3D Location(const VCLight& light) {
    TQ3Point3D p;
    Q3PointLight_GetLocation(light.GetLight().GetObject(), &p);
    return p;
}
} // namespace

TEST_F(Lights, FiveAreAcceptedAndTheSixthIsRefusedWithTheAlert) {
    void* block[2] = {&view, nullptr};
    for (int i = 0; i < 5; ++i) {
        block[1] = nullptr;
        EXPECT_TRUE(scene.DispatchCommand(kCmdAddLight, block));
        ASSERT_NE(block[1], nullptr) << "light " << i + 1;
    }
    EXPECT_TRUE(gAlerts.empty());
    EXPECT_TRUE(scene.DispatchCommand(kCmdAddLight, block));
    EXPECT_EQ(block[1], nullptr);
    EXPECT_EQ(scene.GetLightCount(), 5u);
    EXPECT_EQ(gAlerts, std::vector<int>{plumet::kStrLightLimit});
    // Ambient and five point lights stand in the view's light group.
    EXPECT_EQ(view.lightGroup.CountObjects(), 6u);
    // Ids come from the scene's one counter, after those of the text.
    EXPECT_EQ(scene.GetLightByPickId(scene.GetLight(5)->GetId()), scene.GetLight(5));
    EXPECT_EQ(scene.GetLightByPickId(scene.GetLight(5)->GetId() | 0x80000000u), nullptr);
}

TEST_F(Lights, ALightKeepsItsScenePlaceAndItsLibraryPlaceFollowsTheCamera) {
    VCLight* light = scene.AddLight(&view);
    ASSERT_NE(light, nullptr);
    light->Translate({1, 2, 0, 0});
    // The view starts with a scale of 3 in front of the scene.
    EXPECT_NEAR(Location(*light).x, 3.0f, 1e-5);
    EXPECT_NEAR(Location(*light).y, 6.0f, 1e-5);
    const TQ3Matrix4x4 quarter = MatrixFromRotation(0, 1.5707964f, 0);
    view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &quarter, false);
    KVector3D position;
    light->GetPosition(position);
    EXPECT_FLOAT_EQ(position.x, 1.0f) << "the scene place stays";
    // A quarter turn about y takes x to -z.
    EXPECT_NEAR(Location(*light).x, 0.0f, 1e-4);
    EXPECT_NEAR(Location(*light).z, -3.0f, 1e-4);
    EXPECT_NEAR(Location(*light).y, 6.0f, 1e-4);
}

TEST_F(Lights, IconSizeFollowsTheLightScale) {
    scene.ScaleLights(3.0f);
    VCLight* light = scene.AddLight(&view);
    TQ3Matrix4x4 s;
    light->GetScaleMatrix(s);
    EXPECT_FLOAT_EQ(s.value[0][0], 0.3f);
    scene.ScaleLights(0.0f);
    EXPECT_FLOAT_EQ(scene.lightScale, 3.0f) << "a zero factor changes nothing";
    scene.ScaleLights(4.0f / 3.0f); // Large
    scene.ScaleLights(2.0f / 4.0f); // then Small
    EXPECT_NEAR(scene.lightScale, 2.0f, 1e-6);
    light->GetScaleMatrix(s);
    EXPECT_NEAR(s.value[1][1], 0.2f, 1e-6);
    // The icon's bounds are those of the unscaled sphere, equal on all axes.
    TQ3BoundingBox box;
    light->GetBoundingBox(box);
    EXPECT_NEAR(box.min.x, -0.5f, 1e-3);
    EXPECT_NEAR(box.max.z, 0.5f, 1e-3);
}

TEST_F(Lights, DeletedLightsLeaveTheLightGroupAndAColourReachesBothSides) {
    VCLight* a = scene.AddLight(&view);
    VCLight* b = scene.AddLight(&view);
    a->SetColor(1, 0.5f, 0);
    float r, g, bl;
    a->GetColor(r, g, bl);
    EXPECT_FLOAT_EQ(g, 0.5f);
    TQ3ColorRGB icon;
    ASSERT_EQ(Q3AttributeSet_Get(a->attributes.GetObject(), kQ3AttributeTypeDiffuseColor, &icon),
              kQ3Success);
    EXPECT_FLOAT_EQ(icon.r, 1.0f);
    scene.DeleteObject(a);
    EXPECT_EQ(scene.GetLightCount(), 1u);
    EXPECT_EQ(view.lightGroup.CountObjects(), 2u);
    EXPECT_EQ(scene.GetLight(1), b);
    scene.DeleteAllLights();
    EXPECT_EQ(view.lightGroup.CountObjects(), 1u) << "the ambient light stays";
    scene.SetAmbientColor(1, 1, 1);
    EXPECT_EQ(scene.ambientColor[2], 65535);
}
