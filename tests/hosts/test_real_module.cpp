// The command-line host with the real filter module, run without a window in
// every filter case.
#include "TestSupport.h"
#include "hosts/ImageFiles.h"
#include "hosts/ResultCodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

const std::string kModule = std::string(PLUMET_BINARY_DIR) + "/host/plumet.8bf";

class RealModule : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = ScratchDir(std::string("real_") + info->name());
        // The filter keeps its preferences in XDG_CONFIG_HOME: a fresh one per test.
        env_ = {"XDG_STATE_HOME=" + dir_ + "/state", "XDG_CONFIG_HOME=" + dir_ + "/config",
                "XDG_RUNTIME_DIR=" + dir_};
        std::string error;
        ASSERT_TRUE(WriteImageFile(In("rgb.png"), Pattern(64, 48, ColourModel::RGB, false), error));
        ASSERT_TRUE(WriteImageFile(In("rgba.png"), Pattern(64, 48, ColourModel::RGB, true), error));
        ASSERT_TRUE(
            WriteImageFile(In("cmyk.tif"), Pattern(64, 48, ColourModel::CMYK, false), error));
    }
    std::string In(const std::string& name) const { return dir_ + "/" + name; }
    Command Run(std::vector<std::string> args) {
        args.insert(args.begin(), {"--plugin", kModule});
        return RunPlumet(args, env_);
    }
    std::string dir_;
    std::vector<std::string> env_;
};

} // namespace

TEST_F(RealModule, InfoNamesTheFilter) {
    const Command c = Run({"--info"});
    ASSERT_EQ(c.status, 0) << c.err;
    EXPECT_NE(c.out.find("Name: FlyWORD Plumet"), std::string::npos) << c.out;
    EXPECT_NE(c.out.find("Category: Lumerra 3D"), std::string::npos);
    EXPECT_NE(c.out.find("Image modes: RGB, CMYK"), std::string::npos);
    // Without --plugin the host finds the module the build put beside it.
    const Command found = RunPlumet({"--info"}, env_);
    ASSERT_EQ(found.status, 0) << found.err;
    EXPECT_EQ(found.out, c.out);
}

TEST_F(RealModule, RunsWithoutAWindowInEveryFilterCase) {
    struct Case {
        std::vector<std::string> args;
        const char* output;
        ColourModel model;
        bool alpha;
    } cases[] = {
        {{In("rgb.png")}, "case1.png", ColourModel::RGB, false},
        {{"--select", "8,6,40,30", In("cmyk.tif")}, "case2cmyk.tif", ColourModel::CMYK, false},
        {{"--select", "8,6,40,30", In("rgba.png")}, "case5.png", ColourModel::RGB, true},
        {{"--protect-transparency", "--select", "8,6,40,30", In("rgba.png")},
         "case7.tif",
         ColourModel::RGB,
         true},
        {{"--no-filter-cases", In("rgb.png")}, "case0.png", ColourModel::RGB, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.output);
        std::vector<std::string> args = c.args;
        args.push_back("--no-window");
        args.push_back(In(c.output));
        const Command result = Run(args);
        ASSERT_EQ(result.status, kExitSuccess) << result.err;
        HostImage out;
        std::string error;
        ASSERT_TRUE(ReadImageFile(In(c.output), out, error)) << error;
        EXPECT_EQ(out.width, 64);
        EXPECT_EQ(out.height, 48);
        EXPECT_EQ(out.model, c.model);
        EXPECT_EQ(out.hasAlpha, c.alpha);
        // Outside the selection nothing changes.
        if (std::find(c.args.begin(), c.args.end(), "--select") != c.args.end()) {
            const HostImage in = Pattern(64, 48, c.model, c.alpha);
            EXPECT_TRUE(
                std::equal(out.Pixel(0, 0), out.Pixel(0, 0) + out.RowBytes() * 6, in.Pixel(0, 0)));
        }
    }
    // Then a repeat with the kept record.
    const Command repeat = Run({"--repeat", "--no-window", In("rgb.png"), In("repeat.png")});
    EXPECT_EQ(repeat.status, kExitSuccess) << repeat.err;
    EXPECT_TRUE(FileExists(In("repeat.png")));
}

TEST_F(RealModule, ASelectionTooSmallToWorkOnIsRefusedWithTheReason) {
    const Command c = Run({"--no-window", "--select", "0,0,4,40", In("rgb.png"), In("out.png")});
    EXPECT_EQ(c.status, kExitCancelled);
    EXPECT_NE(c.err.find("4 by 40 pixels, too small"), std::string::npos) << c.err;
    EXPECT_FALSE(FileExists(In("out.png")));
}

