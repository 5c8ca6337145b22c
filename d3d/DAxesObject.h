// Three arrows along the axes, and the guide lines through a point.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DGroupObject.h"

class DAxesObject : public DDisplayGroup {
  public:
    // Arrows from `origin` of the lengths (a, b, c); with a name the lines
    // and heads are tagged with it.
    DAxesObject(const KVector3D& origin, const KVector3D& lengths, const char* name);
    DAxesObject(const KVector3D& origin, const KVector3D& lengths);
};

// Four long lines through a point: one through the origin and one along
// each axis.
class DGuideLineObject : public DDisplayGroup {
  public:
    explicit DGuideLineObject(const KVector3D& point);
    void MoveTo(const KVector3D& point);

  private:
    void Build(const KVector3D& point);
};
