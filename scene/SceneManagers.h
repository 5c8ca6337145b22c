// The one place that owns the objects of a scene, and submits them in the
// order of a frame.
#pragma once

#include "d3d/DGridObject.h"
#include "foundation/WCommander.h"
#include "scene/K3DSelection.h"
#include "scene/VCLightManager.h"
#include "scene/VCModelManager.h"

#include <memory>

class K3DView;
class VCBezierCurveModel;
class VCNURBSCurveModel;
class VCNurbsCurve;

class K3DSceneManager : public KCommandsHandler {
  public:
    virtual K3DSelection* GetSelection() = 0;
    // Tells the scene that an object was placed in `view`.
    virtual void ObjectPlaced(K3DView* /*view*/) {}
};

class VCSceneManager : public K3DSceneManager, public VCModelManager, public VCLightManager {
  public:
    VCSceneManager();
    ~VCSceneManager() override;

    // Raises the id counter and answers it: the first id of a scene is 1.
    std::uint32_t GetNextId() { return ++nextId; }
    // Command 100001 adds a light: the parameter is two words, in the view
    // and out the new light or null.
    bool PerformCommand(std::int32_t command, void* parameter) override;
    // Light icons (when shown), then the models' styles and the models (when
    // shown). The lights themselves stand in the view's light group.
    virtual void Submit(const DViewerObject& viewer);
    virtual void DeleteObject(K3DObject* object);
    virtual bool CanDelete(K3DObject* object) const;
    VCSelection* GetSelection() override { return &selection; }
    // Deletes the selected objects that the user may delete.
    void DeleteSelected();
    // Shows or hides the widgets of the selection.
    void SetWidgetsVisible(bool flag);
    // A deleted light or model leaves the selection first.
    void DeleteLight(VCLight* light) override;
    void DeleteModel(VCModel* model) override;
    void DeleteAllModels() override;

    void SetLightsVisible(bool v) { lightsVisible = v; }
    void SetModelsVisible(bool v) { modelsVisible = v; }
    bool GetLightsVisible() const { return lightsVisible; }
    bool GetModelsVisible() const { return modelsVisible; }

    VCSelection selection;
    std::uint32_t nextId = 0;
    std::uint8_t lightsVisible = 1;
    std::uint8_t modelsVisible = 1;
};

class VZarbesoSceneManager : public VCSceneManager {
  public:
    // The most lights a scene may hold.
    static constexpr std::uint32_t kMaxLights = 5;

    VZarbesoSceneManager();
    void Submit(const DViewerObject& viewer) override;
    // Refuses a sixth light with the alert of the limit; a new light takes
    // the present icon size.
    VCLight* AddLight(K3DView* view) override;
    // Tells the window that a light was placed: rstV from the view.
    void ObjectPlaced(K3DView* view) override;
    virtual void ReportLightLimit();
    // Multiplies the icon size of all lights; a factor of about 0 or below
    // changes nothing.
    void ScaleLights(float factor);
    // Only lights may be deleted by the user.
    bool CanDelete(K3DObject* object) const override;

    VZarbesoModel* NewTextModelFromGeometry(const DObject& geometry);
    // Takes a model made with GetNextId into the scene, which then owns it.
    void AddModel(VZarbesoModel* model);
    VZarbesoModel* NewTextModelFromGroup(const DDisplayGroup& group);
    // Curve models over groups of their own, holding `curve` (a Bezier model
    // may start without one); the user cannot select them as objects.
    VCNURBSCurveModel* NewNURBSModel(std::unique_ptr<VCNurbsCurve> curve);
    VCBezierCurveModel* NewBezierModel(std::unique_ptr<VCNurbsCurve> curve);
    void RemoveModel(VCModel* model);
    // Whether the scene still holds the model.
    bool HasModel(const VCModel* model) const;

    void SetGridVisible(bool v) { gridVisible = v; }
    bool GetGridVisible() const { return gridVisible; }

    std::uint8_t gridVisible = 1;
    DGridObject grid;
    float lightScale = 1.0f;

  private:
    // A light icon's scale: a tenth of lightScale on every axis.
    KVector3D LightIconScale() const;
};
