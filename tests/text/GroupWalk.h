// Reads back what the letters put into the 3D library: a walk of a group
// that gathers its geometry in the group's coordinates (its transforms
// applied as the library applies them), its styles and its attributes.
#pragma once

#include "tests/qd3d/Q3LibraryTest.h"

#include <cstdint>
#include <vector>

namespace textgeom {

struct WalkedVertex {
    TQ3Point3D point{};
    bool hasUV = false;
    bool hasNormal = false;
    TQ3Vector3D normal{}; // as stored
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
    bool coloured = false; // a diffuse colour from a set before it
    TQ3ColorRGB colour{};
};

struct Walked {
    std::vector<WalkedPolygon> polygons;
    std::vector<WalkedGrid> grids;
    std::vector<std::vector<TQ3Point3D>> lines;
    std::vector<TQ3BackfacingStyle> backfacing;
    std::vector<TQ3FillStyle> fills;
};

// Walks group and every group inside it.
Walked Walk(TQ3GroupObject group);
// The product of the transforms in a group, in the library's row-vector
// form: a point p of the contents lands at p * matrix.
TQ3Matrix4x4 HeadMatrix(TQ3GroupObject group);
using q3test::Members;

TQ3Point3D Apply(const TQ3Matrix4x4& m, const TQ3Point3D& p);
TQ3Vector3D ApplyVector(const TQ3Matrix4x4& m, const TQ3Vector3D& v);

// Signed volume enclosed by faces and bands (grid cells split into
// triangles by the grid's documented rule), positive when they face out.
double SignedVolume(const Walked& walked);
// Directed edges of polygon contours and grid triangles with no partner
// running the other way: 0 for a closed, consistently turned surface.
std::uint32_t UnpairedEdges(const Walked& walked);

} // namespace textgeom
