// Manipulators that pick and select scene objects and move the selection:
// in a plane parallel to the screen through the point that was hit, and,
// with the modifier keys, along the view direction or along one axis of
// the screen.
#pragma once

#include "scene/K3DManipulator.h"

class K3DObject;
class K3DPicker;
class K3DSelection;
class K3DSelectedObject;

// Moves every selected object by a scene vector (w 0), through each
// object's own transforms.
void TranslateSelection(K3DSelection& selection, const KVector3D& delta);

class K3DTranslateManipulator : public K3DManipulator {
  public:
    // Also readies the picker for the view and finds its selection.
    void Prepare(WView* view) override;

    // Moves the selection from the last scene point to the one under the
    // pointer.
    virtual void DragSelection(const MouseEvent& event, bool& redraw);
    // Selects what the last pick found, or nothing.
    virtual void PickAndSelect(const MouseEvent& event);
    // The widget the selected objects get.
    virtual int WidgetKind() const { return 0; }
    virtual void SelectObject(K3DObject* object);

    // Picks under the event; the depth of the hit becomes the depth of the
    // gesture.
    void Pick(const MouseEvent& event);
    void MoveSelection(const KVector3D& delta);

    bool hasSelection = false;
    K3DSelection* selection = nullptr;
    K3DPicker* picker = nullptr;
    KVector3D lastWorld;

  protected:
    // Gives the present selection this manipulator's widget kind.
    bool ActivateWidgets(WView* view);
};

// Selects what is under the pointer and moves it in the screen's plane; a
// double click on an object edits it.
class K3DTranslateOnlyManipulator : public K3DTranslateManipulator {
  public:
    bool Activate(WView* view) override { return ActivateWidgets(view); }
    int WidgetKind() const override { return 7; }
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
};

// The same, with Ctrl moving along the view direction and Shift along
// whichever screen axis the step follows more.
class K3DTranslateOnlyConstrainManipulator : public K3DTranslateOnlyManipulator {
  public:
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;
    // Starts a constrained move at the event's point.
    virtual void Anchor(const MouseEvent& event);

    bool depthMode = false;
    bool axisMode = false;
    Point anchorPoint{0, 0};
    Point lastPoint{0, 0};
    KVector3D anchorView;

  private:
    void UpdateModes(const MouseEvent& event);
    void DepthStep(const MouseEvent& event, bool& redraw);
    void AxisStep(const MouseEvent& event, bool& redraw);
};

// Moves the selection towards or away from the viewer: up the screen is
// nearer, ten times the rate a plain move would go up.
class K3DTruckManipulator : public K3DTranslateManipulator {
  public:
    bool Activate(WView* view) override { return ActivateWidgets(view); }
    int WidgetKind() const override { return 1; }
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;

    K3DSelectedObject* picked = nullptr;
};
