// The one place that owns the objects of a scene, and submits them in the
// order of a frame.
#pragma once

#include "d3d/DGridObject.h"
#include "foundation/WCommander.h"
#include "scene/VCLightManager.h"
#include "scene/VCModelManager.h"

class K3DView;

class K3DSceneManager : public KCommandsHandler {
  public:
    // Tells the scene that an object was placed in `view`.
    virtual void ObjectPlaced(K3DView& /*view*/) {}
};

class VCSceneManager : public K3DSceneManager, public VCModelManager, public VCLightManager {
  public:
    VCSceneManager();
    ~VCSceneManager() override;

    // Raises the id counter and answers it: the first id of a scene is 1.
    std::uint32_t GetNextId() { return ++nextId; }
    // Light icons (when shown), then the models' styles and the models (when
    // shown).
    virtual void Submit(const DViewerObject& viewer);
    virtual void DeleteObject(K3DObject* object);
    virtual bool CanDelete(K3DObject* object) const;

    void SetLightsVisible(bool v) { lightsVisible = v; }
    void SetModelsVisible(bool v) { modelsVisible = v; }
    bool GetLightsVisible() const { return lightsVisible; }
    bool GetModelsVisible() const { return modelsVisible; }

    std::uint32_t nextId = 0;
    std::uint8_t lightsVisible = 1;
    std::uint8_t modelsVisible = 1;
};

class VZarbesoSceneManager : public VCSceneManager {
  public:
    VZarbesoSceneManager();
    void Submit(const DViewerObject& viewer) override;
    // Only lights may be deleted by the user.
    bool CanDelete(K3DObject* object) const override;

    VZarbesoModel* NewTextModelFromGeometry(const DObject& geometry);
    VZarbesoModel* NewTextModelFromGroup(const DDisplayGroup& group);
    void RemoveModel(VCModel* model);

    void SetGridVisible(bool v) { gridVisible = v; }
    bool GetGridVisible() const { return gridVisible; }

    std::uint8_t gridVisible = 1;
    DGridObject grid;
    float lightScale = 1.0f;
};
