// Reads back what the letters put into the 3D library: a walk of a group
// that gathers its geometry in the group's coordinates (its transforms
// applied as the library applies them), its styles and its attributes.
#pragma once

#include "platform/qd3d/QD3D.h"

#include <cstdint>
#include <vector>

namespace textgeom {

struct WalkedVertex {
    TQ3Point3D point{};
    bool hasUV = false;
    TQ3Param2D uv{};
    bool hasNormal = false;
    TQ3Vector3D normal{}; // as stored, not transformed
    bool transparent = false;
};

struct WalkedPolygon {
    std::vector<std::vector<WalkedVertex>> contours;
    bool transparent = false; // on the polygon's own set
};

struct WalkedGrid {
    std::uint32_t rows = 0, columns = 0;
    std::vector<WalkedVertex> vertices; // row after row
    bool transparent = false;           // on the grid's own set
    std::uint32_t transparentFacets = 0;
    bool coloured = false; // a diffuse colour reached it from a set before it
    TQ3ColorRGB colour{};
};

struct WalkedLine {
    std::vector<TQ3Point3D> points;
};

struct Walked {
    std::vector<WalkedPolygon> polygons;
    std::vector<WalkedGrid> grids;
    std::vector<WalkedLine> lines;
    std::vector<TQ3BackfacingStyle> backfacing;
    std::vector<TQ3FillStyle> fills;
    std::uint32_t transparentSets = 0; // attribute sets in groups
};

// Walks group and every display group inside it.
Walked Walk(TQ3GroupObject group);

// The product of the transforms at the head of a group, in the library's
// row-vector form: a point p of the contents lands at p * matrix.
TQ3Matrix4x4 HeadMatrix(TQ3GroupObject group);

// The members of a group, each a new reference the caller disposes of.
std::vector<TQ3Object> Members(TQ3GroupObject group);

TQ3Point3D Apply(const TQ3Matrix4x4& m, const TQ3Point3D& p);
TQ3Vector3D ApplyVector(const TQ3Matrix4x4& m, const TQ3Vector3D& v);

// The triangles of the walked geometry as the library forms them: polygon
// contours as fans (for sums over the face only) and grid cells by the
// grid's documented rule.
struct Triangle {
    TQ3Point3D a, b, c;
};
std::vector<Triangle> GridTriangles(const WalkedGrid& grid);

// Signed volume enclosed by the faces and bands, positive when they face
// out of the body.
double SignedVolume(const Walked& walked);
// Directed edges of polygon contours and grid triangles that have no
// partner running the other way; 0 for a closed, consistently turned
// surface. Edges of no length are not counted.
std::uint32_t UnpairedEdges(const Walked& walked);

} // namespace textgeom
