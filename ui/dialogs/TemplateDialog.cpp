#include "ui/dialogs/TemplateDialog.h"

#include "resources/Strings.h"

#include <QAbstractButton>
#include <QTimer>

namespace {
TemplateDialog::Observer gObserver = nullptr;
}

TemplateDialog::TemplateDialog(int templateId, QWidget* parent)
    : QDialog(parent), controls_(*plumet::FindDialogTemplate(templateId), this) {
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setFixedSize(size());
    if (controls_.Template().titleId)
        setWindowTitle(QString::fromStdString(plumet::LoadString(controls_.Template().titleId)));
    if (QAbstractButton* ok = controls_.Button(1))
        connect(ok, &QAbstractButton::clicked, this, [this] {
            if (!okCheck_ || okCheck_()) accept();
        });
    if (QAbstractButton* cancel = controls_.Button(2))
        connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
}

void TemplateDialog::SetObserver(Observer observer) {
    gObserver = observer;
}

int TemplateDialog::exec() {
    if (gObserver) QTimer::singleShot(0, this, [this] { gObserver(this); });
    return QDialog::exec();
}
