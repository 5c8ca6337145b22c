#include "d3d/DGetViewMatrixLoop.h"

#include "d3d/DViewerObject.h"

#include <cmath>

namespace {

void Invert(const TQ3Matrix4x4& m, TQ3Matrix4x4& out) {
    if (!Q3Matrix4x4_Invert(&m, &out)) CheckStatus(kQ3Failure);
}

KVector3D Transform(const KVector3D& p, const TQ3Matrix4x4& m) {
    TQ3RationalPoint4D in{p.x, p.y, p.z, 1.0f}, out;
    Q3RationalPoint4D_Transform(&in, &m, &out);
    if (out.w == 0.0f || !std::isfinite(out.w)) return {out.x, out.y, out.z, 1.0f};
    return {out.x / out.w, out.y / out.w, out.z / out.w, 1.0f};
}

} // namespace

DGetViewMatrixLoop::DGetViewMatrixLoop() {
    for (TQ3Matrix4x4* m :
         {&frustumToWindow, &worldToView, &viewToFrustum, &windowToFrustum, &viewToWorld})
        Q3Matrix4x4_SetIdentity(m);
}

void DGetViewMatrixLoop::Compute(DExtViewer* viewer) {
    SetExtViewer(viewer);
    RunPass();
}

void DGetViewMatrixLoop::SubmitObjects() {
    DSubmitLoop::SubmitObjects();
    const DViewerObject& viewer = extViewer->GetViewer();
    viewer.GetFrustumToWindow(frustumToWindow);
    Invert(frustumToWindow, windowToFrustum);
    viewer.GetWorldToView(worldToView);
    Invert(worldToView, viewToWorld);
    viewer.GetViewToFrustum(viewToFrustum);
    MatricesReady();
}

void DGetViewMatrixLoop::ScreenToView(std::int32_t point, KVector3D& result, float depth) const {
    const auto bits = static_cast<std::uint32_t>(point);
    const auto x = static_cast<std::int16_t>(static_cast<std::uint16_t>(bits >> 16));
    const auto y = static_cast<std::int16_t>(static_cast<std::uint16_t>(bits & 0xFFFFu));
    ScreenToView(TQ3Point2D{static_cast<float>(x), static_cast<float>(y)}, result, depth);
}

void DGetViewMatrixLoop::ScreenToView(const TQ3Point2D& point, KVector3D& result,
                                      float depth) const {
    const float m00 = viewToFrustum.value[0][0], m11 = viewToFrustum.value[1][1];
    if (m00 == 0.0f || m11 == 0.0f) {
        result = {0, 0, depth, 1.0f};
        return;
    }
    if (extViewer && extViewer->GetCameraKind() == 2) {
        TQ3Point3D window{point.x, point.y, 0}, p;
        Q3Point3D_Transform(&window, &windowToFrustum, &p);
        result = {p.x / m00, p.y / m11, depth, 1.0f};
    } else {
        TQ3Point3D window{point.x, point.y, 1}, p;
        Q3Point3D_Transform(&window, &windowToFrustum, &p);
        const float m23 = viewToFrustum.value[2][3];
        result = {m23 * p.x / m00 * depth, m23 * p.y / m11 * depth, depth, 1.0f};
    }
}

void DGetViewMatrixLoop::ViewToWorld(const KVector3D& point, KVector3D& result) const {
    result = Transform(point, viewToWorld);
}

void DGetViewMatrixLoop::WorldToView(const KVector3D& point, KVector3D& result) const {
    result = Transform(point, worldToView);
}

void DGetViewMatrixLoop::ScreenToWorld(std::int32_t point, KVector3D& result, float depth) const {
    KVector3D view;
    ScreenToView(point, view, depth);
    ViewToWorld(view, result);
}

float DGetViewMatrixLoop::LengthToView(float length) const {
    const float* row = worldToView.value[0];
    return length * std::sqrt(row[0] * row[0] + row[1] * row[1] + row[2] * row[2]);
}
