// A regular polygon and a star as closed polylines of degree 1. The start
// angle is in radians.
#pragma once

#include "curves/VC2DNCurveShape.h"

class VCNgon : public VC2DNCurveShape {
  public:
    // The most sides a polygon may have.
    static constexpr std::int32_t kMaxSides = 1 << 20;

    VCurveStatus Build() override;

    // Status 18 below 3 sides (6 above kMaxSides).
    VCurveStatus SetSides(std::int32_t n);
    // Status 17 for a radius at or below 0.0001.
    VCurveStatus SetRadii(double u, double v);
    VCurveStatus SetRadius(double r) { return SetRadii(r, r); }
    VCurveStatus SetAll(std::int32_t n, double u, double v);
    VCurveStatus SetStartAngle(double radians);

    std::int32_t sides = 4;
    double uRadius = 1.0;
    double vRadius = 1.0;
    double startAngle = 0.0;

  protected:
    // Vertex at angle on the ellipse of the given radii.
    KVector3D Vertex(double angle, double u, double v) const;
    VCurveStatus MakePolyline(std::int32_t count, const KVector3D* points);
};

// A star: the polygon's vertices alternate with vertices on the inner radii,
// half a side further round.
class VCStar : public VCNgon {
  public:
    VCurveStatus Build() override;
    VCurveStatus SetInnerRadii(double u, double v);
    VCurveStatus SetAll(std::int32_t points, double u, double v, double innerU, double innerV);

    double uInnerRadius = 0.5;
    double vInnerRadius = 0.5;
};
