// A straight line through a point along a direction; a bounded line is the
// segment from the point to the point plus the direction.
#pragma once

#include "curves/KVector3D.h"
#include "curves/VCurveStatus.h"

#include <cstdint>

class VCLine {
  public:
    VCLine() = default;
    VCLine(const KVector3D& p, const KVector3D& d, bool isBounded = false)
        : point(p), direction(d), bounded(isBounded ? 1 : 0) {}
    virtual ~VCLine() = default;

    // Where this line and line come closest: the midpoint of the two closest
    // points, and the distance along each unit direction. found is false
    // for parallel lines and for a meeting outside a bounded line.
    VCurveStatus Intersect(const VCLine& line, KVector3D& meeting, double& tThis, double& tOther,
                           bool& found) const;

    KVector3D point;
    KVector3D direction;
    std::uint8_t bounded = 0;
};
