// The command-line host as a user meets it: exit statuses, messages, files.
#include "TestSupport.h"
#include "hosts/ImageFiles.h"
#include "hosts/ResultCodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace plumet::hosts;
using namespace plumet::hosts::testing;

namespace {

class Cli : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = ScratchDir(std::string("cli_") + info->name());
        env_ = {"XDG_STATE_HOME=" + dir_ + "/state", "TESTFILTER_LOG=" + dir_ + "/log"};
        std::string error;
        ASSERT_TRUE(WriteImageFile(In("rgb.png"), Pattern(24, 16, ColourModel::RGB, false), error));
        ASSERT_TRUE(WriteImageFile(In("rgba.png"), Pattern(24, 16, ColourModel::RGB, true), error));
        ASSERT_TRUE(
            WriteImageFile(In("cmyk.tif"), Pattern(24, 16, ColourModel::CMYK, false), error));
    }
    std::string In(const std::string& name) const { return dir_ + "/" + name; }
    Command Run(std::vector<std::string> args, std::vector<std::string> extraEnv = {}) {
        args.insert(args.begin(), {"--plugin", TestFilterPath()});
        std::vector<std::string> env = env_;
        env.insert(env.end(), extraEnv.begin(), extraEnv.end());
        return RunPlumet(args, env);
    }
    // One line on stderr that contains `text`.
    static void ExpectOneLine(const Command& c, const std::string& text) {
        EXPECT_NE(c.err.find(text), std::string::npos) << c.err;
        EXPECT_EQ(std::count(c.err.begin(), c.err.end(), '\n'), 1) << c.err;
    }
    std::string dir_;
    std::vector<std::string> env_;
};

} // namespace

TEST_F(Cli, RunsEachImageKindAndWritesTheResult) {
    struct Case {
        std::vector<std::string> args;
        const char* output;
        int filterCase;
    } cases[] = {
        {{In("rgb.png")}, "out1.png", 1},
        {{"--select=0,0,24,16", In("cmyk.tif")}, "out3.tiff", 2},
        {{"--protect-transparency", In("rgba.png")}, "out6.tif", 6},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.output);
        std::vector<std::string> args = c.args;
        args.push_back(In(c.output));
        args.push_back("--no-window");
        std::remove((dir_ + "/log").c_str());
        const Command result = Run(args);
        ASSERT_EQ(result.status, kExitSuccess) << result.err;
        EXPECT_EQ(result.err, "");
        HostImage out;
        std::string error;
        ASSERT_TRUE(ReadImageFile(In(c.output), out, error)) << error;
        EXPECT_EQ(out.width, 24);
        EXPECT_EQ(out.height, 16);
        // The filter saw the case and the play flag "do not display".
        const std::string log = ReadText(dir_ + "/log");
        EXPECT_NE(log.find("3 case=" + std::to_string(c.filterCase) + " play=0"), std::string::npos)
            << log;
    }
    // The inverted pixel in a plain PNG run.
    HostImage out;
    std::string error;
    ASSERT_TRUE(ReadImageFile(In("out1.png"), out, error));
    EXPECT_EQ(out.Pixel(3, 5)[1], 255 - PatternValue(3, 5, 1));
    ASSERT_TRUE(ReadImageFile(In("out3.tiff"), out, error));
    EXPECT_EQ(out.model, ColourModel::CMYK);
    EXPECT_EQ(out.Pixel(3, 5)[3], 255 - PatternValue(3, 5, 3));
}

