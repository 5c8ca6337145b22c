#pragma once

#include "d3d/DStyleObject.h"
#include "foundation/KList.h"
#include "scene/VCModel.h"

class DViewerObject;
class VCSceneManager;

// The models of a scene and the styles they are drawn with.
class VCModelManager {
  public:
    explicit VCModelManager(VCSceneManager* sceneManager);
    virtual ~VCModelManager();

    virtual void SubmitAll(const DViewerObject& viewer);
    // Each makes a model with the scene's next id and appends it.
    virtual VCModel* AddModelFromGeometry(const DObject& geometry);
    virtual VCModel* AddModelFromGroup(const DDisplayGroup& group);
    virtual void DeleteAllModels();
    virtual void DeleteModel(VCModel* model);
    // The model added last is submitted first.
    virtual void SubmitModels(const DViewerObject& viewer);

    // The model whose id is the low 24 bits of a pick id; it keeps the whole
    // pick id. Null when none has that id.
    VCModel* GetModelByPickId(std::uint32_t pickId);
    std::uint32_t GetModelCount() const { return models.GetCount(); }
    VCModel* GetModel(std::uint32_t position) const;

    DFillStyle fillStyle;
    DSubdivisionStyle subdivisionStyle;
    DReceiveShadowsStyle shadowStyle;
    KList models;

  protected:
    VCSceneManager* sceneManager_;
};
