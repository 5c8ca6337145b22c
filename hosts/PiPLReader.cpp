#include "hosts/PiPLReader.h"

#include <cstring>

namespace plumet::hosts {

namespace {

uint32_t ReadLE32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

bool ReadPascal(const uint8_t* value, uint32_t length, std::string& out) {
    if (length < 1 || value[0] > length - 1) return false;
    out.assign(reinterpret_cast<const char*>(value + 1), value[0]);
    return true;
}

} // namespace

bool ReadPiPL(const uint8_t* data, std::size_t size, PiPLInfo& info, std::string& error) {
    info = PiPLInfo{};
    if (!data || size < 8) {
        error = "the property list is truncated";
        return false;
    }
    const uint32_t version = ReadLE32(data);
    const uint32_t count = ReadLE32(data + 4);
    if (version != 0) {
        error = "the property list has version " + std::to_string(version) + ", not 0";
        return false;
    }
    std::size_t at = 8;
    for (uint32_t i = 0; i < count; ++i) {
        if (size - at < 16) {
            error = "the property list is truncated at property " + std::to_string(i + 1);
            return false;
        }
        const uint32_t vendor = ReadLE32(data + at);
        const uint32_t key = ReadLE32(data + at + 4);
        const uint32_t length = ReadLE32(data + at + 12);
        at += 16;
        const std::size_t padded = (std::size_t(length) + 3) & ~std::size_t(3);
        if (length > size || padded > size - at) {
            error = "property '" + FourCCText(key) + "' runs past the end of the list";
            return false;
        }
        const uint8_t* value = data + at;
        at += padded;
        if (vendor != PIAdobeVendorID) continue;
        bool ok = true;
        switch (key) {
        case PIKindProperty:
            ok = length >= 4;
            if (ok) info.kind = ReadLE32(value), info.hasKind = true;
            break;
        case PINameProperty:
            ok = ReadPascal(value, length, info.name);
            break;
        case PICategoryProperty:
            ok = ReadPascal(value, length, info.category);
            break;
        case PIVersionProperty:
            ok = length >= 4;
            if (ok) info.version = ReadLE32(value), info.hasVersion = true;
            break;
        case PIWin64X86CodeProperty: {
            const void* end = std::memchr(value, 0, length);
            ok = end != nullptr;
            if (ok) info.entryName.assign(reinterpret_cast<const char*>(value));
            break;
        }
        case PIImageModesProperty:
            ok = length >= 1;
            if (ok) info.modeFlags.assign(value, value + length), info.hasModes = true;
            break;
        case PIFilterCaseInfoProperty:
            ok = length >= 7 * sizeof(FilterCaseInfo);
            if (ok) {
                info.filterCases.resize(7);
                std::memcpy(info.filterCases.data(), value, 7 * sizeof(FilterCaseInfo));
            }
            break;
        default:
            break;
        }
        if (!ok) {
            error = "property '" + FourCCText(key) + "' is malformed";
            return false;
        }
    }
    return true;
}

std::string FourCCText(uint32_t code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = char((code >> shift) & 0xFF);
        text += (c >= 0x20 && c < 0x7F) ? c : '?';
    }
    return text;
}

std::string DescribeModes(const std::vector<uint8_t>& flags) {
    static const struct {
        uint8_t bit;
        const char* name;
    } kModes[] = {{PIModeBitmapFlag, "Bitmap"},   {PIModeGrayScaleFlag, "Grayscale"},
                  {PIModeIndexedFlag, "Indexed"}, {PIModeRGBFlag, "RGB"},
                  {PIModeCMYKFlag, "CMYK"},       {PIModeHSLFlag, "HSL"},
                  {PIModeHSBFlag, "HSB"},         {PIModeMultichannelFlag, "Multichannel"}};
    std::string text;
    if (!flags.empty())
        for (const auto& mode : kModes)
            if (flags[0] & mode.bit) text += (text.empty() ? "" : ", ") + std::string(mode.name);
    return text.empty() ? "none" : text;
}

std::string FilterCaseName(int filterCase) {
    switch (filterCase) {
    case filterCaseFlatImageNoSelection:
        return "flat image, no selection";
    case filterCaseFlatImageWithSelection:
        return "flat image, with selection";
    case filterCaseFloatingSelection:
        return "floating selection";
    case filterCaseEditableTransparencyNoSelection:
        return "editable transparency, no selection";
    case filterCaseEditableTransparencyWithSelection:
        return "editable transparency, with selection";
    case filterCaseProtectedTransparencyNoSelection:
        return "protected transparency, no selection";
    case filterCaseProtectedTransparencyWithSelection:
        return "protected transparency, with selection";
    default:
        return "filter case " + std::to_string(filterCase);
    }
}

std::string VersionText(uint32_t version) {
    return std::to_string(version >> 16) + "." + std::to_string(version & 0xFFFF);
}

} // namespace plumet::hosts
