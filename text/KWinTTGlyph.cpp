#include "text/KWinTTGlyph.h"

#include "foundation/Failures.h"
#include "platform/fonts/WinFonts.h"
#include "text/GlyphRecord.h"

#include <cstring>
#include <memory>

namespace {

template <typename T> T ReadAt(const std::vector<unsigned char>& buffer, std::uint32_t offset) {
    T value;
    std::memcpy(&value, buffer.data() + offset, sizeof value);
    return value;
}

std::int32_t PointBits(const FIXED& f) {
    return static_cast<std::int32_t>(
        (static_cast<std::uint32_t>(static_cast<std::uint16_t>(f.value)) << 16) | f.fract);
}

// Font units of the enumerated em (32 pixels) to one unit per em, y
// downward as the raw contours have it.
void AddPoint(RawContour& contour, const POINTFX& p, std::uint16_t onCurve) {
    const float x = static_cast<float>(PointBits(p.x) / 65536.0 / 32.0);
    const float y = static_cast<float>(PointBits(p.y) / 65536.0 / 32.0);
    contour.AddPoint(x, -y, onCurve);
}

} // namespace

KWinTTGlyphChar::KWinTTGlyphChar(HDC context, const ENUMLOGFONTA& font, WCHAR16 code)
    : character(code), logFont(font) {
    transform.eM11.value = 1;
    transform.eM22.value = 1;
    HFONT handle = CreateFontIndirectA(&logFont.elfLogFont);
    if (!handle) ThrowPlin();
    HFONT previous = SelectObject(context, handle);
    DWORD size = GetGlyphOutlineA(context, character, GGO_NATIVE, &metrics, 0, nullptr, &transform);
    if (size != 0 && size != GDI_ERROR) {
        try {
            buffer.resize(size);
        } catch (...) {
            SelectObject(context, previous);
            DeleteObject(handle);
            throw;
        }
        if (GetGlyphOutlineA(context, character, GGO_NATIVE, &metrics, size, buffer.data(),
                             &transform) == size)
            bufferSize = size;
        else
            buffer.clear();
    }
    SelectObject(context, previous);
    DeleteObject(handle);
    valid = Index();
}

bool KWinTTGlyphChar::Index() {
    const std::uint32_t size = bufferSize;
    std::uint32_t offset = 0;
    while (offset < size) {
        if (size - offset < sizeof(TTPOLYGONHEADER)) return false;
        const auto header = ReadAt<TTPOLYGONHEADER>(buffer, offset);
        if (header.cb < sizeof(TTPOLYGONHEADER) || header.cb > size - offset) return false;
        Polygon polygon{offset, 0, {}};
        const std::uint32_t end = offset + header.cb;
        std::uint32_t curve = offset + sizeof(TTPOLYGONHEADER);
        while (curve < end) {
            if (end - curve < 4) return false;
            const auto points = ReadAt<WORD>(buffer, curve + 2);
            const std::uint32_t recordSize = 4 + 8u * points;
            if (recordSize > end - curve) return false;
            polygon.curves.push_back(curve);
            curve += recordSize;
        }
        polygon.curveCount = static_cast<std::uint32_t>(polygon.curves.size());
        polygons.push_back(std::move(polygon));
        offset = end;
    }
    polygonCount = static_cast<std::uint32_t>(polygons.size());
    return true;
}

void KWinTTGlyphChar::ReadContours(GlyphRecord& glyph) const {
    if (!valid) return;
    for (const Polygon& polygon : polygons) {
        auto contour = std::make_unique<RawContour>();
        const auto header = ReadAt<TTPOLYGONHEADER>(buffer, polygon.header);
        AddPoint(*contour, header.pfxStart, 1);
        for (std::uint32_t offset : polygon.curves) {
            const auto type = ReadAt<WORD>(buffer, offset);
            const auto n = ReadAt<WORD>(buffer, offset + 2);
            auto point = [&](std::uint32_t j) {
                return ReadAt<POINTFX>(buffer, offset + 4 + 8 * j);
            };
            if (type == TT_PRIM_LINE) {
                for (std::uint32_t j = 0; j < n; ++j)
                    AddPoint(*contour, point(j), 1);
            } else if (type == TT_PRIM_QSPLINE && n >= 2) {
                // Control points, with the on-curve point between two of
                // them made explicit, and the end point.
                for (std::uint32_t j = 0; j + 1 < n; ++j) {
                    const POINTFX control = point(j);
                    AddPoint(*contour, control, 0);
                    if (j + 2 < n) {
                        const POINTFX following = point(j + 1);
                        RawContour& c = *contour;
                        const float x0 = c.X(c.count - 1), y0 = c.Y(c.count - 1);
                        const float x1 =
                            static_cast<float>(PointBits(following.x) / 65536.0 / 32.0);
                        const float y1 =
                            -static_cast<float>(PointBits(following.y) / 65536.0 / 32.0);
                        c.AddPoint((x0 + x1) / 2.0f, (y0 + y1) / 2.0f, 1);
                    } else {
                        AddPoint(*contour, point(j + 1), 1);
                    }
                }
            } else if (type == TT_PRIM_CSPLINE) {
                // Two control points and an on-curve point per segment.
                for (std::uint32_t j = 0; j < n; ++j)
                    AddPoint(*contour, point(j), (j % 3) == 2);
                glyph.cubic = true;
            }
        }
        // A curve that closes the contour ends on the start point; the walks
        // close every contour themselves, so the repeat would only make an
        // edge of no length.
        RawContour& c = *contour;
        if (c.count > 1 && c.X(c.count - 1) == c.X(0) && c.Y(c.count - 1) == c.Y(0)) {
            c.points.resize(c.points.size() - 2);
            c.onCurve.pop_back();
            c.count -= 1;
        }
        glyph.contours.Append(contour.get());
        contour.release();
    }
}

KWinTTGlyphString::KWinTTGlyphString(HDC context, const ENUMLOGFONTA& font, const char* text)
    : deviceContext(context), logFont(font) {
    if (!text) return;
    const int units = MultiByteToWideChar(0, 0, text, -1, nullptr, 0);
    if (units <= 0) return;
    wideText.resize(static_cast<std::size_t>(units));
    if (MultiByteToWideChar(0, 0, text, -1, wideText.data(), units) != units) return;
    length = static_cast<std::uint32_t>(units - 1);
    try {
        chars.reserve(length);
        for (std::uint32_t i = 0; i < length; ++i) {
            auto glyph = std::make_unique<KWinTTGlyphChar>(deviceContext, logFont, wideText[i]);
            chars.push_back(glyph.release());
        }
    } catch (...) {
        for (KWinTTGlyphChar* glyph : chars)
            delete glyph;
        throw;
    }
    valid = true;
}

KWinTTGlyphString::~KWinTTGlyphString() {
    for (KWinTTGlyphChar* glyph : chars)
        delete glyph;
}

void ReadTrueTypeGlyphs(HDC context, const ENUMLOGFONTA& font, const char* text, KList& records) {
    KWinTTGlyphString string(context, font, text);
    if (!string.valid) ThrowPlin();
    for (const KWinTTGlyphChar* glyphChar : string.chars) {
        auto record = std::make_unique<GlyphRecord>();
        record->advance = static_cast<float>(glyphChar->metrics.gmCellIncX / 32.0);
        glyphChar->ReadContours(*record);
        ClassifyContours(*record);
        records.Append(record.get());
        record.release();
    }
}
