// The 3D layers of a view: the library viewer with its camera, lights and
// draw context and the frame it runs (K3DView); the offscreen front world
// that the frame can be drawn into instead of the window (K3DBackView).
#pragma once

#include "d3d/DCameraObject.h"
#include "d3d/DDrawContext.h"
#include "d3d/DExtViewer.h"
#include "d3d/DGroupObject.h"
#include "d3d/DSubmitLoop.h"
#include "d3d/DViewerObject.h"
#include "host/WGWorld.h"
#include "scene/WView.h"

#include <memory>
#include <vector>

class VZarbesoSceneManager;

class K3DView : public DExtViewer, public KView {
  public:
    K3DView();
    ~K3DView() override;

    DViewerObject& GetViewer() override { return viewer; }
    void SubmitStyles() override;
    void SubmitGeometry() override { SubmitScene(); }
    // Message 2000 to the attachments: the adorners submit their transforms.
    void SubmitAdorners() override;
    std::int32_t GetCameraKind() override { return 1; }
    // The event's point in the window.
    void GetPickPoint(TQ3Point2D& out, const MouseEvent& event) override;
    virtual VZarbesoSceneManager* GetSceneManager() = 0;
    // The combined matrix of what stands in front of the scene.
    virtual void GetAdornerMatrix(TQ3Matrix4x4& out) const;
    // One frame, unless drawing is off or a frame is already running.
    virtual void Render();
    virtual void PlaceCamera() {}
    virtual void SubmitScene() {}
    void Draw(int) override { Render(); }
    void ResizeTo(int width, int height) override;

    // The picture of the window: what the frame draws into when it is not
    // drawn offscreen, and the surface the host paints the image into. While
    // the view draws offscreen it is only made when asked for, so that a
    // view the size of a large image does not hold it twice.
    PISurface* GetSurface();
    void EnsureWindowImage();
    // Whether frames go to the offscreen world rather than the window.
    virtual bool DrawsOffscreen() const { return false; }

    DViewerObject viewer;
    DLightGroup lightGroup;
    std::unique_ptr<DAngleAspectCamera> camera;
    std::unique_ptr<DPixmapDrawContext> drawContext;
    DViewerStyle viewerStyle;
    bool drawingEnabled = true;
    bool drawing = false;
    DSubmitDraw submitDraw;

  protected:
    // Makes the camera, the window's draw context and gives them to the
    // viewer, with the light group; then places the camera.
    void Setup();
    // The area of the window.
    TQ3Area GetArea() const;

  private:
    void FitWindowImage();
    std::vector<std::uint32_t> windowImage_;
    bool windowImageStale_ = false;
    PISurface surface_{};
};

// The view of the gesture under way, or the one the document works on:
// widgets, selected objects and lights read it. A view that dies clears it.
K3DView* GetCurrent3DView();
void SetCurrent3DView(K3DView* view);

class K3DBackView : public K3DView {
  public:
    ~K3DBackView() override;
    // The blend of the image behind the scene into the front world.
    virtual void Composite() {}
    // Before a frame drawn offscreen.
    virtual void PrepareBack();
    // After a frame drawn offscreen: put it on the screen.
    virtual void ShowBack() {}
    virtual void SetOffscreen(bool flag);
    bool IsOffscreen() const { return offscreen; }
    bool DrawsOffscreen() const override { return offscreen; }
    void SetBackColor(int red, int green, int blue);

    std::unique_ptr<KGWorld> frontWorld;
    bool offscreen = false;
    bool keepImage = true;
    std::unique_ptr<DPixmapDrawContext> pixmapContext;
    std::int16_t backColor[3] = {0, 0, 0};

  protected:
    // A new 32-bit front world over `rect` with its draw context, cleared to
    // transparent black. On a failure both are null and the failure goes on.
    void MakeWorld(const Rect& rect);
};
