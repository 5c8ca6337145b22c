// A manipulator that works in the 3D view: at each press it reads the
// view's matrices once, so that a whole gesture maps the window to the
// scene the same way, and it offers the conversions the tools build on.
#pragma once

#include "scene/K3DViewMatrix.h"
#include "scene/KTool.h"

class K3DView;

class K3DManipulator : public KManipulator {
  public:
    // Reads the view's matrices and makes it the current 3D view.
    void Prepare(WView* view) override;

    // The scene point under a window point at the present depth.
    void ScreenToWorld(std::int32_t point, KVector3D& out) const;
    // The same in front of the camera transforms, where they act.
    void ScreenToCameraWorld(std::int32_t point, KVector3D& out) const;
    void IntersectSphere(std::int32_t point, const KVector3D& centre, float radius,
                         KVector3D& front, KVector3D& back) const;
    bool ClosestPointOnLine(std::int32_t point, const KVector3D& linePoint,
                            const KVector3D& lineDirection, KVector3D& out) const;
    float DistanceToLine(std::int32_t point, const KVector3D& linePoint,
                         const KVector3D& lineDirection) const;
    // Scene to view and back.
    KVector3D ToView(const KVector3D& point) const;
    KVector3D FromView(const KVector3D& point) const;
    float LengthToView(float length) const;
    // The depth of a point as the library reports it (a hit point).
    void SetDepthFromPoint(const KVector3D& point);
    // The depth of the camera's point of interest.
    void SetDepthFromCamera();
    // The rotation that takes direction a to direction b: false when they
    // are parallel or not numbers. `matrix` may be null.
    static bool RotationBetween(const KVector3D& a, const KVector3D& b, KVector3D& axis,
                                float& angle, TQ3Matrix4x4* matrix);

    K3DViewMatrix* viewMatrix = nullptr;
    // A view-space z: negative in front of the camera.
    float depth = -10.0f;
    // The view of the last press.
    K3DView* view3D = nullptr;
};
