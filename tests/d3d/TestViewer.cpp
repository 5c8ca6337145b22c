#include "tests/d3d/TestViewer.h"

namespace {

std::unique_ptr<DCameraObject> MakeCamera(bool ortho, int w, int h) {
    std::unique_ptr<DCameraObject> camera;
    if (ortho) {
        auto o = std::make_unique<DOrthographicCamera>();
        o->FitToPane(4, 4.0f * h / w);
        camera = std::move(o);
    } else {
        auto a = std::make_unique<DAngleAspectCamera>();
        a->SetAspect(float(w) / float(h));
        camera = std::move(a);
    }
    camera->SetPlacement({0, 0, 5}, {0, 0, 0}, {0, 1, 0});
    return camera;
}

} // namespace

TestViewer::TestViewer(int w, int h, bool ortho)
    : width(w), height(h), pixels(size_t(w) * h, 0), camera(MakeCamera(ortho, w, h)),
      context(pixels.data(), w, h, w * 4) {
    viewer.SetCamera(*camera);
    viewer.SetDrawContext(context);
    lights.AddDefaultLights();
    viewer.SetLightGroup(lights);
}

void TestViewer::Save(const std::string& name) const {
    QImage image(reinterpret_cast<const uchar*>(pixels.data()), width, height, width * 4,
                 QImage::Format_ARGB32_Premultiplied);
    image.save(QString::fromStdString(std::string(PLUMET_TEST_OUTPUT) + "/" + name));
}
