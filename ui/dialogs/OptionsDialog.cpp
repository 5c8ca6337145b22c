#include "ui/dialogs/OptionsDialog.h"

#include "ui/dialogs/TemplateDialog.h"

#include <QAbstractButton>
#include <algorithm>

bool AskOptions(QWidget* window, bool& showTooltips, int& size,
                const std::function<void()>& reset) {
    TemplateDialog dialog(154, window);
    DialogControls& c = dialog.Controls();
    // Small, Medium, Large are 1310 to 1312 for the sizes 2 to 4.
    c.SetChecked(1310 + std::clamp(size, 2, 4) - 2, true);
    c.SetChecked(1313, showTooltips);
    QObject::connect(c.Button(1314), &QAbstractButton::clicked, &dialog, [&reset] { reset(); });
    if (dialog.exec() == QDialog::Accepted) {
        for (int id = 1310; id <= 1312; ++id)
            if (c.IsChecked(id)) size = id - 1310 + 2;
        showTooltips = c.IsChecked(1313);
    }
    return true;
}
