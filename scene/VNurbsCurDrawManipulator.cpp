#include "scene/VNurbsCurDrawManipulator.h"

#include "scene/VCBezierCurveModel.h"
#include "scene/VZarbesoView.h"

// ---- k3DNurbsCurDrawManipulator -----------------------------------------------------

bool k3DNurbsCurDrawManipulator::Activate(WView*) {
    clickCount = 0;
    return NewCurve();
}

bool k3DNurbsCurDrawManipulator::Deactivate(WView*) {
    if (clickCount < 2) DiscardCurve();
    clickCount = 0;
    return true;
}

void k3DNurbsCurDrawManipulator::Press(const MouseEvent& event) {
    // The second press of a double click puts no second anchor on the first.
    if (!viewMatrix || (view && view->GetClickCount() == 2)) return;
    // A path that went meanwhile (another path was chosen) is not drawn on.
    if (!HasCurve()) {
        clickCount = 0;
        if (!NewCurve()) return;
    }
    SetDepthFromCamera();
    KVector3D p;
    ScreenToWorld(event.LocalPoint(), p);
    p.w = 1.0f;
    lastPixel = event.local;
    ++clickCount;
    if (clickCount == 1) {
        BeginCurve();
        points[kPrevAnchorIn] = points[kPrevAnchor] = points[kPrevAnchorOut] = p;
    } else {
        if (clickCount > 2) {
            points[kPrevAnchorIn] = points[kAnchorIn];
            points[kPrevAnchor] = points[kAnchor];
            points[kPrevAnchorOut] = points[kAnchorOut];
        }
        points[kAnchorIn] = points[kAnchor] = points[kAnchorOut] = p;
        AddPiece(4, &points[kPrevAnchor]);
    }
    ShowGuides(&points[clickCount == 1 ? kPrevAnchorIn : kAnchorIn]);
}

void k3DNurbsCurDrawManipulator::Drag(const MouseEvent& event, bool& redraw) {
    if (clickCount < 1 || !MovedBeyondClick(lastPixel, event.local)) return;
    KVector3D q;
    ScreenToWorld(event.LocalPoint(), q);
    KVector3D* triple = &points[clickCount == 1 ? kPrevAnchorIn : kAnchorIn];
    PullHandles(triple[1], q, triple[0], triple[2]);
    if (clickCount > 1) UpdateLastPiece(4, &points[kPrevAnchor]);
    ShowGuides(triple);
    redraw = true;
}

void k3DNurbsCurDrawManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    if (clickCount < 2) return;
    EndClick(clickCount == 2);
    redraw = true;
}

void k3DNurbsCurDrawManipulator::ShowGuides(const KVector3D* triple) {
    ShowGuideMarkers(3, triple);
    const KVector3D lines[4] = {triple[1], triple[0], triple[1], triple[2]};
    ShowGuideLines(2, lines);
}

// ---- VNurbsCurDrawManipulator -------------------------------------------------------

bool VNurbsCurDrawManipulator::Activate(WView* view) {
    zview = dynamic_cast<VZarbesoView*>(view);
    model = nullptr;
    return k3DNurbsCurDrawManipulator::Activate(view);
}

bool VNurbsCurDrawManipulator::NewCurve() {
    if (!zview) return false;
    model = zview->GetSceneManager()->NewBezierModel(nullptr);
    return model != nullptr;
}

bool VNurbsCurDrawManipulator::HasCurve() const {
    return model && zview && zview->GetSceneManager()->HasModel(model);
}

void VNurbsCurDrawManipulator::AddPiece(std::int32_t count, const KVector3D* points) {
    if (HasCurve()) model->AddPiece(count, points);
}

void VNurbsCurDrawManipulator::ShowGuideMarkers(std::int32_t count, const KVector3D* points) {
    if (HasCurve()) model->ShowGuideMarkers(count, points);
}

void VNurbsCurDrawManipulator::ShowGuideLines(std::int32_t count, const KVector3D* lines) {
    if (HasCurve()) model->ShowGuideLines(count, lines);
}

void VNurbsCurDrawManipulator::UpdateLastPiece(std::int32_t count, const KVector3D* points) {
    if (HasCurve()) model->UpdateLastPiece(count, points);
}

void VNurbsCurDrawManipulator::BeginCurve() {
    zview->DropPath();
}

void VNurbsCurDrawManipulator::EndClick(bool first) {
    if (!HasCurve()) return;
    if (!first) {
        model->Rebuild();
        zview->UpdateText();
        return;
    }
    model->ClearGuides();
    model->CalcBoundingBox(zview);
    model->Rebuild();
    if (model->BuildPath()) zview->SetCurvePath(model, model->GetPath());
}

void VNurbsCurDrawManipulator::DiscardCurve() {
    if (HasCurve()) zview->GetSceneManager()->RemoveModel(model);
    model = nullptr;
}
