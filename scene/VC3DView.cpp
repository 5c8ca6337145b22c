#include "scene/VC3DView.h"

VC3DView::VC3DView() : K3DViewAdorner(*this, this), KToolHandler(this), VCHasSelection(this) {}

VC3DView::~VC3DView() {
    // The scene goes before the library objects of the view it lives in.
    sceneManager.reset();
}

void VC3DView::SubmitScene() {
    if (sceneManager) sceneManager->Submit(viewer);
}

std::unique_ptr<VZarbesoSceneManager> VC3DView::CreateSceneManager() {
    return std::make_unique<VZarbesoSceneManager>();
}

void VC3DView::Initialize() {
    sceneManager = CreateSceneManager();
    AddListener(sceneManager->GetSelection());
    Setup();
    if (UsesLights()) sceneManager->StartListening(lightGroup, *this);
}

void VC3DView::InitView() {
    CreateTools();
    Initialize();
    SetTool(tools[kToolOrbit].get());
    const KVector3D three{3, 3, 3, 0};
    ApplyTo(kScale, kApply, &three, true);
}

bool VC3DView::SetTool(int index) {
    KTool* tool = GetToolAt(index);
    return tool && SetTool(tool);
}

KTool* VC3DView::GetToolAt(int index) const {
    return index >= 0 && index < kToolCount ? tools[index].get() : nullptr;
}
