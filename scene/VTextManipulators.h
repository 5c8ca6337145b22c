// The tools of the text: they do not move a scene object but turn the
// pointer's movement into the layout values of the text. While one of
// them is pressed the letters are drawn hollow; the release builds them
// solid again.
#pragma once

#include "scene/K3DRotateManipulator.h"
#include "scene/KTool.h"

class VZarbesoView;

// Tool 8 (text mode): slides the text along its path, and with Ctrl
// changes its spacing. Tool 12 (light mode): selects a light and moves it,
// in the screen's plane, along the view direction with Ctrl, or along one
// screen axis with Shift; a double click edits its colour.
class VTranslateManipulator : public K3DTranslateOnlyConstrainManipulator {
  public:
    explicit VTranslateManipulator(bool textMode, int cursorId = 0)
        : cursor(cursorId), textMode(textMode) {}
    void SelectObject(K3DObject* object) override;
    void Press(const MouseEvent& event) override;
    void Anchor(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    KCursor cursor;
    Point lastTextPoint{0, 0};
    bool slideMode = false;
    bool spacingMode = false;
    bool draggingText = false;
    bool textMode;

  private:
    void TextStep(const MouseEvent& event, bool& redraw);
};

// Tool 11: right and left rotate the letters, up and down revolve them;
// with Ctrl, right and left tilt them.
class VRotateManipulator : public K3DRotateManipulator {
  public:
    explicit VRotateManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    KCursor cursor;
    Point lastPoint{0, 0};
    bool rotateMode = false;
    bool tiltMode = false;
};

// Tool 9: up and right make the letters higher and wider; with Shift both
// by the larger movement.
class VScaleManipulator : public K3DScaleManipulator {
  public:
    explicit VScaleManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    KCursor cursor;
    Point lastPoint{0, 0};
    bool uniformMode = false;
    bool freeMode = false;
};

// Tool 10: up deepens the letters.
class VScaleDepthManipulator : public K3DScaleManipulator {
  public:
    explicit VScaleDepthManipulator(int cursorId = 0) : cursor(cursorId) {}
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    KCursor cursor;
    Point lastPoint{0, 0};
};

// Drops the smaller part of a step that goes mostly one way: when one of
// dx and dv is more than ten times the other, the other becomes 0.
void DeadZone(float& dx, float& dv);
