#include "scene/VNurbsCurEditManipulators.h"

#include "scene/K3DPicker.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VZarbesoView.h"

#include <cmath>

VZarbesoModel* PickCurvePart(K3DTranslateManipulator& m, const MouseEvent& event) {
    if (!m.picker) return nullptr;
    struct CurvesOnly {
        K3DPicker& picker;
        explicit CurvesOnly(K3DPicker& p) : picker(p) { picker.curvesOnly = true; }
        ~CurvesOnly() { picker.curvesOnly = false; }
    } only(*m.picker);
    m.Pick(event);
    auto* model = dynamic_cast<VZarbesoModel*>(m.picker->GetPickedObject());
    if (!model) return nullptr;
    // The curve wins a pick over its markers; a marker that lay in front of
    // it near the click is what the user meant.
    KVector3D at;
    if ((model->GetPickedId() >> 24) == 0 && model->lastPart != 0 &&
        model->lastPart != model->GetPickedId() && model->GetPartPosition(model->lastPart, at)) {
        at = ObjectToWorld(*model, at);
        if (std::fabs(at.x - m.lastWorld.x) < 1.5f && std::fabs(at.y - m.lastWorld.y) < 1.5f &&
            std::fabs(at.z - m.lastWorld.z) < 1.5f)
            model->SetPickedId(model->lastPart);
    }
    model->lastPart = 0;
    return model;
}

// ---- k3DNurbsCurDragManipulator -----------------------------------------------------

void k3DNurbsCurDragManipulator::Press(const MouseEvent& event) {
    moved = false;
    object = PickCurvePart(*this, event);
    if (!object) return;
    if (!object->SelectPart(Toggles())) {
        object = nullptr;
        return;
    }
    KVector3D p;
    object->GetSelectedPoint(p);
    SetDepthAtScenePoint(*this, ObjectToWorld(*object, p));
    ScreenToWorld(event.LocalPoint(), lastWorld);
    // A press of the handle tool may already have changed the path.
    moved = Toggles();
}

void k3DNurbsCurDragManipulator::Drag(const MouseEvent& event, bool& redraw) {
    if (!object) return;
    KVector3D q;
    ScreenToWorld(event.LocalPoint(), q);
    if ((q - lastWorld).Length() <= 0.0001f) return;
    MoveBy(*object, WorldVectorToObject(*object, q - lastWorld));
    lastWorld = q;
    moved = true;
    redraw = true;
}

void k3DNurbsCurDragManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    if (object && moved) EndMove(*object);
    object = nullptr;
    moved = false;
    // A click alone may have shown or hidden the handles.
    redraw = true;
}

void VNurbsCurDragManipulator::EndMove(K3DObject& moved) {
    moved.UpdateAfterMove();
    if (auto* zview = dynamic_cast<VZarbesoView*>(view)) zview->UpdateText();
}

void VNurbsCurHandleManipulator::MoveBy(K3DObject& object, const KVector3D& delta) {
    if (auto* bezier = dynamic_cast<VCBezierCurveModel*>(&object))
        bezier->MoveHandle(delta);
    else
        object.Translate(delta);
}

// ---- k3DNurbsCurDelPtManipulator ----------------------------------------------------

void k3DNurbsCurDelPtManipulator::Press(const MouseEvent& event) {
    VZarbesoModel* object = PickCurvePart(*this, event);
    deleted = object && object->EditAtPart();
}

void k3DNurbsCurDelPtManipulator::DoRelease(const MouseEvent&, bool& redraw) {
    if (deleted) EndDelete();
    deleted = false;
    redraw = true;
}

void VNurbsCurDelPtManipulator::EndDelete() {
    if (auto* zview = dynamic_cast<VZarbesoView*>(view)) zview->UpdateText();
}
