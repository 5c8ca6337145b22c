// Page 0, Text: the text field and the font combo.
#pragma once

#include "ui/pages/WindowPage.h"

class TextPage : public WindowPage {
  public:
    using WindowPage::WindowPage;
    void Init() override;
    void Fill() override;
};
