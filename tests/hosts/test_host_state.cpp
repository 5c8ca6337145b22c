// The host's state file that keeps the filter's record between runs.
#include "TestSupport.h"
#include "hosts/HostState.h"
#include "sdk/PIGlobal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

Handle Block(const std::string& bytes) {
    Handle block = PIGlobalAlloc(PIGlobalFixed, bytes.size());
    if (!bytes.empty()) std::memcpy(block, bytes.data(), bytes.size());
    return block;
}

} // namespace

TEST(HostStateFile, RecordsRoundTripThroughNewDirectories) {
    const std::string path = ScratchDir("state_roundtrip") + "/a/b/host-state";
    for (const std::string& bytes :
         {std::string(), std::string("\0\1\2record", 9), std::string(5000, '\xA5')}) {
        Handle saved = Block(bytes);
        std::string error;
        ASSERT_TRUE(SaveKeptRecord(path, "Filter\n1.0", saved, error)) << error;
        PIGlobalFree(saved);
        Handle loaded = nullptr;
        std::string warning;
        ASSERT_EQ(LoadKeptRecord(path, "Filter\n1.0", loaded, warning), StateLoad::Loaded)
            << warning;
        ASSERT_NE(loaded, nullptr);
        ASSERT_EQ(PIGlobalSize(loaded), bytes.size());
        EXPECT_EQ(std::memcmp(loaded, bytes.data(), bytes.size()), 0);
        PIGlobalFree(loaded);
    }
    // Another filter never gets the record.
    Handle loaded = nullptr;
    std::string warning;
    EXPECT_EQ(LoadKeptRecord(path, "Filter\n1.1", loaded, warning), StateLoad::OtherOwner);
    EXPECT_EQ(loaded, nullptr);
    EXPECT_EQ(warning, "");
    // Saving no record removes the file.
    std::string error;
    ASSERT_TRUE(SaveKeptRecord(path, "Filter\n1.0", nullptr, error));
    EXPECT_EQ(LoadKeptRecord(path, "Filter\n1.0", loaded, warning), StateLoad::Missing);
    EXPECT_EQ(loaded, nullptr);
}

TEST(HostStateFile, DamagedFilesAreIgnoredWithAWarning) {
    const std::string dir = ScratchDir("state_damaged");
    const std::string good = dir + "/good";
    Handle block = Block("settings of the filter");
    std::string error;
    const std::string owner = "Owner";
    ASSERT_TRUE(SaveKeptRecord(good, owner, block, error));
    PIGlobalFree(block);
    const std::string bytes = ReadText(good);

    std::string wrongMagic = bytes;
    wrongMagic[0] = 'X';
    std::string longOwner = bytes;
    longOwner[11] = 0x7F;
    std::string longLength = bytes;
    longLength[12 + owner.size() + 6] = 0x7F;
    std::string flipped = bytes;
    flipped[12 + owner.size() + 8 + 3] ^= 0x01;
    std::string flippedOwner = bytes;
    flippedOwner[12] ^= 0x20;
    struct Case {
        const char* name;
        std::string content;
        const char* why;
    } cases[] = {
        {"empty", "", "too short"},
        {"magic", wrongMagic, "not a host state file"},
        {"owner", longOwner, "owner length out of range"},
        {"length", longLength, "record length out of range"},
        {"truncated", bytes.substr(0, bytes.size() - 3), "shorter"},
        {"extended", bytes + "x", "longer"},
        {"flipped", flipped, "checksum"},
        {"flippedowner", flippedOwner, "checksum"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = dir + "/" + c.name;
        WriteBytes(path, c.content);
        Handle loaded = reinterpret_cast<Handle>(1);
        std::string warning;
        EXPECT_EQ(LoadKeptRecord(path, owner, loaded, warning), StateLoad::Damaged);
        EXPECT_EQ(loaded, nullptr);
        EXPECT_NE(warning.find(c.why), std::string::npos) << warning;
        EXPECT_NE(warning.find(path), std::string::npos) << warning;
    }
}

TEST(HostStateFile, DefaultPathFollowsXdgStateHomeThenHome) {
    const char* oldState = std::getenv("XDG_STATE_HOME");
    const char* oldHome = std::getenv("HOME");
    const std::string savedState = oldState ? oldState : "", savedHome = oldHome ? oldHome : "";
    setenv("XDG_STATE_HOME", "/tmp/somewhere", 1);
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(DefaultStatePath(), "/tmp/somewhere/plumet/host-state");
    setenv("XDG_STATE_HOME", "relative/ignored", 1);
    EXPECT_EQ(DefaultStatePath(), "/home/someone/.local/state/plumet/host-state");
    unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(DefaultStatePath(), "/home/someone/.local/state/plumet/host-state");
    unsetenv("HOME");
    EXPECT_EQ(DefaultStatePath(), "");
    std::string error;
    EXPECT_FALSE(SaveKeptRecord("", "x", nullptr, error));
    if (oldState) setenv("XDG_STATE_HOME", savedState.c_str(), 1);
    if (oldHome) setenv("HOME", savedHome.c_str(), 1);
}
