// The final picture of the view: drawn whole or in bands of rows, with the
// renderer's progress passed on and its stop obeyed.
#include "host/Composite.h"
#include "scene/VZarbesoView.h"

#include <algorithm>

namespace {
TQ3Status TellProgress(TQ3ViewObject, const void* data, TQ3Uns32 current, TQ3Uns32 completed) {
    auto* view = static_cast<VZarbesoView*>(const_cast<void*>(data));
    return view->TellRenderProgress(current, completed) ? kQ3Success : kQ3Failure;
}

// What a render changes in the view for its time, and gives back however it
// ends: the path's visibility and the idle method.
class RenderScope {
  public:
    RenderScope(VZarbesoView& view, VZarbesoModel* path, bool tell)
        : view_(view), path_(path), pathDrawn_(path && path->IsDrawn()) {
        // The path is a tool, not part of the picture.
        if (path_) path_->SetDrawn(false);
        if (tell) view_.viewer.SetIdleProgressMethod(&TellProgress, &view_);
    }
    ~RenderScope() {
        if (path_) path_->SetDrawn(pathDrawn_);
        Q3View_SetIdleProgressMethod(view_.viewer.object, nullptr, nullptr);
    }
    RenderScope(const RenderScope&) = delete;
    RenderScope& operator=(const RenderScope&) = delete;

  private:
    VZarbesoView& view_;
    VZarbesoModel* path_;
    bool pathDrawn_;
};
} // namespace

void VZarbesoView::SetRenderProgress(std::function<bool(double done)> progress) {
    renderProgress_ = std::move(progress);
}

bool VZarbesoView::TellRenderProgress(TQ3Uns32 current, TQ3Uns32 completed) {
    if (!renderProgress_) return true;
    const double part = completed ? std::min(1.0, double(current) / completed) : 1.0;
    return renderProgress_((bandTop_ + part * bandRows_) / std::max(1, height_));
}

bool VZarbesoView::ShowRender(bool interactive, bool keep) {
    bool done;
    {
        RenderScope scope(*this, pathModel_, bool(renderProgress_));
        bandTop_ = 0;
        bandRows_ = height_;
        if (!interactive) {
            done = DrawToHost();
        } else {
            keepRender_ = keep;
            Refresh();
            done = !LastPassStopped();
        }
    }
    if (done) renderShowing_ = true;
    return done;
}

bool VZarbesoView::DrawToHost() {
    if (std::int64_t(width_) * height_ > bandPixels_ && frontWorld && binding_.outData)
        return DrawBandsToHost();
    K3DView::Render();
    if (LastPassStopped()) return false;
    worldHoldsPicture_ = true;
    CompositeToHost(false);
    return true;
}

void VZarbesoView::CompositeBand(const KGWorld& band, int top, int rows) {
    HostBinding part = binding_;
    part.inData = static_cast<uint8*>(binding_.inData) + std::size_t(top) * binding_.inRowBytes;
    part.outData = static_cast<uint8*>(binding_.outData) + std::size_t(top) * binding_.outRowBytes;
    part.height = static_cast<int16>(std::clamp(binding_.height - top, 0, rows));
    if (part.height > 0) ::CompositeToHost(part, band, false);
}

bool VZarbesoView::DrawBandsToHost() {
    const int rows = static_cast<int>(std::clamp<std::int64_t>(bandPixels_ / width_, 1, height_));
    KGWorld band(Rect{0, 0, static_cast<int16>(rows), static_cast<int16>(width_)}, 32);
    DPixmapDrawContext context(band.GetPixMap()->baseAddr, static_cast<std::uint32_t>(width_),
                               static_cast<std::uint32_t>(rows),
                               static_cast<std::uint32_t>(band.GetRowBytes()));
    context.SetClearColor(0, 0, 0, 0);
    const TQ3CameraViewPort whole = camera->GetData().viewPort;
    // Each band sees its own strip of the camera's view, from the top down.
    auto restore = [&] {
        camera->SetViewPort(whole);
        if (offscreen)
            viewer.SetDrawContext(*pixmapContext);
        else
            viewer.SetDrawContext(*drawContext);
    };
    bool done = true;
    try {
        worldHoldsPicture_ = false;
        for (int top = 0; top < height_ && done; top += rows) {
            const int h = std::min(rows, height_ - top);
            if (h < rows) context.SetPane({{0, 0}, {float(width_), float(h)}});
            const float H = float(height_);
            camera->SetViewPort({{whole.origin.x, whole.origin.y - whole.height * top / H},
                                 whole.width,
                                 whole.height * h / H});
            viewer.SetDrawContext(context);
            bandTop_ = top;
            bandRows_ = h;
            K3DView::Render();
            done = !LastPassStopped();
            if (!done) {
                // the rows composited so far get the image back, as an empty
                // picture composites it
                band.Fill32(0);
                for (int back = 0; back < top; back += rows)
                    CompositeBand(band, back, std::min(rows, height_ - back));
                break;
            }
            CompositeBand(band, top, h);
        }
    } catch (...) {
        restore();
        throw;
    }
    restore();
    return done;
}
