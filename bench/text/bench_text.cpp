// Reading a text of 126 characters into contours, and listing the fonts of
// the machine.

#include "platform/fonts/WinFonts.h"
#include "text/FontList.h"
#include "text/KWinTTFonts.h"
#include "text/TextCharacter.h"
#include "text/Type1Fonts.h"
#include "text/Type1Service.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

std::string Text126() {
    const std::string pangram = "The quick brown fox jumps over the lazy dog. "
                                "PACK MY BOX WITH FIVE DOZEN LIQUOR JUGS! 0123456789 ";
    std::string text;
    while (text.size() < 126)
        text += pangram;
    text.resize(126);
    return text;
}

void ListAllFonts(benchmark::State& state) {
    std::uint32_t trueType = 0, type1 = 0;
    for (auto _ : state) {
        ResetFontCatalogue();
        KWinTTFonts fonts;
        ResetType1FontDirectory();
        Type1FontDirectory& directory = GetType1FontDirectory();
        directory.Enumerate();
        trueType = fonts.count;
        type1 = static_cast<std::uint32_t>(directory.fonts.size());
        benchmark::DoNotOptimize(fonts.count);
    }
    state.counters["outline_faces"] = trueType;
    state.counters["type1_faces"] = type1;
}

// The first listing of a process, which also starts fontconfig.
void BM_ListFontsFirstTime(benchmark::State& state) {
    ListAllFonts(state);
}
void BM_ListFonts(benchmark::State& state) {
    ListAllFonts(state);
}

void BM_BuildFontList(benchmark::State& state) {
    GetTTFonts();
    for (auto _ : state) {
        ResetType1FontDirectory();
        benchmark::DoNotOptimize(BuildFontList());
    }
    state.counters["rows"] = GetFontList().GetCount();
}

void BuildText(benchmark::State& state, const char* fontName, int quality) {
    BuildFontList();
    if (!SetCurrentFont(FindFontListPosition(fontName))) {
        state.SkipWithError("font not installed");
        return;
    }
    const std::string text = Text126();
    std::size_t points = 0;
    for (auto _ : state) {
        TextCharacter* chain = nullptr;
        if (!BuildTextCharacters(text.c_str(), quality, &chain)) {
            state.SkipWithError("reading failed");
            break;
        }
        points = 0;
        for (const TextCharacter* c = chain; c; c = c->next)
            for (const OuterContour* o = c->contours; o; o = o->next) {
                points += o->count;
                for (const HoleContour* h = o->holes; h; h = h->next)
                    points += h->count;
            }
        FreeTextCharacters(chain);
    }
    state.counters["points"] = static_cast<double>(points);
}

void BM_BuildText126_TrueType(benchmark::State& state) {
    BuildText(state, "DejaVu Sans", static_cast<int>(state.range(0)));
}
void BM_BuildText126_SerifTrueType(benchmark::State& state) {
    BuildText(state, "DejaVu Serif", static_cast<int>(state.range(0)));
}
void BM_BuildText126_Type1(benchmark::State& state) {
    BuildText(state, "Nimbus Roman Regular (Type 1)", static_cast<int>(state.range(0)));
}

struct UseBuiltModule {
    UseBuiltModule() { SetType1ModulePath(PLUMET_TYPE1_MODULE); }
} gUseBuiltModule;

} // namespace

BENCHMARK(BM_ListFontsFirstTime)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListFonts)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildFontList)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildText126_TrueType)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildText126_SerifTrueType)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildText126_Type1)->Arg(1)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
