// A custom path shown as one NURBS curve; a stored path that is not made of
// Bezier pieces reopens in it. The model owns its curve and the path that
// carries the text.
#pragma once

#include "scene/VCModel.h"
#include "scene/VCurveModelPath.h"

class VCNURBSCurveModel : public VZarbesoModel {
  public:
    // Over the group that will show the curve.
    VCNURBSCurveModel(std::uint32_t id, const DDisplayGroup& group);
    // Hands the curve to the model, which draws it.
    void SetCurve(std::unique_ptr<VCNurbsCurve> curve);
    VCNurbsCurve* GetCurve() const { return curve_.GetCurve(); }
    bool BuildPath() override { return curve_.BuildPath(); }
    VCurve* GetPath() override { return curve_.GetPath(); }

  private:
    DDisplayGroup group_;
    VCurveModelPath curve_;
};
