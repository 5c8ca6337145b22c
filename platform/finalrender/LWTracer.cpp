// Tiles, samples and layers of one picture.
#include "platform/finalrender/LWTracer.h"

#include "platform/finalrender/LWRayCamera.h"
#include "platform/finalrender/LWShader.h"
#include "platform/finalrender/LWTilePlan.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <memory>
#include <new>
#include <thread>

namespace lwsl {
namespace {

constexpr int kMaxLayers = 32; // see-through surfaces followed along one ray
// Samples of a pixel that differ by more than this in a channel (of 1) ask
// for more: a step of about eight levels of 255.
constexpr float kDisagreement = 0.03f;
constexpr auto kReportEvery = std::chrono::milliseconds(100);

// A premultiplied colour, red, green, blue and alpha, all four worked on at
// once.
using Premultiplied = float __attribute__((vector_size(16)));
constexpr int R = 0, G = 1, B = 2, A = 3;

Premultiplied unpack(std::uint32_t p) {
    constexpr float k = 1.0f / 255.0f;
    return Premultiplied{static_cast<float>((p >> 16) & 255), static_cast<float>((p >> 8) & 255),
                         static_cast<float>(p & 255), static_cast<float>(p >> 24)} *
           k;
}

std::uint32_t pack(const Premultiplied& c) {
    auto q = [](float v) {
        if (!(v > 0)) return 0u; // NaN too
        return static_cast<std::uint32_t>(std::min(v, 1.0f) * 255.0f + 0.5f);
    };
    const std::uint32_t a = q(c[A]);
    // premultiplied colour never exceeds its alpha, rounding included
    return (a << 24) | (std::min(q(c[R]), a) << 16) | (std::min(q(c[G]), a) << 8) |
           std::min(q(c[B]), a);
}

// Channel by channel, the lower and the higher of two colours.
Premultiplied lower(const Premultiplied& x, const Premultiplied& y) {
    return y < x ? y : x;
}
Premultiplied higher(const Premultiplied& x, const Premultiplied& y) {
    return x < y ? y : x;
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

// Where the samples of a pixel lie. Fixed: n by n cells, one jittered
// sample in each. Adaptive: a grid of m = 2n cells a side, one sample in
// each cell at a fixed place, so that no two of the m * m samples share a
// row or a column of the finer m * m grid (an edge at any angle then sees as
// many steps of coverage as there are samples, with no noise from pixel to
// pixel). The first n * n samples take one cell in each 2 by 2 block, no two
// in the same row or column of cells; a pixel whose first samples disagree
// gets the remaining cells.
class SamplePattern {
  public:
    SamplePattern(unsigned perSide, bool adaptive)
        : n(std::clamp(perSide, 1u, 8u)), refine(adaptive && n > 1), m(refine ? 2 * n : n) {
        // the cells in the order they are traced, and where each lies, made
        // once: a pixel's samples then cost no division
        for (unsigned k = 0; k < n * n; ++k)
            first.push_back(
                refine ? (2 * (k / n) + ((k % n) & 1)) * m + 2 * (k % n) + 1 - ((k / n) & 1) : k);
        for (unsigned cell = 0; cell < m * m; ++cell) {
            const unsigned cx = cell % m, cy = cell / m, i = cx / 2, j = cy / 2;
            column.push_back(cx);
            row.push_back(cy);
            const bool isFirst = !refine || (cx % 2 == 1 - (j & 1) && cy % 2 == (i & 1));
            if (!isFirst) rest.push_back(cell);
            const auto fine = static_cast<float>(m * m);
            fixedX.push_back((static_cast<float>(m * cx + cy) + 0.5f) / fine);
            fixedY.push_back((static_cast<float>(m * cy + cx) + 0.5f) / fine);
        }
    }

    bool refines() const { return refine; }
    // The cells of a pixel's first samples, and of the samples it gets when
    // they disagree.
    const std::vector<unsigned>& firstCells() const { return first; }
    const std::vector<unsigned>& restCells() const { return rest; }
    // The place of a cell's sample in pixel (x, y), 0 to 1 each way.
    void place(unsigned cell, std::uint32_t x, std::uint32_t y, float& jx, float& jy) const {
        if (refine) {
            jx = fixedX[cell];
            jy = fixedY[cell];
        } else if (m == 1) {
            jx = jy = 0.5f;
        } else {
            const auto cells = static_cast<float>(m);
            jx = (static_cast<float>(column[cell]) + jitter(x, y, 2 * cell)) / cells;
            jy = (static_cast<float>(row[cell]) + jitter(x, y, 2 * cell + 1)) / cells;
        }
    }

  private:
    unsigned n;
    bool refine;
    unsigned m;
    std::vector<unsigned> first, rest, column, row;
    std::vector<float> fixedX, fixedY; // of the adaptive pattern
};

// Camera rays as an Embree stream: the rays themselves come from the camera
// (Rays), and this holds the rest, with the hits Embree fills in.
struct CameraStream {
    void resize(std::size_t n) {
        for (std::vector<float>* v : {&tnear, &t, &ngx, &ngy, &ngz, &u, &v})
            if (v->size() < n) v->resize(n);
        for (std::vector<unsigned>* v : {&primID, &geomID, &instID})
            if (v->size() < n) v->resize(n);
        constants.resize(n);
    }
    RTCRayHitNp over(Rays& r) {
        return {{r.ox.data(), r.oy.data(), r.oz.data(), tnear.data(), r.dx.data(), r.dy.data(),
                 r.dz.data(), constants.time.data(), t.data(), constants.mask.data(),
                 constants.id.data(), constants.flags.data()},
                {ngx.data(),
                 ngy.data(),
                 ngz.data(),
                 u.data(),
                 v.data(),
                 primID.data(),
                 geomID.data(),
                 {instID.data()}}};
    }
    std::vector<float> tnear;
    std::vector<float> t; // the ray's end, then where it hit
    std::vector<float> ngx, ngy, ngz, u, v;
    std::vector<unsigned> primID, geomID, instID;
    StreamConstants constants;
};

// At least n elements at the front of v, which keeps what it holds beyond.
template <typename T> T* room(std::vector<T>& v, std::size_t n) {
    if (v.size() < n) v.resize(n);
    return v.data();
}

struct WorkerFigures {
    std::uint64_t primary = 0, shadow = 0, refined = 0;
};

class Picture {
  public:
    Picture(const Scene& scene, const TQ3XPassInfo& pass, const std::vector<TQ3XLight>& lights,
            const TraceOptions& options, RayTap* tap)
        : scene(scene), pass(pass), options(options), shader(scene, lights, options.shadows),
          pattern(options.samplesPerSide, options.adaptive), tap(tap) {}

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
        const long x0 = lo(pass.window.min.x, pm.width);
        const long y0 = lo(pass.window.min.y, pm.height);
        const long x1 = hi(pass.window.max.x, x0, pm.width);
        const long y1 = hi(pass.window.max.y, y0, pm.height);
        dx = std::isfinite(pass.window.min.x) ? pass.window.min.x - x0 : 0;
        dy = std::isfinite(pass.window.min.y) ? pass.window.min.y - y0 : 0;
        const bool haveRays = camera.setUp(pass);
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
        clearWord = pack(Premultiplied{channel(dc.clearImageColor.r), channel(dc.clearImageColor.g),
                                       channel(dc.clearImageColor.b), ca});
        writeAlpha = pm.pixelType == kQ3PixelTypeARGB32;
        tiles.plan(scene, haveRays ? &camera : nullptr, x0, y0, x1, y1, dx, dy);
        return true;
    }

    TraceResult run(TraceFigures& figures, const TraceProgress& progress) {
        const long count = tiles.count();
        if (count == 0) return TraceResult::Done;
        const std::uint64_t total = tiles.tracedPixels();
        figures.tracedPixels = total;
        unsigned workers = std::clamp(std::thread::hardware_concurrency(), 1u, 64u);
        workers = static_cast<unsigned>(std::min<long>(workers, count));
        std::atomic<long> next{0};
        std::atomic<bool> stop{false};
        std::atomic<std::uint64_t> done{0};
        std::vector<WorkerFigures> counts(workers);
        if (tap) tap->begin(scene.handle(), workers);
        auto work = [&](unsigned w) {
            RunBuffers buffers;
            for (long t = next++; t < count && !stop; t = next++) {
                const Tile tile = tiles.tile(t);
                const bool any = tile.from < tile.to;
                const long from = any ? tile.from : tile.x1, to = any ? tile.to : tile.x1;
                for (long y = tile.y0; y < tile.y1; ++y) {
                    fillBackground(y, tile.x0, from);
                    if (any) run(y, from, to, w, buffers, counts[w]);
                    fillBackground(y, to, tile.x1);
                }
                if (any) done += std::uint64_t(to - from) * std::uint64_t(tile.y1 - tile.y0);
                if (w == 0 && progress) report(progress, done, total, stop);
            }
        };
        // memory that runs out in a worker stops them all; the picture then
        // fails once every thread has ended
        std::atomic<bool> failed{false};
        auto guarded = [&](unsigned w) {
            try {
                work(w);
            } catch (...) {
                failed = true;
                stop = true;
            }
        };
        if (progress && !progress(0, total)) return TraceResult::Stopped;
        std::vector<std::thread> threads;
        threads.reserve(workers);
        unsigned started = 1;
        for (unsigned w = 1; w < workers; ++w) {
            try {
                threads.emplace_back(guarded, w);
                ++started;
            } catch (...) {
                break; // fewer threads: the others take the tiles
            }
        }
        guarded(0);
        // the calling thread has no tiles left: it tells the progress while
        // the others finish theirs
        try {
            while (progress && !stop && done < total) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                report(progress, done, total, stop);
            }
        } catch (...) {
            failed = true;
            stop = true;
        }
        for (std::thread& t : threads)
            t.join();
        if (failed) throw std::bad_alloc();
        figures.threads = started;
        for (const WorkerFigures& c : counts) {
            figures.primaryRays += c.primary;
            figures.shadowRays += c.shadow;
            figures.refinedPixels += c.refined;
        }
        if (stop) return TraceResult::Stopped;
        if (progress && !progress(total, total)) return TraceResult::Stopped;
        return TraceResult::Done;
    }

