#include "host/WGWorld.h"

#include "foundation/Failures.h"

#include <algorithm>
#include <cstring>
#include <new>

WGWorld::WGWorld(const Rect& bounds, int depth, void* /*window*/) : pixmap_{}, depth_(depth) {
    const int width = bounds.right - bounds.left;
    const int height = bounds.bottom - bounds.top;
    if (width <= 0 || height <= 0 || (depth != 8 && depth != 16 && depth != 24 && depth != 32))
        throw kFailPlin;
    const int64_t rowBytes = (int64_t(width) * depth / 8 + 3) & ~int64_t(3);
    const int64_t size = rowBytes * height;
    if (rowBytes > INT32_MAX || size > int64_t(PTRDIFF_MAX)) throw kFailPlin;
    bits_.reset(static_cast<uint8*>(std::calloc(static_cast<std::size_t>(size), 1)));
    if (!bits_) throw kFailPlin;
    pixmap_.baseAddr = bits_.get();
    pixmap_.rowBytes = static_cast<int32>(rowBytes);
    pixmap_.bounds = bounds;
}

WGWorld::~WGWorld() = default;

uint32 WGWorld::Pixel32(int x, int y) const {
    uint32 v;
    std::memcpy(&v, Row(y) + std::size_t(x) * 4, 4);
    return v;
}

void WGWorld::SetPixel32(int x, int y, uint32 argb) {
    std::memcpy(Row(y) + std::size_t(x) * 4, &argb, 4);
}

void WGWorld::Fill32(uint32 argb) {
    for (int y = 0; y < GetHeight(); ++y)
        for (int x = 0; x < GetWidth(); ++x)
            SetPixel32(x, y, argb);
}

void WGWorld::CopyToWindow(PISurface* surface, const Rect& rect) const {
    if (!surface || !surface->pixels || depth_ != 32) throw kFailPlin;
    const int x0 = std::max<int>(rect.left, 0), y0 = std::max<int>(rect.top, 0);
    const int x1 = std::min({int(rect.right), int(surface->width), x0 + GetWidth()});
    const int y1 = std::min({int(rect.bottom), int(surface->height), y0 + GetHeight()});
    for (int y = y0; y < y1; ++y) {
        auto* out = reinterpret_cast<uint32*>(reinterpret_cast<uint8*>(surface->pixels) +
                                              std::size_t(y) * surface->rowBytes);
        for (int x = x0; x < x1; ++x)
            out[x] = Pixel32(x - rect.left, y - rect.top) & 0xFFFFFFu;
    }
}

void WGWorld::CopyFromWorld(const WGWorld& other) {
    if (other.depth_ != depth_) throw kFailPlin;
    const int rows = std::min(GetHeight(), other.GetHeight());
    const std::size_t bytes = std::size_t(std::min(GetWidth(), other.GetWidth())) * depth_ / 8;
    for (int y = 0; y < rows; ++y)
        std::memcpy(Row(y), other.Row(y), bytes);
}
