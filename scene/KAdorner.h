// Adorners: the transforms the view puts in front of the whole scene. They
// are how the camera seems to move while the library's camera stays put.
#pragma once

#include "curves/KVector3D.h"
#include "foundation/WAttachment.h"
#include "platform/qd3d/QD3D.h"
#include "scene/K3DObject.h"

class DViewerObject;

class KAdorner : public WAttachment {
  public:
    KAdorner();
    // Submits at message 2000 and accumulates at 2001, each time keeping the
    // host from running its own action.
    void RunSelf(std::int32_t message, void* parameter) override;

    virtual void Submit(const DViewerObject& viewer) = 0;
    // M := M x what the adorner holds.
    virtual void Accumulate(TQ3Matrix4x4& m) const = 0;
    virtual void Apply(const void* value) = 0;
    // Takes the value from a matrix: the whole matrix, or its diagonal.
    virtual void Set(const TQ3Matrix4x4& m) = 0;
    virtual void Reset() = 0;
};

// Orbit and pan hold a matrix; Apply multiplies another one in behind it.
class KMatrixAdorner : public KAdorner {
  public:
    void Submit(const DViewerObject& viewer) override;
    void Accumulate(TQ3Matrix4x4& m) const override;
    void Apply(const void* value) override;
    void Set(const TQ3Matrix4x4& m) override { held = m; }
    void Reset() override;
    TQ3Matrix4x4 held = IdentityMatrix();
};

class KOrbitAdorner : public KMatrixAdorner {};
class KPanAdorner : public KMatrixAdorner {};

// Holds a scale; Apply multiplies component by component.
class KScaleAdorner : public KAdorner {
  public:
    void Submit(const DViewerObject& viewer) override;
    void Accumulate(TQ3Matrix4x4& m) const override;
    void Apply(const void* value) override;
    void Set(const TQ3Matrix4x4& m) override;
    void Reset() override { held = {1, 1, 1, 0}; }
    KVector3D held{1, 1, 1, 0};
};

// Holds a translation; Apply adds.
class KTranslateAdorner : public KAdorner {
  public:
    void Submit(const DViewerObject& viewer) override;
    void Accumulate(TQ3Matrix4x4& m) const override;
    void Apply(const void* value) override;
    void Set(const TQ3Matrix4x4& m) override;
    void Reset() override { held = {0, 0, 0, 0}; }
    KVector3D held{0, 0, 0, 0};
};