  private:
    void report(const TraceProgress& progress, const std::atomic<std::uint64_t>& done,
                std::uint64_t total, std::atomic<bool>& stop) {
        const auto now = std::chrono::steady_clock::now();
        if (now - lastReport < kReportEvery) return;
        lastReport = now;
        if (!progress(std::min<std::uint64_t>(done, total), total)) stop = true;
    }

    std::uint32_t* at(long x, long y) const {
        return reinterpret_cast<std::uint32_t*>(static_cast<unsigned char*>(pass.pixmap.image) +
                                                static_cast<std::size_t>(y) *
                                                    pass.pixmap.rowBytes) +
               x;
    }

    // What lies behind a pixel: the clear colour, or what the pixmap holds.
    Premultiplied background(std::uint32_t old) const {
        return unpack(clearIt ? clearWord : (writeAlpha ? old : old | 0xFF000000u));
    }

    std::uint32_t word(const Premultiplied& c) const {
        const std::uint32_t out = pack(c);
        return writeAlpha ? out : (out | 0xFF000000u);
    }

    // Pixels where no ray can meet the scene: what a ray that misses gives.
    void fillBackground(long y, long xa, long xb) const {
        if (xa >= xb) return;
        std::uint32_t* p = at(xa, y);
        if (clearIt) {
            std::fill(p, p + (xb - xa), word(unpack(clearWord)));
            return;
        }
        for (long x = xa; x < xb; ++x, ++p)
            *p = word(background(*p));
    }

