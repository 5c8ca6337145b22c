// Editing the Bezier path model: selecting anchors and handles, moving them
// with the rules of their joins, splitting, joining and removing pieces.
#include "curves/VNurbsAlgorithms.h"
#include "scene/VCBezierCurveModel.h"

VCBezierCurveModel::PartKind VCBezierCurveModel::KindOfMarker(std::int32_t marker) const {
    if (marker < 0) return kNoPart;
    const DBezierCurveObject* piece = GetPiece(marker / pieceSize);
    const std::int32_t place = marker % pieceSize;
    if (!piece) return kNoPart;
    return (place == 0 || place == kPieceSize - 1) ? kAnchor : kHandle;
}

bool VCBezierCurveModel::GetPartPosition(std::uint32_t pickId, KVector3D& out) const {
    const std::int32_t marker = std::int32_t(pickId >> 24) - 1;
    if ((pickId & 0xFFFFFFu) != modelId || KindOfMarker(marker) == kNoPart) return false;
    out = GetPiece(marker / pieceSize)->GetPosition(marker % pieceSize);
    return true;
}

std::int32_t VCBezierCurveModel::AnchorMarker(std::int32_t piece, std::int32_t place) const {
    const DBezierCurveObject* p = GetPiece(piece);
    if (!p) return -1;
    if (place == 0) return piece * pieceSize;
    const std::int32_t next = NextPiece(piece);
    return next >= 0 ? next * pieceSize : piece * pieceSize + p->pointCount - 1;
}

std::int32_t VCBezierCurveModel::GetJoin(std::int32_t piece, bool atEnd) const {
    const DBezierCurveObject* p = GetPiece(piece);
    return p ? (atEnd ? p->endJoin : p->startJoin) : kJoinCorner;
}

void VCBezierCurveModel::SetJoin(std::int32_t piece, bool atEnd, std::int32_t join) {
    DBezierCurveObject* p = GetPiece(piece);
    if (!p) return;
    // The two sides of a joint always hold the same join.
    if (atEnd) {
        p->endJoin = join;
        if (DBezierCurveObject* next = GetPiece(NextPiece(piece))) next->startJoin = join;
    } else {
        p->startJoin = join;
        if (DBezierCurveObject* previous = GetPiece(PreviousPiece(piece))) previous->endJoin = join;
    }
}

// ---- selection ---------------------------------------------------------------------

void VCBezierCurveModel::UnmarkSelection() {
    if (selectedMarker >= 0) {
        for (std::int32_t k = 0; k < GetPieceCount(); ++k) {
            DBezierCurveObject& piece = *GetPiece(k);
            piece.SetAnchorSelected(0, false);
            piece.SetAnchorSelected(piece.pointCount - 1, false);
        }
    }
    selectedMarker = selectedPiece = selectedPlace = -1;
}

void VCBezierCurveModel::ClearSelection() {
    UnmarkSelection();
    RebuildMarkers();
}

void VCBezierCurveModel::SetSelection(std::int32_t marker) {
    UnmarkSelection();
    const std::int32_t k = marker / pieceSize;
    DBezierCurveObject* piece = GetPiece(k);
    if (!piece) return;
    const std::int32_t place = marker % pieceSize;
    piece->SetAnchorSelected(place, true);
    // The marker of the joint on the other side shows the selection too.
    const bool start = place == 0;
    if (DBezierCurveObject* other = GetPiece(start ? PreviousPiece(k) : NextPiece(k)))
        other->SetAnchorSelected(start ? other->pointCount - 1 : 0, true);
    selectedMarker = marker;
    RebuildMarkers();
}

bool VCBezierCurveModel::SelectPart(bool toggle) {
    const std::int32_t marker = std::int32_t(GetPickedId() >> 24) - 1;
    const PartKind kind = KindOfMarker(marker);
    if (marker < 0) {
        handlesShown ^= 1;
        RebuildMarkers();
        return false;
    }
    if (kind == kNoPart) return false;
    const std::int32_t k = marker / pieceSize, place = marker % pieceSize;
    DBezierCurveObject& piece = *GetPiece(k);
    const bool atEnd = place >= piece.pointCount / 2;
    const std::int32_t join = GetJoin(k, atEnd);
    if (!toggle) {
        if (join != kJoinCorner) SetJoin(k, atEnd, kJoinAligned);
    } else if (kind == kAnchor) {
        SetJoin(k, atEnd, kJoinMirrored);
        const std::int32_t near = atEnd ? piece.pointCount - 2 : 1;
        const KVector3D anchor = piece.GetPosition(place);
        piece.PlacePoint(near, anchor);
        if (DBezierCurveObject* other = GetPiece(atEnd ? NextPiece(k) : PreviousPiece(k)))
            other->PlacePoint(atEnd ? 1 : other->pointCount - 2, anchor);
    } else if (kind == kHandle) {
        SetJoin(k, atEnd, join == kJoinCorner ? kJoinMirrored : kJoinCorner);
    }
    if (kind == kAnchor && AnchorMarker(k, place) != selectedMarker)
        SetSelection(AnchorMarker(k, place));
    selectedPiece = k;
    selectedPlace = place;
    return true;
}

void VCBezierCurveModel::GetSelectedPoint(KVector3D& out) const {
    const DBezierCurveObject* piece = GetPiece(selectedPiece);
    if (piece && selectedPlace >= 0 && selectedPlace < piece->pointCount)
        out = piece->GetPosition(selectedPlace);
    else
        VZarbesoModel::GetSelectedPoint(out);
}

// ---- moves -------------------------------------------------------------------------

void VCBezierCurveModel::Translate(const KVector3D& delta) {
    MovePart(selectedPiece, selectedPlace, delta);
}

