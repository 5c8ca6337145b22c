// The Bezier path model: its pieces, its displays and the curve it builds
// for the text.
#include "scene/VCBezierCurveModel.h"

#include "curves/VNurbsAlgorithms.h"
#include "d3d/DStyleObject.h"
#include "scene/PathGeometry.h"

#include <cmath>

namespace {
constexpr float kGuideColour[3] = {0.8f, 0.2f, 0.6f};
// Pick ids carry a marker number + 1 in their top byte.
constexpr std::int32_t kMaxPickableMarker = 254;

TQ3GroupObject SharedReference(const DDisplayGroup& group) {
    return group.GetObject() ? Q3Shared_GetReference(group.GetObject()) : nullptr;
}

// Whether the chords before and after a joint run on one line.
bool IsSmooth(const KVector3D& before, const KVector3D& joint, const KVector3D& after) {
    return (joint - before).Cross(after - joint).Length() < 0.00001f;
}
} // namespace

VCBezierCurveModel::VCBezierCurveModel(std::uint32_t id, const DDisplayGroup& group)
    : VZarbesoModel(id, group), modelId(id), curveGroup_(SharedReference(group)) {
    AddObject(markerGroup_);
    AddObject(guideGroup_);
    markerGroup_.SetDrawn(false);
    handleLines_.SetPicked(false);
}

VCBezierCurveModel::~VCBezierCurveModel() {
    // The path refers to the curve: it goes first.
    path_.reset();
}

DBezierCurveObject* VCBezierCurveModel::GetPiece(std::int32_t index) const {
    if (index < 0 || index >= GetPieceCount()) return nullptr;
    return static_cast<DBezierCurveObject*>(pieces.EntryAt(std::uint32_t(index) + 1));
}

std::int32_t VCBezierCurveModel::PreviousPiece(std::int32_t piece) const {
    if (piece > 0 && piece < GetPieceCount()) return piece - 1;
    return piece == 0 && closed ? GetPieceCount() - 1 : -1;
}

std::int32_t VCBezierCurveModel::NextPiece(std::int32_t piece) const {
    if (piece >= 0 && piece + 1 < GetPieceCount()) return piece + 1;
    return piece == GetPieceCount() - 1 && closed ? 0 : -1;
}

// ---- building the chain ------------------------------------------------------------

bool VCBezierCurveModel::InsertPiece(std::uint32_t position, std::int32_t count,
                                     const KVector3D* points) {
    if (count != kPieceSize) return false;
    auto piece = std::make_unique<DBezierCurveObject>(count, points);
    if (!piece->IsValid()) return false;
    pieces.InsertEntryAt(position, piece.release());
    RebuildCurveGroup();
    RebuildMarkers();
    return true;
}

bool VCBezierCurveModel::AddPiece(std::int32_t count, const KVector3D* points) {
    return InsertPiece(pieces.GetCount() + 1, count, points);
}

bool VCBezierCurveModel::AddPieceAtFront(std::int32_t count, const KVector3D* points) {
    ClearSelection();
    return InsertPiece(1, count, points);
}

void VCBezierCurveModel::UpdateFirstPiece(std::int32_t count, const KVector3D* points) {
    if (DBezierCurveObject* first = GetPiece(0); first && first->pointCount == count)
        first->SetPoints(points);
}

void VCBezierCurveModel::UpdateLastPiece(std::int32_t count, const KVector3D* points) {
    if (DBezierCurveObject* last = GetPiece(GetPieceCount() - 1); last && last->pointCount == count)
        last->SetPoints(points);
}

bool VCBezierCurveModel::CanHold(const VCNurbsCurve& curve) {
    return curve.degree >= 1 && curve.degree <= 3 && curve.CheckValid() == kCurveOK;
}

