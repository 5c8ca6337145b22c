// The built-in textures are drawn here, from noise and simple shapes, each
// with a palette of 256 colours, always the same for the same id.
#include "resources/BuiltInBitmaps.h"

#include "resources/ToolBitmaps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {
using Palette = std::array<uint32_t, 256>;

uint32_t Rgb(double r, double g, double b) {
    auto c = [](double v) { return static_cast<uint32_t>(std::clamp(v, 0.0, 255.0) + 0.5); };
    return c(r) << 16 | c(g) << 8 | c(b);
}

double Mix(double a, double b, double t) {
    return a + (b - a) * t;
}

// Lattice value noise that tiles with the given period, so that a texture
// repeated across the letters shows no seam.
double Hash(int x, int y, int seed) {
    uint32_t h = static_cast<uint32_t>(x) * 374761393u + static_cast<uint32_t>(y) * 668265263u +
                 static_cast<uint32_t>(seed) * 2147483647u;
    h = (h ^ (h >> 13)) * 1274126177u;
    return ((h ^ (h >> 16)) & 0xFFFFFF) / double(0xFFFFFF);
}

double TiledNoise(double x, double y, int period, int seed) {
    const int x0 = static_cast<int>(std::floor(x)), y0 = static_cast<int>(std::floor(y));
    const double fx = x - x0, fy = y - y0;
    const double sx = fx * fx * (3 - 2 * fx), sy = fy * fy * (3 - 2 * fy);
    auto h = [&](int i, int j) {
        return Hash(((i % period) + period) % period, ((j % period) + period) % period, seed);
    };
    return Mix(Mix(h(x0, y0), h(x0 + 1, y0), sx), Mix(h(x0, y0 + 1), h(x0 + 1, y0 + 1), sx), sy);
}

// Fractal sum of octaves, 0..1.
double Fbm(double u, double v, int basePeriod, int octaves, int seed) {
    double sum = 0, amp = 0.5, norm = 0;
    int period = basePeriod;
    for (int o = 0; o < octaves; ++o, period *= 2, amp *= 0.5) {
        sum += amp * TiledNoise(u * period, v * period, period, seed + o);
        norm += amp;
    }
    return sum / norm;
}

uint8_t Level(double t) {
    return static_cast<uint8_t>(std::clamp(t, 0.0, 1.0) * 255.0 + 0.5);
}

