// Transform wrappers: matrix, rotations, translation, scale and quaternion.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DObject.h"

class DViewerObject;

// Angles about x, y and z (radians) whose rotations, about x first, then y,
// then z, make the rotation part of `m`. Near a y of +-90 degrees, where x
// and z turn about the same axis, z is taken as 0 when `allowPoleCase`;
// without it the general formula runs and what is not a number becomes 0.
KVector3D RotationFromMatrix(const TQ3Matrix4x4& m, bool allowPoleCase);
// The rotation about x, then y, then z, in the library's row-vector form;
// an angle of exactly 0 adds no factor.
TQ3Matrix4x4 MatrixFromRotation(float x, float y, float z);

class DTransformObject : public DShapeObject {
  public:
    ~DTransformObject() override;
    TQ3Object GetObject() const override { return object; }
    void Submit(const DViewerObject& viewer) const;
    void SubmitTo(TQ3ViewObject view) const;
    void GetMatrix(TQ3Matrix4x4& out) const;
    TQ3Matrix4x4 Matrix() const {
        TQ3Matrix4x4 m;
        GetMatrix(m);
        return m;
    }

    TQ3TransformObject object = nullptr;

  protected:
    DTransformObject() = default;
};

class DMatrixTransform : public DTransformObject {
  public:
    DMatrixTransform();
    void SetRotation(float x, float y, float z);
    void SetRotation(const KVector3D& angles) { SetRotation(angles.x, angles.y, angles.z); }
    // Stores the matrix, hands it to the library and derives the angles.
    void SetMatrix(const TQ3Matrix4x4& m);
    void GetRotation(float& x, float& y, float& z) const;

    TQ3Matrix4x4 matrix;
    KVector3D rotation;
};

// A rotation about an axis through a point (by axis letter) or about an
// axis vector through the origin.
class DRotateAboutTransform : public DTransformObject {
  public:
    DRotateAboutTransform(char axis, float angle);
    DRotateAboutTransform(const KVector3D& axis, float angle);
    void SetOrigin(float x, float y, float z);
    void SetAngle(float angle);
    float GetAngle() const;

  private:
    bool AboutPoint() const;
};

class DTranslateTransform : public DTransformObject {
  public:
    DTranslateTransform(float x = 0, float y = 0, float z = 0);
    void Set(const KVector3D& v) { Set(v.x, v.y, v.z); }
    void Set(float x, float y, float z);
    // Each of the outputs may be null.
    void Get(float* x, float* y, float* z) const;
    void Get(KVector3D& v) const;
    void Add(const KVector3D& v);
};

class DScaleTransform : public DTransformObject {
  public:
    DScaleTransform(float x = 1, float y = 1, float z = 1);
    // Multiplies component by component.
    void MultiplyBy(const KVector3D& v);
    void Get(KVector3D& v) const;
    void Set(const KVector3D& v);
};

class DQuaternionTransform : public DTransformObject {
  public:
    // A rotation about axis 0, 1 or 2 (3 acts as 2).
    DQuaternionTransform(int axis, float angle);
    // The rotation about `axis` follows what is stored.
    void RotateAbout(const KVector3D& axis, float angle);
    void SetRotation(float x, float y, float z);
    void SetRotation(const KVector3D& angles) { SetRotation(angles.x, angles.y, angles.z); }
    void GetRotation(float& x, float& y, float& z) const;
    void GetRotation(KVector3D& angles) const;
};

class DRotateTransform : public DTransformObject {
  public:
    // Axis 0, 1 or 2; 3 acts as 2.
    DRotateTransform(int axis, float angle);
    // "x", "y", "z" in either case; "w" or "W" acts as z.
    DRotateTransform(char axis, float angle);
};
