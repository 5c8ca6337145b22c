#include "scene/VCurveModelPath.h"

#include "scene/PathGeometry.h"

void VCurveModelPath::SetCurve(std::unique_ptr<VCNurbsCurve> curve, DDisplayGroup& group) {
    path_.reset();
    curve_ = std::move(curve);
    if (curve_) BuildCurveGeometry(*curve_, group);
}

bool VCurveModelPath::BuildPath() {
    if (!curve_) return false;
    path_ = std::make_unique<VNurbsCurvePath>();
    path_->curve = curve_.get();
    path_->Rebuild();
    return true;
}
