// The conversions between window pixels and the scene that the tools use,
// from the matrices of the moment the mouse was pressed.
#pragma once

#include "d3d/DGetViewMatrixLoop.h"

#include <memory>

class K3DViewMatrix : public DGetViewMatrixLoop {
  public:
    // Where the adorners themselves act: the view point brought to the
    // world of the camera.
    void ScreenToCameraWorld(std::int32_t point, KVector3D& result, float depth) const;
    // The ray through a window point, in scene coordinates.
    void GetPickRay(std::int32_t point, KVector3D& origin, KVector3D& direction) const;
    // The point of a line nearest to the pick ray; false when the two are
    // parallel.
    bool ClosestPointOnLine(std::int32_t point, const KVector3D& linePoint,
                            const KVector3D& lineDirection, KVector3D& result) const;
    float DistanceToLine(std::int32_t point, const KVector3D& linePoint,
                         const KVector3D& lineDirection) const;
    // The view depth of a scene point.
    float GetDepth(const KVector3D& point) const;
    // Where the pick ray meets a sphere, front and back; a ray that misses
    // is bent onto the rim, so that front equals back there.
    void IntersectSphere(std::int32_t point, const KVector3D& centre, float radius,
                         KVector3D& front, KVector3D& back) const;
};

// The same inside the adorners: scene points are brought through the view's
// adorner matrix, so that they are where the objects are.
class VCViewMatrix : public K3DViewMatrix {
  public:
    // Where the adorner matrix comes from once the matrices are read.
    using AdornerSource = void (*)(void* context, TQ3Matrix4x4& out);
    void SetAdornerSource(AdornerSource source, void* context);

    void MatricesReady() override;
    void ViewToWorld(const KVector3D& point, KVector3D& result) const override;
    void WorldToView(const KVector3D& point, KVector3D& result) const override;
    float LengthToView(float length) const override;

    TQ3Matrix4x4 adorner;
    TQ3Matrix4x4 adornerInverse;

  private:
    AdornerSource source_ = nullptr;
    void* context_ = nullptr;
};

// Row vector times matrix, with the division by w.
KVector3D TransformPoint(const KVector3D& p, const TQ3Matrix4x4& m);
TQ3Matrix4x4 MultiplyMatrices(const TQ3Matrix4x4& a, const TQ3Matrix4x4& b);
