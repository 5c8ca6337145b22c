#include "ui/controls/SpinArrows.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QTimer>

SpinArrows::SpinArrows(QWidget* parent) : QWidget(parent), repeat_(new QTimer(this)) {
    setFocusPolicy(Qt::NoFocus);
    // A held arrow repeats after a pause, then quickly.
    connect(repeat_, &QTimer::timeout, this, [this] {
        repeat_->setInterval(80);
        if (pressed_) emit stepped(pressed_);
    });
}

void SpinArrows::paintEvent(QPaintEvent*) {
    QPainter p(this);
    // Only the arrows: the field beside them is the combo.
    const int h = height() / 2;
    for (int half = 0; half < 2; ++half) {
        const QRect r(0, half * h, width(), half ? height() - h : h);
        QStyleOption button;
        button.initFrom(this);
        button.rect = r;
        button.state |= pressed_ == (half ? -1 : 1) ? QStyle::State_Sunken : QStyle::State_Raised;
        style()->drawPrimitive(QStyle::PE_PanelButtonBevel, &button, &p, this);
        button.rect = r.adjusted(1, 1, -1, -1);
        style()->drawPrimitive(half ? QStyle::PE_IndicatorArrowDown : QStyle::PE_IndicatorArrowUp,
                               &button, &p, this);
    }
}

void SpinArrows::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    pressed_ = event->position().y() < height() / 2.0 ? 1 : -1;
    update();
    emit stepped(pressed_);
    repeat_->start(350);
}

void SpinArrows::mouseReleaseEvent(QMouseEvent*) {
    pressed_ = 0;
    repeat_->stop();
    update();
}
