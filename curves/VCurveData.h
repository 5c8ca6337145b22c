// Binds the current path to the layout values of the text. The view makes
// one, with a Line as its first path; the record does not own the path.
#pragma once

#include "curves/VCurve.h"

#include <cstdint>

class VCurveData {
  public:
    explicit VCurveData(VCurve* path) : curve(path) {}

    VCurve* curve;
    float slide = 50.0f;  // percentage along the path
    float spacing = 0.0f; // extra advance between letters
    float width = 2.0f;   // horizontal letter scale
    float height = 2.0f;  // vertical letter scale
    float depth = 2.0f;   // extrusion depth
    float revolve = 0.0f; // degrees
    float rotate = 0.0f;  // degrees
    float tilt = 0.0f;    // degrees
    float offsetX = 0.0f;
    float offsetY = 0.0f;
    float spin = 0.0f;        // turn of the letters about the Y axis
    std::uint8_t upright = 0; // 1 leaves the frame's orientation out
    std::int32_t upAxis = 2;  // axis the letters' depth runs along
};
