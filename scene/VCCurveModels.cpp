#include "scene/VCBezierCurveModel.h"
#include "scene/VCNURBSCurveModel.h"

VCNURBSCurveModel::VCNURBSCurveModel(std::uint32_t id, const DDisplayGroup& group)
    : VZarbesoModel(id, group),
      group_(group.GetObject() ? Q3Shared_GetReference(group.GetObject()) : nullptr) {}

void VCNURBSCurveModel::SetCurve(std::unique_ptr<VCNurbsCurve> curve) {
    curve_.SetCurve(std::move(curve), group_);
}

VCBezierCurveModel::VCBezierCurveModel(std::uint32_t id, const DDisplayGroup& group)
    : VZarbesoModel(id, group),
      group_(group.GetObject() ? Q3Shared_GetReference(group.GetObject()) : nullptr) {}

void VCBezierCurveModel::SetCurve(std::unique_ptr<VCNurbsCurve> curve) {
    if (curve) closed = std::uint8_t(curve->closed != 0);
    curve_.SetCurve(std::move(curve), group_);
}

void VCBezierCurveModel::JoinEnds() {
    VCNurbsCurve* curve = GetCurve();
    if (!curve || curve->GetControlPointCount() < 2) return;
    KVector3D first;
    curve->GetControlPoint(0, first);
    curve->SetControlPoint(curve->GetControlPointCount() - 1, first);
    curve->closed = 1;
    closed = 1;
}
