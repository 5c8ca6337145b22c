// The final renderer on extruded letters (some 50,000 triangles) at 3000 by
// 2000, anti-aliased, with shadows from three point lights; and in the same
// run, Embree's own rate for the very same streams of rays on the same
// threads with no shading.
#include "bench/render/LetterMesh.h"
#include "bench/render/SceneRecorder.h"
#include "platform/finalrender/LWRayTap.h"
#include "platform/finalrender/LightWorksSL.h"
#include "text/Type1Service.h"

#include <QImage>
#include <benchmark/benchmark.h>
#include <embree3/rtcore.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// PLUMET_BENCH_SCALE=n renders at a n-th of the size a side, which makes
// a run under callgrind short enough to compare instruction counts.
int scaled(int size) {
    const char* n = std::getenv("PLUMET_BENCH_SCALE");
    const int k = n ? std::atoi(n) : 1;
    return k > 1 ? size / k : size;
}
const int kWidth = scaled(3000), kHeight = scaled(2000);

struct Setup {
    LetterMesh mesh;
    TQ3GroupObject model = nullptr;
    TQ3ViewObject view = nullptr;
    TQ3CameraObject camera = nullptr;
    TQ3DrawContextObject context = nullptr;
    TQ3GroupObject lights = nullptr;
    std::vector<std::uint32_t> pixels;
    TQ3Point3D eye{}, target{0, 0, 0};
    float fov = 0;
    double finalRate[9][2] = {}; // rays a second of the final renderer, by samples a side
                                 // and adaptive

