#include "ui/NoWindowRun.h"

#include "ui/VZarbesoDocument.h"

bool RunWithoutWindow() {
    // The window's start without the window: the saved workspace comes into
    // the scene, and the run ends as OK does.
    VZarbesoDocument document(true);
    document.InitControls();
    document.ApplyWorkspace();
    document.BindImage(false);
    return document.ConfirmRun();
}
