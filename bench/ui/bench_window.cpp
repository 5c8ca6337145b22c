// The window as a person meets it: how long from the filter's start until
// the window stands drawn over a 12-megapixel image, and how long from a
// letter typed into the text field and Enter until the new frame is shown
// at a 1024 by 768 preview. Run it on a display of desktop size:
// run_bench.sh starts one under Xvfb.
#include "host/CZarbesoPlugin.h"
#include "host/ModalRun.h"
#include "hosts/DisplayPixels.h"
#include "tests/host/FakeHost.h"
#include "ui/controls/DialogControls.h"
#include "ui/window/VZarbesoWindow.h"
#include "ui/window/WindowInstall.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>

namespace {
using Clock = std::chrono::steady_clock;
std::function<void(VZarbesoWindow_Win&)> gScript;

WFilterWindow* MakeScripted(intptr_t parent, int16 invocation) {
    auto* window = new VZarbesoWindow_Win(parent, invocation);
    QTimer::singleShot(0, [window] { gScript(*window); });
    return window;
}

// Runs the filter with its window over a host image of `width` by `height`.
void RunWindow(int width, int height, std::function<void(VZarbesoWindow_Win&)> script) {
    FakeHost host(width, height, 3, plugInModeRGBColor, filterCaseFlatImageNoSelection);
    host.descriptor.playInfo = plugInDialogDisplay;
    host.record.displayPixels = &plumet::hosts::DisplayPixelsOnSurface;
    InstallFilterWindow();
    gScript = std::move(script);
    SetFilterWindowFactory(&MakeScripted);
    for (int16 selector : {filterSelectorParameters, filterSelectorPrepare, filterSelectorStart}) {
        CZarbesoPlugin plugin;
        int16 result = 0;
        int32 data = 0;
        plugin.Dispatch(selector, &host.record, &data, &result);
    }
}

void WindowUpAndDrawnOver12Megapixels(benchmark::State& state) {
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        Clock::time_point drawn;
        // The first turn of the loop comes after the window was shown with
        // its first frame.
        RunWindow(4000, 3000, [&](VZarbesoWindow_Win& w) {
            QApplication::processEvents();
            drawn = Clock::now();
            state.counters["preview width"] = w.GetView()->GetFrame().right;
            PostQuit(kQuitCancel);
        });
        state.SetIterationTime(std::chrono::duration<double>(drawn - start).count());
    }
}
BENCHMARK(WindowUpAndDrawnOver12Megapixels)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5);

void KeystrokeToFrameAt1024x768(benchmark::State& state) {
    RunWindow(1024, 768, [&](VZarbesoWindow_Win& w) {
        QLineEdit* text = w.Controls().Edit(1041);
        QApplication::setActiveWindow(w.Widget());
        text->setFocus();
        state.counters["view width"] = w.GetView()->GetFrame().right;
        bool add = true;
        for (auto _ : state) {
            // A letter in, or out again, then Enter: the letters are built
            // anew and one frame is drawn, composited and shown.
            QTest::keyClick(text, add ? Qt::Key_A : Qt::Key_Backspace);
            QTest::keyClick(text, Qt::Key_Return);
            add = !add;
        }
        PostQuit(kQuitCancel);
    });
}
BENCHMARK(KeystrokeToFrameAt1024x768)->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
