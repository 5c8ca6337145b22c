#include "ui/controls/ColorButton.h"

#include <QPainter>

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {}

void ColorButton::SetColor(const std::array<std::uint16_t, 3>& color) {
    color_ = QColor(color[0] >> 8, color[1] >> 8, color[2] >> 8);
    setToolTip(color_.name());
    update();
}

void ColorButton::paintEvent(QPaintEvent* event) {
    QPushButton::paintEvent(event);
    QPainter p(this);
    const QRect swatch = rect().adjusted(4, 4, -4, -4);
    p.fillRect(swatch, isEnabled() ? color_ : palette().color(QPalette::Button));
    p.setPen(palette().color(isEnabled() ? QPalette::WindowText : QPalette::Mid));
    p.drawRect(swatch.adjusted(0, 0, -1, -1));
}
