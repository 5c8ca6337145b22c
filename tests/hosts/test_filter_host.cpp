// The FilterRecord the host makes, and the pixel exchange of advanceState.
#include "TestSupport.h"
#include "hosts/FilterHost.h"
#include "hosts/HostMemory.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

std::unique_ptr<FilterHost> MakeHost(HostImage image, FilterSetup setup = {}) {
    std::string error;
    auto host = FilterHost::Create(std::move(image), setup, error);
    EXPECT_TRUE(host) << error;
    return host;
}

void Ask(FilterRecord& r, Rect in, int inLo, int inHi, Rect out, int outLo, int outHi) {
    r.inRect = in;
    r.inLoPlane = int16(inLo);
    r.inHiPlane = int16(inHi);
    r.outRect = out;
    r.outLoPlane = int16(outLo);
    r.outHiPlane = int16(outHi);
}

const uint8_t* InPixel(const FilterRecord& r, int row, int col) {
    return static_cast<const uint8_t*>(r.inData) + row * r.inRowBytes +
           col * (r.inHiPlane - r.inLoPlane + 1);
}

uint8_t* OutPixel(FilterRecord& r, int row, int col) {
    return static_cast<uint8_t*>(r.outData) + row * r.outRowBytes +
           col * (r.outHiPlane - r.outLoPlane + 1);
}

constexpr Rect kNone{0, 0, 0, 0};

} // namespace

TEST(FilterHostRecord, EachImageKindAndSetupGivesItsFilterCase) {
    struct Case {
        ColourModel model;
        bool alpha, selected, protect, report;
        int filterCase, planes, layerPlanes, mask, mode;
    } cases[] = {
        {ColourModel::RGB, false, false, false, true, 1, 3, 0, 0, plugInModeRGBColor},
        {ColourModel::RGB, false, true, false, true, 2, 3, 0, 0, plugInModeRGBColor},
        {ColourModel::CMYK, false, false, false, true, 1, 4, 0, 0, plugInModeCMYKColor},
        {ColourModel::CMYK, false, true, false, true, 2, 4, 0, 0, plugInModeCMYKColor},
        {ColourModel::RGB, true, false, false, true, 4, 4, 3, 1, plugInModeRGBColor},
        {ColourModel::RGB, true, true, false, true, 5, 4, 3, 1, plugInModeRGBColor},
        {ColourModel::RGB, true, false, true, true, 6, 4, 3, 1, plugInModeRGBColor},
        {ColourModel::RGB, true, true, true, true, 7, 4, 3, 1, plugInModeRGBColor},
        {ColourModel::RGB, false, false, false, false, 0, 3, 0, 0, plugInModeRGBColor},
        {ColourModel::CMYK, false, true, false, false, 0, 4, 0, 0, plugInModeCMYKColor},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(::testing::Message() << "case " << c.filterCase << " selected " << c.selected);
        FilterSetup setup;
        if (c.selected) setup.selection = VRect{2, 3, 9, 11};
        setup.protectTransparency = c.protect;
        setup.reportFilterCases = c.report;
        auto host = MakeHost(Pattern(20, 10, c.model, c.alpha), setup);
        ASSERT_TRUE(host);
        const FilterRecord& r = host->Record();
        EXPECT_EQ(r.filterCase, c.filterCase);
        EXPECT_EQ(r.planes, c.planes);
        EXPECT_EQ(r.inLayerPlanes, c.layerPlanes);
        EXPECT_EQ(r.inTransparencyMask, c.mask);
        EXPECT_EQ(r.imageMode, c.mode);
        EXPECT_EQ(r.imageSize.h, 20);
        EXPECT_EQ(r.imageSize.v, 10);
        const Rect expected = c.selected ? Rect{2, 3, 9, 11} : Rect{0, 0, 10, 20};
        EXPECT_EQ(std::memcmp(&r.filterRect, &expected, sizeof expected), 0);
    }
}

TEST(FilterHostRecord, SelectionsThatAreEmptyOrOutsideAreRefused) {
    for (const VRect s : {VRect{5, 5, 5, 9}, VRect{5, 9, 8, 2}, VRect{-1, 0, 4, 4},
                          VRect{0, 0, 11, 4}, VRect{0, 18, 4, 21}}) {
        FilterSetup setup;
        setup.selection = s;
        std::string error;
        EXPECT_FALSE(FilterHost::Create(Pattern(20, 10, ColourModel::RGB, false), setup, error));
        EXPECT_NE(error.find("selection"), std::string::npos) << error;
    }
    std::string error;
    EXPECT_FALSE(FilterHost::Create(HostImage{}, {}, error));
}

