// Laying out a text of 126 letters along each path: one GetFrame per letter
// at the arc length of the letter's middle, as text layout does.
#include "curves/VAnalyticPathTable.h"
#include "curves/VCNurbsCurve.h"
#include "curves/VNurbsCurvePath.h"

#include <benchmark/benchmark.h>

namespace {
constexpr int kLetters = 126;

void LayOut(benchmark::State& state, VCurve& path) {
    const float len = path.GetLength();
    int placed = 0;
    for (auto _ : state) {
        placed = 0;
        for (int i = 0; i < kLetters; ++i) {
            KVector3D p, t, n, b;
            if (path.GetFrame(len * (float(i) + 0.5f) / kLetters, p, t, n, b)) ++placed;
            benchmark::DoNotOptimize(p);
            benchmark::DoNotOptimize(b);
        }
    }
    if (placed != kLetters) state.SkipWithError("a letter was not placed");
    state.counters["letters"] = placed;
}

void BM_AnalyticPath(benchmark::State& state) {
    const std::int32_t index = std::int32_t(state.range(0));
    const VAnalyticPathEntry* e = GetAnalyticPathEntry(index);
    auto path = MakeAnalyticPathWithSliders(index, e->startSliders[0], e->startSliders[1]);
    state.SetLabel(e->name);
    LayOut(state, *path);
}
BENCHMARK(BM_AnalyticPath)->DenseRange(1, 8)->Unit(benchmark::kMicrosecond);

// A drawn path: a cubic through 12 control points, as the curve tools make.
void BM_NurbsPath(benchmark::State& state) {
    KVector3D P[12];
    for (int i = 0; i < 12; ++i)
        P[i] = KVector3D(float(i) - 6.0f, (i % 2 ? 2.0f : -1.5f), float(i % 3) - 1.0f, 1.0f);
    double U[16] = {0, 0, 0, 0};
    for (int i = 4; i < 12; ++i)
        U[i] = double(i - 3) / 9.0;
    for (int i = 12; i < 16; ++i)
        U[i] = 1.0;
    VCNurbsCurve curve;
    if (curve.Set(3, 12, P, 16, U, 0) != kCurveOK) {
        state.SkipWithError("bad curve");
        return;
    }
    VNurbsCurvePath path;
    path.curve = &curve;
    path.Rebuild();
    const std::int32_t mode = std::int32_t(state.range(0));
    path.SetFrameMode(mode);
    state.SetLabel(mode == kFrameModeTable ? "drawn path, frame table" : "drawn path, direct");
    LayOut(state, path);
}
BENCHMARK(BM_NurbsPath)->Arg(kFrameModeDirect)->Arg(kFrameModeTable)->Unit(benchmark::kMicrosecond);
} // namespace

BENCHMARK_MAIN();
