// The view as the filter drives it: one interactive frame of the default
// text composited over a host image, and the final render of the default
// scene, with the default camera.
#include "bench/render/ViewBench.h"
#include "host/ModuleState.h"
#include "scene/K3DSystem.h"

#include <benchmark/benchmark.h>

namespace {
void InteractiveFrameWithComposite(benchmark::State& state) {
    VC3DSystem system;
    VZarbesoDocument document(false);
    HostImage image(1024, 768);
    VZarbesoView& view = Bind(document, image);
    for (auto _ : state) {
        view.PrepareBack();
        view.K3DView::Render();
        view.CompositeToHost(false);
        benchmark::DoNotOptimize(image.out.data());
    }
}
BENCHMARK(InteractiveFrameWithComposite)->Unit(benchmark::kMillisecond)->UseRealTime();

void CompositeOnly(benchmark::State& state) {
    VC3DSystem system;
    VZarbesoDocument document(false);
    HostImage image(1024, 768);
    VZarbesoView& view = Bind(document, image);
    view.K3DView::Render();
    for (auto _ : state)
        view.CompositeToHost(false);
}
BENCHMARK(CompositeOnly)->Unit(benchmark::kMillisecond)->UseRealTime();

void FinalRenderOfTheDefaultScene(benchmark::State& state) {
    VC3DSystem system;
    VZarbesoDocument document(false);
    HostImage image(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    Bind(document, image);
    for (auto _ : state)
        document.RenderScene(false);
}
BENCHMARK(FinalRenderOfTheDefaultScene)
    ->Args({3000, 2000})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(2);
} // namespace

BENCHMARK_MAIN();
