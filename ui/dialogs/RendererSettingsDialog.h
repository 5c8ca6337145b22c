// The final renderer's own settings, asked with the main window as parent:
// anti-aliasing and shadows.
#pragma once

#include "platform/finalrender/LightWorksSL.h"

// Shows the settings in `settings`; kQ3True when the user chose OK, and the
// settings then hold the choice. `anchor` is the parent widget, or null.
TQ3Boolean AskRendererSettings(TQ3DialogAnchor anchor, TQ3LightWorksSLSettings* settings);
