// A single Bezier segment as a NURBS curve, with handles that tie its end
// control points to those of its neighbours in a chain.
#pragma once

#include "curves/VCNurbsCurve.h"

#include <cstdint>
#include <memory>

// One end of a segment: the anchor (end point), its handle (the next point
// inwards) and the twin anchor and handle of the neighbouring segment.
class VBezierHandle {
  public:
    virtual ~VBezierHandle() = default;

    // Status 8 without an anchor or a handle, or with only one of the two
    // neighbour pointers.
    VCurveStatus Set(KVector3D* anchor, KVector3D* handle, KVector3D* neighbourAnchor,
                     VCNurbsCurve* curve, KVector3D* neighbourHandle);
    // Moves the anchor to point (Euclidean) and carries both handles along.
    VCurveStatus MoveAnchor(const KVector3D& point);

    VCNurbsCurve* curve = nullptr;
    KVector3D* anchor = nullptr;
    KVector3D* handle = nullptr;
    KVector3D* neighbourAnchor = nullptr;
    KVector3D* neighbourHandle = nullptr;
};

class VBezierCurve : public VCNurbsCurve {
  public:
    // Place tags in a chain: first, last; any other value lies between.
    static constexpr std::int32_t kPlaceFirst = 0;
    static constexpr std::int32_t kPlaceLast = 2;

    // Empty, with two handles not yet wired; place tag 3.
    VBezierCurve();
    // degree + 1 zero points on the knots of one segment, no handles; place tag 1.
    VBezierCurve(VCurveStatus& status, std::int32_t degree);
    ~VBezierCurve() override = default;

    // Copies the points and builds the knots of one segment over 0..1.
    // Status 2, 12, 6, 3 or 7 (degree not the point count minus 1).
    VCurveStatus SetPoints(std::int32_t degree, const VCurveCtrlPoints* points,
                           std::int32_t closed);
    // Wires the start handle on the first two points and the end handle on
    // the last two, each to the facing end of its neighbour (may be null).
    VCurveStatus SetHandles(VBezierCurve* startNeighbour, VBezierCurve* endNeighbour);

    std::unique_ptr<VBezierHandle> startHandle;
    std::unique_ptr<VBezierHandle> endHandle;
    std::int32_t placeTag = 3;
};
