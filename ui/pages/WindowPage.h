// What every page of the main window shares: the window it lives in, and
// the end of nearly every handler, ClearRender(false) and Redraw().
#pragma once

#include "ui/controls/DialogControls.h"
#include "ui/window/VZarbesoWindow.h"

#include <string>
#include <vector>

class QComboBox;

class WindowPage {
  public:
    explicit WindowPage(VZarbesoWindow_Win& window) : w_(window) {}
    virtual ~WindowPage() = default;

    // Fills the controls once, at the start.
    virtual void Init() = 0;
    // Shows the document's values in the controls.
    virtual void Fill() = 0;

  protected:
    DialogControls& Controls() const { return w_.Controls(); }
    VZarbesoView& View() const { return *w_.GetView(); }
    void Changed() const {
        w_.ClearRender(false);
        w_.Redraw();
    }

    VZarbesoWindow_Win& w_;
};

// Gives a combo the rows it lacks and selects `row`, without a signal.
void ShowRows(QComboBox* combo, const std::vector<std::string>& rows, int row);
