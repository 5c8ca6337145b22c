// Tiles, samples and layers of one picture.
#include "platform/finalrender/LWTracer.h"

#include "platform/finalrender/LWRayCamera.h"
#include "platform/finalrender/LWShader.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <thread>

namespace lwsl {
namespace {

constexpr int kTileWidth = 128, kTileHeight = 8; // runs of 128 pixels go to Embree together
constexpr int kMaxLayers = 32;                   // see-through surfaces followed along one ray

struct ShadeCounters {
    std::uint64_t shadowRays = 0;
};

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
        if (!(v > 0)) return 0u; // NaN too
        return static_cast<std::uint32_t>(std::min(v, 1.0f) * 255.0f + 0.5f);
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
        // Samples outside the window rectangle of the scene's box meet
        // nothing: they take the background without a ray. A pixel's margin
        // keeps the test on the safe side of rounding.
        float boxLo[3], boxHi[3];
        culled = haveRays && scene.bounds(boxLo, boxHi) &&
                 camera.windowBounds(boxLo, boxHi, sceneX0, sceneY0, sceneX1, sceneY1);
        sceneX0 -= 1;
        sceneY0 -= 1;
        sceneX1 += 1;
        sceneY1 += 1;
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
        const long tilesX = (W + kTileWidth - 1) / kTileWidth,
                   tilesY = (H + kTileHeight - 1) / kTileHeight;
        const long tiles = tilesX * tilesY;
        unsigned workers = std::clamp(std::thread::hardware_concurrency(), 1u, 64u);
        workers = static_cast<unsigned>(std::min<long>(workers, tiles));
        std::atomic<long> next{0};
        std::vector<ShadeCounters> counters(workers);
        std::vector<std::uint64_t> primary(workers, 0);
        auto work = [&](unsigned w) {
            RunBuffers buffers;
            for (long t = next++; t < tiles; t = next++) {
                const long tx = x0 + (t % tilesX) * kTileWidth,
                           ty = y0 + (t / tilesX) * kTileHeight;
                for (long y = ty; y < std::min(ty + kTileHeight, y1); ++y)
                    run(y, tx, std::min(tx + kTileWidth, x1), buffers, counters[w], primary[w]);
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

    // The samples of one run of pixels in a row, traced together.
    struct RunBuffers {
        std::vector<Ray> rays;
        std::vector<RTCRayHit> hits;
        std::vector<long> pixel; // of each ray, from the run's start
        std::vector<Surface> surfaces;
        std::vector<int> surfaceOf; // of each ray, or -1
        std::vector<RTCRay> shadow;
        std::vector<std::uint32_t> shadowOf; // surface * lights + light
        std::vector<float> reach, passed;
        std::vector<Premultiplied> sums, background;
    };

    // Follows one ray on past its first surface, whose colour is already in
    // (r, g, b, a), through further see-through surfaces.
    void continueRay(const Ray& ray, float tnear, float& r, float& g, float& b, float& a,
                     ShadeCounters& counters, std::uint64_t& primary) const {
        for (int layer = 1; layer < kMaxLayers && a < 0.999f; ++layer) {
            Hit hit;
            ++primary;
            if (!scene.nearest(ray.org, ray.dir, tnear, ray.tfar, hit)) break;
            const Shaded s = shader.shade(hit, ray.org, ray.dir, counters.shadowRays);
            const float k = (1 - a) * s.a;
            r += k * s.r;
            g += k * s.g;
            b += k * s.b;
            a += k;
            tnear = hit.t + std::max(scene.epsilon(), hit.t * 1e-6f);
        }
    }

    Premultiplied over(float r, float g, float b, float a, bool covered,
                       const Premultiplied& bg) const {
        const float rest = 1 - a;
        if (options.transparencyAffectsAlpha || !covered)
            return {r + rest * bg.r, g + rest * bg.g, b + rest * bg.b, a + rest * bg.a};
        // coverage alone: a surface makes the sample opaque, and what is
        // behind a see-through surface is the background's colour
        return {r + rest * bg.r, g + rest * bg.g, b + rest * bg.b, 1.0f};
    }

    bool outsideScene(double x, double y) const {
        return culled && (x < sceneX0 || x > sceneX1 || y < sceneY0 || y > sceneY1);
    }

    void run(long y, long xa, long xb, RunBuffers& w, ShadeCounters& counters,
             std::uint64_t& primary) const {
        const unsigned n = std::clamp(options.samplesPerSide, 1u, 8u);
        const long count = xb - xa;
        w.rays.clear();
        w.hits.clear();
        w.pixel.clear();
        w.sums.assign(static_cast<std::size_t>(count), Premultiplied{0, 0, 0, 0});
        std::vector<Premultiplied>& bg = w.background;
        bg.resize(static_cast<std::size_t>(count));
        for (long i = 0; i < count; ++i) {
            const std::uint32_t old = *at(xa + i, y);
            bg[i] = unpack(clearIt ? clearWord : (writeAlpha ? old : old | 0xFF000000u));
            for (unsigned s = 0; s < n * n; ++s) {
                float jx = 0.5f, jy = 0.5f;
                if (n > 1) {
                    const auto x = static_cast<std::uint32_t>(xa + i);
                    const auto yy = static_cast<std::uint32_t>(y);
                    jx = (static_cast<float>(s % n) + jitter(x, yy, 2 * s)) / static_cast<float>(n);
                    jy = (static_cast<float>(s / n) + jitter(x, yy, 2 * s + 1)) /
                         static_cast<float>(n);
                }
                Ray ray;
                const double wx = static_cast<double>(xa + i) + dx + jx,
                             wy = static_cast<double>(y) + dy + jy;
                if (!haveRays || outsideScene(wx, wy) || !camera.rayAt(wx, wy, ray)) {
                    Premultiplied& sum = w.sums[i];
                    sum = {sum.r + bg[i].r, sum.g + bg[i].g, sum.b + bg[i].b, sum.a + bg[i].a};
                    continue;
                }
                RTCRayHit rh;
                rh.ray.org_x = ray.org[0];
                rh.ray.org_y = ray.org[1];
                rh.ray.org_z = ray.org[2];
                rh.ray.dir_x = ray.dir[0];
                rh.ray.dir_y = ray.dir[1];
                rh.ray.dir_z = ray.dir[2];
                rh.ray.tnear = 0;
                rh.ray.tfar = ray.tfar;
                rh.ray.time = 0;
                rh.ray.mask = 0xFFFFFFFFu;
                rh.ray.id = 0;
                rh.ray.flags = 0;
                w.rays.push_back(ray);
                w.hits.push_back(rh);
                w.pixel.push_back(i);
            }
        }
        const auto m = static_cast<unsigned>(w.hits.size());
        scene.nearestMany(w.hits.data(), m);
        primary += m;

        // the first surface of every ray, and the shadow rays they need
        const std::size_t nl = shader.lightCount();
        w.surfaces.clear();
        w.surfaceOf.assign(m, -1);
        w.shadow.clear();
        w.shadowOf.clear();
        w.reach.clear();
        for (unsigned k = 0; k < m; ++k) {
            Hit hit;
            if (!scene.hitOf(w.hits[k], hit)) continue;
            w.surfaceOf[k] = static_cast<int>(w.surfaces.size());
            w.surfaces.emplace_back();
            shader.prepare(hit, w.rays[k].org, w.rays[k].dir, w.surfaces.back());
        }
        // shadow rays light by light, so that rays that run side by side are
        // traced together
        w.reach.resize(w.surfaces.size() * nl);
        for (std::size_t li = 0; li < nl; ++li)
            for (std::size_t si = 0; si < w.surfaces.size(); ++si) {
                RTCRay sr;
                const float r = shader.shadowRay(w.surfaces[si], li, sr);
                if (r < 0) {
                    w.shadowOf.push_back(static_cast<std::uint32_t>(si * nl + li));
                    w.shadow.push_back(sr);
                }
                w.reach[si * nl + li] = r;
            }
        w.passed.resize(w.shadow.size());
        scene.transmissionMany(w.shadow.data(), w.passed.data(),
                               static_cast<unsigned>(w.shadow.size()));
        counters.shadowRays += w.shadow.size();
        for (std::size_t j = 0; j < w.shadow.size(); ++j)
            w.reach[w.shadowOf[j]] = w.passed[j];

        for (unsigned k = 0; k < m; ++k) {
            Premultiplied& sum = w.sums[w.pixel[k]];
            const Premultiplied& back = bg[w.pixel[k]];
            Premultiplied c = back;
            if (w.surfaceOf[k] >= 0) {
                const auto si = static_cast<std::size_t>(w.surfaceOf[k]);
                const Shaded s = shader.finish(w.surfaces[si], w.reach.data() + si * nl);
                float r = s.a * s.r, g = s.a * s.g, b = s.a * s.b, a = s.a;
                if (a < 0.999f) {
                    const float t = w.hits[k].ray.tfar;
                    continueRay(w.rays[k], t + std::max(scene.epsilon(), t * 1e-6f), r, g, b, a,
                                counters, primary);
                }
                c = over(r, g, b, a, true, back);
            }
            sum = {sum.r + c.r, sum.g + c.g, sum.b + c.b, sum.a + c.a};
        }
        const float scale = 1.0f / static_cast<float>(n * n);
        for (long i = 0; i < count; ++i) {
            const Premultiplied& sum = w.sums[i];
            const std::uint32_t out =
                pack({sum.r * scale, sum.g * scale, sum.b * scale, sum.a * scale});
            *at(xa + i, y) = writeAlpha ? out : (out | 0xFF000000u);
        }
    }

    const Scene& scene;
    const TQ3XPassInfo& pass;
    const TraceOptions& options;
    Shader shader;
    RayCamera camera;
    bool haveRays = false, clearIt = true, writeAlpha = true;
    bool culled = false; // whether the rectangle below bounds the scene
    double sceneX0 = 0, sceneY0 = 0, sceneX1 = 0, sceneY1 = 0;
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
