// An elliptic arc as a rational quadratic NURBS curve of up to four
// segments. Angles are degrees.
#pragma once

#include "curves/VC2DNCurveShape.h"

class VCArc : public VC2DNCurveShape {
  public:
    VCurveStatus Build() override;
    // The built arc as cubic Bezier pieces of 4 homogeneous points.
    VCurveStatus MakeBezierPieces() override;

    // Status 16 for a radius at or below -1e-12.
    VCurveStatus SetRadii(double u, double v);
    VCurveStatus SetRadius(double r) { return SetRadii(r, r); }
    VCurveStatus SetStartAngle(double degrees);
    VCurveStatus SetEndAngle(double degrees);
    VCurveStatus SetAll(double u, double v, double start, double end, const KVector3D& center,
                        const KVector3D& uAxis, const KVector3D& vAxis);

    double uRadius = 1.0;
    double vRadius = 1.0;
    double startAngle = 0.0;
    double endAngle = 360.0;
};