TEST_F(Cli, RepeatUsesTheKeptRecordAndFailsWithoutOne) {
    Command c = Run({"--repeat", In("rgb.png"), In("a.png")});
    EXPECT_EQ(c.status, kExitNothingToRepeat);
    ExpectOneLine(c, "nothing to repeat");
    EXPECT_FALSE(FileExists(In("a.png")));

    c = Run({In("rgb.png"), In("a.png")});
    ASSERT_EQ(c.status, 0) << c.err;
    EXPECT_NE(ReadText(dir_ + "/log").find("1 case=1 play=1 params=1"), std::string::npos);
    EXPECT_TRUE(FileExists(dir_ + "/state/plumet/host-state"));
    std::remove((dir_ + "/log").c_str());
    c = Run({"--repeat", "--no-window", In("rgb.png"), In("b.png")});
    ASSERT_EQ(c.status, 0) << c.err;
    const std::string log = ReadText(dir_ + "/log");
    EXPECT_EQ(log.find("1 case"), std::string::npos) << log; // no parameters selector
    EXPECT_NE(log.find("2 case=1 play=0 params=1 starts=1"), std::string::npos) << log;
    EXPECT_NE(log.find("5 case=1 play=0 params=1 starts=2"), std::string::npos) << log;
    // A run after that asks for parameters again on the same record.
    std::remove((dir_ + "/log").c_str());
    c = Run({In("rgb.png"), In("c.png")});
    EXPECT_NE(ReadText(dir_ + "/log").find("1 case=1 play=1 params=2"), std::string::npos);

    // A damaged state file is ignored with a warning and then replaced.
    WriteBytes(dir_ + "/state/plumet/host-state", "junk");
    std::remove((dir_ + "/log").c_str());
    c = Run({In("rgb.png"), In("d.png")});
    EXPECT_EQ(c.status, 0);
    ExpectOneLine(c, "is damaged");
    EXPECT_NE(ReadText(dir_ + "/log").find("1 case=1 play=1 params=1"), std::string::npos);
    c = Run({"--repeat", In("rgb.png"), In("e.png")});
    EXPECT_EQ(c.status, 0) << c.err;

    // Another filter (here a newer version) never gets this filter's record.
    c = RunPlumet(
        {"--plugin", TestFilterPath("testfilter_newer"), "--repeat", In("rgb.png"), In("f.png")},
        env_);
    EXPECT_EQ(c.status, kExitNothingToRepeat);
    ExpectOneLine(c, "no settings of Test Invert");
}

TEST_F(Cli, BadInputGivesOneLineAnExitStatusAndNoOutput) {
    // Damaged images are the image files' own tests; here one stands for them.
    const std::string out = In("out.png");
    struct Case {
        std::vector<std::string> args;
        int status;
        const char* message;
    } cases[] = {
        {{In("missing.png"), out}, kExitImage, "missing.png"},
        {{"--select", "20,10,10,10", In("rgb.png"), out}, kExitImage, "not inside the image"},
        {{"--select", "0,0,0,5", In("rgb.png"), out}, kExitImage, "selection is empty"},
        {{"--select", "1,2,3", In("rgb.png"), out}, kExitUsage, "X,Y,W,H"},
        {{"--select", "a,b,c,d", In("rgb.png"), out}, kExitUsage, "X,Y,W,H"},
        {{"--select", "0,0,2147483647,16", In("rgb.png"), out}, kExitImage, "not inside"},
        {{In("rgb.png")}, kExitUsage, "OUTPUT"},
        {{In("rgb.png"), out, "extra"}, kExitUsage, "too many"},
        {{"--bogus", In("rgb.png"), out}, kExitUsage, "unknown option --bogus"},
        {{"--max-space", "-4", In("rgb.png"), out}, kExitUsage, "--max-space"},
        {{In("cmyk.tif"), out}, kExitImage, "only be written as TIFF"},
        {{In("rgb.png"), In("out.gif")}, kExitImage, "unsupported output format"},
        {{In("rgb.png"), In("nodir/out.png")}, kExitImage, "out.png"},
        {{In("rgb.png"), In("folder.png")}, kExitImage, "is a directory"},
    };
    std::filesystem::create_directory(In("folder.png"));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        const Command result = Run(c.args);
        EXPECT_EQ(result.status, c.status);
        ExpectOneLine(result, c.message);
        EXPECT_FALSE(FileExists(out));
        EXPECT_FALSE(FileExists(dir_ + "/log")) << "refused before the filter runs";
    }
    EXPECT_FALSE(FileExists(In("nodir")));
}

TEST_F(Cli, SaysWhatItCannotKeep) {
    std::filesystem::create_directories(dir_ + "/state/plumet/host-state");
    const Command c = Run({"--no-window", In("rgba.png"), In("out.jpg")});
    EXPECT_EQ(c.status, kExitSuccess) << c.err;
    EXPECT_NE(c.err.find("host-state is a directory"), std::string::npos) << c.err;
    EXPECT_NE(c.err.find("flattened over white"), std::string::npos) << c.err;
    EXPECT_EQ(std::count(c.err.begin(), c.err.end(), '\n'), 2) << c.err;
}

