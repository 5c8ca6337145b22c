// A custom path as a chain of cubic Bezier pieces: the form of everything
// drawn, made from a shape and converted. Each piece keeps its own points,
// its drawn curve and its markers; the model merges the pieces into the one
// curve that carries the text. While the path is edited the model shows its
// anchors, the handles of the selected anchor, and the tools' guides.
#pragma once

#include "curves/VNurbsCurvePath.h"
#include "foundation/KList.h"
#include "scene/DBezierCurveObject.h"
#include "scene/VCModel.h"

#include <memory>
#include <vector>

class VCBezierCurveModel : public VZarbesoModel {
  public:
    static constexpr std::int32_t kPieceSize = 4;
    // Kinds of the part a marker names.
    enum PartKind : std::int32_t { kNoPart = 0, kAnchor = 1, kHandle = 2 };

    // `group` shows the pieces' curves.
    VCBezierCurveModel(std::uint32_t id, const DDisplayGroup& group);
    ~VCBezierCurveModel() override;

    // ---- what tools do to the model ----
    // Moves the selected part, with the joins' rules.
    void Translate(const KVector3D& delta) override;
    // After a drag: the path's curve is made again from the pieces.
    void UpdateAfterMove() override { UpdatePath(); }
    void BeginEdit() override { ShowControls(true); }
    // Selects the part that the last pick named. Without toggle a mirrored
    // join becomes aligned; with toggle an anchor's handles collapse onto it
    // (mirrored), and a handle's join flips between corner and mirrored. A
    // pick of the curve itself shows or hides all handles and answers false.
    bool SelectPart(bool toggle) override;
    // Deletes the anchor that the last pick named, joining its neighbours;
    // an end anchor takes its piece along and opens a closed chain. Needs
    // two pieces or more.
    bool EditAtPart() override;

    bool BuildPath() override;
    VCurve* GetPath() override { return path_.get(); }
    void GetSelectedPoint(KVector3D& out) const override;
    void ShowControls(bool on) override;

    // ---- the chain ----
    // A cubic piece of `count` homogeneous points (4) at the end or the front;
    // false for another count.
    bool AddPiece(std::int32_t count, const KVector3D* points);
    bool AddPieceAtFront(std::int32_t count, const KVector3D* points);
    // The pieces of `curve`, of degree 3 or less, replace the chain; a
    // closed curve gives a closed chain. False, with the chain empty, for a
    // curve that cannot be split into such pieces.
    bool SetCurve(std::unique_ptr<VCNurbsCurve> curve);
    // Whether a curve can be held as a chain of pieces.
    static bool CanHold(const VCNurbsCurve& curve);
    // Splits the piece nearest to `point` (model coordinates) where it
    // passes nearest, unless that is at one of its ends.
    bool InsertAtNearest(const KVector3D& point);
    bool SplitPiece(std::int32_t piece, double t);
    void RemovePiece(std::int32_t piece);
    // Merges `piece` with the next one.
    void JoinPieces(std::int32_t piece);
    // Moves point `place` of `piece` by `delta` with the rules of its join.
    void MovePart(std::int32_t piece, std::int32_t place, const KVector3D& delta);
    // Moves the handle of the selected anchor, or the selected handle.
    void MoveHandle(const KVector3D& delta);
    // Closes the chain: ends that meet get mirrored handles, ends apart a
    // closing piece. False when there is no piece.
    bool CloseCurve();
    // Makes every display again from the pieces, then the path's curve.
    void Rebuild();
    // The pieces as one cubic curve, each joint twice, with knots of full
    // multiplicity between pieces; null without pieces.
    std::unique_ptr<VCNurbsCurve> BuildCurve() const;
    void UpdateFirstPiece(std::int32_t count, const KVector3D* points);
    void UpdateLastPiece(std::int32_t count, const KVector3D* points);
    // The first or last point of the chain, w 1.
    bool GetEnd(bool atEnd, KVector3D& out) const;
    // The first (last) anchor, its handle and the handle mirrored through
    // the anchor, w 1.
    bool GetStartExtension(KVector3D points[3]) const;
    bool GetEndExtension(KVector3D points[3]) const;
    // Temporary markers at points, and lines between pairs of points.
    void ShowGuideMarkers(std::int32_t count, const KVector3D* points);
    void ShowGuideLines(std::int32_t count, const KVector3D* lines);
    void ClearGuides();

    // ---- questions ----
    std::int32_t GetPieceCount() const { return std::int32_t(pieces.GetCount()); }
    DBezierCurveObject* GetPiece(std::int32_t index) const;
    // The neighbours of a piece along the chain; on a closed chain the
    // first and the last are neighbours. -1 when there is none.
    std::int32_t PreviousPiece(std::int32_t piece) const;
    std::int32_t NextPiece(std::int32_t piece) const;
    // The join at the start (atEnd false) or end of a piece.
    std::int32_t GetJoin(std::int32_t piece, bool atEnd) const;
    // The kind of the part a marker number names.
    PartKind KindOfMarker(std::int32_t marker) const;
    bool GetPartPosition(std::uint32_t pickId, KVector3D& out) const override;
    // The curve that carries the text, made from the pieces.
    VCNurbsCurve* GetCurve() const { return pathCurve_.get(); }
    std::int32_t GetSelectedAnchor() const { return selectedMarker; }
    bool AreControlsShown() const { return controlsShown != 0; }

    std::uint8_t closed = 0;
    std::uint8_t handlesShown = 0;
    std::uint8_t controlsShown = 0;
    std::int32_t pieceSize = kPieceSize;
    std::int32_t markerCount = 0;
    // The selected anchor as the marker number that stands for it, -1 when
    // none; the part that moves.
    std::int32_t selectedMarker = -1;
    std::int32_t selectedPiece = -1;
    std::int32_t selectedPlace = -1;
    std::uint32_t modelId = 0;
    KList pieces; // of DBezierCurveObject

  private:
    void ClearSelection();
    void SetSelection(std::int32_t marker);
    // Forgets the selection without showing it.
    void UnmarkSelection();
    // The marker number that stands for the anchor at (piece, place): the
    // start of a piece wherever a piece starts there.
    std::int32_t AnchorMarker(std::int32_t piece, std::int32_t place) const;
    void SetJoin(std::int32_t piece, bool atEnd, std::int32_t join);
    void RebuildCurveGroup();
    void RebuildMarkers();
    void ShowGuides();
    void UpdatePath();
    bool InsertPiece(std::uint32_t position, std::int32_t count, const KVector3D* points);

    DDisplayGroup curveGroup_;
    DDisplayGroup markerGroup_;
    DDisplayGroup handleLines_; // in markerGroup_, never picked
    DDisplayGroup guideGroup_;
    std::vector<std::unique_ptr<DGeometryObject>> guideMarkers_;
    std::vector<std::unique_ptr<DGeometryObject>> guideLines_;
    std::unique_ptr<VCNurbsCurve> pathCurve_;
    std::unique_ptr<VNurbsCurvePath> path_;
};
