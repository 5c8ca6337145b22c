// Reading real fonts: DejaVu (TrueType) and the URW base 35 (Type 1).

#include "TextTestSupport.h"

#include "text/Type1Fonts.h"
#include "text/Type1Service.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>

namespace {

void BuildListWithType1() {
    SetType1ModulePath(PLUMET_TYPE1_MODULE);
    ResetType1FontDirectory();
    BuildFontList();
}

bool IsClosed(const float* points, std::uint32_t count) {
    return count >= 2 && points[0] == points[2 * count - 2] && points[1] == points[2 * count - 1];
}

// No two successive points of a contour are the same.
void ExpectNoEmptyEdges(const TextCharacter* chain) {
    auto check = [](const float* p, std::uint32_t count) {
        for (std::uint32_t i = 1; i < count; ++i)
            EXPECT_FALSE(p[2 * i] == p[2 * i - 2] && p[2 * i + 1] == p[2 * i - 1]) << "point " << i;
    };
    for (const TextCharacter* c = chain; c; c = c->next)
        for (const OuterContour* o = c->contours; o; o = o->next) {
            check(o->points, o->count);
            for (const HoleContour* h = o->holes; h; h = h->next)
                check(h->points, h->count);
        }
}

int SmoothPoints(const TextCharacter* c) {
    int n = 0;
    for (const OuterContour* o = c->contours; o; o = o->next) {
        for (std::uint32_t i = 0; i < o->count; ++i)
            n += o->smooth[i];
        for (const HoleContour* h = o->holes; h; h = h->next)
            for (std::uint32_t i = 0; i < h->count; ++i)
                n += h->smooth[i];
    }
    return n;
}

} // namespace

TEST(TextFontList, SortedUniqueWithBothKindsAndADefault) {
    BuildListWithType1();
    KList& list = GetFontList();
    ASSERT_GT(list.GetCount(), 20u);
    std::set<std::string> names;
    int kinds[3] = {0, 0, 0};
    for (std::uint32_t i = 1; i <= list.GetCount(); ++i) {
        const FontListEntry* row = FontListEntryAt(i);
        ASSERT_TRUE(row->kind == 0 || row->kind == 2);
        ++kinds[row->kind];
        EXPECT_TRUE(names.insert(row->name).second) << "twice: " << row->name;
        if (i > 1) {
            EXPECT_LT(std::strcmp(FontListEntryAt(i - 1)->name.c_str(), row->name.c_str()), 0);
        }
        EXPECT_EQ(row->id, row->id2);
        EXPECT_EQ(row->id, row->id3);
    }
    EXPECT_GT(kinds[0], 0);
    EXPECT_GT(kinds[2], 0);
    EXPECT_TRUE(names.count("DejaVu Sans"));
    EXPECT_TRUE(names.count("Nimbus Sans Regular (Type 1)"));
    // Each URW design once: the Type 1 row, not also its OpenType copy.
    EXPECT_FALSE(names.count("Nimbus Sans"));
    EXPECT_FALSE(names.count("C059 Roman"));
    EXPECT_TRUE(names.count("C059 Roman (Type 1)"));
    // The default is Arial or, where it is not installed, the face served for
    // that name, with Arial's widths (2048ths of an em, in whole pixels of
    // the 32-pixel em).
    EXPECT_EQ(GetCurrentFont(), GetDefaultFont());
    Chain text = Read("Lumerra 3D");
    const float arialWidths[] = {1139, 1139, 1706, 1139, 682, 682, 1139, 569, 1139, 1479};
    std::size_t n = 0;
    for (const TextCharacter* c : Characters(text.get()))
        EXPECT_FLOAT_EQ(c->advance, std::round(arialWidths[n++] / 64) / 32)
            << n << " in " << FontListEntryAt(GetDefaultFont())->name;
    EXPECT_EQ(n, std::size(arialWidths));
    EXPECT_FALSE(SetCurrentFont(0));
    EXPECT_FALSE(SetCurrentFont(list.GetCount() + 1));
    EXPECT_EQ(GetCurrentFont(), GetDefaultFont());
    ASSERT_TRUE(SelectFont("Nimbus Sans Regular (Type 1)"));
    EXPECT_EQ(GetCurrentKind(), 2);
    FreeFontList();
    EXPECT_EQ(GetFontList().GetCount(), 0u);
}

