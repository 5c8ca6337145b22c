#include "d3d/DGridObject.h"

#include "d3d/DGeometryObject.h"
#include "d3d/DWidgetColors.h"

#include <algorithm>
#include <cmath>

namespace {

float& Axis(KVector3D& v, int i) {
    return i == 0 ? v.x : (i == 1 ? v.y : v.z);
}

// A grid of more lines than this per direction is refused: it would only
// stand for a degenerate step.
constexpr int kMaxLinesPerDirection = 10000;

} // namespace

DGridObject::DGridObject() {
    Build(false);
}

DGridObject::DGridObject(const KVector3D& lo, const KVector3D& hi, float n)
    : min(lo), max(hi), divisions(n) {
    Build(false);
}

void DGridObject::SetBounds(const KVector3D& lo, const KVector3D& hi, float n) {
    Empty();
    min = lo;
    max = hi;
    divisions = n;
    Build(true);
}

void DGridObject::SetPlane(int p) {
    if (p < 0 || p > 2) return;
    plane = p;
    Empty();
    Build(false);
}

void DGridObject::Build(bool atMinimum) {
    SetDiffuseColor(kWidgetGrey, kWidgetGrey, kWidgetGrey);
    static const int axes[3][3] = {{0, 1, 2}, {0, 2, 1}, {1, 2, 0}};
    const int a = axes[plane][0], b = axes[plane][1], c = axes[plane][2];
    KVector3D lo = min, hi = max;
    const float la = std::fabs(Axis(hi, a) - Axis(lo, a));
    const float lb = std::fabs(Axis(hi, b) - Axis(lo, b));
    const float step = std::min(la, lb) / divisions;
    // A flat or unbounded grid, or a division count that is no number, has
    // no lines to draw.
    if (!std::isfinite(step) || !(step > 0.0f)) return;
    const float h = divisions * step / 2.0f;
    const float third = atMinimum ? Axis(lo, c) : 0.0f;

    auto lines = [&](int along, int across) {
        const float from = Axis(lo, along) - h, to = Axis(hi, along) + h;
        const float count = std::floor((to - from) / step + 1e-4f);
        if (!(count < kMaxLinesPerDirection)) return;
        for (int k = 0; k <= static_cast<int>(count); ++k) {
            const float t = from + static_cast<float>(k) * step;
            KVector3D p, q;
            Axis(p, along) = t;
            Axis(q, along) = t;
            Axis(p, across) = Axis(lo, across) - h;
            Axis(q, across) = Axis(hi, across) + h;
            Axis(p, c) = third;
            Axis(q, c) = third;
            DLineObject line({p.x, p.y, p.z}, {q.x, q.y, q.z}, -1, -1, -1);
            AddObject(line);
        }
    };
    lines(a, b);
    lines(b, a);
}
