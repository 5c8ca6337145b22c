#pragma once

#include <cstdint>

// The flat form in which glyphs pass from the fonts to the geometry: one
// record per character of the text, in font units, x to the right, y upward,
// the baseline at y = 0, the pen at x = 0. Contours are closed: the last
// point repeats the first. smooth is 1 for a point that subdivision put
// inside a curve, 0 for a point that lay on the outline already.

struct HoleContour {
    float* points = nullptr; // x, y pairs
    std::uint8_t* smooth = nullptr;
    std::uint32_t count = 0;
    HoleContour* next = nullptr;
};

struct OuterContour {
    float* points = nullptr; // x, y pairs
    std::uint8_t* smooth = nullptr;
    std::uint32_t count = 0;
    OuterContour* next = nullptr;
    HoleContour* holes = nullptr;
};

struct TextCharacter {
    float advance = 0.0f;
    float xMin = 0.0f;
    float xMax = 0.0f;
    float yMin = 0.0f;
    float yMax = 0.0f;
    OuterContour* contours = nullptr;
    TextCharacter* next = nullptr;
};

// Reads text in the current font of the font list into a new chain written to
// *chain (null for an empty text or a font that is no longer installed).
// quality is the flattening level, 0 to 2. False, with null in *chain, when
// reading failed; the chain belongs to the caller.
bool BuildTextCharacters(const char* text, int quality, TextCharacter** chain);

// Frees a chain with all its contours and points. Null is allowed.
void FreeTextCharacters(TextCharacter* chain);
