// A z-buffered rasteriser over a colour buffer of premultiplied ARGB words.
// Every draw call touches only the rows that the given band owns, so that
// several threads can draw the same list at once, each into its own rows.
#pragma once

#include "platform/qd3d/Q3Texture.h"

#include <cstdint>
#include <vector>

namespace q3 {

constexpr int kMaxAttributes = 9;

// A vertex in window pixels. z is depth, 0 at hither and 1 at yon; iw is
// 1/w. Attributes are stored multiplied by iw for perspective-correct
// interpolation.
struct ScreenVertex {
    float x, y, z, iw;
    float at[kMaxAttributes];
};

enum class Shade : std::uint8_t {
    Colour,  // attributes r, g, b, a
    Textured // attributes Lr, Lg, Lb, Sr, Sg, Sb, u, v, a: texel * L + S
};

// A triangle set up for scanning: its corners sorted by y, the rows it
// covers, and the plane of every interpolated value.
struct ScreenTriangle {
    ScreenTriangle() {} // left unset: setUp fills it
    float ax, ay, bx, by, cx, cy;
    float dac, dab, dbc; // dx/dy of the edges a-c, a-b, b-c
    int y0, y1;          // rows [y0, y1)
    float z, zdx, zdy;   // at a, per pixel in x and y
    float w, wdx, wdy;
    float at[kMaxAttributes], adx[kMaxAttributes], ady[kMaxAttributes];
    float depthKey; // for ordering see-through triangles
    Shade shade;
    bool blend; // see-through: blended, no depth write
    std::uint8_t attributes;
    int texture; // index into the frame's textures, or -1

    // False for a triangle that covers no pixel centre of a window of height h.
    // With raw, the corners' attributes are plain values, not multiplied by iw
    // (for opaque plain colours only).
    bool setUp(const ScreenVertex& p, const ScreenVertex& q, const ScreenVertex& r, int h,
               bool raw = false);
};

struct ScreenLine {
    ScreenVertex v[2]; // attributes r, g, b, a
    bool blend;
};

struct ScreenMarker {
    float x, y, z; // the location in window pixels
    std::int32_t xOffset, yOffset;
    const std::uint8_t* bits;
    std::uint32_t width, height, rowBytes;
    bool msbFirst;
    float r, g, b, a;
};

struct Band {
    int index = 0; // rows are taken in blocks of kBlockRows, dealt round-robin
    int count = 1;
    static constexpr int kBlockRows = 32;
    bool owns(int row) const { return (row / kBlockRows) % count == index; }
    // Whether any row of [y0, y1) is this band's.
    bool touches(int y0, int y1) const { return next(y0) < y1; }
    // The first owned row at or after row.
    int next(int row) const {
        if (count == 1) return row;
        int block = row / kBlockRows;
        int offset = index - block % count;
        if (offset < 0) offset += count;
        return offset == 0 ? row : (block + offset) * kBlockRows;
    }
};

class FrameBuffer {
  public:
    // Sizes the buffers; the rows are cleared by clearRows in the bands.
    // With pixels, the colour rows are the caller's memory (32-bit aligned
    // words, rowBytes apart); otherwise the buffer's own.
    void resize(int width, int height, void* pixels = nullptr, size_t rowBytes = 0);
    void clearRows(const Band& band, std::uint32_t clearWord);
    // Clears the depth of one row only (the colour stays).
    void clearRows(const Band& band, int, int y);
    int width() const { return w; }
    int height() const { return h; }
    std::uint32_t* row(int y) {
        return reinterpret_cast<std::uint32_t*>(base + static_cast<size_t>(y) * stride);
    }

    void drawTriangle(const ScreenTriangle& t, const Band& band,
                      const std::vector<TextureView>& textures);
    void drawLine(const ScreenLine& l, const Band& band);
    void drawMarker(const ScreenMarker& m, const Band& band);

  private:
    void drawPlain(const ScreenTriangle& t, const Band& band);
    void writePixel(int x, int y, float z, float r, float g, float b, float a, bool blend,
                    bool depthWrite);
    int w = 0, h = 0;
    std::vector<std::uint32_t> rgba;
    unsigned char* base = nullptr;
    size_t stride = 0;
    std::vector<float> depth;
};

} // namespace q3
