#include "host/Alerts.h"

#include "host/GuiSession.h"
#include "resources/Strings.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>

namespace {
MessageSink gSink = nullptr;
QuestionSink gQuestionSink = nullptr;
AboutBoxRunner gAboutBox = nullptr;

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

QString Title() {
    return QString::fromStdString(plumet::LoadString(plumet::kStrAlertTitle));
}

int Ask(const std::string& text, QWidget* parent, int stringId, const QString& title,
        QMessageBox::Icon icon, QMessageBox::StandardButtons buttons) {
    if (gQuestionSink) return gQuestionSink(stringId, text);
    if (!GuiSession::Active()) return kAnswerNo;
    QMessageBox box(icon, title, QString::fromStdString(text), buttons, parent);
    box.setWindowModality(Qt::ApplicationModal);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return kAnswerYes;
    case QMessageBox::No:
        return kAnswerNo;
    default:
        return kAnswerCancel;
    }
}
} // namespace

void SetMessageSink(MessageSink sink) {
    gSink = sink;
}

void SetQuestionSink(QuestionSink sink) {
    gQuestionSink = sink;
}

void SetAboutBoxRunner(AboutBoxRunner runner) {
    gAboutBox = runner;
}

void ShowAlert(int stringId, QWidget* parent) {
    ShowAlertText(stringId, plumet::LoadString(stringId), parent);
}

void ShowAlertText(int stringId, const std::string& text, QWidget* parent) {
    if (gSink) return gSink(stringId, text);
    if (GuiSession::Active()) {
        QMessageBox box(QMessageBox::Critical, Title(), QString::fromStdString(text),
                        QMessageBox::Ok, parent);
        box.setWindowModality(Qt::ApplicationModal);
        box.exec();
        return;
    }
    std::fprintf(stderr, "%s: %s\n", plumet::LoadString(plumet::kStrAlertTitle).c_str(),
                 ConsoleText(stringId, text).c_str());
}

int AskYesNo(int stringId, QWidget* parent) {
    return Ask(plumet::LoadString(stringId), parent, stringId, kQuestionTitle, QMessageBox::Warning,
               QMessageBox::Yes | QMessageBox::No);
}

int AskYesNoCancel(const std::string& text, QWidget* parent, int stringId) {
    return Ask(text, parent, stringId, Title(), QMessageBox::NoIcon,
               QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

void ShowAboutBox(intptr_t parentWindow, bool /*useModuleResources*/) {
    if (gSink) return gSink(kAboutBoxId, AboutText());
    GuiSession session;
    if (!session.Ok()) return; // nowhere to show it; the host still gets its answer
    if (gAboutBox) return gAboutBox(parentWindow);
    QMessageBox::about(nullptr, "About FlyWORD Plumet", QString::fromStdString(AboutText()));
}
