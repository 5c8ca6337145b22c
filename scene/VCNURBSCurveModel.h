// A custom path shown as one NURBS curve with a marker on each control
// point: the preview of the shape tools, and a stored path that is not made
// of Bezier pieces. The model owns its curve and the path that carries the
// text.
#pragma once

#include "curves/VNurbsCurvePath.h"
#include "d3d/DMarkerObject.h"
#include "d3d/DNURBSCurveObject.h"
#include "scene/VCModel.h"

#include <memory>
#include <vector>

class VCNURBSCurveModel : public VZarbesoModel {
  public:
    // `group` shows the curve.
    VCNURBSCurveModel(std::uint32_t id, const DDisplayGroup& group);
    ~VCNURBSCurveModel() override;

    // Replaces the curve, its drawn form and its markers; the path, if any,
    // goes.
    void SetCurve(std::unique_ptr<VCNurbsCurve> curve);
    VCNurbsCurve* GetCurve() const { return curve_.get(); }
    // The curve's homogeneous points and knots, not copied; false without a
    // curve.
    bool GetCurveArrays(std::int32_t& count, const KVector3D*& points, std::int32_t& knotCount,
                        const double*& knots) const;

    // Moves the control point that the last pick named; on a closed curve
    // the first and last move together.
    void Translate(const KVector3D& delta) override;
    void UpdateAfterMove() override;
    void BeginEdit() override { ShowControls(true); }
    void EndEdit() override { ShowControls(false); }
    // Every pick of the model counts: a control point or the curve.
    bool SelectPart(bool /*toggle*/) override { return true; }

    bool BuildPath() override;
    VCurve* GetPath() override { return path_.get(); }
    void GetSelectedPoint(KVector3D& out) const override;
    void ShowControls(bool on) override;
    bool GetPartPosition(std::uint32_t pickId, KVector3D& out) const override;

    std::uint32_t modelId = 0;

  private:
    // The control point a pick id names, or -1.
    std::int32_t PointOf(std::uint32_t pickId) const;

    DDisplayGroup group_;
    DDisplayGroup markerGroup_;
    std::unique_ptr<VCNurbsCurve> curve_;
    std::unique_ptr<DNURBSCurveObject> curveObject_;
    std::vector<std::unique_ptr<DNURBSCtrlPointMarker>> markers_;
    std::unique_ptr<VNurbsCurvePath> path_;
};
