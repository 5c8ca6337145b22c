#include "scene/K3DPicker.h"

#include "scene/K3DView.h"
#include "scene/SceneManagers.h"
#include "scene/VCBezierCurveModel.h"

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
    pickedSelected = sceneManager->GetSelection()->FindByPickId(id);
    if (!pickedSelected) pickedObject = sceneManager->GetModelByPickId(id);
    if (!pickedSelected && !pickedObject) pickedObject = sceneManager->GetLightByPickId(id);
    return pickedSelected || pickedObject;
}

void VCPicker::HandleHit(DHitData& firstHit) {
    if (auto* path = dynamic_cast<VCBezierCurveModel*>(pickedObject))
        path->lastPart = firstHit.pickId;
}

K3DSelectedObject* VCPicker::FindSelected(K3DObject* object) {
    auto* sceneObject = dynamic_cast<VC3DObject*>(object);
    if (!sceneManager || !sceneObject) return nullptr;
    return sceneManager->GetSelection()->FindByPickId(sceneObject->GetId() | 0x80000000u);
}
