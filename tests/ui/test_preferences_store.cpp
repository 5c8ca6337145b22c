// The paged store of the preferences file: pages, entries, chains, foreign
// sections, damaged pages and the file's replacement.
#include "tests/TempConfigFolder.h"
#include "ui/persistence/VPreferences.h"
#include "ui/persistence/VPreferencesFile.h"

#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace {
using Bytes = std::vector<unsigned char>;

struct Entry {
    std::string key;
    Bytes value;
};

// A page as another program following the format would write it.
Bytes Page(const char* section, const std::vector<Entry>& entries, int next = -1) {
    Bytes page(512, 0);
    std::strncpy(reinterpret_cast<char*>(&page[4]), section, 19);
    std::size_t at = 24;
    for (const Entry& e : entries) {
        const std::size_t length = e.key.size() + 1 + e.value.size();
        page[at] = std::uint8_t(length);
        page[at + 1] = std::uint8_t(length >> 8);
        std::memcpy(&page[at + 2], e.key.c_str(), e.key.size() + 1);
        std::memcpy(&page[at + 3 + e.key.size()], e.value.data(), e.value.size());
        at += length + 2;
    }
    page[1] = std::uint8_t(at - 24);
    page[2] = std::uint8_t((at - 24) >> 8);
    if (next >= 0) {
        page[0] = std::uint8_t(next);
        page[3] = 1;
    }
    return page;
}

Bytes Join(const std::vector<Bytes>& pages) {
    Bytes all;
    for (const Bytes& p : pages)
        all.insert(all.end(), p.begin(), p.end());
    return all;
}

Bytes Filled(std::size_t n, unsigned char v) {
    return Bytes(n, v);
}

std::string ReadString(const VPreferences& store, const char* key) {
    char buffer[600] = {};
    std::int32_t length = 0;
    if (!store.Read(key, buffer, sizeof buffer, length)) return "<missing>";
    return std::string(buffer, std::size_t(length));
}

struct Store : VPreferences {
    Store() : VPreferences("FlyWORD Plumet", "Lumerra 3D", "Settings") {}
    using VPreferences::Find;
};
} // namespace

TEST(PreferencesStore, ReadsAndWritesAFileThatAnotherProgramWroteAndKeepsItsPages) {
    TempConfigFolder config;
    // Settings in pages 1 and 3 of the file (section pages 0 and 1), with a
    // foreign page before and between them.
    const Bytes foreign1 = Page("Other", {{"a", Filled(3, 'x')}});
    const Bytes foreign2 = Page("Third", {{"b", Filled(9, 'y')}});
    config.Write(
        kPreferencesFileName,
        Join({foreign1, Page("Settings", {{"long", Bytes{'1', '2', '3', '4', '5'}}}, 1), foreign2,
              Page("Settings", {{"a", Bytes{'h', 'i'}}, {"n", Bytes{7, 1, 0, 0}}})}));
    Store store;
    EXPECT_EQ(ReadString(store, "a"), "hi");
    EXPECT_EQ(ReadString(store, "b"), "<missing>") << "a foreign section's key is not ours";

    // A longer value is cut at the caller's size; a shorter one leaves the
    // rest of the caller's buffer alone.
    char small[3];
    std::int32_t length = 0;
    ASSERT_TRUE(store.Read("long", small, 3, length));
    EXPECT_EQ(length, 3);
    EXPECT_EQ(std::string(small, 3), "123");
    char wide[8] = "ABCDEFG";
    ASSERT_TRUE(store.Read("a", wide, 8, length));
    EXPECT_STREQ(wide, "hiCDEFG");

    std::int32_t value = -5;
    EXPECT_TRUE(store.ReadLong("n", value));
    EXPECT_EQ(value, 263);
    EXPECT_FALSE(store.ReadLong("missing", value));
    EXPECT_EQ(value, 263) << "a missing key keeps the caller's value";

    // Four entries fill the section's two pages; two more take a page after
    // the foreign ones, which stay where they were.
    for (int i = 0; i < 6; ++i)
        ASSERT_TRUE(store.Write(("key" + std::to_string(i)).c_str(),
                                Filled(200, std::uint8_t(i)).data(), 200));
    ASSERT_TRUE(store.Save());
    const Bytes file = config.Read(kPreferencesFileName);
    ASSERT_EQ(file.size(), 512u * 5);
    EXPECT_TRUE(std::equal(foreign1.begin(), foreign1.end(), file.begin()));
    EXPECT_TRUE(std::equal(foreign2.begin(), foreign2.end(), file.begin() + 1024));
    Store again;
    EXPECT_EQ(ReadString(again, "a"), "hi");
    EXPECT_EQ(ReadString(again, "key5"), std::string(200, '\5'));
}