    Setup() {
        SetType1ModulePath(PLUMET_TYPE1_MODULE);
        Q3Initialize();
        Q3LightWorks_SL_Initialise(kQ3LightWorksSLClassName, kQ3LightWorksSLNickName,
                                   kQ3LightWorksSLNickName);
        // lines until the letters make some 50,000 triangles (about four a
        // point of outline: two in the side band, one in each face)
        const char* text[] = {"FlyWORD Plumet renders",       "extruded letters with",
                              "shadows from three lights",    "at three thousand pixels",
                              "by two thousand, with Embree", "and jittered samples.",
                              "Quartz glyphs bend & swoop;",  "0123456789 @#%&?!"};
        std::vector<std::string> lines;
        for (const char* t : text) {
            lines.push_back(t);
            if (mesh.group) Q3Object_Dispose(mesh.group);
            mesh = buildLetterMesh("DejaVu Sans", lines, 0.3f);
            if (mesh.contourPoints * 4 >= 50000) break;
        }
        model = Q3DisplayGroup_New();
        TQ3ShaderObject phong = Q3PhongIllumination_New();
        TQ3StyleObject flip = Q3BackfacingStyle_New(kQ3BackfacingStyleFlip);
        TQ3AttributeSet gold = Q3AttributeSet_New();
        TQ3ColorRGB g{0.85f, 0.62f, 0.2f};
        Q3AttributeSet_Add(gold, kQ3AttributeTypeDiffuseColor, &g);
        const float w = std::max(mesh.width, 1.0f), h = std::max(mesh.height, 1.0f);
        // a wall behind the letters to take their shadows
        TQ3Vertex3D wall[4] = {{{-w, -h, -0.6f}, nullptr},
                               {{w, -h, -0.6f}, nullptr},
                               {{w, h, -0.6f}, nullptr},
                               {{-w, h, -0.6f}, nullptr}};
        TQ3PolygonData wd{4, wall, nullptr};
        TQ3GeometryObject backdrop = Q3Polygon_New(&wd);
        TQ3GroupObject letters = Q3DisplayGroup_New();
        Q3Group_AddObject(letters, gold);
        Q3Group_AddObject(letters, mesh.group);
        for (TQ3Object o :
             {TQ3Object(phong), TQ3Object(flip), TQ3Object(backdrop), TQ3Object(letters)})
            Q3Group_AddObject(model, o);
        for (TQ3Object o : {TQ3Object(phong), TQ3Object(flip), TQ3Object(backdrop),
                            TQ3Object(letters), TQ3Object(gold)})
            Q3Object_Dispose(o);

        const float dist = 1.1f * std::max(w, 1.5f * h);
        eye = {0.12f * w, -0.3f * h, dist};
        fov = 2 * std::atan(0.62f * std::max(h, w / 1.5f) / dist);
        TQ3CameraData cd{{eye, target, {0, 1, 0}}, {0.05f * dist, 4 * dist}, {{-1, 1}, 2, 2}};
        TQ3ViewAngleAspectCameraData ad{cd, fov, static_cast<float>(kWidth) / kHeight};
        camera = Q3ViewAngleAspectCamera_New(&ad);
        pixels.assign(static_cast<std::size_t>(kWidth) * kHeight, 0);
        TQ3PixmapDrawContextData pd{};
        pd.drawContextData.clearImageMethod = kQ3ClearMethodWithColor;
        pd.drawContextData.clearImageColor = {0, 0, 0, 0};
        pd.drawContextData.doubleBufferState = kQ3True;
        const auto pw = static_cast<TQ3Uns32>(kWidth), ph = static_cast<TQ3Uns32>(kHeight);
        pd.pixmap = {pixels.data(),  pw, ph, pw * 4, 32, kQ3PixelTypeARGB32, kQ3EndianLittle,
                     kQ3EndianLittle};
        context = Q3PixmapDrawContext_New(&pd);
        lights = Q3LightGroup_New();
        TQ3LightData amb{kQ3True, 0.25f, {1, 1, 1}};
        TQ3LightObject a = Q3AmbientLight_New(&amb);
        Q3Group_AddObject(lights, a);
        Q3Object_Dispose(a);
        for (TQ3Point3D p : lightPositions()) {
            TQ3PointLightData d{{kQ3True, 0.45f, {1, 1, 1}}, kQ3True, kQ3AttenuationTypeNone, p};
            TQ3LightObject l = Q3PointLight_New(&d);
            Q3Group_AddObject(lights, l);
            Q3Object_Dispose(l);
        }
        view = Q3View_New();
        Q3View_SetCamera(view, camera);
        Q3View_SetDrawContext(view, context);
        Q3View_SetLightGroup(view, lights);
    }

    std::vector<TQ3Point3D> lightPositions() const {
        const float w = std::max(mesh.width, 1.0f), h = std::max(mesh.height, 1.0f);
        return {{-0.45f * w, 1.2f * h, 0.5f * w},
                {0.5f * w, 0.4f * h, 0.45f * w},
                {0.05f * w, -1.1f * h, 0.6f * w}};
    }

    void render(TQ3RendererObject renderer) {
        Q3View_SetRenderer(view, renderer);
        if (Q3View_StartRendering(view) != kQ3Success) return;
        do
            Q3Object_Submit(model, view);
        while (Q3View_EndRendering(view) == kQ3ViewStatusRetraverse);
    }
};

Setup& setup() {
    static Setup s;
    return s;
}

void saveScene(const Setup& s, const RecordedScene& rec, unsigned samples) {
    const std::string dir = PLUMET_TEST_OUTPUT;
    writeObj(rec, dir + "/bench_render_letters.obj");
    PeerScene peer;
    peer.width = kWidth;
    peer.height = kHeight;
    peer.samples = samples * samples;
    peer.eye = s.eye;
    peer.target = s.target;
    peer.fovVertical = s.fov;
    peer.ambient = 0.25f;
    for (TQ3Point3D p : s.lightPositions())
        peer.pointLights.push_back({p, 0.45f});
    writePeerScene(peer, dir + "/bench_render_scene.txt");
    QImage image(reinterpret_cast<const uchar*>(s.pixels.data()), kWidth, kHeight, kWidth * 4,
                 QImage::Format_ARGB32_Premultiplied);
    image.scaled(kWidth / 3, kHeight / 3, Qt::KeepAspectRatio, Qt::SmoothTransformation)
        .save(QString::fromStdString(dir + "/bench_render_final.png"));
}

