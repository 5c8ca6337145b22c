// A renderer class of the benchmark's own that draws nothing and keeps what
// a pass hands a renderer: the camera matrices, the lights and every
// triangle in world coordinates. The raw Embree run and the OBJ export for
// the peer read the scene from it, so that all three see the same triangles.
#pragma once

#include "platform/qd3d/QD3DRendererExtension.h"

#include <cstdint>
#include <string>
#include <utility>
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

// What the peer renderer needs besides the triangles: size, samples a
// pixel, the camera and the lights, one "key values" line each.
struct PeerScene {
    int width = 0, height = 0;
    unsigned samples = 1;
    TQ3Point3D eye{}, target{}, up{0, 1, 0};
    float fovVertical = 0; // radians
    float ambient = 0;
    std::vector<std::pair<TQ3Point3D, float>> pointLights; // place, brightness
};
bool writePeerScene(const PeerScene& scene, const std::string& path);
