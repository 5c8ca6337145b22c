#include "platform/fonts/FontCatalogue.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cstring>
#include <set>

namespace {

std::string GetString(FcPattern* pattern, const char* object, int n = 0) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, object, n, &value) != FcResultMatch || !value) return {};
    return reinterpret_cast<const char*>(value);
}

// fontconfig may give several full names: some fonts carry both their
// PostScript name and their display name, both tagged English. A name with a
// space that is not the PostScript name is what a user expects to see.
std::string ChooseFullName(FcPattern* pattern, const std::string& postScriptName) {
    std::string first, english, spaced;
    for (int n = 0;; ++n) {
        std::string name = GetString(pattern, FC_FULLNAME, n);
        if (name.empty()) break;
        std::string lang = GetString(pattern, FC_FULLNAMELANG, n);
        const bool isEnglish = lang.empty() || lang.rfind("en", 0) == 0;
        if (first.empty()) first = name;
        if (!isEnglish) continue;
        if (english.empty()) english = name;
        if (spaced.empty() && name != postScriptName && name.find(' ') != std::string::npos)
            spaced = name;
    }
    if (!spaced.empty()) return spaced;
    if (!english.empty()) return english;
    return first;
}

// The full name a user reads, or the family and style where the face has no
// full name.
std::string FaceFullName(FcPattern* pattern) {
    std::string name = ChooseFullName(pattern, GetString(pattern, FC_POSTSCRIPT_NAME));
    if (name.empty()) {
        name = GetString(pattern, FC_FAMILY);
        const std::string style = GetString(pattern, FC_STYLE);
        if (!name.empty() && !style.empty()) name += " " + style;
    }
    return name;
}

bool FormatFromString(const std::string& format, FontFileFormat& out) {
    if (format == "TrueType")
        out = FontFileFormat::TrueType;
    else if (format == "CFF")
        out = FontFileFormat::CFF;
    else if (format == "Type 1")
        out = FontFileFormat::Type1;
    else
        return false;
    return true;
}

} // namespace

std::vector<FontFaceInfo> ScanFontFaces(const std::vector<FontFileFormat>& formats) {
    std::vector<FontFaceInfo> faces;
    if (!FcInit()) return faces;

    FcPattern* pattern = FcPatternCreate();
    FcObjectSet* objects = FcObjectSetBuild(
        FC_FAMILY, FC_STYLE, FC_FULLNAME, FC_FULLNAMELANG, FC_POSTSCRIPT_NAME, FC_FILE, FC_INDEX,
        FC_FONTFORMAT, FC_WEIGHT, FC_SLANT, FC_SCALABLE, FC_COLOR, static_cast<char*>(nullptr));
    FcFontSet* set = (pattern && objects) ? FcFontList(nullptr, pattern, objects) : nullptr;

    for (int i = 0; set && i < set->nfont; ++i) {
        FcPattern* font = set->fonts[i];
        FcBool scalable = FcFalse;
        if (FcPatternGetBool(font, FC_SCALABLE, 0, &scalable) != FcResultMatch || !scalable)
            continue;
        FcBool color = FcFalse;
        if (FcPatternGetBool(font, FC_COLOR, 0, &color) == FcResultMatch && color) continue;
        FontFaceInfo face;
        if (!FormatFromString(GetString(font, FC_FONTFORMAT), face.format)) continue;
        if (std::find(formats.begin(), formats.end(), face.format) == formats.end()) continue;
        face.file = GetString(font, FC_FILE);
        face.family = GetString(font, FC_FAMILY);
        face.style = GetString(font, FC_STYLE);
        face.postScriptName = GetString(font, FC_POSTSCRIPT_NAME);
        face.fullName = FaceFullName(font);
        if (face.file.empty() || face.fullName.empty()) continue;
        int index = 0;
        if (FcPatternGetInteger(font, FC_INDEX, 0, &index) == FcResultMatch) face.index = index;
        int weight = FC_WEIGHT_REGULAR;
        FcPatternGetInteger(font, FC_WEIGHT, 0, &weight);
        face.weight = std::clamp(FcWeightToOpenType(weight), 100, 900);
        int slant = FC_SLANT_ROMAN;
        FcPatternGetInteger(font, FC_SLANT, 0, &slant);
        face.italic = slant != FC_SLANT_ROMAN;
        faces.push_back(std::move(face));
    }
    if (set) FcFontSetDestroy(set);
    if (objects) FcObjectSetDestroy(objects);
    if (pattern) FcPatternDestroy(pattern);

    std::sort(faces.begin(), faces.end(), [](const FontFaceInfo& a, const FontFaceInfo& b) {
        if (int c = std::strcmp(a.fullName.c_str(), b.fullName.c_str())) return c < 0;
        if (int c = std::strcmp(a.file.c_str(), b.file.c_str())) return c < 0;
        return a.index < b.index;
    });
    faces.erase(std::unique(faces.begin(), faces.end(),
                            [](const FontFaceInfo& a, const FontFaceInfo& b) {
                                return a.fullName == b.fullName;
                            }),
                faces.end());
    return faces;
}

std::vector<std::string> MatchFontFullNames(const char* family) {
    std::vector<std::string> names;
    if (!family || !*family || !FcInit()) return names;
    FcPattern* pattern = FcPatternCreate();
    if (!pattern) return names;
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    // The configuration's aliases put a family's metric-compatible
    // substitutes first; the defaults ask for the regular upright face.
    if (FcConfigSubstitute(nullptr, pattern, FcMatchPattern)) {
        FcDefaultSubstitute(pattern);
        FcResult result = FcResultNoMatch;
        FcFontSet* sorted = FcFontSort(nullptr, pattern, FcFalse, nullptr, &result);
        for (int i = 0; sorted && i < sorted->nfont; ++i) {
            std::string name = FaceFullName(sorted->fonts[i]);
            if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(std::move(name));
        }
        if (sorted) FcFontSetDestroy(sorted);
    }
    FcPatternDestroy(pattern);
    return names;
}

std::vector<std::string> MakeFaceKeys(const std::vector<FontFaceInfo>& faces) {
    constexpr std::size_t kMaxKey = 31;
    std::vector<std::string> keys;
    std::set<std::string> used;
    keys.reserve(faces.size());
    for (const FontFaceInfo& face : faces) {
        std::string base = face.postScriptName;
        if (base.empty())
            for (char c : face.fullName)
                if (c != ' ') base += c;
        if (base.size() > kMaxKey) base.resize(kMaxKey);
        std::string key = base;
        for (int n = 2; used.count(key); ++n) {
            const std::string suffix = "#" + std::to_string(n);
            key = base.substr(0, kMaxKey - suffix.size()) + suffix;
        }
        used.insert(key);
        keys.push_back(key);
    }
    return keys;
}
