#include "ui/dialogs/AboutBox.h"

#include "ui/controls/DialogControls.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAccessibleName("About FlyWORD Plumet");
    DialogControls controls(*plumet::FindDialogTemplate(plumet::kDialogAbout), this);
    // The window is the size of its picture.
    setFixedSize(controls.Get(1316)->size());
    if (QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

void AboutBox::mousePressEvent(QMouseEvent*) {
    accept();
}

void AboutBox::keyPressEvent(QKeyEvent*) {
    accept();
}

bool RunAboutBox(QWidget* parent) {
    AboutBox box(parent);
    return box.exec() == QDialog::Accepted;
}

AboutBox* OpenSplash() {
    auto* splash = new AboutBox(nullptr);
    splash->show();
    splash->repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return splash;
}
