// A geometry broken down into triangles, segments and points in its own
// coordinates, with the attributes of its vertices and faces resolved.
#pragma once

#include "platform/qd3d/Q3Internal.h"

namespace q3 {

class SetObject;

// Which attributes a vertex carries itself (else the geometry's hold).
enum : TQ3Uns32 {
    kHasNormal = 1 << 0,
    kHasUV = 1 << 1,
    kHasDiffuse = 1 << 2,
    kHasTransparency = 1 << 3,
    kHasSpecular = 1 << 4,
    kHasSpecularControl = 1 << 5,
    kHasAmbient = 1 << 6,
    kFilledNormal = 1 << 7 // normal is the face's, computed here
};

struct LocalVertex {
    TQ3Point3D point{};
    TQ3Vector3D normal{};
    TQ3Param2D uv{};
    TQ3ColorRGB diffuse{};
    TQ3ColorRGB transparency{};
    TQ3ColorRGB specular{};
    float specularControl = 0;
    float ambient = 0;
    TQ3Uns32 has = 0;
};

// Reads the attributes of set into v, over what v holds. A null set adds
// nothing.
void applyAttributes(const SetObject* set, LocalVertex& v);

struct Mesh {
    std::vector<LocalVertex> vertices;
    std::vector<TQ3Uns32> triangles; // three vertex indices each
    std::vector<TQ3Uns8> edgeFlags;  // one per triangle
    std::vector<TQ3Uns32> segments;  // two vertex indices each
    std::vector<TQ3Uns32> points;    // one vertex index each

    void clear();
    TQ3Uns32 addVertex(const LocalVertex& v);
    void addSegment(TQ3Uns32 a, TQ3Uns32 b);
    TQ3BoundingBox bounds() const;
};

// Builds triangles from source vertices (a point and an optional set each).
// A corner shares its source vertex when neither the vertex lacks a normal
// nor the face has attributes of its own; otherwise the corner gets a copy
// with the face's attributes under the vertex's and, if it has none, the
// face normal.
class MeshBuilder {
  public:
    explicit MeshBuilder(Mesh& mesh) : mesh(mesh) {}
    // Registers a source vertex; answers its index for addTriangle.
    TQ3Uns32 source(const TQ3Point3D& p, const SetObject* set);
    TQ3Uns32 source(const LocalVertex& v);
    const LocalVertex* sourceAt(TQ3Uns32 i) const {
        return i < sources.size() ? &sources[i] : nullptr;
    }
    TQ3Uns32 sourceCount() const { return static_cast<TQ3Uns32>(sources.size()); }
    // Adds a triangle over source vertices; degenerate triangles are skipped.
    void addTriangle(TQ3Uns32 a, TQ3Uns32 b, TQ3Uns32 c, const SetObject* faceSet,
                     TQ3Uns8 edgeFlags);
    // A segment between source vertices, and a point.
    void addSegment(TQ3Uns32 a, TQ3Uns32 b, const SetObject* segmentSet);
    void addPoint(TQ3Uns32 a);

  private:
    TQ3Uns32 corner(TQ3Uns32 src, const LocalVertex* face, const TQ3Vector3D& normal);
    Mesh& mesh;
    std::vector<LocalVertex> sources;
    std::vector<TQ3Int32> shared; // mesh index of each source, -1 when not yet made
};

} // namespace q3
