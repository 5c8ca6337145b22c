// The font stand-ins: the face list from fontconfig and native outlines from
// FreeType.

#include "platform/fonts/CodePage.h"
#include "platform/fonts/FontCatalogue.h"
#include "platform/fonts/NativeOutline.h"
#include "platform/fonts/WinFonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

namespace {

struct Record {
    WORD type;
    std::vector<POINTFX> points;
};
struct Polygon {
    POINTFX start;
    std::vector<Record> records;
};

// Reads a native outline back, checking every size field on the way.
std::vector<Polygon> Parse(const std::vector<unsigned char>& bytes) {
    std::vector<Polygon> polygons;
    std::size_t offset = 0;
    while (offset < bytes.size()) {
        TTPOLYGONHEADER header;
        EXPECT_LE(offset + sizeof header, bytes.size());
        std::memcpy(&header, &bytes[offset], sizeof header);
        EXPECT_EQ(header.dwType, TT_POLYGON_TYPE);
        EXPECT_LE(offset + header.cb, bytes.size());
        Polygon polygon{header.pfxStart, {}};
        std::size_t at = offset + sizeof header;
        while (at < offset + header.cb) {
            Record record;
            WORD count;
            std::memcpy(&record.type, &bytes[at], 2);
            std::memcpy(&count, &bytes[at + 2], 2);
            record.points.resize(count);
            std::memcpy(record.points.data(), &bytes[at + 4], 8u * count);
            at += 4 + 8u * count;
            polygon.records.push_back(record);
        }
        EXPECT_EQ(at, offset + header.cb);
        polygons.push_back(polygon);
        offset += header.cb;
    }
    return polygons;
}

double X(const POINTFX& p) {
    return FromFixed(p.x);
}
double Y(const POINTFX& p) {
    return FromFixed(p.y);
}

// Twice the area of all points of a polygon, control points included.
double Area(const Polygon& polygon) {
    std::vector<POINTFX> all{polygon.start};
    for (const Record& r : polygon.records)
        all.insert(all.end(), r.points.begin(), r.points.end());
    double sum = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const POINTFX& a = all[i];
        const POINTFX& b = all[(i + 1) % all.size()];
        sum += X(a) * Y(b) - X(b) * Y(a);
    }
    return sum;
}

MAT2 Identity() {
    MAT2 m{};
    m.eM11.value = 1;
    m.eM22.value = 1;
    return m;
}

// An outline of one contour from points and FreeType tags.
struct TestOutline {
    std::vector<FT_Vector> points;
    std::vector<char> tags;
    short last;
    FT_Outline outline{};
    TestOutline(std::vector<FT_Vector> p, std::vector<char> t)
        : points(std::move(p)), tags(std::move(t)), last(short(points.size() - 1)) {
        outline.n_contours = 1;
        outline.n_points = short(points.size());
        outline.points = points.data();
        outline.tags = tags.data();
        outline.contours = &last;
    }
};

constexpr char kOn = FT_CURVE_TAG_ON, kConic = FT_CURVE_TAG_CONIC, kCubic = FT_CURVE_TAG_CUBIC;

struct SelectedFont {
    HDC dc = CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    HFONT font = nullptr;
    HFONT previous = nullptr;
    explicit SelectedFont(const LOGFONTA& logFont) {
        font = CreateFontIndirectA(&logFont);
        previous = SelectObject(dc, font);
    }
    ~SelectedFont() {
        SelectObject(dc, previous);
        DeleteObject(font);
        DeleteDC(dc);
    }
    std::vector<unsigned char> Outline(unsigned c, GLYPHMETRICS& gm, DWORD* status = nullptr) {
        const MAT2 m = Identity();
        const DWORD size = GetGlyphOutlineA(dc, c, GGO_NATIVE, &gm, 0, nullptr, &m);
        if (status) *status = size;
        if (size == GDI_ERROR || size == 0) return {};
        std::vector<unsigned char> bytes(size);
        EXPECT_EQ(GetGlyphOutlineA(dc, c, GGO_NATIVE, &gm, size, bytes.data(), &m), size);
        return bytes;
    }
};

