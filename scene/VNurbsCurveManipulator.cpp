#include "scene/VNurbsCurveManipulator.h"

#include "scene/K3DManipulator.h"
#include "scene/K3DObject.h"
#include "scene/K3DViewMatrix.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VZarbesoView.h"

namespace {
TQ3Matrix4x4 LocalToWorld(const K3DObject& object) {
    TQ3Matrix4x4 m;
    object.GetLocalToWorld(m, 0);
    return m;
}
} // namespace

KVector3D WorldToObject(const K3DObject& object, const KVector3D& point) {
    KVector3D p =
        TransformPoint({point.x, point.y, point.z, 1.0f}, InvertedMatrix(LocalToWorld(object)));
    p.w = 1.0f;
    return p;
}

KVector3D ObjectToWorld(const K3DObject& object, const KVector3D& point) {
    KVector3D p = TransformPoint({point.x, point.y, point.z, 1.0f}, LocalToWorld(object));
    p.w = 1.0f;
    return p;
}

KVector3D WorldVectorToObject(const K3DObject& object, const KVector3D& vector) {
    KVector3D v =
        TransformVector({vector.x, vector.y, vector.z, 0.0f}, InvertedMatrix(LocalToWorld(object)));
    v.w = 0.0f;
    return v;
}

void SetDepthAtScenePoint(K3DManipulator& manipulator, const KVector3D& point) {
    manipulator.depth = manipulator.ToView(point).z;
}

bool MovedBeyondClick(const Point& down, const Point& now) {
    const int dx = now.h - down.h, dy = now.v - down.v;
    return dx * dx + dy * dy > 4;
}

void PullHandles(const KVector3D& anchor, const KVector3D& pointer, KVector3D& behind,
                 KVector3D& ahead) {
    ahead = {pointer.x, pointer.y, pointer.z, 1.0f};
    behind = {2 * anchor.x - pointer.x, 2 * anchor.y - pointer.y, 2 * anchor.z - pointer.z, 1.0f};
}

bool DeleteSelectedAnchor(VZarbesoView& view) {
    VCBezierCurveModel* model = view.GetBezierModel();
    if (!model || model->selectedMarker < 0) return false;
    model->SetPickedId(model->modelId + (std::uint32_t(model->selectedMarker + 1) << 24));
    if (!model->EditAtPart()) return false;
    view.UpdateText();
    return true;
}
