#pragma once

#include "sdk/PIFilter.h"

#include <cstdint>

// The host's buffers as the view uses them: where the scene is composited
// over the input and where the result goes.
struct HostBinding {
    uint8 protectedTransparency = 0;
    void* inData = nullptr;
    void* outData = nullptr;
    int32 inRowBytes = 0;
    int32 outRowBytes = 0;
    int16 inPlanes = 0;
    int16 outPlanes = 0; // 3 with protected transparency, else inPlanes
    int16 width = 0;
    int16 height = 0;
    int16 alphaPlane = -1;
};

// Whether rows of `rowBytes` hold `width` pixels of `planes` bytes each.
inline bool RowsHold(int32 rowBytes, int width, int planes) {
    return width > 0 && planes > 0 && int64_t(rowBytes) >= int64_t(width) * planes;
}

// Fills a binding from the host's buffers and the module's plane values.
// Buffers whose rows cannot hold the pixels are left out (null), so that
// nothing reads or writes past the host's memory.
HostBinding MakeHostBinding(void* inData, int32 inRowBytes, void* outData, int32 outRowBytes,
                            int16 width, int16 height, int16 planes, int16 alphaPlane,
                            uint8 protectedTransparency);