TEST_F(Cli, ModulesThatAreNotFiltersAreRefused) {
    WriteBytes(In("text.8bf"), "text");
    for (const auto& [plugin, message] : std::vector<std::pair<std::string, std::string>>{
             {In("none.8bf"), "No such file"},
             {In("text.8bf"), "not a shared object"},
             {TestFilterPath("testfilter_wrongkind"), "not a filter module"},
             {TestFilterPath("testfilter_undefined"), "missing symbol"}}) {
        SCOPED_TRACE(plugin);
        for (const std::vector<std::string>& rest :
             {std::vector<std::string>{In("rgb.png"), In("o.png")},
              std::vector<std::string>{"--info"}}) {
            std::vector<std::string> args{"--plugin", plugin};
            args.insert(args.end(), rest.begin(), rest.end());
            const Command c = RunPlumet(args, env_);
            EXPECT_EQ(c.status, kExitModule);
            ExpectOneLine(c, message);
            EXPECT_FALSE(FileExists(In("o.png")));
        }
    }
}

TEST_F(Cli, FilterResultsMapToTheirExitStatusAndMessage) {
    struct Case {
        const char* fail;
        int status;
        const char* message;
    } cases[] = {
        {"2:-108", kExitOutOfMemory, "out of memory"},
        {"2:-128", kExit3DUnavailable, "3D system is unavailable"},
        {"3:-30100", kExitBadParameters, "bad parameters"},
        {"3:-30101", kExitBadMode, "image mode or filter case"},
        {"3:-30904", kExitFilterMessage, "test filter says no"},
        {"4:-1", kExitInternal, "internal failure"},
        {"3:1", kExitCancelled, "cancelled"},
        {"1:-42", kExitOtherResult, "result -42"},
        {"5:-30904", kExitFilterMessage, "test filter says no"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fail);
        const Command result =
            Run({In("rgb.png"), In("out.png")}, {std::string("TESTFILTER_FAIL=") + c.fail});
        EXPECT_EQ(result.status, c.status);
        ExpectOneLine(result, c.message);
        EXPECT_FALSE(FileExists(In("out.png")));
        // Nothing is kept from a run that did not end with OK.
        EXPECT_FALSE(FileExists(dir_ + "/state/plumet/host-state"));
    }
    // A windowed run that failed here, without a display, names the command
    // that works.
    const Command windowed = Run({In("rgb.png"), In("out.png")}, {"TESTFILTER_FAIL=3:-30904"});
    ExpectOneLine(windowed, "(without a display: plumet --no-window --plugin ");
    EXPECT_NE(windowed.err.find(In("rgb.png") + " " + In("out.png") + ")"), std::string::npos);
    const Command endless = Run({In("rgb.png"), In("out.png")}, {"TESTFILTER_STYLE=endless"});
    EXPECT_EQ(endless.status, kExitInternal);
    ExpectOneLine(endless, "without finishing");
    // Memory: the test filter refuses when its estimate reaches maxSpace.
    const Command memory = Run({"--max-space", "1000", In("rgb.png"), In("out.png")});
    EXPECT_EQ(memory.status, kExitOutOfMemory);
    EXPECT_FALSE(FileExists(In("out.png")));
}

TEST_F(Cli, InfoAboutAndHelp) {
    Command c = Run({"--info"});
    EXPECT_EQ(c.status, 0) << c.err;
    EXPECT_NE(c.out.find("Name: Test Invert"), std::string::npos) << c.out;
    EXPECT_NE(c.out.find("Category: Plumet Tests"), std::string::npos);
    EXPECT_NE(c.out.find("Version: 4.1"), std::string::npos);
    EXPECT_NE(c.out.find("Image modes: RGB, CMYK"), std::string::npos);
    EXPECT_NE(c.out.find("4 editable transparency, no selection: 1, 1, 2, 0"), std::string::npos)
        << c.out;
    EXPECT_FALSE(FileExists(dir_ + "/log")); // the filter was not called

    c = Run({"--about"});
    EXPECT_EQ(c.status, 0) << c.err;
    EXPECT_NE(c.out.find("Name: Test Invert"), std::string::npos);
    EXPECT_EQ(ReadText(dir_ + "/log"), "about hwnd=0 result=0\n");
    c = Run({"--about"}, {"TESTFILTER_FAIL=0:-1"});
    EXPECT_EQ(c.status, kExitInternal);
    c = Run({"--about", In("rgb.png")});
    EXPECT_EQ(c.status, kExitUsage);

    c = RunPlumet({"--help"});
    EXPECT_EQ(c.status, 0);
    EXPECT_NE(c.out.find("--no-window"), std::string::npos);
    EXPECT_NE(c.out.find("-30904"), std::string::npos);
    EXPECT_NE(c.out.find("Exit status"), std::string::npos);
}
