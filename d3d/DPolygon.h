// Polygons: the simple convex polygon and the general polygon of several
// contours, whose inner contours are holes.
#pragma once

#include "d3d/DGeometryObject.h"

#include <vector>

// Thrown when a polygon filled vertex by vertex already holds more than 260.
inline constexpr std::int32_t kFailTooManyVertices = 10;

class DPolygon : public DGeometryObject {
  public:
    static constexpr int kCapacity = 262;

    DPolygon();
    // A polygon of `count` points; `normals`, if given, go on the vertices.
    DPolygon(int count, const TQ3Point3D* points, const TQ3Vector3D* normals);

    // Stores one more vertex; throws 10 when more than 260 are there.
    void AddVertex(const TQ3Point3D& point);
    // Makes the library object from the stored vertices.
    virtual void Finish();

  protected:
    int count = 0;
    TQ3Vertex3D vertices[kCapacity];
};

class DGenPolygon : public DPolygon {
  public:
    // Filled with AddVertex and Finish: one contour.
    DGenPolygon();
    // One contour of `count` points, normals may be null.
    DGenPolygon(int count, const TQ3Point3D* points, const TQ3Vector3D* normals);
    // Several contours, copied in; `normals` or any of its arrays may be null.
    DGenPolygon(int contourCount, const int* counts, const TQ3Point3D* const* points,
                const TQ3Vector3D* const* normals);
    // Several contours of the caller's own library vertices. Below an
    // opacity of 1 the polygon and each vertex get the transparency colour
    // (opacity, opacity, opacity).
    DGenPolygon(int contourCount, const int* counts, const TQ3Vertex3D* const* vertexArrays,
                float opacity);

    void Finish() override;
};

// Sets that carry the transparency colour of `opacity` for one geometry:
// the geometry's own and one per vertex, each the vertex's own attributes
// plus the transparency. Holds the references until the geometry is made.
class DTransparencySets {
  public:
    explicit DTransparencySets(float opacity);
    bool Active() const { return active; }
    TQ3AttributeSet GeometrySet() const { return geometrySet.get(); }
    // A set for a vertex whose own set is `own` (may be null); while the
    // opacity is 1 or more, `own` itself.
    TQ3AttributeSet ForVertex(TQ3AttributeSet own);

  private:
    bool active;
    TQ3ColorRGB color;
    DReference geometrySet;
    std::vector<DReference> vertexSets;
};
