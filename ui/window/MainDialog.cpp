#include "ui/window/MainDialog.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

MainDialog::MainDialog(CommandHandler handler) : handler_(std::move(handler)) {
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
}

void MainDialog::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && event->modifiers() == Qt::NoModifier) {
        // (the window's own focus: the key came from there, whether or not
        // the window is the active one)
        auto* button = qobject_cast<QPushButton*>(focusWidget());
        if (button && button->objectName() != "1017" && isAncestorOf(button))
            button->click();
        else
            handler_(1);
        return;
    }
    if (key == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        handler_(2);
        return;
    }
    QDialog::keyPressEvent(event);
}

void MainDialog::closeEvent(QCloseEvent* event) {
    // The window goes only through the end of the run, never by itself.
    event->ignore();
    handler_(2);
}

void MainDialog::reject() {
    handler_(2);
}
