// What a curve model holds of its curve: the curve, the path over it that
// carries the text, and the curve's drawn form in the model's group.
#pragma once

#include "curves/VCNurbsCurve.h"
#include "curves/VNurbsCurvePath.h"

#include <memory>

class DDisplayGroup;

class VCurveModelPath {
  public:
    // Takes the curve and draws it into the group, replacing what was there.
    void SetCurve(std::unique_ptr<VCNurbsCurve> curve, DDisplayGroup& group);
    // A new path over the curve, measured; false without a curve.
    bool BuildPath();
    VNurbsCurvePath* GetPath() const { return path_.get(); }
    VCNurbsCurve* GetCurve() const { return curve_.get(); }

  private:
    std::unique_ptr<VCNurbsCurve> curve_;
    std::unique_ptr<VNurbsCurvePath> path_;
};
