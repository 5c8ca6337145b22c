// A model of the scene: geometry in a display group behind a fixed chain of
// transforms, so that tools can move, turn and scale it about its centre.
#pragma once

#include "d3d/DGroupObject.h"
#include "d3d/DStyleObject.h"
#include "d3d/DTransformObject.h"
#include "scene/VC3DObject.h"

// The group holds, in order: the pick id style, from-centre, position,
// rotation, scale, to-centre, the geometry. The library applies what comes
// last first, so a point p is seen at
// p x toCentre x scale x rotation x position x fromCentre.
class VCModel : public VC3DObject, public DDisplayGroup {
  public:
    // Over a geometry or a group (the model adds its own reference).
    VCModel(std::uint32_t id, const DObject& geometry);
    VCModel(std::uint32_t id, TQ3Object geometry);

    void Translate(const KVector3D& delta) override;
    void GetRotationMatrix(TQ3Matrix4x4& out) const override;
    void GetScaleMatrix(TQ3Matrix4x4& out) const override;
    void GetLocalToWorld(TQ3Matrix4x4& out, int mode) const override;
    void GetBoundingBox(TQ3BoundingBox& out) const override { out = box_; }
    void SetScale(const KVector3D& scale) override;
    void SetRotation(const KVector3D& angles) override;
    void MultiplyScale(const KVector3D& factors) override;
    void GetBoundingSphere(TQ3BoundingSphere& out) const override { out = sphere_; }
    void GetCenter(KVector3D& out) const override;
    void RotateAboutAxis(const KVector3D& axis, float angle) override;
    void GetPosition(KVector3D& out) const override;

    void AddToGroup(const DShapeObject& object) override;
    void RemoveFromGroup(const DShapeObject& object) override;
    void CalcBoundingSphere(DExtViewer* view) override;
    void InsertAfterRotation(const DShapeObject& object) override;

    // The box of the group as it stands, in object coordinates.
    virtual void CalcBoundingBox(DExtViewer* view);
    // Moves the centre of rotation and scale to the centre of the bounds.
    virtual void CenterOnBounds(DExtViewer* view);

    std::uint32_t GetPickedId() const { return pickedId_; }
    void SetPickedId(std::uint32_t id) { pickedId_ = id; }

  private:
    void Build(TQ3Object geometry);

    TQ3BoundingBox box_{};
    TQ3BoundingSphere sphere_{};
    DPickIDStyle pickId_;
    DTranslateTransform position_;
    DTranslateTransform toCentre_;
    DTranslateTransform fromCentre_;
    DMatrixTransform rotation_;
    DScaleTransform scale_;
    TQ3GroupPosition rotationPosition_ = nullptr;
    std::uint32_t pickedId_ = 0;
};

class VCurve;

// A model of this application; the text and the paths are such models.
class VZarbesoModel : public VCModel {
  public:
    using VCModel::VCModel;
    // A curve model makes the path that carries the text along its curve;
    // other models have none.
    virtual bool BuildPath() { return false; }
    virtual VCurve* GetPath() { return nullptr; }
    // The selected control point, in object coordinates.
    virtual void GetSelectedPoint(KVector3D& out) const { out = {0, 0, 0, 1}; }
    virtual void ShowControls(bool /*on*/) {}
    // Where the marker that a pick id names stands, in object coordinates;
    // false for an id that names none.
    virtual bool GetPartPosition(std::uint32_t /*pickId*/, KVector3D& /*out*/) const {
        return false;
    }

    std::uint8_t selectable = 1;
    // The pick id of the nearest marker of this model under the pointer at
    // the last pick that took it, which tells the path tools the marker that
    // lay on the curve; they read and clear it.
    std::uint32_t lastPart = 0;
};
