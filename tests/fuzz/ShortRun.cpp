// Runs a fuzz target without the fuzzing engine: every file of the seed
// corpus, then a fixed number of mutations of them (flipped bytes, cuts,
// inserted and repeated pieces) from a fixed seed, so that the run is the
// same each time. Usage: ShortRun CORPUS_FOLDER COUNT. With PLUMET_FUZZ_LAST
// set, each input is first written to that file, so that the one that failed
// is there to be looked at.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {
void Run(const std::vector<std::uint8_t>& input) {
    if (const char* last = std::getenv("PLUMET_FUZZ_LAST")) {
        std::ofstream out(last, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(input.data()), std::streamsize(input.size()));
    }
    LLVMFuzzerTestOneInput(input.data(), input.size());
}
} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s CORPUS_FOLDER COUNT\n", argv[0]);
        return 2;
    }
    std::vector<std::vector<std::uint8_t>> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream in(entry.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    if (seeds.empty()) {
        std::fprintf(stderr, "no seeds in %s\n", argv[1]);
        return 2;
    }
    for (const auto& seed : seeds)
        Run(seed);
    std::mt19937 rng(12345);
    const long count = std::atol(argv[2]);
    for (long run = 0; run < count; ++run) {
        std::vector<std::uint8_t> input = seeds[rng() % seeds.size()];
        const int edits = 1 + int(rng() % 4);
        for (int e = 0; e < edits; ++e) {
            const std::size_t at = input.empty() ? 0 : rng() % input.size();
            switch (rng() % 4) {
            case 0:
                if (!input.empty()) input[at] ^= std::uint8_t(1u << (rng() % 8));
                break;
            case 1:
                if (!input.empty()) input[at] = std::uint8_t(rng());
                break;
            case 2:
                input.resize(at);
                break;
            default: {
                const std::size_t from = input.empty() ? 0 : rng() % input.size();
                const std::size_t n = std::min<std::size_t>(rng() % 64, input.size() - from);
                std::vector<std::uint8_t> piece(input.begin() + long(from),
                                                input.begin() + long(from + n));
                input.insert(input.begin() + long(at), piece.begin(), piece.end());
            }
            }
        }
        Run(input);
    }
    std::printf("%zu seeds and %ld mutations ran\n", seeds.size(), count);
    return 0;
}
