// Shapes that turn a frame in space and a few sizes into a NURBS curve: an
// elliptic arc, a polygon, a star and a rectangle.
#pragma once

#include "curves/KVector3D.h"
#include "curves/VCNurbsCurve.h"
#include "curves/VCurveStatus.h"

#include <cstdint>
#include <memory>

class VC2DNCurveShape {
  public:
    VC2DNCurveShape() = default;
    virtual ~VC2DNCurveShape() = default;

    VC2DNCurveShape(const VC2DNCurveShape&) = delete;
    VC2DNCurveShape& operator=(const VC2DNCurveShape&) = delete;

    // Makes the curve into `curve`; fails only on memory.
    virtual VCurveStatus Build() = 0;
    // Splits the built curve into cubic Bezier pieces (status 11 here).
    virtual VCurveStatus MakeBezierPieces() { return kCurveNoSuchOperation; }

    // Status 19 for a zero axis or two parallel axes; then nothing changes.
    VCurveStatus SetFrame(const KVector3D& center, const KVector3D& uAxis, const KVector3D& vAxis);
    VCurveStatus SetUAxis(const KVector3D& axis);
    VCurveStatus SetVAxis(const KVector3D& axis);
    // A built curve moves along with its centre.
    VCurveStatus SetCenter(const KVector3D& center);

    // Builds if needed and hands the curve over; a second call builds anew.
    std::unique_ptr<VCNurbsCurve> TakeCurve();
    // Hands over the result of MakeBezierPieces.
    VCurveStatus TakePieces(std::int32_t& count, std::int32_t& size,
                            std::unique_ptr<KVector3D[]>& block);

    KVector3D center{0, 0, 0, 1};
    KVector3D uAxis{1, 0, 0, 0};
    KVector3D vAxis{0, 1, 0, 0};
    std::unique_ptr<VCNurbsCurve> curve;
    std::int32_t pieceCount = 0;
    std::int32_t pieceSize = 0;
    std::unique_ptr<KVector3D[]> pieces;

  protected:
    // Stores value and drops the cached curve when it changes by more than 1e-12.
    void Change(double& field, double value);
    void Change(std::int32_t& field, std::int32_t value);
    // center + x uAxis + y vAxis, in homogeneous form with weight w.
    KVector3D InPlane(double x, double y, double w = 1.0) const;
};

// Status 19 unless the two vectors are non-zero and not parallel.
VCurveStatus CheckAxes(const KVector3D& first, const KVector3D& second);
