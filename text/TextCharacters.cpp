#include "text/CharacterChain.h"
#include "text/Flattening.h"
#include "text/FontList.h"
#include "text/KWinTTFonts.h"
#include "text/KWinTTGlyph.h"
#include "text/TextCharacter.h"
#include "text/Type1Fonts.h"
#include "text/Type1Glyph.h"

namespace {

// Reads the glyphs of the text in the current row's face into records.
// False for a kind that has no reader.
bool ReadGlyphs(const char* text, KList& records) {
    const FontListEntry* row = FontListEntryAt(GetCurrentFont());
    if (!row) return true; // no font at all: nothing to read
    KWinTTFonts& fonts = GetTTFonts();
    if (row->kind == FontListEntry::kTrueType) {
        const KWinTTFont* font = fonts.FindByName(row->name.c_str());
        if (!font) return true; // the face went away: an empty text
        ReadTrueTypeGlyphs(fonts.deviceContext, font->logFont, text, records);
        return true;
    }
    if (row->kind == FontListEntry::kType1) {
        Type1FontDirectory& directory = GetType1FontDirectory();
        if (!directory.enumerated || row->id >= directory.fonts.size()) return true;
        ReadType1Glyphs(directory.Service(), fonts.deviceContext, directory.fonts[row->id], text,
                        records);
        return true;
    }
    return false;
}

} // namespace

bool BuildTextCharacters(const char* text, int quality, TextCharacter** chain) {
    if (!chain) return false;
    *chain = nullptr;
    SetFlattenQuality(quality);
    if (!text || !*text) return true;
    try {
        KList records;
        if (!ReadGlyphs(text, records)) return false;
        *chain = BuildCharacterChain(records);
        return true;
    } catch (...) {
        *chain = nullptr;
        return false;
    }
}
