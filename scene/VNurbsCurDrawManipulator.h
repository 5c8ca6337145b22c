// The draw tool: each click puts an anchor, and a drag from the click pulls
// its handles out, mirrored; the second click makes the path, later clicks
// extend it. Drawing never closes a path.
#pragma once

#include "scene/K3DManipulator.h"
#include "scene/VNurbsCurveManipulator.h"

class VCBezierCurveModel;

// The mouse logic; the model behind it is reached through the hooks.
class k3DNurbsCurDrawManipulator : public K3DManipulator {
  public:
    // Starts a new path; ready when there is a model to draw into.
    bool Activate(WView* view) override;
    // A path of fewer than two clicks goes.
    bool Deactivate(WView* view) override;
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    // ---- the model ----
    virtual bool NewCurve() { return false; }
    virtual void AddPiece(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    virtual void ShowGuideMarkers(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    virtual void ShowGuideLines(std::int32_t /*count*/, const KVector3D* /*lines*/) {}
    virtual void UpdateLastPiece(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    // The first click: the path in use gives way to the new one.
    virtual void BeginCurve() {}
    // A release: after the second click the curve becomes the path; later
    // ones extend it.
    virtual void EndClick(bool /*first*/) {}
    // The unfinished curve goes from the scene.
    virtual void DiscardCurve() {}
    // Whether the model drawn into is still there.
    virtual bool HasCurve() const { return false; }

    enum { kPrevAnchorIn, kPrevAnchor, kPrevAnchorOut, kAnchorIn, kAnchor, kAnchorOut };
    std::int32_t clickCount = 0;
    KVector3D points[6];
    Point lastPixel{0, 0};

  private:
    void ShowGuides(const KVector3D* triple);
};

class VNurbsCurDrawManipulator : public k3DNurbsCurDrawManipulator, public VNurbsCurveManipulator {
  public:
    explicit VNurbsCurDrawManipulator(int cursorId = 10007) : cursor(cursorId) {}
    bool Activate(WView* view) override;

    bool NewCurve() override;
    void AddPiece(std::int32_t count, const KVector3D* points) override;
    void ShowGuideMarkers(std::int32_t count, const KVector3D* points) override;
    void ShowGuideLines(std::int32_t count, const KVector3D* lines) override;
    void UpdateLastPiece(std::int32_t count, const KVector3D* points) override;
    void BeginCurve() override;
    void EndClick(bool first) override;
    void DiscardCurve() override;
    bool HasCurve() const override;

    KCursor cursor;
    VCBezierCurveModel* model = nullptr;
    VZarbesoView* zview = nullptr;
};