    // One sample of a pixel of a run: the pixel from the run's start, and
    // the cell of the pattern.
    struct Sample {
        long pixel;
        unsigned cell;
    };

    // The samples of one run of pixels in a row, traced together.
    struct RunBuffers {
        std::vector<Sample> samples;
        Rays rays; // of each sample
        CameraStream stream;
        std::unique_ptr<Surfaces> surfaces = std::make_unique<Surfaces>();
        // a ray on behind a see-through surface
        Rays oneRay;
        CameraStream oneStream;
        std::unique_ptr<Surfaces> one; // made when first needed
        std::vector<Premultiplied> sums, background, lo, hi;
        std::vector<unsigned> taken; // samples of each pixel
    };

    // Follows ray i on past its first surface, whose colour is already in
    // (r, g, b, a), through further see-through surfaces.
    void continueRay(const Rays& ray, std::size_t i, float tnear, float& r, float& g, float& b,
                     float& a, unsigned worker, RunBuffers& w, WorkerFigures& counts) const {
        Rays& one = w.oneRay;
        CameraStream& stream = w.oneStream;
        one.resize(1);
        stream.resize(1);
        one.ox[0] = ray.ox[i];
        one.oy[0] = ray.oy[i];
        one.oz[0] = ray.oz[i];
        one.dx[0] = ray.dx[i];
        one.dy[0] = ray.dy[i];
        one.dz[0] = ray.dz[i];
        const RTCRayHitNp rh = stream.over(one);
        for (int layer = 1; layer < kMaxLayers && a < 0.999f; ++layer) {
            stream.tnear[0] = tnear;
            stream.t[0] = ray.tfar[i];
            ++counts.primary;
            if (tap) tap->cameraRays(worker, rh, 1);
            scene.nearestStream(rh, 1);
            if (!w.one) w.one = std::make_unique<Surfaces>();
            w.one->resize(1, shader.lightCount());
            if (shader.prepare(rh, 1, *w.one) == 0) break;
            const Shaded s = shader.shade(*w.one, counts.shadow);
            const float k = (1 - a) * s.a;
            r += k * s.r;
            g += k * s.g;
            b += k * s.b;
            a += k;
            const float t = stream.t[0];
            tnear = t + std::max(scene.epsilon(), t * 1e-6f);
        }
    }

