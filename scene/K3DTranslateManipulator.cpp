#include "scene/K3DTranslateManipulator.h"

#include "scene/K3DPicker.h"
#include "scene/K3DSelection.h"
#include "scene/K3DSystem.h"
#include "scene/K3DView.h"

#include <cstdlib>

namespace {
struct TranslateSelected : KListFunctoid {
    void Apply(KListEntry* entry, void* delta) override {
        auto* selected = static_cast<K3DSelectedObject*>(entry);
        TQ3Matrix4x4 localToWorld, scale, rotation;
        selected->GetLocalToWorld(localToWorld, 0);
        selected->GetScaleMatrix(scale);
        selected->GetRotationMatrix(rotation);
        KVector3D d =
            TransformVector(*static_cast<const KVector3D*>(delta), InvertedMatrix(localToWorld));
        d = TransformVector(TransformVector(d, scale), rotation);
        selected->Translate(d);
    }
};

K3DSelection* SelectionOf(WView* view) {
    auto* has = dynamic_cast<K3DHasSelection*>(view);
    return has ? has->GetSelection() : nullptr;
}
} // namespace

void TranslateSelection(K3DSelection& selection, const KVector3D& delta) {
    TranslateSelected translate;
    KVector3D d = delta;
    d.w = 0;
    selection.ForEach(translate, &d);
}

// ---- K3DTranslateManipulator ------------------------------------------------------

void K3DTranslateManipulator::Prepare(WView* view) {
    K3DManipulator::Prepare(view);
    K3DSystem* system = K3DSystem::Instance();
    picker = system ? system->GetPicker() : nullptr;
    if (picker) picker->SetView(view3D);
    selection = SelectionOf(view);
}

bool K3DTranslateManipulator::ActivateWidgets(WView* view) {
    if (K3DSelection* present = SelectionOf(view)) present->SetWidgetKind(WidgetKind());
    return true;
}

void K3DTranslateManipulator::Pick(const MouseEvent& event) {
    if (!picker || !viewMatrix) return;
    picker->PickAt(event);
    SetDepthFromPoint(picker->hitPoint);
    ScreenToWorld(event.LocalPoint(), lastWorld);
}

void K3DTranslateManipulator::PickAndSelect(const MouseEvent&) {
    SelectObject(picker ? picker->GetPickedObject() : nullptr);
}

void K3DTranslateManipulator::SelectObject(K3DObject* object) {
    if (!selection) return;
    selection->Select(object, WidgetKind(), false);
    hasSelection = !selection->IsEmpty();
}

void K3DTranslateManipulator::MoveSelection(const KVector3D& delta) {
    if (selection) TranslateSelection(*selection, delta);
}

void K3DTranslateManipulator::DragSelection(const MouseEvent& event, bool& redraw) {
    redraw = true;
    if (!hasSelection) return;
    KVector3D w;
    ScreenToWorld(event.LocalPoint(), w);
    MoveSelection(w - lastWorld);
    lastWorld = w;
}

// ---- K3DTranslateOnlyManipulator --------------------------------------------------

void K3DTranslateOnlyManipulator::Press(const MouseEvent& event) {
    Pick(event);
    if (view && view->GetClickCount() == 2 && picker && picker->GetPickedObject())
        if (K3DSelectedObject* selected = picker->FindSelected(picker->GetPickedObject()))
            selected->Edit();
    PickAndSelect(event);
}

void K3DTranslateOnlyManipulator::Drag(const MouseEvent& event, bool& redraw) {
    DragSelection(event, redraw);
}

// ---- K3DTranslateOnlyConstrainManipulator -----------------------------------------

void K3DTranslateOnlyConstrainManipulator::Press(const MouseEvent& event) {
    K3DTranslateOnlyManipulator::Press(event);
    Anchor(event);
}

void K3DTranslateOnlyConstrainManipulator::Anchor(const MouseEvent& event) {
    anchorPoint = lastPoint = event.local;
    KVector3D w;
    ScreenToWorld(event.LocalPoint(), w);
    anchorView = ToView(w);
}

void K3DTranslateOnlyConstrainManipulator::UpdateModes(const MouseEvent& event) {
    // Both keys at one moment start neither mode; with both held, the mode
    // that came first stays.
    bool left = false;
    if (!event.Shift() && axisMode) {
        axisMode = false;
        left = true;
    }
    if (!event.Ctrl()) depthMode = false;
    if (event.Shift() && !axisMode && !event.Ctrl()) {
        axisMode = true;
        Anchor(event);
    } else if (event.Ctrl() && !depthMode && !event.Shift() && !left) {
        depthMode = true;
        Anchor(event);
    }
}

void K3DTranslateOnlyConstrainManipulator::Drag(const MouseEvent& event, bool& redraw) {
    UpdateModes(event);
    if (axisMode)
        AxisStep(event, redraw);
    else if (depthMode)
        DepthStep(event, redraw);
    else
        DragSelection(event, redraw);
}

void K3DTranslateOnlyConstrainManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    depthMode = false;
    axisMode = false;
}

void K3DTranslateOnlyConstrainManipulator::DepthStep(const MouseEvent& event, bool& redraw) {
    redraw = true;
    if (!hasSelection) return;
    const std::int32_t anchor = MakeScreenPoint(anchorPoint.h, anchorPoint.v);
    KVector3D a, b;
    ScreenToWorld(anchor, a);
    // Dragging down brings the selection nearer.
    depth += 0.2f * static_cast<float>(event.local.v - lastPoint.v);
    ScreenToWorld(anchor, b);
    MoveSelection(b - a);
    lastWorld = b;
    lastPoint = event.local;
}

void K3DTranslateOnlyConstrainManipulator::AxisStep(const MouseEvent& event, bool& redraw) {
    redraw = true;
    const int dx = event.local.h - lastPoint.h, dy = event.local.v - lastPoint.v;
    // A step that did not move (the release repeats the last point) keeps
    // the object where the last step put it, on the axis it chose.
    if (!hasSelection || (dx == 0 && dy == 0)) return;
    KVector3D w;
    ScreenToWorld(event.LocalPoint(), w);
    KVector3D c = ToView(w);
    // The step follows the screen axis it moves along more.
    if (std::abs(dx) <= std::abs(dy))
        c.x = anchorView.x;
    else
        c.y = anchorView.y;
    w = FromView(c);
    MoveSelection(w - lastWorld);
    lastWorld = w;
    lastPoint = event.local;
}

// ---- K3DTruckManipulator ------------------------------------------------------------

void K3DTruckManipulator::Press(const MouseEvent& event) {
    Pick(event);
    picked = picker ? picker->GetPickedSelected() : nullptr;
    if (!picked) PickAndSelect(event);
}

void K3DTruckManipulator::Drag(const MouseEvent& event, bool& redraw) {
    redraw = true;
    if (!hasSelection || !view3D) return;
    KVector3D w;
    ScreenToWorld(event.LocalPoint(), w);
    TQ3Matrix4x4 adorner;
    view3D->GetAdornerMatrix(adorner);
    const KVector3D v =
        TransformVector({0, 0, (w.y - lastWorld.y) * 10.0f, 0}, InvertedMatrix(adorner));
    MoveSelection(v);
    lastWorld = w;
}
