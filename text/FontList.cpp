#include "text/FontList.h"

#include "platform/fonts/FontCatalogue.h"
#include "text/KWinTTFonts.h"
#include "text/Type1Fonts.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr const char* kDefaultFontName = "Arial";

struct FontListState {
    KList list;
    std::uint32_t defaultFont = 0;
    std::uint32_t currentFont = 0;
    std::int32_t currentKind = 0;
};

FontListState& State() {
    static FontListState state;
    return state;
}

bool SameKey(const char* a, const char* b) {
    return std::strncmp(a, b, LF_FACESIZE) == 0;
}

} // namespace

std::uint32_t BuildFontList(std::uint32_t* defaultPosition) {
    FreeFontList();
    FontListState& state = State();
    std::vector<std::unique_ptr<FontListEntry>> rows;

    Type1FontDirectory& type1 = GetType1FontDirectory();
    const bool haveType1 = type1.Enumerate();

    const KWinTTFonts& fonts = GetTTFonts();
    for (std::uint32_t i = 0; i < fonts.count && i <= 0xFFFF; ++i) {
        const KWinTTFont& font = *fonts.fonts[i];
        // The OpenType copy of a PostScript design that the Type 1 service
        // also offers would be the same design twice.
        if (haveType1 && (font.metrics.ntmFlags & NTM_PS_OPENTYPE)) {
            const bool twin =
                std::any_of(type1.fonts.begin(), type1.fonts.end(), [&](const Type1FontRecord& r) {
                    return SameKey(r.logFont.lfFaceName, font.logFont.elfLogFont.lfFaceName);
                });
            if (twin) continue;
        }
        auto row = std::make_unique<FontListEntry>();
        row->id = row->id2 = row->id3 = static_cast<std::uint16_t>(i);
        row->name = font.logFont.elfFullName;
        row->kind = FontListEntry::kTrueType;
        rows.push_back(std::move(row));
    }
    if (haveType1) {
        for (std::size_t i = 0; i < type1.fonts.size() && i <= 0xFFFF; ++i) {
            auto row = std::make_unique<FontListEntry>();
            row->id = row->id2 = row->id3 = static_cast<std::uint16_t>(i);
            row->name = type1.fonts[i].name;
            row->kind = FontListEntry::kType1;
            rows.push_back(std::move(row));
        }
    }
    // Byte order, case counting; rows of equal name keep their order.
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
        return std::strcmp(a->name.c_str(), b->name.c_str()) < 0;
    });
    for (auto& row : rows) {
        state.list.Append(row.get());
        row.release();
    }

    state.defaultFont = FindFontListPosition(kDefaultFontName);
    // Where that font is not installed, the face the system serves for its
    // name (a substitute with the same widths) is the default, so the first
    // text fits the picture as it was laid out for that font.
    if (state.defaultFont == 0)
        for (const std::string& name : MatchFontFullNames(kDefaultFontName))
            if ((state.defaultFont = FindFontListPosition(name.c_str())) != 0) break;
    if (state.defaultFont == 0 && state.list.GetCount() > 0) state.defaultFont = 1;
    state.currentFont = 0;
    state.currentKind = 0;
    if (state.defaultFont) SetCurrentFont(state.defaultFont);
    if (defaultPosition) *defaultPosition = state.defaultFont;
    return state.defaultFont;
}

void FreeFontList() {
    FontListState& state = State();
    state.list.DeleteAll();
    state.defaultFont = state.currentFont = 0;
    state.currentKind = 0;
}

KList& GetFontList() {
    return State().list;
}

const FontListEntry* FontListEntryAt(std::uint32_t position) {
    return static_cast<const FontListEntry*>(State().list.EntryAt(position));
}

std::uint32_t FindFontListPosition(const char* name) {
    if (!name) return 0;
    const std::uint32_t n = State().list.GetCount();
    for (std::uint32_t i = 1; i <= n; ++i)
        if (FontListEntryAt(i)->name == name) return i;
    return 0;
}

bool SetCurrentFont(std::uint32_t position) {
    const FontListEntry* row = position == kListLast ? nullptr : FontListEntryAt(position);
    if (!row) return false;
    State().currentFont = position;
    State().currentKind = row->kind;
    return true;
}

std::uint32_t GetCurrentFont() {
    return State().currentFont;
}
std::uint32_t GetDefaultFont() {
    return State().defaultFont;
}
std::int32_t GetCurrentKind() {
    return State().currentKind;
}
