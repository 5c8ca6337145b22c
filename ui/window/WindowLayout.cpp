// Where the main window stands and how it grows round a large image.
#include "ui/window/VZarbesoWindow.h"

#include "host/ModuleState.h"
#include "ui/controls/DialogControls.h"
#include "ui/window/MainDialog.h"
#include "ui/window/ViewWidget.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWindow>
#include <algorithm>

void VZarbesoWindow_Win::PlaceWindow() {
    QRect parent;
    std::unique_ptr<QWindow> host(parentWindow_ ? QWindow::fromWinId(WId(parentWindow_)) : nullptr);
    QScreen* screen = QGuiApplication::primaryScreen();
    const QRect desktop = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    parent = host ? host->geometry() : desktop;
    if (parent.isEmpty()) parent = desktop;
    const QSize size = dialog_->size();
    int t = dialog_->style()->pixelMetric(QStyle::PM_TitleBarButtonSize);
    int x = parent.left() + std::max(0, parent.width() - size.width()) / 2 - t;
    int y = parent.top() + std::max(0, parent.height() - size.height()) / 3;
    x = std::max(0, std::min(x, desktop.right() + 1 - size.width()));
    y = std::max(0, std::min(y, desktop.bottom() + 1 - size.height()));
    dialog_->move(x, y);
}

// ---- the view's place --------------------------------------------------------

void VZarbesoWindow_Win::AdjustViewSize(int width, int height, bool scaled) {
    int fw = frameWidth, fh = frameHeight;
    if (scaled && !(width < fw && height < fh)) {
        fw = std::max(width, fw);
        fh = std::max(height, fh);
    }
    GetView()->Resize(width, height, fw, fh, scaled);
    if (ended_ || !viewWidget_) return;
    const QRect place = controls_->Get(1011)->geometry();
    const Rect b = GetView()->GetBounds();
    viewWidget_->setGeometry(place.left() + 2 + b.left, place.top() + 2 + b.top, b.right - b.left,
                             b.bottom - b.top);
}

void VZarbesoWindow_Win::FitWindowToImage() {
    if (!gFilterRecord) return;
    int dW = gPreviewWidth - frameWidth, dH = gPreviewHeight - frameHeight;
    if (dW < 0) {
        if (!gPreviewScaled) GetView()->MoveBy(-dW / 2, 0, false);
        dW = 0;
    }
    if (dH < 0) {
        if (!gPreviewScaled) GetView()->MoveBy(0, -dH / 2, false);
        dH = 0;
    }
    auto move = [this](int id, int dx, int dy) {
        QWidget* w = controls_->Get(id);
        w->move(w->pos() + QPoint(dx, dy));
    };
    for (int id : {1017, 1018, 1021, 1022, 1023, 1024, 1025, 1026})
        move(id, 0, dH);
    for (int id = 1027; id <= 1031; ++id)
        move(id, dW, dH);
    QWidget* tabs = controls_->Get(1000);
    tabs->resize(tabs->width() + dW, tabs->height());
    QWidget* frame = controls_->Get(1012);
    frame->resize(frame->width() + dW, frame->height() + dH);
    const Rect b = GetView()->GetBounds();
    QWidget* place = controls_->Get(1011);
    const QRect old = place->geometry();
    place->setGeometry(old.left(), old.top(), std::max(old.width() + dW, b.right + 4),
                       std::max(old.height() + dH, b.bottom + 4));
    viewWidget_->setGeometry(old.left() + 2 + b.left, old.top() + 2 + b.top, b.right - b.left,
                             b.bottom - b.top);
    dialog_->setFixedSize(dialog_->width() + dW, dialog_->height() + dH);
}
