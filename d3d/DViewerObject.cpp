#include "d3d/DViewerObject.h"

#include "d3d/DCameraObject.h"
#include "d3d/DDrawContext.h"
#include "d3d/DGroupObject.h"

DViewerObject::DViewerObject() {
    DReference view(Q3View_New());
    CheckObject(view.get());
    CheckStatus(Q3View_SetRendererByType(view.get(), kQ3RendererTypeInteractive));
    object = view.release();
}

DViewerObject::~DViewerObject() {
    if (object) Q3Object_Dispose(object);
}

void DViewerObject::SetDrawContext(const DDrawContext& context) {
    CheckStatus(Q3View_SetDrawContext(object, context.GetObject()));
}

void DViewerObject::SetCamera(const DCameraObject& camera) {
    CheckStatus(Q3View_SetCamera(object, camera.GetObject()));
}

void DViewerObject::SetLightGroup(const DGroupObject& lights) {
    CheckStatus(Q3View_SetLightGroup(object, lights.GetObject()));
}

void DViewerObject::SetRenderer(TQ3RendererObject renderer) {
    CheckStatus(Q3View_SetRenderer(object, renderer));
}

void DViewerObject::SetRendererByType(TQ3ObjectType type) {
    CheckStatus(Q3View_SetRendererByType(object, type));
}

void DViewerObject::SetIdleProgressMethod(TQ3ViewIdleProgressMethod method, const void* data) {
    CheckStatus(Q3View_SetIdleProgressMethod(object, method, data));
}

void DViewerObject::GetFrustumToWindow(TQ3Matrix4x4& out) const {
    CheckStatus(Q3View_GetFrustumToWindowMatrixState(object, &out));
}

namespace {

DReference CameraOf(TQ3ViewObject view) {
    TQ3CameraObject camera = nullptr;
    CheckStatus(Q3View_GetCamera(view, &camera));
    CheckObject(camera);
    return DReference(camera);
}

} // namespace

void DViewerObject::GetWorldToView(TQ3Matrix4x4& out) const {
    DReference camera = CameraOf(object);
    CheckStatus(Q3Camera_GetWorldToView(camera.get(), &out));
}

void DViewerObject::GetViewToFrustum(TQ3Matrix4x4& out) const {
    DReference camera = CameraOf(object);
    CheckStatus(Q3Camera_GetViewToFrustum(camera.get(), &out));
}

DViewerStyle::DViewerStyle() {
    interpolation.Set(kQ3InterpolationStyleVertex);
}

void DViewerStyle::Submit(const DViewerObject& viewer) const {
    interpolation.Submit(viewer);
    subdivision.Submit(viewer);
    illumination.Submit(viewer);
}
