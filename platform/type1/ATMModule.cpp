// The Type 1 font service over fontconfig and FreeType. Outlines come out as
// the font has them: cubic, outer contours counter-clockwise with y upward
// (the matrix decides where y goes), each contour opened by a move and ended
// by a close, with the closing segment implicit when it is straight.

#include "platform/fonts/CodePage.h"
#include "platform/fonts/FontCatalogue.h"
#include "platform/fonts/FreeTypeFaces.h"
#include "platform/type1/ATMLib.h"

#include FT_OUTLINE_H

#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#define ATM_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct ServiceState {
    FreeTypeFaceCache cache{8};
    bool listed = false;
    std::vector<FontFaceInfo> faces;
    std::vector<std::string> keys;
    std::map<std::string, std::size_t> byKey;

    void List() {
        if (listed) return;
        faces = ScanFontFaces({FontFileFormat::Type1});
        keys = MakeFaceKeys(faces);
        for (std::size_t i = 0; i < keys.size(); ++i)
            byKey[keys[i]] = i;
        listed = true;
    }
};

// A plain pointer, so that nothing of the service is torn down at exit behind
// the back of a caller that still means to call ATMFinish.
ServiceState* gService = nullptr;

struct Segment {
    bool curve;
    FT_Vector c1, c2, end;
};

// Gathers one contour at a time, so that the closing segment can be told
// apart, and passes it on through the caller's callbacks.
struct OutlineSink {
    const ATMFixedMatrix* matrix = nullptr;
    double scale = 1.0;
    ATMMoveToProc moveTo = nullptr;
    ATMLineToProc lineTo = nullptr;
    ATMCurveToProc curveTo = nullptr;
    ATMClosePathProc closePath = nullptr;
    void* data = nullptr;
    bool open = false;
    bool canceled = false;
    FT_Vector start{}, current{};
    std::vector<Segment> segments;

    ATMFixedPoint Map(const FT_Vector& v) const {
        const double x = v.x * scale, y = v.y * scale;
        auto fixed = [](double value) {
            double bits = std::round(value * 65536.0);
            if (!(bits >= -2147483648.0)) bits = -2147483648.0;
            if (bits > 2147483647.0) bits = 2147483647.0;
            return static_cast<std::int32_t>(bits);
        };
        const double a = matrix->a / 65536.0, b = matrix->b / 65536.0;
        const double c = matrix->c / 65536.0, d = matrix->d / 65536.0;
        return ATMFixedPoint{fixed(a * x + c * y + matrix->tx / 65536.0),
                             fixed(b * x + d * y + matrix->ty / 65536.0)};
    }

    void Flush() {
        if (!open || canceled) return;
        open = false;
        const ATMFixedPoint first = Map(start);
        if (!moveTo(&first, data)) {
            canceled = true;
            return;
        }
        std::size_t count = segments.size();
        const bool closesOnStart =
            count > 0 && segments.back().end.x == start.x && segments.back().end.y == start.y;
        if (closesOnStart && !segments.back().curve) --count;
        for (std::size_t i = 0; i < count && !canceled; ++i) {
            const Segment& s = segments[i];
            const ATMFixedPoint end = Map(s.end);
            if (s.curve) {
                const ATMFixedPoint c1 = Map(s.c1), c2 = Map(s.c2);
                const bool implicitEnd = closesOnStart && i + 1 == segments.size();
                canceled = !curveTo(&c1, &c2, implicitEnd ? nullptr : &end, data);
            } else {
                canceled = !lineTo(&end, data);
            }
        }
        if (!canceled) canceled = !closePath(data);
        segments.clear();
    }
};

int MoveTo(const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    sink->Flush();
    sink->open = true;
    sink->start = sink->current = *to;
    return sink->canceled ? 1 : 0;
}

int LineTo(const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    sink->segments.push_back(Segment{false, {}, {}, *to});
    sink->current = *to;
    return 0;
}

int CubicTo(const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    sink->segments.push_back(Segment{true, *c1, *c2, *to});
    sink->current = *to;
    return 0;
}

// A quadratic segment, raised to the cubic that draws the same curve.
int ConicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    auto* sink = static_cast<OutlineSink*>(user);
    const FT_Vector from = sink->current;
    const FT_Vector c1{from.x + (2 * (control->x - from.x)) / 3,
                       from.y + (2 * (control->y - from.y)) / 3};
    const FT_Vector c2{to->x + (2 * (control->x - to->x)) / 3,
                       to->y + (2 * (control->y - to->y)) / 3};
    return CubicTo(&c1, &c2, to, user);
}

