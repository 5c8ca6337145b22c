#pragma once

#include "foundation/KList.h"
#include "platform/fonts/WinFontTypes.h"
#include "text/Type1Fonts.h"

#include <cstdint>
#include <vector>

// One outline point, 16.16 fixed point.
class KGlyphPoint {
  public:
    KGlyphPoint() = default;
    KGlyphPoint(std::int32_t px, std::int32_t py, std::uint8_t on) : x(px), y(py), onCurve(on) {}
    virtual ~KGlyphPoint() = default;
    KGlyphPoint(const KGlyphPoint&) = default;
    KGlyphPoint& operator=(const KGlyphPoint&) = default;

    std::int32_t x = 0;
    std::int32_t y = 0;
    std::uint8_t onCurve = 1;
};

// A growing array of points: it grows by 10 when full, and Trim makes the
// storage exactly as large as asked.
class KGlyphPointArray {
  public:
    explicit KGlyphPointArray(std::uint32_t initialCapacity = 0);

    void Add(const KGlyphPoint& point);
    void Trim(std::uint32_t n);
    void Clear() { points.clear(); }
    std::uint32_t Count() const { return static_cast<std::uint32_t>(points.size()); }

    std::vector<KGlyphPoint> points;
};

// The outline of one character as the Type 1 service delivers it.
class Type1GlyphChar {
  public:
    Type1GlyphChar(const Type1Service& service, HDC context, const LOGFONTA& font, WCHAR16 code);
    virtual ~Type1GlyphChar() = default;

    std::vector<KGlyphPointArray> contours;
    KGlyphPointArray current{5};
    std::int32_t status = 0;
    WCHAR16 character;
    bool valid = false;
    std::int32_t width = 0;  // 16.16
    std::int32_t height = 0; // 16.16
    KGlyphPoint topLeft;
    KGlyphPoint bottomRight;

  private:
    static int MoveTo(const ATMFixedPoint* point, void* data);
    static int LineTo(const ATMFixedPoint* point, void* data);
    static int CurveTo(const ATMFixedPoint* c1, const ATMFixedPoint* c2, const ATMFixedPoint* end,
                       void* data);
    static int ClosePath(void* data);
    void MeasureBounds();
};

// The outlines of a text in one Type 1 face. A character that the service
// refuses stays empty and does not fail the string.
class Type1GlyphString {
  public:
    Type1GlyphString(const Type1Service& service, HDC context, const Type1FontRecord& record,
                     const char* text);
    virtual ~Type1GlyphString();
    Type1GlyphString(const Type1GlyphString&) = delete;
    Type1GlyphString& operator=(const Type1GlyphString&) = delete;

    HDC deviceContext;
    Type1FontRecord font;
    std::vector<WCHAR16> wideText;
    bool valid = false;
    std::int32_t status = 0;
    std::uint32_t length = 0;
    std::vector<Type1GlyphChar*> chars; // owned
};

// Appends one GlyphRecord per code unit of the text, classified. The advance
// is the inked width and a tenth of it (a quarter em for a character without
// ink). Throws on failure.
void ReadType1Glyphs(const Type1Service& service, HDC context, const Type1FontRecord& record,
                     const char* text, KList& records);
