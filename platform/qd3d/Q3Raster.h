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

struct ScreenTriangle {
    ScreenVertex v[3];
    Shade shade;
    bool blend;  // see-through: blended, no depth write
    int texture; // index into the frame's textures, or -1
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
    static constexpr int kBlockRows = 8;
    bool owns(int row) const { return (row / kBlockRows) % count == index; }
};

class FrameBuffer {
  public:
    void reset(int width, int height, std::uint32_t clearWord);
    int width() const { return w; }
    int height() const { return h; }
    std::uint32_t* colour() { return rgba.data(); }
    const std::uint32_t* colour() const { return rgba.data(); }

    void drawTriangle(const ScreenTriangle& t, const Band& band,
                      const std::vector<TextureView>& textures);
    void drawLine(const ScreenLine& l, const Band& band);
    void drawMarker(const ScreenMarker& m, const Band& band);

  private:
    void writePixel(int x, int y, float z, float r, float g, float b, float a, bool blend,
                    bool depthWrite);
    int w = 0, h = 0;
    std::vector<std::uint32_t> rgba;
    std::vector<float> depth;
};

} // namespace q3
