#include "host/KeyRouter.h"

#include "host/ModuleState.h"
#include "host/WFilterWindow.h"
#include "resources/Accelerators.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {
KeyStage gLastStage = KeyStage::Dispatch;

bool Within(QObject* object, QWidget* window) {
    auto* widget = qobject_cast<QWidget*>(object);
    return widget && window && (widget == window || window->isAncestorOf(widget));
}
} // namespace

int AcceleratorKeyFor(int qtKey, const QString& text, int qtModifiers, unsigned* modifiers) {
    // Alt and the logo key belong to the desktop and to mnemonics.
    if (qtModifiers & (Qt::AltModifier | Qt::MetaModifier)) {
        *modifiers = 0;
        return 0;
    }
    unsigned mods = 0;
    if (qtModifiers & Qt::ShiftModifier) mods |= plumet::kAccelShift;
    if (qtModifiers & Qt::ControlModifier) mods |= plumet::kAccelCtrl;
    int key = 0;
    switch (qtKey) {
    case Qt::Key_Backspace:
        key = plumet::kKeyBackspace;
        break;
    case Qt::Key_Delete:
        key = plumet::kKeyDelete;
        break;
    case Qt::Key_Up:
        key = plumet::kKeyUp;
        break;
    case Qt::Key_Down:
        key = plumet::kKeyDown;
        break;
    case Qt::Key_Left:
        key = plumet::kKeyLeft;
        break;
    case Qt::Key_Right:
        key = plumet::kKeyRight;
        break;
    default:
        // Letters count in either case, typed with or without Shift.
        if (text.size() == 1 && text[0].unicode() < 128 && text[0].isLetter()) {
            key = text[0].toLatin1();
            mods &= ~plumet::kAccelShift;
        }
        break;
    }
    *modifiers = mods;
    return key;
}

KeyRouter::KeyRouter(WFilterWindow* window) : window_(window) {}

KeyStage KeyRouter::LastStage() {
    return gLastStage;
}

bool KeyRouter::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    // A key that a child passes on reaches its parents as the same event;
    // it is routed once.
    auto* key = static_cast<QKeyEvent*>(event);
    auto* widget = qobject_cast<QWidget*>(receiver);
    auto* last = qobject_cast<QWidget*>(lastReceiver_.data());
    const bool passedOn = event == lastEvent_ && key->timestamp() == lastTimestamp_ &&
                          key->key() == lastKey_ && widget && last && widget != last &&
                          widget->isAncestorOf(last);
    lastEvent_ = event;
    lastReceiver_ = receiver;
    lastTimestamp_ = key->timestamp();
    lastKey_ = key->key();
    if (passedOn) return false;

    // A modal dialog runs its own loop, without the window's accelerators.
    const bool modal = QApplication::activeModalWidget() != nullptr;
    unsigned mods = 0;
    const int code =
        modal ? 0 : AcceleratorKeyFor(key->key(), key->text(), key->modifiers(), &mods);
    if (const int command = code ? plumet::FindAccelerator(code, mods) : 0) {
        gAcceleratorHandled = 0;
        window_->OnAccelerator(command);
        if (gAcceleratorHandled) {
            gLastStage = KeyStage::Accelerator;
            return true;
        }
    }
    if (Within(receiver, window_->Widget()))
        gLastStage = KeyStage::MainWindow;
    else if (Within(receiver, gNumericControls))
        gLastStage = KeyStage::NumericControls;
    else
        gLastStage = KeyStage::Dispatch;
    return false;
}
