// The stand-in window of a run with a document behind it: the saved state is
// taken into the scene when it opens; OK saves it and renders the picture
// into the host's image, Cancel leaves both as they were. The main window
// takes its place once it stands.
#pragma once

#include "host/CStandInWindow.h"

#include <memory>

class VZarbesoDocument;

class CDocumentStandInWindow : public WFilterWindow {
  public:
    CDocumentStandInWindow();
    ~CDocumentStandInWindow() override;
    QWidget* Widget() override;

    static WFilterWindow* Make(intptr_t parentWindow, int16 invocation);

  private:
    void End(bool confirmed);

    CStandInWindow window_;
    std::unique_ptr<VZarbesoDocument> document_;
};
