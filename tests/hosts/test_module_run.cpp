// Loading filter modules, reading their property lists, and running them.
#include "TestSupport.h"
#include "hosts/FilterRun.h"
#include "hosts/PiPLReader.h"
#include "sdk/PIGlobal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <random>
#include <sstream>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

class ModuleRun : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* name :
             {"TESTFILTER_LOG", "TESTFILTER_FAIL", "TESTFILTER_STYLE", "TESTFILTER_TILE"})
            unsetenv(name);
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = ScratchDir(std::string("module_") + info->name());
        log_ = dir_ + "/log.txt";
        setenv("TESTFILTER_LOG", log_.c_str(), 1);
        std::string error;
        module_ = FilterModule::Load(TestFilterPath(), error);
        ASSERT_TRUE(module_) << error;
    }
    void TearDown() override {
        PIGlobalFree(parameters_);
        for (const char* name :
             {"TESTFILTER_LOG", "TESTFILTER_FAIL", "TESTFILTER_STYLE", "TESTFILTER_TILE"})
            unsetenv(name);
    }
    // The selectors the filter saw, in order, as "1 2 3 4 4 5".
    std::string Selectors() {
        std::istringstream lines(ReadText(log_));
        std::string line, out;
        while (std::getline(lines, line))
            out += (out.empty() ? "" : " ") + line.substr(0, line.find(' '));
        return out;
    }
    std::string dir_, log_;
    std::unique_ptr<FilterModule> module_;
    Handle parameters_ = nullptr;
};

struct TestRecord {
    uint32 magic;
    int32 parametersCalls;
    int32 starts;
};

} // namespace

