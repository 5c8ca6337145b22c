// The document of one run of the filter: the view with its scene and text,
// and the renderers, bound to the host's image. The window builds on it;
// the run without a window uses it alone.
#pragma once

#include "render/Renderers.h"
#include "scene/VZarbesoView.h"

#include <memory>

class VZarbesoDocument {
  public:
    VZarbesoDocument();
    virtual ~VZarbesoDocument();

    // Takes the starting state of a session into the view: Home, the text
    // "Lumerra 3D" in the current font on the line path, the stored colours
    // and layout values, the ambient light.
    void ApplyDefaults();
    // Binds the view to the host's buffers: the preview size at start-up,
    // the full size for the final render.
    void BindImage(bool final);
    // The final render on OK and in the run without a window: fetches the
    // full-size buffers, renders and composites into the host's output.
    // False when the host could not deliver them.
    bool RenderFinal();
    // Hides what is not part of the picture, renders with the final
    // renderer, and shows it all again.
    void RenderScene(bool interactive);

    VZarbesoView* GetView() const { return view_.get(); }
    QRenderer* GetRenderer() const { return renderer_.get(); }

  protected:
    // Gives the view a new size: the part of the window's layout that
    // follows the image.
    virtual void AdjustViewSize(int width, int height, bool scaled);

  private:
    std::unique_ptr<VZarbesoView> view_;
    std::unique_ptr<QRenderer> renderer_;
};
