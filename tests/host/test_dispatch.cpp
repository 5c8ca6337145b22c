// The filter's answers to the host's selectors, through the module's entry.
#include "host/Alerts.h"
#include "host/CZarbesoPlugin.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "resources/Strings.h"
#include "sdk/PIGlobal.h"
#include "tests/host/FakeHost.h"

#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <vector>

namespace {
std::vector<int> gAlerts;
void CollectAlert(int id, const std::string&) {
    gAlerts.push_back(id);
}

struct Dispatch : ::testing::Test {
    void SetUp() override {
        gAlerts.clear();
        SetMessageSink(&CollectAlert);
    }
    void TearDown() override { SetMessageSink(nullptr); }

    static int16 Call(int16 selector, void* block) {
        CZarbesoPlugin plugin;
        int16 result = 12345;
        int32 data = 0;
        plugin.Dispatch(selector, block, &data, &result);
        return result;
    }
    // Parameters, Prepare and Start as a host runs them.
    static int16 RunToStart(FakeHost& host) {
        if (int16 r = Call(filterSelectorParameters, &host.record)) return r;
        if (int16 r = Call(filterSelectorPrepare, &host.record)) return r;
        return Call(filterSelectorStart, &host.record);
    }
};

constexpr Rect kEmpty = {0, 0, 0, 0};
bool IsEmpty(const Rect& r) {
    return r.top == 0 && r.left == 0 && r.bottom == 0 && r.right == 0;
}
} // namespace

TEST_F(Dispatch, FixedAnswersAndUnknownSelectorsThatTouchNothing) {
    FakeHost host(20, 20, 3, plugInModeRGBColor, 1);
    const FilterRecord before = host.record;
    for (int16 selector : {int16(6), int16(-1), int16(100)}) {
        EXPECT_EQ(Call(selector, &host.record), filterBadParameters);
    }
    EXPECT_EQ(0, std::memcmp(&before, &host.record, sizeof before));
    AboutRecord about{};
    EXPECT_EQ(Call(filterSelectorAbout, &about), 0);
    EXPECT_EQ(gAlerts, std::vector<int>{kAboutBoxId});
    host.record.inRect = {1, 2, 3, 4};
    host.record.outRect = {1, 2, 3, 4};
    EXPECT_EQ(Call(filterSelectorContinue, &host.record), 0);
    EXPECT_TRUE(IsEmpty(host.record.inRect) && IsEmpty(host.record.outRect));
    EXPECT_EQ(Call(filterSelectorFinish, &host.record), 0);
}

TEST_F(Dispatch, ParametersCountInvocations) {
    FakeHost host(20, 20, 3, plugInModeRGBColor, 1);
    ASSERT_EQ(Call(filterSelectorParameters, &host.record), 0);
    auto* params = static_cast<PluginParameters*>(host.record.parameters);
    ASSERT_NE(params, nullptr);
    EXPECT_EQ(params->invocation, 1);
    EXPECT_EQ(params->imageMode, plugInModeRGBColor);
    EXPECT_EQ(params->platformData, &host.platform);
    EXPECT_EQ(gPluginParameters, params);
    for (int16 before : {int16(1), int16(0), int16(2), int16(7)}) {
        params->invocation = before;
        Call(filterSelectorParameters, &host.record);
        EXPECT_EQ(params->invocation, 2) << "was " << before;
    }
    EXPECT_EQ(host.record.parameters, params) << "an existing record is kept";
}

TEST_F(Dispatch, ABlockTooSmallForTheRecordIsNeverTrusted) {
    FakeHost host(20, 20, 3, plugInModeRGBColor, 1);
    host.record.parameters = PIGlobalAlloc(PIGlobalZeroInit, 4);
    EXPECT_EQ(Call(filterSelectorStart, &host.record), filterBadParameters);
    EXPECT_EQ(Call(filterSelectorParameters, &host.record), 0);
    EXPECT_GE(PIGlobalSize(host.record.parameters), sizeof(PluginParameters));
    EXPECT_EQ(static_cast<PluginParameters*>(host.record.parameters)->invocation, 1);
}