TEST(PreferencesStore, RewrittenKeyLandsInTheFirstPageWithRoom) {
    TempConfigFolder config;
    Store store;
    ASSERT_TRUE(store.Write("A", Filled(200, 1).data(), 200));
    ASSERT_TRUE(store.Write("B", Filled(200, 2).data(), 200));
    ASSERT_TRUE(store.Write("C", Filled(200, 3).data(), 200)); // no room left in page 0
    EXPECT_EQ(store.Find("C") / 512, 1);
    ASSERT_TRUE(store.Write("A", Filled(200, 4).data(), 200));
    EXPECT_EQ(store.Find("B"), 24) << "B moved down over the old A";
    EXPECT_EQ(store.Find("A"), 24 + 204) << "the new A stands behind B in page 0";
    EXPECT_EQ(store.GetUsed(), 1024);
    std::int32_t length = 0;
    unsigned char byte = 0;
    store.Read("A", &byte, 1, length);
    EXPECT_EQ(byte, 4);
}

TEST(PreferencesStore, AnEntryMayFillAPageToItsLastByte) {
    TempConfigFolder config;
    Store store;
    // Key "k" and 484 value bytes take 1 + 484 + 3 = 488 bytes: page 0 exactly.
    ASSERT_TRUE(store.Write("k", Filled(484, 9).data(), 484));
    EXPECT_EQ(store.GetUsed(), 512);
    ASSERT_TRUE(store.Write("j", Filled(1, 9).data(), 1));
    EXPECT_EQ(store.GetUsed(), 1024) << "the next entry needs a new page";
    EXPECT_FALSE(store.Write("big", Filled(486, 0).data(), 486)) << "larger than any page";
    EXPECT_EQ(ReadString(store, "k").size(), 484u);
}

TEST(PreferencesStore, DamagedPagesAreReadWithinTheirBounds) {
    TempConfigFolder config;
    // Page 0 claims more bytes than a page has; page 1 holds an entry that
    // runs past its end and chains back to page 0; page 2 chains past the
    // end of the section.
    Bytes p0 = Page("Settings", {{"first", Bytes{1, 2}}}, 1);
    p0[1] = p0[2] = 0xFF;
    Bytes p1 = Page("Settings", {{"second", Bytes{3}}}, 0);
    p1[24] = 0xF0;
    p1[25] = 0x01;
    Bytes p2 = Page("Settings", {}, 200);
    // The file ends in a page of the section cut short in its name.
    const Bytes cut = Page("Settings", {});
    config.Write(kPreferencesFileName, Join({p0, p1, p2, Bytes(cut.begin(), cut.begin() + 19)}));
    Store store;
    EXPECT_EQ(ReadString(store, "first"), std::string("\1\2", 2));
    EXPECT_EQ(ReadString(store, "second"), "<missing>");
    EXPECT_EQ(store.GetUsed(), 1536) << "the cut-off page at the end is not the section's";
    // Writing still finds room: not in the lying page 0, but over the
    // damaged entry of page 1.
    ASSERT_TRUE(store.Write("third", Filled(40, 5).data(), 40));
    EXPECT_EQ(ReadString(store, "third"), std::string(40, '\5'));
    // A new page goes after the cut-off one, on the page grid.
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(store.Write(("more" + std::to_string(i)).c_str(), Filled(200, 6).data(), 200));
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(config.Read(kPreferencesFileName).size(), 2048u)
        << "the new page replaced the cut one";
    Store again;
    EXPECT_EQ(ReadString(again, "third"), std::string(40, '\5'));
    EXPECT_EQ(ReadString(again, "more2"), std::string(200, '\6'));
}

TEST(PreferencesStore, AWriteThatFailsLeavesTheOldFile) {
    TempConfigFolder config;
    {
        Store store;
        store.Write("kept", Filled(300, 7).data(), 300);
    }
    const Bytes before = config.Read(kPreferencesFileName);
    // A full disk, as the writer sees it: no file may grow past 600 bytes.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    rlimit small = old;
    small.rlim_cur = 600;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    bool saved = true;
    {
        Store store;
        for (int i = 0; i < 4; ++i)
            store.Write(("new" + std::to_string(i)).c_str(), Filled(300, 1).data(), 300);
        saved = store.Save();
    }
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_FALSE(saved);
    EXPECT_EQ(config.Read(kPreferencesFileName), before);
    EXPECT_EQ(config.Names(), std::vector<std::string>{kPreferencesFileName})
        << "no half-written file is left beside it";
}

TEST(PreferencesStore, FirstStartCreatesTheFileAndNoFolderMeansNoFileAndNoFailure) {
    TempConfigFolder config;
    { Store store; }
    const Bytes file = config.Read(kPreferencesFileName);
    ASSERT_EQ(file.size(), 512u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&file[4])), "Settings");
    EXPECT_EQ(file[0] | file[1] | file[2] | file[3], 0);

    config.Write("plain", {1});
    setenv("XDG_CONFIG_HOME", config.File("plain").c_str(), 1); // a file, not a folder
    Store store;
    EXPECT_TRUE(store.Write("k", "v", 1));
    EXPECT_FALSE(store.Save());
    setenv("XDG_CONFIG_HOME", "relative/folder", 1);
    const char* home = std::getenv("HOME");
    EXPECT_EQ(VPreferencesFile::Folder(), home ? std::string(home) + "/.config" : "");
}
