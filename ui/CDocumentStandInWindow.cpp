#include "ui/CDocumentStandInWindow.h"

#include "host/ModuleState.h"
#include "ui/VZarbesoDocument.h"

#include <QDialog>

CDocumentStandInWindow::CDocumentStandInWindow()
    : document_(std::make_unique<VZarbesoDocument>(true)) {
    document_->InitControls();
    document_->ApplyWorkspace();
    document_->BindImage(false);
    // The dialog ends the loop when it finishes; its verdict comes first.
    if (auto* dialog = qobject_cast<QDialog*>(window_.Widget())) {
        QObject::connect(dialog, &QDialog::accepted, [this] { End(true); });
        QObject::connect(dialog, &QDialog::rejected, [this] { End(false); });
    }
}

CDocumentStandInWindow::~CDocumentStandInWindow() = default;

QWidget* CDocumentStandInWindow::Widget() {
    return window_.Widget();
}

void CDocumentStandInWindow::End(bool confirmed) {
    if (!document_) return;
    if (confirmed) document_->ConfirmRun();
    // Both ends leave a repeat of the filter to run without the window.
    if (gPluginParameters) gPluginParameters->invocation = 0;
    document_.reset();
}

WFilterWindow* CDocumentStandInWindow::Make(intptr_t, int16) {
    return new CDocumentStandInWindow();
}