    Premultiplied over(float r, float g, float b, float a, const Premultiplied& bg) const {
        const float rest = 1 - a;
        Premultiplied c = Premultiplied{r, g, b, a} + rest * bg;
        // coverage alone: a surface makes the sample opaque, and what is
        // behind a see-through surface is the background's colour
        if (!options.transparencyAffectsAlpha) c[A] = 1.0f;
        return c;
    }

    bool disagree(const RunBuffers& w, long i) const {
        const Premultiplied d = w.hi[i] - w.lo[i];
        return std::max({d[R], d[G], d[B], d[A]}) > kDisagreement;
    }

    void run(long y, long xa, long xb, unsigned worker, RunBuffers& w,
             WorkerFigures& counts) const {
        const auto count = static_cast<std::size_t>(xb - xa);
        w.sums.assign(count, Premultiplied{0, 0, 0, 0});
        w.taken.assign(count, 0);
        w.lo.assign(count, Premultiplied{2, 2, 2, 2});
        w.hi.assign(count, Premultiplied{-1, -1, -1, -1});
        w.background.resize(count);
        const std::vector<unsigned>& first = pattern.firstCells();
        w.samples.resize(count * first.size());
        Sample* next = w.samples.data();
        for (std::size_t i = 0; i < count; ++i) {
            w.background[i] = background(*at(xa + static_cast<long>(i), y));
            for (unsigned cell : first)
                *next++ = {static_cast<long>(i), cell};
        }
        traceSamples(y, xa, worker, w, counts);
        if (pattern.refines()) {
            w.samples.clear();
            const std::vector<unsigned>& rest = pattern.restCells();
            for (std::size_t i = 0; i < count; ++i) {
                if (!disagree(w, static_cast<long>(i))) continue;
                ++counts.refined;
                for (unsigned cell : rest)
                    w.samples.push_back({static_cast<long>(i), cell});
            }
            if (!w.samples.empty()) traceSamples(y, xa, worker, w, counts);
        }
        for (std::size_t i = 0; i < count; ++i) {
            const float scale = 1.0f / static_cast<float>(w.taken[i]);
            *at(xa + static_cast<long>(i), y) = word(w.sums[i] * scale);
        }
    }

    // Traces the samples in w.samples and adds their colours to their
    // pixels, as many at a time as shading takes.
    void traceSamples(long y, long xa, unsigned worker, RunBuffers& w,
                      WorkerFigures& counts) const {
        const std::size_t all = w.samples.size();
        for (std::size_t from = 0; from < all; from += Surfaces::kMost)
            tracePiece(y, xa, w.samples.data() + from, std::min(all - from, Surfaces::kMost),
                       worker, w, counts);
    }

