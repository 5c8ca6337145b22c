// Markers: small bitmaps drawn at the window position of a point in the
// scene, whatever the distance. The curve models show their control points,
// anchors and handles with them.
#pragma once

#include "d3d/DGeometryObject.h"

#include <array>
#include <cstdint>

class DMarkerObject : public DGeometryObject {
  public:
    // Eight rows of eight pixels, the leftmost pixel in the high bit.
    using Pattern = std::array<std::uint8_t, 8>;

    // A marker of `rows` in the colour (red, green, blue) at `location`,
    // drawn with its fourth pixel on the point.
    DMarkerObject(const TQ3Point3D& location, const Pattern& rows, float red, float green,
                  float blue);
    void SetPosition(const TQ3Point3D& location);
    TQ3Point3D GetPosition() const;
};

// A control point of a NURBS curve.
class DNURBSCtrlPointMarker : public DMarkerObject {
  public:
    explicit DNURBSCtrlPointMarker(const TQ3Point3D& location);
};

// A handle shown while a path is being drawn.
class DBezierHandleMarker : public DMarkerObject {
  public:
    explicit DBezierHandleMarker(const TQ3Point3D& location);
};

// An anchor of a Bezier path that is not selected.
class DBezierUnSelMarker : public DMarkerObject {
  public:
    explicit DBezierUnSelMarker(const TQ3Point3D& location);
};

// The selected anchor of a Bezier path.
class DBezierSelMarker : public DMarkerObject {
  public:
    explicit DBezierSelMarker(const TQ3Point3D& location);
};

// A handle of a Bezier path.
class DBezierCtHndMarker : public DMarkerObject {
  public:
    explicit DBezierCtHndMarker(const TQ3Point3D& location);
};
