// The final renderer as a class of the 3D library: registration, its
// published answers, its settings, and pictures with nothing in them.
#include "platform/finalrender/LWScene.h"
#include "tests/finalrender/FinalRenderTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <limits>
#include <pthread.h>
#include <string>
#include <vector>

using namespace frtest;
using q3test::TestView;

namespace {

int threadCount() {
    int n = 0;
    if (DIR* d = opendir("/proc/self/task")) {
        while (dirent* e = readdir(d))
            n += e->d_name[0] != '.';
        closedir(d);
    }
    return n;
}

std::atomic<int> gThreadsStarted{0};

} // namespace

// Every thread this program starts passes here on its way to the system, so
// that a test sees threads that were started and ended within one call.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*routine)(void*), void* argument) {
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto next = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    ++gThreadsStarted;
    return next(thread, attributes, routine, argument);
}

TEST(FinalRenderer, IsAClassOfRenderersWhoseSettingsRefuseWhatTheyCannotTake) {
    registerFinalRenderer();
    const TQ3ObjectType type = Q3LightWorks_SL_GetRendererType();
    ASSERT_NE(type, 0);
    // a second start keeps the class
    EXPECT_EQ(Q3LightWorks_SL_Initialise(nullptr, nullptr, nullptr), kQ3Success);
    EXPECT_EQ(Q3LightWorks_SL_GetRendererType(), type);
    TQ3ObjectClassNameString nick;
    ASSERT_EQ(Q3RendererClass_GetNickNameString(type, nick), kQ3Success);
    EXPECT_STREQ(nick, "LightWorks SuperLite for FlyWORD");
    TQ3SubClassData sub{};
    ASSERT_EQ(Q3ObjectHierarchy_GetSubClassData(kQ3SharedTypeRenderer, &sub), kQ3Success);
    EXPECT_NE(std::find(sub.classTypes, sub.classTypes + sub.numClasses, type),
              sub.classTypes + sub.numClasses);
    Q3ObjectHierarchy_EmptySubClassData(&sub);

    TQ3RendererObject r = Q3Renderer_NewFromType(type);
    TQ3RendererObject other = Q3Renderer_NewFromType(kQ3RendererTypeInteractive);
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(Q3Renderer_IsInteractive(r), kQ3False);
    // Its settings dialog is the caller's: without one, configuring fails.
    EXPECT_EQ(Q3Renderer_HasModalConfigure(r), kQ3True);
    TQ3Boolean canceled = kQ3False;
    EXPECT_EQ(Q3Renderer_ModalConfigure(r, nullptr, &canceled), kQ3Failure);
    EXPECT_EQ(canceled, kQ3True);
    // Settings out of range, or for a renderer of another class, are refused.
    EXPECT_EQ(Q3LightWorks_SL_SetSamplesPerSide(r, 0), kQ3Failure);
    EXPECT_EQ(Q3LightWorks_SL_SetSamplesPerSide(r, 9), kQ3Failure);
    TQ3Uns32 samples = 0;
    ASSERT_EQ(Q3LightWorks_SL_GetSamplesPerSide(r, &samples), kQ3Success);
    EXPECT_EQ(samples, 2u); // the default is kept
    TQ3Boolean adaptive = kQ3False;
    ASSERT_EQ(Q3LightWorks_SL_GetAdaptiveSamples(r, &adaptive), kQ3Success);
    EXPECT_EQ(adaptive, kQ3True);
    EXPECT_EQ(Q3LightWorks_SL_SetTransparencyAffectsAlpha(other, kQ3True), kQ3Failure);
    EXPECT_EQ(Q3LightWorks_SL_SetTransparencyAffectsAlpha(nullptr, kQ3True), kQ3Failure);
    EXPECT_EQ(Q3LightWorks_SL_GetSamplesPerSide(r, nullptr), kQ3Failure);
    // A dialog that asks for 5 samples a side: kept on OK, dropped on Cancel.
    static TQ3Boolean keep;
    Q3LightWorks_SL_SetSettingsDialog([](TQ3DialogAnchor, TQ3LightWorksSLSettings* s) {
        EXPECT_EQ(s->samplesPerSide, 2u);
        s->samplesPerSide = 5;
        return keep;
    });
    for (TQ3Boolean ok : {kQ3False, kQ3True}) {
        keep = ok;
        EXPECT_EQ(Q3Renderer_ModalConfigure(r, nullptr, &canceled), kQ3Success);
        EXPECT_EQ(canceled, ok ? kQ3False : kQ3True);
        ASSERT_EQ(Q3LightWorks_SL_GetSamplesPerSide(r, &samples), kQ3Success);
        EXPECT_EQ(samples, ok ? 5u : 2u);
    }
    Q3LightWorks_SL_SetSettingsDialog(nullptr);
    Q3Object_Dispose(other);
    Q3Object_Dispose(r);
    Q3Error_Get(nullptr);
}

