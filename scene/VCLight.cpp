#include "scene/VCLight.h"

#include "d3d/DGeometryObject.h"
#include "d3d/DSubmitLoop.h"
#include "scene/K3DViewMatrix.h"

VCLight::VCLight(std::uint32_t id, const TQ3Matrix4x4& viewMatrix)
    : VC3DObject(id), pickId_(id), viewMatrix_(viewMatrix) {
    AddObject(pickId_);
    AddObject(position_);
    rotationPosition_ = AddObject(rotation_);
    AddObject(scale_);
}

VCLight::~VCLight() = default;

void VCLight::SetUp(const DObject& icon, std::unique_ptr<DLightObject> light) {
    AddObject(icon);
    light_ = std::move(light);
    SetColor(1, 1, 1);
    UpdateLightPosition();
}

void VCLight::Translate(const KVector3D& delta) {
    position_.Add(delta);
    UpdateLightPosition();
}

void VCLight::GetRotationMatrix(TQ3Matrix4x4& out) const {
    out = rotation_.matrix;
}

void VCLight::GetScaleMatrix(TQ3Matrix4x4& out) const {
    out = scale_.Matrix();
}

void VCLight::GetLocalToWorld(TQ3Matrix4x4& out, int mode) const {
    TQ3Matrix4x4 m = rotation_.matrix;
    if (mode != 1) m = MultiplyMatrices(scale_.Matrix(), m);
    out = MultiplyMatrices(m, position_.Matrix());
}

void VCLight::SetScale(const KVector3D& scale) {
    scale_.Set(scale);
}

void VCLight::GetCenter(KVector3D& out) const {
    out = {sphere_.origin.x, sphere_.origin.y, sphere_.origin.z, 1.0f};
}

void VCLight::GetPosition(KVector3D& out) const {
    position_.Get(out);
}

void VCLight::AddToGroup(const DShapeObject& object) {
    AddObject(object);
}

void VCLight::RemoveFromGroup(const DShapeObject& object) {
    Remove(object);
}

void VCLight::InsertAfterRotation(const DShapeObject& object) {
    AddObjectAfter(object.GetObject(), rotationPosition_);
}

void VCLight::CalcBoundingBox(DExtViewer* view) {
    WithPositionAtZero(position_, [&] {
        DBoundingBoxCalc calc(&box_, kQ3ComputeBoundsExact);
        calc.Run(*this, view);
    });
    box_.min.x = box_.min.z = box_.min.y;
    box_.max.x = box_.max.z = box_.max.y;
}

void VCLight::CalcBoundingSphere(DExtViewer* view) {
    WithPositionAtZero(position_, [&] {
        DBoundingSphereCalc calc(&sphere_, kQ3ComputeBoundsExact);
        calc.Run(*this, view);
    });
}

void VCLight::SetColor(float red, float green, float blue) {
    light_->SetColor(red, green, blue);
    DColorGroup::SetColor(red, green, blue);
}

void VCLight::GetColor(float& red, float& green, float& blue) const {
    const TQ3ColorRGB c = light_->GetColor();
    red = c.r;
    green = c.g;
    blue = c.b;
}

void VCLight::SetViewMatrix(const TQ3Matrix4x4& matrix) {
    viewMatrix_ = matrix;
    UpdateLightPosition();
}

void VCLight::UpdateLightPosition() {
    if (!light_) return;
    KVector3D p;
    position_.Get(p);
    p.w = 1.0f;
    const KVector3D seen = TransformPoint(p, viewMatrix_);
    light_->SetLocation({seen.x, seen.y, seen.z});
}

VCPointLight::VCPointLight(std::uint32_t id, const TQ3Matrix4x4& viewMatrix)
    : VCLight(id, viewMatrix) {
    const DEllipsoidGeometry icon(0.5f, 0.5f, 0.5f);
    SetUp(icon, std::make_unique<DPointLight>(TQ3Point3D{0, 0, 0}));
}
