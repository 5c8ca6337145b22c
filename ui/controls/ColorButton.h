// A button that shows a colour: its face is filled with the colour, and a
// click asks for a new one.
#pragma once

#include <QPushButton>
#include <array>
#include <cstdint>

class ColorButton : public QPushButton {
  public:
    explicit ColorButton(QWidget* parent = nullptr);

    // Takes the high byte of each 16-bit component, as the face is drawn.
    void SetColor(const std::array<std::uint16_t, 3>& color);
    QColor Color() const { return color_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_ = Qt::black;
};
