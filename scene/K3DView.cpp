#include "scene/K3DView.h"

#include "foundation/Failures.h"
#include "foundation/Messages.h"
#include "host/ModuleState.h"
#include "scene/K3DObject.h"
#include "scene/MouseEvent.h"

namespace {
K3DView* gCurrent3DView = nullptr;
}

K3DView* GetCurrent3DView() {
    return gCurrent3DView;
}

void SetCurrent3DView(K3DView* view) {
    gCurrent3DView = view;
}

K3DView::K3DView() {
    FitWindowImage();
}

K3DView::~K3DView() {
    if (gCurrent3DView == this) gCurrent3DView = nullptr;
}

void K3DView::GetPickPoint(TQ3Point2D& out, const MouseEvent& event) {
    // The global point is a copy of the local one; the offscreen world and
    // the window have the same size, so both name the same pixel.
    const Point& p = DrawsOffscreen() ? event.local : event.global;
    out = {static_cast<float>(p.h), static_cast<float>(p.v)};
}

void K3DView::SubmitStyles() {
    viewerStyle.Submit(viewer);
}

void K3DView::SubmitAdorners() {
    RunAttachments(kMsgSubmitAdorners, &viewer);
}

void K3DView::GetAdornerMatrix(TQ3Matrix4x4& out) const {
    out = IdentityMatrix();
}

TQ3Area K3DView::GetArea() const {
    return {{0, 0}, {static_cast<float>(width_), static_cast<float>(height_)}};
}

void K3DView::FitWindowImage() {
    windowImage_.assign(std::size_t(width_) * height_, 0);
    surface_ = {width_, height_, width_ * 4, windowImage_.data()};
    windowImageStale_ = false;
    if (drawContext) {
        drawContext->SetPixmap(windowImage_.data(), static_cast<std::uint32_t>(width_),
                               static_cast<std::uint32_t>(height_),
                               static_cast<std::uint32_t>(width_ * 4));
        drawContext->SetPane(GetArea());
    }
}

void K3DView::EnsureWindowImage() {
    if (windowImageStale_) FitWindowImage();
}

PISurface* K3DView::GetSurface() {
    EnsureWindowImage();
    return &surface_;
}

void K3DView::ResizeTo(int width, int height) {
    KView::ResizeTo(width, height);
    if (DrawsOffscreen())
        windowImageStale_ = true;
    else
        FitWindowImage();
}

void K3DView::Setup() {
    const TQ3Area area = GetArea();
    camera = std::make_unique<DAngleAspectCamera>();
    camera->SetPane(area);
    viewer.SetCamera(*camera);
    viewer.SetLightGroup(lightGroup);
    drawContext = std::make_unique<DPixmapDrawContext>(
        windowImage_.data(), static_cast<std::uint32_t>(width_),
        static_cast<std::uint32_t>(height_), static_cast<std::uint32_t>(width_ * 4));
    viewer.SetDrawContext(*drawContext);
    PlaceCamera();
}

void K3DView::Render() {
    if (!drawingEnabled || drawing) return;
    drawing = true;
    try {
        submitDraw.Run(this);
    } catch (std::int32_t code) {
        drawing = false;
        // A frame that ran out of memory stops the drawing for good.
        if (code == kFailPlin) drawingEnabled = false;
        throw;
    } catch (...) {
        drawing = false;
        throw;
    }
    drawing = false;
}

K3DBackView::~K3DBackView() = default;

void K3DBackView::PrepareBack() {
    if (gRunningAsPlugin && offscreen && !keepImage) Composite();
}

void K3DBackView::SetOffscreen(bool flag) {
    if (flag == offscreen) return;
    if (!frontWorld || !pixmapContext) {
        offscreen = flag;
        return;
    }
    if (!flag) {
        pixmapContext->SetClear(true);
        EnsureWindowImage();
        viewer.SetDrawContext(*drawContext);
    } else {
        pixmapContext->SetClear(keepImage);
        viewer.SetDrawContext(*pixmapContext);
    }
    offscreen = flag;
}

void K3DBackView::SetBackColor(int red, int green, int blue) {
    backColor[0] = static_cast<std::int16_t>(red);
    backColor[1] = static_cast<std::int16_t>(green);
    backColor[2] = static_cast<std::int16_t>(blue);
    if (!drawContext) return;
    drawContext->SetClearColor(1.0f, red / 255.0f, green / 255.0f, blue / 255.0f);
    if (!offscreen) viewer.SetDrawContext(*drawContext);
}

void K3DBackView::MakeWorld(const Rect& rect) {
    pixmapContext.reset();
    frontWorld.reset();
    try {
        frontWorld = std::make_unique<KGWorld>(rect, 32);
        WPixMap* pixmap = frontWorld->GetPixMap();
        pixmapContext = std::make_unique<DPixmapDrawContext>(
            pixmap->baseAddr, static_cast<std::uint32_t>(frontWorld->GetWidth()),
            static_cast<std::uint32_t>(frontWorld->GetHeight()),
            static_cast<std::uint32_t>(pixmap->rowBytes));
        // The scene is drawn over transparent black, so that alpha is coverage.
        pixmapContext->SetClearColor(0, 0, 0, 0);
    } catch (...) {
        pixmapContext.reset();
        frontWorld.reset();
        throw;
    }
}
