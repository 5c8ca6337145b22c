#include "host/CStandInWindow.h"

#include "host/ModalRun.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

CStandInWindow::CStandInWindow() {
    // A dialog, so that Return means OK and Escape or closing means Cancel.
    auto* dialog = new QDialog();
    widget_.reset(dialog);
    widget_->setWindowTitle("FlyWORD Plumet");
    widget_->setObjectName("ZARBESO");
    auto* layout = new QVBoxLayout(widget_.get());
    layout->addWidget(new QLabel("FlyWORD Plumet"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    QObject::connect(dialog, &QDialog::finished, [](int result) {
        PostQuit(result == QDialog::Accepted ? kQuitOK : kQuitCancel);
    });
}

CStandInWindow::~CStandInWindow() = default;

QWidget* CStandInWindow::Widget() {
    return widget_.get();
}

WFilterWindow* CStandInWindow::Make(intptr_t, int16) {
    return new CStandInWindow();
}
