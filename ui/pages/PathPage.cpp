#include "ui/pages/PathPage.h"

#include "curves/VAnalyticPathTable.h"
#include "host/Alerts.h"
#include "resources/Strings.h"
#include "ui/controls/NumericField.h"
#include "ui/dialogs/DeletePathsDialog.h"
#include "ui/dialogs/NamingDialog.h"
#include "ui/window/ToolTable.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <cstring>

namespace {
// The label of a value among the three that share its place.
int LabelFor(const char* text, bool first) {
    static const char* const kFirst[] = {"Height:", "Pitch:", "Wavelength:"};
    static const char* const kSecond[] = {"Width:", "Radius:", "Amplitude:"};
    for (int i = 0; i < 3; ++i)
        if (std::strcmp((first ? kFirst : kSecond)[i], text) == 0) return (first ? 1052 : 1057) + i;
    return 0;
}
} // namespace

PathPage::PathPage(VZarbesoWindow_Win& window) : WindowPage(window) {}
PathPage::~PathPage() = default;

void PathPage::Init() {
    QComboBox* paths = Controls().Combo(1051);
    QObject::connect(paths, &QComboBox::activated, paths, [this](int row) { PathSelected(row); });
    QObject::connect(Controls().Button(1062), &QAbstractButton::clicked, [this] { Convert(); });
    auto apply = [this](int id, float value, bool redraw) {
        w_.SetPathValue(id == 1056 ? 1 : 2, value, redraw);
    };
    auto model = [this](int id) {
        const int number = w_.controls.pathRow + 1;
        if (number < 1 || number > kAnalyticPathCount) return 0;
        return w_.pathValues[number][id == 1056 ? 0 : 1];
    };
    first_ =
        std::make_unique<NumericField>(Controls(), *plumet::FindNumericField(1056), apply, model);
    second_ =
        std::make_unique<NumericField>(Controls(), *plumet::FindNumericField(1061), apply, model);
}

void PathPage::Fill() {
    ShowRows(Controls().Combo(1051), w_.GetPathRows(), w_.controls.pathRow);
    if (Controls().Combo(1051)->isVisible()) ShowPathControls();
}

void PathPage::ShowPathControls() {
    DialogControls& c = Controls();
    const int row = c.Combo(1051)->currentIndex();
    const VPathRowKind kind = w_.GetPathRowKind(row);
    c.ShowRange(1052, 1070, false);
    if (kind == VPathRowKind::kAnalytic) {
        c.Show(1062, true);
        const VAnalyticPathEntry* entry = GetAnalyticPathEntry(row + 1);
        if (entry && entry->rowCount == 2) {
            // The label shown names its field.
            for (int which = 0; which < 2; ++which) {
                QLabel* label = c.Label(LabelFor(entry->rows[which].label, which == 0));
                QWidget* field = c.Get(which == 0 ? 1056 : 1061);
                label->show();
                label->setBuddy(field);
                field->setAccessibleName(label->text());
            }
            for (int id : {1055, 1056, 1060, 1061})
                c.Show(id, true);
            first_->Show(w_.pathValues[row + 1][0]);
            second_->Show(w_.pathValues[row + 1][1]);
        }
    } else if (kind == VPathRowKind::kCustom) {
        c.ShowRange(1063, 1066, true);
        if (w_.drawingPath) {
            c.Show(1067, true);
            c.Show(1068, true);
            c.Show(w_.polygonNotStar ? 1069 : 1070, true);
        }
    }
    // A checked tool whose button is hidden gives way to the light tool.
    const int first = kind == VPathRowKind::kCustom ? 1067 : kFirstPathToolButton;
    for (int id = first; id <= kLastPathToolButton; ++id)
        if (c.IsChecked(id) && c.Get(id)->isHidden()) {
            w_.SelectToolButton(1001);
            w_.SetTool(12);
            break;
        }
}

void PathPage::PathSelected(int row) {
    switch (w_.GetPathRowKind(row)) {
    case VPathRowKind::kNewPath:
        NewPath();
        break;
    case VPathRowKind::kDeletePath:
        DeletePaths();
        break;
    default:
        w_.SelectPathRow(row);
        break;
    }
    w_.UpdateControls();
    w_.SetTool(w_.currentTool);
}

bool PathPage::AskNewPathName(std::string& name) {
    for (;;) {
        name = w_.ProposeCustomPathName();
        if (!AskCustomPathName(w_.Window(), name)) return false;
        const int found = w_.FindPathRow(name);
        if (found < 0) return true;
        const int answer = AskYesNoCancel(plumet::LoadString(plumet::kStrReplacePath) + name + " ?",
                                          w_.Window(), plumet::kStrReplacePath);
        if (answer == kAnswerCancel) return false;
        // Only a custom path gives way; the name of a built-in row is asked
        // again.
        if (answer == kAnswerYes && w_.GetPathRowKind(found) == VPathRowKind::kCustom) {
            w_.DeleteCustomPathRows({found});
            return true;
        }
    }
}

void PathPage::NewPath() {
    std::string name;
    if (!AskNewPathName(name) || !w_.NewCustomPath(name)) return;
    w_.UpdateControls();
    ShowPathControls();
    w_.SelectToolButton(1067);
    w_.SetTool(12);
    w_.SetTool(15);
}

void PathPage::Convert() {
    std::string name;
    if (!AskNewPathName(name)) return;
    w_.ConvertPath(name);
    w_.UpdateControls();
    w_.SelectToolButton(1063);
    w_.SetTool(13);
}

void PathPage::DeletePaths() {
    QComboBox* paths = Controls().Combo(1051);
    if (View().GetCustomPathCount() == 0 || !AskDeletePaths(w_.Window(), paths)) return;
    std::vector<std::int32_t> rows;
    for (int row = 0; row < paths->count(); ++row)
        if (paths->itemData(row).toInt() == kRowMarkedForDeletion) rows.push_back(row);
    if (!rows.empty()) w_.DeleteCustomPathRows(rows);
}