TEST(TextFontList, WithoutTheType1ModuleTrueTypeStillWorks) {
    SetType1ModulePath("");
    ResetType1FontDirectory();
    BuildFontList();
    EXPECT_FALSE(GetType1FontDirectory().available);
    for (std::uint32_t i = 1; i <= GetFontList().GetCount(); ++i)
        EXPECT_EQ(FontListEntryAt(i)->kind, 0);
    // The OpenType copies of the PostScript designs are then the only ones.
    EXPECT_NE(FindFontListPosition("Nimbus Sans"), 0u);
    ASSERT_TRUE(SelectFont("DejaVu Sans"));
    Chain chain = Read("Ob");
    ASSERT_TRUE(chain);
    EXPECT_EQ(TopologyOf(chain.get()), (Topology{{1}, {1}}));
    // An OpenType face with cubic outlines reads as the Type 1 face would,
    // but with the font's own advances.
    ASSERT_TRUE(SelectFont("Nimbus Sans"));
    Chain cff = Read("OB8 H");
    ASSERT_TRUE(cff);
    EXPECT_EQ(TopologyOf(cff.get()), (Topology{{1}, {2}, {2}, {}, {0}}));
    EXPECT_NEAR(cff->advance, 0.778, 0.04);
    ExpectNoEmptyEdges(cff.get());
    SaveChainPicture(cff.get(), "text_cff_nimbus.png");
    // A module path that holds no module is the same as none.
    SetType1ModulePath("/nonexistent/plumet_type1.so");
    ResetType1FontDirectory();
    BuildFontList();
    EXPECT_FALSE(GetType1FontDirectory().available);
    SetType1ModulePath(nullptr);
    ResetType1FontDirectory();
}

TEST(TextTrueType, OuterContoursCarryTheirHolesAndASpaceOnlyItsAdvance) {
    BuildListWithType1();
    ASSERT_TRUE(SelectFont("DejaVu Sans"));
    Chain chain = Read("O\xA9 "); // the copyright sign in code page 1252
    ASSERT_TRUE(chain);
    // The ring of the copyright sign has its hole, the C inside it none.
    EXPECT_EQ(TopologyOf(chain.get()), (Topology{{1}, {1, 0}, {}}));
    const TextCharacter& o = *chain;
    // About one unit per em: an O of DejaVu Sans is some 0.75 high.
    EXPECT_NEAR(o.yMax - o.yMin, 0.75, 0.1);
    EXPECT_NEAR(o.advance, 0.78, 0.05);
    EXPECT_GT(SmoothPoints(&o), 10);
    const HoleContour& hole = *o.contours->holes;
    for (std::uint32_t i = 0; i < hole.count; ++i) {
        EXPECT_GT(hole.points[2 * i], o.xMin);
        EXPECT_LT(hole.points[2 * i], o.xMax);
    }
    EXPECT_NEAR(o.next->next->advance, 0.32, 0.02);
    SaveChainPicture(chain.get(), "text_dejavu_O.png");
}

TEST(TextBothKinds, SameDesignSameTopologyClosedBoundedAndStraightWhereStraight) {
    BuildListWithType1();
    const char* text = "OBAHe8 dpg%";
    Topology topologies[2];
    int n = 0;
    for (const char* font : {"DejaVu Sans", "Nimbus Sans Regular (Type 1)"}) {
        ASSERT_TRUE(SelectFont(font));
        Chain chain = Read(text);
        ASSERT_TRUE(chain);
        topologies[n++] = TopologyOf(chain.get());
        ExpectNoEmptyEdges(chain.get());
        for (const TextCharacter* c : Characters(chain.get())) {
            EXPECT_GT(c->advance, 0.0f);
            for (const OuterContour* o = c->contours; o; o = o->next) {
                EXPECT_TRUE(IsClosed(o->points, o->count));
                auto inBounds = [&](const float* p, std::uint32_t count) {
                    for (std::uint32_t i = 0; i < count; ++i) {
                        EXPECT_GE(p[2 * i], c->xMin);
                        EXPECT_LE(p[2 * i], c->xMax);
                        EXPECT_GE(p[2 * i + 1], c->yMin);
                        EXPECT_LE(p[2 * i + 1], c->yMax);
                    }
                };
                inBounds(o->points, o->count);
                for (const HoleContour* h = o->holes; h; h = h->next) {
                    EXPECT_TRUE(IsClosed(h->points, h->count));
                    inBounds(h->points, h->count);
                }
            }
        }
        SaveChainPicture(chain.get(),
                         std::string("text_topology_") + (n == 1 ? "ttf" : "type1") + ".png");
        // Straight letters have no point that subdivision added.
        Chain straight = Read("EHTLIZ");
        ASSERT_TRUE(straight);
        for (const TextCharacter* c : Characters(straight.get())) {
            EXPECT_EQ(SmoothPoints(c), 0) << font;
            EXPECT_NE(c->contours, nullptr) << font;
        }
    }
    EXPECT_EQ(topologies[0], topologies[1]);
    // The per cent sign: two rings and a stroke, in the font's own order.
    std::sort(topologies[0].back().begin(), topologies[0].back().end());
    EXPECT_EQ(topologies[0],
              (Topology{{1}, {2}, {1}, {0}, {1}, {2}, {}, {1}, {1}, {1}, {0, 1, 1}}));
}

