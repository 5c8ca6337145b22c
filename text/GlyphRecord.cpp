#include "text/GlyphRecord.h"

#include <algorithm>
#include <cmath>

void RawContour::AddPoint(float x, float y, std::uint16_t onCurveFlag) {
    points.push_back(x);
    points.push_back(y);
    onCurve.push_back(onCurveFlag);
    count = static_cast<std::uint32_t>(onCurve.size());
}

void RawContour::Reverse() {
    std::reverse(onCurve.begin(), onCurve.end());
    for (std::uint32_t i = 0, j = count ? count - 1 : 0; i < j; ++i, --j) {
        std::swap(points[2 * i], points[2 * j]);
        std::swap(points[2 * i + 1], points[2 * j + 1]);
    }
}

double SignedAreaTerm(const RawContour& contour) {
    double sum = 0.0;
    const std::uint32_t n = contour.count;
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::uint32_t k = (i + 1 == n) ? 0 : i + 1;
        sum += static_cast<double>(contour.X(i)) * contour.Y(k) -
               static_cast<double>(contour.X(k)) * contour.Y(i);
    }
    return sum;
}

namespace {

// What one edge does to a ray from (px, py) toward +x.
enum class EdgeCut { None, Crosses, OnEdge };

EdgeCut CutEdge(double px, double py, double ax, double ay, double bx, double by) {
    if ((ax == px && ay == py) || (bx == px && by == py)) return EdgeCut::OnEdge;
    if (ay == py && by == py) {
        // Along the ray's height: only a question of touching.
        if (px >= std::min(ax, bx) && px <= std::max(ax, bx)) return EdgeCut::OnEdge;
        return EdgeCut::None;
    }
    // An end at the ray's height counts when the other end lies above.
    if (ay == py) return (by > py && ax > px) ? EdgeCut::Crosses : EdgeCut::None;
    if (by == py) return (ay > py && bx > px) ? EdgeCut::Crosses : EdgeCut::None;
    if ((ay < py) == (by < py)) return EdgeCut::None;

    const double dx = bx - ax, dy = by - ay;
    if (std::fabs(dy) > std::fabs(dx)) {
        // Steep edge: cut it at the ray's height.
        const double x = ax + (py - ay) * dx / dy;
        if (x == px) return EdgeCut::OnEdge;
        return x > px ? EdgeCut::Crosses : EdgeCut::None;
    }
    // Flat edge: look at its height at the point's x.
    const double left = std::min(ax, bx), right = std::max(ax, bx);
    if (px < left) return EdgeCut::Crosses;
    if (px > right) return EdgeCut::None;
    const double y = ay + (px - ax) * dy / dx;
    if (y == py) return EdgeCut::OnEdge;
    const double leftY = ax <= bx ? ay : by;
    // The crossing lies right of the point while the edge at px is still on
    // the side of the ray where its left end is.
    return ((leftY < py) == (y < py)) ? EdgeCut::Crosses : EdgeCut::None;
}

} // namespace

bool PointInContour(float x, float y, const RawContour& contour) {
    const std::uint32_t n = contour.count;
    bool inside = false;
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::uint32_t k = (i + 1 == n) ? 0 : i + 1;
        switch (CutEdge(x, y, contour.X(i), contour.Y(i), contour.X(k), contour.Y(k))) {
        case EdgeCut::OnEdge:
            return false;
        case EdgeCut::Crosses:
            inside = !inside;
            break;
        case EdgeCut::None:
            break;
        }
    }
    return inside;
}

void ClassifyContours(GlyphRecord& glyph) {
    constexpr double kAreaEpsilon = 1.1920929e-07;
    const std::uint32_t n = glyph.contours.GetCount();
    for (std::uint32_t i = 1; i <= n; ++i) {
        RawContour* contour = glyph.ContourAt(i);
        contour->kind =
            SignedAreaTerm(*contour) > kAreaEpsilon ? RawContour::kOuter : RawContour::kHole;
        contour->parent = 0;
    }
    std::vector<std::uint32_t> candidates;
    for (std::uint32_t h = 1; h <= n; ++h) {
        RawContour* hole = glyph.ContourAt(h);
        if (hole->kind != RawContour::kHole || hole->count == 0) continue;
        candidates.clear();
        for (std::uint32_t o = 1; o <= n; ++o) {
            const RawContour* outer = glyph.ContourAt(o);
            if (outer->kind == RawContour::kOuter && PointInContour(hole->X(0), hole->Y(0), *outer))
                candidates.push_back(o);
        }
        // Of nested candidates keep the inner one: b inside a drops a.
        while (candidates.size() > 1) {
            const RawContour* a = glyph.ContourAt(candidates[0]);
            const RawContour* b = glyph.ContourAt(candidates[1]);
            if (b->count > 0 && PointInContour(b->X(0), b->Y(0), *a))
                candidates.erase(candidates.begin());
            else
                candidates.erase(candidates.begin() + 1);
        }
        // Positions beyond 16 bits cannot be named; such a hole stays free.
        if (!candidates.empty() && candidates[0] <= 0xFFFF)
            hole->parent = static_cast<std::uint16_t>(candidates[0]);
    }
}
