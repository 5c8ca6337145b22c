#include "host/ModuleState.h"

PluginParameters* gPluginParameters = nullptr;
FilterRecord* gFilterRecord = nullptr;
int16 gPlaneCount = 0;
int16 gAlphaPlane = -1;
uint8 gProtectedTransparency = 0;
int16 gPreviewWidth = 0;
int16 gPreviewHeight = 0;
int16 gFullWidth = 0;
int16 gFullHeight = 0;
uint8 gPreviewScaled = 0;
uint8 gRunningAsPlugin = 0;
void* gModuleInstance = nullptr;
QWidget* gNumericControls = nullptr;
uint8 gAcceleratorHandled = 0;