std::int32_t ReadOutline(HDC context, unsigned codePoint, const ATMFixedMatrix* matrix,
                         ATMMoveToProc moveTo, ATMLineToProc lineTo, ATMCurveToProc curveTo,
                         ATMClosePathProc closePath, void* data) {
    if (!gService) return ATM_NOTSTARTED;
    if (!context || !matrix || !moveTo || !lineTo || !curveTo || !closePath)
        return ATM_BADPARAMETER;
    if (context->magic != kDeviceContextMagic || !context->hasFont) return ATM_INVALIDFONT;
    ServiceState& service = *gService;
    service.List();
    char key[LF_FACESIZE + 1] = {};
    std::memcpy(key, context->selectedFont.lfFaceName, LF_FACESIZE);
    auto found = service.byKey.find(key);
    if (found == service.byKey.end()) return ATM_INVALIDFONT;
    const FontFaceInfo& info = service.faces[found->second];
    FT_Face face = service.cache.Get(info.file, info.index);
    if (!face) return ATM_INVALIDFONT;
    const FT_UInt glyph = GlyphIndexFor(face, codePoint);
    if (glyph == 0) return ATM_NOCHAR;
    if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) !=
            0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return ATM_INVALIDFONT;
    FT_Outline& outline = face->glyph->outline;
    if (outline.n_points > 0 && FT_Outline_Get_Orientation(&outline) == FT_ORIENTATION_TRUETYPE)
        FT_Outline_Reverse(&outline);

    OutlineSink sink;
    sink.matrix = matrix;
    sink.scale = EmPixelsFor(face, context->selectedFont.lfHeight) / face->units_per_EM;
    sink.moveTo = moveTo;
    sink.lineTo = lineTo;
    sink.curveTo = curveTo;
    sink.closePath = closePath;
    sink.data = data;
    FT_Outline_Funcs funcs{};
    funcs.move_to = MoveTo;
    funcs.line_to = LineTo;
    funcs.conic_to = ConicTo;
    funcs.cubic_to = CubicTo;
    if (outline.n_points > 0 && FT_Outline_Decompose(&outline, &funcs, &sink) != 0 &&
        !sink.canceled)
        return ATM_INVALIDFONT;
    sink.Flush();
    return sink.canceled ? ATM_CANCELED : ATM_NOERR;
}

// Nothing may unwind out of the service into its caller: a failure inside
// turns into a status.
std::int32_t GetOutline(HDC context, unsigned codePoint, const ATMFixedMatrix* matrix,
                        ATMMoveToProc moveTo, ATMLineToProc lineTo, ATMCurveToProc curveTo,
                        ATMClosePathProc closePath, void* data) {
    try {
        return ReadOutline(context, codePoint, matrix, moveTo, lineTo, curveTo, closePath, data);
    } catch (...) {
        return ATM_INVALIDFONT;
    }
}

} // namespace

ATM_EXPORT int ATMProperlyLoaded() {
    if (!gService) {
        try {
            gService = new ServiceState;
        } catch (...) {
            gService = nullptr;
        }
    }
    if (gService && !gService->cache.Ready()) {
        delete gService;
        gService = nullptr;
    }
    return gService != nullptr;
}

ATM_EXPORT std::int32_t ATMEnumFontsA(ATMFontEnumProc callback, void* data) {
    if (!gService) return ATM_NOTSTARTED;
    if (!callback) return ATM_BADPARAMETER;
    try {
        gService->List();
    } catch (...) {
        return ATM_ENUMFAILED;
    }
    for (std::size_t i = 0; i < gService->faces.size(); ++i) {
        const FontFaceInfo& info = gService->faces[i];
        LOGFONTA font{};
        font.lfWeight = info.weight;
        font.lfItalic = info.italic ? 1 : 0;
        std::memcpy(font.lfFaceName, gService->keys[i].data(),
                    std::min<std::size_t>(gService->keys[i].size(), LF_FACESIZE - 1));
        if (!callback(&font, info.fullName.c_str(), ATM_TYPE1_FACE, data)) break;
    }
    return ATM_NOERR;
}

ATM_EXPORT std::int32_t ATMGetOutlineA(HDC context, int character, const ATMFixedMatrix* matrix,
                                       ATMMoveToProc moveTo, ATMLineToProc lineTo,
                                       ATMCurveToProc curveTo, ATMClosePathProc closePath,
                                       void* data) {
    if (character < 0 || character > 255) return ATM_NOCHAR;
    return GetOutline(context, WideFromCodePage1252(static_cast<unsigned char>(character)), matrix,
                      moveTo, lineTo, curveTo, closePath, data);
}

ATM_EXPORT std::int32_t ATMGetOutlineW(HDC context, std::uint16_t character,
                                       const ATMFixedMatrix* matrix, ATMMoveToProc moveTo,
                                       ATMLineToProc lineTo, ATMCurveToProc curveTo,
                                       ATMClosePathProc closePath, void* data) {
    return GetOutline(context, character, matrix, moveTo, lineTo, curveTo, closePath, data);
}

ATM_EXPORT int ATMFinish() {
    delete gService;
    gService = nullptr;
    return 1;
}
