#pragma once

#include "platform/fonts/WinFontTypes.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstdint>
#include <vector>

// 16.16 fixed point, saturated to the 32-bit range.
FIXED ToFixed(double value);
double FromFixed(FIXED value);
std::int32_t FixedBits(FIXED value);

// Writes a FreeType outline in the native outline format: per contour a
// TTPOLYGONHEADER and its curve records (lines, quadratic splines in which two
// successive control points imply the on-curve point between them, and cubic
// segments of three points each). Font units are multiplied by scale and then
// by the matrix. A segment that returns to the start point by a straight line
// is left implicit; a curved one ends on the start point. Contours are
// written in the order and direction they have in the outline.
std::vector<unsigned char> EncodeNativeOutline(const FT_Outline& outline, double scale,
                                               const MAT2& matrix);
