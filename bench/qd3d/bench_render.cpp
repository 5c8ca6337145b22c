// One frame of about 50,000 triangles of extruded letter-like shapes, three
// point lights, 1024 by 768: the interactive renderer, and the same
// triangles through llvmpipe when OSMesa is present.
#include "bench/qd3d/TextMesh.h"
#include "platform/qd3d/QD3D.h"

#ifdef PLUMET_HAVE_OSMESA
#include "bench/qd3d/OSMesaPeer.h"
#endif

#include <QImage>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 1024, kHeight = 768;

const TextMesh& mesh() {
    static const TextMesh m = makeTextMesh();
    return m;
}

void savePng(const void* pixels, const char* name) {
    QImage image(static_cast<const uchar*>(pixels), kWidth, kHeight, kWidth * 4,
                 QImage::Format_ARGB32_Premultiplied);
    image.save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name));
}

// The scene as the library holds text: a display group of two-row grids
// whose vertices carry their normals in attribute sets.
class LibraryScene {
  public:
    LibraryScene() {
        Q3Initialize();
        pixels.assign(static_cast<size_t>(kWidth) * kHeight, 0);
        view = Q3View_New();
        TQ3ViewAngleAspectCameraData cd{
            {{{0, 0, 7}, {0, 0, 0}, {0, 1, 0}}, {0.1f, 100}, {{-1, 1}, 2, 2}},
            1.0471976f,
            static_cast<float>(kWidth) / kHeight};
        camera = Q3ViewAngleAspectCamera_New(&cd);
        TQ3PixmapDrawContextData pd{};
        pd.drawContextData.clearImageMethod = kQ3ClearMethodWithColor;
        pd.pixmap = {pixels.data(),      kWidth,          kHeight,        kWidth * 4, 32,
                     kQ3PixelTypeARGB32, kQ3EndianLittle, kQ3EndianLittle};
        context = Q3PixmapDrawContext_New(&pd);
        lights = Q3LightGroup_New();
        const TQ3Point3D at[3] = {{-6, 4, 6}, {6, 4, 6}, {0, -5, 5}};
        for (const TQ3Point3D& p : at) {
            TQ3PointLightData ld{{kQ3True, 1, {1, 1, 1}}, kQ3False, kQ3AttenuationTypeNone, p};
            TQ3LightObject l = Q3PointLight_New(&ld);
            Q3Group_AddObject(lights, l);
            Q3Object_Dispose(l);
        }
        Q3View_SetCamera(view, camera);
        Q3View_SetDrawContext(view, context);
        Q3View_SetLightGroup(view, lights);
        Q3View_SetRendererByType(view, kQ3RendererTypeInteractive);
        group = Q3DisplayGroup_New();
        TQ3ShaderObject phong = Q3PhongIllumination_New();
        Q3Group_AddObject(group, phong);
        Q3Object_Dispose(phong);
        TQ3AttributeSet colour = Q3AttributeSet_New();
        TQ3ColorRGB c{0.9f, 0.6f, 0.2f};
        Q3AttributeSet_Add(colour, kQ3AttributeTypeDiffuseColor, &c);
        Q3Group_AddObject(group, colour);
        Q3Object_Dispose(colour);
        // every band of (n + 1) * 2 vertices is one grid
        const TextMesh& m = mesh();
        const size_t bandVertices = 2 * (m.letters[0].outer.size() / 2);
        for (size_t first = 0; first < m.positions.size() / 3; first += bandVertices) {
            std::vector<TQ3Vertex3D> v(bandVertices);
            for (size_t i = 0; i < bandVertices; ++i) {
                const float* p = &m.positions[3 * (first + i)];
                const float* n = &m.normals[3 * (first + i)];
                v[i].point = {p[0], p[1], p[2]};
                v[i].attributeSet = Q3AttributeSet_New();
                TQ3Vector3D nv{n[0], n[1], n[2]};
                Q3AttributeSet_Add(v[i].attributeSet, kQ3AttributeTypeNormal, &nv);
            }
            // the mesh lists each band's rows in the order the triangles need
            reorderRows(m, first, bandVertices, v);
            TQ3TriGridData gd{2, static_cast<TQ3Uns32>(bandVertices / 2), v.data(), nullptr,
                              nullptr};
            TQ3GeometryObject grid = Q3TriGrid_New(&gd);
            Q3Group_AddObject(group, grid);
            Q3Object_Dispose(grid);
            for (auto& x : v)
                Q3Object_Dispose(x.attributeSet);
        }
    }
    ~LibraryScene() {
        for (TQ3Object o : {group, lights, context, camera, view})
            Q3Object_Dispose(o);
        Q3Exit();
    }
    // The flat mesh builds each band from the second row to the first.
    static void reorderRows(const TextMesh&, size_t, size_t count, std::vector<TQ3Vertex3D>& v) {
        std::vector<TQ3Vertex3D> swapped(v.begin() + count / 2, v.end());
        swapped.insert(swapped.end(), v.begin(), v.begin() + count / 2);
        v = swapped;
    }
    void frame() {
        Q3View_StartRendering(view);
        do {
            Q3DisplayGroup_Submit(group, view);
        } while (Q3View_EndRendering(view) == kQ3ViewStatusRetraverse);
    }
    std::vector<std::uint32_t> pixels;
    TQ3ViewObject view;
    TQ3CameraObject camera;
    TQ3DrawContextObject context;
    TQ3GroupObject lights, group;
};

void BM_InteractiveRenderer(benchmark::State& state) {
    LibraryScene scene;
    scene.frame(); // grids build their meshes once
    for (auto _ : state)
        scene.frame();
    savePng(scene.pixels.data(), "bench_qd3d_interactive.png");
    state.counters["triangles"] = static_cast<double>(mesh().indices.size() / 3);
}
BENCHMARK(BM_InteractiveRenderer)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

// The same frame with the generic renderer: the library's own traversal,
// which runs on the caller's thread before the renderer's threads start.
void BM_TraversalOnly(benchmark::State& state) {
    LibraryScene scene;
    Q3View_SetRendererByType(scene.view, kQ3RendererTypeGeneric);
    scene.frame();
    for (auto _ : state)
        scene.frame();
}
BENCHMARK(BM_TraversalOnly)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

#ifdef PLUMET_HAVE_OSMESA
void BM_Llvmpipe(benchmark::State& state) {
    OSMesaPeer peer(mesh(), kWidth, kHeight);
    if (!peer.ok()) {
        state.SkipWithError("no OSMesa context");
        return;
    }
    peer.drawFrame();
    for (auto _ : state)
        peer.drawFrame();
    savePng(peer.pixels().data(), "bench_qd3d_llvmpipe.png");
    state.counters["triangles"] = static_cast<double>(mesh().indices.size() / 3);
}
BENCHMARK(BM_Llvmpipe)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
#endif

} // namespace

BENCHMARK_MAIN();
