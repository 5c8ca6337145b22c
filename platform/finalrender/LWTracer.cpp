// Tiles, samples and layers of one picture.
#include "platform/finalrender/LWTracer.h"

#include "platform/finalrender/LWRayCamera.h"
#include "platform/finalrender/LWShader.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <thread>

namespace lwsl {
namespace {

constexpr int kTile = 32;
constexpr int kMaxLayers = 32; // see-through surfaces followed along one ray

struct Premultiplied {
    float r, g, b, a;
};

Premultiplied unpack(std::uint32_t p) {
    constexpr float k = 1.0f / 255.0f;
    return {static_cast<float>((p >> 16) & 255) * k, static_cast<float>((p >> 8) & 255) * k,
            static_cast<float>(p & 255) * k, static_cast<float>(p >> 24) * k};
}

std::uint32_t pack(const Premultiplied& c) {
    auto q = [](float v) {
        return static_cast<std::uint32_t>(std::clamp(v, 0.0f, 1.0f) * 255.0f + 0.5f);
    };
    const std::uint32_t a = q(c.a);
    // premultiplied colour never exceeds its alpha, rounding included
    return (a << 24) | (std::min(q(c.r), a) << 16) | (std::min(q(c.g), a) << 8) |
           std::min(q(c.b), a);
}

// A fixed jitter for each pixel and sample, so that a picture renders the same
// every time.
float jitter(std::uint32_t x, std::uint32_t y, std::uint32_t s) {
    std::uint32_t h = x * 0x8da6b343u ^ y * 0xd8163841u ^ s * 0xcb1ab31fu;
    h ^= h >> 16;
    h *= 0x7feb352du;
    h ^= h >> 15;
    h *= 0x846ca68bu;
    h ^= h >> 16;
    return static_cast<float>(h >> 8) * (1.0f / 16777216.0f);
}

class Picture {
  public:
    Picture(const Scene& scene, const TQ3XPassInfo& pass, const std::vector<TQ3XLight>& lights,
            const TraceOptions& options)
        : scene(scene), pass(pass), options(options), shader(scene, lights, options.shadows) {}

    bool setUp() {
        const TQ3Pixmap& pm = pass.pixmap;
        if (!pm.image || pm.pixelSize != 32 || pm.width == 0 || pm.height == 0 ||
            pm.rowBytes < static_cast<std::uint64_t>(pm.width) * 4)
            return false;
        auto lo = [](float v, TQ3Uns32 n) {
            return std::isfinite(v) ? std::clamp(static_cast<long>(std::floor(v)), 0L, long(n))
                                    : 0L;
        };
        auto hi = [](float v, long from, TQ3Uns32 n) {
            return std::isfinite(v) ? std::clamp(static_cast<long>(std::ceil(v)), from, long(n))
                                    : long(n);
        };
        x0 = lo(pass.window.min.x, pm.width);
        y0 = lo(pass.window.min.y, pm.height);
        x1 = hi(pass.window.max.x, x0, pm.width);
        y1 = hi(pass.window.max.y, y0, pm.height);
        dx = std::isfinite(pass.window.min.x) ? pass.window.min.x - x0 : 0;
        dy = std::isfinite(pass.window.min.y) ? pass.window.min.y - y0 : 0;
        haveRays = camera.setUp(pass);
        const TQ3DrawContextData& dc = pass.drawContext;
        clearIt = dc.clearImageMethod == kQ3ClearMethodWithColor;
        const float ca = std::isfinite(dc.clearImageColor.a)
                             ? std::clamp(dc.clearImageColor.a, 0.0f, 1.0f)
                             : 0.0f;
        auto channel = [&](float v) {
            return std::isfinite(v) ? std::clamp(v, 0.0f, 1.0f) * ca : 0.0f;
        };
        // through the same 8-bit step as a cleared pixmap, so that empty
        // pixels hold exactly the clear colour
        clearWord = pack({channel(dc.clearImageColor.r), channel(dc.clearImageColor.g),
                          channel(dc.clearImageColor.b), ca});
        writeAlpha = pm.pixelType == kQ3PixelTypeARGB32;
        return true;
    }

