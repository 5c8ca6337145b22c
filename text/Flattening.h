#pragma once

#include "text/GlyphRecord.h"

#include <cstdint>
#include <vector>

// The growing buffer that flattening writes a contour into: points and, for
// each, whether subdivision put it inside a curve (1) or it lay on the
// outline already (0).
class CExpList {
  public:
    CExpList();
    virtual ~CExpList() = default;

    void Add(float x, float y, std::uint8_t smoothFlag);

    std::vector<float> points; // x, y pairs
    std::vector<std::uint8_t> smooth;
    std::uint32_t count = 0;
};

// The three levels of flattening: 0 coarse, 1 normal, 2 fine. Values outside
// are taken as the nearest level.
void SetFlattenQuality(int quality);
int GetFlattenQuality();

// Adds the inner points of a curve segment of degree 2 or 3 (control points
// p[0..degree], x, y pairs) and then its end point. The start point is the
// caller's.
void FlattenSegment(const float* p, int degree, CExpList& out);

// The flattened, closed form of a raw contour, y turned upward: the walk for
// quadratic outlines (on-curve points with single control points between
// them) or for cubic ones (two control points between on-curve points).
void FlattenQuadraticContour(const RawContour& contour, CExpList& out);
void FlattenCubicContour(const RawContour& contour, CExpList& out);
