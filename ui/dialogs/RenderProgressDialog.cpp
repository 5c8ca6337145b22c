#include "ui/dialogs/RenderProgressDialog.h"

#include "resources/Strings.h"

#include <QApplication>
#include <QKeyEvent>
#include <QProgressDialog>

#include <algorithm>

namespace {
constexpr int kSteps = 1000;
constexpr int kShowAfterMs = 400;
} // namespace

RenderProgressDialog::RenderProgressDialog(QWidget* window, QWidget* still)
    : window_(window), still_(still),
      dialog_(std::make_unique<QProgressDialog>(
          QString::fromStdString(plumet::LoadString(plumet::kStrRenderingLabel)),
          QString::fromStdString(plumet::LoadString(plumet::kStrStopButton)), 0, kSteps, window)) {
    dialog_->setWindowTitle(QString::fromStdString(plumet::LoadString(plumet::kStrWindowTitle)));
    dialog_->setWindowModality(Qt::WindowModal);
    dialog_->setMinimumDuration(kShowAfterMs);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
    dialog_->setValue(0);
    windowWasActive_ = window && window->isActiveWindow();
    qApp->installEventFilter(this);
}

RenderProgressDialog::~RenderProgressDialog() {
    qApp->removeEventFilter(this);
    // The bar takes the keys when it shows; the window that had them gets
    // them back rather than leaving no window active.
    if (windowWasActive_) {
        dialog_->hide();
        window_->activateWindow();
    }
}

bool RenderProgressDialog::Tell(double done) {
    dialog_->setValue(static_cast<int>(std::clamp(done, 0.0, 1.0) * kSteps));
    QCoreApplication::processEvents();
    return !stopped_ && !dialog_->wasCanceled();
}

bool RenderProgressDialog::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) stopped_ = true;
        return true;
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Paint:
        // the view keeps the picture it shows: bound to the full image for
        // the render, it would paint an empty picture of that size
        return watched == still_;
    case QEvent::MouseMove:
    case QEvent::Wheel: {
        // the Stop button still takes its click
        auto* widget = qobject_cast<QWidget*>(watched);
        return !(widget && (widget == dialog_.get() || dialog_->isAncestorOf(widget)));
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}
