#include "ui/pages/SurfacePage.h"

#include "ui/controls/ColorButton.h"
#include "ui/controls/NumericField.h"
#include "ui/pages/ColorPicker.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>

std::string ChooseTextureFile() {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), QString(), QString(),
                                        "Bitmap files (*.bmp);;Pictures (*.bmp *.png *.jpg *.jpeg)")
        .toStdString();
}

SurfacePage::SurfacePage(VZarbesoWindow_Win& window) : WindowPage(window) {}
SurfacePage::~SurfacePage() = default;

void SurfacePage::Init() {
    QComboBox* surfaces = Controls().Combo(1082);
    QObject::connect(surfaces, &QComboBox::activated, surfaces,
                     [this](int row) { SurfaceSelected(row); });
    QObject::connect(Controls().Button(1084), &QAbstractButton::clicked,
                     [this] { ColorClicked(true); });
    QObject::connect(Controls().Button(1086), &QAbstractButton::clicked,
                     [this] { ColorClicked(false); });
    QObject::connect(Controls().Button(1087), &QAbstractButton::clicked, [this](bool on) {
        w_.SetLink(on);
        w_.UpdateControls();
        Changed();
    });
    transparency_ = std::make_unique<NumericField>(
        Controls(), *plumet::FindNumericField(1089),
        [this](int, float value, bool redraw) {
            if (w_.SetTransparency(static_cast<std::int32_t>(value)) && redraw) Changed();
        },
        [this](int) { return static_cast<int>(100.0f - View().GetOpacity()); });
}

void SurfacePage::Fill() {
    DialogControls& c = Controls();
    ShowRows(c.Combo(1082), w_.GetSurfaceRows(), w_.controls.surfaceRow);
    c.Color(1084)->SetColor(View().GetFaceColor());
    c.Color(1086)->SetColor(View().GetSideColor());
    c.SetChecked(1087, w_.controls.link != 0);
    // Colours count only without a texture.
    for (int id = 1083; id <= 1087; ++id)
        c.Get(id)->setEnabled(w_.controls.surfaceRow == kSurfaceRowColor);
    if (!c.Combo(1089)->lineEdit()->hasFocus()) transparency_->Repair();
}

void SurfacePage::SurfaceSelected(int row) {
    if (row == Controls().Combo(1082)->count() - 1) {
        // "New Texture...": a picture of the user's own.
        w_.AddCustomTexture(ChooseTextureFile());
    } else {
        w_.SelectSurfaceRow(row);
    }
    w_.UpdateControls();
}

void SurfacePage::ColorClicked(bool faces) {
    std::array<std::uint16_t, 3> color = faces ? View().GetFaceColor() : View().GetSideColor();
    if (!PickColor(w_.Window(), color)) return;
    if (faces)
        w_.SetFaceColor(color);
    else
        w_.SetSideColor(color);
    w_.UpdateControls();
    Changed();
}
