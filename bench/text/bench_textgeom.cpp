// Rebuilding a text of 40 letters after a change of layout, keeping the
// outlines: what every layout value, path, opacity or colour change pays.

#include "curves/VAnalyticPathTable.h"
#include "text/FontList.h"
#include "text/TextCharacter.h"
#include "text/Type1Fonts.h"
#include "text/Type1Service.h"
#include "text/VAlignedText.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

// 40 characters, each with ink.
const char* const kText = "FlyWORD-Plumet-Lumerra3D-along-paths-B8g";

struct Scene {
    TextCharacter* chars = nullptr;
    std::unique_ptr<VCurve> path;
    std::unique_ptr<VCurveData> data;
    std::unique_ptr<VAlignedText> text;

    explicit Scene(int pathIndex) {
        if (Q3Initialize() != kQ3Success) std::abort();
        if (GetFontList().GetCount() == 0) {
            SetType1ModulePath("");
            ResetType1FontDirectory();
            BuildFontList();
        }
        const std::uint32_t font = FindFontListPosition("DejaVu Sans");
        if (!font || !SetCurrentFont(font) || !BuildTextCharacters(kText, 1, &chars) || !chars) {
            std::fprintf(stderr, "DejaVu Sans is needed\n");
            std::abort();
        }
        path = MakeAnalyticPath(pathIndex);
        data = std::make_unique<VCurveData>(path.get());
        text = std::make_unique<VAlignedText>();
    }
    ~Scene() {
        text.reset();
        FreeTextCharacters(chars);
        Q3Exit();
    }
};

int Letters(const TextCharacter* c) {
    int n = 0;
    for (; c; c = c->next)
        n += c->contours != nullptr;
    return n;
}

void Rebuild(benchmark::State& state, int pathIndex, bool outline, float opacity) {
    Scene scene(static_cast<int>(pathIndex));
    const std::uint16_t side[3] = {65535, 20000, 0};
    float slide = 40;
    for (auto _ : state) {
        // A step of the slide tool, then the rebuild it causes.
        slide = slide >= 60 ? 40 : slide + 0.125f;
        scene.data->slide = slide;
        scene.text->Rebuild(scene.chars, *scene.data, outline, opacity, side);
        benchmark::DoNotOptimize(scene.text->object);
    }
    state.counters["letters"] = Letters(scene.chars);
    state.counters["groups"] = static_cast<double>(scene.text->CountObjects() - 2);
}

void BM_RebuildSolidOnLine(benchmark::State& state) {
    Rebuild(state, 1, false, 1.0f);
}
void BM_RebuildSolidOnHelix(benchmark::State& state) {
    Rebuild(state, 6, false, 1.0f);
}
void BM_RebuildSeeThroughOnLine(benchmark::State& state) {
    Rebuild(state, 1, false, 0.5f);
}
void BM_RebuildHollowOnLine(benchmark::State& state) {
    Rebuild(state, 1, true, 1.0f);
}

} // namespace

BENCHMARK(BM_RebuildSolidOnLine)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RebuildSolidOnHelix)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RebuildSeeThroughOnLine)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RebuildHollowOnLine)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
