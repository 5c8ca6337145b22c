#include "ui/window/WindowInstall.h"

#include "host/Alerts.h"
#include "host/ModalRun.h"
#include "ui/dialogs/AboutBox.h"
#include "ui/dialogs/RendererSettingsDialog.h"
#include "ui/window/VZarbesoWindow.h"

namespace {
void AboutBoxOfTheFilter(intptr_t) {
    RunAboutBox(nullptr);
}
} // namespace

void InstallFilterWindow() {
    SetFilterWindowFactory(&VZarbesoWindow_Win::Make);
    SetAboutBoxRunner(&AboutBoxOfTheFilter);
    Q3LightWorks_SL_SetSettingsDialog(&AskRendererSettings);
}
