// Shading hits, many at a time.
#include "platform/finalrender/LWShader.h"

#include "platform/finalrender/LWLoops.h"

#include "platform/qd3d/Q3Lighting.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstring>
#include <limits>

namespace lwsl {
namespace {

// Four attributes of a corner, from the j-th four on, worked on at once.
using Four = float __attribute__((vector_size(16)));
static_assert(sizeof(Corner) == 4 * sizeof(Four));
Four fourOf(const Corner& c, int j) {
    Four v;
    std::memcpy(&v, reinterpret_cast<const char*>(&c) + j * sizeof(Four), sizeof v);
    return v;
}

// The j-th four attributes of the weighted sum of three corners, each
// a * wa + b * wb + c * wc.
Four mixFour(const Corner& a, const Corner& b, const Corner& c, int j, float wa, float wb,
             float wc) {
    return fourOf(a, j) * wa + fourOf(b, j) * wb + fourOf(c, j) * wc;
}

float clamp01(float v) {
    return std::isfinite(v) ? std::clamp(v, 0.0f, 1.0f) : 0.0f;
}

constexpr float kFloatMax = std::numeric_limits<float>::max();

template <typename T> void grow(std::vector<T>& v, std::size_t n) {
    if (v.size() < n) v.resize(n);
}

} // namespace

void Surfaces::resize(std::size_t n, std::size_t lights) {
    assert(n <= kMost);
    for (std::vector<float>* v : {&lx, &ly, &lz, &ld, &ox, &oy, &oz, &tnear, &far, &reach})
        grow(*v, n * lights);
    constants.resize(n * lights);
    count = n;
}

RTCRayNp Surfaces::shadowStream() {
    return {ox.data(),           oy.data(),
            oz.data(),           tnear.data(),
            lx.data(),           ly.data(),
            lz.data(),           constants.time.data(),
            far.data(),          constants.mask.data(),
            constants.id.data(), constants.flags.data()};
}

Shader::Shader(const Scene& scene, const std::vector<TQ3XLight>& lights, bool shadows)
    : scene(scene), lights(lights), shadows(shadows) {
    for (const TQ3XLight& l : lights)
        pointLike.push_back(l.type == kQ3LightTypeDirectional || l.type == kQ3LightTypePoint);
}

namespace {

// What prepare leaves to a loop over all points: the point and the way to
// the eye from the ray, the normal made unit length (the face normal stands
// in for one that vanishes) and turned towards the eye where the style
// asks, the exponent's digits, and no light yet.
LWSL_WIDE void completeSurfaces(Surfaces& s, const RTCRayNp& ray) {
    const std::size_t n = s.count;
    const float* ox = ray.org_x;
    const float* oy = ray.org_y;
    const float* oz = ray.org_z;
    const float* dx = ray.dir_x;
    const float* dy = ray.dir_y;
    const float* dz = ray.dir_z;
    const float* t = ray.tfar;
    std::int32_t allDigits = 0;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float d = t[i];
        s.px[i] = ox[i] + d * dx[i];
        s.py[i] = oy[i] + d * dy[i];
        s.pz[i] = oz[i] + d * dz[i];
        const float ex = -dx[i], ey = -dy[i], ez = -dz[i];
        s.vx[i] = ex;
        s.vy[i] = ey;
        s.vz[i] = ez;

        float x = s.nx[i], y = s.ny[i], z = s.nz[i];
        float len = std::sqrt(x * x + y * y + z * z);
        const bool vanishes = !(len > 1e-12f) | !(len <= kFloatMax);
        const float face = std::sqrt(s.gx[i] * s.gx[i] + s.gy[i] * s.gy[i] + s.gz[i] * s.gz[i]);
        x = vanishes ? s.gx[i] : x;
        y = vanishes ? s.gy[i] : y;
        z = vanishes ? s.gz[i] : z;
        const float faceLen = face > 1e-12f ? face : 1.0f;
        len = vanishes ? faceLen : len;
        x /= len;
        y /= len;
        z /= len;
        const bool turn = (s.flip[i] != 0) & (x * ex + y * ey + z * ez < 0);
        s.nx[i] = turn ? -x : x;
        s.ny[i] = turn ? -y : y;
        s.nz[i] = turn ? -z : z;

        // a whole exponent up to 64 is raised by squaring, as specularPower
        // does; one that is not whole goes to pow, and one of 0 or less
        // gives 1
        // (in masks of all bits, which the compiler keeps in vectors)
        const float power = s.control[i];
        const float inRange = (power > 0) & (power <= 64) ? power : 0.5f;
        const auto whole = static_cast<std::int32_t>(inRange);
        const std::int32_t isWhole = static_cast<float>(whole) == inRange ? -1 : 0;
        const std::int32_t bits = whole & isWhole;
        s.digits[i] = bits;
        s.byPow[i] = (power > 0 ? 1 : 0) & ~isWhole;
        allDigits |= bits;

        // null illumination shows the plain colour
        const float start = s.lit[i] != 0 ? 0.0f : 1.0f;
        s.dr[i] = s.dg[i] = s.db[i] = start;
        s.ssr[i] = s.ssg[i] = s.ssb[i] = 0;
    }
    s.steps = std::bit_width(static_cast<std::uint32_t>(allDigits));
}

// The colour: the base colour in the diffuse light, the specular light on
// top, each channel held to 0 to 1 (0 where it is not a number).
LWSL_WIDE void finishColours(Surfaces& s) {
    const std::size_t n = s.count;
    auto held = [](float v) {
        const float c = v < 0 ? 0.0f : v > 1 ? 1.0f : v;
        return std::fabs(v) <= kFloatMax ? c : 0.0f;
    };
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        s.fr[i] = held(s.br[i] * s.dr[i] + s.ssr[i]);
        s.fg[i] = held(s.bg[i] * s.dg[i] + s.ssg[i]);
        s.fb[i] = held(s.bb[i] * s.db[i] + s.ssb[i]);
        s.fa[i] = held(s.alpha[i]);
    }
}