    void tracePiece(long y, long xa, const Sample* samples, std::size_t most, unsigned worker,
                    RunBuffers& w, WorkerFigures& counts) const {
        // buffers kept from run to run; they only grow
        const std::size_t nl = shader.lightCount();
        Rays& rays = w.rays;
        rays.resize(most);
        for (std::size_t k = 0; k < most; ++k) {
            const Sample& s = samples[k];
            float jx, jy;
            pattern.place(s.cell, static_cast<std::uint32_t>(xa + s.pixel),
                          static_cast<std::uint32_t>(y), jx, jy);
            rays.x[k] = static_cast<double>(xa + s.pixel) + dx + jx;
            rays.y[k] = static_cast<double>(y) + dy + jy;
        }
        camera.raysAt(rays, most);
        CameraStream& stream = w.stream;
        stream.resize(most);
        unsigned m = 0;
        for (std::size_t k = 0; k < most; ++k) {
            const bool ok = rays.ok[k] != 0;
            stream.tnear[k] = ok ? 0.0f : kLeftOut;
            stream.t[k] = ok ? rays.tfar[k] : 0.0f;
            m += ok ? 1 : 0;
        }
        const RTCRayHitNp hits = stream.over(rays);
        const auto streamSize = static_cast<unsigned>(most);
        if (tap) tap->cameraRays(worker, hits, streamSize);
        scene.nearestStream(hits, streamSize);
        counts.primary += m;

        // the first surface of every ray, and the shadow rays they need
        Surfaces& surfaces = *w.surfaces;
        surfaces.resize(most, nl);
        shader.prepare(hits, most, surfaces);
        // shadow rays light by light, so that rays that run side by side are
        // traced together
        std::size_t rayCount = 0;
        for (std::size_t li = 0; li < nl; ++li)
            rayCount += shader.shadowRays(surfaces, li);
        if (rayCount != 0) {
            const RTCRayNp shadow = surfaces.shadowStream();
            const auto shadowSize = static_cast<unsigned>(most * nl);
            if (tap) tap->shadowRays(worker, shadow, shadowSize);
            scene.transmissionStream(shadow, shadowSize, surfaces.reach.data());
        }
        counts.shadow += rayCount;
        for (std::size_t li = 0; li < nl; ++li)
            shader.light(surfaces, li, surfaces.reach.data() + li * most);
        shader.finish(surfaces);

        // the colour of each sample, added to its pixel and to the spread of
        // the pixel's samples that tells whether it wants more; a pixel's
        // samples follow one another
        for (std::size_t k = 0; k < most;) {
            const long p = samples[k].pixel;
            const Premultiplied back = w.background[p];
            Premultiplied sum = w.sums[p], lo = w.lo[p], hi = w.hi[p];
            unsigned taken = 0;
            for (; k < most && samples[k].pixel == p; ++k, ++taken) {
                Premultiplied c = back;
                if (surfaces.hit[k]) {
                    const float a0 = surfaces.fa[k];
                    float r = a0 * surfaces.fr[k], g = a0 * surfaces.fg[k], b = a0 * surfaces.fb[k],
                          a = a0;
                    if (a < 0.999f) {
                        const float t = stream.t[k];
                        continueRay(rays, k, t + std::max(scene.epsilon(), t * 1e-6f), r, g, b, a,
                                    worker, w, counts);
                    }
                    c = over(r, g, b, a, back);
                }
                sum += c;
                lo = lower(lo, c);
                hi = higher(hi, c);
            }
            w.sums[p] = sum;
            w.lo[p] = lo;
            w.hi[p] = hi;
            w.taken[p] += taken;
        }
    }

    const Scene& scene;
    const TQ3XPassInfo& pass;
    const TraceOptions& options;
    Shader shader;
    SamplePattern pattern;
    RayTap* tap;
    RayCamera camera;
    TilePlan tiles;
    bool clearIt = true, writeAlpha = true;
    std::uint32_t clearWord = 0;
    double dx = 0, dy = 0;
    std::chrono::steady_clock::time_point lastReport{};
};

} // namespace

TraceResult trace(const Scene& scene, const TQ3XPassInfo& pass,
                  const std::vector<TQ3XLight>& lights, const TraceOptions& options,
                  TraceFigures& figures, const TraceProgress& progress, RayTap* tap) {
    Picture picture(scene, pass, lights, options, tap);
    if (!picture.setUp()) return TraceResult::NoTarget;
    return picture.run(figures, progress);
}

} // namespace lwsl
