#pragma once

#include "platform/fonts/WinFontTypes.h"

#include <cstdint>
#include <vector>

// One enumerated outline face, as the enumeration delivered it.
class KWinTTFont {
  public:
    KWinTTFont(const ENUMLOGFONTA& font, const NEWTEXTMETRICA& textMetrics);
    virtual ~KWinTTFont() = default;

    bool valid = false;
    ENUMLOGFONTA logFont{};
    NEWTEXTMETRICA metrics{};
};

// The list of outline faces of the machine, sorted by full name in byte
// order, with the information context that all outline reads go through.
class KWinTTFonts {
  public:
    KWinTTFonts();
    virtual ~KWinTTFonts();
    KWinTTFonts(const KWinTTFonts&) = delete;
    KWinTTFonts& operator=(const KWinTTFonts&) = delete;

    // The face with exactly this full name, or null.
    const KWinTTFont* FindByName(const char* fullName) const;
    const KWinTTFont* FontAt(std::uint32_t index) const {
        return index < count ? fonts[index] : nullptr;
    }

    bool valid = false;
    HDC deviceContext = nullptr;
    std::uint32_t count = 0;
    std::uint32_t capacity = 0;
    std::vector<KWinTTFont*> fonts; // owned

  private:
    static int FamilyCallback(const ENUMLOGFONTA* font, const NEWTEXTMETRICA* metrics,
                              DWORD fontType, std::intptr_t data);
    static int FaceCallback(const ENUMLOGFONTA* font, const NEWTEXTMETRICA* metrics, DWORD fontType,
                            std::intptr_t data);
    void Add(const ENUMLOGFONTA& font, const NEWTEXTMETRICA& metrics);
};

// The one list, made on first use and kept until unload.
KWinTTFonts& GetTTFonts();