TEST(HostPiPL, MalformedListsAreRefusedAndNothingIsReadPastTheEnd) {
    std::string error;
    auto module = FilterModule::Load(TestFilterPath(), error);
    ASSERT_TRUE(module);
    void* handle = dlopen(TestFilterPath().c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(handle, nullptr);
    const auto* bytes = static_cast<const uint8_t*>(dlsym(handle, "PiPL_16000"));
    const uint32_t size = *static_cast<const uint32_t*>(dlsym(handle, "PiPL_16000_size"));
    dlclose(handle);
    const std::vector<uint8_t> good(bytes, bytes + size);

    PiPLInfo info;
    // Every truncation fails cleanly (copied to an exact-size block so that
    // the sanitizer sees any overread).
    for (uint32_t cut = 0; cut < size; ++cut) {
        std::vector<uint8_t> part(good.begin(), good.begin() + cut);
        EXPECT_FALSE(ReadPiPL(part.empty() ? nullptr : part.data(), part.size(), info, error))
            << cut;
    }
    EXPECT_TRUE(ReadPiPL(good.data(), good.size(), info, error)) << error;

    std::vector<uint8_t> bad = good;
    bad[0] = 1; // version
    EXPECT_FALSE(ReadPiPL(bad.data(), bad.size(), info, error));
    bad = good;
    bad[4] = 0xFF, bad[5] = 0xFF, bad[6] = 0xFF, bad[7] = 0x7F; // count
    EXPECT_FALSE(ReadPiPL(bad.data(), bad.size(), info, error));
    bad = good;
    bad[8 + 16 + 4 + 12] = 0xF0, bad[8 + 16 + 4 + 15] = 0xFF; // name length runs off
    EXPECT_FALSE(ReadPiPL(bad.data(), bad.size(), info, error));
    bad = good;
    bad[8 + 16 + 4 + 16] = 200; // name's length byte longer than the property
    EXPECT_FALSE(ReadPiPL(bad.data(), bad.size(), info, error));
    EXPECT_NE(error.find("name"), std::string::npos) << error;

    // Random damage never reads out of bounds and never crashes.
    std::mt19937 random(1234);
    for (int round = 0; round < 2000; ++round) {
        bad = good;
        for (int k = 0; k < 3; ++k)
            bad[random() % bad.size()] = uint8_t(random());
        ReadPiPL(bad.data(), bad.size(), info, error);
    }
}

TEST(HostModuleLoad, EveryKindOfBadModuleHasItsOwnMessage) {
    const std::string dir = ScratchDir("badmodules");
    WriteBytes(dir + "/text.8bf", "not a module at all\n");
    WriteBytes(dir + "/fakeelf.8bf", std::string("\x7f"
                                                 "ELF",
                                                 4) +
                                         "garbage");
    struct Case {
        std::string path, message;
    } cases[] = {
        {dir + "/missing.8bf", "No such file"},
        {dir, "not a regular file"},
        {dir + "/text.8bf", "not a shared object"},
        {dir + "/fakeelf.8bf", "cannot load"},
        {TestFilterPath("testfilter_nopipl"), "no property list"},
        {TestFilterPath("testfilter_nosize"), "PiPL_16000_size"},
        {TestFilterPath("testfilter_wrongkind"), "'8BXM', not '8BFM'"},
        {TestFilterPath("testfilter_noentry"), "no ENTRYPOINT"},
        {TestFilterPath("testfilter_otherentry"), "entry symbol OtherEntry"},
        {TestFilterPath("testfilter_undefined"), "missing symbol"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        std::string error;
        EXPECT_FALSE(FilterModule::Load(c.path, error));
        EXPECT_NE(error.find(c.message), std::string::npos) << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    }
}

TEST_F(ModuleRun, EveryFilterCaseInvertsThePlanesTheFilterAskedFor) {
    struct Case {
        ColourModel model;
        bool alpha, selected, protect, report;
        int invertedPlanes; // planes 0..n-1 inverted, the rest unchanged
    } cases[] = {
        {ColourModel::RGB, false, false, false, true, 3},
        {ColourModel::RGB, false, true, false, true, 3},
        {ColourModel::CMYK, false, false, false, true, 4},
        {ColourModel::CMYK, false, true, false, true, 4},
        {ColourModel::RGB, true, false, false, true, 4},
        {ColourModel::RGB, true, true, false, true, 4},
        {ColourModel::RGB, true, false, true, true, 3},
        {ColourModel::RGB, true, true, true, true, 3},
        {ColourModel::RGB, false, false, false, false, 3},
        {ColourModel::CMYK, false, false, false, false, 3},
        {ColourModel::RGB, true, true, false, false, 3},
    };
    const VRect selection{3, 4, 17, 15};
    for (const char* style : {"tiles", "start"}) {
        setenv("TESTFILTER_STYLE", style, 1);
        for (const Case& c : cases) {
            std::string error;
            FilterSetup setup;
            if (c.selected) setup.selection = selection;
            setup.protectTransparency = c.protect;
            setup.reportFilterCases = c.report;
            auto host = FilterHost::Create(Pattern(19, 21, c.model, c.alpha), setup, error);
            ASSERT_TRUE(host) << error;
            SCOPED_TRACE(::testing::Message() << style << " case " << host->Record().filterCase
                                              << " model " << int(c.model));
            const RunOutcome outcome = RunFilter(*module_, *host, parameters_, false);
            ASSERT_EQ(outcome.result, 0) << outcome.hostMessage;
            const HostImage& out = host->Destination();
            for (int r = 0; r < out.height; ++r)
                for (int col = 0; col < out.width; ++col)
                    for (int p = 0; p < out.Planes(); ++p) {
                        const bool inside =
                            !c.selected || (r >= selection.top && r < selection.bottom &&
                                            col >= selection.left && col < selection.right);
                        const uint8_t v = PatternValue(r, col, p);
                        ASSERT_EQ(out.Pixel(r, col)[p],
                                  inside && p < c.invertedPlanes ? 255 - v : v)
                            << r << "," << col << " plane " << p;
                    }
            EXPECT_EQ(host->Source().pixels, Pattern(19, 21, c.model, c.alpha).pixels);
        }
    }
}

TEST_F(ModuleRun, SelectorOrderForARunARepeatAndFailures) {
    auto run = [&](bool repeat) {
        std::string error;
        auto host = FilterHost::Create(Pattern(10, 20, ColourModel::RGB, false), {}, error);
        EXPECT_TRUE(host);
        std::remove(log_.c_str());
        return RunFilter(*module_, *host, parameters_, repeat);
    };
    setenv("TESTFILTER_TILE", "8", 1);
    EXPECT_EQ(run(false).result, 0);
    EXPECT_EQ(Selectors(), "1 2 3 4 4 4 5"); // three tiles of 8, 8 and 4 rows
    ASSERT_NE(parameters_, nullptr);
    EXPECT_EQ(static_cast<TestRecord*>(parameters_)->parametersCalls, 1);
    EXPECT_EQ(run(true).result, 0);
    EXPECT_EQ(Selectors(), "2 3 4 4 4 5");
    EXPECT_EQ(static_cast<TestRecord*>(parameters_)->parametersCalls, 1);
    EXPECT_EQ(static_cast<TestRecord*>(parameters_)->starts, 2);
    EXPECT_EQ(run(false).result, 0);
    EXPECT_EQ(static_cast<TestRecord*>(parameters_)->parametersCalls, 2);

    // A failed start: no continue and no finish, and the image is unchanged.
    setenv("TESTFILTER_FAIL", "3:-30101", 1);
    RunOutcome outcome = run(false);
    EXPECT_EQ(outcome.result, filterBadMode);
    EXPECT_EQ(outcome.failedSelector, filterSelectorStart);
    EXPECT_EQ(Selectors(), "1 2 3");
    // A failed continue still gets its finish.
    setenv("TESTFILTER_FAIL", "4:-1", 1);
    outcome = run(false);
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(Selectors(), "1 2 3 4 5");
    setenv("TESTFILTER_FAIL", "1:-108", 1);
    EXPECT_EQ(run(false).result, memFullErr);
    EXPECT_EQ(Selectors(), "1");
    // A positive result (a cancel) stops the run as well.
    setenv("TESTFILTER_FAIL", "2:1", 1);
    EXPECT_EQ(run(false).result, 1);
    EXPECT_EQ(Selectors(), "1 2");
}

TEST_F(ModuleRun, FailedRunsLeaveTheImageAsItWas) {
    // Failures after pixels were written back, in both styles of filter, and
    // a filter that never finishes.
    for (const char* fail : {"4:-30904", "5:-1", "5:1", "endless"}) {
        const bool endless = fail[0] == 'e';
        if (endless)
            unsetenv("TESTFILTER_FAIL");
        else
            setenv("TESTFILTER_FAIL", fail, 1);
        setenv("TESTFILTER_STYLE", endless ? fail : fail[0] == '4' ? "start" : "tiles", 1);
        std::string error;
        auto host = FilterHost::Create(Pattern(10, 10, ColourModel::RGB, false), {}, error);
        const RunOutcome outcome = RunFilter(*module_, *host, parameters_, false);
        EXPECT_NE(outcome.result, 0);
        EXPECT_EQ(host->Destination().pixels, host->Source().pixels);
        if (outcome.result == errReportString) {
            EXPECT_EQ(host->ErrorStringText(), "test filter says no");
        }
        if (endless) {
            EXPECT_NE(outcome.hostMessage.find("without finishing"), std::string::npos);
        }
    }
}

TEST_F(ModuleRun, MemoryLimitsReachTheFilter) {
    std::string error;
    FilterSetup setup;
    setup.maxSpace = 20 * 20 * 4; // the test filter wants less than maxSpace
    auto host = FilterHost::Create(Pattern(20, 20, ColourModel::RGB, false), setup, error);
    EXPECT_EQ(RunFilter(*module_, *host, parameters_, false).result, memFullErr);
    EXPECT_EQ(Selectors(), "1 2");
    // Enough for the filter's estimate but not for the host's buffers.
    setenv("TESTFILTER_STYLE", "start", 1);
    setup.maxSpace = 20 * 20 * 5;
    host = FilterHost::Create(Pattern(20, 20, ColourModel::RGB, false), setup, error);
    const RunOutcome outcome = RunFilter(*module_, *host, parameters_, false);
    EXPECT_EQ(outcome.result, memFullErr);
    EXPECT_EQ(outcome.failedSelector, filterSelectorStart);
}
