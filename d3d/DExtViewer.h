// What a pass runs over: the view that owns the library view, the scene and
// the adorners, and that turns a mouse event into a window point.
#pragma once

#include "platform/qd3d/QD3D.h"

#include <cstdint>

class DViewerObject;
struct MouseEvent;

class DExtViewer {
  public:
    virtual ~DExtViewer() = default;
    virtual DViewerObject& GetViewer() = 0;
    // Once before and once after each pass, however often the pass submits.
    virtual void BeginFrame() {}
    virtual void EndFrame() {}
    virtual void SubmitStyles() {}
    virtual void SubmitGeometry() {}
    virtual void SubmitAdorners() {}
    // 1 for a perspective camera, 2 for an orthographic one.
    virtual std::int32_t GetCameraKind() { return 1; }
    // The window point of a mouse event.
    virtual void GetPickPoint(TQ3Point2D& out, const MouseEvent& /*event*/) { out = {0, 0}; }
};
