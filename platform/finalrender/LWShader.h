// The colour of a surface point: the interactive renderer's lighting equation
// (ambient, then each light with its attenuation, cone and Phong highlight),
// evaluated at the point with the interpolated normal, where each light that
// casts shadows is first asked whether it reaches the point.
//
// Shading runs in two steps so that the shadow rays of many points can be
// traced together: prepare finds the point's attributes and which lights
// need a ray, and finish lights it with what the rays found.
#pragma once

#include "platform/finalrender/LWScene.h"

#include <cstdint>
#include <vector>

namespace lwsl {

struct Shaded {
    float r, g, b; // not premultiplied, 0 to 1
    float a;       // opacity
};

// A hit point with its attributes, ready for lighting.
struct Surface {
    TQ3Point3D point;
    TQ3Vector3D normal;    // unit, facing as the style says
    TQ3Vector3D V;         // towards the eye
    float ng[3];           // face normal
    TQ3ColorRGB base;      // diffuse or texel colour
    TQ3ColorRGB specular;  // specular colour
    float specularControl; // Phong exponent
    float ambient;         // ambient coefficient
    float alpha;           // opacity
    const Batch* batch;    // the draw state
    bool receives;         // shadows are traced for it
};

class Shader {
  public:
    Shader(const Scene& scene, const std::vector<TQ3XLight>& lights, bool shadows)
        : scene(scene), lights(lights), shadows(shadows) {}

    // The point that a ray in direction dir (unit) from org hit.
    void prepare(const Hit& hit, const float org[3], const float dir[3], Surface& s) const;
    // How light li reaches the point: 1 with no ray to trace, 0 when it
    // cannot (it is behind the surface), or -1 with the shadow ray filled in.
    // With a ray towards a point light, toLight gets the unit direction and
    // the distance, which finish then takes instead of working them out again.
    float shadowRay(const Surface& s, std::size_t li, RTCRay& ray, float toLight[4]) const;
    // The colour with reach[li] the part of light li that gets to the point.
    // toLight, when not null, holds four floats a light as shadowRay left
    // them (a distance of 0 where it left nothing).
    Shaded finish(const Surface& s, const float* reach, const float* toLight = nullptr) const;

    // All three steps for one point, tracing its shadow rays one by one.
    Shaded shade(const Hit& hit, const float org[3], const float dir[3],
                 std::uint64_t& shadowRays) const;

    std::size_t lightCount() const { return lights.size(); }

  private:
    // The light that light li gives the surface, with reach the part that
    // gets to it, added to the diffuse sum D and the specular sum S.
    void addLight(const Surface& s, std::size_t li, float reach, const float* toLight,
                  TQ3ColorRGB& D, TQ3ColorRGB& S) const;

    const Scene& scene;
    const std::vector<TQ3XLight>& lights;
    bool shadows;
};

} // namespace lwsl
