// Rotation-minimising frames by parallel transport: 100 frames at equal
// arc-length steps, so that a custom path's letters do not twist.
#pragma once

#include "curves/KVector3D.h"

#include <cstdint>
#include <memory>

class VCurve;

struct VCurveFrame {
    KVector3D tangent;
    KVector3D normal;
};

class VCurveFrameTable {
  public:
    static constexpr std::int32_t kFrameCount = 100;

    // Allocates the frames; frames stays null when memory runs out.
    explicit VCurveFrameTable(VCurve* owner);

    // Seeds entry 0 with the given frame and fills the rest along the curve.
    void Build(const KVector3D& startTangent, const KVector3D& startNormal);
    // After a change of shape: carries the old start normal onto the new
    // start tangent and rebuilds from there.
    void Renew();
    // Frame at arc length s (0 <= s <= length of the curve).
    void Interpolate(float s, KVector3D& tangent, KVector3D& normal, KVector3D& binormal) const;

    // Moves from.normal along the rotation that takes from.tangent onto
    // to.tangent, into to.normal.
    static void Transport(const VCurveFrame& from, VCurveFrame& to);

    VCurve* curve = nullptr;
    std::int32_t count = kFrameCount;
    std::unique_ptr<VCurveFrame[]> frames;
};

// Rotation of v by the rotation that takes unit vector a onto unit vector b.
KVector3D RotateVectorToVector(const KVector3D& a, const KVector3D& b, const KVector3D& v);
// A unit normal to tangent built from n: n with its tangent part removed, or
// a perpendicular chosen by a reference axis when n gives none.
KVector3D OrthogonalNormal(const KVector3D& tangent, const KVector3D& n);
