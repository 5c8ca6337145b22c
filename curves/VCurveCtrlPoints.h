// The control points of a curve, in homogeneous form (w x, w y, w z, w).
#pragma once

#include "curves/KVector3D.h"
#include "curves/VCurveStatus.h"

#include <cstdint>
#include <memory>

class VCurveCtrlPoints {
  public:
    VCurveCtrlPoints() = default;
    // Zero-filled points; status 6 for a count below 1, 1 without memory.
    VCurveCtrlPoints(VCurveStatus& status, std::int32_t count);
    virtual ~VCurveCtrlPoints() = default;

    VCurveCtrlPoints(const VCurveCtrlPoints&) = delete;
    VCurveCtrlPoints& operator=(const VCurveCtrlPoints&) = delete;

    std::unique_ptr<VCurveCtrlPoints> Clone(VCurveStatus& status) const;

    VCurveStatus SetPoint(std::int32_t index, const KVector3D& point);
    VCurveStatus GetPoint(std::int32_t index, KVector3D& point) const;
    // Euclidean form (x, y, z, 1) of points first..last into out.
    VCurveStatus GetEuclidean(std::int32_t first, std::int32_t last, KVector3D* out) const;
    // Moves every point by delta in Euclidean space, keeping its weight.
    VCurveStatus Translate(const KVector3D& delta);
    // Smallest and largest weight, smallest and largest Euclidean norm.
    VCurveStatus GetBounds(double& minWeight, double& maxWeight, double& minNorm,
                           double& maxNorm) const;
    void UpdateRational();
    void UpdateDimension();

    std::int32_t count = 0;
    std::int32_t dimension = 3;
    std::uint8_t rational = 1;
    std::unique_ptr<KVector3D[]> points;
};

// Euclidean point (x, y, z, 1) of a homogeneous point; a zero weight gives
// the homogeneous coordinates as they stand.
KVector3D ToEuclidean(const KVector3D& h);
