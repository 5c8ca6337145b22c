// Boxes to pixels to tiles.
#include "platform/finalrender/LWTilePlan.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace lwsl {

void TilePlan::plan(const Scene& scene, const RayCamera* camera, long px0, long py0, long px1,
                    long py1, double dx, double dy) {
    x0 = px0;
    y0 = py0;
    x1 = std::max(px0, px1);
    y1 = std::max(py0, py1);
    across = (x1 - x0 + kWidth - 1) / kWidth;
    const long down = (y1 - y0 + kHeight - 1) / kHeight;
    spans.assign(static_cast<std::size_t>(across * down), Span{LONG_MAX, LONG_MIN});
    if (!camera) return;
    for (std::size_t i = 0; i < scene.batchCount(); ++i) {
        const Batch& b = scene.batch(static_cast<std::uint32_t>(i));
        double lo[2] = {HUGE_VAL, HUGE_VAL}, hi[2] = {-HUGE_VAL, -HUGE_VAL};
        bool whole = false;
        for (int c = 0; c < 8 && !whole; ++c) {
            const TQ3Point3D p{c & 1 ? b.hi.x : b.lo.x, c & 2 ? b.hi.y : b.lo.y,
                               c & 4 ? b.hi.z : b.lo.z};
            double wx, wy;
            // a corner behind the eye: the box may be seen anywhere
            whole = !camera->windowOf(p, wx, wy);
            lo[0] = std::min(lo[0], wx);
            lo[1] = std::min(lo[1], wy);
            hi[0] = std::max(hi[0], wx);
            hi[1] = std::max(hi[1], wy);
        }
        if (whole) {
            reach(x0, y0, x1, y1);
            continue;
        }
        // a margin of a pixel on each side for the rounding of rays and hits
        auto first = [](double v, long from, long to) {
            return v < double(from) ? from : v >= double(to) ? to : long(std::floor(v)) - 1;
        };
        auto end = [](double v, long from, long to) {
            return v < double(from) ? from : v >= double(to) ? to : long(std::floor(v)) + 2;
        };
        reach(std::max(x0, first(lo[0] - dx, x0, x1)), std::max(y0, first(lo[1] - dy, y0, y1)),
              std::min(x1, end(hi[0] - dx, x0, x1)), std::min(y1, end(hi[1] - dy, y0, y1)));
    }
}

void TilePlan::reach(long px0, long py0, long px1, long py1) {
    if (px0 >= px1 || py0 >= py1) return;
    for (long ty = (py0 - y0) / kHeight; ty <= (py1 - 1 - y0) / kHeight; ++ty)
        for (long tx = (px0 - x0) / kWidth; tx <= (px1 - 1 - x0) / kWidth; ++tx) {
            Span& s = spans[static_cast<std::size_t>(ty * across + tx)];
            s.from = std::min(s.from, px0);
            s.to = std::max(s.to, px1);
        }
}

Tile TilePlan::tile(long index) const {
    Tile t;
    t.x0 = x0 + (index % across) * kWidth;
    t.y0 = y0 + (index / across) * kHeight;
    t.x1 = std::min(t.x0 + kWidth, x1);
    t.y1 = std::min(t.y0 + kHeight, y1);
    const Span& s = spans[static_cast<std::size_t>(index)];
    t.from = std::max(s.from, t.x0);
    t.to = std::min(s.to, t.x1);
    return t;
}

std::uint64_t TilePlan::tracedPixels() const {
    std::uint64_t n = 0;
    for (long i = 0; i < count(); ++i) {
        const Tile t = tile(i);
        if (t.from < t.to) n += std::uint64_t(t.to - t.from) * std::uint64_t(t.y1 - t.y0);
    }
    return n;
}

} // namespace lwsl