PlatformBitmap Draw(int w, int h, const Palette& palette,
                    uint8_t (*index)(double, double, int, int)) {
    PlatformBitmap b;
    b.width = w;
    b.height = h;
    b.pixels.resize(std::size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            b.pixels[std::size_t(y) * w + x] = palette[index((x + 0.5) / w, (y + 0.5) / h, x, y)];
    return b;
}

// Clouds: white clouds drifting over a blue sky.
PlatformBitmap Clouds() {
    Palette p;
    for (int i = 0; i < 256; ++i) {
        const double t = i / 255.0;
        p[i] = Rgb(Mix(52, 255, t), Mix(110, 255, t), Mix(205, 255, t));
    }
    return Draw(256, 256, p, [](double u, double v, int, int) {
        const double n = Fbm(u, v, 2, 7, 11);
        return Level(std::pow(std::clamp((n - 0.42) / 0.4, 0.0, 1.0), 1.2));
    });
}

// Distance to the nearest of a tiled set of jittered spot centres, and the
// second nearest, for rosette spots.
void Spots(double u, double v, int cells, int seed, double* d1, double* d2) {
    *d1 = *d2 = 10;
    const double x = u * cells, y = v * cells;
    const int cx = static_cast<int>(x), cy = static_cast<int>(y);
    for (int j = -1; j <= 1; ++j)
        for (int i = -1; i <= 1; ++i) {
            const int gx = cx + i, gy = cy + j;
            const int wx = ((gx % cells) + cells) % cells, wy = ((gy % cells) + cells) % cells;
            const double px = gx + 0.2 + 0.6 * Hash(wx, wy, seed);
            const double py = gy + 0.2 + 0.6 * Hash(wx, wy, seed + 1);
            const double d = std::hypot((x - px) * (0.8 + 0.4 * Hash(wx, wy, seed + 2)), y - py);
            if (d < *d1) {
                *d2 = *d1;
                *d1 = d;
            } else if (d < *d2) {
                *d2 = d;
            }
        }
}

// Leopard skin: dark rosettes with a tawny centre on golden fur.
PlatformBitmap LeopardSkin() {
    Palette p;
    for (int i = 0; i < 256; ++i) {
        const double t = i / 255.0; // 0: black spot, 1: light fur
        const double r = t < 0.35 ? Mix(22, 95, t / 0.35) : Mix(95, 232, (t - 0.35) / 0.65);
        const double g = t < 0.35 ? Mix(14, 58, t / 0.35) : Mix(58, 180, (t - 0.35) / 0.65);
        const double b = t < 0.35 ? Mix(8, 25, t / 0.35) : Mix(25, 96, (t - 0.35) / 0.65);
        p[i] = Rgb(r, g, b);
    }
    return Draw(256, 256, p, [](double u, double v, int, int) {
        double d1, d2;
        const double wobble = 0.10 * (TiledNoise(u * 24, v * 24, 24, 5) - 0.5);
        Spots(u, v, 7, 21, &d1, &d2);
        d1 += wobble;
        const double fur = 0.75 + 0.25 * Fbm(u, v, 32, 2, 3);
        // The ring of a rosette is broken into a few dark blotches.
        const double breaks = TiledNoise(u * 40, v * 40, 40, 8);
        double t = fur;
        if (d1 < 0.31 && d1 > 0.16 && breaks > 0.32)
            t = 0.04 + 0.1 * fur; // dark blotches
        else if (d1 <= 0.16)
            t = 0.6 + 0.15 * fur; // tawny centre
        (void)d2;
        return Level(t);
    });
}

// Neon: glowing tubes of four colours bent over a dark wall.
PlatformBitmap Neon() {
    static const double hues[4][3] = {
        {255, 40, 160}, {40, 220, 255}, {120, 255, 60}, {255, 200, 40}};
    Palette p;
    for (int i = 0; i < 256; ++i) {
        const int hue = i / 64;
        const double t = (i % 64) / 63.0; // 0: dark wall, 1: white-hot core
        const double* c = hues[hue];
        if (t < 0.75)
            p[i] = Rgb(Mix(12, c[0], t / 0.75), Mix(8, c[1], t / 0.75), Mix(24, c[2], t / 0.75));
        else
            p[i] = Rgb(Mix(c[0], 255, (t - 0.75) / 0.25), Mix(c[1], 255, (t - 0.75) / 0.25),
                       Mix(c[2], 255, (t - 0.75) / 0.25));
    }
    return Draw(256, 256, p, [](double u, double v, int, int) {
        const double pi = 3.14159265358979;
        int best = 0;
        double glow = 0;
        for (int k = 0; k < 4; ++k) {
            // Each tube is a wave across the tile, periodic so that it tiles.
            const double centre = (k + 0.5) / 4 + 0.09 * std::sin(2 * pi * (u * (k + 1) + 0.3 * k));
            double d = std::abs(v - centre);
            d = std::min(d, 1 - d);
            const double g = std::exp(-d * d / 0.00035) + 0.35 * std::exp(-d / 0.035);
            if (g > glow) {
                glow = g;
                best = k;
            }
        }
        const double t = std::clamp(glow, 0.0, 1.0);
        return static_cast<uint8_t>(best * 64 + static_cast<int>(t * 63 + 0.5));
    });
}

// Sunflower: golden petals round a seeded brown heart on a leafy green.
PlatformBitmap Sunflower() {
    Palette p;
    for (int i = 0; i < 64; ++i) {
        const double t = i / 63.0;
        p[i] = Rgb(Mix(20, 95, t), Mix(60, 150, t), Mix(18, 45, t));        // leaves
        p[64 + i] = Rgb(Mix(200, 255, t), Mix(120, 215, t), Mix(0, 40, t)); // petals
        p[128 + i] = Rgb(Mix(40, 120, t), Mix(22, 72, t), Mix(8, 20, t));   // seeds
        p[192 + i] = Rgb(Mix(150, 230, t), Mix(70, 150, t), Mix(0, 20, t)); // petal shade
    }
    return Draw(142, 128, p, [](double u, double v, int x, int y) {
        const double pi = 3.14159265358979;
        const double dx = (x + 0.5 - 71) / 58.0, dy = (y + 0.5 - 64) / 58.0;
        const double r = std::hypot(dx, dy), a = std::atan2(dy, dx);
        const double heart = 0.38;
        if (r < heart) {
            // Seeds in the golden-angle spiral.
            const double n = r * r / (heart * heart) * 300;
            const double seedPhase = std::cos(n * 2.39996 * 7 - a * 21) * std::cos(n * 0.9);
            return static_cast<uint8_t>(
                128 + static_cast<int>(
                          std::clamp(0.45 + 0.4 * seedPhase - 0.3 * r / heart, 0.0, 1.0) * 63));
        }
        const double petal = 0.62 + 0.36 * std::pow(std::abs(std::cos(a * 8)), 0.6);
        if (r < petal) {
            const double along = (r - heart) / (petal - heart);
            const double vein = 0.5 + 0.5 * std::cos(a * 8 * 2);
            if (along < 0.2 || vein > 0.93)
                return static_cast<uint8_t>(192 + static_cast<int>((0.3 + 0.5 * along) * 63));
            return static_cast<uint8_t>(
                64 + static_cast<int>(std::clamp(0.5 + 0.5 * along, 0.0, 1.0) * 63));
        }
        const double leaf = Fbm(u, v, 4, 3, 9);
        (void)pi;
        return static_cast<uint8_t>(static_cast<int>(std::clamp(leaf * 1.2 - 0.1, 0.0, 1.0) * 63));
    });
}
} // namespace

bool LoadBitmapResource(int id, PlatformBitmap* bitmap) {
    switch (id) {
    case kBitmapClouds:
        *bitmap = Clouds();
        return true;
    case kBitmapLeopardSkin:
        *bitmap = LeopardSkin();
        return true;
    case kBitmapNeon:
        *bitmap = Neon();
        return true;
    case kBitmapSunflower:
        *bitmap = Sunflower();
        return true;
    default:
        return LoadToolBitmap(id, bitmap);
    }
}

const char* BuiltInTextureName(int id) {
    switch (id) {
    case kBitmapClouds:
        return "Clouds";
    case kBitmapLeopardSkin:
        return "Leopard Skin";
    case kBitmapNeon:
        return "Neon";
    case kBitmapSunflower:
        return "Sunflower";
    default:
        return nullptr;
    }
}
