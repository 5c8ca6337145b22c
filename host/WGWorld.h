// Offscreen worlds: pictures in plain memory that the 3D view draws into.
#pragma once

#include "sdk/PIFilter.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

struct WPixMap {
    void* baseAddr;
    int32 rowBytes; // 32 bits wide, so that worlds wider than 8191 pixels work
    Rect bounds;    // top, left, bottom, right
};

// A top-down picture of width by height pixels of the given depth in bits,
// rows padded to a multiple of four bytes. A 32-bit pixel is the word
// 0xAARRGGBB, colours premultiplied by alpha; alpha 0 is empty. Memory that
// cannot be had throws Plin.
class WGWorld {
  public:
    WGWorld(const Rect& bounds, int depth, void* window = nullptr);
    virtual ~WGWorld();
    WGWorld(const WGWorld&) = delete;
    WGWorld& operator=(const WGWorld&) = delete;

    int16 GetWidth() const {
        return static_cast<int16>(pixmap_.bounds.right - pixmap_.bounds.left);
    }
    int16 GetHeight() const {
        return static_cast<int16>(pixmap_.bounds.bottom - pixmap_.bounds.top);
    }
    int32 GetRowBytes() const { return pixmap_.rowBytes; }
    WPixMap* GetPixMap() { return &pixmap_; }
    const WPixMap* GetPixMap() const { return &pixmap_; }
    const Rect* GetBounds() const { return &pixmap_.bounds; }
    int GetDepth() const { return depth_; }

    uint8* Row(int y) {
        return static_cast<uint8*>(pixmap_.baseAddr) + std::size_t(y) * pixmap_.rowBytes;
    }
    const uint8* Row(int y) const {
        return static_cast<const uint8*>(pixmap_.baseAddr) + std::size_t(y) * pixmap_.rowBytes;
    }
    // The 32-bit pixel at (x, y) of a 32-bit world.
    uint32 Pixel32(int x, int y) const;
    void SetPixel32(int x, int y, uint32 argb);
    void Fill32(uint32 argb);

    // Copies the top-left part of the world into `surface` at `rect`, as the
    // window's own picture; clipped to both.
    void CopyToWindow(PISurface* surface, const Rect& rect) const;
    // Copies the overlapping pixels of a world of the same depth.
    void CopyFromWorld(const WGWorld& other);

  private:
    struct Free {
        void operator()(uint8* p) const { std::free(p); }
    };
    // Zeroed by the system as it is first touched: a world the size of a
    // large image that is never drawn into takes no memory.
    std::unique_ptr<uint8, Free> bits_;
    WPixMap pixmap_;
    int depth_;
};

class KGWorld : public WGWorld {
  public:
    using WGWorld::WGWorld;
};
