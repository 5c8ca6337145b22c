#include "ui/dialogs/RendererSettingsDialog.h"

#include "ui/controls/DialogControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <algorithm>

TQ3Boolean AskRendererSettings(TQ3DialogAnchor anchor, TQ3LightWorksSLSettings* settings) {
    QDialog dialog(static_cast<QWidget*>(anchor));
    dialog.setWindowTitle("Final Render Options");
    dialog.setFont(DialogControls::TemplateFont());
    auto* samples = new QComboBox;
    samples->addItem("None");
    for (int side = 2; side <= 8; ++side)
        samples->addItem(QString("%1 by %1 samples").arg(side));
    samples->setCurrentIndex(int(std::clamp<TQ3Uns32>(settings->samplesPerSide, 1, 8)) - 1);
    auto* adaptive = new QCheckBox("More samples along edges");
    adaptive->setChecked(settings->adaptive != kQ3False);
    // Edges are found by samples that disagree, which takes two or more.
    auto enableAdaptive = [samples, adaptive] {
        adaptive->setEnabled(samples->currentIndex() > 0);
    };
    QObject::connect(samples, &QComboBox::currentIndexChanged, adaptive, enableAdaptive);
    enableAdaptive();
    auto* shadows = new QCheckBox("Shadows of the lights");
    shadows->setChecked(settings->shadows != kQ3False);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

    // The form's labels are the buddies of their fields.
    auto* form = new QFormLayout(&dialog);
    form->addRow("&Anti-aliasing:", samples);
    form->addRow(QString(), adaptive);
    form->addRow(QString(), shadows);
    form->addRow(buttons);
    if (dialog.exec() != QDialog::Accepted) return kQ3False;
    settings->samplesPerSide = TQ3Uns32(samples->currentIndex() + 1);
    settings->adaptive = adaptive->isChecked() ? kQ3True : kQ3False;
    settings->shadows = shadows->isChecked() ? kQ3True : kQ3False;
    return kQ3True;
}
