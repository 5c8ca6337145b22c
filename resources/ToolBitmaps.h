// The pictures of the tool buttons: 22 by 20 pixels in 16 colours, drawn
// here for this product. The light grey of the button face (0xC0C0C0) is the
// background of each; a window maps it to its own button colour.
#pragma once

#include "platform/bitmaps/PlatformBitmap.h"

#include <cstdint>

enum ToolBitmapId : int {
    kBitmapRotateText = 120,
    kBitmapDepth = 121,
    kBitmapScaleText = 122,
    kBitmapMoveText = 123,
    kBitmapMoveCamera = 124,
    kBitmapTruckCamera = 125,
    kBitmapRollCamera = 126,
    kBitmapOrbitCamera = 127,
    kBitmapSelectLight = 128,
    kBitmapAddLight = 129,
    kBitmapDragPoint = 9004,
    kBitmapDragHandle = 9005,
    kBitmapDeletePoint = 9006,
    kBitmapAddPoint = 9007,
    kBitmapEllipsePath = 9008,
    kBitmapPolygonPath = 9009,
    kBitmapDrawPath = 9010,
    kBitmapStarPath = 9011,
};

constexpr int kToolBitmapWidth = 22;
constexpr int kToolBitmapHeight = 20;
// The button face colour that stands behind every tool picture.
constexpr std::uint32_t kButtonFace = 0xC0C0C0;

// The tool picture `id`; false for an id that is not a tool picture.
bool LoadToolBitmap(int id, PlatformBitmap* bitmap);
