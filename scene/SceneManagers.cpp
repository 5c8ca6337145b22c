#include "scene/SceneManagers.h"

#include "d3d/DViewerObject.h"
#include "foundation/Messages.h"
#include "foundation/WBroadcaster.h"

namespace {
struct SubmitModel : KListFunctoid {
    void Apply(KListEntry* entry, void* viewer) override {
        static_cast<VCModel*>(entry)->Submit(*static_cast<const DViewerObject*>(viewer));
    }
};

struct SameId : KListTestoid {
    bool Test(KListEntry* entry, std::intptr_t id) override {
        return static_cast<VCModel*>(entry)->GetId() == static_cast<std::uint32_t>(id);
    }
};
} // namespace

// ---- models ----------------------------------------------------------------

VCModelManager::VCModelManager(VCSceneManager* sceneManager) : sceneManager_(sceneManager) {
    // World-space subdivision of curved surfaces.
    subdivisionStyle.SetData({kQ3SubdivisionMethodWorldSpace, 0.1f, 0.0f});
}

VCModelManager::~VCModelManager() {
    models.DeleteAll();
}

void VCModelManager::SubmitAll(const DViewerObject& viewer) {
    SubmitModels(viewer);
}

VCModel* VCModelManager::AddModelFromGeometry(const DObject& geometry) {
    auto* model = new VCModel(sceneManager_->GetNextId(), geometry);
    models.Append(model);
    return model;
}

VCModel* VCModelManager::AddModelFromGroup(const DDisplayGroup& group) {
    return AddModelFromGeometry(group);
}

void VCModelManager::DeleteAllModels() {
    models.DeleteAll();
}

void VCModelManager::DeleteModel(VCModel* model) {
    models.RemoveEntry(model);
    delete model;
}

void VCModelManager::SubmitModels(const DViewerObject& viewer) {
    SubmitModel submit;
    models.ForEachBackward(submit, const_cast<DViewerObject*>(&viewer));
}

VCModel* VCModelManager::GetModelByPickId(std::uint32_t pickId) {
    SameId test;
    auto* model = static_cast<VCModel*>(models.FirstThat(test, pickId & 0xFFFFFFu));
    if (model) model->SetPickedId(pickId);
    return model;
}

VCModel* VCModelManager::GetModel(std::uint32_t position) const {
    return static_cast<VCModel*>(models.EntryAt(position));
}

// ---- lights ----------------------------------------------------------------

VCLightManager::VCLightManager() : ambient(0.2f) {}

VCLightManager::~VCLightManager() = default;

void VCLightManager::HearMessage(std::int32_t, void*) {}

void VCLightManager::SetAmbientBrightness(float value) {
    ambient.SetBrightness(value);
    ambientBrightness = value;
}

void VCLightManager::SetAmbientColor(float r, float g, float b) {
    ambient.SetColor(r, g, b);
    ambientColor[0] = static_cast<std::uint16_t>(r * 65535.0);
    ambientColor[1] = static_cast<std::uint16_t>(g * 65535.0);
    ambientColor[2] = static_cast<std::uint16_t>(b * 65535.0);
}

void VCLightManager::SetAmbientColor16(std::uint16_t r, std::uint16_t g, std::uint16_t b) {
    SetAmbientColor(r / 65535.0f, g / 65535.0f, b / 65535.0f);
}

void VCLightManager::StartListening(DLightGroup& lightGroup, WBroadcaster& broadcaster) {
    lightGroup.Empty();
    lightGroup.AddObject(ambient);
    broadcaster.AddListener(this);
}

// ---- scene -----------------------------------------------------------------

VCSceneManager::VCSceneManager() : VCModelManager(this) {}

VCSceneManager::~VCSceneManager() = default;

void VCSceneManager::Submit(const DViewerObject& viewer) {
    if (modelsVisible) {
        fillStyle.Submit(viewer);
        subdivisionStyle.Submit(viewer);
        SubmitModels(viewer);
    }
}

void VCSceneManager::DeleteObject(K3DObject* object) {
    if (auto* model = dynamic_cast<VCModel*>(object)) DeleteModel(model);
}

bool VCSceneManager::CanDelete(K3DObject*) const {
    return true;
}

VZarbesoSceneManager::VZarbesoSceneManager()
    : grid(KVector3D{-10, 0, -10, 1}, KVector3D{10, 0, 10, 1}, 20) {}

void VZarbesoSceneManager::Submit(const DViewerObject& viewer) {
    VCSceneManager::Submit(viewer);
    if (gridVisible) grid.Submit(viewer);
}

bool VZarbesoSceneManager::CanDelete(K3DObject* object) const {
    return dynamic_cast<VCModel*>(object) == nullptr;
}

VZarbesoModel* VZarbesoSceneManager::NewTextModelFromGeometry(const DObject& geometry) {
    auto* model = new VZarbesoModel(GetNextId(), geometry);
    models.Append(model);
    return model;
}

VZarbesoModel* VZarbesoSceneManager::NewTextModelFromGroup(const DDisplayGroup& group) {
    return NewTextModelFromGeometry(group);
}

void VZarbesoSceneManager::RemoveModel(VCModel* model) {
    DeleteModel(model);
}
