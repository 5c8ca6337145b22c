// Damaged, truncated and vanished font files among the installed ones. The
// copies live in a directory that sorts before the system's, so that where a
// copy shares a full name with an intact face, the copy is the one listed.

#include "TextTestSupport.h"

#include "text/Type1Fonts.h"
#include "text/Type1Service.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<char> ReadFile(const char* path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

void WriteFile(const fs::path& path, const std::vector<char>& bytes, std::size_t size) {
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(std::min(size, bytes.size())));
}

void Scramble(std::vector<char>& bytes, std::size_t from, std::size_t to) {
    std::uint32_t state = 0x9E3779B9u;
    for (std::size_t i = from; i < to && i < bytes.size(); ++i) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        bytes[i] = static_cast<char>(state);
    }
}

std::uint32_t BigEndian32(const std::vector<char>& b, std::size_t at) {
    return (std::uint32_t(std::uint8_t(b[at])) << 24) |
           (std::uint32_t(std::uint8_t(b[at + 1])) << 16) |
           (std::uint32_t(std::uint8_t(b[at + 2])) << 8) | std::uint8_t(b[at + 3]);
}

// Overwrites the glyph outlines of a TrueType file, leaving its tables of
// names and metrics intact.
void ScrambleGlyphTable(std::vector<char>& font) {
    const unsigned tables = (unsigned(std::uint8_t(font[4])) << 8) | std::uint8_t(font[5]);
    for (unsigned i = 0; i < tables; ++i) {
        const std::size_t record = 12 + 16 * i;
        if (std::string(&font[record], 4) == "glyf")
            Scramble(font, BigEndian32(font, record + 8),
                     BigEndian32(font, record + 8) + BigEndian32(font, record + 12));
    }
}

fs::path gDirectory;

class DamagedFonts : public ::testing::Environment {
  public:
    void SetUp() override {
        char pattern[] = "/tmp/plumet-damaged-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        gDirectory = pattern;
        const std::string dejaVu = "/usr/share/fonts/truetype/dejavu/";
        auto sansBold = ReadFile((dejaVu + "DejaVuSans-Bold.ttf").c_str());
        WriteFile(gDirectory / "truncated.ttf", sansBold, 2000);
        auto mono = ReadFile((dejaVu + "DejaVuSansMono.ttf").c_str());
        ScrambleGlyphTable(mono);
        WriteFile(gDirectory / "scrambled.ttf", mono, mono.size());
        auto serifBold = ReadFile((dejaVu + "DejaVuSerif-Bold.ttf").c_str());
        WriteFile(gDirectory / "vanishing.ttf", serifBold, serifBold.size());
        auto type1 = ReadFile("/usr/share/fonts/type1/urw-base35/NimbusSans-Bold.t1");
        Scramble(type1, type1.size() / 3, type1.size() * 9 / 10);
        WriteFile(gDirectory / "scrambled.t1", type1, type1.size());
        std::vector<char> noise(5000);
        Scramble(noise, 0, noise.size());
        WriteFile(gDirectory / "noise.ttf", noise, noise.size());
        ASSERT_TRUE(FcConfigAppFontAddDir(nullptr, reinterpret_cast<const FcChar8*>(pattern)));
        SetType1ModulePath(PLUMET_TYPE1_MODULE);
        ResetType1FontDirectory();
        BuildFontList();
    }
    void TearDown() override {
        FreeFontList();
        ResetType1FontDirectory();
        std::error_code ignored;
        fs::remove_all(gDirectory, ignored);
    }
};

const auto* const gEnvironment = ::testing::AddGlobalTestEnvironment(new DamagedFonts);

// Every point finite, every contour closed, the bounds around all of it.
void ExpectSound(const TextCharacter* chain) {
    for (const TextCharacter* c = chain; c; c = c->next) {
        EXPECT_TRUE(std::isfinite(c->advance));
        for (const OuterContour* o = c->contours; o; o = o->next) {
            ASSERT_GE(o->count, 2u);
            for (std::uint32_t i = 0; i < 2 * o->count; ++i)
                EXPECT_TRUE(std::isfinite(o->points[i]));
            EXPECT_EQ(o->points[0], o->points[2 * o->count - 2]);
            for (std::uint32_t i = 0; i < o->count; ++i) {
                EXPECT_GE(o->points[2 * i], c->xMin);
                EXPECT_LE(o->points[2 * i + 1], c->yMax);
            }
        }
    }
}

} // namespace

TEST(TextDamagedFonts, TruncatedFileIsSkippedAndTheIntactFaceRemains) {
    ASSERT_TRUE(SelectFont("DejaVu Sans Bold"));
    Chain chain = Read("O");
    ASSERT_TRUE(chain);
    EXPECT_EQ(TopologyOf(chain.get()), (Topology{{1}}));
    // Noise is no font at all: nothing new is listed under a strange name.
    for (std::uint32_t i = 1; i <= GetFontList().GetCount(); ++i)
        EXPECT_FALSE(FontListEntryAt(i)->name.empty());
}

TEST(TextDamagedFonts, ScrambledOutlinesGiveSoundOrEmptyCharacters) {
    for (const char* name : {"DejaVu Sans Mono", "Nimbus Sans Bold (Type 1)"}) {
        if (!SelectFont(name)) continue; // a face its library refused is skipped
        std::string text;
        for (int i = 0; i < 126; ++i)
            text += char(33 + i % 90);
        TextCharacter* chain = nullptr;
        if (BuildTextCharacters(text.c_str(), 1, &chain)) {
            ExpectSound(chain);
            FreeTextCharacters(chain);
        } else {
            EXPECT_EQ(chain, nullptr);
        }
    }
}

TEST(TextDamagedFonts, FileCutShortWhileOpenGivesCharactersWithoutContours) {
    ASSERT_TRUE(SelectFont("DejaVu Serif Bold"));
    Chain intact = Read("Ab");
    ASSERT_TRUE(intact);
    EXPECT_EQ(TopologyOf(intact.get()), (Topology{{1}, {1}}));
    // The face is open now; the file shrinks under it.
    fs::resize_file(gDirectory / "vanishing.ttf", 100);
    Chain cut = Read("Ab");
    ASSERT_TRUE(cut);
    ExpectSound(cut.get());
    EXPECT_EQ(TopologyOf(cut.get()), (Topology{{}, {}}));
    EXPECT_EQ(cut->advance, 0.0f);
    fs::remove(gDirectory / "vanishing.ttf");
    Chain gone = Read("Ab");
    ASSERT_TRUE(gone);
    EXPECT_EQ(gone->contours, nullptr);
}