TEST(TextType1, AdvanceIsInkAndATenthSpaceIsAQuarter) {
    BuildListWithType1();
    ASSERT_TRUE(SelectFont("Nimbus Sans Regular (Type 1)"));
    Chain chain = Read("H I");
    ASSERT_TRUE(chain);
    const auto c = Characters(chain.get());
    ASSERT_EQ(c.size(), 3u);
    // The width runs from the pen (x = 0) to the right edge of the ink.
    EXPECT_NEAR(c[0]->advance, c[0]->xMax * 1.1f, 1e-3);
    EXPECT_EQ(c[1]->advance, 0.25f);
    EXPECT_EQ(c[1]->contours, nullptr);
    EXPECT_GT(c[0]->xMin, 0.0f);
    EXPECT_NEAR(c[0]->yMax, 0.72, 0.05);
    // Ink left of the pen counts into the width.
    ASSERT_TRUE(SelectFont("Nimbus Roman Italic (Type 1)"));
    Chain f = Read("f");
    ASSERT_TRUE(f);
    EXPECT_LT(f->xMin, -0.1f);
    EXPECT_NEAR(f->advance, (f->xMax - f->xMin) * 1.1f, 1e-3);
}

TEST(TextBadInput, EmptyTextNullTextAndMissingGlyphs) {
    BuildListWithType1();
    for (const char* font : {"DejaVu Sans", "Nimbus Sans Regular (Type 1)", "DejaVu Serif"}) {
        ASSERT_TRUE(SelectFont(font));
        TextCharacter* chain = reinterpret_cast<TextCharacter*>(0x1);
        EXPECT_TRUE(BuildTextCharacters("", 1, &chain));
        EXPECT_EQ(chain, nullptr);
        chain = reinterpret_cast<TextCharacter*>(0x1);
        EXPECT_TRUE(BuildTextCharacters(nullptr, 1, &chain));
        EXPECT_EQ(chain, nullptr);
        EXPECT_FALSE(BuildTextCharacters("A", 1, nullptr));

        // 126 characters, among them bytes with no glyph in any font.
        std::string text;
        for (int i = 0; i < 126; ++i)
            text += (i % 9 == 4) ? '\x81' : (i % 7 == 3) ? '\x01' : char('A' + i % 26);
        Chain long_ = Read(text.c_str());
        ASSERT_TRUE(long_) << font;
        const auto c = Characters(long_.get());
        ASSERT_EQ(c.size(), 126u);
        const bool type1 = GetCurrentKind() == 2;
        for (int i = 0; i < 126; ++i) {
            const bool missing = (i % 9 == 4) || (i % 7 == 3);
            if (missing) {
                EXPECT_EQ(c[i]->contours, nullptr);
                EXPECT_EQ(c[i]->advance, type1 ? 0.25f : 0.0f);
            } else {
                EXPECT_NE(c[i]->contours, nullptr);
            }
        }
    }
}

TEST(TextBadInput, QualityOutsideTheLevelsIsClampedAndLevelsRefine) {
    BuildListWithType1();
    ASSERT_TRUE(SelectFont("DejaVu Serif"));
    std::uint32_t counts[5];
    const int qualities[5] = {-5, 0, 1, 2, 99};
    for (int q = 0; q < 5; ++q) {
        Chain chain = Read("S", qualities[q]);
        ASSERT_TRUE(chain);
        counts[q] = chain->contours->count;
    }
    EXPECT_EQ(counts[0], counts[1]);
    EXPECT_EQ(counts[4], counts[3]);
    EXPECT_LT(counts[1], counts[2]);
    EXPECT_LT(counts[2], counts[3]);
}