// The logical font of the face with this full name, from the enumeration.
bool FindFace(const char* fullName, ENUMLOGFONTA& out, NEWTEXTMETRICA* metrics = nullptr) {
    struct Search {
        const char* name;
        ENUMLOGFONTA* out;
        NEWTEXTMETRICA* metrics;
        HDC dc;
        bool found;
    };
    HDC dc = CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    Search search{fullName, &out, metrics, dc, false};
    EnumFontFamiliesA(
        dc, nullptr,
        [](const ENUMLOGFONTA* family, const NEWTEXTMETRICA*, DWORD, std::intptr_t data) -> int {
            auto* s = reinterpret_cast<Search*>(data);
            EnumFontFamiliesA(
                s->dc, family->elfLogFont.lfFaceName,
                [](const ENUMLOGFONTA* face, const NEWTEXTMETRICA* tm, DWORD,
                   std::intptr_t data) -> int {
                    auto* s = reinterpret_cast<Search*>(data);
                    if (std::strcmp(face->elfFullName, s->name) != 0) return 1;
                    *s->out = *face;
                    if (s->metrics) *s->metrics = *tm;
                    s->found = true;
                    return 0;
                },
                data);
            return s->found ? 0 : 1;
        },
        reinterpret_cast<std::intptr_t>(&search));
    DeleteDC(dc);
    return search.found;
}

} // namespace

TEST(FontsCatalogue, OutlineFacesAreUniqueSortedAndKeyed) {
    const auto faces = ScanFontFaces({FontFileFormat::TrueType, FontFileFormat::CFF});
    ASSERT_GT(faces.size(), 20u);
    std::set<std::string> names;
    bool dejaVu = false, nimbusCff = false;
    for (std::size_t i = 0; i < faces.size(); ++i) {
        EXPECT_NE(faces[i].format, FontFileFormat::Type1);
        EXPECT_TRUE(names.insert(faces[i].fullName).second) << faces[i].fullName;
        if (i) {
            EXPECT_LT(std::strcmp(faces[i - 1].fullName.c_str(), faces[i].fullName.c_str()), 0);
        }
        dejaVu |= faces[i].fullName == "DejaVu Sans" && faces[i].format == FontFileFormat::TrueType;
        // The display name, not the PostScript name, of an OpenType face.
        nimbusCff |= faces[i].fullName == "Nimbus Sans" && faces[i].format == FontFileFormat::CFF;
    }
    EXPECT_TRUE(dejaVu);
    EXPECT_TRUE(nimbusCff);
    const auto type1 = ScanFontFaces({FontFileFormat::Type1});
    EXPECT_EQ(type1.size(), 35u); // the URW base 35, the .t1 and .pfb copies as one
    EXPECT_TRUE(ScanFontFaces({}).empty());
}

TEST(FontsCatalogue, KeysFitAndStayUnique) {
    std::vector<FontFaceInfo> faces(4);
    faces[0].postScriptName = "Same-Name";
    faces[1].postScriptName = "Same-Name";
    faces[2].postScriptName = std::string(40, 'L');
    faces[3].fullName = "No PostScript Name";
    const auto keys = MakeFaceKeys(faces);
    ASSERT_EQ(keys.size(), 4u);
    EXPECT_EQ(keys[0], "Same-Name");
    EXPECT_NE(keys[1], keys[0]);
    EXPECT_EQ(keys[2].size(), 31u);
    EXPECT_EQ(keys[3], "NoPostScriptName");
}

