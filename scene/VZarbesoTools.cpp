// The tool table of the view: the manipulator of each tool number.
#include "scene/KViewManipulators.h"
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
    // The tools of custom paths get their manipulators with the path
    // editing; until then they are tools that do nothing.
    for (int i = kToolCurveDrag; i < kToolCount; ++i)
        tools[i] = std::make_unique<KTool>(nullptr);
}
