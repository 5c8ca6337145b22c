#pragma once

#include "foundation/KList.h"
#include "platform/fonts/WinFontTypes.h"

#include <cstdint>
#include <vector>

// The native outline of one character of an outline face, and the index of
// its contours and curve records. Offsets count from the start of buffer.
class KWinTTGlyphChar {
  public:
    struct Polygon {
        std::uint32_t header;              // offset of the TTPOLYGONHEADER
        std::uint32_t curveCount;          // number of curve records
        std::vector<std::uint32_t> curves; // offsets of the TTPOLYCURVE records
    };

    KWinTTGlyphChar(HDC context, const ENUMLOGFONTA& font, WCHAR16 code);
    virtual ~KWinTTGlyphChar() = default;

    // Adds one RawContour per contour to the record; marks it cubic when
    // the outline has cubic records.
    void ReadContours(class GlyphRecord& glyph) const;

    WCHAR16 character;
    ENUMLOGFONTA logFont;
    bool valid = false; // the buffer was read and indexed
    GLYPHMETRICS metrics{};
    std::uint32_t bufferSize = 0;
    std::vector<unsigned char> buffer;
    MAT2 transform{};
    std::uint32_t polygonCount = 0;
    std::vector<Polygon> polygons;

  private:
    bool Index();
};

// The outlines of a whole text in one face.
class KWinTTGlyphString {
  public:
    KWinTTGlyphString(HDC context, const ENUMLOGFONTA& font, const char* text);
    virtual ~KWinTTGlyphString();
    KWinTTGlyphString(const KWinTTGlyphString&) = delete;
    KWinTTGlyphString& operator=(const KWinTTGlyphString&) = delete;

    HDC deviceContext;
    ENUMLOGFONTA logFont;
    std::vector<WCHAR16> wideText;
    bool valid = false;
    std::uint32_t length = 0;
    std::vector<KWinTTGlyphChar*> chars; // owned
};

// Appends one GlyphRecord per code unit of the text, classified. Throws on
// failure.
void ReadTrueTypeGlyphs(HDC context, const ENUMLOGFONTA& font, const char* text, KList& records);
