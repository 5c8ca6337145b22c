// Helpers for the final renderer's tests: the renderer class registered, a
// test view switched to it, and checks that hold for every picture.
#pragma once

#include "platform/finalrender/LightWorksSL.h"
#include "tests/qd3d/Q3TestSupport.h"

namespace frtest {

// Starts the 3D library and registers the final renderer class once.
void registerFinalRenderer();

// Gives the view a new final renderer with the given anti-aliasing; answers
// the renderer, which the caller disposes of.
TQ3RendererObject useFinalRenderer(q3test::TestView& view, unsigned samplesPerSide = 1,
                                   bool transparencyAffectsAlpha = false);

// Counts pixels whose colour exceeds their alpha (must be none).
int premultipliedFaults(const q3test::TestView& view);

TQ3LightObject pointLight(float x, float y, float z, float brightness = 1.0f,
                          bool castsShadows = true);

// A polygon through the given corners with one attribute set for all.
TQ3GeometryObject polygon(const TQ3Point3D* corners, int count, TQ3AttributeSet set = nullptr);

// Submits each object (styles, shaders, geometry) in order.
void submitAll(TQ3ViewObject view, std::initializer_list<TQ3Object> objects);

// The window pixel in which an orthographic TestView shows world (x, y).
int pixelX(const q3test::TestView& v, float x);
int pixelY(const q3test::TestView& v, float y);

} // namespace frtest
