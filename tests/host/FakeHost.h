#pragma once

#include "sdk/PIFilter.h"

#include <vector>

// A minimal host for driving the filter's selectors directly: one image of
// `planes` interleaved planes, buffers handed out by advanceState for the
// rectangles the filter asks for, and a record of every call.
struct FakeHost {
    FakeHost(int width, int height, int planes, int16 mode, int16 filterCase);
    ~FakeHost();

    FilterRecord record{};
    PlatformData platform{0};
    PIDescriptorParameters descriptor{};
    Str255 errorText{};
    int width, height, planes;
    std::vector<uint8> image;
    std::vector<uint8> inBuffer, outBuffer;
    std::vector<Rect> inRects; // inRect at each advanceState
    std::vector<Fixed> rates;  // inputRate at each advanceState
    OSErr failWith = noErr;    // answer of the next advanceState calls
    int failOnCall = 0;        // 1-based call that fails; 0: none
    int shortRows = 0;         // bytes the rows it gives are said to lack
    int displayCalls = 0;

    static FakeHost* current;
};
