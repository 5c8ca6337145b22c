#pragma once

#include <string>
#include <vector>

// One installed, scalable font face as fontconfig reports it.
enum class FontFileFormat { TrueType, CFF, Type1 };

struct FontFaceInfo {
    std::string fullName;       // the English full name a user reads
    std::string family;         // the first family name
    std::string style;          // the style name
    std::string postScriptName; // may be empty
    std::string file;
    int index = 0; // face index in the file, named instance in the high 16 bits
    FontFileFormat format = FontFileFormat::TrueType;
    int weight = 400; // 100 to 900
    bool italic = false;
};

// Every scalable face of the given formats that fontconfig's current
// configuration lists, one per full name (the first file in byte order of
// its path wins), sorted by full name in byte order. Faces without a file or
// a usable name are left out. An unusable configuration gives an empty list.
std::vector<FontFaceInfo> ScanFontFaces(const std::vector<FontFileFormat>& formats);

// The full names of the faces fontconfig would serve for a family name, best
// first, as a request for a font that is not installed is served: a font
// that names a family missing here (a Windows font) is answered by its
// configured substitute with the same metrics, then by ever looser matches.
// Empty if fontconfig cannot run.
std::vector<std::string> MatchFontFullNames(const char* family);

// A key of at most 31 bytes for each face, unique over the list: the
// PostScript name (or the full name without spaces), cut to fit and given a
// numeric suffix where two faces would share it.
std::vector<std::string> MakeFaceKeys(const std::vector<FontFaceInfo>& faces);
