// A stand-in for a line of extruded text: 40 ring-shaped letters with holes,
// each an outline of n points extruded along z, about 50,000 triangles.
#pragma once

#include <cstdint>
#include <vector>

struct TextMesh {
    struct Letter {
        std::vector<float> outer, inner; // x, y pairs, counter-clockwise outer
        float depth;
    };
    std::vector<Letter> letters;
    // The same triangles as flat arrays: positions, normals, three indices each.
    std::vector<float> positions, normals;
    std::vector<std::uint32_t> indices;
};

TextMesh makeTextMesh(int letters = 40, int pointsPerOutline = 156);
