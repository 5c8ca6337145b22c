// The main window of a run, as the modal loop sees it.
#pragma once

#include "sdk/PIFilter.h"

class QWidget;

class WFilterWindow {
  public:
    virtual ~WFilterWindow() = default;
    // The top-level widget of the window.
    virtual QWidget* Widget() = 0;
    // An accelerator of table 176 for this window. The command clears
    // gAcceleratorHandled first and sets it only where the key really acted.
    virtual void OnAccelerator(int /*commandId*/) {}
};

// Makes the main window of a run over the host's window (0: none), for the
// given invocation; null when it cannot be made.
using FilterWindowFactory = WFilterWindow* (*)(intptr_t parentWindow, int16 invocation);

// The factory that RunFilterDialog uses; the filter module installs its main
// window when it is loaded. Without one no window can be made.
void SetFilterWindowFactory(FilterWindowFactory factory);
FilterWindowFactory GetFilterWindowFactory();
