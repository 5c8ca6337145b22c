#include "text/KWinTTFonts.h"

#include "platform/fonts/WinFonts.h"

#include <algorithm>
#include <cstring>

KWinTTFont::KWinTTFont(const ENUMLOGFONTA& font, const NEWTEXTMETRICA& textMetrics)
    : valid(true), logFont(font), metrics(textMetrics) {
    logFont.elfFullName[LF_FULLFACESIZE - 1] = '\0';
}

KWinTTFonts::KWinTTFonts() {
    deviceContext = CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    if (!deviceContext) return;
    capacity = 100;
    fonts.reserve(capacity);
    // Each family once, then each of its faces. The stand-in enumerates every
    // family exactly once, so no second pass is needed to catch a cut-short
    // enumeration.
    EnumFontFamiliesA(deviceContext, nullptr, FamilyCallback,
                      reinterpret_cast<std::intptr_t>(this));
    if (count == 0) return;
    valid = true;
    std::stable_sort(fonts.begin(), fonts.end(), [](const KWinTTFont* a, const KWinTTFont* b) {
        return std::strcmp(a->logFont.elfFullName, b->logFont.elfFullName) < 0;
    });
    // Two files may offer the same full name; the name picks one face.
    auto same = [](const KWinTTFont* a, const KWinTTFont* b) {
        return std::strcmp(a->logFont.elfFullName, b->logFont.elfFullName) == 0;
    };
    for (std::size_t i = 1; i < fonts.size();) {
        if (same(fonts[i - 1], fonts[i])) {
            delete fonts[i];
            fonts.erase(fonts.begin() + static_cast<std::ptrdiff_t>(i));
        } else {
            ++i;
        }
    }
    fonts.shrink_to_fit();
    count = capacity = static_cast<std::uint32_t>(fonts.size());
}

KWinTTFonts::~KWinTTFonts() {
    for (KWinTTFont* font : fonts)
        delete font;
    if (deviceContext) DeleteDC(deviceContext);
}

int KWinTTFonts::FamilyCallback(const ENUMLOGFONTA* font, const NEWTEXTMETRICA*, DWORD fontType,
                                std::intptr_t data) {
    if (!font || !(fontType & TRUETYPE_FONTTYPE)) return 1;
    auto* self = reinterpret_cast<KWinTTFonts*>(data);
    char family[LF_FACESIZE + 1] = {};
    std::memcpy(family, font->elfLogFont.lfFaceName, LF_FACESIZE);
    EnumFontFamiliesA(self->deviceContext, family, FaceCallback, data);
    return 1;
}

int KWinTTFonts::FaceCallback(const ENUMLOGFONTA* font, const NEWTEXTMETRICA* metrics,
                              DWORD fontType, std::intptr_t data) {
    if (!font || !metrics || !(fontType & TRUETYPE_FONTTYPE)) return 0;
    reinterpret_cast<KWinTTFonts*>(data)->Add(*font, *metrics);
    return 1;
}

void KWinTTFonts::Add(const ENUMLOGFONTA& font, const NEWTEXTMETRICA& metrics) {
    if (count == capacity) {
        capacity += 20;
        fonts.reserve(capacity);
    }
    fonts.push_back(new KWinTTFont(font, metrics));
    count = static_cast<std::uint32_t>(fonts.size());
}

const KWinTTFont* KWinTTFonts::FindByName(const char* fullName) const {
    if (!fullName || count == 0) return nullptr;
    auto name = [this](std::uint32_t i) { return fonts[i]->logFont.elfFullName; };
    if (std::strcmp(fullName, name(0)) < 0 || std::strcmp(fullName, name(count - 1)) > 0)
        return nullptr;
    std::uint32_t low = 0, high = count; // search [low, high)
    while (low < high) {
        const std::uint32_t middle = low + (high - low) / 2;
        const int c = std::strcmp(fullName, name(middle));
        if (c == 0) return fonts[middle];
        if (c < 0)
            high = middle;
        else
            low = middle + 1;
    }
    return nullptr;
}

KWinTTFonts& GetTTFonts() {
    static KWinTTFonts fonts;
    return fonts;
}
