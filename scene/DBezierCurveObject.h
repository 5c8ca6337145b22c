// One piece of a Bezier path: its points as a curve of its own, the curve
// as the scene draws it, a marker on each point and the guide lines from
// each end to its handle.
#pragma once

#include "curves/KVector3D.h"
#include "curves/VCNurbsCurve.h"
#include "d3d/DGeometryObject.h"
#include "d3d/DMarkerObject.h"
#include "d3d/DNURBSCurveObject.h"
#include "foundation/KListEntry.h"

#include <cstdint>
#include <memory>

// How the handles on the two sides of an anchor move together.
enum VJoin : std::int32_t {
    kJoinMirrored = 0, // the far handle is the exact reflection of the near one
    kJoinAligned = 1,  // the far handle keeps its length and stays on the line
    kJoinCorner = 2,   // the handles are free
};

class DBezierCurveObject : public KListEntry {
  public:
    // A piece through `count` homogeneous points, 2 to 4 (4 for a cubic).
    // Throws the library's failures; a piece whose curve cannot be made has
    // no curve (IsValid false).
    DBezierCurveObject(std::int32_t count, const KVector3D* points);
    bool IsValid() const { return curve && geometry && geometry->IsValid(); }

    // Point `place` (0 to pointCount - 1) as stored, homogeneous.
    KVector3D GetPoint(std::int32_t place) const;
    // The same divided by its weight, with w 1.
    KVector3D GetPosition(std::int32_t place) const;
    // Writes one homogeneous point to the curve, the drawn curve, the marker
    // and the guide line it ends.
    void SetPoint(std::int32_t place, const KVector3D& point);
    // Moves point `place` in space by `delta`, keeping its weight.
    void MovePoint(std::int32_t place, const KVector3D& delta);
    // Moves point `place` to the position `to` (w ignored), keeping its weight.
    void PlacePoint(std::int32_t place, const KVector3D& to);
    // All pointCount points.
    void SetPoints(const KVector3D* points);
    // Shows the anchor at `place` (first or last) as selected or not.
    void SetAnchorSelected(std::int32_t place, bool selected);
    bool IsAnchorSelected(std::int32_t place) const;
    DMarkerObject& GetMarker(std::int32_t place) const { return *markers[place]; }

    std::int32_t pointCount = 0;
    std::unique_ptr<std::unique_ptr<DMarkerObject>[]> markers;
    std::unique_ptr<DLineObject> startGuide; // points 0 and 1
    std::unique_ptr<DLineObject> endGuide;   // the last two points
    std::unique_ptr<VCNurbsCurve> curve;     // this piece alone
    std::unique_ptr<DNURBSCurveObject> geometry;
    std::int32_t startJoin = kJoinAligned;
    std::int32_t endJoin = kJoinAligned;

  private:
    std::unique_ptr<bool[]> selected_;
};

// A homogeneous point as a point of the library, divided by its weight.
TQ3Point3D ToLibraryPoint(const KVector3D& homogeneous);
// The position of a homogeneous point, w 1.
KVector3D Euclidean(const KVector3D& homogeneous);
