#include "scene/VCLightManager.h"

#include "d3d/DGroupObject.h"
#include "foundation/Messages.h"
#include "foundation/WBroadcaster.h"
#include "scene/K3DView.h"
#include "scene/SceneManagers.h"

#include <algorithm>

namespace {
struct SubmitLight : KListFunctoid {
    void Apply(KListEntry* entry, void* viewer) override {
        static_cast<VCLight*>(entry)->Submit(*static_cast<const DViewerObject*>(viewer));
    }
};

struct UpdateLight : KListFunctoid {
    void Apply(KListEntry* entry, void* matrix) override {
        static_cast<VCLight*>(entry)->SetViewMatrix(*static_cast<const TQ3Matrix4x4*>(matrix));
    }
};

struct DeleteLightEntry : KListFunctoid {
    void Apply(KListEntry* entry, void* manager) override {
        static_cast<VCLightManager*>(manager)->DeleteLight(static_cast<VCLight*>(entry));
    }
};

struct LightDistance : KListFunctoid {
    KVector3D point;
    float farthest = 0;
    void Apply(KListEntry* entry, void*) override {
        KVector3D p;
        static_cast<VCLight*>(entry)->GetPosition(p);
        farthest = std::max(farthest, (p - point).Length());
    }
};

struct SameLightId : KListTestoid {
    bool Test(KListEntry* entry, std::intptr_t id) override {
        return static_cast<VCLight*>(entry)->GetId() == static_cast<std::uint32_t>(id);
    }
};
} // namespace

VCLightManager::VCLightManager(VCSceneManager* sceneManager)
    : ambient(0.2f), sceneManager_(sceneManager) {}

VCLightManager::~VCLightManager() {
    DeleteAllLights();
}

void VCLightManager::HearMessage(std::int32_t message, void* parameter) {
    if (message != kMsgViewMatrixChanged || !parameter) return;
    UpdateLight update;
    lights.ForEach(update, parameter);
}

VCLight* VCLightManager::AddLight(K3DView* view) {
    if (!view) return nullptr;
    const std::uint32_t id = sceneManager_->GetNextId();
    TQ3Matrix4x4 m;
    view->GetAdornerMatrix(m);
    auto* light = new VCPointLight(id, m);
    lights.Append(light);
    if (!lightGroup_) lightGroup_ = &view->lightGroup;
    try {
        lightGroup_->AddObject(light->GetLight());
        light->CalcBoundingBox(view);
        light->CalcBoundingSphere(view);
    } catch (...) {
        DeleteLight(light);
        throw;
    }
    return light;
}

void VCLightManager::DeleteLight(VCLight* light) {
    if (!light) return;
    lights.RemoveEntry(light);
    if (lightGroup_) {
        if (TQ3GroupPosition at =
                lightGroup_->GetFirstObjectPosition(light->GetLight().GetObject()))
            lightGroup_->RemovePosition(at);
    }
    delete light;
}

void VCLightManager::DeleteAllLights() {
    DeleteLightEntry remove;
    lights.ForEachBackward(remove, this);
}

VCLight* VCLightManager::GetLight(std::uint32_t position) const {
    return static_cast<VCLight*>(lights.EntryAt(position));
}

void VCLightManager::ForEachLight(KListFunctoid& functoid, void* argument) const {
    lights.ForEach(functoid, argument);
}

void VCLightManager::SubmitIcons(const DViewerObject& viewer) const {
    SubmitLight submit;
    lights.ForEachBackward(submit, const_cast<DViewerObject*>(&viewer));
}

VCLight* VCLightManager::GetLightByPickId(std::uint32_t id) const {
    SameLightId test;
    return static_cast<VCLight*>(lights.FirstThat(test, id));
}

float VCLightManager::GetFarthestLight(const KVector3D& point) const {
    LightDistance distance;
    distance.point = point;
    lights.ForEach(distance, nullptr);
    return distance.farthest;
}

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
    // The copy keeps the values as given: through a float and back, most
    // would lose one, and a colour saved and set again would drift.
    ambientColor[0] = r;
    ambientColor[1] = g;
    ambientColor[2] = b;
}

void VCLightManager::StartListening(DLightGroup& lightGroup, WBroadcaster& broadcaster) {
    lightGroup.Empty();
    lightGroup.AddObject(ambient);
    lightGroup_ = &lightGroup;
    broadcaster.AddListener(this);
}
