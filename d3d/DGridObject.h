// The ground grid: grey lines over one of the three coordinate planes.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DGroupObject.h"

class DGridObject : public DAttributeDisplayGroup {
  public:
    // Over (-100, -100, -100) to (100, 100, 100), 20 divisions, plane 1 (x-z).
    DGridObject();
    DGridObject(const KVector3D& min, const KVector3D& max, float divisions);

    // Stores and rebuilds; the lines then lie at the minimum of the third axis.
    void SetBounds(const KVector3D& min, const KVector3D& max, float divisions);
    // 0: x-y, 1: x-z, 2: y-z. Other values are ignored.
    void SetPlane(int plane);

    int plane = 1;
    KVector3D min{-100, -100, -100};
    KVector3D max{100, 100, 100};
    float divisions = 20.0f;

  private:
    void Build(bool atMinimum);
};
