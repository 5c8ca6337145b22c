#include "ui/dialogs/NamingDialog.h"

#include "ui/dialogs/TemplateDialog.h"

#include <QLineEdit>

namespace {
bool AskName(int templateId, int editId, QWidget* window, std::string& name) {
    TemplateDialog dialog(templateId, window);
    QLineEdit* edit = dialog.Controls().Edit(editId);
    edit->setMaxLength(kMaxCustomNameLength);
    edit->setText(QString::fromLatin1(name.c_str()));
    edit->selectAll();
    edit->setFocus();
    if (dialog.exec() != QDialog::Accepted) return false;
    const std::string typed = edit->text().toLatin1().toStdString();
    if (typed.empty()) return false;
    name = typed;
    return true;
}
} // namespace

bool AskCustomViewName(QWidget* window, std::string& name) {
    return AskName(144, 1200, window, name);
}

bool AskCustomPathName(QWidget* window, std::string& name) {
    return AskName(147, 1201, window, name);
}
