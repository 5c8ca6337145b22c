#include "text/Type1Glyph.h"

#include "foundation/Failures.h"
#include "platform/fonts/WinFonts.h"
#include "text/GlyphRecord.h"

#include <algorithm>
#include <cmath>
#include <memory>

KGlyphPointArray::KGlyphPointArray(std::uint32_t initialCapacity) {
    points.reserve(initialCapacity);
}

void KGlyphPointArray::Add(const KGlyphPoint& point) {
    if (points.size() == points.capacity()) points.reserve(points.capacity() + 10);
    points.push_back(point);
}

void KGlyphPointArray::Trim(std::uint32_t n) {
    if (n < points.size()) points.resize(n);
    points.shrink_to_fit();
}

Type1GlyphChar::Type1GlyphChar(const Type1Service& service, HDC context, const LOGFONTA& font,
                               WCHAR16 code)
    : character(code) {
    contours.reserve(10);
    LOGFONTA oneUnit = font;
    oneUnit.lfHeight = -1;
    HFONT handle = CreateFontIndirectA(&oneUnit);
    if (!handle) ThrowPlin();
    HFONT previous = SelectObject(context, handle);
    // The identity with y turned over.
    const ATMFixedMatrix matrix{0x10000, 0, 0, static_cast<std::int32_t>(0xFFFF0000u), 0, 0};
    try {
        status = service.GetOutlineA(context, character, &matrix, MoveTo, LineTo, CurveTo,
                                     ClosePath, this);
        if (status != 0) {
            contours.clear();
            current.Clear();
            status = service.GetOutlineW(context, character, &matrix, MoveTo, LineTo, CurveTo,
                                         ClosePath, this);
        }
    } catch (...) {
        SelectObject(context, previous);
        DeleteObject(handle);
        throw;
    }
    valid = status == 0;
    if (!valid) contours.clear();
    contours.shrink_to_fit();
    if (valid) MeasureBounds();
    SelectObject(context, previous);
    DeleteObject(handle);
}

// The callbacks run inside the service: an allocation failure must not
// unwind through it, so it stops the outline instead.
int Type1GlyphChar::MoveTo(const ATMFixedPoint* point, void* data) {
    auto* self = static_cast<Type1GlyphChar*>(data);
    if (!point) return 0;
    try {
        self->current.Clear();
        self->current.Add(KGlyphPoint(point->x, point->y, 1));
    } catch (...) {
        return 0;
    }
    return 1;
}

int Type1GlyphChar::LineTo(const ATMFixedPoint* point, void* data) {
    auto* self = static_cast<Type1GlyphChar*>(data);
    if (!point) return 0;
    try {
        self->current.Add(KGlyphPoint(point->x, point->y, 1));
    } catch (...) {
        return 0;
    }
    return 1;
}

int Type1GlyphChar::CurveTo(const ATMFixedPoint* c1, const ATMFixedPoint* c2,
                            const ATMFixedPoint* end, void* data) {
    auto* self = static_cast<Type1GlyphChar*>(data);
    if (!c1 || !c2) return 0;
    try {
        self->current.Add(KGlyphPoint(c1->x, c1->y, 0));
        self->current.Add(KGlyphPoint(c2->x, c2->y, 0));
        if (end) self->current.Add(KGlyphPoint(end->x, end->y, 1));
    } catch (...) {
        return 0;
    }
    return 1;
}

int Type1GlyphChar::ClosePath(void* data) {
    auto* self = static_cast<Type1GlyphChar*>(data);
    try {
        self->current.Trim(self->current.Count());
        self->contours.push_back(std::move(self->current));
        self->current = KGlyphPointArray(5);
    } catch (...) {
        return 0;
    }
    return 1;
}

void Type1GlyphChar::MeasureBounds() {
    // The origin is always inside, so the width reaches from the pen to the
    // ink even for a glyph that starts to the right of it.
    topLeft = KGlyphPoint(0, 0, 1);
    bottomRight = KGlyphPoint(0, 0, 1);
    for (const KGlyphPointArray& contour : contours)
        for (const KGlyphPoint& p : contour.points) {
            topLeft.x = std::min(topLeft.x, p.x);
            topLeft.y = std::min(topLeft.y, p.y);
            bottomRight.x = std::max(bottomRight.x, p.x);
            bottomRight.y = std::max(bottomRight.y, p.y);
        }
    width = static_cast<std::int32_t>(
        std::min<std::int64_t>(std::int64_t(bottomRight.x) - topLeft.x, INT32_MAX));
    height = static_cast<std::int32_t>(
        std::min<std::int64_t>(std::int64_t(bottomRight.y) - topLeft.y, INT32_MAX));
}

Type1GlyphString::Type1GlyphString(const Type1Service& service, HDC context,
                                   const Type1FontRecord& record, const char* text)
    : deviceContext(context), font(record) {
    if (!text) return;
    const int units = MultiByteToWideChar(0, 0, text, -1, nullptr, 0);
    if (units <= 0) return;
    wideText.resize(static_cast<std::size_t>(units));
    if (MultiByteToWideChar(0, 0, text, -1, wideText.data(), units) != units) return;
    length = static_cast<std::uint32_t>(units - 1);
    try {
        chars.reserve(length);
        for (std::uint32_t i = 0; i < length; ++i) {
            auto glyph =
                std::make_unique<Type1GlyphChar>(service, deviceContext, font.logFont, wideText[i]);
            status = glyph->status;
            chars.push_back(glyph.release());
        }
    } catch (...) {
        for (Type1GlyphChar* glyph : chars)
            delete glyph;
        chars.clear();
        wideText.clear();
        length = 0;
        throw;
    }
    valid = true;
}

Type1GlyphString::~Type1GlyphString() {
    for (Type1GlyphChar* glyph : chars)
        delete glyph;
}

void ReadType1Glyphs(const Type1Service& service, HDC context, const Type1FontRecord& record,
                     const char* text, KList& records) {
    Type1GlyphString string(service, context, record, text);
    if (!string.valid) ThrowPlin();
    for (const Type1GlyphChar* glyphChar : string.chars) {
        auto glyph = std::make_unique<GlyphRecord>();
        glyph->cubic = true;
        const double w = glyphChar->width / 65536.0;
        glyph->advance = std::fabs(w) >= 1.1920929e-07 ? static_cast<float>(w * 0.1 + w) : 0.25f;
        for (const KGlyphPointArray& points : glyphChar->contours) {
            auto contour = std::make_unique<RawContour>();
            for (const KGlyphPoint& p : points.points)
                contour->AddPoint(static_cast<float>(p.x / 65536.0),
                                  static_cast<float>(p.y / 65536.0), p.onCurve);
            // The service winds outer contours the other way round.
            contour->Reverse();
            glyph->contours.Append(contour.get());
            contour.release();
        }
        ClassifyContours(*glyph);
        records.Append(glyph.get());
        glyph.release();
    }
}
