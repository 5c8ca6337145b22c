#include "host/ShowOffscreen.h"

#include "host/Composite.h"
#include "host/PluginParameters.h"
#include "host/WGWorld.h"

PSPixelMap MakeOutputPixelMap(const HostBinding& b, const WGWorld& world, int16 imageMode,
                              PSPixelMask* mask) {
    const Rect* bounds = world.GetBounds();
    PSPixelMap map{};
    map.version = 1;
    map.bounds = {bounds->top, bounds->left, bounds->bottom, bounds->right};
    map.imageMode = imageMode;
    map.rowBytes = b.outRowBytes;
    map.colBytes = b.outPlanes;
    map.planeBytes = 1;
    map.baseAddr = b.outData;
    map.mat = nullptr;
    map.masks = nullptr;
    if (b.alphaPlane >= 1 && mask) {
        *mask = {};
        if (b.protectedTransparency) {
            mask->maskData = static_cast<uint8*>(b.inData) + b.alphaPlane;
            mask->rowBytes = b.inRowBytes;
            mask->colBytes = b.inPlanes;
        } else {
            mask->maskData = static_cast<uint8*>(b.outData) + b.alphaPlane;
            mask->rowBytes = b.outRowBytes;
            mask->colBytes = b.outPlanes;
        }
        map.masks = mask;
    }
    return map;
}

OSErr ShowOffscreen(const HostBinding& b, const WGWorld& world, const Rect& viewRect,
                    int16 imageMode, PISurface* surface) {
    CompositeToHost(b, world, b.protectedTransparency != 0);
    PSPixelMask mask;
    const PSPixelMap map = MakeOutputPixelMap(b, world, imageMode, &mask);
    const Rect* bounds = world.GetBounds();
    const VRect source = {bounds->top, bounds->left, bounds->top + (viewRect.bottom - viewRect.top),
                          bounds->left + (viewRect.right - viewRect.left)};
    return DisplayPixelsThunk(&map, &source, viewRect.top, viewRect.left, surface);
}
