// The modal run: the filter's own event loop, inside the host's call.
#pragma once

#include "sdk/PIFilter.h"

class QObject;
class QKeyEvent;

// The codes that end the loop: what the window tells the filter.
enum QuitCode : int { kQuitOK = 1, kQuitCancel = 2 };

// Runs the window of one run of the filter and returns true when it ended
// with OK. `platformData` is the host's pointer whose first word is the
// parent window. With `invocation` 0 no window is made at all: the run
// without a window renders at once and counts as OK.
bool RunFilterDialog(void* platformData, int16 invocation);

// Ends the running loop with `code` once the events already queued have been
// handled. Without a running loop it does nothing.
void PostQuit(int code);

// What a run without a window does; it answers whether the run succeeded.
// Until the renderer is installed it has nothing to draw and succeeds.
using NoWindowRunner = bool (*)();
void SetNoWindowRunner(NoWindowRunner runner);

// Which stage of the loop takes a key: the accelerators, the main window,
// the Numeric Controls dialog, or plain dispatch.
enum class KeyStage { Accelerator, MainWindow, NumericControls, Dispatch };