TEST_F(RealModule, TooLittleMemorySaysSoWithoutAdviceForAnotherProgram) {
    const Command c = Run({"--no-window", "--max-space", "1000", In("rgb.png"), In("out.png")});
    EXPECT_EQ(c.status, kExitOutOfMemory);
    EXPECT_NE(c.err.find("not enough memory"), std::string::npos) << c.err;
    EXPECT_EQ(c.err.find("relaunch"), std::string::npos) << c.err;
    EXPECT_FALSE(FileExists(In("out.png")));
}

TEST_F(RealModule, WithoutADisplayTheWindowedRunEndsWithOneLine) {
    const Command c = Run({In("rgb.png"), In("out.png")});
    if (c.status == kExitSuccess) {
        EXPECT_TRUE(FileExists(In("out.png")));
        return;
    }
    EXPECT_EQ(std::count(c.err.begin(), c.err.end(), '\n'), 1) << c.err;
    EXPECT_FALSE(FileExists(In("out.png")));
}

TEST_F(RealModule, TheDefaultTextFitsAThreeByTwoImage) {
    std::string error;
    const HostImage in = Pattern(300, 200, ColourModel::RGB, false);
    ASSERT_TRUE(WriteImageFile(In("wide.png"), in, error));
    const Command c = Run({"--no-window", In("wide.png"), In("wide-out.png")});
    ASSERT_EQ(c.status, kExitSuccess) << c.err;
    EXPECT_EQ(c.err.find("rendering"), std::string::npos)
        << "no progress bar when stderr is not a terminal";
    HostImage out;
    ASSERT_TRUE(ReadImageFile(In("wide-out.png"), out, error)) << error;
    int changedInside = 0;
    for (int y = 0; y < in.height; ++y) {
        for (int x : {0, in.width - 1})
            EXPECT_TRUE(std::equal(in.Pixel(y, x), in.Pixel(y, x) + 3, out.Pixel(y, x)))
                << "the text reaches column " << x << " in row " << y;
        changedInside += !std::equal(in.Pixel(y, 150), in.Pixel(y, 150) + 3, out.Pixel(y, 150));
    }
    EXPECT_GT(changedInside, 0) << "the text is drawn";
}

// On a terminal the render shows a bar, and Ctrl+C stops it: the run ends
// as a cancel, the output is not written and the input is as it was.
TEST_F(RealModule, OnATerminalCtrlCStopsTheRenderWithNothingWritten) {
    std::string error;
    ASSERT_TRUE(WriteImageFile(In("big.png"), Pattern(1800, 1200, ColourModel::RGB, false), error));
    const std::string before = ReadText(In("big.png"));
    int master = -1;
    const pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
    // a root without /dev/pts (a bare chroot) has no terminal to offer
    if (pid < 0) GTEST_SKIP() << "no pseudo-terminal here: " << std::strerror(errno);
    if (pid == 0) {
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            unsetenv(name);
        for (const std::string& e : env_)
            putenv(const_cast<char*>(e.c_str()));
        execl(PLUMET_EXE, PLUMET_EXE, "--plugin", kModule.c_str(), "--no-window",
              In("big.png").c_str(), In("big-out.png").c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    std::string seen;
    bool interrupted = false;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(120);
    while (std::chrono::steady_clock::now() < end) {
        pollfd p{master, POLLIN, 0};
        if (poll(&p, 1, 100) <= 0) continue;
        char buffer[256];
        const ssize_t n = read(master, buffer, sizeof buffer);
        if (n <= 0) break; // the program ended
        seen.append(buffer, std::size_t(n));
        if (!interrupted && seen.find("rendering [") != std::string::npos) {
            kill(pid, SIGINT);
            interrupted = true;
        }
    }
    int status = 0;
    waitpid(pid, &status, 0);
    close(master);
    ASSERT_TRUE(interrupted) << "a progress bar was drawn: " << seen;
    ASSERT_TRUE(WIFEXITED(status)) << seen;
    EXPECT_EQ(WEXITSTATUS(status), kExitCancelled) << seen;
    EXPECT_NE(seen.find("interrupted"), std::string::npos) << seen;
    EXPECT_FALSE(FileExists(In("big-out.png")));
    EXPECT_EQ(ReadText(In("big.png")), before);
}
