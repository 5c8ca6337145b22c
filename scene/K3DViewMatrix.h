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
    // The view depth of a point as the library reports it, in front of the
    // adorners (a pick's hit point).
    float GetDepth(const KVector3D& point) const;
    // Where the pick ray meets a sphere, front and back; a ray that misses
    // is bent onto the rim, so that front equals back there.
    void IntersectSphere(std::int32_t point, const KVector3D& centre, float radius,
                         KVector3D& front, KVector3D& back) const;
};

// The same inside the adorners: scene points are brought through the
// adorner matrix of the view the matrices were read from, so that they are
// where the objects are.
class VCViewMatrix : public K3DViewMatrix {
  public:
    void MatricesReady() override;
    void ViewToWorld(const KVector3D& point, KVector3D& result) const override;
    void WorldToView(const KVector3D& point, KVector3D& result) const override;
    float LengthToView(float length) const override;

    TQ3Matrix4x4 adorner;
    TQ3Matrix4x4 adornerInverse;
};

// Row vector times matrix, with the division by w.
KVector3D TransformPoint(const KVector3D& p, const TQ3Matrix4x4& m);
// A direction times the matrix: its translation plays no part. w is 0.
KVector3D TransformVector(const KVector3D& v, const TQ3Matrix4x4& m);
// The inverse, or the identity for a matrix that has none.
TQ3Matrix4x4 InvertedMatrix(const TQ3Matrix4x4& m);
TQ3Matrix4x4 MultiplyMatrices(const TQ3Matrix4x4& a, const TQ3Matrix4x4& b);