    void run(TraceFigures& figures) {
        const long W = x1 - x0, H = y1 - y0;
        if (W <= 0 || H <= 0) return;
        const long tilesX = (W + kTile - 1) / kTile, tilesY = (H + kTile - 1) / kTile;
        const long tiles = tilesX * tilesY;
        unsigned workers = std::clamp(std::thread::hardware_concurrency(), 1u, 64u);
        workers = static_cast<unsigned>(std::min<long>(workers, tiles));
        std::atomic<long> next{0};
        std::vector<ShadeCounters> counters(workers);
        std::vector<std::uint64_t> primary(workers, 0);
        auto work = [&](unsigned w) {
            for (long t = next++; t < tiles; t = next++) {
                const long tx = x0 + (t % tilesX) * kTile, ty = y0 + (t / tilesX) * kTile;
                for (long y = ty; y < std::min(ty + kTile, y1); ++y)
                    for (long x = tx; x < std::min(tx + kTile, x1); ++x)
                        pixel(x, y, counters[w], primary[w]);
            }
        };
        std::vector<std::thread> threads;
        threads.reserve(workers);
        unsigned started = 1;
        for (unsigned w = 1; w < workers; ++w) {
            try {
                threads.emplace_back(work, w);
                ++started;
            } catch (...) {
                break; // fewer threads: the others take the tiles
            }
        }
        work(0);
        for (std::thread& t : threads)
            t.join();
        figures.threads = started;
        for (unsigned w = 0; w < workers; ++w) {
            figures.primaryRays += primary[w];
            figures.shadowRays += counters[w].shadowRays;
        }
    }

  private:
    std::uint32_t* at(long x, long y) const {
        return reinterpret_cast<std::uint32_t*>(static_cast<unsigned char*>(pass.pixmap.image) +
                                                static_cast<std::size_t>(y) *
                                                    pass.pixmap.rowBytes) +
               x;
    }

    Premultiplied sample(const Ray& ray, const Premultiplied& bg, ShadeCounters& counters,
                         std::uint64_t& primary) const {
        float r = 0, g = 0, b = 0, a = 0;
        bool covered = false;
        float tnear = 0;
        for (int layer = 0; layer < kMaxLayers; ++layer) {
            Hit hit;
            ++primary;
            if (!scene.nearest(ray.org, ray.dir, tnear, ray.tfar, hit)) break;
            covered = true;
            const Shaded s = shader.shade(hit, ray.org, ray.dir, counters);
            const float k = (1 - a) * s.a;
            r += k * s.r;
            g += k * s.g;
            b += k * s.b;
            a += k;
            if (a >= 0.999f) break;
            tnear = hit.t + std::max(scene.epsilon(), hit.t * 1e-6f);
        }
        const float rest = 1 - a;
        if (options.transparencyAffectsAlpha || !covered)
            return {r + rest * bg.r, g + rest * bg.g, b + rest * bg.b, a + rest * bg.a};
        // coverage alone: a surface makes the sample opaque, and what is
        // behind a see-through surface is the background's colour
        return {r + rest * bg.r, g + rest * bg.g, b + rest * bg.b, 1.0f};
    }

    void pixel(long x, long y, ShadeCounters& counters, std::uint64_t& primary) const {
        std::uint32_t* p = at(x, y);
        const std::uint32_t old = *p;
        const Premultiplied bg =
            unpack(clearIt ? clearWord : (writeAlpha ? old : old | 0xFF000000u));
        const unsigned n = std::clamp(options.samplesPerSide, 1u, 8u);
        Premultiplied sum{0, 0, 0, 0};
        for (unsigned s = 0; s < n * n; ++s) {
            float jx = 0.5f, jy = 0.5f;
            if (n > 1) {
                jx = (static_cast<float>(s % n) + jitter(x, y, 2 * s)) / static_cast<float>(n);
                jy = (static_cast<float>(s / n) + jitter(x, y, 2 * s + 1)) / static_cast<float>(n);
            }
            Ray ray;
            Premultiplied c = bg;
            if (haveRays && camera.rayAt(static_cast<double>(x) + dx + jx,
                                         static_cast<double>(y) + dy + jy, ray))
                c = sample(ray, bg, counters, primary);
            sum.r += c.r;
            sum.g += c.g;
            sum.b += c.b;
            sum.a += c.a;
        }
        const float k = 1.0f / static_cast<float>(n * n);
        std::uint32_t out = pack({sum.r * k, sum.g * k, sum.b * k, sum.a * k});
        *p = writeAlpha ? out : (out | 0xFF000000u);
    }

    const Scene& scene;
    const TQ3XPassInfo& pass;
    const TraceOptions& options;
    Shader shader;
    RayCamera camera;
    bool haveRays = false, clearIt = true, writeAlpha = true;
    std::uint32_t clearWord = 0;
    long x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    double dx = 0, dy = 0;
};

} // namespace

bool trace(const Scene& scene, const TQ3XPassInfo& pass, const std::vector<TQ3XLight>& lights,
           const TraceOptions& options, TraceFigures& figures) {
    Picture picture(scene, pass, lights, options);
    if (!picture.setUp()) return false;
    picture.run(figures);
    return true;
}

} // namespace lwsl
