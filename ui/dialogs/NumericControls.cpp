#include "ui/dialogs/NumericControls.h"

#include "host/ModuleState.h"
#include "resources/Menus.h"
#include "resources/Strings.h"
#include "ui/controls/DialogControls.h"
#include "ui/controls/NumericField.h"
#include "ui/window/VZarbesoWindow.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QTabWidget>
#include <cmath>

namespace {
constexpr int kFirstTextId = 1101, kLastTextId = 1133;
constexpr int kFirstCameraId = 1140, kLastCameraId = 1169;
constexpr double kDegrees = 57.29577951308232;

// The fields in the order they are filled: the Text tab, then the Camera
// tab with Angle last.
constexpr int kTextFields[] = {1109, 1110, 1111, 1112, 1113, 1114, 1115, 1116};
constexpr int kCameraFields[] = {1147, 1148, 1149, 1151, 1152, 1153, 1150};

int Whole(double v) {
    return static_cast<int>(std::floor(v + 0.5));
}
} // namespace

NumericControls::NumericControls(VZarbesoWindow_Win& window)
    : QDialog(window.Window()), w_(window) {
    setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setAttribute(Qt::WA_DeleteOnClose);
    controls_ = std::make_unique<DialogControls>(
        *plumet::FindDialogTemplate(plumet::kDialogNumericControls), this);
    setFixedSize(size());
    setWindowTitle(QString::fromStdString(plumet::LoadString(plumet::kStrNumericControlsTitle)));

    auto apply = [this](int id, float value, bool redraw) {
        // The field being typed in is not written over by the broadcast.
        w_.fillingNumericControls = true;
        w_.ApplyNumericValue(id, value, redraw);
        w_.fillingNumericControls = false;
    };
    auto model = [this](int id) { return ModelValue(w_, id); };
    for (int id : kTextFields)
        fields_[id] =
            std::make_unique<NumericField>(*controls_, *plumet::FindNumericField(id), apply, model);
    FillTextField(-1);
    for (int id : kCameraFields)
        fields_[id] =
            std::make_unique<NumericField>(*controls_, *plumet::FindNumericField(id), apply, model);
    FillCameraPage();

    QTabWidget* tabs = controls_->Tabs(1100);
    for (const std::string& item : plumet::MenuRows(plumet::kMenuNumericTabs))
        tabs->addTab(new QWidget, QString::fromStdString(item));
    connect(tabs, &QTabWidget::currentChanged, this, [this] { SwitchPage(); });
    connect(controls_->Button(1133), &QAbstractButton::clicked, this, [this] {
        if (controls_->Get(1133)->hasFocus())
            ResetText();
        else
            w_.ClearRender(false), w_.Redraw();
    });
    connect(controls_->Button(1169), &QAbstractButton::clicked, this, [this] {
        if (controls_->Get(1169)->hasFocus())
            ResetCamera();
        else
            fields_[1150]->Commit();
    });
    SwitchPage();
}

NumericControls::~NumericControls() {
    if (gNumericControls == this) gNumericControls = nullptr;
}

NumericField* NumericControls::Field(int id) const {
    auto it = fields_.find(id);
    return it == fields_.end() ? nullptr : it->second.get();
}

int NumericControls::CurrentPage() const {
    return controls_->Tabs(1100)->currentIndex();
}

void NumericControls::SelectPage(int page) {
    if (CurrentPage() != page) controls_->Tabs(1100)->setCurrentIndex(page);
}

void NumericControls::SwitchPage() {
    const int page = CurrentPage();
    controls_->ShowRange(kFirstTextId, kLastTextId, page == kTextPage);
    controls_->ShowRange(kFirstCameraId, kLastCameraId, page == kCameraPage);
    // The shown page's Reset All is the default button, and has the focus.
    auto* reset = qobject_cast<QPushButton*>(controls_->Get(page == kTextPage ? 1133 : 1169));
    reset->setDefault(true);
    reset->setFocus();
}

int NumericControls::ModelValue(VZarbesoWindow_Win& window, int id) {
    VZarbesoView& view = *window.GetView();
    if (id >= 1109 && id <= 1116) {
        const TextLayoutValue which = VZarbesoWindow_Win::LayoutOfField(id);
        return static_cast<int>(view.GetLayout(which));
    }
    TQ3Matrix4x4 pan;
    view.GetAll(nullptr, nullptr, &pan);
    switch (id) {
    case 1147:
    case 1148:
    case 1149:
        return Whole(pan.value[3][id - 1147] * 5.0);
    case 1150:
        return Whole(view.GetFieldOfView());
    case 1151:
        return Whole(window.roll);
    case 1152:
        return Whole(window.orbitX);
    case 1153:
        return Whole(window.orbitY);
    default:
        return 0;
    }
}

void NumericControls::FillTextField(int id) {
    if (w_.fillingNumericControls) return;
    for (int field : kTextFields)
        if (id == -1 || id == field) fields_[field]->Show(ModelValue(w_, field));
}

void NumericControls::FillCameraPage() {
    w_.UpdateCameraAngles();
    for (int field : kCameraFields)
        fields_[field]->Show(ModelValue(w_, field));
}

void NumericControls::ResetText() {
    w_.suspendRedraw = true;
    for (const auto& field : w_.textDefaults)
        if (field[0]) w_.ApplyNumericValue(field[0], float(field[1]), true);
    w_.suspendRedraw = false;
    FillTextField(-1);
    w_.ClearRender(false);
    w_.Redraw();
}

void NumericControls::ResetCamera() {
    // The Home view, from the View combo's first row.
    w_.SelectViewRow(0);
    w_.UpdateControls();
}

void NumericControls::closeEvent(QCloseEvent* event) {
    if (gNumericControls == this) gNumericControls = nullptr;
    QDialog::closeEvent(event);
}

NumericControls* OpenNumericControls(VZarbesoWindow_Win& window, NumericControls* open) {
    if (open) {
        open->show();
        open->raise();
        open->activateWindow();
        return open;
    }
    auto* dialog = new NumericControls(window);
    gNumericControls = dialog;
    dialog->show();
    return dialog;
}
