// The window toolkit for one run of the filter's window.
#pragma once

#include <string>

// Makes sure a widget application exists for the life of the object. The
// filter runs inside someone else's process: when the host already runs one,
// it is used as it is; otherwise one is made here and removed again at the
// end. A toolkit that finds no screen ends the process, so the display is
// checked first and a missing one is an error, not an abort.
class GuiSession {
  public:
    GuiSession();
    ~GuiSession();
    GuiSession(const GuiSession&) = delete;
    GuiSession& operator=(const GuiSession&) = delete;

    bool Ok() const { return ok_; }

    // True while a widget application exists in this process.
    static bool Active();

    // Whether a window could be shown: a platform plug-in was chosen
    // explicitly, or an X or Wayland display answers.
    static bool DisplayAvailable();

    // Size of the desktop in pixels; a usual desktop when there is no screen.
    static void DesktopSize(int* width, int* height);

  private:
    bool ok_ = false;
    bool owned_ = false;
};