void BM_FinalRender(benchmark::State& state) {
    Setup& s = setup();
    const auto samples = static_cast<unsigned>(state.range(0));
    const bool adaptive = state.range(1) != 0;
    TQ3RendererObject r = Q3Renderer_NewFromType(Q3LightWorks_SL_GetRendererType());
    Q3LightWorks_SL_SetSamplesPerSide(r, samples);
    Q3LightWorks_SL_SetAdaptiveSamples(r, adaptive ? kQ3True : kQ3False);
    TQ3LightWorksSLStatistics st{};
    double rays = 0, seconds = 0;
    for (auto _ : state) {
        s.render(r);
        Q3LightWorks_SL_GetStatistics(r, &st);
        rays += st.primaryRays + st.shadowRays;
        seconds += st.renderSeconds;
    }
    state.counters["triangles"] = st.triangles;
    state.counters["primary_rays"] = st.primaryRays;
    state.counters["shadow_rays"] = st.shadowRays;
    state.counters["build_ms"] = st.buildSeconds * 1e3;
    state.counters["threads"] = st.threads;
    state.counters["refined_pixels"] = st.refinedPixels;
    state.counters["traced_pixels"] = st.tracedPixels;
    s.finalRate[samples][adaptive] = seconds > 0 ? rays / seconds : 0;
    state.counters["Mrays_per_s"] = s.finalRate[samples][adaptive] / 1e6;
    TQ3RendererObject rec = Q3Renderer_NewFromType(sceneRecorderType());
    s.render(rec);
    // render again so that the picture on disk is the final one
    s.render(r);
    saveScene(s, recordedScene(rec), samples);
    Q3Object_Dispose(rec);
    Q3Object_Dispose(r);
}

// The limit: the very streams of rays the final renderer traces, camera rays
// with rtcIntersectNp and shadow rays with rtcOccludedNp, on the same
// threads, through Embree alone. A tap copies each stream before the
// renderer traces it and traces the copy; only the tap's Embree calls are
// timed, and only the rays the stream does not leave out are counted. The
// scene has no see-through surfaces, so no filter needs the renderer's own
// context.
class SameRays : public lwsl::RayTap {
  public:
    void begin(RTCScene s, unsigned n) override {
        scene = s;
        workers.assign(n, Worker{});
    }
    void cameraRays(unsigned w, const RTCRayHitNp& rays, unsigned count) override {
        Worker& k = workers[w];
        RTCRayHitNp copy{k.copyRays(rays.ray, count), k.hits.fresh(count)};
        RTCIntersectContext ctx;
        rtcInitIntersectContext(&ctx);
        ctx.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
        const auto t0 = std::chrono::steady_clock::now();
        rtcIntersectNp(scene, &ctx, &copy, count);
        k.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        k.rays += active(rays.ray, count);
    }
    void shadowRays(unsigned w, const RTCRayNp& rays, unsigned count) override {
        Worker& k = workers[w];
        RTCRayNp copy = k.copyRays(rays, count);
        RTCIntersectContext ctx;
        rtcInitIntersectContext(&ctx);
        ctx.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
        const auto t0 = std::chrono::steady_clock::now();
        rtcOccludedNp(scene, &ctx, &copy, count);
        k.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        k.rays += active(rays, count);
    }
    // Rays, and the time of the slowest thread: the picture's time if the
    // threads had done nothing but trace.
    double rays() const {
        double n = 0;
        for (const Worker& k : workers)
            n += static_cast<double>(k.rays);
        return n;
    }
    double seconds() const {
        double t = 0;
        for (const Worker& k : workers)
            t = std::max(t, k.seconds);
        return t;
    }

