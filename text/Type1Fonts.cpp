#include "text/Type1Fonts.h"

#include <memory>

Type1FontDirectory::Type1FontDirectory(bool enumerateNow) {
    if (fService.Load()) available = fService.ProperlyLoaded() != 0;
    if (!available) fService.Unload();
    if (available && enumerateNow) Enumerate();
}

Type1FontDirectory::~Type1FontDirectory() {
    if (available) fService.Finish();
}

int Type1FontDirectory::CountCallback(const LOGFONTA*, const char*, std::uint16_t style,
                                      void* data) {
    auto* self = static_cast<Type1FontDirectory*>(data);
    if (style & ATM_TYPE1_FACE) ++self->count;
    if (style & ATM_MM_INSTANCE) ++self->count;
    return 1;
}

int Type1FontDirectory::FillCallback(const LOGFONTA* font, const char* menuName,
                                     std::uint16_t style, void* data) {
    auto* self = static_cast<Type1FontDirectory*>(data);
    if (!font || !menuName) return 1;
    // Called from inside the service: a failure stops the listing rather
    // than unwinding through it.
    try {
        // A Multiple Master instance is named as such even when it is also
        // marked as a plain Type 1 face.
        const std::string name =
            std::string(menuName) + ((style & ATM_MM_INSTANCE) ? " (MM Instance)" : " (Type 1)");
        if (style & ATM_TYPE1_FACE) self->Write(*font, name, style);
        if (style & ATM_MM_INSTANCE) self->Write(*font, name, style);
    } catch (...) {
        return 0;
    }
    return 1;
}

void Type1FontDirectory::Write(const LOGFONTA& font, const std::string& name, std::uint16_t style) {
    // The second pass may not write more than the first one planned.
    if (filled >= count) return;
    fonts.push_back(Type1FontRecord{font, name, style});
    ++filled;
}

bool Type1FontDirectory::Enumerate() {
    if (enumerated) return true;
    if (!available) return false;
    count = 0;
    status = fService.EnumFonts(CountCallback, this);
    if (status == -224 || status == -8) {
        count = 0;
        return false;
    }
    enumerated = true;
    fonts.clear();
    fonts.reserve(count);
    filled = 0;
    status = fService.EnumFonts(FillCallback, this);
    return true;
}

namespace {
std::unique_ptr<Type1FontDirectory>& DirectoryHolder() {
    static std::unique_ptr<Type1FontDirectory> directory;
    return directory;
}
} // namespace

Type1FontDirectory& GetType1FontDirectory() {
    auto& directory = DirectoryHolder();
    if (!directory) directory = std::make_unique<Type1FontDirectory>(false);
    return *directory;
}

void ResetType1FontDirectory() {
    DirectoryHolder().reset();
}
