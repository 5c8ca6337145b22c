// One mouse action on its way from the window to the tools.
#pragma once

#include "d3d/DGetViewMatrixLoop.h"
#include "sdk/PIFilter.h"

#include <cstdint>

// Modifier keys as they are held at the moment of the action.
enum MouseModifier : std::uint16_t { kModCtrl = 1, kModShift = 2, kModAlt = 4 };

struct MouseEvent {
    Point global; // a copy of local
    Point local;  // window coordinates
    std::uint16_t modifiers;

    bool Ctrl() const { return (modifiers & kModCtrl) != 0; }
    bool Shift() const { return (modifiers & kModShift) != 0; }
    // The local point as one 32-bit window point, x in the high half.
    std::int32_t LocalPoint() const { return MakeScreenPoint(local.h, local.v); }
};

// An event at window point (x, y).
inline MouseEvent MakeMouseEvent(std::int16_t x, std::int16_t y, std::uint16_t modifiers) {
    const Point p{y, x};
    return {p, p, modifiers};
}
