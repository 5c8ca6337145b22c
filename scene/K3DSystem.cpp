#include "scene/K3DSystem.h"

#include "d3d/DCustomElements.h"
#include "d3d/DObject.h"
#include "d3d/DWidgetFactory.h"
#include "platform/finalrender/LightWorksSL.h"

K3DSystem::~K3DSystem() = default;

VC3DSystem::VC3DSystem() {
    try {
        CheckStatus(Q3Initialize());
        initialized_ = true;
        // The final renderer registers its class with the library.
        CheckStatus(Q3LightWorks_SL_Initialise(kQ3LightWorksSLClassName, kQ3LightWorksSLNickName,
                                               kQ3LightWorksSLNickName));
        RegisterCustomElements();
        elementsRegistered_ = true;
        picker_ = std::make_unique<VCPicker>();
        viewMatrix_ = std::make_unique<VCViewMatrix>();
    } catch (...) {
        if (elementsRegistered_) UnregisterCustomElements();
        if (initialized_) Q3Exit();
        throw;
    }
}

VC3DSystem::~VC3DSystem() {
    viewMatrix_.reset();
    picker_.reset();
    // The widgets made for the run hold library objects; they go first.
    TheWidgetFactory().Clear();
    if (elementsRegistered_) UnregisterCustomElements();
    if (initialized_) Q3Exit();
}