TEST_F(Dispatch, PrepareEstimatesAgainstMaxSpace) {
    FakeHost host(100, 50, 3, plugInModeRGBColor, 1);
    host.record.maxSpace = 100 * 50 * 4 + 1;
    EXPECT_EQ(Call(filterSelectorPrepare, &host.record), 0);
    EXPECT_EQ(host.record.bufferSpace, 100 * 50 * 4);
    EXPECT_TRUE(gAlerts.empty());

    host.record.maxSpace = 100 * 50 * 4; // equal is too much
    EXPECT_EQ(Call(filterSelectorPrepare, &host.record), memFullErr);
    EXPECT_EQ(host.record.bufferSpace, 0);
    EXPECT_EQ(gAlerts, std::vector<int>{plumet::kStrCantComplete});

    // An area whose estimate does not fit in 32 bits is refused, not wrapped.
    host.record.filterRect = {0, 0, 32000, 32000};
    host.record.maxSpace = INT32_MAX;
    EXPECT_EQ(Call(filterSelectorPrepare, &host.record), memFullErr);
}

TEST_F(Dispatch, StartRefusesBadRecordsBeforeAskingForPixels) {
    FakeHost host(20, 20, 3, plugInModeRGBColor, 1);
    EXPECT_EQ(Call(filterSelectorStart, &host.record), 1) << "no parameters yet";
    Call(filterSelectorParameters, &host.record);
    for (int16 mode : {plugInModeGrayScale, plugInModeIndexedColor, plugInModeLabColor,
                       plugInModeMultichannel, plugInModeBitmap}) {
        host.record.imageMode = mode;
        EXPECT_EQ(Call(filterSelectorStart, &host.record), filterBadMode);
    }
    host.record.imageMode = plugInModeRGBColor;
    host.record.filterCase = filterCaseEditableTransparencyNoSelection; // no transparency plane
    EXPECT_EQ(Call(filterSelectorStart, &host.record), filterBadMode);
    EXPECT_TRUE(host.inRects.empty());

    host.record.advanceState = nullptr;
    EXPECT_EQ(Call(filterSelectorStart, &host.record), 1);
    EXPECT_EQ(gAlerts, std::vector<int>{plumet::kStrHostTooOld});
}

TEST_F(Dispatch, StartAsksFullAreaThenReducedPreviewAndRuns) {
    FakeHost host(40, 30, 3, plugInModeRGBColor, 2);
    host.record.filterRect = {5, 4, 25, 34};
    EXPECT_EQ(RunToStart(host), 0);
    ASSERT_EQ(host.inRects.size(), 2u);
    EXPECT_EQ(0, std::memcmp(&host.inRects[0], &host.record.filterRect, sizeof(Rect)));
    EXPECT_EQ(host.rates[1], 0x10000);
    EXPECT_EQ(host.record.inputPadding, 255);
    EXPECT_EQ(host.record.inHiPlane, 2);
    EXPECT_EQ(gPlaneCount, 3);
    EXPECT_EQ(gAlphaPlane, -1);
    EXPECT_EQ(gFullWidth, 30);
    EXPECT_EQ(gFullHeight, 20);
    EXPECT_EQ(gPreviewScaled, 0);
    EXPECT_EQ(gRunningAsPlugin, 1);
    EXPECT_EQ(static_cast<PluginParameters*>(host.record.parameters)->advanceState,
              host.record.advanceState);
}

TEST_F(Dispatch, RowsTooShortForTheirPixelsAreRefused) {
    FakeHost host(40, 30, 3, plugInModeRGBColor, 1);
    host.shortRows = 1;
    EXPECT_EQ(RunToStart(host), filterBadParameters);
}