void VCBezierCurveModel::MoveHandle(const KVector3D& delta) {
    const DBezierCurveObject* piece = GetPiece(selectedPiece);
    if (!piece) return;
    std::int32_t place = selectedPlace;
    if (place == 0)
        place = 1;
    else if (place == piece->pointCount - 1)
        place = piece->pointCount - 2;
    MovePart(selectedPiece, place, delta);
}

void VCBezierCurveModel::MovePart(std::int32_t k, std::int32_t place, const KVector3D& delta) {
    DBezierCurveObject* piece = GetPiece(k);
    if (!piece || place < 0 || place >= kPieceSize) return;
    // Places 0 and 1 belong to the start of a piece, 2 and 3 to its end;
    // where a neighbour meets that end, its anchor and handle come in.
    const bool atEnd = place >= 2;
    const std::int32_t anchorPlace = atEnd ? 3 : 0, handlePlace = atEnd ? 2 : 1;
    DBezierCurveObject* other = GetPiece(atEnd ? NextPiece(k) : PreviousPiece(k));
    const std::int32_t otherAnchor = 3 - anchorPlace, otherHandle = 3 - handlePlace;
    if (place == anchorPlace) {
        piece->MovePoint(anchorPlace, delta);
        piece->MovePoint(handlePlace, delta);
        if (other) {
            other->MovePoint(otherAnchor, delta);
            other->MovePoint(otherHandle, delta);
        }
        return;
    }
    piece->MovePoint(handlePlace, delta);
    const std::int32_t join = GetJoin(k, atEnd);
    if (!other || join == kJoinCorner) return;
    const KVector3D anchor = piece->GetPosition(anchorPlace);
    const KVector3D moved = piece->GetPosition(handlePlace);
    if (join == kJoinMirrored) {
        other->PlacePoint(otherHandle, anchor * 2.0f - moved);
        return;
    }
    // Aligned: the far handle keeps its length on the line through the anchor.
    const float farLength = (other->GetPosition(otherHandle) - anchor).Length();
    const float nearLength = (anchor - moved).Length();
    if (nearLength > 0.0f)
        other->PlacePoint(otherHandle, anchor + (anchor - moved) * (farLength / nearLength));
}

// ---- pieces ------------------------------------------------------------------------

bool VCBezierCurveModel::InsertAtNearest(const KVector3D& point) {
    std::int32_t best = -1;
    double bestDistance = 100.0, bestT = 0.0;
    for (std::int32_t k = 0; k < GetPieceCount(); ++k) {
        double distance = 0.0, t = 0.0;
        if (GetPiece(k)->curve->FindNearest(point, distance, t) == kCurveOK &&
            distance < bestDistance) {
            best = k;
            bestDistance = distance;
            bestT = t;
        }
    }
    if (best < 0 || bestT < 0.001 || bestT > 0.999) return false;
    ClearSelection();
    return SplitPiece(best, bestT);
}

bool VCBezierCurveModel::SplitPiece(std::int32_t k, double t) {
    DBezierCurveObject* piece = GetPiece(k);
    if (!piece) return false;
    const std::int32_t n = piece->pointCount;
    KVector3D points[kPieceSize], left[kPieceSize], right[kPieceSize];
    for (std::int32_t i = 0; i < n; ++i)
        points[i] = piece->GetPoint(i);
    if (SplitBezier(n - 1, points, t, left, right) != kCurveOK) return false;
    auto added = std::make_unique<DBezierCurveObject>(n, right);
    if (!added->IsValid()) return false;
    piece->SetPoints(left);
    added->endJoin = piece->endJoin;
    added->startJoin = piece->endJoin = kJoinAligned;
    added->SetAnchorSelected(n - 1, piece->IsAnchorSelected(n - 1));
    piece->SetAnchorSelected(n - 1, false);
    pieces.InsertEntryAt(std::uint32_t(k) + 2, added.release());
    Rebuild();
    return true;
}

void VCBezierCurveModel::RemovePiece(std::int32_t k) {
    DBezierCurveObject* piece = GetPiece(k);
    if (!piece) return;
    curveGroup_.Empty();
    markerGroup_.Empty();
    pieces.RemoveEntry(piece);
    delete piece;
    Rebuild();
}

void VCBezierCurveModel::JoinPieces(std::int32_t k) {
    DBezierCurveObject* piece = GetPiece(k);
    const std::int32_t nextIndex = NextPiece(k);
    DBezierCurveObject* next = GetPiece(nextIndex);
    if (!piece || !next || next == piece) return;
    // The piece reaches over the next one to its far handle and anchor.
    const std::int32_t n = piece->pointCount, m = next->pointCount;
    piece->SetPoint(n - 2, next->GetPoint(m - 2));
    piece->SetPoint(n - 1, next->GetPoint(m - 1));
    piece->endJoin = next->endJoin;
    RemovePiece(nextIndex);
}

bool VCBezierCurveModel::EditAtPart() {
    const std::int32_t n = GetPieceCount();
    if (n < 2) return false;
    const std::int32_t marker = std::int32_t(GetPickedId() >> 24) - 1;
    if ((GetPickedId() & 0xFFFFFFu) != modelId || KindOfMarker(marker) != kAnchor) return false;
    ClearSelection();
    const std::int32_t k = marker / pieceSize, place = marker % pieceSize;
    const std::int32_t lastMarker = (n - 1) * pieceSize + GetPiece(n - 1)->pointCount - 1;
    if (marker == 0 || marker == lastMarker) {
        closed = 0;
        RemovePiece(k);
    } else {
        JoinPieces(place == 0 ? k - 1 : k);
    }
    // The pick named a marker that is gone now.
    SetPickedId(modelId);
    return true;
}