TEST(FilterHostAdvance, DeliversTheRectangleAndPlanesAskedFor) {
    auto host = MakeHost(Pattern(20, 10, ColourModel::RGB, true));
    FilterRecord& r = host->Record();
    Ask(r, Rect{2, 3, 7, 11}, 1, 3, Rect{4, 0, 6, 20}, 0, 0);
    ASSERT_EQ(r.advanceState(), noErr);
    ASSERT_NE(r.inData, nullptr);
    EXPECT_EQ(r.inRowBytes, 8 * 3);
    for (int row = 0; row < 5; ++row)
        for (int col = 0; col < 8; ++col)
            for (int p = 0; p < 3; ++p)
                ASSERT_EQ(InPixel(r, row, col)[p], PatternValue(row + 2, col + 3, p + 1));
    ASSERT_NE(r.outData, nullptr);
    EXPECT_EQ(r.outRowBytes, 20);
    for (int row = 0; row < 2; ++row)
        for (int col = 0; col < 20; ++col)
            ASSERT_EQ(OutPixel(r, row, col)[0], PatternValue(row + 4, col, 0));
}

TEST(FilterHostAdvance, WritesThePreviousOutputBackBeforeHandingOutNewBuffers) {
    auto host = MakeHost(Pattern(12, 6, ColourModel::RGB, false));
    FilterRecord& r = host->Record();
    Ask(r, Rect{0, 0, 6, 12}, 0, 2, Rect{1, 2, 3, 5}, 1, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    for (int row = 0; row < 2; ++row)
        for (int col = 0; col < 3; ++col)
            OutPixel(r, row, col)[0] = OutPixel(r, row, col)[1] = 9;
    // Not yet in the destination.
    EXPECT_EQ(host->Destination().Pixel(1, 2)[1], PatternValue(1, 2, 1));

    Ask(r, Rect{1, 2, 3, 5}, 0, 2, Rect{0, 0, 6, 12}, 0, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    const HostImage& dst = host->Destination();
    for (int row = 0; row < 6; ++row)
        for (int col = 0; col < 12; ++col) {
            const bool inside = row >= 1 && row < 3 && col >= 2 && col < 5;
            ASSERT_EQ(dst.Pixel(row, col)[0], PatternValue(row, col, 0));
            ASSERT_EQ(dst.Pixel(row, col)[1], inside ? 9 : PatternValue(row, col, 1));
            ASSERT_EQ(dst.Pixel(row, col)[2], inside ? 9 : PatternValue(row, col, 2));
        }
    // inData still shows the source; outData starts as the destination.
    EXPECT_EQ(InPixel(r, 0, 0)[1], PatternValue(1, 2, 1));
    EXPECT_EQ(OutPixel(r, 1, 2)[1], 9);
    EXPECT_EQ(host->Source().Pixel(1, 2)[1], PatternValue(1, 2, 1));

    // The last output reaches the destination only when the run completes.
    OutPixel(r, 5, 11)[2] = 1;
    host->Complete();
    EXPECT_EQ(host->Destination().Pixel(5, 11)[2], 1);
    EXPECT_EQ(r.inData, nullptr);
    EXPECT_EQ(r.outData, nullptr);
}

TEST(FilterHostAdvance, OutputIsMaskedByTheSelection) {
    FilterSetup setup;
    setup.selection = VRect{2, 2, 4, 5};
    auto host = MakeHost(Pattern(8, 6, ColourModel::RGB, false), setup);
    FilterRecord& r = host->Record();
    Ask(r, kNone, 0, 2, Rect{0, 0, 6, 8}, 0, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    std::memset(r.outData, 0, size_t(r.outRowBytes) * 6);
    host->Complete();
    for (int row = 0; row < 6; ++row)
        for (int col = 0; col < 8; ++col) {
            const bool selected = row >= 2 && row < 4 && col >= 2 && col < 5;
            ASSERT_EQ(host->Destination().Pixel(row, col)[0],
                      selected ? 0 : PatternValue(row, col, 0));
        }
}

TEST(FilterHostAdvance, InputRateSubsamplesAndPaddingFillsOutsideTheImage) {
    auto host = MakeHost(Pattern(20, 12, ColourModel::RGB, false));
    FilterRecord& r = host->Record();
    // Rate 2: inRect is in halved coordinates; row 7 maps to image row 14,
    // below the image, so it is padding.
    r.inputRate = 2 << 16;
    r.inputPadding = 255;
    Ask(r, Rect{1, 2, 8, 10}, 0, 2, kNone, 0, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    EXPECT_EQ(r.outData, nullptr);
    for (int row = 1; row < 8; ++row)
        for (int col = 2; col < 10; ++col)
            for (int p = 0; p < 3; ++p) {
                const uint8_t expected =
                    row * 2 < 12 ? PatternValue(row * 2, col * 2, p) : uint8_t(255);
                ASSERT_EQ(InPixel(r, row - 1, col - 2)[p], expected) << row << "," << col;
            }
    // Rate 1.5 takes the floor of the scaled position.
    r.inputRate = 0x18000;
    r.inputPadding = 7;
    Ask(r, Rect{-1, 0, 3, 3}, 0, 0, kNone, 0, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    EXPECT_EQ(InPixel(r, 0, 0)[0], 7); // row -1 -> -1.5 -> -2
    EXPECT_EQ(InPixel(r, 2, 1)[0], PatternValue(1, 1, 0));
    EXPECT_EQ(InPixel(r, 3, 2)[0], PatternValue(3, 3, 0));
    // Without padding, pixels outside the image are an error.
    r.inputRate = 0x10000;
    r.inputPadding = -1;
    Ask(r, Rect{0, 15, 4, 21}, 0, 2, kNone, 0, 2);
    EXPECT_EQ(r.advanceState(), filterBadParameters);
    EXPECT_EQ(r.inData, nullptr);
}

TEST(FilterHostAdvance, EmptyRectanglesGiveNullBuffers) {
    auto host = MakeHost(Pattern(6, 6, ColourModel::RGB, false));
    FilterRecord& r = host->Record();
    Ask(r, Rect{3, 3, 3, 5}, 0, 2, Rect{4, 4, 5, 2}, 0, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    EXPECT_EQ(r.inData, nullptr);
    EXPECT_EQ(r.outData, nullptr);
    EXPECT_EQ(r.inRowBytes, 0);
    EXPECT_EQ(r.outRowBytes, 0);
    // Rectangles with no area count as empty; a mask rectangle keeps a run going.
    EXPECT_TRUE(host->RectanglesEmpty());
    r.maskRect = Rect{0, 0, 1, 1};
    EXPECT_FALSE(host->RectanglesEmpty());
    r.maskRect = kNone;
    r.outRect = Rect{0, 0, 1, 1};
    EXPECT_FALSE(host->RectanglesEmpty());
}

TEST(FilterHostAdvance, InconsistentRequestsAreRefused) {
    auto host = MakeHost(Pattern(10, 10, ColourModel::RGB, false));
    FilterRecord& r = host->Record();
    const Rect all{0, 0, 10, 10};
    struct Bad {
        const char* what;
        Rect in;
        int inLo, inHi;
        Rect out;
        int outLo, outHi;
        Fixed rate;
        int16 padding;
    } bad[] = {
        {"in plane past the last", all, 0, 3, kNone, 0, 0, 0x10000, -1},
        {"in planes reversed", all, 2, 1, kNone, 0, 0, 0x10000, -1},
        {"negative plane", all, -1, 1, kNone, 0, 0, 0x10000, -1},
        {"out plane past the last", kNone, 0, 0, all, 0, 3, 0x10000, -1},
        {"out rect outside", kNone, 0, 0, Rect{0, 0, 11, 10}, 0, 2, 0x10000, -1},
        {"out rect negative", kNone, 0, 0, Rect{-1, 0, 5, 5}, 0, 2, 0x10000, -1},
        {"zero rate", all, 0, 2, kNone, 0, 0, 0, -1},
        {"negative rate", all, 0, 2, kNone, 0, 0, -0x10000, -1},
        {"padding too large", all, 0, 2, kNone, 0, 0, 0x10000, 256},
    };
    for (const Bad& b : bad) {
        SCOPED_TRACE(b.what);
        Ask(r, b.in, b.inLo, b.inHi, b.out, b.outLo, b.outHi);
        r.inputRate = b.rate;
        r.inputPadding = b.padding;
        EXPECT_EQ(r.advanceState(), filterBadParameters);
        EXPECT_EQ(r.inData, nullptr);
        EXPECT_EQ(r.outData, nullptr);
    }
}

TEST(FilterHostAdvance, BuffersBeyondMaxSpaceAreOutOfMemory) {
    FilterSetup setup;
    setup.maxSpace = 100;
    auto host = MakeHost(Pattern(10, 10, ColourModel::RGB, false), setup);
    FilterRecord& r = host->Record();
    Ask(r, Rect{0, 0, 5, 5}, 0, 2, Rect{0, 0, 5, 5}, 0, 2); // 75 + 75 bytes
    EXPECT_EQ(r.advanceState(), memFullErr);
    EXPECT_EQ(r.inData, nullptr);
    EXPECT_EQ(r.outData, nullptr);
    Ask(r, Rect{0, 0, 5, 5}, 0, 2, kNone, 0, 2);
    EXPECT_EQ(r.advanceState(), noErr);
    // The largest request the interface allows is refused, not attempted.
    host->SetMaxSpace(0x7FFFFFFF);
    r.inputPadding = 0;
    Ask(r, Rect{-32768, -32768, 32767, 32767}, 0, 2, kNone, 0, 2);
    EXPECT_EQ(r.advanceState(), memFullErr);
}

TEST(FilterHostAdvance, CmykIsInvertedInTheBuffersAndBackInTheImage) {
    auto host = MakeHost(Pattern(6, 5, ColourModel::CMYK, false));
    FilterRecord& r = host->Record();
    Ask(r, Rect{0, 0, 5, 6}, 0, 3, Rect{0, 0, 5, 6}, 0, 3);
    ASSERT_EQ(r.advanceState(), noErr);
    for (int p = 0; p < 4; ++p)
        EXPECT_EQ(InPixel(r, 2, 3)[p], 255 - PatternValue(2, 3, p));
    EXPECT_EQ(OutPixel(r, 4, 5)[3], 255 - PatternValue(4, 5, 3));
    OutPixel(r, 1, 1)[0] = 255; // no cyan ink
    OutPixel(r, 1, 1)[3] = 0;   // full black
    host->Complete();
    EXPECT_EQ(host->Destination().Pixel(1, 1)[0], 0);
    EXPECT_EQ(host->Destination().Pixel(1, 1)[3], 255);
    // Everything else came back unchanged.
    HostImage expected = Pattern(6, 5, ColourModel::CMYK, false);
    expected.Pixel(1, 1)[0] = 0;
    expected.Pixel(1, 1)[3] = 255;
    EXPECT_EQ(host->Destination().pixels, expected.pixels);
}

TEST(FilterHostAdvance, ProtectedTransparencyIsNeverWrittenEditableIs) {
    for (const int kind : {0, 1, 2}) {
        const bool protect = kind != 0;
        SCOPED_TRACE(kind == 0 ? "editable" : kind == 1 ? "protected" : "floating");
        FilterSetup setup;
        setup.protectTransparency = kind == 1;
        setup.floatingSelection = kind == 2;
        auto host = MakeHost(Pattern(4, 4, ColourModel::RGB, true), setup);
        FilterRecord& r = host->Record();
        if (kind == 2) {
            // A floating selection is its own case: colour planes only.
            EXPECT_EQ(r.filterCase, filterCaseFloatingSelection);
            EXPECT_EQ(r.inLayerPlanes, 0);
            EXPECT_EQ(r.inTransparencyMask, 0);
        }
        Ask(r, kNone, 0, 3, Rect{0, 0, 4, 4}, 0, 3);
        ASSERT_EQ(r.advanceState(), noErr);
        std::memset(r.outData, 0, size_t(r.outRowBytes) * 4);
        host->Complete();
        EXPECT_EQ(host->Destination().Pixel(2, 2)[0], 0);
        EXPECT_EQ(host->Destination().Pixel(2, 2)[3], protect ? PatternValue(2, 2, 3) : 0);
    }
}

TEST(FilterHostMemory, MaxSpaceComesFromMemAvailable) {
    EXPECT_EQ(ParseMemAvailable("MemTotal: 100 kB\nMemFree: 5 kB\nMemAvailable:    2048 kB\n"),
              2048 * 1024);
    EXPECT_EQ(ParseMemAvailable("MemTotal: 100 kB\n"), -1);
    EXPECT_EQ(ParseMemAvailable("MemAvailable: lots\n"), -1);
    EXPECT_EQ(ParseMemAvailable("MemAvailable: 99999999999999999999 kB\n"), -1);
    const int32_t available = AvailableMemoryForFilter();
    EXPECT_GT(available, 0);
}

TEST(FilterHostMemory, AdvanceStateReachesTheActiveHost) {
    auto first = MakeHost(Pattern(4, 4, ColourModel::RGB, false));
    auto second = MakeHost(Pattern(8, 8, ColourModel::RGB, false));
    first->Activate();
    FilterRecord& r = first->Record();
    Ask(r, Rect{0, 0, 4, 4}, 0, 2, kNone, 0, 2);
    ASSERT_EQ(r.advanceState(), noErr);
    EXPECT_NE(r.inData, nullptr);
    EXPECT_EQ(second->Record().inData, nullptr);
}
