#include "scene/KViewManipulators.h"

#include "foundation/Messages.h"
#include "scene/SceneManagers.h"
#include "scene/VZarbesoView.h"

namespace {
constexpr float kPi = 3.1415927f;

// Multiplies a step into the orbit or the pan. The tool draws the frame.
void ApplyStep(WView* view, int index, const TQ3Matrix4x4& step) {
    if (auto* adorner = dynamic_cast<K3DViewAdorner*>(view))
        adorner->ApplyTo(index, K3DViewAdorner::kApply, &step, false);
}

} // namespace

// ---- orbit and roll ---------------------------------------------------------------------

void KOrbitViewManipulator::Press(const MouseEvent& event) {
    lastPoint = event.local;
    if (!view) return;
    const Rect frame = view->GetFrame();
    width = frame.right > 0 ? frame.right : 1;
    height = frame.bottom > 0 ? frame.bottom : 1;
}

void KOrbitViewManipulator::Drag(const MouseEvent& event, bool& redraw) {
    redraw = true;
    // The vertical movement over the width, the horizontal one over the
    // height; the step turns about the screen's own axes.
    const float ax = static_cast<float>(event.local.v - lastPoint.v) * kPi / width;
    const float ay = static_cast<float>(event.local.h - lastPoint.h) * kPi / height;
    ApplyStep(view, K3DViewAdorner::kOrbit, MatrixFromRotation(ax, ay, 0));
    lastPoint = event.local;
}

void KRollViewManipulator::Drag(const MouseEvent& event, bool& redraw) {
    redraw = true;
    const float az = static_cast<float>(lastPoint.h - event.local.h) * kPi / width;
    ApplyStep(view, K3DViewAdorner::kOrbit, MatrixFromRotation(0, 0, az));
    lastPoint = event.local;
}

// ---- pan and truck ----------------------------------------------------------------------

void KPanViewManipulator::Press(const MouseEvent& event) {
    if (!viewMatrix) return;
    SetDepthFromCamera();
    ScreenToCameraWorld(event.LocalPoint(), lastWorld);
}

void KPanViewManipulator::Drag(const MouseEvent& event, bool& redraw) {
    redraw = true;
    if (!viewMatrix) return;
    KVector3D w;
    ScreenToCameraWorld(event.LocalPoint(), w);
    const KVector3D d = w - lastWorld;
    ApplyStep(view, K3DViewAdorner::kPan, TranslationMatrix(d.x, d.y, d.z));
    lastWorld = w;
}

void KTruckViewManipulator::Press(const MouseEvent& event) {
    if (!viewMatrix) return;
    SetDepthFromCamera();
    ScreenToCameraWorld(event.LocalPoint(), lastWorld);
}

void KTruckViewManipulator::Drag(const MouseEvent& event, bool& redraw) {
    redraw = true;
    if (!viewMatrix) return;
    KVector3D w;
    ScreenToCameraWorld(event.LocalPoint(), w);
    ApplyStep(view, K3DViewAdorner::kPan, TranslationMatrix(0, 0, w.y - lastWorld.y));
    lastWorld = w;
}

void VTruckManipulator::UpdateMode(const MouseEvent& event) {
    if (!event.Ctrl()) {
        fovMode = false;
    } else if (!fovMode) {
        lastPoint = event.local;
        fovMode = true;
    }
}

void VTruckManipulator::Press(const MouseEvent& event) {
    UpdateMode(event);
    if (!fovMode) KTruckViewManipulator::Press(event);
    lastPoint = event.local;
}

void VTruckManipulator::Drag(const MouseEvent& event, bool& redraw) {
    UpdateMode(event);
    if (!fovMode) return KTruckViewManipulator::Drag(event, redraw);
    redraw = true;
    const float dy = static_cast<float>(event.local.v - lastPoint.v);
    if (auto* v = dynamic_cast<VZarbesoView*>(view)) v->SetFieldOfView(-dy, false, true);
    lastPoint = event.local;
}

void VTruckManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    fovMode = false;
    Drag(event, redraw);
}

// ---- lights -----------------------------------------------------------------------------

void K3DLightManipulator::Press(const MouseEvent& event) {
    if (!view3D || !viewMatrix) return;
    SetDepthFromCamera();
    depth *= 0.7f;
    KVector3D w;
    ScreenToWorld(event.LocalPoint(), w);
    VZarbesoSceneManager* scene = view3D->GetSceneManager();
    if (!scene) return;
    void* block[2] = {view3D, nullptr};
    scene->DispatchCommand(kCmdAddLight, block);
    if (auto* light = static_cast<VCLight*>(block[1])) light->Translate({w.x, w.y, w.z, 0});
    // The tool has done its work: the window goes back to the move tool.
    scene->ObjectPlaced(view3D);
}

void K3DLightManipulator::Drag(const MouseEvent&, bool& redraw) {
    redraw = true;
}
