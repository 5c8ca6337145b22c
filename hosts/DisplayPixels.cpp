#include "hosts/DisplayPixels.h"

#include <algorithm>
#include <cstdint>

namespace plumet::hosts {

namespace {

uint32 Blend(uint32 r, uint32 g, uint32 b, uint32 a, uint32 behind) {
    const auto mix = [a](uint32 over, uint32 under) {
        return (over * a + under * (255 - a) + 127) / 255;
    };
    return mix(r, (behind >> 16) & 0xFF) << 16 | mix(g, (behind >> 8) & 0xFF) << 8 |
           mix(b, behind & 0xFF);
}

} // namespace

OSErr DisplayPixelsOnSurface(const PSPixelMap* source, const VRect* srcRect, int32 dstRow,
                             int32 dstCol, void* platformContext) {
    if (!source || !srcRect || !platformContext) return filterBadParameters;
    const PSPixelMap& map = *source;
    auto* surface = static_cast<PISurface*>(platformContext);
    if (map.version != 1 || !map.baseAddr) return filterBadParameters;
    int colourPlanes = 0;
    if (map.imageMode == plugInModeRGBColor)
        colourPlanes = 3;
    else if (map.imageMode == plugInModeCMYKColor)
        colourPlanes = 4;
    else
        return filterBadMode;

    const int64_t boundsWidth = int64_t(map.bounds.right) - map.bounds.left;
    const int64_t boundsHeight = int64_t(map.bounds.bottom) - map.bounds.top;
    if (boundsWidth < 0 || boundsHeight < 0 || map.planeBytes < 1 ||
        map.colBytes < int64_t(colourPlanes - 1) * map.planeBytes + 1 ||
        map.rowBytes < boundsWidth * map.colBytes)
        return filterBadParameters;
    if (surface->width < 0 || surface->height < 0 ||
        int64_t(surface->rowBytes) < int64_t(surface->width) * 4 ||
        (!surface->pixels && surface->width > 0 && surface->height > 0))
        return filterBadParameters;

    const PSPixelMask* mask = map.masks;
    if (mask) {
        if (!mask->maskData || mask->colBytes < 1 || mask->maskDescription != 0 ||
            int64_t(mask->rowBytes) < (boundsWidth - 1) * mask->colBytes + 1)
            return filterBadParameters;
    }

    // The source rectangle, clipped to the bounds, then to the surface.
    int64_t top = std::max<int64_t>(srcRect->top, map.bounds.top);
    int64_t left = std::max<int64_t>(srcRect->left, map.bounds.left);
    int64_t bottom = std::min<int64_t>(srcRect->bottom, map.bounds.bottom);
    int64_t right = std::min<int64_t>(srcRect->right, map.bounds.right);
    const int64_t toRow = int64_t(dstRow) - srcRect->top; // source row + toRow = surface row
    const int64_t toCol = int64_t(dstCol) - srcRect->left;
    top = std::max(top, -toRow);
    left = std::max(left, -toCol);
    bottom = std::min(bottom, int64_t(surface->height) - toRow);
    right = std::min(right, int64_t(surface->width) - toCol);

    const auto* base = static_cast<const uint8_t*>(map.baseAddr);
    const auto* maskBase = mask ? static_cast<const uint8_t*>(mask->maskData) : nullptr;
    auto* surfaceBytes = reinterpret_cast<uint8_t*>(surface->pixels);
    for (int64_t row = top; row < bottom; ++row) {
        const int64_t y = row - map.bounds.top;
        auto* dst = reinterpret_cast<uint32*>(surfaceBytes + (row + toRow) * surface->rowBytes);
        for (int64_t col = left; col < right; ++col) {
            const int64_t x = col - map.bounds.left;
            const uint8_t* px = base + y * map.rowBytes + x * map.colBytes;
            uint32 r = px[0], g = px[map.planeBytes], b = px[2 * map.planeBytes];
            if (colourPlanes == 4) {
                // Inverted CMYK: the stored value is 255 - ink.
                const uint32 k = px[3 * map.planeBytes];
                r = r * k / 255;
                g = g * k / 255;
                b = b * k / 255;
            }
            uint32 word = r << 16 | g << 8 | b;
            if (maskBase) {
                const uint32 a = maskBase[y * mask->rowBytes + x * mask->colBytes];
                const int64_t cy = y + map.maskPhaseRow, cx = x + map.maskPhaseCol;
                const bool dark = (((cy >> 3) + (cx >> 3)) & 1) != 0;
                word = Blend(r, g, b, a, dark ? kCheckerDark : kCheckerLight);
            }
            dst[col + toCol] = word;
        }
    }
    return noErr;
}

} // namespace plumet::hosts
