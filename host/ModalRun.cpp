#include "host/ModalRun.h"

#include "host/GuiSession.h"
#include "host/KeyRouter.h"
#include "host/WFilterWindow.h"

#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QWidget>
#include <QWindow>
#include <memory>

namespace {
QPointer<QEventLoop> gLoop;
NoWindowRunner gNoWindowRunner = nullptr;
FilterWindowFactory gFactory = nullptr;
} // namespace

void SetFilterWindowFactory(FilterWindowFactory factory) {
    gFactory = factory;
}

FilterWindowFactory GetFilterWindowFactory() {
    return gFactory;
}

void SetNoWindowRunner(NoWindowRunner runner) {
    gNoWindowRunner = runner;
}

void PostQuit(int code) {
    if (!gLoop) return;
    QEventLoop* loop = gLoop;
    QMetaObject::invokeMethod(
        loop, [loop, code] { loop->exit(code); }, Qt::QueuedConnection);
}

bool RunFilterDialog(void* platformData, int16 invocation) {
    // The run without a window never starts the toolkit: it must work on a
    // machine without a screen.
    if (invocation == 0) return gNoWindowRunner ? gNoWindowRunner() : true;

    GuiSession gui;
    if (!gui.Ok()) return false;
    const intptr_t parent = platformData ? static_cast<PlatformData*>(platformData)->hwnd : 0;
    std::unique_ptr<WFilterWindow> window(gFactory ? gFactory(parent, invocation) : nullptr);
    if (!window || !window->Widget()) return false;

    QWidget* widget = window->Widget();
    std::unique_ptr<QWindow> foreignParent;
    if (parent) {
        // Keep the window above the host's own. The host's window cannot be
        // disabled from here on every platform; the loop below is modal for
        // the filter's own windows.
        foreignParent.reset(QWindow::fromWinId(static_cast<WId>(parent)));
        widget->winId();
        if (foreignParent && widget->windowHandle())
            widget->windowHandle()->setTransientParent(foreignParent.get());
    }

    KeyRouter router(window.get());
    qApp->installEventFilter(&router);
    QEventLoop loop;
    gLoop = &loop;
    widget->show();
    const int code = loop.exec();
    gLoop = nullptr;
    qApp->removeEventFilter(&router);
    window.reset();
    return code == kQuitOK;
}
