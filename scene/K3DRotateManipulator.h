// Turning and scaling selected objects by their widgets: a virtual
// trackball around the object's bounding sphere, whose rings hold the turn
// to one axis, and the corners of the object's box.
#pragma once

#include "scene/K3DTranslateManipulator.h"

class K3DRotateManipulator : public K3DTranslateManipulator {
  public:
    bool Activate(WView* view) override { return ActivateWidgets(view); }
    int WidgetKind() const override { return 2; }
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;
    // Whether a press away from every widget selects what is there and
    // moves it.
    virtual bool CanReselect() const { return true; }

    // Where the pointer meets the picked object's ball: its far side,
    // unless that is more than twice as far from the last point as the near
    // side.
    KVector3D ProjectToBall(const MouseEvent& event) const;

    bool rotating = false;
    TQ3Matrix4x4 matrix{};
    K3DSelectedObject* picked = nullptr;
    // The ring that holds the turn (1 about z, 2 about x, 3 about y); 0 none.
    std::int16_t part = 0;
    KVector3D axis;
};

class K3DRotateOnlyManipulator : public K3DRotateManipulator {
  public:
    bool CanReselect() const override { return false; }
};

class K3DScaleManipulator : public K3DTranslateManipulator {
  public:
    bool Activate(WView* view) override { return ActivateWidgets(view); }
    int WidgetKind() const override { return 1; }
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    virtual bool CanReselect() const { return true; }

    bool scaling = false;
    KVector3D factors;
    K3DSelectedObject* picked = nullptr;
    TQ3Matrix4x4 worldToObject{};
};

class K3DScaleOnlyManipulator : public K3DScaleManipulator {
  public:
    bool CanReselect() const override { return false; }
};
