// The add tool: a click on a path splits it there with a new anchor; a
// click beside an open path with Ctrl held extends it from its nearer end
// to the click, and a drag pulls the new anchor's handles out, mirrored.
#pragma once

#include "scene/K3DTranslateManipulator.h"
#include "scene/VNurbsCurveManipulator.h"

class VCBezierCurveModel;

// The mouse logic; the path is reached through the hooks, in its own frame.
class k3DNurbsCurAddPtManipulator : public K3DTranslateManipulator {
  public:
    void Press(const MouseEvent& event) override;
    void Drag(const MouseEvent& event, bool& redraw) override;
    void DoRelease(const MouseEvent& event, bool& redraw) override;

    // ---- the path ----
    // Whether there is a path to add to; it is then `curve`.
    virtual bool FindCurve() { return false; }
    // Its two ends as anchor, handle and the handle mirrored: startTriple
    // and endTriple.
    virtual void GetExtensions() {}
    virtual void AddPiece(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    virtual void AddPieceAtFront(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    virtual bool InsertAtNearest(const KVector3D& /*point*/) { return false; }
    virtual void ShowGuideMarkers(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    virtual void ShowGuideLines(std::int32_t /*count*/, const KVector3D* /*lines*/) {}
    virtual void UpdateFirstPiece(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    virtual void UpdateLastPiece(std::int32_t /*count*/, const KVector3D* /*points*/) {}
    // The end of a gesture that changed the path.
    virtual void EndAdd() {}

    K3DObject* curve = nullptr;
    bool curveClosed = false;
    KVector3D startTriple[3];
    KVector3D endTriple[3];
    // Extending: the new piece, and whether it goes at the front.
    bool extending = false;
    bool atFront = false;
    bool changed = false;
    KVector3D piece[4];
    Point downPixel{0, 0};

  private:
    void Extend(const MouseEvent& event);
    void ShowGuides(const KVector3D& anchor, const KVector3D& behind, const KVector3D& ahead);
};

class VNurbsCurAddPtManipulator : public k3DNurbsCurAddPtManipulator,
                                  public VNurbsCurveManipulator {
  public:
    explicit VNurbsCurAddPtManipulator(int cursorId = 10016) : cursor(cursorId) {}
    bool FindCurve() override;
    void GetExtensions() override;
    void AddPiece(std::int32_t count, const KVector3D* points) override;
    void AddPieceAtFront(std::int32_t count, const KVector3D* points) override;
    bool InsertAtNearest(const KVector3D& point) override;
    void ShowGuideMarkers(std::int32_t count, const KVector3D* points) override;
    void ShowGuideLines(std::int32_t count, const KVector3D* lines) override;
    void UpdateFirstPiece(std::int32_t count, const KVector3D* points) override;
    void UpdateLastPiece(std::int32_t count, const KVector3D* points) override;
    void EndAdd() override;
    bool DeleteSelectedPoint(VZarbesoView& view) override { return DeleteSelectedAnchor(view); }

    KCursor cursor;
    VCBezierCurveModel* model = nullptr;
};
