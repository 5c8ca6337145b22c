#include "ui/pages/WindowPage.h"

#include <QComboBox>

void ShowRows(QComboBox* combo, const std::vector<std::string>& rows, int row) {
    const QSignalBlocker block(combo);
    bool same = combo->count() == int(rows.size());
    for (int i = 0; same && i < combo->count(); ++i)
        same = combo->itemText(i).toStdString() == rows[std::size_t(i)];
    if (!same) {
        combo->clear();
        for (const std::string& r : rows)
            combo->addItem(QString::fromLatin1(r.c_str()));
    }
    combo->setCurrentIndex(row);
}
