#include "platform/fonts/FreeTypeFaces.h"

#include <cstdlib>

FreeTypeFaceCache::FreeTypeFaceCache(std::size_t capacity) : fCapacity(capacity ? capacity : 1) {
    if (FT_Init_FreeType(&fLibrary) != 0) fLibrary = nullptr;
}

FreeTypeFaceCache::~FreeTypeFaceCache() {
    Clear();
    if (fLibrary) FT_Done_FreeType(fLibrary);
}

void FreeTypeFaceCache::Clear() {
    for (Entry& entry : fEntries)
        FT_Done_Face(entry.face);
    fEntries.clear();
}

FT_Face FreeTypeFaceCache::Get(const std::string& file, int index) {
    if (!fLibrary || file.empty() || index < 0) return nullptr;
    for (auto it = fEntries.begin(); it != fEntries.end(); ++it) {
        if (it->index == index && it->file == file) {
            fEntries.splice(fEntries.begin(), fEntries, it);
            return fEntries.front().face;
        }
    }
    FT_Face face = nullptr;
    if (FT_New_Face(fLibrary, file.c_str(), index, &face) != 0) return nullptr;
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) {
        FT_Done_Face(face);
        return nullptr;
    }
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0)
        FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL);
    if (fEntries.size() >= fCapacity) {
        FT_Done_Face(fEntries.back().face);
        fEntries.pop_back();
    }
    fEntries.push_front(Entry{file, index, face});
    return face;
}

FT_UInt GlyphIndexFor(FT_Face face, unsigned codePoint) {
    if (!face || !face->charmap) return 0;
    FT_UInt glyph = FT_Get_Char_Index(face, codePoint);
    if (glyph == 0 && face->charmap->encoding == FT_ENCODING_MS_SYMBOL && codePoint < 0x100)
        glyph = FT_Get_Char_Index(face, 0xF000 + codePoint);
    return glyph;
}

double EmPixelsFor(FT_Face face, LONG logicalHeight) {
    if (logicalHeight < 0) return -static_cast<double>(logicalHeight);
    if (logicalHeight == 0 || !face) return 32.0;
    const double cell = static_cast<double>(face->ascender) - face->descender;
    if (cell <= 0) return logicalHeight;
    return logicalHeight * static_cast<double>(face->units_per_EM) / cell;
}
