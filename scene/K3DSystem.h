// The process-wide 3D system: starts the 3D library and the final renderer
// library, registers the custom elements, and holds the one picker and the
// one view matrix loop that the tools share. Built on the stack of the
// host's Start call.
#pragma once

#include "d3d/Singleton.h"
#include "scene/K3DPicker.h"
#include "scene/K3DViewMatrix.h"

#include <cstdint>

class K3DSystem : public Singleton<K3DSystem> {
  public:
    virtual ~K3DSystem();
    virtual K3DPicker* GetPicker() = 0;
    virtual K3DViewMatrix* GetViewMatrix() = 0;

    // The library is part of the module, so it is always there, at the
    // interface version the scene code is written against (1.5.0).
    static bool IsAvailable() { return true; }
    static std::uint32_t GetVersion() { return 0x10500; }
};

class VC3DSystem : public K3DSystem {
  public:
    // Throws lF3q when the library or its elements cannot be started.
    VC3DSystem();
    ~VC3DSystem() override;
    K3DPicker* GetPicker() override { return picker_.get(); }
    K3DViewMatrix* GetViewMatrix() override { return viewMatrix_.get(); }

  private:
    bool initialized_ = false;
    bool elementsRegistered_ = false;
    std::unique_ptr<VCPicker> picker_;
    std::unique_ptr<VCViewMatrix> viewMatrix_;
};
