#include "text/Flattening.h"

#include <algorithm>
#include <cmath>

namespace {

struct QualityLevel {
    float chordLimit; // squared length of the chord
    float cosine;     // of the smallest angle at the middle point left unsplit
};

// The cosines are of 160, 170 and 176 degrees.
const QualityLevel kLevels[3] = {
    {0.0256f, static_cast<float>(std::cos(2.7925267))},
    {0.0064f, static_cast<float>(std::cos(2.9670596))},
    {0.0016f, static_cast<float>(std::cos(3.0717795))},
};

int gFlattenQuality = 1;

struct Point {
    float x, y;
};

Point Evaluate(const float* p, int degree, float t) {
    const float s = 1.0f - t;
    if (degree == 2) {
        const float b0 = s * s, b1 = 2.0f * s * t, b2 = t * t;
        return {b0 * p[0] + b1 * p[2] + b2 * p[4], b0 * p[1] + b1 * p[3] + b2 * p[5]};
    }
    const float b0 = s * s * s, b1 = 3.0f * s * s * t, b2 = 3.0f * s * t * t, b3 = t * t * t;
    return {b0 * p[0] + b1 * p[2] + b2 * p[4] + b3 * p[6],
            b0 * p[1] + b1 * p[3] + b2 * p[5] + b3 * p[7]};
}

float Square(float x, float y) {
    return x * x + y * y;
}

bool NeedsSplit(Point a, Point b, Point m) {
    const QualityLevel& level = kLevels[gFlattenQuality];
    if (Square(b.x - a.x, b.y - a.y) > level.chordLimit) return true;
    const float ux = a.x - m.x, uy = a.y - m.y, vx = b.x - m.x, vy = b.y - m.y;
    const float uu = Square(ux, uy), vv = Square(vx, vy);
    const double lengths = 2.0 * std::sqrt(static_cast<double>(uu)) * std::sqrt(double(vv));
    // The middle point on an end: no angle to speak of.
    if (!(lengths > 0.0)) return false;
    const double c = (uu + vv - Square(ux - vx, uy - vy)) / lengths;
    return c > level.cosine;
}

void Split(const float* p, int degree, float t0, Point a, float t1, Point b, int level,
           CExpList& out) {
    if (level >= 7) return;
    const float t = (t0 + t1) / 2.0f;
    const Point m = Evaluate(p, degree, t);
    if (!NeedsSplit(a, b, m)) return;
    Split(p, degree, t0, a, t, m, level + 1, out);
    out.Add(m.x, m.y, 1);
    Split(p, degree, t, m, t1, b, level + 1, out);
}

} // namespace

CExpList::CExpList() {
    points.reserve(2 * 20);
    smooth.reserve(20);
}

void CExpList::Add(float x, float y, std::uint8_t smoothFlag) {
    points.push_back(x);
    points.push_back(y);
    smooth.push_back(smoothFlag);
    count = static_cast<std::uint32_t>(smooth.size());
}

void SetFlattenQuality(int quality) {
    gFlattenQuality = std::clamp(quality, 0, 2);
}
int GetFlattenQuality() {
    return gFlattenQuality;
}

void FlattenSegment(const float* p, int degree, CExpList& out) {
    const Point p0{p[0], p[1]};
    const Point p1{p[2 * degree], p[2 * degree + 1]};
    Split(p, degree, 0.0f, p0, 1.0f, p1, 1, out);
    out.Add(p1.x, p1.y, 0);
}

void FlattenQuadraticContour(const RawContour& contour, CExpList& out) {
    const std::uint32_t n = contour.count;
    auto next = [n](std::uint32_t i) { return (i + 1 >= n) ? 0u : i + 1; };
    // Points enter with y negated, which turns y upward again.
    auto x = [&](std::uint32_t i) { return contour.X(i); };
    auto y = [&](std::uint32_t i) { return -contour.Y(i); };
    bool first = true;
    std::uint32_t i = 0;
    while (i < n) {
        if (contour.onCurve[i] && first) {
            out.Add(x(i), y(i), 0);
            first = false;
        }
        const std::uint32_t j = next(i);
        if (contour.onCurve[j]) {
            out.Add(x(j), y(j), 0);
            i += 1;
            continue;
        }
        const std::uint32_t k = next(j);
        if (contour.onCurve[k]) {
            const float segment[6] = {x(i), y(i), x(j), y(j), x(k), y(k)};
            FlattenSegment(segment, 2, out);
            i += 2;
        } else {
            // Two control points in a row do not come from the reader; step
            // over rather than loop.
            i += 1;
        }
    }
}

void FlattenCubicContour(const RawContour& contour, CExpList& out) {
    const std::uint32_t n = contour.count;
    if (n == 0) return;
    // Indices wrap, so that a contour whose last curve ends on its first
    // point, or a damaged one, never reads past its end.
    auto at = [n](std::uint32_t i) { return i % n; };
    auto x = [&](std::uint32_t i) { return contour.X(at(i)); };
    auto y = [&](std::uint32_t i) { return -contour.Y(at(i)); };
    auto cubic = [&](std::uint32_t i) {
        const float segment[8] = {x(i),     y(i),     x(i + 1), y(i + 1),
                                  x(i + 2), y(i + 2), x(i + 3), y(i + 3)};
        FlattenSegment(segment, 3, out);
    };
    std::uint32_t i;
    bool wrap;
    if (contour.onCurve[0] == 0) {
        out.Add(x(n - 1), y(n - 1), 0);
        const float segment[8] = {x(n - 1), y(n - 1), x(0), y(0), x(1), y(1), x(2), y(2)};
        FlattenSegment(segment, 3, out);
        i = 2;
        wrap = false;
    } else {
        out.Add(x(0), y(0), 0);
        i = 0;
        wrap = true;
    }
    while (i + 1 < n) {
        if (contour.onCurve[i + 1] == 0) {
            cubic(i);
            i += 3;
        } else {
            out.Add(x(i + 1), y(i + 1), 0);
            i += 1;
        }
    }
    // The closing line back to the start, unless the last curve already ended
    // there (its end point was the first point, read round the end).
    if (wrap && i < n) out.Add(x(0), y(0), 0);
}
