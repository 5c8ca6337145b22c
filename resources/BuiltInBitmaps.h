// The module's bitmap resources: the four built-in textures and the tool
// pictures.
#pragma once

#include "platform/bitmaps/PlatformBitmap.h"

enum BuiltInBitmapId : int {
    kBitmapClouds = 9000,
    kBitmapLeopardSkin = 9001,
    kBitmapNeon = 9002,
    kBitmapSunflower = 9003,
};

// The bitmap resource `id`, drawn from its 256-colour palette; false for an
// id the module has no bitmap for.
bool LoadBitmapResource(int id, PlatformBitmap* bitmap);

// The name of a built-in texture ("Clouds", ...), or null.
const char* BuiltInTextureName(int id);