// The unit direction from each point to point p and the distance, for the
// lighting of a light that casts no shadows.
LWSL_WIDE void towardsPoint(Surfaces& s, std::size_t off, const TQ3Point3D& p) {
    const std::size_t n = s.count;
    const float ax = p.x, ay = p.y, az = p.z;
    float* lx = s.lx.data() + off;
    float* ly = s.ly.data() + off;
    float* lz = s.lz.data() + off;
    float* ld = s.ld.data() + off;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float x = ax - s.px[i], y = ay - s.py[i], z = az - s.pz[i];
        const float d = std::sqrt(x * x + y * y + z * z);
        lx[i] = x / d;
        ly[i] = y / d;
        lz[i] = z / d;
        ld[i] = d;
    }
}

// Light li's part of the shadow rays: start, end and reach of each point.
// A directional light shines along c; a point light stands at c, and the
// unit direction to it and the distance go to s for the lighting too.
template <bool Directional>
LWSL_WIDE std::size_t shadowGeometry(Surfaces& s, std::size_t off, const float c[3], float e) {
    const std::size_t n = s.count;
    float* ox = s.ox.data() + off;
    float* oy = s.oy.data() + off;
    float* oz = s.oz.data() + off;
    float* tnear = s.tnear.data() + off;
    float* far = s.far.data() + off;
    float* reach = s.reach.data() + off;
    float* lx = s.lx.data() + off;
    float* ly = s.ly.data() + off;
    float* lz = s.lz.data() + off;
    float* ld = s.ld.data() + off;
    const float inf = std::numeric_limits<float>::infinity();
    const float ax = c[0], ay = c[1], az = c[2];
    std::size_t count = 0;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float x = ax - s.px[i], y = ay - s.py[i], z = az - s.pz[i];
        const float to = std::sqrt(x * x + y * y + z * z);
        const float dx = Directional ? ax : x / to, dy = Directional ? ay : y / to,
                    dz = Directional ? az : z / to, d = Directional ? inf : to;
        const bool reaches = Directional || ((d > 0) & (std::fabs(d) <= kFloatMax));
        const bool faces = s.nx[i] * dx + s.ny[i] * dy + s.nz[i] * dz > 0;
        const float side = s.gx[i] * dx + s.gy[i] * dy + s.gz[i] * dz >= 0 ? 1.0f : -1.0f;
        const bool ray = (s.shaded[i] != 0) & reaches & faces;
        ox[i] = s.px[i] + side * e * s.gx[i];
        oy[i] = s.py[i] + side * e * s.gy[i];
        oz[i] = s.pz[i] + side * e * s.gz[i];
        lx[i] = dx;
        ly[i] = dy;
        lz[i] = dz;
        if (!Directional) ld[i] = d;
        tnear[i] = ray ? e : kLeftOut;
        far[i] = ray ? (Directional ? inf : d * (1 - 1e-4f)) : 0.0f;
        reach[i] = (s.shaded[i] == 0) | !reaches | faces ? 1.0f : 0.0f;
        count += ray ? 1 : 0;
    }
    return count;
}

