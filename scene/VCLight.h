// A light of the scene: a point light that the user places and colours,
// shown by a small sphere of its colour. The icon lives in the scene, behind
// the view's adorners; the library light lives in the view's light group,
// which knows nothing of the adorners, so the light is told its place again
// whenever the adorners change.
#pragma once

#include "d3d/DGroupObject.h"
#include "d3d/DLightObject.h"
#include "d3d/DStyleObject.h"
#include "d3d/DTransformObject.h"
#include "scene/VC3DObject.h"

#include <memory>

// The group holds, in order: the pick id style, position, rotation, scale,
// the icon. Its diffuse colour is the colour of the light.
class VCLight : public VC3DObject, public DColorGroup {
  public:
    // The view matrix is the adorner matrix the light's place is seen
    // through.
    VCLight(std::uint32_t id, const TQ3Matrix4x4& viewMatrix);
    ~VCLight() override;

    // Moves the icon and the library light with it.
    void Translate(const KVector3D& delta) override;
    void GetRotationMatrix(TQ3Matrix4x4& out) const override;
    void GetScaleMatrix(TQ3Matrix4x4& out) const override;
    // Scale, rotation, position; mode 1 leaves the scale out.
    void GetLocalToWorld(TQ3Matrix4x4& out, int mode) const override;
    void GetBoundingBox(TQ3BoundingBox& out) const override { out = box_; }
    void SetScale(const KVector3D& scale) override;
    void GetBoundingSphere(TQ3BoundingSphere& out) const override { out = sphere_; }
    void GetCenter(KVector3D& out) const override;
    void GetPosition(KVector3D& out) const override;
    // A light cannot be turned or scaled by a tool: SetRotation,
    // MultiplyScale and RotateAboutAxis keep their empty defaults.

    void AddToGroup(const DShapeObject& object) override;
    void RemoveFromGroup(const DShapeObject& object) override;
    // The box of the icon without its position, made equal on all axes
    // from its y extent.
    virtual void CalcBoundingBox(DExtViewer* view);
    void CalcBoundingSphere(DExtViewer* view) override;
    void InsertAfterRotation(const DShapeObject& object) override;

    DLightObject& GetLight() const { return *light_; }
    // On the library light and on the icon.
    void SetColor(float red, float green, float blue);
    void GetColor(float& red, float& green, float& blue) const;
    // Stores the adorner matrix and puts the library light where the icon
    // is seen through it.
    void SetViewMatrix(const TQ3Matrix4x4& matrix);
    const TQ3Matrix4x4& GetViewMatrix() const { return viewMatrix_; }

  protected:
    // Puts the icon into the group after the transforms and takes the
    // library light; both start white.
    void SetUp(const DObject& icon, std::unique_ptr<DLightObject> light);

  private:
    void UpdateLightPosition();

    TQ3BoundingBox box_{};
    TQ3BoundingSphere sphere_{};
    DPickIDStyle pickId_;
    DTranslateTransform position_;
    DMatrixTransform rotation_;
    DScaleTransform scale_;
    TQ3GroupPosition rotationPosition_ = nullptr;
    std::unique_ptr<DLightObject> light_;
    TQ3Matrix4x4 viewMatrix_;
};

// A point light without attenuation that casts shadows; its icon is a
// sphere of radius 0.5 before the icon's scale.
class VCPointLight : public VCLight {
  public:
    VCPointLight(std::uint32_t id, const TQ3Matrix4x4& viewMatrix);
};