// No geometry and no lights: the picture is the clear colour, word for word
// what the interactive renderer leaves.
TEST(FinalRenderer, EmptySceneGivesTheClearColour) {
    auto clearTo = [](TestView& v, TQ3ColorARGB c) {
        TQ3DrawContextData d;
        Q3DrawContext_GetData(v.context, &d);
        d.clearImageColor = c;
        Q3DrawContext_SetData(v.context, &d);
    };
    const TQ3ColorARGB colour{0.6f, 0.2f, 0.4f, 1.0f};
    TestView interactive(16, 12);
    clearTo(interactive, colour);
    interactive.render([](TQ3ViewObject) {});
    TestView final(16, 12);
    clearTo(final, colour);
    TQ3RendererObject r = useFinalRenderer(final, 2);
    final.render([](TQ3ViewObject) {});
    EXPECT_EQ(final.pixels, interactive.pixels);
    EXPECT_NE(final.pixels[0], 0xDEADBEEFu);
    // a geometry that makes no triangles is no different
    TQ3Point3D line[2] = {{0, 0, 0}, {0, 0, 0}};
    TQ3GeometryObject degenerate = polygon(line, 2);
    final.render([&](TQ3ViewObject view) {
        if (degenerate) Q3Object_Submit(degenerate, view);
    });
    EXPECT_EQ(final.pixels, interactive.pixels);
    if (degenerate) Q3Object_Dispose(degenerate);
    Q3Object_Dispose(r);
    Q3Error_Get(nullptr);
}

// Every ray is counted, the work is spread over threads, and all of them
// have ended when the pass returns.
TEST(FinalRenderer, ThreadsEndWithTheCallAndRaysAreCounted) {
    TestView v(80, 60, 5.0f, true);
    TQ3RendererObject r = useFinalRenderer(v, 2);
    v.addLight(pointLight(0, 0, 3));
    v.addLight(pointLight(1, 1, 3));
    TQ3GeometryObject sq = q3test::square(3.0f, 0); // fills the view
    TQ3ShaderObject phong = Q3PhongIllumination_New();
    const int before = threadCount(), startedBefore = gThreadsStarted;
    v.render([&](TQ3ViewObject view) { submitAll(view, {phong, sq}); });
    EXPECT_EQ(threadCount(), before);
    TQ3LightWorksSLStatistics st{};
    ASSERT_EQ(Q3LightWorks_SL_GetStatistics(r, &st), kQ3Success);
    // only the tracing threads beside the caller: no idle pool thread that
    // would still be ending after the call
    EXPECT_EQ(gThreadsStarted - startedBefore, int(st.threads) - 1);
    EXPECT_EQ(st.primaryRays, 80.0 * 60 * 4);
    EXPECT_EQ(st.shadowRays, 2 * st.primaryRays); // both lights face every point
    EXPECT_EQ(st.triangles, 2.0);
    EXPECT_GE(st.threads, 1u);
    EXPECT_EQ(premultipliedFaults(v), 0);
    Q3Object_Dispose(phong);
    Q3Object_Dispose(sq);
    Q3Object_Dispose(r);
}

// A draw context over a pane draws only the pane.
TEST(FinalRenderer, DrawsOnlyThePane) {
    TestView v(40, 40, 5.0f, true);
    TQ3RendererObject r = useFinalRenderer(v, 1);
    TQ3DrawContextData d;
    Q3DrawContext_GetData(v.context, &d);
    d.paneState = kQ3True;
    d.pane = {{10, 10}, {30, 30}};
    Q3DrawContext_SetData(v.context, &d);
    TQ3GeometryObject sq = q3test::square(3.0f, 0);
    v.render([&](TQ3ViewObject view) { submitAll(view, {sq}); });
    EXPECT_EQ(v.pixels[5 * 40 + 5], 0xDEADBEEFu); // untouched
    EXPECT_EQ(v.at(20, 20).a, 255);               // drawn
    Q3Object_Dispose(sq);
    Q3Object_Dispose(r);
}

// Triangles that name vertices out of range or points that are not numbers
// are left out of the picture; the rest is traced.
TEST(FinalRenderer, BadTrianglesAreLeftOut) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    TQ3XVertex v[5]{};
    const TQ3Point3D points[5] = {{-1, -1, 0}, {1, -1, 0}, {0, 1, 0}, {nan, 0, 0}, {0, 0, 1e30f}};
    for (int i = 0; i < 5; ++i) {
        v[i].point = points[i];
        v[i].normal = {0, 0, 1};
        v[i].transparency = {1, 1, 1};
    }
    const TQ3Uns32 indices[] = {0, 1, 2, 0, 1, 3, 0, 1, 7, 2, 1, 4};
    const TQ3Vector3D normals[4] = {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {nan, 0, 0}};
    TQ3XDrawState state{};
    state.backfacing = kQ3BackfacingStyleBoth;
    TQ3XTriangleBatch batch{nullptr, &state, 5, v, 4, indices, normals, nullptr};
    lwsl::Scene scene;
    scene.add(batch);
    EXPECT_EQ(scene.triangleCount(), 2u); // the first and the huge one
    std::string why;
    ASSERT_TRUE(scene.build(why)) << why;
    lwsl::Hit hit;
    const float org[3] = {0, -0.5f, 5}, down[3] = {0, 0, -1};
    ASSERT_TRUE(scene.nearest(org, down, 0, 100, hit));
    EXPECT_FLOAT_EQ(hit.t, 5);
    EXPECT_EQ(hit.triangle, 0u);
    const float beside[3] = {5, 5, 5};
    EXPECT_FALSE(scene.nearest(beside, down, 0, 100, hit));
}
