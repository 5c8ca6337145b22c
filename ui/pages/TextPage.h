// Page 0, Text: the text field and the font combo.
#pragma once

#include "ui/pages/WindowPage.h"

#include <QPointer>

class TextPage : public WindowPage {
  public:
    using WindowPage::WindowPage;
    // The text field's focus watcher goes with the page, so that a field
    // that loses the focus while the window closes no longer reaches it.
    ~TextPage() override;
    void Init() override;
    void Fill() override;

  private:
    QPointer<QObject> focusOutFilter_;
};
