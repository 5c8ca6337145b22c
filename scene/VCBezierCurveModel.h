// A custom path as a chain of Bezier pieces: the form of everything drawn and
// converted. The model owns its curve and the path that carries the text;
// it shows the curve in its group.
#pragma once

#include "scene/VCModel.h"
#include "scene/VCurveModelPath.h"

class VCBezierCurveModel : public VZarbesoModel {
  public:
    VCBezierCurveModel(std::uint32_t id, const DDisplayGroup& group);
    // Hands the curve to the model, which draws it.
    void SetCurve(std::unique_ptr<VCNurbsCurve> curve);
    // Makes the curve's ends meet, for a closed path.
    void JoinEnds();
    VCNurbsCurve* GetCurve() const { return curve_.GetCurve(); }
    bool BuildPath() override { return curve_.BuildPath(); }
    VCurve* GetPath() override { return curve_.GetPath(); }

    std::uint8_t closed = 0;
    // The pick id of the nearest hit of the last pick that took this model,
    // which tells the drag tools the part that lay in front of the curve;
    // they read and clear it.
    std::uint32_t lastPart = 0;

  private:
    DDisplayGroup group_;
    VCurveModelPath curve_;
};
