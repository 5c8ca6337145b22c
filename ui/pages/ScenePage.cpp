#include "ui/pages/ScenePage.h"

#include "ui/controls/ColorButton.h"
#include "ui/controls/NumericField.h"
#include "ui/pages/ColorPicker.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

ScenePage::ScenePage(VZarbesoWindow_Win& window) : WindowPage(window) {}
ScenePage::~ScenePage() = default;

void ScenePage::Init() {
    QObject::connect(Controls().Button(1092), &QAbstractButton::clicked,
                     [this] { AmbienceClicked(); });
    intensity_ = std::make_unique<NumericField>(
        Controls(), *plumet::FindNumericField(1095),
        [this](int, float value, bool redraw) {
            if (w_.SetIntensity(static_cast<std::int32_t>(value)) && redraw) Changed();
        },
        [this](int) {
            return static_cast<int>(View().GetSceneManager()->GetAmbientBrightness() * 100.0f +
                                    0.5f);
        });
    QComboBox* renderers = Controls().Combo(1097);
    renderers->view()->setMinimumWidth(180);
    QObject::connect(renderers, &QComboBox::activated, renderers, [this](int row) {
        w_.SelectRendererRow(row);
        w_.UpdateControls();
    });
    QObject::connect(Controls().Button(1098), &QAbstractButton::clicked,
                     [this] { ConfigureClicked(); });
}

void ScenePage::Fill() {
    DialogControls& c = Controls();
    const std::uint16_t* a = View().GetSceneManager()->ambientColor;
    c.Color(1092)->SetColor({a[0], a[1], a[2]});
    if (!c.Combo(1095)->lineEdit()->hasFocus()) intensity_->Repair();
    const std::vector<std::string> names = w_.GetRendererRows();
    ShowRows(c.Combo(1097), names, w_.controls.rendererRow);
    // Without renderers there is nothing to choose or to preview.
    for (int id : {1096, 1097, 1098, 1021})
        c.Get(id)->setEnabled(!names.empty());
    if (!names.empty()) c.Get(1098)->setEnabled(w_.GetRenderer()->FinalHasConfigure());
}

void ScenePage::AmbienceClicked() {
    const std::uint16_t* a = View().GetSceneManager()->ambientColor;
    std::array<std::uint16_t, 3> color = {a[0], a[1], a[2]};
    if (!PickColor(w_.Window(), color)) return;
    w_.SetAmbientColor(color);
    w_.UpdateControls();
    Changed();
}

void ScenePage::ConfigureClicked() {
    if (!w_.GetRenderer()->FinalHasConfigure()) return;
    // The renderer's own dialog stands over the main window.
    w_.GetRenderer()->ConfigureFinal(static_cast<TQ3DialogAnchor>(w_.Window()));
    Changed();
}
