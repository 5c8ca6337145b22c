#include "scene/K3DPicker.h"

#include "scene/K3DView.h"
#include "scene/SceneManagers.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VCNURBSCurveModel.h"

void K3DPicker::SetView(K3DView* view) {
    SetExtViewer(view);
}

void VCPicker::SetView(K3DView* view) {
    K3DPicker::SetView(view);
    sceneManager = view ? view->GetSceneManager() : nullptr;
}

void VCPicker::PickAt(const MouseEvent& event) {
    pickedObject = nullptr;
    pickedSelected = nullptr;
    K3DPicker::PickAt(event);
}

bool VCPicker::WantsHit(DHitData& hit) {
    pickedObject = nullptr;
    if (!sceneManager) return false;
    const std::uint32_t id = hit.pickId;
    if (curvesOnly) {
        K3DObject* model = sceneManager->GetModelByPickId(id);
        if (dynamic_cast<VCBezierCurveModel*>(model) || dynamic_cast<VCNURBSCurveModel*>(model))
            pickedObject = model;
        return pickedObject != nullptr;
    }
    pickedSelected = sceneManager->GetSelection()->FindByPickId(id);
    if (!pickedSelected) pickedObject = sceneManager->GetModelByPickId(id);
    if (!pickedSelected && !pickedObject) pickedObject = sceneManager->GetLightByPickId(id);
    return pickedSelected || pickedObject;
}

void VCPicker::HandleHit(DHitData& firstHit) {
    if (auto* path = dynamic_cast<VZarbesoModel*>(pickedObject)) path->lastPart = firstHit.pickId;
}

void VCPicker::EndHits() {
    auto* path = dynamic_cast<VZarbesoModel*>(pickedObject);
    if (!path) return;
    for (std::uint32_t i = 0; i < GetHitCount(); ++i) {
        DHitData hit;
        GetHit(i, hit);
        if ((hit.pickId & kPartMask) && (hit.pickId & 0xFFFFFFu) == path->GetId()) {
            path->lastPart = hit.pickId;
            return;
        }
    }
}

K3DSelectedObject* VCPicker::FindSelected(K3DObject* object) {
    auto* sceneObject = dynamic_cast<VC3DObject*>(object);
    if (!sceneManager || !sceneObject) return nullptr;
    return sceneManager->GetSelection()->FindByPickId(sceneObject->GetId() | 0x80000000u);
}
