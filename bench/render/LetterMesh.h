// Extruded letters for the render benchmark: glyph outlines read through the
// text layer, each outer contour with its holes made into a front and a back
// face (general polygons) and a band of sides (tri-grids), in one display
// group.
#pragma once

#include "platform/qd3d/QD3D.h"

#include <string>
#include <vector>

struct LetterMesh {
    TQ3GroupObject group = nullptr; // the caller disposes of it
    std::size_t contourPoints = 0;
    float width = 0, height = 0; // of the block of text, centred on the origin
};

// Lines of text in the named font at flattening quality 2, one line under the
// other, each letter depth deep. An empty group when the font is missing.
LetterMesh buildLetterMesh(const char* fontName, const std::vector<std::string>& lines,
                           float depth);
