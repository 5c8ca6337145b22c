#include "scene/VTextManipulators.h"

#include "scene/K3DSelection.h"
#include "scene/VZarbesoView.h"

#include <cmath>

namespace {
VZarbesoView* TextView(WView* view) {
    return dynamic_cast<VZarbesoView*>(view);
}

void SetDragOutline(WView* view, bool flag) {
    if (VZarbesoView* v = TextView(view)) v->SetDragOutline(flag);
}

void SetLayout(WView* view, TextLayoutValue which, float delta, bool update) {
    if (VZarbesoView* v = TextView(view)) v->SetLayout(which, delta, update, false);
}

// Two modes chosen by a key held or not: when the key changes, the mode
// that was on gives way and the steps start again from the pointer, so
// that nothing jumps.
void ChooseMode(bool keyDown, bool& downMode, bool& upMode, Point& last, const Point& at) {
    bool& leaving = keyDown ? upMode : downMode;
    if (leaving) {
        leaving = false;
        last = at;
    }
    (keyDown ? downMode : upMode) = true;
}

// Pixels to the right and up since the last point.
void Deltas(const MouseEvent& event, const Point& last, float& dx, float& dv) {
    dx = static_cast<float>(event.local.h - last.h);
    dv = static_cast<float>(last.v - event.local.v);
}
} // namespace

void DeadZone(float& dx, float& dv) {
    if (std::fabs(dx) > 10.0f * std::fabs(dv))
        dv = 0;
    else if (std::fabs(dv) > 10.0f * std::fabs(dx))
        dx = 0;
}

// ---- VTranslateManipulator ---------------------------------------------------------

void VTranslateManipulator::SelectObject(K3DObject* object) {
    if (!selection) return;
    selection->Select(object, 7, false);
    if (textMode) {
        // The text tool moves the text, never a scene object.
        selection->Clear();
        draggingText = true;
    } else {
        auto* model = dynamic_cast<VZarbesoModel*>(object);
        if (model && model->selectable == 0) selection->Clear();
        draggingText = false;
    }
    hasSelection = !selection->IsEmpty();
}

void VTranslateManipulator::Press(const MouseEvent& event) {
    K3DTranslateOnlyConstrainManipulator::Press(event);
    if (draggingText) SetDragOutline(view, true);
}

void VTranslateManipulator::Anchor(const MouseEvent& event) {
    ScreenToWorld(event.LocalPoint(), lastWorld);
    lastTextPoint = event.local;
    K3DTranslateOnlyConstrainManipulator::Anchor(event);
}

void VTranslateManipulator::Drag(const MouseEvent& event, bool& redraw) {
    // A change of Ctrl starts again where the pointer is, so the text does
    // not jump.
    if (!event.Ctrl()) {
        if (spacingMode) {
            spacingMode = false;
            Anchor(event);
        }
        slideMode = true;
    } else {
        if (slideMode) {
            slideMode = false;
            Anchor(event);
        }
        spacingMode = true;
    }
    if (draggingText)
        TextStep(event, redraw);
    else if (hasSelection)
        K3DTranslateOnlyConstrainManipulator::Drag(event, redraw);
}

void VTranslateManipulator::TextStep(const MouseEvent& event, bool& redraw) {
    redraw = true;
    const float dx = static_cast<float>(event.local.h - lastTextPoint.h);
    // A step that did not move (the release repeats the last point) leaves
    // the letters as they are, without building them again.
    if (dx != 0 && slideMode) SetLayout(view, TextLayoutValue::kSlide, dx, true);
    if (dx != 0 && spacingMode) SetLayout(view, TextLayoutValue::kSpacing, dx, true);
    ScreenToWorld(event.LocalPoint(), lastWorld);
    lastTextPoint = event.local;
}

void VTranslateManipulator::DoRelease(const MouseEvent& event, bool& redraw) {
    Drag(event, redraw);
    if (draggingText) {
        // Building the solid letters draws them at once.
        SetDragOutline(view, false);
        draggingText = false;
        redraw = false;
    }
    if (hasSelection) K3DTranslateOnlyConstrainManipulator::DoRelease(event, redraw);
}

// ---- VRotateManipulator ------------------------------------------------------------

void VRotateManipulator::Press(const MouseEvent& event) {
    Pick(event);
    hasSelection = false;
    lastPoint = event.local;
    SetDragOutline(view, true);
}

void VRotateManipulator::Drag(const MouseEvent& event, bool& redraw) {
    ChooseMode(event.Ctrl(), tiltMode, rotateMode, lastPoint, event.local);
    redraw = true;
    float dx, dv;
    Deltas(event, lastPoint, dx, dv);
    if (rotateMode) {
        DeadZone(dx, dv);
        SetLayout(view, TextLayoutValue::kRotate, dx * 20.0f, false);
        SetLayout(view, TextLayoutValue::kRevolve, -dv * 20.0f, true);
    } else if (tiltMode) {
        SetLayout(view, TextLayoutValue::kTilt, -dx * 20.0f, true);
    }
    lastPoint = event.local;
}

void VRotateManipulator::DoRelease(const MouseEvent&, bool&) {
    rotateMode = tiltMode = false;
    SetDragOutline(view, false);
}

// ---- VScaleManipulator -------------------------------------------------------------

void VScaleManipulator::Press(const MouseEvent& event) {
    Pick(event);
    hasSelection = false;
    lastPoint = event.local;
    SetDragOutline(view, true);
}

void VScaleManipulator::Drag(const MouseEvent& event, bool& redraw) {
    ChooseMode(event.Shift(), uniformMode, freeMode, lastPoint, event.local);
    redraw = true;
    float dx, dv;
    Deltas(event, lastPoint, dx, dv);
    // The larger of the two movements, with its sign.
    const float larger = std::fabs(dx) <= std::fabs(dv) ? dv : dx;
    DeadZone(dx, dv);
    if (uniformMode) {
        SetLayout(view, TextLayoutValue::kWidth, larger, false);
        SetLayout(view, TextLayoutValue::kHeight, larger, true);
    } else {
        SetLayout(view, TextLayoutValue::kWidth, dx, false);
        SetLayout(view, TextLayoutValue::kHeight, dv, true);
    }
    lastPoint = event.local;
}

void VScaleManipulator::DoRelease(const MouseEvent&, bool&) {
    uniformMode = freeMode = false;
    SetDragOutline(view, false);
}

// ---- VScaleDepthManipulator --------------------------------------------------------

void VScaleDepthManipulator::Press(const MouseEvent& event) {
    Pick(event);
    hasSelection = false;
    lastPoint = event.local;
    SetDragOutline(view, true);
}

void VScaleDepthManipulator::Drag(const MouseEvent& event, bool& redraw) {
    const float dy = static_cast<float>(event.local.v - lastPoint.v);
    lastPoint = event.local;
    redraw = true;
    SetLayout(view, TextLayoutValue::kDepth, -dy, true);
}

void VScaleDepthManipulator::DoRelease(const MouseEvent&, bool&) {
    SetDragOutline(view, false);
}
