// The tiles of a picture and the part of each that the scene can be seen in.
// Each batch's box is taken through the camera to the window and widened by
// a pixel; a tile that no box reaches needs no ray, and in the others only
// the columns the boxes reach are traced.
#pragma once

#include "platform/finalrender/LWRayCamera.h"
#include "platform/finalrender/LWScene.h"

#include <cstdint>
#include <vector>

namespace lwsl {

struct Tile {
    long x0, y0, x1, y1; // its pixels
    long from, to;       // the columns to trace in each of its rows; none when from >= to
};

class TilePlan {
  public:
    static constexpr long kWidth = 128, kHeight = 8; // rows of 128 pixels go to Embree together

    // Tiles over pixels [x0, x1) by [y0, y1). The pixel at column x and row
    // y sees the window from (x + dx, y + dy) to one pixel further. With no
    // camera, nothing is traced.
    void plan(const Scene& scene, const RayCamera* camera, long x0, long y0, long x1, long y1,
              double dx, double dy);

    long count() const { return static_cast<long>(spans.size()); }
    Tile tile(long index) const;
    // Pixels to trace in all tiles together.
    std::uint64_t tracedPixels() const;

  private:
    void reach(long px0, long py0, long px1, long py1);

    long x0 = 0, y0 = 0, x1 = 0, y1 = 0, across = 0;
    struct Span {
        long from, to;
    };
    std::vector<Span> spans;
};

} // namespace lwsl
