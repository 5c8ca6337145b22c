#include "scene/K3DManipulator.h"

#include "scene/K3DSystem.h"
#include "scene/K3DView.h"

#include <cmath>

void K3DManipulator::Prepare(WView* view) {
    view3D = dynamic_cast<K3DView*>(view);
    // No system, no matrix: the gesture then moves nothing. A matrix kept
    // from an earlier press may belong to a system that has ended.
    K3DSystem* system = K3DSystem::Instance();
    viewMatrix = system ? system->GetViewMatrix() : nullptr;
    if (!view3D || !viewMatrix) return;
    viewMatrix->Compute(view3D);
    SetCurrent3DView(view3D);
}

// Without a view matrix every window point maps to the origin, so that a
// drag measures no movement, and the scene and the view are taken as one.

void K3DManipulator::ScreenToWorld(std::int32_t point, KVector3D& out) const {
    if (viewMatrix)
        viewMatrix->ScreenToWorld(point, out, depth);
    else
        out = {0, 0, 0, 1};
}

void K3DManipulator::ScreenToCameraWorld(std::int32_t point, KVector3D& out) const {
    if (viewMatrix)
        viewMatrix->ScreenToCameraWorld(point, out, depth);
    else
        out = {0, 0, 0, 1};
}

void K3DManipulator::IntersectSphere(std::int32_t point, const KVector3D& centre, float radius,
                                     KVector3D& front, KVector3D& back) const {
    if (viewMatrix)
        viewMatrix->IntersectSphere(point, centre, radius, front, back);
    else
        front = back = centre;
}

bool K3DManipulator::ClosestPointOnLine(std::int32_t point, const KVector3D& linePoint,
                                        const KVector3D& lineDirection, KVector3D& out) const {
    return viewMatrix && viewMatrix->ClosestPointOnLine(point, linePoint, lineDirection, out);
}

float K3DManipulator::DistanceToLine(std::int32_t point, const KVector3D& linePoint,
                                     const KVector3D& lineDirection) const {
    if (!viewMatrix) return HUGE_VALF;
    return viewMatrix->DistanceToLine(point, linePoint, lineDirection);
}

KVector3D K3DManipulator::ToView(const KVector3D& point) const {
    if (!viewMatrix) return point;
    KVector3D out;
    viewMatrix->WorldToView(point, out);
    return out;
}

KVector3D K3DManipulator::FromView(const KVector3D& point) const {
    if (!viewMatrix) return point;
    KVector3D out;
    viewMatrix->ViewToWorld(point, out);
    return out;
}

float K3DManipulator::LengthToView(float length) const {
    return viewMatrix ? viewMatrix->LengthToView(length) : length;
}

void K3DManipulator::SetDepthFromPoint(const KVector3D& point) {
    if (viewMatrix) depth = viewMatrix->GetDepth(point);
}

void K3DManipulator::SetDepthFromCamera() {
    if (!view3D || !view3D->camera) return;
    const TQ3CameraPlacement& p = view3D->camera->GetData().placement;
    const KVector3D location{p.cameraLocation.x, p.cameraLocation.y, p.cameraLocation.z};
    const KVector3D interest{p.pointOfInterest.x, p.pointOfInterest.y, p.pointOfInterest.z};
    depth = -(location - interest).Length();
}

bool K3DManipulator::RotationBetween(const KVector3D& a, const KVector3D& b, KVector3D& axis,
                                     float& angle, TQ3Matrix4x4* matrix) {
    const KVector3D ua = a.Unit(), ub = b.Unit();
    angle = std::acos(ua.Dot(ub));
    if (std::isnan(angle) || std::fabs(angle) <= 0.00001f) return false;
    axis = ua.Cross(ub).Unit();
    if (axis.Length() == 0.0f) return false; // opposite directions: no one axis
    if (matrix) {
        const TQ3Vector3D v{axis.x, axis.y, axis.z};
        const TQ3Point3D origin{0, 0, 0};
        Q3Matrix4x4_SetRotateAboutAxis(matrix, &origin, &v, angle);
    }
    return true;
}
