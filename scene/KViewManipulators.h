// The camera tools and the light tool. The camera tools never move the
// library camera: they multiply steps into the view's orbit and pan
// transforms, so the whole scene moves in front of a fixed camera, and the
// widgets and lights follow through message 20003. Only the field of view
// goes to the camera itself.
#pragma once

#include "scene/K3DManipulator.h"
#include "scene/KTool.h"

class K3DViewAdorner;

// Tool 0: up and down turn the scene about the screen's x axis, right and
// left about its y axis; half a turn across a square view.
class KOrbitViewManipulator : public KManipulator {
  public:
    explicit KOrbitViewManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;

    float height = 1, width = 1;
    Point lastPoint{0, 0};
    KCursor cursor;
};

// Tool 2: right and left turn the scene about the view direction.
class KRollViewManipulator : public KOrbitViewManipulator {
  public:
    using KOrbitViewManipulator::KOrbitViewManipulator;
    void Drag(const MouseEvent& event, bool& redraw) override;
};

// Tool 1: the scene point at the depth of the point of interest follows
// the pointer.
class KPanViewManipulator : public K3DManipulator {
  public:
    explicit KPanViewManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;

    KVector3D lastWorld;
    KCursor cursor;
};

// Up brings the scene nearer, at the rate a pan would move it up.
class KTruckViewManipulator : public K3DManipulator {
  public:
    explicit KTruckViewManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;

    KCursor cursor;
    KVector3D lastWorld;
};

// Tool 3: the truck, and with Ctrl the field of view: down by 2 pixels
// widens it by a degree.
class VTruckManipulator : public KTruckViewManipulator {
  public:
    using KTruckViewManipulator::KTruckViewManipulator;
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    Point lastPoint{0, 0};
    bool fovMode = false;

  private:
    void UpdateMode(const MouseEvent& event);
};

// Tool 7: a press adds a light under the pointer, at 70 per cent of the
// way from the eye to the point of interest, and ends the tool.
class K3DLightManipulator : public K3DManipulator {
  public:
    explicit K3DLightManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;

    KCursor cursor;
};