  private:
    static std::uint64_t active(const RTCRayNp& r, unsigned count) {
        std::uint64_t n = 0;
        for (unsigned i = 0; i < count; ++i)
            n += r.tnear[i] <= r.tfar[i] ? 1 : 0;
        return n;
    }
    // One array a part of a stream, copied.
    template <typename T> struct Part {
        std::vector<T> v;
        T* copy(const T* from, unsigned n) {
            v.assign(from, from + n);
            return v.data();
        }
    };
    struct Hits {
        Part<float> nx, ny, nz, u, v;
        Part<unsigned> prim, geom, inst;
        RTCHitNp fresh(unsigned n) {
            std::vector<float> zero(n, 0.0f);
            std::vector<unsigned> none(n, RTC_INVALID_GEOMETRY_ID);
            return {nx.copy(zero.data(), n),   ny.copy(zero.data(), n),
                    nz.copy(zero.data(), n),   u.copy(zero.data(), n),
                    v.copy(zero.data(), n),    prim.copy(none.data(), n),
                    geom.copy(none.data(), n), {inst.copy(none.data(), n)}};
        }
    };
    struct Worker {
        Part<float> ox, oy, oz, tnear, dx, dy, dz, time, tfar;
        Part<unsigned> mask, id, flags;
        Hits hits;
        std::uint64_t rays = 0;
        double seconds = 0;
        RTCRayNp copyRays(const RTCRayNp& r, unsigned n) {
            return {ox.copy(r.org_x, n),    oy.copy(r.org_y, n),  oz.copy(r.org_z, n),
                    tnear.copy(r.tnear, n), dx.copy(r.dir_x, n),  dy.copy(r.dir_y, n),
                    dz.copy(r.dir_z, n),    time.copy(r.time, n), tfar.copy(r.tfar, n),
                    mask.copy(r.mask, n),   id.copy(r.id, n),     flags.copy(r.flags, n)};
        }
    };
    RTCScene scene = nullptr;
    std::vector<Worker> workers;
};

void BM_EmbreeSameRays(benchmark::State& state) {
    Setup& s = setup();
    const auto samples = static_cast<unsigned>(state.range(0));
    const bool adaptive = state.range(1) != 0;
    TQ3RendererObject r = Q3Renderer_NewFromType(Q3LightWorks_SL_GetRendererType());
    Q3LightWorks_SL_SetSamplesPerSide(r, samples);
    Q3LightWorks_SL_SetAdaptiveSamples(r, adaptive ? kQ3True : kQ3False);
    double rays = 0, seconds = 0;
    for (auto _ : state) {
        SameRays tap;
        lwsl::SetRayTap(r, &tap);
        s.render(r);
        lwsl::SetRayTap(r, nullptr);
        rays += tap.rays();
        seconds += tap.seconds();
        state.SetIterationTime(tap.seconds());
    }
    TQ3LightWorksSLStatistics st{};
    Q3LightWorks_SL_GetStatistics(r, &st);
    const double rate = seconds > 0 ? rays / seconds : 0;
    state.counters["rays"] = rays / static_cast<double>(state.iterations());
    state.counters["renderer_rays"] = st.primaryRays + st.shadowRays;
    state.counters["Mrays_per_s"] = rate / 1e6;
    const double final = s.finalRate[samples][adaptive];
    if (final > 0 && rate > 0) state.counters["final_over_bare"] = final / rate;
    Q3Object_Dispose(r);
}

// samples a side, adaptive: four that become sixteen at edges (the default),
// and today's fixed nine
BENCHMARK(BM_FinalRender)->Args({2, 1})->Args({3, 0})->Iterations(3)->Unit(benchmark::kSecond);
BENCHMARK(BM_EmbreeSameRays)
    ->Args({2, 1})
    ->Args({3, 0})
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);

} // namespace

BENCHMARK_MAIN();
