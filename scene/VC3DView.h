#pragma once

#include "scene/K3DSelection.h"
#include "scene/K3DView.h"
#include "scene/K3DViewAdorner.h"
#include "scene/KToolHandler.h"
#include "scene/SceneManagers.h"

#include <array>
#include <memory>

// The tool numbers, as the window's buttons and keys choose them.
enum ToolNumber : int {
    kToolOrbit = 0,
    kToolPan = 1,
    kToolRoll = 2,
    kToolTruck = 3,
    kToolScaleObject = 4,
    kToolRotateObject = 5,
    kToolTruckObject = 6,
    kToolLight = 7,
    kToolMoveText = 8,
    kToolScaleText = 9,
    kToolDepthText = 10,
    kToolRotateText = 11,
    kToolMove = 12,
    // 13 to 20: the tools that draw and edit custom paths.
    kToolCurveDrag = 13,
    kToolCurveHandle = 14,
    kToolCurveDraw = 15,
    kToolCurveOval = 16,
    kToolCurvePolygon = 17,
    kToolCurveStar = 18,
    kToolCurveAddPoint = 19,
    kToolCurveDeletePoint = 20,
    kToolCount = 21
};

// A view with its scene manager, its camera transforms in front of the
// scene, and the tools that the mouse drives.
class VC3DView : public K3DBackView,
                 public K3DViewAdorner,
                 public KToolHandler,
                 public VCHasSelection {
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
    // Fills the tool table.
    virtual void CreateTools() {}
    // Makes the tools and the scene, chooses tool 0, and starts with a
    // scale of 3.
    virtual void InitView();
    // The scene manager, whose selection and lights listen to the view,
    // and the library side of the view.
    virtual void Initialize();

    using KToolHandler::SetTool;
    // Makes tool `index` of the table the current tool; false when the
    // present tool refused to go or there is no such tool.
    virtual bool SetTool(int index);
    KTool* GetToolAt(int index) const;

    std::array<std::unique_ptr<KTool>, kToolCount> tools;
    std::unique_ptr<VZarbesoSceneManager> sceneManager;
};
