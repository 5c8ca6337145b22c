// One outer contour of a letter, with its holes, as an extruded body: a flat
// face at z = 0, one at z = depth and a band of sides between them, moved
// back by half the depth so that the body is centred on z = 0.
#pragma once

#include "d3d/DGroupObject.h"
#include "text/TextCharacter.h"

#include <cstdint>

class VSolidChar : public DDisplayGroup {
  public:
    // depthValue is the layout depth, 0 to 100; the body is a fifth of it
    // deep. yMin and yMax span the whole text, so that a texture keeps its
    // scale from letter to letter. Below an opacity of 1 every part carries
    // the transparency colour and both sides of the faces are drawn.
    // sideColor, if given, points to red, green and blue of the band.
    VSolidChar(const OuterContour& contour, float depthValue, float yMin, float yMax, float opacity,
               const std::uint16_t* sideColor);

    float depth;
    float yMin;
    float yMax;
    float textureScale;
    float opacity;
    const std::uint16_t* sideColor;

  protected:
    // The two faces: the outer contour and its holes in one general polygon
    // at z = 0, and again at z = depth with each contour reversed.
    virtual void MakeFaces(const OuterContour& contour);
    // The band of sides along one contour (all its points, the closing one
    // included).
    virtual void MakeSide(const float* points, const std::uint8_t* smooth, std::uint32_t count);
};

// A contour is drawn when it has at least three corners besides its closing
// point; shorter ones (a lone move, a stroke of no area) are left out.
bool IsDrawableContour(const float* points, std::uint32_t count);
