// The gestures of the view over 40 letters at 1024 by 768, through the
// tool handler as the window drives it: one drag step of the text tool
// (hollow letters, a frame and the composite), and the release that builds
// the letters solid again; a soak of 10,000 drag steps and 1,000 releases
// that watches memory and the library's live objects; and the final render
// of the same scene with five shadowing point lights at 3000 by 2000,
// which also writes the scene for Blender's Cycles (cycles_peer.sh).
#include "bench/render/SceneRecorder.h"
#include "bench/render/ViewBench.h"
#include "curves/VAnalyticPathTable.h"
#include "platform/finalrender/LightWorksSL.h"
#include "scene/K3DSystem.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <string>
#include <unistd.h>

namespace {
// 40 letters.
constexpr const char* kText = "Lumerra 3D: FlyWORD Plumet drags forty letters";

struct Scene {
    // The letters on the ellipse, small enough that all 40 stand in the
    // picture, lit by a dim ambient light so that the point lights show.
    Scene(int width, int height) : image(width, height), view(Bind(document, image)) {
        view.SetText(kText);
        const VAnalyticPathEntry* ellipse = GetAnalyticPathEntry(2);
        view.SetPath(2, ellipse->startSliders[0], ellipse->startSliders[1]);
        view.SetLayout(TextLayoutValue::kWidth, 3.5f, false, true);
        view.SetLayout(TextLayoutValue::kHeight, 5, true, true);
        view.GetSceneManager()->SetAmbientBrightness(0.3f);
    }
    VC3DSystem system;
    VZarbesoDocument document{false};
    HostImage image;
    VZarbesoView& view;
};

// The pointer swings right and left across 200 pixels.
struct Swing {
    std::int16_t Next() {
        x = static_cast<std::int16_t>(x + step);
        if (x >= 600 || x <= 400) step = -step;
        return x;
    }
    std::int16_t x = 500, step = 1;
};

void DragStepWithHollowLetters(benchmark::State& state) {
    Scene s(1024, 768);
    s.view.SetTool(kToolMoveText);
    Swing swing;
    s.view.MouseDown(swing.x, 384);
    for (auto _ : state)
        s.view.MouseMove(swing.Next(), 384);
    SaveFrontWorld(s.view, PLUMET_TEST_OUTPUT "/bench_drag_hollow.png");
    s.view.MouseUp(swing.x, 384);
    SaveFrontWorld(s.view, PLUMET_TEST_OUTPUT "/bench_drag_released.png");
}
BENCHMARK(DragStepWithHollowLetters)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReleaseBuildsSolidLetters(benchmark::State& state) {
    Scene s(1024, 768);
    s.view.SetTool(kToolMoveText);
    Swing swing;
    for (auto _ : state) {
        state.PauseTiming();
        s.view.MouseDown(swing.x, 384);
        s.view.MouseMove(swing.Next(), 384);
        state.ResumeTiming();
        s.view.MouseUp(swing.x, 384);
    }
}
BENCHMARK(ReleaseBuildsSolidLetters)->Unit(benchmark::kMillisecond)->UseRealTime();

long ResidentKiB() {
    long pages = 0, resident = 0;
    if (FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(f);
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

// 1,000 gestures of ten drag steps and a release, after 100 that warm the
// caches; the growth of the heap, of the resident size and of the library's
// live objects between the two.
void SoakOfDragsAndReleases(benchmark::State& state) {
    Scene s(1024, 768);
    s.view.SetTool(kToolMoveText);
    Swing swing;
    auto gestures = [&](int n) {
        for (int g = 0; g < n; ++g) {
            s.view.MouseDown(swing.x, 384);
            for (int i = 0; i < 10; ++i)
                s.view.MouseMove(swing.Next(), 384);
            s.view.MouseUp(swing.x, 384);
        }
    };
    for (auto _ : state) {
        gestures(100);
        const long heap = static_cast<long>(mallinfo2().uordblks);
        const long rss = ResidentKiB();
        const auto objects = static_cast<double>(Q3Memory_CountObjects());
        gestures(1000);
        state.counters["heap_growth_bytes"] =
            static_cast<double>(static_cast<long>(mallinfo2().uordblks) - heap);
        state.counters["rss_growth_kib"] = static_cast<double>(ResidentKiB() - rss);
        state.counters["live_objects"] = objects;
        state.counters["live_object_growth"] =
            static_cast<double>(Q3Memory_CountObjects()) - objects;
    }
}
BENCHMARK(SoakOfDragsAndReleases)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

// Five point lights around the letters, coloured, all casting shadows.
void AddFiveLights(VZarbesoView& view) {
    const KVector3D places[5] = {{-6, 3, 5}, {6, 3, 5}, {0, -3, 6}, {-3, 5, 2}, {4, -2, 3}};
    const float colours[5][3] = {
        {1, 0.9f, 0.8f}, {0.8f, 0.9f, 1}, {1, 1, 1}, {1, 0.8f, 0.8f}, {0.8f, 1, 0.8f}};
    VZarbesoSceneManager& scene = *view.GetSceneManager();
    for (int i = 0; i < 5; ++i) {
        VCLight* light = scene.AddLight(&view);
        light->Translate(places[i]);
        light->SetColor(colours[i][0], colours[i][1], colours[i][2]);
        light->GetLight().SetBrightness(0.25f);
    }
}

// The scene as the final render submits it, for the peer: triangles and
// lights in the world of the camera, with the camera and the samples.
void WriteSceneForThePeer(VZarbesoView& view, unsigned samples) {
    VZarbesoSceneManager& scene = *view.GetSceneManager();
    scene.SetLightsVisible(false);
    scene.SetGridVisible(false);
    TQ3RendererObject recorder = Q3Renderer_NewFromType(sceneRecorderType());
    view.viewer.SetRenderer(recorder);
    view.K3DView::Render();
    const RecordedScene& rec = recordedScene(recorder);
    const std::string dir = PLUMET_TEST_OUTPUT;
    writeObj(rec, dir + "/bench_lights_letters.obj");
    PeerScene peer;
    const Rect frame = view.GetFrame();
    peer.width = frame.right;
    peer.height = frame.bottom;
    peer.samples = samples;
    const TQ3CameraPlacement& place = view.camera->GetData().placement;
    peer.eye = place.cameraLocation;
    peer.target = place.pointOfInterest;
    peer.up = {place.upVector.x, place.upVector.y, place.upVector.z};
    peer.fovVertical = view.camera->fieldOfView;
    peer.ambient = scene.GetAmbientBrightness();
    for (const TQ3XLight& l : rec.lights)
        if (l.type == kQ3LightTypePoint) peer.pointLights.push_back({l.location, l.brightness});
    writePeerScene(peer, dir + "/bench_lights_scene.txt");
    Q3Object_Dispose(recorder);
    scene.SetLightsVisible(true);
    scene.SetGridVisible(true);
}

void FinalRenderWithFiveShadowingLights(benchmark::State& state) {
    Scene s(3000, 2000);
    AddFiveLights(s.view);
    // Nine samples in every pixel, as the peer takes them.
    QRenderer& renderers = *s.document.GetRenderer();
    if (DRendererObject* final = renderers.table.Find(renderers.GetFinalType())) {
        Q3LightWorks_SL_SetSamplesPerSide(final->object, 3);
        Q3LightWorks_SL_SetAdaptiveSamples(final->object, kQ3False);
    }
    for (auto _ : state)
        s.document.RenderScene(false);
    SaveFrontWorld(s.view, PLUMET_TEST_OUTPUT "/bench_lights_final.png");
    WriteSceneForThePeer(s.view, 9);
}
BENCHMARK(FinalRenderWithFiveShadowingLights)
    ->Iterations(1)
    ->Unit(benchmark::kSecond)
    ->UseRealTime();
} // namespace

BENCHMARK_MAIN();