// What an ambient light gives each point.
LWSL_WIDE void addAmbient(Surfaces& s, const TQ3XLight& l, const float* reach) {
    const std::size_t n = s.count;
    const float cr = l.color.r, cg = l.color.g, cb = l.color.b, brightness = l.brightness;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float r = reach[i], k = brightness * s.ambient[i];
        const bool on = (s.lit[i] != 0) & (r > 0);
        s.dr[i] += on ? r * (k * cr) : 0.0f;
        s.dg[i] += on ? r * (k * cg) : 0.0f;
        s.db[i] += on ? r * (k * cb) : 0.0f;
    }
}

// The specular part of a light: the power by squaring for whole exponents
// up to 64 (Steps binary digits at most), as specularPower takes them (a
// factor of 1 changes nothing); the others are left to pow.
template <int Steps>
LWSL_WIDE void addSpecular(Surfaces& s, const float* reach, float cr, float cg, float cb) {
    const std::size_t n = s.count;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        float power = 1, b = s.rv[i];
        for (int k = 0; k < Steps; ++k) {
            power *= (s.digits[i] >> k) & 1 ? b : 1.0f;
            b *= b;
        }
        const float r = reach[i], p = s.strength[i] * power;
        const bool now = (s.shines[i] != 0) & (s.byPow[i] == 0);
        // every load outside the selections, which leaves no branch
        const float Sr = r * (p * cr * s.sr[i]), Sg = r * (p * cg * s.sg[i]),
                    Sb = r * (p * cb * s.sb[i]);
        s.ssr[i] += now ? Sr : 0.0f;
        s.ssg[i] += now ? Sg : 0.0f;
        s.ssb[i] += now ? Sb : 0.0f;
    }
}

using SpecularLoop = void (*)(Surfaces&, const float*, float, float, float);
constexpr SpecularLoop kSpecular[8] = {addSpecular<0>, addSpecular<1>, addSpecular<2>,
                                       addSpecular<3>, addSpecular<4>, addSpecular<5>,
                                       addSpecular<6>, addSpecular<7>};

// What a point or directional light gives each point.
template <bool Directional, int Attenuation>
LWSL_WIDE void addLight(Surfaces& s, std::size_t off, const TQ3XLight& l, const float* reach) {
    const std::size_t n = s.count;
    const float* lx = s.lx.data() + off;
    const float* ly = s.ly.data() + off;
    const float* lz = s.lz.data() + off;
    const float* ld = s.ld.data() + off;
    const float cr = l.color.r, cg = l.color.g, cb = l.color.b, brightness = l.brightness;
    const float cx = -l.direction.x, cy = -l.direction.y, cz = -l.direction.z;
    // the diffuse part, and what the specular part needs
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float r = reach[i], dist = Directional ? 1.0f : ld[i];
        const float Lx = Directional ? cx : lx[i], Ly = Directional ? cy : ly[i],
                    Lz = Directional ? cz : lz[i];
        const float strength = Attenuation == 1   ? brightness / std::max(dist, 1e-6f)
                               : Attenuation == 2 ? brightness / std::max(dist * dist, 1e-12f)
                                                  : brightness;
        const float Nx = s.nx[i], Ny = s.ny[i], Nz = s.nz[i];
        const float nl = Nx * Lx + Ny * Ly + Nz * Lz;
        const bool on = (s.lit[i] != 0) & (r > 0) & (dist > 0) & !(nl <= 0);
        const float k = strength * nl;
        s.dr[i] += on ? r * (k * cr) : 0.0f;
        s.dg[i] += on ? r * (k * cg) : 0.0f;
        s.db[i] += on ? r * (k * cb) : 0.0f;
        const float Rx = 2 * nl * Nx - Lx, Ry = 2 * nl * Ny - Ly, Rz = 2 * nl * Nz - Lz;
        const float v = Rx * s.vx[i] + Ry * s.vy[i] + Rz * s.vz[i];
        s.rv[i] = v;
        s.strength[i] = strength;
        s.shines[i] = on & (s.phong[i] != 0) & (v > 0) ? 1 : 0;
    }
    kSpecular[std::clamp(s.steps, 0, 7)](s, reach, cr, cg, cb);
    // the exponents that are not whole, through pow
    for (std::size_t j = 0; j < s.byPowCount; ++j) {
        const std::uint32_t i = s.byPowList[j];
        if (!s.shines[i]) continue;
        const float p = s.strength[i] * q3::specularPower(s.rv[i], s.control[i]);
        s.ssr[i] += reach[i] * (p * cr * s.sr[i]);
        s.ssg[i] += reach[i] * (p * cg * s.sg[i]);
        s.ssb[i] += reach[i] * (p * cb * s.sb[i]);
    }
}

} // namespace

