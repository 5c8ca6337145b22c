#include "scene/VNurbsCurAddPtManipulator.h"

#include "scene/K3DPicker.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VNurbsCurEditManipulators.h"
#include "scene/VZarbesoView.h"

// ---- k3DNurbsCurAddPtManipulator ----------------------------------------------------

void k3DNurbsCurAddPtManipulator::Press(const MouseEvent& event) {
    extending = changed = false;
    downPixel = event.local;
    if (!viewMatrix || !FindCurve()) return;
    const VZarbesoModel* hit = PickCurvePart(*this, event);
    if (hit) {
        // On the curve a new anchor splits it; on a control point nothing.
        if (hit == curve && (hit->GetPickedId() >> 24) == 0)
            changed = InsertAtNearest(WorldToObject(*curve, picker->hitPoint));
        return;
    }
    if (event.Ctrl() && !curveClosed) Extend(event);
}

void k3DNurbsCurAddPtManipulator::Extend(const MouseEvent& event) {
    GetExtensions();
    // The end nearer to the click goes on; each is measured at its own depth.
    const KVector3D start = ObjectToWorld(*curve, startTriple[0]);
    const KVector3D end = ObjectToWorld(*curve, endTriple[0]);
    KVector3D atStart, atEnd;
    SetDepthAtScenePoint(*this, start);
    ScreenToWorld(event.LocalPoint(), atStart);
    SetDepthAtScenePoint(*this, end);
    ScreenToWorld(event.LocalPoint(), atEnd);
    atFront = (atStart - start).Length() < (atEnd - end).Length();
    if (atFront) SetDepthAtScenePoint(*this, start);
    const KVector3D p = WorldToObject(*curve, atFront ? atStart : atEnd);
    const KVector3D* triple = atFront ? startTriple : endTriple;
    if (atFront) {
        piece[0] = piece[1] = p;
        piece[2] = triple[2];
        piece[3] = triple[0];
        AddPieceAtFront(4, piece);
    } else {
        piece[0] = triple[0];
        piece[1] = triple[2];
        piece[2] = piece[3] = p;
        AddPiece(4, piece);
    }
    extending = changed = true;
    ShowGuides(p, p, p);
}

void k3DNurbsCurAddPtManipulator::Drag(const MouseEvent& event, bool& redraw) {
    if (!extending || !MovedBeyondClick(downPixel, event.local)) return;
    KVector3D q;
    ScreenToWorld(event.LocalPoint(), q);
    q = WorldToObject(*curve, q);
    // The new anchor's handle inside the new piece is the mirror of the drag.
    const KVector3D anchor = piece[atFront ? 0 : 3];
    KVector3D& inside = piece[atFront ? 1 : 2];
    KVector3D ahead;
    PullHandles(anchor, q, inside, ahead);
    if (atFront)
        UpdateFirstPiece(4, piece);
    else
        UpdateLastPiece(4, piece);
    ShowGuides(anchor, inside, ahead);
    redraw = true;
}

void k3DNurbsCurAddPtManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    if (changed) EndAdd();
    extending = changed = false;
    redraw = true;
}

void k3DNurbsCurAddPtManipulator::ShowGuides(const KVector3D& anchor, const KVector3D& behind,
                                             const KVector3D& ahead) {
    const KVector3D markers[3] = {behind, anchor, ahead};
    ShowGuideMarkers(3, markers);
    const KVector3D lines[4] = {anchor, behind, anchor, ahead};
    ShowGuideLines(2, lines);
}

// ---- VNurbsCurAddPtManipulator ------------------------------------------------------

bool VNurbsCurAddPtManipulator::FindCurve() {
    auto* zview = dynamic_cast<VZarbesoView*>(view);
    model = zview ? zview->GetBezierModel() : nullptr;
    curve = model;
    curveClosed = model && model->closed;
    return model != nullptr;
}

void VNurbsCurAddPtManipulator::GetExtensions() {
    model->GetStartExtension(startTriple);
    model->GetEndExtension(endTriple);
}

void VNurbsCurAddPtManipulator::AddPiece(std::int32_t count, const KVector3D* points) {
    model->AddPiece(count, points);
}

void VNurbsCurAddPtManipulator::AddPieceAtFront(std::int32_t count, const KVector3D* points) {
    model->AddPieceAtFront(count, points);
}

bool VNurbsCurAddPtManipulator::InsertAtNearest(const KVector3D& point) {
    return model->InsertAtNearest(point);
}

void VNurbsCurAddPtManipulator::ShowGuideMarkers(std::int32_t count, const KVector3D* points) {
    model->ShowGuideMarkers(count, points);
}

void VNurbsCurAddPtManipulator::ShowGuideLines(std::int32_t count, const KVector3D* lines) {
    model->ShowGuideLines(count, lines);
}

void VNurbsCurAddPtManipulator::UpdateFirstPiece(std::int32_t count, const KVector3D* points) {
    model->UpdateFirstPiece(count, points);
}

void VNurbsCurAddPtManipulator::UpdateLastPiece(std::int32_t count, const KVector3D* points) {
    model->UpdateLastPiece(count, points);
}

void VNurbsCurAddPtManipulator::EndAdd() {
    model->Rebuild();
    if (auto* zview = dynamic_cast<VZarbesoView*>(view)) zview->UpdateText();
}
