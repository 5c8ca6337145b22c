#include "ui/window/ViewRow.h"

#include "host/Alerts.h"
#include "resources/Menus.h"
#include "resources/Strings.h"
#include "ui/controls/DialogControls.h"
#include "ui/dialogs/NamingDialog.h"
#include "ui/pages/WindowPage.h"
#include "ui/window/VZarbesoWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>

ViewRow::ViewRow(VZarbesoWindow_Win& window) : w_(window) {}

DialogControls& ViewRow::Controls() const {
    return w_.Controls();
}

void ViewRow::Init() {
    QComboBox* views = Controls().Combo(1026);
    views->view()->window()->installEventFilter(this);
    connect(views, &QComboBox::activated, this, [this](int row) { ViewSelected(row); });
    for (int id = 1027; id <= 1031; ++id)
        connect(Controls().Button(id), &QAbstractButton::clicked, this, [this, id](bool on) {
            w_.SetSwitch(VZarbesoWindow_Win::SwitchOf(id), on);
            w_.ClearRender(false);
            w_.Redraw();
        });
}

void ViewRow::Fill() {
    ShowRows(Controls().Combo(1026), w_.GetViewRows(), w_.controls.viewRow);
    for (int id = 1027; id <= 1031; ++id)
        Controls().SetChecked(id, w_.GetSwitch(VZarbesoWindow_Win::SwitchOf(id)));
}

bool ViewRow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        const std::string text = event->type() == QEvent::Show
                                     ? plumet::kSeparatorRow
                                     : plumet::LoadString(plumet::kStrCustomViewRow);
        Controls().Combo(1026)->setItemText(kViewRowCustom, QString::fromStdString(text));
    }
    return QObject::eventFilter(watched, event);
}

void ViewRow::ViewSelected(int row) {
    if (row == Controls().Combo(1026)->count() - 1) {
        if (w_.GetCustomViewCount() == kMaxCustomViews)
            ShowAlert(plumet::kStrCustomViewLimit, w_.Window());
        SetView();
    } else {
        w_.SelectViewRow(row);
    }
    w_.UpdateControls();
}

void ViewRow::SetView() {
    std::string name = w_.ProposeCustomViewName();
    if (!AskCustomViewName(w_.Window(), name)) return;
    const int found = w_.FindViewRow(name);
    if (found < 0) {
        w_.AddCustomView(name);
        return;
    }
    switch (AskYesNoCancel(plumet::LoadString(plumet::kStrReplaceView) + name + " ?", w_.Window(),
                           plumet::kStrReplaceView)) {
    case kAnswerYes:
        w_.ReplaceCustomView(found);
        break;
    case kAnswerNo:
        SetView();
        break;
    default:
        break;
    }
}
