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
#include <QWindow>
#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>

namespace {
using Clock = std::chrono::steady_clock;

// Notes the first paint of the view that reaches a window the screen shows.
struct FirstPaint : QObject {
    bool painted = false;
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = static_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget->window()->windowHandle() &&
            widget->window()->windowHandle()->isExposed())
            painted = true;
        return false;
    }
};

void WindowUpAndDrawnOver12Megapixels(benchmark::State& state) {
    for (auto _ : state) {
        WindowRun run(4000, 3000);
        const Clock::time_point start = Clock::now();
        Clock::time_point drawn;
        // From the filter's start to the end of the first paint of the view
        // in the shown window: the host's reduction of the image, the
        // window, the scene and its first frame.
        run.Run([&](VZarbesoWindow_Win& w) {
            FirstPaint paints;
            w.GetViewWidget()->installEventFilter(&paints);
            w.GetViewWidget()->update();
            const Clock::time_point limit = Clock::now() + std::chrono::seconds(10);
            while (!paints.painted && Clock::now() < limit)
                QApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
            drawn = Clock::now();
            w.GetViewWidget()->removeEventFilter(&paints);
            if (!paints.painted) state.SkipWithError("the view was never painted on screen");
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
