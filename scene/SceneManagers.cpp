#include "scene/SceneManagers.h"

#include "d3d/DViewerObject.h"
#include "foundation/Messages.h"
#include "foundation/WBroadcaster.h"
#include "resources/Strings.h"
#include "scene/K3DView.h"
#include "scene/K3DViewAdorner.h"
#include "scene/SceneAlerts.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VCNURBSCurveModel.h"

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

// ---- scene -----------------------------------------------------------------

VCSceneManager::VCSceneManager() : VCModelManager(this), VCLightManager(this) {}

VCSceneManager::~VCSceneManager() = default;

bool VCSceneManager::PerformCommand(std::int32_t command, void* parameter) {
    if (command != kCmdAddLight || !parameter)
        return K3DSceneManager::PerformCommand(command, parameter);
    void** block = static_cast<void**>(parameter);
    block[1] = AddLight(static_cast<K3DView*>(block[0]));
    return true;
}

void VCSceneManager::Submit(const DViewerObject& viewer) {
    if (lightsVisible) SubmitIcons(viewer);
    if (modelsVisible) {
        fillStyle.Submit(viewer);
        subdivisionStyle.Submit(viewer);
        SubmitModels(viewer);
    }
}

void VCSceneManager::DeleteObject(K3DObject* object) {
    if (auto* light = dynamic_cast<VCLight*>(object))
        DeleteLight(light);
    else if (auto* model = dynamic_cast<VCModel*>(object))
        DeleteModel(model);
}

bool VCSceneManager::CanDelete(K3DObject*) const {
    return true;
}

void VCSceneManager::DeleteSelected() {
    selection.DeleteDeletable(*this);
}

void VCSceneManager::SetWidgetsVisible(bool flag) {
    selection.ShowWidgets(flag);
}

void VCSceneManager::DeleteLight(VCLight* light) {
    selection.Deselect(light);
    VCLightManager::DeleteLight(light);
}

void VCSceneManager::DeleteModel(VCModel* model) {
    selection.Deselect(model);
    VCModelManager::DeleteModel(model);
}

void VCSceneManager::DeleteAllModels() {
    selection.Clear();
    VCModelManager::DeleteAllModels();
}

VZarbesoSceneManager::VZarbesoSceneManager()
    : grid(KVector3D{-10, 0, -10, 1}, KVector3D{10, 0, 10, 1}, 20) {}

void VZarbesoSceneManager::Submit(const DViewerObject& viewer) {
    VCSceneManager::Submit(viewer);
    if (gridVisible) grid.Submit(viewer);
}

VCLight* VZarbesoSceneManager::AddLight(K3DView* view) {
    if (GetLightCount() >= kMaxLights) {
        ReportLightLimit();
        return nullptr;
    }
    VCLight* light = VCSceneManager::AddLight(view);
    if (light) light->SetScale(LightIconScale());
    return light;
}

void VZarbesoSceneManager::ReportLightLimit() {
    SceneAlert(plumet::kStrLightLimit);
}

void VZarbesoSceneManager::ObjectPlaced(K3DView* view) {
    if (auto* adorner = dynamic_cast<K3DViewAdorner*>(view))
        adorner->Broadcast(kMsgLightPlaced, nullptr);
}

namespace {
struct ScaleLight : KListFunctoid {
    void Apply(KListEntry* entry, void* scale) override {
        static_cast<VCLight*>(entry)->SetScale(*static_cast<const KVector3D*>(scale));
    }
};
} // namespace

KVector3D VZarbesoSceneManager::LightIconScale() const {
    const float s = lightScale / 10.0f;
    return {s, s, s, 0};
}

void VZarbesoSceneManager::ScaleLights(float factor) {
    if (!(factor > 1.1920929e-07f)) return;
    lightScale *= factor;
    KVector3D scale = LightIconScale();
    ScaleLight apply;
    ForEachLight(apply, &scale);
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

void VZarbesoSceneManager::AddModel(VZarbesoModel* model) {
    if (model) models.Append(model);
}

void VZarbesoSceneManager::RemoveModel(VCModel* model) {
    DeleteModel(model);
}

bool VZarbesoSceneManager::HasModel(const VCModel* model) const {
    for (std::uint32_t i = 1; i <= GetModelCount(); ++i)
        if (GetModel(i) == model) return true;
    return false;
}

VCNURBSCurveModel* VZarbesoSceneManager::NewNURBSModel(std::unique_ptr<VCNurbsCurve> curve) {
    auto* model = new VCNURBSCurveModel(GetNextId(), DDisplayGroup());
    AddModel(model);
    model->selectable = 0;
    model->SetCurve(std::move(curve));
    return model;
}

VCBezierCurveModel* VZarbesoSceneManager::NewBezierModel(std::unique_ptr<VCNurbsCurve> curve) {
    auto* model = new VCBezierCurveModel(GetNextId(), DDisplayGroup());
    AddModel(model);
    model->selectable = 0;
    if (curve) model->SetCurve(std::move(curve));
    return model;
}
