// The text model: one small group per outer contour of each letter, each set
// rigidly on the path at the arc length of its letter's middle. The group's
// own attribute set holds the face colour that all letters inherit.
#pragma once

#include "curves/VCurveData.h"
#include "d3d/DGroupObject.h"
#include "text/TextCharacter.h"

#include <cstdint>

class VAlignedText : public DAttributeDisplayGroup {
  public:
    // Empties the group and lays the text out afresh along curveData's path.
    // outline builds the cheap hollow letters; opacity is a fraction;
    // sideColor (red, green, blue) may be null. chars may be null: the group
    // then holds its back-face style alone. A failure of the library leaves
    // the group empty and is thrown on.
    void Rebuild(const TextCharacter* chars, const VCurveData& curveData, bool outline,
                 float opacity, const std::uint16_t* sideColor);

    // The length of the ink of the text along the path: from the first
    // letter's left edge to the last letter's right edge, with width and
    // spacing applied. The last letter's advance does not count.
    static float TextLength(const TextCharacter* chars, float width, float spacing);
    // Where the pen starts on a path of that length: on a closed path slide
    // places the middle of the text, on an open one it moves the text from
    // the start (0) to the end (100), never before the start.
    static float StartPen(const TextCharacter* chars, const VCurveData& curveData, float pathLength,
                          bool closed);

    // Puts the transforms that set a letter on the path into group, in the
    // order in which the library applies the last one first: scale, spin,
    // offset, the frame's axes, the shift back by half, tilt, rotate,
    // revolve, and the move to the curve point.
    static void PlaceCharacter(DGroupObject& group, const KVector3D& point,
                               const KVector3D& tangent, const KVector3D& normal,
                               const KVector3D& binormal, float half, const VCurveData& curveData);

  private:
    void Layout(const TextCharacter* chars, const VCurveData& curveData, bool outline,
                float opacity, const std::uint16_t* sideColor);
};
