// The view as the filter drives it: one interactive frame of the default
// text composited over a host image, and the final render of the default
// scene, with the default camera.
#include "host/ModuleState.h"
#include "scene/K3DSystem.h"
#include "ui/VZarbesoDocument.h"

#include <benchmark/benchmark.h>
#include <vector>

namespace {
struct HostImage {
    HostImage(int w, int h) : width(w), height(h), in(std::size_t(w) * h * 3), out(in.size()) {
        for (std::size_t i = 0; i < in.size(); ++i)
            in[i] = static_cast<uint8_t>(i * 13);
    }
    int width, height;
    std::vector<uint8_t> in, out;
};

// The default document's view bound to `image` at its size, drawing offscreen.
VZarbesoView& Bind(VZarbesoDocument& document, HostImage& image) {
    document.ApplyDefaults();
    VZarbesoView& view = *document.GetView();
    view.Resize(image.width, image.height, 515, 324, false);
    view.SetHostImage(image.in.data(), image.width * 3, image.out.data(), image.width * 3,
                      static_cast<int16>(image.width), static_cast<int16>(image.height), 3, -1, 0,
                      plugInModeRGBColor);
    view.SetOffscreen(true);
    return view;
}

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
