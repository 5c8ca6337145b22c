// The peer of the end-to-end benchmark, and the photographs it runs on.
//
//   photo_copy IN OUT            reads IN and writes OUT through the host's
//                                own image files, as plumet does around the
//                                filter: the cost of the files alone
//   photo_copy --make W H OUT    writes a photograph-like JPEG of W by H:
//                                soft light, shapes and grain, so that it
//                                decodes and encodes like a photograph
#include "hosts/HostImage.h"
#include "hosts/ImageFiles.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace plumet::hosts;

namespace {

std::uint32_t Hash(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t h = x * 0x8da6b343u ^ y * 0xd8163841u ^ seed * 0xcb1ab31fu;
    h ^= h >> 16;
    h *= 0x7feb352du;
    h ^= h >> 15;
    h *= 0x846ca68bu;
    h ^= h >> 16;
    return h;
}

// Smooth noise in [0, 1] on a lattice of `cell` pixels.
float ValueNoise(int x, int y, int cell, std::uint32_t seed) {
    const int cx = x / cell, cy = y / cell;
    const float fx = float(x % cell) / float(cell), fy = float(y % cell) / float(cell);
    const float sx = fx * fx * (3 - 2 * fx), sy = fy * fy * (3 - 2 * fy);
    auto at = [&](int i, int j) {
        return float(Hash(std::uint32_t(cx + i), std::uint32_t(cy + j), seed) >> 8) / 16777216.0f;
    };
    const float top = at(0, 0) + (at(1, 0) - at(0, 0)) * sx;
    const float bottom = at(0, 1) + (at(1, 1) - at(0, 1)) * sx;
    return top + (bottom - top) * sy;
}

bool MakePhoto(int width, int height, const std::string& path) {
    HostImage image;
    std::string error;
    if (!MakeImage(width, height, ColourModel::RGB, false, image, error)) {
        std::fprintf(stderr, "photo_copy: %s\n", error.c_str());
        return false;
    }
    const int scale = std::max(width, height);
    for (int y = 0; y < height; ++y) {
        std::uint8_t* p = image.Pixel(y, 0);
        const float v = float(y) / float(height);
        for (int x = 0; x < width; ++x, p += 3) {
            // a sky over ground, hills and foliage at several sizes, grain
            float shade = 0;
            float weight = 0.5f;
            for (int cell = scale / 6; cell >= 4; cell /= 3, weight *= 0.55f)
                shade += weight * (ValueNoise(x, y, cell, std::uint32_t(cell)) - 0.5f);
            const float ground = v > 0.45f + 0.1f * ValueNoise(x, 0, scale / 5, 7) ? 1.0f : 0.0f;
            const float grain = float(int(Hash(std::uint32_t(x), std::uint32_t(y), 99) & 15) - 8);
            const float r = ground ? 90 + 120 * shade + 40 * v : 120 + 60 * v + 40 * shade;
            const float g = ground ? 110 + 130 * shade : 160 + 50 * v + 30 * shade;
            const float b = ground ? 50 + 60 * shade : 230 - 40 * v + 20 * shade;
            p[0] = std::uint8_t(std::clamp(r + grain, 0.0f, 255.0f));
            p[1] = std::uint8_t(std::clamp(g + grain, 0.0f, 255.0f));
            p[2] = std::uint8_t(std::clamp(b + grain, 0.0f, 255.0f));
        }
    }
    if (!WriteImageFile(path, image, error)) {
        std::fprintf(stderr, "photo_copy: %s\n", error.c_str());
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 5 && std::string(argv[1]) == "--make")
        return MakePhoto(std::atoi(argv[2]), std::atoi(argv[3]), argv[4]) ? 0 : 1;
    if (argc != 3) {
        std::fprintf(stderr, "usage: photo_copy IN OUT | photo_copy --make W H OUT\n");
        return 2;
    }
    HostImage image;
    std::string error;
    if (!ReadImageFile(argv[1], image, error) || !WriteImageFile(argv[2], image, error)) {
        std::fprintf(stderr, "photo_copy: %s\n", error.c_str());
        return 1;
    }
    return 0;
}