TEST(FontsNativeOutline, LinesQuadraticsAndCubicsInRecords) {
    const MAT2 identity = Identity();
    // A square: one line record; the closing line back to the start is left out.
    TestOutline square({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {kOn, kOn, kOn, kOn});
    auto polygons = Parse(EncodeNativeOutline(square.outline, 1.0, identity));
    ASSERT_EQ(polygons.size(), 1u);
    ASSERT_EQ(polygons[0].records.size(), 1u);
    EXPECT_EQ(polygons[0].records[0].type, TT_PRIM_LINE);
    EXPECT_EQ(polygons[0].records[0].points.size(), 3u);

    // Control points only: the start is the point implied between the last
    // and the first, and the spline ends on it.
    TestOutline round({{0, 10}, {10, 0}, {0, -10}, {-10, 0}}, {kConic, kConic, kConic, kConic});
    polygons = Parse(EncodeNativeOutline(round.outline, 1.0, identity));
    ASSERT_EQ(polygons[0].records.size(), 1u);
    EXPECT_EQ(X(polygons[0].start), -5.0);
    EXPECT_EQ(Y(polygons[0].start), 5.0);
    const Record& spline = polygons[0].records[0];
    EXPECT_EQ(spline.type, TT_PRIM_QSPLINE);
    ASSERT_EQ(spline.points.size(), 5u);
    EXPECT_EQ(X(spline.points[4]), -5.0);

    // Mixed, ending on a control point: two quadratic records, the second
    // closing on the start; the contour starts at its first on-curve point.
    TestOutline mixed({{5, 5}, {0, 0}, {10, 0}, {10, 10}}, {kConic, kOn, kConic, kOn});
    polygons = Parse(EncodeNativeOutline(mixed.outline, 2.0, identity));
    EXPECT_EQ(X(polygons[0].start), 0.0);
    ASSERT_EQ(polygons[0].records.size(), 2u);
    EXPECT_EQ(polygons[0].records[0].points.size(), 2u);
    EXPECT_EQ(X(polygons[0].records[0].points[1]), 20.0); // scaled by 2
    EXPECT_EQ(polygons[0].records[1].points.size(), 2u);
    EXPECT_EQ(X(polygons[0].records[1].points[1]), 0.0);

    // Cubic segments share one record, three points each.
    TestOutline cubic({{0, 0}, {3, 5}, {7, 5}, {10, 0}, {7, -5}, {3, -5}},
                      {kOn, kCubic, kCubic, kOn, kCubic, kCubic});
    polygons = Parse(EncodeNativeOutline(cubic.outline, 1.0, identity));
    ASSERT_EQ(polygons[0].records.size(), 1u);
    EXPECT_EQ(polygons[0].records[0].type, TT_PRIM_CSPLINE);
    EXPECT_EQ(polygons[0].records[0].points.size(), 6u);

    // The matrix: x and y swapped.
    MAT2 swap{};
    swap.eM12.value = 1;
    swap.eM21.value = 1;
    polygons = Parse(EncodeNativeOutline(square.outline, 1.0, swap));
    EXPECT_EQ(X(polygons[0].records[0].points[0]), 0.0);
    EXPECT_EQ(Y(polygons[0].records[0].points[0]), 10.0);

    EXPECT_TRUE(EncodeNativeOutline(FT_Outline{}, 1.0, identity).empty());
    // Coordinates beyond 16.16 saturate instead of overflowing.
    EXPECT_EQ(FixedBits(ToFixed(1e12)), INT32_MAX);
    EXPECT_EQ(FixedBits(ToFixed(std::nan(""))), INT32_MIN);
}

TEST(FontsGlyphOutline, TrueTypeAndCffWindTheSameWay) {
    for (const char* name : {"DejaVu Sans", "Nimbus Sans", "DejaVu Serif Bold"}) {
        ENUMLOGFONTA face{};
        ASSERT_TRUE(FindFace(name, face)) << name;
        EXPECT_EQ(face.elfLogFont.lfHeight, -32);
        SelectedFont font(face.elfLogFont);
        GLYPHMETRICS gm{};
        const auto polygons = Parse(font.Outline('O', gm));
        ASSERT_EQ(polygons.size(), 2u) << name;
        // The outer contour runs clockwise with y upward, the hole the other
        // way, whatever the font file does.
        const double a0 = Area(polygons[0]), a1 = Area(polygons[1]);
        EXPECT_LT(std::min(a0, a1), 0.0) << name;
        EXPECT_GT(std::max(a0, a1), 0.0) << name;
        EXPECT_GT(std::fabs(std::min(a0, a1)), std::fabs(std::max(a0, a1)));
        // An em of 32: an O is some 24 high.
        EXPECT_NEAR(gm.gmBlackBoxY, 24, 3) << name;
        EXPECT_GT(gm.gmCellIncX, 20) << name;
    }
}

TEST(FontsGlyphOutline, SpacesMissingGlyphsAndBadCalls) {
    ENUMLOGFONTA face{};
    NEWTEXTMETRICA tm{};
    ASSERT_TRUE(FindFace("DejaVu Sans", face, &tm));
    EXPECT_TRUE(tm.ntmFlags & NTM_TT_OPENTYPE);
    SelectedFont font(face.elfLogFont);
    GLYPHMETRICS gm{};
    DWORD status = 1;
    EXPECT_TRUE(font.Outline(' ', gm, &status).empty());
    EXPECT_EQ(status, 0u);
    EXPECT_EQ(gm.gmCellIncX, 10); // 0.318 em of 32

    // A code the face has no glyph for: an error, metrics untouched.
    GLYPHMETRICS untouched{};
    untouched.gmCellIncX = 77;
    font.Outline(0xE000, untouched, &status);
    EXPECT_EQ(status, GDI_ERROR);
    EXPECT_EQ(untouched.gmCellIncX, 77);

    const MAT2 m = Identity();
    unsigned char small[8];
    EXPECT_EQ(GetGlyphOutlineA(font.dc, 'A', GGO_NATIVE, &gm, sizeof small, small, &m), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineA(font.dc, 'A', 1, &gm, 0, nullptr, &m), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineA(font.dc, 'A', GGO_NATIVE, nullptr, 0, nullptr, &m), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineA(font.dc, 'A', GGO_NATIVE, &gm, 0, nullptr, nullptr), GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineA(nullptr, 'A', GGO_NATIVE, &gm, 0, nullptr, &m), GDI_ERROR);

    // No font selected, and a font that names no installed face.
    HDC bare = CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    EXPECT_EQ(GetGlyphOutlineA(bare, 'A', GGO_NATIVE, &gm, 0, nullptr, &m), GDI_ERROR);
    LOGFONTA unknown = face.elfLogFont;
    std::strcpy(unknown.lfFaceName, "No-Such-Face");
    HFONT handle = CreateFontIndirectA(&unknown);
    EXPECT_EQ(SelectObject(bare, handle), nullptr);
    EXPECT_EQ(GetGlyphOutlineA(bare, 'A', GGO_NATIVE, &gm, 0, nullptr, &m), GDI_ERROR);
    EXPECT_EQ(SelectObject(bare, nullptr), handle);
    EXPECT_TRUE(DeleteObject(handle));
    EXPECT_TRUE(DeleteDC(bare));
    EXPECT_FALSE(DeleteObject(nullptr));
    EXPECT_FALSE(DeleteDC(nullptr));
    EXPECT_EQ(CreateFontIndirectA(nullptr), nullptr);
}

TEST(FontsEnumeration, FamiliesOnceFacesOfANamedFamilyAndStopping) {
    HDC dc = CreateICA("DISPLAY", nullptr, nullptr, nullptr);
    std::vector<std::string> families;
    EnumFontFamiliesA(
        dc, nullptr,
        [](const ENUMLOGFONTA* f, const NEWTEXTMETRICA*, DWORD type, std::intptr_t data) {
            EXPECT_TRUE(type & TRUETYPE_FONTTYPE);
            reinterpret_cast<std::vector<std::string>*>(data)->push_back(f->elfLogFont.lfFaceName);
            return 1;
        },
        reinterpret_cast<std::intptr_t>(&families));
    EXPECT_EQ(std::set<std::string>(families.begin(), families.end()).size(), families.size());
    EXPECT_NE(std::find(families.begin(), families.end(), "DejaVu Sans"), families.end());

    std::vector<std::string> faces;
    EnumFontFamiliesA(
        dc, "DejaVu Sans",
        [](const ENUMLOGFONTA* f, const NEWTEXTMETRICA*, DWORD, std::intptr_t data) {
            reinterpret_cast<std::vector<std::string>*>(data)->push_back(f->elfFullName);
            return 1;
        },
        reinterpret_cast<std::intptr_t>(&faces));
    // The regular and bold faces come with the smallest install of the family.
    EXPECT_GE(faces.size(), 2u);
    EXPECT_NE(std::find(faces.begin(), faces.end(), "DejaVu Sans Bold"), faces.end());
    for (const std::string& face : faces)
        EXPECT_EQ(face.rfind("DejaVu Sans", 0), 0u) << face;

    int calls = 0;
    EXPECT_EQ(EnumFontFamiliesA(
                  dc, nullptr,
                  [](const ENUMLOGFONTA*, const NEWTEXTMETRICA*, DWORD, std::intptr_t data) {
                      ++*reinterpret_cast<int*>(data);
                      return 0;
                  },
                  reinterpret_cast<std::intptr_t>(&calls)),
              0);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(EnumFontFamiliesA(dc, nullptr, nullptr, 0), 0);
    DeleteDC(dc);
}

TEST(FontsCodePage, WindowsLatin1ToCodeUnits) {
    WCHAR16 out[8] = {};
    EXPECT_EQ(MultiByteToWideChar(0, 0, "A\x80\xE9\x9F", -1, nullptr, 0), 5);
    ASSERT_EQ(MultiByteToWideChar(0, 0, "A\x80\xE9\x9F", -1, out, 8), 5);
    EXPECT_EQ(out[0], 'A');
    EXPECT_EQ(out[1], 0x20AC); // euro sign
    EXPECT_EQ(out[2], 0x00E9);
    EXPECT_EQ(out[3], 0x0178);
    EXPECT_EQ(out[4], 0);
    EXPECT_EQ(MultiByteToWideChar(0, 0, "abc", 2, out, 8), 2);
    EXPECT_EQ(MultiByteToWideChar(0, 0, "abcdef", -1, out, 3), 0);
    EXPECT_EQ(MultiByteToWideChar(65001, 0, "abc", -1, out, 8), 0);
    EXPECT_EQ(MultiByteToWideChar(0, 0, nullptr, -1, out, 8), 0);
    // And back: every byte survives the round trip; other units do not fit.
    for (unsigned b = 1; b < 256; ++b) {
        unsigned char back = 0;
        ASSERT_TRUE(
            CodePage1252FromWide(WideFromCodePage1252(static_cast<unsigned char>(b)), &back));
        EXPECT_EQ(back, b);
    }
    unsigned char kept = 'x';
    EXPECT_FALSE(CodePage1252FromWide(0x0100, &kept));
    EXPECT_FALSE(CodePage1252FromWide(0x20AD, &kept));
    EXPECT_EQ(kept, 'x');
}
