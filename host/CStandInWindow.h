#pragma once

#include "host/WFilterWindow.h"

#include <memory>

class QWidget;

// A plain window with OK and Cancel that ends the modal loop with 1 or 2:
// the main window of a run until the full editing window takes its place.
class CStandInWindow : public WFilterWindow {
  public:
    CStandInWindow();
    ~CStandInWindow() override;
    QWidget* Widget() override;

    static WFilterWindow* Make(intptr_t parentWindow, int16 invocation);

  private:
    std::unique_ptr<QWidget> widget_;
};
