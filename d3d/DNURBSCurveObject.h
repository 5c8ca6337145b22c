// A NURBS curve shown in the scene: the drawn custom path.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DGeometryObject.h"

#include <vector>

class DNURBSCurveObject : public DGeometryObject {
  public:
    // `points` are homogeneous (x, y, z, w); knots are narrowed to floats.
    // A knot count other than point count + degree + 1, or a degree below 1,
    // leaves the wrapper empty without a library object and raises nothing.
    DNURBSCurveObject(int pointCount, const TQ3RationalPoint4D* points, int knotCount,
                      const double* knots, int degree);

    bool IsValid() const { return object != nullptr; }
    void SetControlPoint(int i, const TQ3RationalPoint4D& point);
    // Moves point i by `delta` in space, keeping its weight.
    void MoveControlPoint(const KVector3D& delta, int i);

    std::uint32_t order = 0;
    std::uint32_t pointCount = 0;
    std::vector<TQ3RationalPoint4D> points;
    std::vector<float> knots;
};