std::size_t Shader::shadowRays(Surfaces& s, std::size_t li) const {
    const TQ3XLight& l = lights[li];
    const std::size_t n = s.count, off = li * n;
    const bool directional = l.type == kQ3LightTypeDirectional;
    if (!l.castsShadows || l.type == kQ3LightTypeAmbient) {
        if (l.type != kQ3LightTypeAmbient && !directional) towardsPoint(s, off, l.location);
        std::fill_n(s.reach.begin() + static_cast<std::ptrdiff_t>(off), n, 1.0f);
        std::fill_n(s.tnear.begin() + static_cast<std::ptrdiff_t>(off), n, kLeftOut);
        std::fill_n(s.far.begin() + static_cast<std::ptrdiff_t>(off), n, 0.0f);
        return 0;
    }
    const float e = scene.epsilon();
    if (directional) {
        const float c[3] = {-l.direction.x, -l.direction.y, -l.direction.z};
        return shadowGeometry<true>(s, off, c, e);
    }
    const float c[3] = {l.location.x, l.location.y, l.location.z};
    return shadowGeometry<false>(s, off, c, e);
}

std::size_t Shader::prepare(const RTCRayHitNp& hits, std::size_t count, Surfaces& s) const {
    s.count = count;
    const Corner* corners = scene.corners();
    std::size_t found = 0;
    // ray by ray, what the triangle, its corners and its style say; the
    // rest goes in the loop over all of them below
    for (std::size_t k = 0; k < count; ++k) {
        const unsigned prim = hits.hit.primID[k];
        const Batch* on = scene.batchHit(hits.hit.geomID[k], prim);
        s.batch[k] = on;
        if (!on) {
            s.hit[k] = s.flip[k] = s.lit[k] = s.phong[k] = s.shaded[k] = 0;
            s.gx[k] = s.gy[k] = s.gz[k] = s.nx[k] = s.ny[k] = s.nz[k] = 0;
            s.br[k] = s.bg[k] = s.bb[k] = s.sr[k] = s.sg[k] = s.sb[k] = 0;
            s.control[k] = s.ambient[k] = s.alpha[k] = 0;
            continue;
        }
        ++found;
        const std::uint32_t* t = on->indices.data() + 3 * static_cast<std::size_t>(prim);
        const Corner* first = corners + on->firstCorner;
        const Corner &a = first[t[0]], &b = first[t[1]], &c = first[t[2]];
        const float wb = hits.hit.u[k], wc = hits.hit.v[k], wa = 1 - wb - wc;
        const TQ3Vector3D& g = on->faceNormals[prim];
        s.gx[k] = g.x;
        s.gy[k] = g.y;
        s.gz[k] = g.z;
        const Batch::Look& look = on->look;
        s.hit[k] = 1;
        s.flip[k] = look.flip;
        s.lit[k] = look.lit;
        s.phong[k] = look.phong;
        s.shaded[k] = shadows && look.receivesShadows;
        // the attributes: weighted, or those of corner 0 with the face
        // normal where the style is flat
        // (the weighted attributes come in fours: normal and red; green,
        // blue and specular red and green; specular blue, exponent, ambient
        // and opacity)
        const Four m0 = mixFour(a, b, c, 0, wa, wb, wc), m1 = mixFour(a, b, c, 1, wa, wb, wc),
                   m2 = mixFour(a, b, c, 2, wa, wb, wc);
        if (look.flat) {
            s.nx[k] = g.x;
            s.ny[k] = g.y;
            s.nz[k] = g.z;
            s.br[k] = a.dr;
            s.bg[k] = a.dg;
            s.bb[k] = a.db;
            s.sr[k] = a.sr;
            s.sg[k] = a.sg;
            s.sb[k] = a.sb;
            s.control[k] = a.control;
            s.ambient[k] = a.ambient;
        } else {
            s.nx[k] = m0[0];
            s.ny[k] = m0[1];
            s.nz[k] = m0[2];
            s.br[k] = m0[3];
            s.bg[k] = m1[0];
            s.bb[k] = m1[1];
            s.sr[k] = m1[2];
            s.sg[k] = m1[3];
            s.sb[k] = m2[0];
            s.control[k] = m2[1];
            s.ambient[k] = m2[2];
        }
        const float opacity = m2[3];
        s.alpha[k] = std::fabs(opacity) <= kFloatMax ? std::clamp(opacity, 0.0f, 1.0f) : 0.0f;
        if (on->textured) {
            const Four m3 = mixFour(a, b, c, 3, wa, wb, wc);
            const TQ3ColorARGB tc = q3::sampleTexture(on->texture, m3[0], m3[1]);
            s.br[k] = tc.r;
            s.bg[k] = tc.g;
            s.bb[k] = tc.b;
            s.alpha[k] *= clamp01(tc.a);
        }
    }
    completeSurfaces(s, hits.ray);
    // the points whose exponents go to pow, listed with no branch: they lie
    // either side of those that do not
    std::size_t listed = 0;
    for (std::size_t k = 0; k < count; ++k) {
        s.byPowList[listed] = static_cast<std::uint32_t>(k);
        listed += static_cast<std::size_t>(s.byPow[k]);
    }
    s.byPowCount = listed;
    return found;
}

