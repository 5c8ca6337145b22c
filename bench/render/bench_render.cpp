// The final renderer on extruded letters (some 50,000 triangles) at 3000 by
// 2000, anti-aliased, with shadows from three point lights; and in the same
// run, Embree's own rate for the same rays over the same triangles with no
// shading (rtcIntersect1 for the camera, rtcOccluded1 towards each light).
#include "bench/render/LetterMesh.h"
#include "bench/render/SceneRecorder.h"
#include "platform/finalrender/LWRayCamera.h"
#include "platform/finalrender/LightWorksSL.h"
#include "text/Type1Service.h"

#include <QImage>
#include <benchmark/benchmark.h>
#include <embree3/rtcore.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kWidth = 3000, kHeight = 2000;

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
    double finalRate[9] = {}; // rays a second of the final renderer, by samples a side

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
        pd.pixmap = {pixels.data(),      kWidth,          kHeight,        kWidth * 4, 32,
                     kQ3PixelTypeARGB32, kQ3EndianLittle, kQ3EndianLittle};
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
    TQ3RendererObject r = Q3Renderer_NewFromType(Q3LightWorks_SL_GetRendererType());
    Q3LightWorks_SL_SetSamplesPerSide(r, samples);
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
    s.finalRate[samples] = seconds > 0 ? rays / seconds : 0;
    state.counters["Mrays_per_s"] = s.finalRate[samples] / 1e6;
    TQ3RendererObject rec = Q3Renderer_NewFromType(sceneRecorderType());
    s.render(rec);
    // render again so that the picture on disk is the final one
    s.render(r);
    saveScene(s, recordedScene(rec), samples);
    Q3Object_Dispose(rec);
    Q3Object_Dispose(r);
}

