// The record that the host keeps for the filter between selectors, and the
// trampolines through which the filter calls the host.
#pragma once

#include "sdk/PIFilter.h"

struct PluginParameters {
    int16 invocation; // -1 new, 1 first run with window, 2 later run with window, 0 no window
    void* platformData;
    int16 imageMode;
    int16 previewScale;
    OSErr (*advanceStateThunk)();
    AdvanceStateProc advanceState;
    OSErr (*processEventThunk)(void* event);
    ProcessEventProc processEvent;
    OSErr (*displayPixelsThunk)(const PSPixelMap* source, const VRect* srcRect, int32 dstRow,
                                int32 dstCol, void* platformContext);
    DisplayPixelsProc displayPixels;
    OSErr (*colorServicesThunk)(ColorServicesInfo* info);
    ColorServicesProc colorServices;
};

// Each trampoline calls the host function held in the current record
// (gPluginParameters). A missing record or function answers
// filterBadParameters rather than jumping to null.
OSErr AdvanceStateThunk();
OSErr ProcessEventThunk(void* event);
OSErr DisplayPixelsThunk(const PSPixelMap* source, const VRect* srcRect, int32 dstRow, int32 dstCol,
                         void* platformContext);
OSErr ColorServicesThunk(ColorServicesInfo* info);
