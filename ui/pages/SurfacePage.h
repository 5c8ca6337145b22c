// Page 2, Surface: colour or texture, the Faces and Sides colours with
// their Link, and the transparency.
#pragma once

#include "ui/pages/WindowPage.h"

#include <memory>

class NumericField;

class SurfacePage : public WindowPage {
  public:
    explicit SurfacePage(VZarbesoWindow_Win& window);
    ~SurfacePage() override;
    void Init() override;
    void Fill() override;

    // The flow of a row of the Surface combo.
    void SurfaceSelected(int row);
    // A new colour for the faces or for the sides; Link carries it over.
    void ColorClicked(bool faces);

  private:
    std::unique_ptr<NumericField> transparency_;
};

// Asks for a texture file; empty when the user cancelled.
std::string ChooseTextureFile();
