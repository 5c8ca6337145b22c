// The triangles of one picture, copied from what a pass submits, and the
// Embree structure over them: nearest hits for camera rays (with back faces
// removed where the style asks) and the light that gets through towards a
// light, through see-through surfaces.
#pragma once

#include "platform/qd3d/Q3Texture.h"
#include "platform/qd3d/QD3DRendererExtension.h"

#include <embree3/rtcore.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace lwsl {

// What shading reads of a vertex, in one cache line, so that the corners of
// many hits are gathered in one loop.
struct alignas(64) Corner {
    float nx, ny, nz; // normal
    float dr, dg, db; // diffuse colour
    float sr, sg, sb; // specular colour
    float control;    // Phong exponent
    float ambient;    // ambient coefficient
    float alpha;      // opacity, as in Batch::alpha
    float u, v;       // texture place
    float unused[2];
};

struct Batch {
    TQ3XDrawState state{};
    std::vector<TQ3XVertex> vertices;
    std::vector<std::uint32_t> indices; // 3 a triangle, all in range
    std::vector<TQ3Vector3D> faceNormals;
    std::vector<float> alpha; // a vertex's opacity: the mean of its transparency colour
    bool seeThrough = false;  // some vertex is not opaque
    bool textured = false;    // a texture is in force and the vertices have UV
    // What the style says, as shading reads it.
    struct Look {
        std::int32_t flat = 0;            // attributes of corner 0, the face normal
        std::int32_t flip = 0;            // the normal turns towards the eye
        std::int32_t lit = 1;             // not null illumination
        std::int32_t phong = 0;           // Phong illumination
        std::int32_t receivesShadows = 1; // and is lit
    } look;
    q3::TextureView texture;
    TQ3Point3D lo{}, hi{};         // the box around the triangles' corners
    std::uint32_t firstCorner = 0; // of its vertices in Scene::corners
};

// The parts every ray of an Embree stream shares: a time of 0, all mask
// bits, no flags, and its place in the stream as its id. Filled as they
// grow, which they only do.
struct StreamConstants {
    void resize(std::size_t n);
    std::vector<float> time;
    std::vector<unsigned> mask, flags, id;
};

// A ray of a stream that is left out has an infinite tnear and a tfar of 0:
// Embree passes it by, and it misses.
constexpr float kLeftOut = std::numeric_limits<float>::infinity();

struct Hit {
    std::uint32_t batch, triangle;
    float u, v;  // weights of corners 1 and 2
    float t;     // distance along the ray
    float ng[3]; // the triangle's face normal
};

class Scene {
  public:
    Scene() = default;
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    // Copies a batch; triangles with bad indices or points that are not
    // finite are left out. Throws std::bad_alloc when memory runs out.
    void add(const TQ3XTriangleBatch& batch);
    // Builds the structure; false with a reason when Embree fails.
    bool build(std::string& error);
    // Drops the batches and the structure.
    void clear();

    // The nearest hit along the ray in [tnear, tfar].
    bool nearest(const float org[3], const float dir[3], float tnear, float tfar, Hit& hit) const;

    // The same for a stream of rays held one array a part, which Embree
    // traces faster when they run side by side (neighbouring samples of a
    // row); and the part of the light that gets through along each ray of
    // a stream, 0 when an opaque surface is in the way, into out by the
    // ray's id, which is its place in the stream: out holds 1 there when it
    // comes in. Rays left out (kLeftOut) miss, and their places in out are
    // left alone.
    void nearestStream(const RTCRayHitNp& rays, unsigned count) const;
    void transmissionStream(const RTCRayNp& rays, unsigned count, float* out) const;
    // The batch an answer of nearestStream hit, or null when it missed.
    const Batch* batchHit(unsigned geomID, unsigned primID) const {
        if (geomID >= batches.size()) return nullptr; // a miss too
        const Batch& b = batches[geomID];
        return primID < b.faceNormals.size() ? &b : nullptr;
    }

    const Batch& batch(std::uint32_t i) const { return batches[i]; }
    std::size_t batchCount() const { return batches.size(); }
    // The vertices of all batches, batch by batch.
    const Corner* corners() const { return cornerList.data(); }
    RTCScene handle() const { return scene; }
    std::size_t triangleCount() const { return triangles; }
    // A distance that is small against the size of the scene, for moving
    // the start of a ray off the surface it leaves.
    float epsilon() const { return eps; }

  private:
    void releaseEmbree();
    std::vector<Batch> batches;
    std::vector<Corner> cornerList;
    std::vector<TQ3TextureObject> textureRefs;
    std::size_t triangles = 0;
    float eps = 1e-4f;
    RTCDevice device = nullptr;
    RTCScene scene = nullptr;
};

} // namespace lwsl
