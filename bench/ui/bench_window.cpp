// The window as a person meets it: how long from the filter's start until
// the window stands drawn over a 12-megapixel image, and how long from a
// letter typed into the text field and Enter until the new frame is shown
// at a 1024 by 768 preview. Run it on a display of desktop size:
// run_bench.sh starts one under Xvfb.
#include "host/ModalRun.h"
#include "tests/ui/WindowRun.h"
#include "ui/controls/DialogControls.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>

namespace {
using Clock = std::chrono::steady_clock;

void WindowUpAndDrawnOver12Megapixels(benchmark::State& state) {
    for (auto _ : state) {
        WindowRun run(4000, 3000);
        const Clock::time_point start = Clock::now();
        Clock::time_point drawn;
        // The first turn of the loop comes after the window was shown with
        // its first frame.
        run.Run([&](VZarbesoWindow_Win& w) {
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
    WindowRun run(1024, 768);
    run.Run([&](VZarbesoWindow_Win& w) {
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
