#include "tests/qd3d/Q3TestSupport.h"

#include <cmath>
#include <string>

namespace q3test {

TestView::TestView(int w, int h, float dist, bool ortho) : width(w), height(h) {
    pixels.assign(static_cast<size_t>(w) * h, 0xDEADBEEF);
    view = Q3View_New();
    TQ3CameraData cd{{{0, 0, dist}, {0, 0, 0}, {0, 1, 0}}, {0.1f, 100.0f}, {{-1, 1}, 2, 2}};
    if (ortho) {
        TQ3OrthographicCameraData od{cd, -1, 1, 1, -1};
        camera = Q3OrthographicCamera_New(&od);
    } else {
        TQ3ViewAngleAspectCameraData ad{cd, 1.5707964f, static_cast<float>(w) / h};
        camera = Q3ViewAngleAspectCamera_New(&ad);
    }
    TQ3PixmapDrawContextData pd{};
    pd.drawContextData.clearImageMethod = kQ3ClearMethodWithColor;
    pd.drawContextData.clearImageColor = {0, 0, 0, 0};
    pd.drawContextData.doubleBufferState = kQ3True;
    pd.pixmap = {pixels.data(),
                 static_cast<TQ3Uns32>(w),
                 static_cast<TQ3Uns32>(h),
                 static_cast<TQ3Uns32>(w * 4),
                 32,
                 kQ3PixelTypeARGB32,
                 kQ3EndianLittle,
                 kQ3EndianLittle};
    context = Q3PixmapDrawContext_New(&pd);
    lights = Q3LightGroup_New();
    Q3View_SetCamera(view, camera);
    Q3View_SetDrawContext(view, context);
    Q3View_SetLightGroup(view, lights);
    Q3View_SetRendererByType(view, kQ3RendererTypeInteractive);
}

TestView::~TestView() {
    Q3Object_Dispose(lights);
    Q3Object_Dispose(context);
    Q3Object_Dispose(camera);
    Q3Object_Dispose(view);
}

void TestView::addLight(TQ3LightObject light) {
    Q3Group_AddObject(lights, light);
    Q3Object_Dispose(light);
}

int TestView::render(const std::function<void(TQ3ViewObject)>& submit) {
    if (Q3View_StartRendering(view) != kQ3Success) return 0;
    int passes = 0;
    TQ3ViewStatus s;
    do {
        ++passes;
        submit(view);
        s = Q3View_EndRendering(view);
    } while (s == kQ3ViewStatusRetraverse && passes < 10);
    return passes;
}

Pixel TestView::at(int x, int y) const {
    std::uint32_t p = pixels[static_cast<size_t>(y) * width + x];
    return {int(p >> 24), int((p >> 16) & 255), int((p >> 8) & 255), int(p & 255)};
}

void TestView::save(const char* name) const {
    QImage image(reinterpret_cast<const uchar*>(pixels.data()), width, height, width * 4,
                 QImage::Format_ARGB32_Premultiplied);
    image.save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name + ".png"));
}

TQ3AttributeSet colourSet(float r, float g, float b) {
    TQ3AttributeSet set = Q3AttributeSet_New();
    TQ3ColorRGB c{r, g, b};
    Q3AttributeSet_Add(set, kQ3AttributeTypeDiffuseColor, &c);
    return set;
}

TQ3GeometryObject square(float half, float z, TQ3AttributeSet set) {
    TQ3Vertex3D v[4] = {{{-half, -half, z}, nullptr},
                        {{half, -half, z}, nullptr},
                        {{half, half, z}, nullptr},
                        {{-half, half, z}, nullptr}};
    TQ3PolygonData d{4, v, set};
    return Q3Polygon_New(&d);
}

TQ3LightObject directional(float x, float y, float z, float brightness) {
    TQ3DirectionalLightData d{{kQ3True, brightness, {1, 1, 1}}, kQ3False, {x, y, z}};
    return Q3DirectionalLight_New(&d);
}

TQ3LightObject ambient(float brightness) {
    TQ3LightData d{kQ3True, brightness, {1, 1, 1}};
    return Q3AmbientLight_New(&d);
}

} // namespace q3test
