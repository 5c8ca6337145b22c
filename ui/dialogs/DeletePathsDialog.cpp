#include "ui/dialogs/DeletePathsDialog.h"

#include "ui/dialogs/TemplateDialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QListWidget>

bool AskDeletePaths(QWidget* window, QComboBox* paths) {
    TemplateDialog dialog(149, window);
    QListWidget* list = qobject_cast<QListWidget*>(dialog.Controls().Get(1302));
    list->setAccessibleName("Custom paths");
    // The custom rows lie between the separator at 8 and the three last rows.
    const int n = paths->count();
    for (int i = 0; i < n - 12; ++i) {
        const int row = 9 + i;
        paths->setItemData(row, QVariant());
        auto* item = new QListWidgetItem(paths->itemText(row), list);
        item->setData(Qt::UserRole, row);
    }
    list->setFocus();
    QObject::connect(dialog.Controls().Button(1301), &QAbstractButton::clicked, list, [&] {
        for (int i = list->count() - 1; i >= 0; --i) {
            QListWidgetItem* item = list->item(i);
            if (!item->isSelected()) continue;
            paths->setItemData(item->data(Qt::UserRole).toInt(), kRowMarkedForDeletion);
            delete list->takeItem(i);
        }
    });
    return dialog.exec() == QDialog::Accepted;
}
