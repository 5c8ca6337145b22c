// The colour of a surface point: the interactive renderer's lighting equation
// (ambient, then each light with its attenuation, cone and Phong highlight),
// evaluated at the point with the interpolated normal, where each light that
// casts shadows is first asked whether it reaches the point.
//
// Shading runs over many points at once, in steps, so that the shadow rays
// of all of them are traced together and each step is a plain loop over
// arrays: prepare finds the points' attributes, shadowRays makes the rays of
// one light, and light adds what one light gives.
#pragma once

#include "platform/finalrender/LWScene.h"

#include <cstdint>
#include <vector>

namespace lwsl {

struct Shaded {
    float r, g, b; // not premultiplied, 0 to 1
    float a;       // opacity
};

// The points where the rays of a stream meet a surface, with their
// attributes, one array an attribute, and the light that reaches them so
// far: element k is ray k's, and the rays that meet nothing have hit 0 and
// are neither lit nor shadowed. The arrays of the points hold kMost each
// and lie at fixed places, so that the loops over them reach every one from
// the same base; being large, a Surfaces lives on the heap.
struct Surfaces {
    static constexpr std::size_t kMost = 2048;
    // Each array is a cache line longer than kMost, so that element k of
    // every array does not fall in the same set of the cache.
    static constexpr std::size_t kRoom = kMost + 16;
    // Room for n points (at most kMost) and as many lights.
    void resize(std::size_t n, std::size_t lights);

    std::size_t count = 0;
    std::int32_t hit[kRoom];               // the ray met a surface
    float px[kRoom], py[kRoom], pz[kRoom]; // the point
    float nx[kRoom], ny[kRoom], nz[kRoom]; // unit normal, facing as the style says
    float vx[kRoom], vy[kRoom], vz[kRoom]; // towards the eye
    float gx[kRoom], gy[kRoom], gz[kRoom]; // face normal
    float br[kRoom], bg[kRoom], bb[kRoom]; // diffuse or texel colour
    float sr[kRoom], sg[kRoom], sb[kRoom]; // specular colour
    float control[kRoom];                  // Phong exponent
    float ambient[kRoom];                  // ambient coefficient
    float alpha[kRoom];                    // opacity
    const Batch* batch[kRoom];             // the draw state
    // The Phong exponent as the highlight takes it: a whole one up to 64 as
    // its binary digits (0 for none, which gives a power of 1), any other
    // marked for pow. steps: digits of the largest.
    std::int32_t digits[kRoom], byPow[kRoom];
    int steps = 0;
    std::uint32_t byPowList[kRoom]; // the points with byPow, byPowCount of them
    std::size_t byPowCount = 0;
    std::int32_t flip[kRoom];                         // the normal turns towards the eye
    std::int32_t lit[kRoom];                          // not null illumination
    std::int32_t phong[kRoom];                        // Phong illumination
    std::int32_t shaded[kRoom];                       // receives shadows
    float dr[kRoom], dg[kRoom], db[kRoom];            // diffuse light so far
    float ssr[kRoom], ssg[kRoom], ssb[kRoom];         // specular light so far
    float fr[kRoom], fg[kRoom], fb[kRoom], fa[kRoom]; // the colour, not premultiplied, 0 to 1
    // Scratch of one light: the cosine of the highlight, the light's
    // strength and whether it shines.
    float rv[kRoom], strength[kRoom];
    std::int32_t shines[kRoom];
    // Light by light (count a light): the unit direction towards each
    // light and the distance, which shadow rays and lighting share; the
    // shadow rays, one a point and a light, as an Embree stream; and the
    // part of each light that reaches each point. These grow.
    std::vector<float> lx, ly, lz, ld;
    std::vector<float> ox, oy, oz, tnear, far;
    StreamConstants constants;
    std::vector<float> reach;

    // The shadow rays of every light, light by light.
    RTCRayNp shadowStream();
};

class Shader {
  public:
    Shader(const Scene& scene, const std::vector<TQ3XLight>& lights, bool shadows);

    // The first surface of each of the count rays of a stream that
    // Scene::nearestStream traced, into s, which holds room for them.
    // Returns the number of rays that met one.
    std::size_t prepare(const RTCRayHitNp& hits, std::size_t count, Surfaces& s) const;
    // How light li reaches each point, in its part of s.reach: 0 when it
    // cannot (it is behind the surface), else 1, which the point's shadow
    // ray, if it has one in its part of the shadow stream, lowers when it is
    // traced; the other rays of that part are left out. Returns the number
    // of rays to trace.
    std::size_t shadowRays(Surfaces& s, std::size_t li) const;
    // Adds the light of light li to every point, with reach[i] the part that
    // gets to point i.
    void light(Surfaces& s, std::size_t li, const float* reach) const;
    // The colour of every point once every light is in, into s.fr, fg, fb
    // and fa.
    void finish(Surfaces& s) const;

    // The colour of the one point that prepare put in one.
    Shaded shade(Surfaces& one, std::uint64_t& shadowRays) const;

    std::size_t lightCount() const { return lights.size(); }

  private:
    const Scene& scene;
    const std::vector<TQ3XLight>& lights;
    bool shadows;
    std::vector<std::uint8_t> pointLike; // directional or point: lit in the loop
};

} // namespace lwsl