TEST_F(Dispatch, TinySelectionsStopSilently) {
    FakeHost five(5, 40, 3, plugInModeRGBColor, 1);
    EXPECT_EQ(RunToStart(five), 1);
    EXPECT_EQ(five.inRects.size(), 1u) << "ends after the first advanceState";

    FakeHost six(6, 6, 3, plugInModeRGBColor, 1);
    EXPECT_EQ(RunToStart(six), 0);
    EXPECT_EQ(six.inRects.size(), 2u);

    // Without a window nothing is reduced to fit a screen, so a banner that
    // a preview would squeeze to 5 rows runs at full size.
    FakeHost banner(4000, 30, 3, plugInModeRGBColor, 1);
    EXPECT_EQ(RunToStart(banner), 0);
    ASSERT_EQ(banner.rates.size(), 2u);
    EXPECT_EQ(banner.rates[1], 0x10000);
}

TEST_F(Dispatch, HostOutOfMemoryIsOneAlertAndSuccessWithNothingToDo) {
    for (int call : {1, 2}) {
        gAlerts.clear();
        FakeHost host(40, 40, 3, plugInModeRGBColor, 1);
        host.failOnCall = call;
        host.failWith = memFullErr;
        EXPECT_EQ(RunToStart(host), 0);
        EXPECT_EQ(gAlerts, std::vector<int>{plumet::kStrCantComplete});
        EXPECT_TRUE(IsEmpty(host.record.inRect) && IsEmpty(host.record.outRect));
    }
    FakeHost other(40, 40, 3, plugInModeRGBColor, 1);
    other.failOnCall = 1;
    other.failWith = -42;
    EXPECT_EQ(RunToStart(other), -42);
    EXPECT_TRUE(IsEmpty(other.record.inRect) && IsEmpty(other.record.outRect));
}

TEST_F(Dispatch, NoWindowRunEndsAsOkOrAsItsRunnerSays) {
    FakeHost host(40, 40, 3, plugInModeRGBColor, 1);
    SetNoWindowRunner([] { return false; });
    EXPECT_EQ(RunToStart(host), 1);
    SetNoWindowRunner(nullptr);
    Call(filterSelectorParameters, &host.record);
    EXPECT_EQ(Call(filterSelectorStart, &host.record), 0);
}

TEST_F(Dispatch, WindowWithoutDisplayIsAClearErrorNotAnAbort) {
    // Runs in a child so that the environment of the other tests stays.
    ASSERT_EXIT(
        {
            unsetenv("QT_QPA_PLATFORM");
            unsetenv("DISPLAY");
            unsetenv("WAYLAND_DISPLAY");
            FakeHost host(40, 40, 3, plugInModeRGBColor, 1);
            host.descriptor.playInfo = plugInDialogDisplay;
            const int16 r = RunToStart(host);
            const std::string text(reinterpret_cast<char*>(host.errorText) + 1, host.errorText[0]);
            std::exit(r == errReportString && text.find("no display") != std::string::npos ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(Entry, ModuleEntryCatchesEverythingAndAnswersBadRequests) {
    const std::string path = std::string(PLUMET_BINARY_DIR) + "/host/plumet.8bf";
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    auto entry = reinterpret_cast<PluginEntryProc>(dlsym(module, "ENTRYPOINT"));
    ASSERT_NE(entry, nullptr);
    int16 result = 0;
    int32 data = 0;
    entry(filterSelectorStart, nullptr, &data, &result);
    EXPECT_EQ(result, filterBadParameters);
    entry(filterSelectorParameters, nullptr, &data, nullptr); // no place for an answer: no crash

    FakeHost host(20, 20, 3, plugInModeRGBColor, 1);
    entry(77, &host.record, &data, &result);
    EXPECT_EQ(result, filterBadParameters);
    entry(filterSelectorParameters, &host.record, &data, &result);
    EXPECT_EQ(result, 0);
    entry(filterSelectorStart, &host.record, &data, &result);
    EXPECT_EQ(result, 0);
    // The module's internals stay hidden: only the entry and its properties.
    EXPECT_EQ(dlsym(module, "gPluginParameters"), nullptr);
    dlclose(module);
}
