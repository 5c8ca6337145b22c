// A renderer class of the benchmark's own that draws nothing and keeps what
// a pass hands a renderer: the camera matrices, the lights and every
// triangle in world coordinates. The raw Embree run and the OBJ export for
// the peer read the scene from it, so that all three see the same triangles.
#pragma once

#include "platform/qd3d/QD3DRendererExtension.h"

#include <cstdint>
#include <string>
#include <vector>

struct RecordedScene {
    TQ3XPassInfo pass{};
    std::vector<TQ3XLight> lights;
    std::vector<float> points; // x, y, z
    std::vector<std::uint32_t> indices;
};

// Registers the class once; answers its type.
TQ3ObjectType sceneRecorderType();
// What the recorder saw in its last pass.
const RecordedScene& recordedScene(TQ3RendererObject recorder);
// Writes the triangles as a Wavefront OBJ file.
bool writeObj(const RecordedScene& scene, const std::string& path);
