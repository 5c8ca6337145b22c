// Page 3, Scene: the ambient light's colour and intensity, and the final
// renderer with its own settings.
#pragma once

#include "ui/pages/WindowPage.h"

#include <memory>

class NumericField;

class ScenePage : public WindowPage {
  public:
    explicit ScenePage(VZarbesoWindow_Win& window);
    ~ScenePage() override;
    void Init() override;
    void Fill() override;

  private:
    void AmbienceClicked();
    void ConfigureClicked();

    std::unique_ptr<NumericField> intensity_;
};
