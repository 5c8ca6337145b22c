// A grid of triangles over rows of vertices: the sides of extruded letters.
#pragma once

#include "d3d/DGeometryObject.h"

class DTriGrid : public DGeometryObject {
  public:
    // Points in rows of up to kRowStride: row r starts at points[r * kRowStride].
    static constexpr int kRowStride = 500;

    // Vertices copied in from `points` and `normals` (may be null), both laid
    // out in rows of kRowStride.
    DTriGrid(int columns, int rows, const TQ3Point3D* points, const TQ3Vector3D* normals);
    // The caller's library vertices, rows * columns of them. Below an opacity
    // of 1 the grid, each vertex and each facet get the transparency colour.
    DTriGrid(int columns, int rows, const TQ3Vertex3D* vertices, float opacity);
};
