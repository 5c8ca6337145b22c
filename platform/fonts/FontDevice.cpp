#include "platform/fonts/CodePage.h"
#include "platform/fonts/FontCatalogue.h"
#include "platform/fonts/FreeTypeFaces.h"
#include "platform/fonts/NativeOutline.h"
#include "platform/fonts/WinFonts.h"

#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <vector>

struct PlatformFontObject {
    DWORD magic;
    LOGFONTA font;
};

namespace {

constexpr DWORD kFontObjectMagic = 0x464F6278; // "FObx"

struct OutlineFace {
    FontFaceInfo info;
    ENUMLOGFONTA logFont;
    NEWTEXTMETRICA metrics;
};

void CopyText(char* destination, std::size_t capacity, const std::string& text) {
    const std::size_t n = std::min(text.size(), capacity - 1);
    std::memcpy(destination, text.data(), n);
    destination[n] = '\0';
}

OutlineFace MakeOutlineFace(const FontFaceInfo& info, const std::string& key) {
    OutlineFace face{};
    face.info = info;
    LOGFONTA& lf = face.logFont.elfLogFont;
    lf.lfHeight = -32;
    lf.lfWeight = info.weight;
    lf.lfItalic = info.italic ? 1 : 0;
    lf.lfOutPrecision = 7; // outline precision
    lf.lfQuality = 1;
    lf.lfPitchAndFamily = 0;
    CopyText(lf.lfFaceName, sizeof lf.lfFaceName, key);
    CopyText(face.logFont.elfFullName, sizeof face.logFont.elfFullName, info.fullName);
    CopyText(face.logFont.elfStyle, sizeof face.logFont.elfStyle, info.style);
    NEWTEXTMETRICA& tm = face.metrics;
    tm.tmHeight = 32;
    tm.tmWeight = info.weight;
    tm.tmItalic = lf.lfItalic;
    tm.tmPitchAndFamily = TMPF_TRUETYPE;
    tm.tmLastChar = 0xFF;
    tm.tmBreakChar = ' ';
    tm.ntmFlags = (info.italic ? NTM_ITALIC : 0) | (info.weight >= 600 ? NTM_BOLD : 0) |
                  (!info.italic && info.weight < 600 ? NTM_REGULAR : 0) |
                  (info.format == FontFileFormat::CFF ? NTM_PS_OPENTYPE : NTM_TT_OPENTYPE);
    return face;
}

// The faces of the machine and the open font files, made on first use.
class FontState {
  public:
    std::mutex lock;

    const std::vector<OutlineFace>& Faces() {
        if (!fScanned) {
            const std::vector<FontFaceInfo> infos =
                ScanFontFaces({FontFileFormat::TrueType, FontFileFormat::CFF});
            const std::vector<std::string> keys = MakeFaceKeys(infos);
            fFaces.clear();
            fByKey.clear();
            for (std::size_t i = 0; i < infos.size(); ++i) {
                fFaces.push_back(MakeOutlineFace(infos[i], keys[i]));
                fByKey[keys[i]] = i;
            }
            fScanned = true;
        }
        return fFaces;
    }

    const OutlineFace* Find(const LOGFONTA& font) {
        Faces();
        char key[LF_FACESIZE + 1] = {};
        std::memcpy(key, font.lfFaceName, LF_FACESIZE);
        auto it = fByKey.find(key);
        return it == fByKey.end() ? nullptr : &fFaces[it->second];
    }

    FreeTypeFaceCache& Cache() { return fCache; }

    void Reset() {
        fCache.Clear();
        fFaces.clear();
        fByKey.clear();
        fScanned = false;
    }

  private:
    bool fScanned = false;
    std::vector<OutlineFace> fFaces;
    std::map<std::string, std::size_t> fByKey;
    FreeTypeFaceCache fCache{16};
};

FontState& State() {
    static FontState state;
    return state;
}

bool IsContext(HDC context) {
    return context && context->magic == kDeviceContextMagic;
}
bool IsFont(HFONT font) {
    return font && font->magic == kFontObjectMagic;
}

} // namespace

HDC CreateICA(const char*, const char*, const char*, const void*) {
    auto* context = new (std::nothrow) PlatformDeviceContext{};
    if (context) context->magic = kDeviceContextMagic;
    return context;
}

bool DeleteDC(HDC context) {
    if (!IsContext(context)) return false;
    context->magic = 0;
    delete context;
    return true;
}

HFONT CreateFontIndirectA(const LOGFONTA* font) {
    if (!font) return nullptr;
    auto* object = new (std::nothrow) PlatformFontObject{kFontObjectMagic, *font};
    return object;
}

HFONT SelectObject(HDC context, HFONT font) {
    if (!IsContext(context)) return nullptr;
    HFONT previous = context->selectedObject;
    if (IsFont(font)) {
        context->selectedFont = font->font;
        context->hasFont = 1;
    } else {
        context->selectedFont = LOGFONTA{};
        context->hasFont = 0;
        font = nullptr;
    }
    context->selectedObject = font;
    return previous;
}

