#include "host/Alerts.h"

#include "host/GuiSession.h"
#include "resources/Strings.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>

namespace {
MessageSink gSink = nullptr;

// An alert printed for a command-line run: there is no application to
// relaunch there, so the memory alert says what is short instead.
std::string ConsoleText(int stringId, const std::string& text) {
    if (stringId == plumet::kStrCantComplete)
        return "Lumerra 3D FlyWORD Plumet can't complete your request: there is not enough "
               "memory for it.";
    return text;
}

std::string AboutText() {
    return "FlyWORD Plumet\nLumerra 3D\n\nExtruded 3D text set along a path, lit, textured "
           "and rendered into your image.";
}
} // namespace

void SetMessageSink(MessageSink sink) {
    gSink = sink;
}

void ShowAlert(int stringId, QWidget* parent) {
    ShowAlertText(stringId, plumet::LoadString(stringId), parent);
}

void ShowAlertText(int stringId, const std::string& text, QWidget* parent) {
    if (gSink) return gSink(stringId, text);
    if (GuiSession::Active()) {
        QMessageBox::warning(parent,
                             QString::fromStdString(plumet::LoadString(plumet::kStrAlertTitle)),
                             QString::fromStdString(text));
        return;
    }
    std::fprintf(stderr, "%s: %s\n", plumet::LoadString(plumet::kStrAlertTitle).c_str(),
                 ConsoleText(stringId, text).c_str());
}

void ShowAboutBox(intptr_t /*parentWindow*/, bool /*useModuleResources*/) {
    if (gSink) return gSink(kAboutBoxId, AboutText());
    GuiSession session;
    if (!session.Ok()) return; // nowhere to show it; the host still gets its answer
    QMessageBox::about(nullptr, "About FlyWORD Plumet", QString::fromStdString(AboutText()));
}