bool VCBezierCurveModel::SetCurve(std::unique_ptr<VCNurbsCurve> curve) {
    ClearSelection();
    pieces.DeleteAll();
    closed = 0;
    VBezierPieces split;
    if (!curve || !CanHold(*curve) || curve->DecomposeToBezier(split) != kCurveOK) {
        Rebuild();
        return false;
    }
    for (std::int32_t i = 0; i < split.count; ++i) {
        KVector3D cubic[kPieceSize];
        const KVector3D* points = split.pieces[i];
        if (split.size < kPieceSize) {
            ElevateBezier(split.size - 1, kPieceSize - split.size, points, cubic);
            points = cubic;
        }
        auto piece = std::make_unique<DBezierCurveObject>(kPieceSize, points);
        if (!piece->IsValid()) continue;
        pieces.Append(piece.release());
    }
    // Each joint is smooth where the handles on its two sides run on one line.
    const std::int32_t n = GetPieceCount();
    const bool meet =
        n > 0 && curve->closed &&
        (GetPiece(0)->GetPosition(0) - GetPiece(n - 1)->GetPosition(3)).Length() < 0.00001f;
    for (std::int32_t i = 0; i < n; ++i) {
        if (i + 1 == n && !meet) break;
        DBezierCurveObject& a = *GetPiece(i);
        DBezierCurveObject& b = *GetPiece((i + 1) % n);
        const std::int32_t join = IsSmooth(a.GetPosition(2), a.GetPosition(3), b.GetPosition(1))
                                      ? kJoinAligned
                                      : kJoinCorner;
        a.endJoin = b.startJoin = join;
    }
    if (meet) {
        // The ends stay as they were stored: a corner at the closing point
        // stays a corner.
        GetPiece(n - 1)->SetPoint(3, GetPiece(0)->GetPoint(0));
        closed = 1;
    } else if (curve->closed) {
        CloseCurve();
    }
    Rebuild();
    return true;
}

bool VCBezierCurveModel::CloseCurve() {
    const std::int32_t n = GetPieceCount();
    if (n == 0) return false;
    if (closed) return true;
    DBezierCurveObject& first = *GetPiece(0);
    DBezierCurveObject& last = *GetPiece(n - 1);
    const KVector3D a = first.GetPoint(0), b = last.GetPoint(3);
    const bool equal = std::fabs(a.x - b.x) < 0.00001f && std::fabs(a.y - b.y) < 0.00001f &&
                       std::fabs(a.z - b.z) < 0.00001f && std::fabs(a.w - b.w) < 0.00001f;
    // A single piece whose ends meet stays open.
    if (equal && n > 1) {
        last.SetPoint(3, a);
        const KVector3D anchor = first.GetPosition(0);
        last.PlacePoint(2, anchor * 2.0f - first.GetPosition(1));
        last.endJoin = first.startJoin = kJoinMirrored;
        closed = 1;
    } else if (!equal) {
        const KVector3D lastAnchor = last.GetPosition(3), firstAnchor = first.GetPosition(0);
        const KVector3D closing[kPieceSize] = {lastAnchor, lastAnchor * 2.0f - last.GetPosition(2),
                                               firstAnchor * 2.0f - first.GetPosition(1),
                                               firstAnchor};
        if (!AddPiece(kPieceSize, closing)) return false;
        GetPiece(n)->startJoin = last.endJoin = kJoinMirrored;
        GetPiece(n)->endJoin = first.startJoin = kJoinMirrored;
        closed = 1;
    }
    return closed != 0;
}

std::unique_ptr<VCNurbsCurve> VCBezierCurveModel::BuildCurve() const {
    const std::int32_t n = GetPieceCount();
    if (n == 0) return nullptr;
    std::vector<KVector3D> points;
    std::vector<double> knots;
    points.reserve(std::size_t(n) * kPieceSize);
    knots.reserve(std::size_t(n) * kPieceSize + kPieceSize);
    for (std::int32_t k = 0; k < n; ++k) {
        const DBezierCurveObject& piece = *GetPiece(k);
        for (std::int32_t i = 0; i < kPieceSize; ++i) {
            points.push_back(piece.GetPoint(i));
            knots.push_back(double(k + 1));
        }
    }
    for (std::int32_t i = 0; i < kPieceSize; ++i)
        knots.push_back(double(n + 1));
    auto curve = std::make_unique<VCNurbsCurve>();
    if (curve->Set(3, std::int32_t(points.size()), points.data(), std::int32_t(knots.size()),
                   knots.data(), closed) != kCurveOK)
        return nullptr;
    return curve;
}

// ---- the path ----------------------------------------------------------------------

bool VCBezierCurveModel::BuildPath() {
    std::unique_ptr<VCNurbsCurve> curve = BuildCurve();
    if (!curve) return false;
    path_.reset();
    pathCurve_ = std::move(curve);
    path_ = std::make_unique<VNurbsCurvePath>();
    path_->curve = pathCurve_.get();
    path_->Rebuild();
    return true;
}

void VCBezierCurveModel::UpdatePath() {
    if (!path_) return;
    std::unique_ptr<VCNurbsCurve> curve = BuildCurve();
    if (!curve) return;
    path_->curve = curve.get();
    pathCurve_ = std::move(curve);
    path_->Rebuild();
}

