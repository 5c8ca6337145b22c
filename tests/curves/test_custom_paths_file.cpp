// The custom paths file: blocks with sizes and checksums, the record head,
// and how a damaged file keeps its good records up front.
#include "curves/VCustomPathData.h"
#include "curves/VCustomPathsFile.h"
#include "foundation/KList.h"
#include "tests/TempConfigFolder.h"
#include "tests/curves/SameCustomPath.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {
// A record with random points and knots, so that every byte position of the
// blocks carries something.
std::unique_ptr<VCustomPathData> RandomRecord(std::mt19937& rng, const char* name) {
    std::uniform_real_distribution<float> f(-50.0f, 50.0f);
    const int points = 2 + int(rng() % 30);
    std::vector<KVector3D> p;
    for (int i = 0; i < points; ++i)
        p.push_back({f(rng), f(rng), f(rng), 0.5f + float(i % 3)});
    std::vector<double> k(std::size_t(points + 1 + rng() % 4));
    for (std::size_t i = 0; i < k.size(); ++i)
        k[i] = double(i) / 3.0 + 1e-13 * double(rng() % 1000);
    auto r = std::make_unique<VCustomPathData>();
    EXPECT_TRUE(r->SetCurve(points, p.data(), int(k.size()), k.data(), std::uint8_t(rng() % 2),
                            {f(rng), f(rng), f(rng), 0}, {f(rng), f(rng), f(rng), 0}));
    r->SetName(name);
    r->isBezier = std::uint8_t(rng() % 2);
    return r;
}

const VCustomPathData& At(const KList& list, std::uint32_t i) {
    return *static_cast<const VCustomPathData*>(list.EntryAt(i));
}

// Offset of record r's block (0 head, 1 points, 2 knots) in a formatted file.
std::size_t BlockOffset(const std::vector<std::uint8_t>& bytes, int record, int block) {
    std::size_t at = 0;
    for (int skip = 0; skip < 2 + record * 3 + block; ++skip) {
        std::uint32_t n;
        std::memcpy(&n, &bytes[at], 4);
        at += 8 + n;
    }
    return at;
}
} // namespace

TEST(CustomPathsFile, RecordsComeBackWithAllTheirPointsAndKnots) {
    // Through the file in the configuration folder; a shorter list later
    // leaves the file's length as it was.
    std::mt19937 rng(7);
    TempConfigFolder config;
    KList three, one, back;
    for (const char* name : {"Custom Path  1", "Wave", "Spiral"})
        three.Append(RandomRecord(rng, name).release());
    one.Append(RandomRecord(rng, "Only").release());
    ASSERT_TRUE(WriteCustomPathsFile(kCustomPathsFileName, three));
    const std::size_t size = config.Read(kCustomPathsFileName).size();
    ASSERT_EQ(ReadCustomPathsFile(kCustomPathsFileName, back), 3);
    for (std::uint32_t i = 1; i <= 3; ++i)
        EXPECT_TRUE(SameCustomPath(&At(back, i), &At(three, i))) << i;
    ASSERT_TRUE(WriteCustomPathsFile(kCustomPathsFileName, one));
    EXPECT_EQ(config.Read(kCustomPathsFileName).size(), size);
    back.DeleteAll();
    ASSERT_EQ(ReadCustomPathsFile(kCustomPathsFileName, back), 1);
    EXPECT_TRUE(SameCustomPath(&At(back, 1), &At(one, 1)));
}

TEST(CustomPathsFile, ABadBlockKeepsTheRecordsBeforeIt) {
    std::mt19937 rng(11);
    KList written;
    for (int i = 0; i < 3; ++i)
        written.Append(RandomRecord(rng, "P").release());
    const auto good = FormatCustomPaths(written);

    // A flipped byte in each block of the third record, and a wrong size.
    for (int block = 0; block < 3; ++block) {
        auto bytes = good;
        bytes[BlockOffset(bytes, 2, block) + 9] ^= 0x10;
        KList read;
        EXPECT_EQ(ParseCustomPaths(bytes.data(), bytes.size(), read), 2) << block;
        EXPECT_TRUE(SameCustomPath(&At(read, 2), &At(written, 2)));
    }
    auto resized = good;
    resized[BlockOffset(resized, 1, 0)] += 1;
    KList one;
    EXPECT_EQ(ParseCustomPaths(resized.data(), resized.size(), one), 1);

    // Another magic in a sound block reads all the same.
    auto magic = good;
    magic[4] = 'X';
    magic[8] = std::uint8_t(magic[8] + ('X' - 'P'));
    KList all;
    EXPECT_EQ(ParseCustomPaths(magic.data(), magic.size(), all), 3);

    // Cut anywhere: the records whose blocks are whole, and never more.
    for (std::size_t n = 0; n < good.size(); ++n) {
        KList read;
        const int count = ParseCustomPaths(good.data(), n, read);
        const int whole = n >= BlockOffset(good, 2, 3)   ? 3
                          : n >= BlockOffset(good, 1, 3) ? 2
                          : n >= BlockOffset(good, 0, 3) ? 1
                                                         : 0;
        ASSERT_EQ(count, whole) << "cut at " << n;
    }
}
