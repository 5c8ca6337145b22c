// Helpers for the 3D library's tests: a view over a pixmap, a pass runner,
// pixel reads and PNG output for looking at what was drawn.
#pragma once

#include "tests/qd3d/Q3LibraryTest.h"

#include <QImage>
#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

namespace q3test {

struct Pixel {
    int a, r, g, b;
};

// A view with a camera at (0, 0, dist) looking at the origin (a 90 degree
// field, or an orthographic frame of +-1 when ortho), a pixmap draw context
// of w by h pixels cleared to transparent black, and the interactive renderer.
class TestView {
  public:
    TestView(int w, int h, float dist = 5.0f, bool ortho = false);
    ~TestView();
    TestView(const TestView&) = delete;
    TestView& operator=(const TestView&) = delete;

    TQ3ViewObject view = nullptr;
    TQ3CameraObject camera = nullptr;
    TQ3DrawContextObject context = nullptr;
    TQ3GroupObject lights = nullptr;
    int width, height;
    std::vector<std::uint32_t> pixels;

    // Runs a rendering pass, calling submit for every traversal; answers the
    // number of traversals.
    int render(const std::function<void(TQ3ViewObject)>& submit);
    Pixel at(int x, int y) const;
    void save(const char* name) const;   // PNG in the test output folder
    void addLight(TQ3LightObject light); // gives up the caller's reference
};

TQ3AttributeSet colourSet(float r, float g, float b);
// A square of side 2 * half at depth z facing +z, as a polygon.
TQ3GeometryObject square(float half, float z, TQ3AttributeSet set = nullptr);
TQ3LightObject directional(float x, float y, float z, float brightness = 1.0f);
TQ3LightObject ambient(float brightness);

} // namespace q3test
