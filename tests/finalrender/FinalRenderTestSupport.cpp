#include "tests/finalrender/FinalRenderTestSupport.h"

#include <gtest/gtest.h>

namespace frtest {

void registerFinalRenderer() {
    static bool done = false;
    if (done) return;
    done = true;
    Q3Initialize();
    ASSERT_EQ(Q3LightWorks_SL_Initialise(kQ3LightWorksSLClassName, kQ3LightWorksSLNickName,
                                         kQ3LightWorksSLNickName),
              kQ3Success);
}

TQ3RendererObject useFinalRenderer(q3test::TestView& view, unsigned samplesPerSide,
                                   bool transparencyAffectsAlpha) {
    registerFinalRenderer();
    TQ3RendererObject r = Q3Renderer_NewFromType(Q3LightWorks_SL_GetRendererType());
    EXPECT_NE(r, nullptr);
    EXPECT_EQ(Q3LightWorks_SL_SetSamplesPerSide(r, samplesPerSide), kQ3Success);
    EXPECT_EQ(Q3LightWorks_SL_SetAdaptiveSamples(r, kQ3False), kQ3Success);
    EXPECT_EQ(Q3LightWorks_SL_SetTransparencyAffectsAlpha(r, transparencyAffectsAlpha ? kQ3True
                                                                                      : kQ3False),
              kQ3Success);
    EXPECT_EQ(Q3View_SetRenderer(view.view, r), kQ3Success);
    return r;
}

int premultipliedFaults(const q3test::TestView& view) {
    int faults = 0;
    for (int y = 0; y < view.height; ++y)
        for (int x = 0; x < view.width; ++x) {
            q3test::Pixel p = view.at(x, y);
            if (p.r > p.a || p.g > p.a || p.b > p.a) ++faults;
        }
    return faults;
}

TQ3LightObject pointLight(float x, float y, float z, float brightness, bool castsShadows) {
    TQ3PointLightData d{{kQ3True, brightness, {1, 1, 1}},
                        castsShadows ? kQ3True : kQ3False,
                        kQ3AttenuationTypeNone,
                        {x, y, z}};
    return Q3PointLight_New(&d);
}

TQ3GeometryObject polygon(const TQ3Point3D* corners, int count, TQ3AttributeSet set) {
    std::vector<TQ3Vertex3D> v(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        v[i] = {corners[i], nullptr};
    TQ3PolygonData d{static_cast<TQ3Uns32>(count), v.data(), set};
    return Q3Polygon_New(&d);
}

void submitAll(TQ3ViewObject view, std::initializer_list<TQ3Object> objects) {
    for (TQ3Object o : objects)
        Q3Object_Submit(o, view);
}

int pixelX(const q3test::TestView& v, float x) {
    return static_cast<int>((x + 1) / 2 * v.width);
}

int pixelY(const q3test::TestView& v, float y) {
    return static_cast<int>((1 - y) / 2 * v.height);
}

} // namespace frtest