// The lighting equation of the interactive renderer for one light, in the
// same steps, so that both renderers give a point the same colour. Spot
// lights, which are rare, go through the equation itself.
void Shader::light(Surfaces& s, std::size_t li, const float* reach) const {
    const TQ3XLight& l = lights[li];
    const std::size_t n = s.count;
    if (l.type == kQ3LightTypeAmbient) {
        addAmbient(s, l, reach);
        return;
    }
    if (!pointLike[li]) {
        for (std::size_t i = 0; i < n; ++i) {
            if (!s.lit[i] || !(reach[i] > 0)) continue;
            TQ3XVertex at{};
            at.point = {s.px[i], s.py[i], s.pz[i]};
            at.normal = {s.nx[i], s.ny[i], s.nz[i]};
            at.specular = {s.sr[i], s.sg[i], s.sb[i]};
            at.specularControl = s.control[i];
            at.ambientCoefficient = s.ambient[i];
            const q3::LightTerms terms =
                q3::lightVertex(s.batch[i]->state.illumination, &l, 1, at.point, at.normal,
                                {s.vx[i], s.vy[i], s.vz[i]}, at);
            s.dr[i] += reach[i] * terms.diffuse.r;
            s.dg[i] += reach[i] * terms.diffuse.g;
            s.db[i] += reach[i] * terms.diffuse.b;
            s.ssr[i] += reach[i] * terms.specular.r;
            s.ssg[i] += reach[i] * terms.specular.g;
            s.ssb[i] += reach[i] * terms.specular.b;
        }
        return;
    }
    const std::size_t off = li * n;
    if (l.type == kQ3LightTypeDirectional)
        addLight<true, 0>(s, off, l, reach);
    else if (l.attenuation == kQ3AttenuationTypeInverseDistance)
        addLight<false, 1>(s, off, l, reach);
    else if (l.attenuation == kQ3AttenuationTypeInverseDistanceSquared)
        addLight<false, 2>(s, off, l, reach);
    else
        addLight<false, 0>(s, off, l, reach);
}

void Shader::finish(Surfaces& s) const {
    finishColours(s);
}

Shaded Shader::shade(Surfaces& one, std::uint64_t& shadowCount) const {
    const std::size_t nl = lights.size();
    std::size_t rays = 0;
    for (std::size_t li = 0; li < nl; ++li)
        rays += shadowRays(one, li);
    if (rays != 0)
        scene.transmissionStream(one.shadowStream(), static_cast<unsigned>(nl), one.reach.data());
    shadowCount += rays;
    for (std::size_t li = 0; li < nl; ++li)
        light(one, li, one.reach.data() + li);
    finish(one);
    return {one.fr[0], one.fg[0], one.fb[0], one.fa[0]};
}

} // namespace lwsl
