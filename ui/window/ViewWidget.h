// The child window that carries the 3D view: it shows the view's picture,
// and hands presses, drags and releases with the modifier keys to the tools.
#pragma once

#include <QWidget>
#include <cstdint>

class VZarbesoWindow_Win;

class ViewWidget : public QWidget {
  public:
    ViewWidget(VZarbesoWindow_Win& window, QWidget* parent);

    // The modifier bits the tools read: Ctrl 1, Shift 2, Alt 4.
    static std::uint16_t ToolModifiers(Qt::KeyboardModifiers modifiers);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void Press(QMouseEvent* event, short clicks);

    VZarbesoWindow_Win& window_;
};