// ---- displays ----------------------------------------------------------------------

void VCBezierCurveModel::ShowControls(bool on) {
    controlsShown = on ? 1 : 0;
    markerGroup_.SetDrawn(on);
}

void VCBezierCurveModel::Rebuild() {
    ClearGuides();
    RebuildCurveGroup();
    RebuildMarkers();
    UpdatePath();
}

void VCBezierCurveModel::RebuildCurveGroup() {
    curveGroup_.Empty();
    AddUnlitGreen(curveGroup_);
    for (std::int32_t k = 0; k < GetPieceCount(); ++k)
        curveGroup_.AddObject(*GetPiece(k)->geometry);
}

void VCBezierCurveModel::RebuildMarkers() {
    markerGroup_.Empty();
    handleLines_.Empty();
    AddUnlitGreen(markerGroup_);
    markerGroup_.AddObject(handleLines_);
    markerCount = 0;
    for (std::int32_t k = 0; k < GetPieceCount(); ++k) {
        const DBezierCurveObject& piece = *GetPiece(k);
        for (std::int32_t place = 0; place < piece.pointCount; ++place) {
            const std::int32_t marker = k * pieceSize + place;
            const bool anchor = place == 0 || place == piece.pointCount - 1;
            const bool start = place < piece.pointCount / 2;
            // A handle shows with the anchor it belongs to, or with all.
            if (!anchor && !handlesShown &&
                AnchorMarker(k, start ? 0 : piece.pointCount - 1) != selectedMarker)
                continue;
            if (marker > kMaxPickableMarker) continue;
            markerGroup_.AddObject(DPickIDStyle(modelId + (std::uint32_t(marker + 1) << 24)));
            markerGroup_.AddObject(piece.GetMarker(place));
            ++markerCount;
            if (!anchor) handleLines_.AddObject(start ? *piece.startGuide : *piece.endGuide);
        }
    }
}

void VCBezierCurveModel::ShowGuideMarkers(std::int32_t count, const KVector3D* points) {
    guideMarkers_.clear();
    for (std::int32_t i = 0; i < count; ++i)
        guideMarkers_.push_back(std::make_unique<DBezierHandleMarker>(ToLibraryPoint(points[i])));
    ShowGuides();
}

void VCBezierCurveModel::ShowGuideLines(std::int32_t count, const KVector3D* lines) {
    guideLines_.clear();
    for (std::int32_t i = 0; i < count; ++i)
        guideLines_.push_back(std::make_unique<DLineObject>(
            ToLibraryPoint(lines[2 * i]), ToLibraryPoint(lines[2 * i + 1]), kGuideColour[0],
            kGuideColour[1], kGuideColour[2]));
    ShowGuides();
}

void VCBezierCurveModel::ClearGuides() {
    guideMarkers_.clear();
    guideLines_.clear();
    guideGroup_.Empty();
}

void VCBezierCurveModel::ShowGuides() {
    guideGroup_.Empty();
    AddUnlitGreen(guideGroup_);
    for (const auto& line : guideLines_)
        guideGroup_.AddObject(*line);
    for (const auto& marker : guideMarkers_)
        guideGroup_.AddObject(*marker);
}

// ---- ends --------------------------------------------------------------------------

bool VCBezierCurveModel::GetEnd(bool atEnd, KVector3D& out) const {
    const DBezierCurveObject* piece = GetPiece(atEnd ? GetPieceCount() - 1 : 0);
    if (!piece) return false;
    out = piece->GetPosition(atEnd ? piece->pointCount - 1 : 0);
    return true;
}

bool VCBezierCurveModel::GetStartExtension(KVector3D points[3]) const {
    const DBezierCurveObject* first = GetPiece(0);
    if (!first) return false;
    points[0] = first->GetPosition(0);
    points[1] = first->GetPosition(1);
    points[2] = points[0] * 2.0f - points[1];
    points[2].w = 1.0f;
    return true;
}

bool VCBezierCurveModel::GetEndExtension(KVector3D points[3]) const {
    const DBezierCurveObject* last = GetPiece(GetPieceCount() - 1);
    if (!last) return false;
    points[0] = last->GetPosition(last->pointCount - 1);
    points[1] = last->GetPosition(last->pointCount - 2);
    points[2] = points[0] * 2.0f - points[1];
    points[2].w = 1.0f;
    return true;
}
