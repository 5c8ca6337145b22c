#include "ui/dialogs/PolygonOptionsDialog.h"

#include "host/Alerts.h"
#include "resources/Strings.h"
#include "ui/dialogs/TemplateDialog.h"

#include <QLineEdit>
#include <cstdio>

bool AskPolygonOptions(QWidget* window, bool& polygonNotStar, int& sides) {
    TemplateDialog dialog(148, window);
    DialogControls& c = dialog.Controls();
    c.SetChecked(polygonNotStar ? 1210 : 1211, true);
    QLineEdit* field = c.Edit(1212);
    field->setText(QString::number(sides < 4 ? 4 : sides));
    int count = sides;
    dialog.SetOkCheck([&] {
        // A text that does not start with a number keeps the count the
        // dialog opened with.
        int typed = count;
        std::sscanf(field->text().toLatin1().constData(), "%d", &typed);
        if (typed < 3) {
            ShowAlert(plumet::kStrSidesAtLeast3, nullptr);
            return false;
        }
        if (typed > 20) {
            ShowAlert(plumet::kStrSidesAtMost20, nullptr);
            return false;
        }
        count = typed;
        return true;
    });
    if (dialog.exec() != QDialog::Accepted) return false;
    polygonNotStar = c.IsChecked(1210);
    sides = count;
    return true;
}
