// Models and the scene manager.
#include "d3d/DGeometryObject.h"
#include "scene/K3DSystem.h"
#include "scene/SceneManagers.h"

#include <gtest/gtest.h>

namespace {
struct Scene : ::testing::Test {
    VC3DSystem system;
    VZarbesoSceneManager scene;
    DDisplayGroup content;
};
} // namespace

TEST_F(Scene, IdsCountFromOneAcrossManagersAndPickIdsFindTheirModel) {
    VZarbesoModel* a = scene.NewTextModelFromGroup(content);
    VCModel* b = scene.AddModelFromGroup(content);
    EXPECT_EQ(a->GetId(), 1u);
    EXPECT_EQ(b->GetId(), 2u);
    EXPECT_EQ(scene.GetModelByPickId(0x07000002u), b);
    EXPECT_EQ(b->GetPickedId(), 0x07000002u) << "the model keeps the whole pick id";
    EXPECT_EQ(scene.GetModelByPickId(3), nullptr);
    EXPECT_FALSE(scene.CanDelete(a)) << "models stay; only lights may be deleted";
}

TEST_F(Scene, ScaleReplacesOrMultipliesAndModeOneLeavesItOut) {
    VZarbesoModel* model = scene.NewTextModelFromGroup(content);
    model->SetScale({2, 3, 4, 0});
    model->MultiplyScale({2, 1, 0.5f, 0});
    model->Translate({1, 0, 0, 0});
    TQ3Matrix4x4 m;
    model->GetLocalToWorld(m, 0);
    EXPECT_FLOAT_EQ(m.value[0][0], 4.0f);
    EXPECT_FLOAT_EQ(m.value[1][1], 3.0f);
    EXPECT_FLOAT_EQ(m.value[2][2], 2.0f);
    EXPECT_FLOAT_EQ(m.value[3][0], 1.0f);
    model->GetLocalToWorld(m, 1);
    EXPECT_FLOAT_EQ(m.value[0][0], 1.0f);
    EXPECT_FLOAT_EQ(m.value[3][0], 1.0f);
    KVector3D scales;
    model->GetAxisScales(scales);
    EXPECT_FLOAT_EQ(scales.y, 3.0f);
}

TEST_F(Scene, RemovingWhatIsNotInTheGroupThrowsPlin) {
    VZarbesoModel* model = scene.NewTextModelFromGroup(content);
    DDisplayGroup stranger;
    EXPECT_THROW(
        try { model->RemoveFromGroup(stranger); } catch (std::int32_t code) {
            EXPECT_EQ(code, kFailPlin);
            throw;
        },
        std::int32_t);
}
