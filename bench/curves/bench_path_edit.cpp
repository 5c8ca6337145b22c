// Editing a drawn path at 1024 by 768 through the tool handler, as the
// window drives it: one drag step of an anchor of a path of 50 anchors that
// 40 solid letters follow (the pieces and markers move, a frame is drawn
// and composited over the host's image), and the release, which builds the
// path again and lays the letters out on it; beside them the frame alone.
#include "bench/render/ViewBench.h"
#include "scene/K3DSystem.h"
#include "scene/VCBezierCurveModel.h"

#include <benchmark/benchmark.h>
#include <cmath>

namespace {
// 40 letters.
constexpr const char* kText = "Lumerra 3D: FlyWORD Plumet drags forty letters";

struct PathScene {
    // A wave of 50 anchors across the picture, each with its handles pulled
    // out by a short drag, drawn with the draw tool; then the drag tool.
    PathScene() : image(1024, 768), view(Bind(document, image)) {
        view.SetText(kText);
        view.SetLayout(TextLayoutValue::kWidth, 3.5f, false, true);
        view.SetLayout(TextLayoutValue::kHeight, 5, true, true);
        view.SetTool(kToolCurveDraw);
        for (int i = 0; i < 50; ++i) {
            const auto x = static_cast<std::int16_t>(40 + 19 * i);
            const auto y = static_cast<std::int16_t>(384 + 150 * std::sin(i * 0.4));
            view.MouseDown(x, y);
            view.MouseMove(static_cast<std::int16_t>(x + 8), y);
            view.MouseUp(static_cast<std::int16_t>(x + 8), y);
        }
        view.SetTool(kToolCurveDrag);
        path = view.GetBezierModel();
        if (!path || path->GetPieceCount() != 49) std::abort();
    }
    VC3DSystem system;
    VZarbesoDocument document{false};
    HostImage image;
    VZarbesoView& view;
    VCBezierCurveModel* path = nullptr;
};

// The anchor in the middle of the path, where the pointer presses.
constexpr std::int16_t kAnchorX = 40 + 19 * 25;
const std::int16_t kAnchorY = static_cast<std::int16_t>(384 + 150 * std::sin(25 * 0.4));

// The pointer swings up and down across 100 pixels.
struct Swing {
    std::int16_t Next() {
        y = static_cast<std::int16_t>(y + step);
        if (y >= kAnchorY + 50 || y <= kAnchorY - 50) step = -step;
        return y;
    }
    std::int16_t y = kAnchorY, step = 1;
};

void DragStepOfAnAnchor(benchmark::State& state) {
    PathScene s;
    Swing swing;
    s.view.MouseDown(kAnchorX, kAnchorY);
    if (s.path->GetSelectedAnchor() < 0) std::abort();
    KVector3D start, now;
    s.path->GetSelectedPoint(start);
    for (auto _ : state)
        s.view.MouseMove(kAnchorX, swing.Next());
    s.path->GetSelectedPoint(now);
    state.counters["anchor_moved"] = std::fabs(now.y - start.y);
    state.counters["pointer_moved"] = std::abs(swing.y - kAnchorY);
    SaveFrontWorld(s.view, PLUMET_TEST_OUTPUT "/bench_path_drag.png");
    s.view.MouseUp(kAnchorX, swing.y);
    SaveFrontWorld(s.view, PLUMET_TEST_OUTPUT "/bench_path_released.png");
}
BENCHMARK(DragStepOfAnAnchor)->Unit(benchmark::kMillisecond)->UseRealTime();

// The frame alone that each drag step draws, for comparison.
void FrameOfThePathWithComposite(benchmark::State& state) {
    PathScene s;
    for (auto _ : state)
        s.view.Refresh();
}
BENCHMARK(FrameOfThePathWithComposite)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReleaseRebuildsThePathAndTheLetters(benchmark::State& state) {
    PathScene s;
    Swing swing;
    s.view.MouseDown(kAnchorX, kAnchorY);
    for (auto _ : state) {
        state.PauseTiming();
        s.view.MouseDown(kAnchorX, swing.y);
        s.view.MouseMove(kAnchorX, swing.Next());
        state.ResumeTiming();
        s.view.MouseUp(kAnchorX, swing.y);
    }
}
BENCHMARK(ReleaseRebuildsThePathAndTheLetters)->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace

BENCHMARK_MAIN();
