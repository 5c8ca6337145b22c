#pragma once

#include "host/ModalRun.h"

#include <QObject>
#include <QPointer>

class WFilterWindow;

// Routes each key of the modal run in the order of the loop: first the
// accelerator table, which takes the key only when its command acted; then
// the main window, then the Numeric Controls dialog, then plain dispatch. The
// last three are the toolkit's own delivery to the widget with the focus;
// the router only decides and records which stage it is.
class KeyRouter : public QObject {
  public:
    explicit KeyRouter(WFilterWindow* window);
    bool eventFilter(QObject* receiver, QEvent* event) override;

    // The stage that took the last key.
    static KeyStage LastStage();

  private:
    WFilterWindow* window_;
    const QEvent* lastEvent_ = nullptr;
    // A dialog that took the last key may be gone by the next one.
    QPointer<QObject> lastReceiver_;
    quint64 lastTimestamp_ = 0;
    int lastKey_ = 0;
};

// The accelerator key code for a toolkit key, or 0 for keys the table has no
// row for; `modifiers` receives the table's modifier bits.
int AcceleratorKeyFor(int qtKey, const QString& text, int qtModifiers, unsigned* modifiers);
