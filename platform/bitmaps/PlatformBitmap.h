// Bitmaps as the system reads them: from the module's resources and from
// image files the user picks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A picture of width by height pixels, rows from the top, each pixel
// 0x00RRGGBB. Bitmaps have no alpha of their own.
struct PlatformBitmap {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    uint32_t GetPixel(int x, int y) const { return pixels[std::size_t(y) * width + x]; }
};

// The largest bitmap a file may give, in pixels; larger ones are refused
// rather than tried, since a texture of that size helps nobody.
constexpr int64_t kMaxBitmapPixels = int64_t(16384) * 16384;

// Reads a Windows bitmap (1, 4, 8, 16, 24 or 32 bits a pixel), PNG or JPEG
// file. Returns false with a one-line reason in `error` for a file that is
// missing, unreadable, not an image, empty or too large.
bool LoadBitmapFile(const std::string& path, PlatformBitmap* bitmap, std::string* error);
