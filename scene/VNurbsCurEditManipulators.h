// The tools that edit a path's points: drag an anchor or handle, drag a
// handle out of its anchor, and delete an anchor. They pick only paths, so
// that letters lying on a path do not hide its markers.
#pragma once

#include "scene/K3DObject.h"
#include "scene/K3DTranslateManipulator.h"
#include "scene/VNurbsCurveManipulator.h"

class VZarbesoModel;

// Picks a path under the event: the object and its part as the model holds
// them. A marker that lay in front of the curve, within 1.5 of the click on
// every axis, is taken for the curve. Null when no path was hit.
VZarbesoModel* PickCurvePart(K3DTranslateManipulator& manipulator, const MouseEvent& event);

// The mouse logic of a drag of one point of a path.
class k3DNurbsCurDragManipulator : public K3DTranslateManipulator {
  public:
    // Picks, selects the part, and works at the depth of the selected point.
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    // After a move the path is made again.
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    // Whether a press toggles the joint (the handle tool).
    virtual bool Toggles() const { return false; }
    // Moves the selected part by a vector in the model's frame.
    virtual void MoveBy(K3DObject& object, const KVector3D& delta) { object.Translate(delta); }
    // A gesture changed the path: it is built again and carries the text.
    virtual void EndMove(K3DObject& object) { object.UpdateAfterMove(); }

    VZarbesoModel* object = nullptr;
    bool moved = false;
};

class VNurbsCurDragManipulator : public k3DNurbsCurDragManipulator, public VNurbsCurveManipulator {
  public:
    explicit VNurbsCurDragManipulator(int cursorId = 10018) : cursor(cursorId) {}
    void EndMove(K3DObject& object) override;
    bool DeleteSelectedPoint(VZarbesoView& view) override { return DeleteSelectedAnchor(view); }

    KCursor cursor;
};

// The same tool on handles: a press on an anchor collapses its handles so
// that a drag pulls them out mirrored; a press on a handle breaks or mends
// its joint.
class VNurbsCurHandleManipulator : public VNurbsCurDragManipulator {
  public:
    explicit VNurbsCurHandleManipulator(int cursorId = 10019)
        : VNurbsCurDragManipulator(cursorId) {}
    bool Toggles() const override { return true; }
    void MoveBy(K3DObject& object, const KVector3D& delta) override;
};

// A press on an anchor deletes it; its neighbours join.
class k3DNurbsCurDelPtManipulator : public K3DTranslateManipulator {
  public:
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& /*event*/, bool& /*redraw*/) override {}
    void DoRelease(const MouseEvent& event, bool& redraw) override;
    // The text follows the changed path.
    virtual void EndDelete() {}

    bool deleted = false;
};

class VNurbsCurDelPtManipulator : public k3DNurbsCurDelPtManipulator,
                                  public VNurbsCurveManipulator {
  public:
    explicit VNurbsCurDelPtManipulator(int cursorId = 10017) : cursor(cursorId) {}
    void EndDelete() override;
    bool DeleteSelectedPoint(VZarbesoView& view) override { return DeleteSelectedAnchor(view); }

    KCursor cursor;
};