// The same camera rays (and as many samples) over the same triangles, and
// from every hit one shadow ray towards each light, with no shading at all.
void BM_EmbreeRaw(benchmark::State& state) {
    Setup& s = setup();
    const auto samples = static_cast<unsigned>(state.range(0));
    const bool stream = state.range(1) != 0;
    TQ3RendererObject recorder = Q3Renderer_NewFromType(sceneRecorderType());
    s.render(recorder);
    const RecordedScene& rec = recordedScene(recorder);
    RTCDevice device = rtcNewDevice("threads=1,set_affinity=0");
    RTCScene scene = rtcNewScene(device);
    rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    RTCGeometry g = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
    auto* p = static_cast<float*>(rtcSetNewGeometryBuffer(
        g, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 12, rec.points.size() / 3));
    std::copy(rec.points.begin(), rec.points.end(), p);
    auto* t = static_cast<unsigned*>(rtcSetNewGeometryBuffer(
        g, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 12, rec.indices.size() / 3));
    std::copy(rec.indices.begin(), rec.indices.end(), t);
    rtcCommitGeometry(g);
    rtcAttachGeometry(scene, g);
    rtcReleaseGeometry(g);
    rtcCommitScene(scene);
    lwsl::RayCamera camera;
    camera.setUp(rec.pass);
    std::vector<TQ3Point3D> lights;
    for (const TQ3XLight& l : rec.lights)
        if (l.type == kQ3LightTypePoint) lights.push_back(l.location);

    const unsigned workers = std::max(1u, std::thread::hardware_concurrency());
    double rays = 0, seconds = 0;
    for (auto _ : state) {
        std::atomic<int> nextRow{0};
        std::vector<std::uint64_t> counts(workers, 0);
        auto work = [&](unsigned w) {
            RTCIntersectContext ctx;
            rtcInitIntersectContext(&ctx);
            std::uint64_t n = 0;
            for (int y = nextRow++; y < kHeight; y = nextRow++)
                for (int x = 0; x < kWidth; ++x)
                    for (unsigned k = 0; k < samples * samples; ++k) {
                        lwsl::Ray ray;
                        const double jx = (k % samples + 0.5) / samples,
                                     jy = (k / samples + 0.5) / samples;
                        if (!camera.rayAt(x + jx, y + jy, ray)) continue;
                        RTCRayHit rh{};
                        rh.ray.org_x = ray.org[0];
                        rh.ray.org_y = ray.org[1];
                        rh.ray.org_z = ray.org[2];
                        rh.ray.dir_x = ray.dir[0];
                        rh.ray.dir_y = ray.dir[1];
                        rh.ray.dir_z = ray.dir[2];
                        rh.ray.tfar = ray.tfar;
                        rh.ray.mask = 0xFFFFFFFFu;
                        rh.hit.geomID = RTC_INVALID_GEOMETRY_ID;
                        rtcIntersect1(scene, &ctx, &rh);
                        ++n;
                        if (rh.hit.geomID == RTC_INVALID_GEOMETRY_ID) continue;
                        const float hp[3] = {ray.org[0] + rh.ray.tfar * ray.dir[0],
                                             ray.org[1] + rh.ray.tfar * ray.dir[1],
                                             ray.org[2] + rh.ray.tfar * ray.dir[2]};
                        for (const TQ3Point3D& l : lights) {
                            RTCRay sr{};
                            float d[3] = {l.x - hp[0], l.y - hp[1], l.z - hp[2]};
                            sr.org_x = hp[0];
                            sr.org_y = hp[1];
                            sr.org_z = hp[2];
                            sr.dir_x = d[0];
                            sr.dir_y = d[1];
                            sr.dir_z = d[2];
                            sr.tnear = 1e-4f;
                            sr.tfar = 0.9999f;
                            sr.mask = 0xFFFFFFFFu;
                            rtcOccluded1(scene, &ctx, &sr);
                            ++n;
                        }
                    }
            counts[w] = n;
        };
        auto streamWork = [&](unsigned w) {
            RTCIntersectContext ctx;
            rtcInitIntersectContext(&ctx);
            ctx.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
            std::uint64_t n = 0;
            std::vector<RTCRayHit> prim;
            std::vector<RTCRay> shadow;
            for (int y = nextRow++; y < kHeight; y = nextRow++) {
                prim.clear();
                for (int x = 0; x < kWidth; ++x)
                    for (unsigned k = 0; k < samples * samples; ++k) {
                        lwsl::Ray ray;
                        const double jx = (k % samples + 0.5) / samples,
                                     jy = (k / samples + 0.5) / samples;
                        if (!camera.rayAt(x + jx, y + jy, ray)) continue;
                        RTCRayHit rh{};
                        rh.ray.org_x = ray.org[0];
                        rh.ray.org_y = ray.org[1];
                        rh.ray.org_z = ray.org[2];
                        rh.ray.dir_x = ray.dir[0];
                        rh.ray.dir_y = ray.dir[1];
                        rh.ray.dir_z = ray.dir[2];
                        rh.ray.tfar = ray.tfar;
                        rh.ray.mask = 0xFFFFFFFFu;
                        rh.hit.geomID = RTC_INVALID_GEOMETRY_ID;
                        prim.push_back(rh);
                    }
                rtcIntersect1M(scene, &ctx, prim.data(), static_cast<unsigned>(prim.size()),
                               sizeof(RTCRayHit));
                n += prim.size();
                for (const TQ3Point3D& l : lights) {
                    shadow.clear();
                    for (const RTCRayHit& rh : prim) {
                        if (rh.hit.geomID == RTC_INVALID_GEOMETRY_ID) continue;
                        RTCRay sr{};
                        sr.org_x = rh.ray.org_x + rh.ray.tfar * rh.ray.dir_x;
                        sr.org_y = rh.ray.org_y + rh.ray.tfar * rh.ray.dir_y;
                        sr.org_z = rh.ray.org_z + rh.ray.tfar * rh.ray.dir_z;
                        sr.dir_x = l.x - sr.org_x;
                        sr.dir_y = l.y - sr.org_y;
                        sr.dir_z = l.z - sr.org_z;
                        sr.tnear = 1e-4f;
                        sr.tfar = 0.9999f;
                        sr.mask = 0xFFFFFFFFu;
                        shadow.push_back(sr);
                    }
                    rtcOccluded1M(scene, &ctx, shadow.data(), static_cast<unsigned>(shadow.size()),
                                  sizeof(RTCRay));
                    n += shadow.size();
                }
            }
            counts[w] = n;
        };
        auto t0 = std::chrono::steady_clock::now();
        std::vector<std::thread> threads;
        for (unsigned w = 1; w < workers; ++w)
            threads.emplace_back([&, w] { stream ? streamWork(w) : work(w); });
        stream ? streamWork(0) : work(0);
        for (std::thread& th : threads)
            th.join();
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
        for (std::uint64_t c : counts)
            rays += static_cast<double>(c);
    }
    const double rate = seconds > 0 ? rays / seconds : 0;
    state.counters["triangles"] = static_cast<double>(rec.indices.size() / 3);
    state.counters["rays"] = rays / static_cast<double>(state.iterations());
    state.counters["Mrays_per_s"] = rate / 1e6;
    if (s.finalRate[samples] > 0 && rate > 0)
        state.counters["final_over_raw"] = s.finalRate[samples] / rate;
    rtcReleaseScene(scene);
    rtcReleaseDevice(device);
    Q3Object_Dispose(recorder);
}

BENCHMARK(BM_FinalRender)->Arg(2)->Arg(3)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(BM_EmbreeRaw)
    ->Args({2, 0})
    ->Args({3, 0})
    ->Args({2, 1})
    ->Iterations(1)
    ->Unit(benchmark::kSecond);

} // namespace

BENCHMARK_MAIN();
