#include "scene/VCNURBSCurveModel.h"

#include "d3d/DStyleObject.h"
#include "scene/DBezierCurveObject.h"
#include "scene/PathGeometry.h"

VCNURBSCurveModel::VCNURBSCurveModel(std::uint32_t id, const DDisplayGroup& group)
    : VZarbesoModel(id, group), modelId(id),
      group_(group.GetObject() ? Q3Shared_GetReference(group.GetObject()) : nullptr) {
    AddObject(markerGroup_);
    markerGroup_.SetDrawn(false);
}

VCNURBSCurveModel::~VCNURBSCurveModel() {
    path_.reset();
}

void VCNURBSCurveModel::SetCurve(std::unique_ptr<VCNurbsCurve> curve) {
    path_.reset();
    curveObject_.reset();
    markers_.clear();
    group_.Empty();
    markerGroup_.Empty();
    curve_ = std::move(curve);
    std::int32_t count = 0;
    const KVector3D* points = nullptr;
    if (!curve_ || curve_->GetControlPoints(count, points) != kCurveOK || !curve_->knots) return;
    std::vector<TQ3RationalPoint4D> q(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i)
        q[std::size_t(i)] = {points[i].x, points[i].y, points[i].z, points[i].w};
    curveObject_ = std::make_unique<DNURBSCurveObject>(count, q.data(), curve_->knots->count,
                                                       curve_->knots->values.get(), curve_->degree);
    AddUnlitGreen(group_);
    if (curveObject_->IsValid()) group_.AddObject(*curveObject_);
    AddUnlitGreen(markerGroup_);
    for (std::int32_t i = 0; i < count; ++i) {
        markers_.push_back(std::make_unique<DNURBSCtrlPointMarker>(ToLibraryPoint(points[i])));
        // Pick ids hold the marker number + 1 in their top byte.
        if (i >= 255) continue;
        markerGroup_.AddObject(DPickIDStyle(modelId + (std::uint32_t(i + 1) << 24)));
        markerGroup_.AddObject(*markers_.back());
    }
}

bool VCNURBSCurveModel::GetCurveArrays(std::int32_t& count, const KVector3D*& points,
                                       std::int32_t& knotCount, const double*& knots) const {
    if (!curve_ || curve_->GetControlPoints(count, points) != kCurveOK || !curve_->knots)
        return false;
    knotCount = curve_->knots->count;
    knots = curve_->knots->values.get();
    return true;
}

std::int32_t VCNURBSCurveModel::PointOf(std::uint32_t pickId) const {
    const std::int32_t i = std::int32_t(pickId >> 24) - 1;
    return (pickId & 0xFFFFFFu) == modelId && i >= 0 && i < std::int32_t(markers_.size()) ? i : -1;
}

bool VCNURBSCurveModel::GetPartPosition(std::uint32_t pickId, KVector3D& out) const {
    const std::int32_t i = PointOf(pickId);
    KVector3D p;
    if (i < 0 || curve_->GetControlPoint(i, p) != kCurveOK) return false;
    out = Euclidean(p);
    return true;
}

void VCNURBSCurveModel::Translate(const KVector3D& delta) {
    const std::int32_t i = PointOf(GetPickedId());
    if (i < 0) return;
    // The curve keeps the ends of a closed curve together; the displays
    // follow what it holds.
    curve_->AddToControlPoint(i, delta);
    const std::int32_t last = std::int32_t(markers_.size()) - 1;
    for (std::int32_t j : {i, curve_->closed && (i == 0 || i == last) ? last - i : i}) {
        KVector3D p;
        curve_->GetControlPoint(j, p);
        if (curveObject_) curveObject_->SetControlPoint(j, {p.x, p.y, p.z, p.w});
        markers_[std::size_t(j)]->SetPosition(ToLibraryPoint(p));
    }
}

void VCNURBSCurveModel::UpdateAfterMove() {
    if (path_) path_->Rebuild();
}

bool VCNURBSCurveModel::BuildPath() {
    path_.reset();
    if (!curve_) return false;
    path_ = std::make_unique<VNurbsCurvePath>();
    path_->curve = curve_.get();
    path_->Rebuild();
    return true;
}

void VCNURBSCurveModel::GetSelectedPoint(KVector3D& out) const {
    KVector3D p;
    const std::int32_t i = PointOf(GetPickedId());
    if (i >= 0 && curve_->GetControlPoint(i, p) == kCurveOK)
        out = Euclidean(p);
    else
        VZarbesoModel::GetSelectedPoint(out);
}

void VCNURBSCurveModel::ShowControls(bool on) {
    markerGroup_.SetDrawn(on);
}
