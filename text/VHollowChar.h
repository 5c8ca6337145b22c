// One outer contour of a letter, with its holes, as its outline alone: the
// cheap form shown while a text tool drags. With depth, a wire cage of two
// rows of the contour's points; without, plain lines in the plane z = 0.
#pragma once

#include "d3d/DGroupObject.h"
#include "text/TextCharacter.h"

#include <cstdint>

class VHollowChar : public DDisplayGroup {
  public:
    // depthValue is the layout depth, 0 to 100; the cage runs from
    // -depthValue / 10 to +depthValue / 10.
    VHollowChar(const OuterContour& contour, float depthValue);

    float halfDepth;

  protected:
    // Plain lines through a contour's points at z = 0. A contour longer than
    // a polyline holds goes into several, each starting where the last ended.
    virtual void MakeLine(const float* points, std::uint32_t count);
    // The two rows of a contour's points at +-halfDepth, joined as a grid.
    virtual void MakeCage(const float* points, std::uint32_t count);
};
