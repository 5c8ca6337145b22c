#include "scene/K3DRotateManipulator.h"

#include "d3d/DWidget.h"
#include "scene/K3DPicker.h"
#include "scene/K3DSelection.h"

#include <algorithm>
#include <cmath>

namespace {
float RowLength(const TQ3Matrix4x4& m, int r) {
    return std::sqrt(m.value[r][0] * m.value[r][0] + m.value[r][1] * m.value[r][1] +
                     m.value[r][2] * m.value[r][2]);
}

// A quotient of the scale step: 0 / 0 is 0, and a finite step from 0 is
// left as no change.
float StepFactor(float q, float p) {
    const float s = q / p;
    if (std::isnan(s)) return 0.0f;
    return std::isfinite(s) ? s : 1.0f;
}
} // namespace

// ---- K3DRotateManipulator ---------------------------------------------------------

void K3DRotateManipulator::Press(const MouseEvent& event) {
    rotating = false;
    part = 0;
    Pick(event);
    picked = picker ? picker->GetPickedSelected() : nullptr;
    if (!picked) {
        if (CanReselect()) PickAndSelect(event);
        return;
    }
    if (picked->GetWidgetPart(&part)) picked->HighlightPart(part, true);
    rotating = true;
    lastWorld = ProjectToBall(event);
}

KVector3D K3DRotateManipulator::ProjectToBall(const MouseEvent& event) const {
    TQ3BoundingSphere sphere;
    picked->GetBoundingSphere(sphere);
    TQ3Matrix4x4 g;
    picked->GetLocalToWorld(g, 1);
    const KVector3D c = TransformPoint({sphere.origin.x, sphere.origin.y, sphere.origin.z, 1}, g);
    const float r = sphere.radius * std::max({RowLength(g, 0), RowLength(g, 1), RowLength(g, 2)});
    KVector3D front, back;
    IntersectSphere(event.LocalPoint(), c, r, front, back);
    return (back - lastWorld).Length() <= 2.0f * (front - lastWorld).Length() ? back : front;
}

void K3DRotateManipulator::Drag(const MouseEvent& event, bool& redraw) {
    if (!picked) {
        if (CanReselect()) DragSelection(event, redraw);
        return;
    }
    TQ3Matrix4x4 localToWorld;
    picked->GetLocalToWorld(localToWorld, 1);
    const TQ3Matrix4x4 g = InvertedMatrix(localToWorld);
    const KVector3D p = ProjectToBall(event);
    KVector3D a = TransformPoint(lastWorld, g);
    lastWorld = p;
    KVector3D b = TransformPoint(p, g);
    KVector3D centre;
    picked->GetCenter(centre);
    a = a - centre;
    b = b - centre;
    // A ring holds the turn to the axis it stands about.
    if (part == 1) a.z = b.z = 0;
    if (part == 2) a.x = b.x = 0;
    if (part == 3) a.y = b.y = 0;
    float angle;
    if (!RotationBetween(a, b, axis, angle, &matrix)) return;
    redraw = true;
    picked->RotateAboutAxis(axis, angle);
}

void K3DRotateManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    if (part != 0 && picked) {
        picked->HighlightPart(part, false);
        redraw = true;
    }
}

// ---- K3DScaleManipulator ----------------------------------------------------------

void K3DScaleManipulator::Press(const MouseEvent& event) {
    scaling = false;
    Pick(event);
    picked = picker ? picker->GetPickedSelected() : nullptr;
    if (!picked) {
        if (CanReselect()) PickAndSelect(event);
        return;
    }
    // A corner handle is a part of the selection that is no widget part.
    scaling = !picked->GetWidgetPart(nullptr);
    if (!scaling) return;
    TQ3Matrix4x4 localToWorld;
    picked->GetLocalToWorld(localToWorld, 0);
    worldToObject = InvertedMatrix(localToWorld);
    std::int16_t h = 0;
    if (picked->GetHandlePart(&h) && h < 8) {
        // The corners in the order of the widget's handles.
        TQ3BoundingBox box;
        picked->GetBoundingBox(box);
        KVector3D corners[8];
        BoxCorners(box, corners);
        lastWorld = TransformPoint(corners[h], localToWorld);
    }
}

void K3DScaleManipulator::Drag(const MouseEvent& event, bool& redraw) {
    if (!picked) {
        if (CanReselect()) DragSelection(event, redraw);
        return;
    }
    if (!scaling) return;
    KVector3D c;
    picked->GetCenter(c);
    const KVector3D p = TransformPoint(lastWorld, worldToObject) - c;
    KVector3D w;
    ScreenToWorld(event.LocalPoint(), w);
    lastWorld = w;
    const KVector3D q = TransformPoint(w, worldToObject) - c;
    factors = {StepFactor(q.x, p.x), StepFactor(q.y, p.y), StepFactor(q.z, p.z), 0};
    picked->MultiplyScale(factors);
    picked->UpdateWidget();
    redraw = true;
}
