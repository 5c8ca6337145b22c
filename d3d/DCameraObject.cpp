#include "d3d/DCameraObject.h"

#include <cmath>

namespace {

bool UsableFactor(float f) {
    return std::isfinite(f) && f != 0.0f;
}

} // namespace

DCameraObject::DCameraObject() {
    Q3Matrix4x4_SetIdentity(&matrix);
}

DCameraObject::~DCameraObject() {
    if (object) Q3Object_Dispose(object);
}

void DCameraObject::WritePlacement() {
    CheckStatus(Q3Camera_SetPlacement(object, &data.placement));
}

void DCameraObject::SetPlacement(const TQ3Point3D& location, const TQ3Point3D& pointOfInterest,
                                 const TQ3Vector3D& up) {
    data.placement = {location, pointOfInterest, up};
    WritePlacement();
}

void DCameraObject::SetRange(float hither, float yon) {
    data.range = {hither, yon};
    CheckStatus(Q3Camera_SetRange(object, &data.range));
}

void DCameraObject::SetViewPort(const TQ3CameraViewPort& viewPort) {
    data.viewPort = viewPort;
    CheckStatus(Q3Camera_SetViewPort(object, &data.viewPort));
}

void DCameraObject::Zoom(float scale) {
    if (!UsableFactor(scale)) return;
    TQ3CameraPlacement& p = data.placement;
    TQ3Vector3D away;
    Q3Point3D_Subtract(&p.cameraLocation, &p.pointOfInterest, &away);
    Q3Vector3D_Scale(&away, 1.0f / scale, &away);
    Q3Point3D_Vector3D_Add(&p.pointOfInterest, &away, &p.cameraLocation);
    WritePlacement();
}

void DCameraObject::Rotate(const TQ3Matrix4x4& m) {
    TQ3CameraPlacement& p = data.placement;
    Q3Point3D_Transform(&p.cameraLocation, &m, &p.cameraLocation);
    Q3Point3D_Transform(&p.pointOfInterest, &m, &p.pointOfInterest);
    Q3Vector3D_Transform(&p.upVector, &m, &p.upVector);
    WritePlacement();
}

void DCameraObject::Translate(const TQ3Matrix4x4& m) {
    TQ3CameraPlacement& p = data.placement;
    Q3Point3D_Transform(&p.cameraLocation, &m, &p.cameraLocation);
    Q3Point3D_Transform(&p.pointOfInterest, &m, &p.pointOfInterest);
    WritePlacement();
}

void DCameraObject::Save() {
    CheckStatus(Q3Camera_GetData(object, &saved));
}

void DCameraObject::Restore() {
    CheckStatus(Q3Camera_SetData(object, &saved));
    CheckStatus(Q3Camera_GetData(object, &data));
    Q3Matrix4x4_SetIdentity(&matrix);
}

DViewPlaneCamera::DViewPlaneCamera() {
    plane.cameraData = data;
    plane.viewPlane = 30.0f;
    plane.halfWidthAtViewPlane = 1.0f;
    plane.halfHeightAtViewPlane = 1.0f;
    object = Q3ViewPlaneCamera_New(&plane);
    CheckObject(object);
}

DOrthographicCamera::DOrthographicCamera() {
    kind = 2;
    TQ3OrthographicCameraData ortho{data, left, top, right, bottom};
    object = Q3OrthographicCamera_New(&ortho);
    CheckObject(object);
}

void DOrthographicCamera::WriteFrame() {
    TQ3OrthographicCameraData ortho{data, left * scaleX, top * scaleY, right * scaleX,
                                    bottom * scaleY};
    CheckStatus(Q3OrthographicCamera_SetData(object, &ortho));
}

void DOrthographicCamera::SetPane(const TQ3Area& pane) {
    FitToPane(pane.max.x - pane.min.x, pane.max.y - pane.min.y);
}

void DOrthographicCamera::FitToPane(float width, float height) {
    if (!UsableFactor(width) || !UsableFactor(height)) return;
    left = -std::fabs(width) / 2;
    right = std::fabs(width) / 2;
    top = std::fabs(height) / 2;
    bottom = -std::fabs(height) / 2;
    WriteFrame();
}

void DOrthographicCamera::Zoom(float scale) {
    ScaleBy(scale, scale);
}

void DOrthographicCamera::ScaleBy(float x, float y) {
    if (!UsableFactor(x) || !UsableFactor(y)) return;
    scaleX /= x;
    scaleY /= y;
    WriteFrame();
}

void DOrthographicCamera::SetScale(float x, float y) {
    if (!UsableFactor(x) || !UsableFactor(y)) return;
    scaleX = 1.0f / x;
    scaleY = 1.0f / y;
    WriteFrame();
}

DAngleAspectCamera::DAngleAspectCamera() {
    kind = 1;
    TQ3ViewAngleAspectCameraData angle{data, fieldOfView, aspect};
    object = Q3ViewAngleAspectCamera_New(&angle);
    CheckObject(object);
}

float DAngleAspectCamera::GetFieldOfView() const {
    float radians = aspect > 1.0f ? fieldOfView * aspect : fieldOfView;
    return radians * 180.0f / 3.1415927f;
}

void DAngleAspectCamera::SetFieldOfView(float degrees) {
    if (!std::isfinite(degrees)) return;
    float radians = degrees * 3.1415927f / 180.0f;
    fieldOfView = aspect > 1.0f ? radians / aspect : radians;
    CheckStatus(Q3ViewAngleAspectCamera_SetFOV(object, fieldOfView));
}

void DAngleAspectCamera::SetPane(const TQ3Area& pane) {
    const float w = pane.max.x - pane.min.x, h = pane.max.y - pane.min.y;
    SetAspect(h > 0.0f && w > 0.0f ? w / h : 1.0f);
}

void DAngleAspectCamera::SetAspect(float value) {
    if (!std::isfinite(value) || value <= 0.0f) return;
    aspect = value;
    CheckStatus(Q3ViewAngleAspectCamera_SetAspectRatio(object, aspect));
}
