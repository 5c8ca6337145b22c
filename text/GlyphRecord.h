#pragma once

#include "foundation/KList.h"

#include <cstdint>
#include <vector>

// One closed contour of a glyph as read from the font, before flattening. y
// points downward here, and an outer contour has a positive signed area.
class RawContour : public KListEntry {
  public:
    enum : std::uint16_t { kOuter = 0, kHole = 1 };

    // Adds one point; onCurve is 1 for a point on the outline, 0 for a
    // control point.
    void AddPoint(float x, float y, std::uint16_t onCurveFlag);
    // Reverses the order of points and flags.
    void Reverse();
    float X(std::uint32_t i) const { return points[2 * i]; }
    float Y(std::uint32_t i) const { return points[2 * i + 1]; }

    std::uint16_t kind = kOuter;
    // For a hole, the 1-based position of the outer contour holding it in
    // the glyph's contour list; 0 for none.
    std::uint16_t parent = 0;
    std::vector<float> points; // x, y pairs
    std::uint32_t count = 0;
    std::vector<std::uint16_t> onCurve;
};

// One character between reading and flattening.
class GlyphRecord : public KListEntry {
  public:
    RawContour* ContourAt(std::uint32_t position) const {
        return static_cast<RawContour*>(contours.EntryAt(position));
    }

    std::uint8_t marker = 'a';
    float advance = 0.0f;
    KList contours; // of RawContour, owned
    // Control points are cubic (PostScript outlines) rather than quadratic.
    bool cubic = false;
};

// The signed area term of a contour over all its points, control points
// included, with the closing edge: twice the area, positive for a contour
// that runs counter-clockwise in its own axes.
double SignedAreaTerm(const RawContour& contour);

// Whether (x, y) lies strictly inside the contour's polygon of raw points. A
// point on an edge or a vertex is outside.
bool PointInContour(float x, float y, const RawContour& contour);

// Sets each contour's kind by the sign of its area and attaches each hole to
// the innermost outer contour around its first point.
void ClassifyContours(GlyphRecord& glyph);