bool DeleteObject(HFONT font) {
    if (!IsFont(font)) return false;
    font->magic = 0;
    delete font;
    return true;
}

int EnumFontFamiliesA(HDC context, const char* family, FONTENUMPROCA callback, std::intptr_t data) {
    if (!IsContext(context) || !callback) return 0;
    // Copied, so that a callback may itself enumerate.
    std::vector<OutlineFace> faces;
    {
        std::lock_guard<std::mutex> guard(State().lock);
        faces = State().Faces();
    }
    // Families go by their name as it fits into a logical font.
    auto familyKey = [](const std::string& name) { return name.substr(0, LF_FACESIZE - 1); };
    int result = 1;
    if (!family) {
        std::vector<std::string> seen;
        for (const OutlineFace& face : faces) {
            const std::string key = familyKey(face.info.family);
            if (std::find(seen.begin(), seen.end(), key) != seen.end()) continue;
            seen.push_back(key);
            ENUMLOGFONTA familyFont = face.logFont;
            CopyText(familyFont.elfLogFont.lfFaceName, LF_FACESIZE, key);
            CopyText(familyFont.elfFullName, sizeof familyFont.elfFullName, face.info.family);
            result = callback(&familyFont, &face.metrics, TRUETYPE_FONTTYPE, data);
            if (!result) break;
        }
    } else {
        for (const OutlineFace& face : faces) {
            if (familyKey(face.info.family) != family) continue;
            result = callback(&face.logFont, &face.metrics, TRUETYPE_FONTTYPE, data);
            if (!result) break;
        }
    }
    return result;
}

DWORD GetGlyphOutlineA(HDC context, unsigned character, unsigned format, GLYPHMETRICS* metrics,
                       DWORD size, void* buffer, const MAT2* matrix) {
    if (!IsContext(context) || !context->hasFont || format != GGO_NATIVE || !metrics || !matrix)
        return GDI_ERROR;
    std::lock_guard<std::mutex> guard(State().lock);
    const OutlineFace* face = State().Find(context->selectedFont);
    if (!face) return GDI_ERROR;
    FT_Face ftFace = State().Cache().Get(face->info.file, face->info.index);
    if (!ftFace) return GDI_ERROR;
    const FT_UInt glyph = GlyphIndexFor(ftFace, character);
    if (glyph == 0) return GDI_ERROR;
    if (FT_Load_Glyph(ftFace, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) !=
            0 ||
        ftFace->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return GDI_ERROR;

    FT_Outline& outline = ftFace->glyph->outline;
    if (FT_Outline_Get_Orientation(&outline) == FT_ORIENTATION_POSTSCRIPT)
        FT_Outline_Reverse(&outline);
    const double scale = EmPixelsFor(ftFace, context->selectedFont.lfHeight) / ftFace->units_per_EM;
    const std::vector<unsigned char> bytes = EncodeNativeOutline(outline, scale, *matrix);

    GLYPHMETRICS result{};
    FT_BBox box{};
    if (outline.n_points > 0) FT_Outline_Get_CBox(&outline, &box);
    result.gmBlackBoxX = static_cast<DWORD>(std::lround((box.xMax - box.xMin) * scale));
    result.gmBlackBoxY = static_cast<DWORD>(std::lround((box.yMax - box.yMin) * scale));
    result.gmptGlyphOrigin.x = static_cast<LONG>(std::lround(box.xMin * scale));
    result.gmptGlyphOrigin.y = static_cast<LONG>(std::lround(box.yMax * scale));
    const double advance =
        std::clamp(std::round(ftFace->glyph->metrics.horiAdvance * scale), -32768.0, 32767.0);
    result.gmCellIncX = static_cast<std::int16_t>(advance);
    result.gmCellIncY = 0;

    if (bytes.size() > 0x7FFFFFFF) return GDI_ERROR;
    const DWORD needed = static_cast<DWORD>(bytes.size());
    if (buffer && size > 0) {
        if (size < needed) return GDI_ERROR;
        std::memcpy(buffer, bytes.data(), needed);
    }
    *metrics = result;
    return needed;
}

int MultiByteToWideChar(unsigned codePage, DWORD, const char* text, int length, WCHAR16* wide,
                        int wideLength) {
    if (!text || (codePage != 0 && codePage != 1252) || length < -1 || wideLength < 0) return 0;
    const std::size_t count =
        length == -1 ? std::strlen(text) + 1 : static_cast<std::size_t>(length);
    if (count > 0x7FFFFFFF) return 0;
    if (!wide || wideLength == 0) return static_cast<int>(count);
    if (count > static_cast<std::size_t>(wideLength)) return 0;
    for (std::size_t i = 0; i < count; ++i) {
        wide[i] = WideFromCodePage1252(static_cast<unsigned char>(text[i]));
    }
    return static_cast<int>(count);
}

void ResetFontCatalogue() {
    std::lock_guard<std::mutex> guard(State().lock);
    State().Reset();
}
