// The tool table of the view: the manipulator of each tool number.
#include "scene/KViewManipulators.h"
#include "scene/VNurbsCurAddPtManipulator.h"
#include "scene/VNurbsCurDrawManipulator.h"
#include "scene/VNurbsCurEditManipulators.h"
#include "scene/VNurbsCurShapeManipulators.h"
#include "scene/VTextManipulators.h"
#include "scene/VZarbesoView.h"

namespace {
template <typename M, typename... Args> std::unique_ptr<KTool> Tool(Args... args) {
    return std::make_unique<KTool>(std::make_unique<M>(args...));
}
} // namespace

void VZarbesoView::CreateTools() {
    tools[kToolOrbit] = Tool<KOrbitViewManipulator>(10001);
    tools[kToolPan] = Tool<KPanViewManipulator>(10000);
    tools[kToolRoll] = Tool<KRollViewManipulator>(10002);
    tools[kToolTruck] = Tool<VTruckManipulator>(10003);
    tools[kToolScaleObject] = Tool<K3DScaleManipulator>();
    tools[kToolRotateObject] = Tool<K3DRotateManipulator>();
    tools[kToolTruckObject] = Tool<K3DTruckManipulator>();
    tools[kToolLight] = Tool<K3DLightManipulator>(10004);
    tools[kToolMoveText] = Tool<VTranslateManipulator>(true, 10011);
    tools[kToolScaleText] = Tool<VScaleManipulator>(10013);
    tools[kToolDepthText] = Tool<VScaleDepthManipulator>(10014);
    tools[kToolRotateText] = Tool<VRotateManipulator>(10012);
    tools[kToolMove] = Tool<VTranslateManipulator>(false);
    tools[kToolCurveDrag] = Tool<VNurbsCurDragManipulator>();
    tools[kToolCurveHandle] = Tool<VNurbsCurHandleManipulator>();
    tools[kToolCurveDraw] = Tool<VNurbsCurDrawManipulator>();
    tools[kToolCurveOval] = Tool<VNurbsCurOvalManipulator>();
    tools[kToolCurvePolygon] = Tool<VNurbsCurNGonManipulator>();
    tools[kToolCurveStar] = Tool<VNurbsCurStarManipulator>();
    tools[kToolCurveAddPoint] = Tool<VNurbsCurAddPtManipulator>();
    tools[kToolCurveDeletePoint] = Tool<VNurbsCurDelPtManipulator>();
}
