// Module-wide state of the filter. One module instance serves one host call
// at a time on the host's thread, so none of this is guarded.
#pragma once

#include "host/PluginParameters.h"
#include "sdk/PIFilter.h"

class QWidget;

extern PluginParameters* gPluginParameters;
extern FilterRecord* gFilterRecord;
extern int16 gPlaneCount;
extern int16 gAlphaPlane;
extern uint8 gProtectedTransparency;
extern int16 gPreviewWidth;
extern int16 gPreviewHeight;
extern int16 gFullWidth;
extern int16 gFullHeight;
extern uint8 gPreviewScaled;
extern uint8 gRunningAsPlugin;
extern void* gModuleInstance;

// The open Numeric Controls dialog, or null.
extern QWidget* gNumericControls;
// Written by the accelerator commands: cleared first, set where a key acted.
extern uint8 gAcceleratorHandled;
