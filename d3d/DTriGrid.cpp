#include "d3d/DTriGrid.h"

#include "d3d/DPolygon.h"

#include <vector>

namespace {

void CheckGrid(int columns, int rows, const void* data) {
    if (columns < 2 || rows < 2 || !data) CheckObject(nullptr);
    CheckVertexCount(static_cast<long>(columns) * rows);
}

} // namespace

DTriGrid::DTriGrid(int columns, int rows, const TQ3Point3D* points, const TQ3Vector3D* normals) {
    CheckGrid(columns, rows, points);
    if (columns > kRowStride) CheckObject(nullptr);
    std::vector<DReference> sets;
    std::vector<TQ3Vertex3D> vertices;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c) {
            const int at = r * kRowStride + c;
            TQ3AttributeSet set = nullptr;
            if (normals) {
                sets.push_back(MakeNormalSet(normals[at]));
                set = sets.back().get();
            }
            vertices.push_back({points[at], set});
        }
    TQ3TriGridData data{static_cast<TQ3Uns32>(rows), static_cast<TQ3Uns32>(columns),
                        vertices.data(), nullptr, nullptr};
    object = Q3TriGrid_New(&data);
    CheckObject(object);
}

DTriGrid::DTriGrid(int columns, int rows, const TQ3Vertex3D* source, float opacity) {
    CheckGrid(columns, rows, source);
    DTransparencySets transparency(opacity);
    std::vector<TQ3Vertex3D> vertices(source, source + columns * rows);
    for (TQ3Vertex3D& v : vertices)
        v.attributeSet = transparency.ForVertex(v.attributeSet);
    // Two facets per cell: columns * rows - 2 of them for the two-row grids
    // of letter sides.
    std::vector<TQ3AttributeSet> facets;
    if (transparency.Active())
        facets.assign(static_cast<size_t>(2 * (rows - 1) * (columns - 1)),
                      transparency.GeometrySet());
    TQ3TriGridData data{static_cast<TQ3Uns32>(rows), static_cast<TQ3Uns32>(columns),
                        vertices.data(), facets.empty() ? nullptr : facets.data(),
                        transparency.GeometrySet()};
    object = Q3TriGrid_New(&data);
    CheckObject(object);
}
