#include "ui/window/ViewWidget.h"

#include "resources/Strings.h"
#include "ui/window/VZarbesoWindow.h"

#include <QMouseEvent>
#include <QPainter>

ViewWidget::ViewWidget(VZarbesoWindow_Win& window, QWidget* parent)
    : QWidget(parent), window_(window) {
    setObjectName("qd3d");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
    setCursor(Qt::ArrowCursor);
    setAccessibleName(QString::fromStdString(plumet::LoadString(plumet::kStrViewName)));
}

std::uint16_t ViewWidget::ToolModifiers(Qt::KeyboardModifiers modifiers) {
    std::uint16_t bits = 0;
    if (modifiers & Qt::ControlModifier) bits |= 1;
    if (modifiers & Qt::ShiftModifier) bits |= 2;
    if (modifiers & Qt::AltModifier) bits |= 4;
    return bits;
}

void ViewWidget::paintEvent(QPaintEvent*) {
    QPainter p(this);
    VZarbesoView* view = window_.GetView();
    PISurface* surface = view ? view->GetSurface() : nullptr;
    if (!surface || !surface->pixels || surface->width <= 0 || surface->height <= 0) {
        p.fillRect(rect(), Qt::black);
        return;
    }
    const QImage image(reinterpret_cast<const uchar*>(surface->pixels), surface->width,
                       surface->height, surface->rowBytes, QImage::Format_RGB32);
    p.drawImage(0, 0, image);
    if (image.width() < width() || image.height() < height()) {
        p.fillRect(image.width(), 0, width() - image.width(), height(), Qt::black);
        p.fillRect(0, image.height(), image.width(), height() - image.height(), Qt::black);
    }
}

void ViewWidget::Press(QMouseEvent* event, short clicks) {
    if (event->button() != Qt::LeftButton) return;
    setFocus(Qt::MouseFocusReason);
    window_.MouseDown(event->position().toPoint(), ToolModifiers(event->modifiers()), clicks);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    Press(event, 1);
}

void ViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    Press(event, 2);
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        window_.MouseMove(event->position().toPoint(), ToolModifiers(event->modifiers()));
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        window_.MouseUp(event->position().toPoint(), ToolModifiers(event->modifiers()));
}
