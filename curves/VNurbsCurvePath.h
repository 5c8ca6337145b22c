// A path that follows a drawn NURBS curve. The curve belongs to the scene
// model that shows it; the owner sets it and calls Rebuild().
#pragma once

#include "curves/VCNurbsCurve.h"
#include "curves/VCurve.h"

class VNurbsCurvePath : public VCurve {
  public:
    VNurbsCurvePath() = default;

    bool GetPointAt(float s, KVector3D& point) override;
    float GetLength() const override { return length; }
    bool IsClosed() const override { return curve && curve->closed == 1; }
    void Recalculate() override;
    bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                    KVector3D& binormal) override;
    bool GetTangentAt(float s, KVector3D& tangent) override;

    VCNurbsCurve* curve = nullptr;
};
