#pragma once

#include "foundation/KList.h"

#include <cstdint>
#include <string>

// One row of the list of fonts that the user picks from.
class FontListEntry : public KListEntry {
  public:
    enum : std::int32_t { kTrueType = 0, kType1 = 2 };

    // Index of the face in its own list (the outline faces or the Type 1
    // directory), kept three times.
    std::uint16_t id = 0;
    std::uint16_t id2 = 0;
    std::uint16_t id3 = 0;
    std::string name; // the full name
    std::int32_t kind = kTrueType;
};

// Fills the font list: every outline face as kind 0 and, when the Type 1
// service runs, every Type 1 face as kind 2, sorted by name in byte order.
// Sets the default row ("Arial", or else the face fontconfig serves for that
// name, or else the first) as the current one, and
// answers its position (0 for an empty list), also written to
// *defaultPosition when that is not null.
std::uint32_t BuildFontList(std::uint32_t* defaultPosition = nullptr);
void FreeFontList();
// The rows, for the font box; empty before BuildFontList.
KList& GetFontList();

// Chooses the row at a 1-based position; false, and nothing changed, for a
// position that names no row.
bool SetCurrentFont(std::uint32_t position);
std::uint32_t GetCurrentFont();
std::uint32_t GetDefaultFont();
std::int32_t GetCurrentKind();
// The row at a position, or null.
const FontListEntry* FontListEntryAt(std::uint32_t position);
// The position of the row with exactly this name, or 0.
std::uint32_t FindFontListPosition(const char* name);
