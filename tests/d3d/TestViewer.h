// A DExtViewer over a pixmap for the tests of the passes: it counts what
// the loops call and submits a display group as its scene.
#pragma once

#include "d3d/DCameraObject.h"
#include "d3d/DDrawContext.h"
#include "d3d/DExtViewer.h"
#include "d3d/DGroupObject.h"
#include "d3d/DViewerObject.h"

#include <QImage>

#include <functional>
#include <string>
#include <vector>

struct MouseEvent {
    float x, y;
};

class TestViewer : public DExtViewer {
  public:
    TestViewer(int w, int h, bool ortho = false);

    DViewerObject& GetViewer() override { return viewer; }
    void BeginFrame() override { ++beginFrames; }
    void EndFrame() override { ++endFrames; }
    void SubmitStyles() override {
        ++styleSubmits;
        style.Submit(viewer);
    }
    void SubmitGeometry() override {
        ++geometrySubmits;
        if (onGeometry) onGeometry();
        scene.Submit(viewer);
    }
    void SubmitAdorners() override { ++adornerSubmits; }
    std::int32_t GetCameraKind() override { return camera->kind; }
    void GetPickPoint(TQ3Point2D& out, const MouseEvent& event) override {
        out = {event.x, event.y};
    }

    // The pixel at (x, y) as 0xAARRGGBB.
    std::uint32_t At(int x, int y) const { return pixels[size_t(y) * width + x]; }
    // Writes the pixmap as a PNG into the test output folder.
    void Save(const std::string& name) const;

    int width, height;
    std::vector<std::uint32_t> pixels;
    DViewerObject viewer;
    std::unique_ptr<DCameraObject> camera;
    DPixmapDrawContext context;
    DLightGroup lights;
    DViewerStyle style;
    DDisplayGroup scene;
    std::function<void()> onGeometry;
    int beginFrames = 0, endFrames = 0, styleSubmits = 0, geometrySubmits = 0, adornerSubmits = 0;
};
