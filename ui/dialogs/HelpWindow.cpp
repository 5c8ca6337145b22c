#include "ui/dialogs/HelpWindow.h"

#include "resources/Strings.h"
#include "ui/controls/DialogControls.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>

namespace {
constexpr int kLine = 5, kPage = 50;
}

HelpWindow::HelpWindow() {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlags(Qt::Window);
    const plumet::DialogTemplate& help = *plumet::FindDialogTemplate(plumet::kDialogHelp);
    setWindowTitle(QString::fromStdString(plumet::LoadString(help.titleId)));
    auto* page = new QWidget;
    DialogControls controls(help, page);
    QWidget* picture = controls.Get(1315);
    page->setFixedSize(picture->size());
    picture->setAccessibleName(windowTitle());
    setWidget(page);
    setFrameShape(QFrame::NoFrame);
    horizontalScrollBar()->setSingleStep(kLine);
    verticalScrollBar()->setSingleStep(kLine);
    horizontalScrollBar()->setPageStep(kPage);
    verticalScrollBar()->setPageStep(kPage);
    setMinimumSize(kSmallest, kSmallest);
    setMaximumSize(LargestSize());
    // As wide as the picture, as high as the template.
    resize(LargestSize().width(), DialogControls::PixelSize(help).height());
    if (QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

QSize HelpWindow::LargestSize() const {
    const QSize picture = widget()->size();
    return QSize(picture.width() + verticalScrollBar()->sizeHint().width(),
                 picture.height() + horizontalScrollBar()->sizeHint().height());
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    QScrollBar* v = verticalScrollBar();
    QScrollBar* h = horizontalScrollBar();
    switch (event->key()) {
    case Qt::Key_PageUp:
        v->setValue(v->value() - kPage);
        break;
    case Qt::Key_PageDown:
        v->setValue(v->value() + kPage);
        break;
    case Qt::Key_Home:
        v->setValue(0);
        break;
    case Qt::Key_End:
        v->setValue(v->maximum());
        break;
    case Qt::Key_Left:
        h->setValue(h->value() - kLine);
        break;
    case Qt::Key_Right:
        h->setValue(h->value() + kLine);
        break;
    case Qt::Key_Up:
        v->setValue(v->value() - kLine);
        break;
    case Qt::Key_Down:
        v->setValue(v->value() + kLine);
        break;
    case Qt::Key_Escape:
        close();
        break;
    default:
        QScrollArea::keyPressEvent(event);
        return;
    }
}

HelpWindow* OpenHelp(HelpWindow* open) {
    HelpWindow* help = open ? open : new HelpWindow;
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}
