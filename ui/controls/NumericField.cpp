#include "ui/controls/NumericField.h"

#include "resources/Menus.h"
#include "ui/controls/DialogControls.h"
#include "ui/controls/NumberEntry.h"
#include "ui/controls/SpinArrows.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace {
int gBeeps = 0;
}

NumericField::NumericField(DialogControls& controls, const plumet::NumericFieldSpec& spec,
                           Apply apply, ModelValue model)
    : spec_(spec), combo_(controls.Combo(spec.comboId)), spin_(controls.Spin(spec.spinId)),
      apply_(std::move(apply)), model_(std::move(model)) {
    for (const std::string& row : plumet::MenuRows(spec.listMenu))
        combo_->addItem(QString::fromStdString(row));
    combo_->setCurrentIndex(spec.firstRow);
    combo_->setMaxVisibleItems(12);
    QLineEdit* edit = combo_->lineEdit();
    connect(edit, &QLineEdit::textEdited, this, [this] { Entry(true); });
    connect(combo_, &QComboBox::activated, this, [this](int row) {
        bool ok = false;
        const float value = combo_->itemText(row).toFloat(&ok);
        if (ok) apply_(spec_.comboId, value, true);
    });
    if (spin_) connect(spin_, &SpinArrows::stepped, this, &NumericField::Step);
    edit->installEventFilter(this);
    combo_->installEventFilter(this);
}

int NumericField::BeepCount() {
    return gBeeps;
}

void NumericField::Beep() {
    ++gBeeps;
    QApplication::beep();
}

void NumericField::Show(int value) {
    QLineEdit* edit = combo_->lineEdit();
    edit->setText(QString::number(value));
    edit->setCursorPosition(int(edit->text().size()));
}

void NumericField::Repair() {
    Show(model_(spec_.comboId));
}

void NumericField::Commit() {
    Entry(false);
}

void NumericField::Entry(bool typing) {
    const std::string text = combo_->lineEdit()->text().toStdString();
    const EntryResult r = CheckNumberEntry(text, spec_.low, spec_.high, typing);
    switch (r.action) {
    case EntryAction::Apply:
        apply_(spec_.comboId, float(r.value), true);
        if (typing && NeedsRewrite(text, r.value)) {
            Beep();
            Show(r.value);
        }
        break;
    case EntryAction::Clear:
        combo_->lineEdit()->clear();
        Beep();
        break;
    case EntryAction::Trim:
        // The number alone stands in the field, and is checked as typed.
        Beep();
        Show(r.value);
        if (typing) Entry(true);
        break;
    case EntryAction::Repair:
        Beep();
        Repair();
        break;
    case EntryAction::Stand:
        break;
    }
    if (!typing) Repair();
}

void NumericField::Step(int delta) {
    bool ok = false;
    int value = combo_->lineEdit()->text().trimmed().toInt(&ok);
    if (!ok) value = model_(spec_.comboId);
    value = SpinStep(value, delta, spec_.low, spec_.high, spec_.wraps);
    apply_(spec_.comboId, float(value), true);
    Show(value);
}

bool NumericField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && watched == combo_->lineEdit()) {
        // A popup of the combo's own list takes the focus without leaving.
        if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) Commit();
    } else if (event->type() == QEvent::KeyPress) {
        // Up and Down step the value as the arrows beside it do.
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() == Qt::NoModifier &&
            (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
            Step(key->key() == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
