// A pass that reads the view's matrices, which the library hands out only
// while a pass is open, and the conversions between window, view and world
// that they give.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DSubmitLoop.h"

#include <cstdint>

// A window point in one 32-bit value: x in the high 16 bits, y in the low.
constexpr std::int32_t MakeScreenPoint(std::int16_t x, std::int16_t y) {
    return static_cast<std::int32_t>(
        (static_cast<std::uint32_t>(static_cast<std::uint16_t>(x)) << 16) |
        static_cast<std::uint16_t>(y));
}

class DGetViewMatrixLoop : public DSubmitLoop {
  public:
    DGetViewMatrixLoop();
    // Runs a rendering pass over `viewer` and keeps its matrices.
    void Compute(DExtViewer* viewer);

    // The view-space point under a window point at view depth `depth` (the
    // view z, negative in front of the camera).
    virtual void ScreenToView(std::int32_t point, KVector3D& result, float depth) const;
    virtual void GetWorldToView(TQ3Matrix4x4& out) const { out = worldToView; }
    virtual void ViewToWorld(const KVector3D& point, KVector3D& result) const;
    // Called once the matrices of a traversal are read.
    virtual void MatricesReady() {}
    virtual void WorldToView(const KVector3D& point, KVector3D& result) const;
    // A world length as a view length.
    virtual float LengthToView(float length) const;

    // The same with a window point of fractions of a pixel.
    void ScreenToView(const TQ3Point2D& point, KVector3D& result, float depth) const;
    void ScreenToWorld(std::int32_t point, KVector3D& result, float depth) const;

    void SubmitObjects() override;

    TQ3Matrix4x4 frustumToWindow;
    TQ3Matrix4x4 worldToView;
    TQ3Matrix4x4 viewToFrustum;
    TQ3Matrix4x4 windowToFrustum;
    TQ3Matrix4x4 viewToWorld;
};
