#include "bench/qd3d/TextMesh.h"

#include <cmath>

namespace {

void addVertex(TextMesh& m, float x, float y, float z, float nx, float ny, float nz) {
    m.positions.insert(m.positions.end(), {x, y, z});
    m.normals.insert(m.normals.end(), {nx, ny, nz});
}

// A band of quads between two rows of `count` + 1 vertices, split as the
// library splits a two-row grid.
void addBand(TextMesh& m, std::uint32_t row0, std::uint32_t row1, int count) {
    for (int c = 0; c < count; ++c) {
        std::uint32_t a = row0 + c, b = row0 + c + 1, d = row1 + c, e = row1 + c + 1;
        if (c % 2 == 0)
            m.indices.insert(m.indices.end(), {a, d, e, a, e, b});
        else
            m.indices.insert(m.indices.end(), {a, d, b, b, d, e});
    }
}

} // namespace

TextMesh makeTextMesh(int letters, int n) {
    TextMesh m;
    const float pi = 3.14159265f;
    for (int k = 0; k < letters; ++k) {
        TextMesh::Letter l;
        l.depth = 0.3f;
        int col = k % 8, row = k / 8;
        float cx = -3.5f + col * 1.0f, cy = 2.0f - row * 1.0f;
        // a rounded, wobbly letter body with a counter
        float squash = 0.8f + 0.2f * std::sin(k * 1.7f);
        for (int i = 0; i <= n; ++i) {
            float t = 2 * pi * (i % n) / n;
            float wob = 1 + 0.12f * std::sin(3 * t + k);
            float ox = cx + 0.42f * squash * wob * std::cos(t), oy = cy + 0.42f * wob * std::sin(t);
            float ix = cx + 0.2f * squash * std::cos(t), iy = cy + 0.22f * std::sin(t);
            l.outer.insert(l.outer.end(), {ox, oy});
            l.inner.insert(l.inner.end(), {ix, iy});
        }
        // flat arrays: front face, back face, outer side, inner side
        float z0 = l.depth / 2, z1 = -l.depth / 2;
        auto base = [&] { return static_cast<std::uint32_t>(m.positions.size() / 3); };
        std::uint32_t f0 = base();
        for (int i = 0; i <= n; ++i)
            addVertex(m, l.outer[2 * i], l.outer[2 * i + 1], z0, 0, 0, 1);
        std::uint32_t f1 = base();
        for (int i = 0; i <= n; ++i)
            addVertex(m, l.inner[2 * i], l.inner[2 * i + 1], z0, 0, 0, 1);
        addBand(m, f1, f0, n); // rows inner then outer: counter-clockwise from +z
        std::uint32_t b0 = base();
        for (int i = 0; i <= n; ++i)
            addVertex(m, l.inner[2 * i], l.inner[2 * i + 1], z1, 0, 0, -1);
        std::uint32_t b1 = base();
        for (int i = 0; i <= n; ++i)
            addVertex(m, l.outer[2 * i], l.outer[2 * i + 1], z1, 0, 0, -1);
        addBand(m, b1, b0, n);
        auto sideNormal = [&](const std::vector<float>& pts, int i, float sign) {
            int a = (i + n - 1) % n, b = (i + 1) % n;
            float dx = pts[2 * b] - pts[2 * a], dy = pts[2 * b + 1] - pts[2 * a + 1];
            float len = std::sqrt(dx * dx + dy * dy);
            return std::pair<float, float>{sign * dy / len, -sign * dx / len};
        };
        std::uint32_t s0 = base();
        for (int i = 0; i <= n; ++i) {
            auto [nx, ny] = sideNormal(l.outer, i % n, 1);
            addVertex(m, l.outer[2 * i], l.outer[2 * i + 1], z1, nx, ny, 0);
        }
        std::uint32_t s1 = base();
        for (int i = 0; i <= n; ++i) {
            auto [nx, ny] = sideNormal(l.outer, i % n, 1);
            addVertex(m, l.outer[2 * i], l.outer[2 * i + 1], z0, nx, ny, 0);
        }
        addBand(m, s1, s0, n);
        std::uint32_t h0 = base();
        for (int i = 0; i <= n; ++i) {
            auto [nx, ny] = sideNormal(l.inner, i % n, -1);
            addVertex(m, l.inner[2 * i], l.inner[2 * i + 1], z0, nx, ny, 0);
        }
        std::uint32_t h1 = base();
        for (int i = 0; i <= n; ++i) {
            auto [nx, ny] = sideNormal(l.inner, i % n, -1);
            addVertex(m, l.inner[2 * i], l.inner[2 * i + 1], z1, nx, ny, 0);
        }
        addBand(m, h1, h0, n);
        m.letters.push_back(std::move(l));
    }
    return m;
}
