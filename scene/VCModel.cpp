#include "scene/VCModel.h"

#include "d3d/DSubmitLoop.h"
#include "scene/K3DViewMatrix.h"

VCModel::VCModel(std::uint32_t id, const DObject& geometry) : VCModel(id, geometry.GetObject()) {}

VCModel::VCModel(std::uint32_t id, TQ3Object geometry) : VC3DObject(id), pickId_(id) {
    Build(geometry);
}

void VCModel::Build(TQ3Object geometry) {
    AddObject(pickId_);
    AddObject(fromCentre_);
    AddObject(position_);
    rotationPosition_ = AddObject(rotation_);
    AddObject(scale_);
    AddObject(toCentre_);
    if (geometry) AddObject(geometry);
}

void VCModel::Translate(const KVector3D& delta) {
    position_.Add(delta);
}

void VCModel::GetRotationMatrix(TQ3Matrix4x4& out) const {
    out = rotation_.matrix;
}

void VCModel::GetScaleMatrix(TQ3Matrix4x4& out) const {
    out = scale_.Matrix();
}

void VCModel::GetLocalToWorld(TQ3Matrix4x4& out, int mode) const {
    TQ3Matrix4x4 m = toCentre_.Matrix();
    if (mode != 1) m = MultiplyMatrices(m, scale_.Matrix());
    m = MultiplyMatrices(m, rotation_.matrix);
    m = MultiplyMatrices(m, position_.Matrix());
    out = MultiplyMatrices(m, fromCentre_.Matrix());
}

void VCModel::SetScale(const KVector3D& scale) {
    scale_.Set(scale);
}

void VCModel::SetRotation(const KVector3D& angles) {
    rotation_.SetRotation(angles);
}

void VCModel::MultiplyScale(const KVector3D& factors) {
    scale_.MultiplyBy(factors);
}

void VCModel::GetCenter(KVector3D& out) const {
    out = {sphere_.origin.x, sphere_.origin.y, sphere_.origin.z, 1.0f};
}

void VCModel::RotateAboutAxis(const KVector3D& axis, float angle) {
    float x, y, z;
    rotation_.GetRotation(x, y, z);
    DQuaternionTransform q(0, 0.0f);
    q.SetRotation(x, y, z);
    q.RotateAbout(axis, angle);
    KVector3D angles;
    q.GetRotation(angles);
    SetRotation(angles);
}

void VCModel::GetPosition(KVector3D& out) const {
    position_.Get(out);
}

void VCModel::AddToGroup(const DShapeObject& object) {
    AddObject(object);
}

void VCModel::RemoveFromGroup(const DShapeObject& object) {
    Remove(object);
}

void VCModel::InsertAfterRotation(const DShapeObject& object) {
    AddObjectAfter(object.GetObject(), rotationPosition_);
}

void VCModel::CalcBoundingBox(DExtViewer* view) {
    DBoundingBoxCalc calc(&box_, kQ3ComputeBoundsExact);
    calc.Run(*this, view);
}

void VCModel::CalcBoundingSphere(DExtViewer* view) {
    WithPositionAtZero(position_, [&] {
        DBoundingSphereCalc calc(&sphere_, kQ3ComputeBoundsExact);
        calc.Run(*this, view);
    });
}

void VCModel::CenterOnBounds(DExtViewer* view) {
    CalcBoundingBox(view);
    CalcBoundingSphere(view);
    const KVector3D c = {sphere_.origin.x, sphere_.origin.y, sphere_.origin.z, 0.0f};
    toCentre_.Add(-c);
    fromCentre_.Add(c);
}
