#pragma once

#include "scene/K3DSelection.h"
#include "scene/K3DView.h"
#include "scene/K3DViewAdorner.h"
#include "scene/SceneManagers.h"

#include <memory>

// A view with its scene manager and its camera transforms in front of the
// scene.
class VC3DView : public K3DBackView, public K3DViewAdorner, public VCHasSelection {
  public:
    VC3DView();
    ~VC3DView() override;

    VZarbesoSceneManager* GetSceneManager() override { return sceneManager.get(); }
    void GetAdornerMatrix(TQ3Matrix4x4& out) const override { GetTotal(out); }
    // The scene manager's submission: light icons, model styles, models,
    // grid.
    void SubmitScene() override;
    virtual std::unique_ptr<VZarbesoSceneManager> CreateSceneManager();
    virtual bool UsesLights() const { return true; }
    // Makes the scene and starts with a scale of 3.
    virtual void InitView();
    // The scene manager, whose selection and lights listen to the view,
    // and the library side of the view.
    virtual void Initialize();

    std::unique_ptr<VZarbesoSceneManager> sceneManager;
};
