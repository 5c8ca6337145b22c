// The colour of a surface point: the interactive renderer's lighting equation
// (ambient, then each light with its attenuation, cone and Phong highlight),
// evaluated at the point with the interpolated normal, where each light that
// casts shadows is first asked whether it reaches the point.
#pragma once

#include "platform/finalrender/LWScene.h"

#include <cstdint>
#include <vector>

namespace lwsl {

struct Shaded {
    float r, g, b; // not premultiplied, 0 to 1
    float a;       // opacity
};

struct ShadeCounters {
    std::uint64_t shadowRays = 0;
};

class Shader {
  public:
    Shader(const Scene& scene, const std::vector<TQ3XLight>& lights, bool shadows)
        : scene(scene), lights(lights), shadows(shadows) {}

    // The point that a ray in direction dir (unit) hit.
    Shaded shade(const Hit& hit, const float org[3], const float dir[3],
                 ShadeCounters& counters) const;

  private:
    float lightReaching(const TQ3XLight& light, const float p[3], const float ng[3],
                        ShadeCounters& counters) const;
    const Scene& scene;
    const std::vector<TQ3XLight>& lights;
    bool shadows;
};

} // namespace lwsl
