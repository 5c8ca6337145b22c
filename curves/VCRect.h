// A rectangle as a closed polyline of degree 1 around the centre.
#pragma once

#include "curves/VC2DNCurveShape.h"

class VCRect : public VC2DNCurveShape {
  public:
    VCurveStatus Build() override;
    // Status 17 for a side at or below 0.0001.
    VCurveStatus SetSize(double width, double height);
    VCurveStatus SetSize(double side) { return SetSize(side, side); }

    double width = 1.0;
    double height = 1.0;
};
