#include "bench/render/SceneRecorder.h"

#include <cstdio>

namespace {

TQ3XRendererMethods recorderMethods() {
    TQ3XRendererMethods m{};
    m.newInstance = []() -> void* { return new RecordedScene; };
    m.deleteInstance = [](void* p) { delete static_cast<RecordedScene*>(p); };
    m.startPass = [](void* p, TQ3ViewObject, const TQ3XPassInfo* info) {
        auto* s = static_cast<RecordedScene*>(p);
        *s = RecordedScene{};
        s->pass = *info;
        s->lights.assign(info->lights, info->lights + info->numLights);
        s->pass.lights = nullptr;
        return kQ3Success;
    };
    m.submitTriangles = [](void* p, const TQ3XTriangleBatch* b) {
        auto* s = static_cast<RecordedScene*>(p);
        const auto base = static_cast<std::uint32_t>(s->points.size() / 3);
        for (TQ3Uns32 i = 0; i < b->numVertices; ++i) {
            const TQ3Point3D& q = b->vertices[i].point;
            s->points.insert(s->points.end(), {q.x, q.y, q.z});
        }
        for (TQ3Uns32 i = 0; i < 3 * b->numTriangles; ++i)
            s->indices.push_back(base + b->indices[i]);
        return kQ3Success;
    };
    m.endPass = [](void*, TQ3ViewObject) { return kQ3ViewStatusDone; };
    return m;
}

} // namespace

TQ3ObjectType sceneRecorderType() {
    static TQ3ObjectType type = 0;
    if (type == 0) {
        static const TQ3XRendererMethods methods = recorderMethods();
        Q3XRendererClass_Register(0, "Plumet:Bench:SceneRecorder", "Scene recorder", &methods,
                                  &type);
    }
    return type;
}

const RecordedScene& recordedScene(TQ3RendererObject recorder) {
    return *static_cast<const RecordedScene*>(Q3XRenderer_GetInstance(recorder));
}

bool writeObj(const RecordedScene& scene, const std::string& path) {
    FILE* f = std::fopen(path.c_str(), "w");
    if (!f) return false;
    std::fprintf(f, "# extruded letters of the render benchmark, world coordinates\no letters\n");
    for (std::size_t i = 0; i + 2 < scene.points.size(); i += 3)
        std::fprintf(f, "v %.6f %.6f %.6f\n", scene.points[i], scene.points[i + 1],
                     scene.points[i + 2]);
    for (std::size_t i = 0; i + 2 < scene.indices.size(); i += 3)
        std::fprintf(f, "f %u %u %u\n", scene.indices[i] + 1, scene.indices[i + 1] + 1,
                     scene.indices[i + 2] + 1);
    return std::fclose(f) == 0;
}

bool writePeerScene(const PeerScene& s, const std::string& path) {
    FILE* f = std::fopen(path.c_str(), "w");
    if (!f) return false;
    std::fprintf(f, "size %d %d\nsamples %u\neye %g %g %g\ntarget %g %g %g\nup %g %g %g\n", s.width,
                 s.height, s.samples, s.eye.x, s.eye.y, s.eye.z, s.target.x, s.target.y, s.target.z,
                 s.up.x, s.up.y, s.up.z);
    std::fprintf(f, "fov_vertical %g\nambient %g\n", s.fovVertical, s.ambient);
    for (const auto& [p, brightness] : s.pointLights)
        std::fprintf(f, "point_light %g %g %g %g\n", p.x, p.y, p.z, brightness);
    return std::fclose(f) == 0;
}
