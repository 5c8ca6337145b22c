// The library view that passes run over, and the styles every frame starts
// with.
#pragma once

#include "d3d/DObject.h"
#include "d3d/DShaderObject.h"
#include "d3d/DStyleObject.h"

class DCameraObject;
class DDrawContext;
class DGroupObject;

class DViewerObject : public DObject {
  public:
    // A view with the interactive renderer.
    DViewerObject();
    ~DViewerObject() override;
    TQ3Object GetObject() const override { return object; }

    void SetDrawContext(const DDrawContext& context);
    void SetCamera(const DCameraObject& camera);
    void SetLightGroup(const DGroupObject& lights);
    void SetRenderer(TQ3RendererObject renderer);
    void SetRenderer(const DObject& renderer) { SetRenderer(renderer.GetObject()); }
    void SetRendererByType(TQ3ObjectType type);
    // The method a long pass tells its progress to, and may be stopped by;
    // null for none.
    void SetIdleProgressMethod(TQ3ViewIdleProgressMethod method, const void* data);
    // Only while a pass is open.
    void GetFrustumToWindow(TQ3Matrix4x4& out) const;
    // From the view's camera.
    void GetWorldToView(TQ3Matrix4x4& out) const;
    void GetViewToFrustum(TQ3Matrix4x4& out) const;

    TQ3ViewObject object = nullptr;
};

// Interpolation, orientation, Phong illumination and subdivision; the
// orientation is kept but never submitted.
class DViewerStyle {
  public:
    DViewerStyle();
    // Interpolation, subdivision and Phong illumination, in that order.
    void Submit(const DViewerObject& viewer) const;

    DInterpolationStyle interpolation;
    DOrientationStyle orientation;
    DPhongIllumination illumination;
    DSubdivisionStyle subdivision;
};
