// Shading hits, many at a time.
#include "platform/finalrender/LWShader.h"

#include "platform/qd3d/Q3Lighting.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lwsl {
namespace {

float mix(float a, float b, float c, float wa, float wb, float wc) {
    return a * wa + b * wb + c * wc;
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
    for (std::vector<float>* v :
         {&px, &py, &pz,  &nx,  &ny,  &nz, &vx, &vy,      &vz,      &gx,    &gy,
          &gz, &br, &bg,  &bb,  &sr,  &sg, &sb, &control, &ambient, &alpha, &dr,
          &dg, &db, &ssr, &ssg, &ssb, &ox, &oy, &oz,      &far,     &rv,    &strength})
        grow(*v, n);
    for (std::vector<float>* v : {&lx, &ly, &lz, &ld})
        grow(*v, n * lights);
    grow(batch, n);
    grow(lit, n);
    grow(phong, n);
    grow(shaded, n);
    grow(later, n);
    grow(shines, n);
    count = n;
}

Shader::Shader(const Scene& scene, const std::vector<TQ3XLight>& lights, bool shadows)
    : scene(scene), lights(lights), shadows(shadows) {
    for (const TQ3XLight& l : lights)
        pointLike.push_back(l.type == kQ3LightTypeDirectional || l.type == kQ3LightTypePoint);
}

void Shader::prepare(const Hit& hit, const float org[3], const float dir[3], Surfaces& s,
                     std::size_t i) const {
    const Batch& b = scene.batch(hit.batch);
    const std::uint32_t* t = &b.indices[3 * static_cast<std::size_t>(hit.triangle)];
    const TQ3XVertex& v0 = b.vertices[t[0]];
    const TQ3XVertex& v1 = b.vertices[t[1]];
    const TQ3XVertex& v2 = b.vertices[t[2]];
    const float w1 = hit.u, w2 = hit.v, w0 = 1 - w1 - w2;
    const TQ3XDrawState& d = b.state;
    s.batch[i] = &b;
    TQ3Vector3D N;
    if (d.interpolation == kQ3InterpolationStyleNone) {
        // flat: the face normal and the first corner's attributes
        N = {hit.ng[0], hit.ng[1], hit.ng[2]};
        s.br[i] = v0.diffuse.r;
        s.bg[i] = v0.diffuse.g;
        s.bb[i] = v0.diffuse.b;
        s.sr[i] = v0.specular.r;
        s.sg[i] = v0.specular.g;
        s.sb[i] = v0.specular.b;
        s.control[i] = v0.specularControl;
        s.ambient[i] = v0.ambientCoefficient;
    } else {
        N = {mix(v0.normal.x, v1.normal.x, v2.normal.x, w0, w1, w2),
             mix(v0.normal.y, v1.normal.y, v2.normal.y, w0, w1, w2),
             mix(v0.normal.z, v1.normal.z, v2.normal.z, w0, w1, w2)};
        s.br[i] = mix(v0.diffuse.r, v1.diffuse.r, v2.diffuse.r, w0, w1, w2);
        s.bg[i] = mix(v0.diffuse.g, v1.diffuse.g, v2.diffuse.g, w0, w1, w2);
        s.bb[i] = mix(v0.diffuse.b, v1.diffuse.b, v2.diffuse.b, w0, w1, w2);
        s.sr[i] = mix(v0.specular.r, v1.specular.r, v2.specular.r, w0, w1, w2);
        s.sg[i] = mix(v0.specular.g, v1.specular.g, v2.specular.g, w0, w1, w2);
        s.sb[i] = mix(v0.specular.b, v1.specular.b, v2.specular.b, w0, w1, w2);
        s.control[i] = mix(v0.specularControl, v1.specularControl, v2.specularControl, w0, w1, w2);
        s.ambient[i] =
            mix(v0.ambientCoefficient, v1.ambientCoefficient, v2.ambientCoefficient, w0, w1, w2);
    }
    s.px[i] = org[0] + hit.t * dir[0];
    s.py[i] = org[1] + hit.t * dir[1];
    s.pz[i] = org[2] + hit.t * dir[2];
    s.alpha[i] = clamp01(mix(b.alpha[t[0]], b.alpha[t[1]], b.alpha[t[2]], w0, w1, w2));
    s.gx[i] = hit.ng[0];
    s.gy[i] = hit.ng[1];
    s.gz[i] = hit.ng[2];

    float len = std::sqrt(N.x * N.x + N.y * N.y + N.z * N.z);
    if (!(len > 1e-12f) || !std::isfinite(len)) {
        N = {hit.ng[0], hit.ng[1], hit.ng[2]};
        len = std::sqrt(N.x * N.x + N.y * N.y + N.z * N.z);
        if (!(len > 1e-12f)) len = 1;
    }
    N = {N.x / len, N.y / len, N.z / len};
    const TQ3Vector3D V{-dir[0], -dir[1], -dir[2]};
    if (d.backfacing == kQ3BackfacingStyleFlip && N.x * V.x + N.y * V.y + N.z * V.z < 0)
        N = {-N.x, -N.y, -N.z};
    s.nx[i] = N.x;
    s.ny[i] = N.y;
    s.nz[i] = N.z;
    s.vx[i] = V.x;
    s.vy[i] = V.y;
    s.vz[i] = V.z;
    s.lit[i] = d.illumination != kQ3IlluminationTypeNULL;
    s.phong[i] = d.illumination == kQ3IlluminationTypePhong;
    s.shaded[i] = shadows && d.receiveShadows != kQ3False && s.lit[i];
    // null illumination shows the plain colour
    const float start = s.lit[i] ? 0.0f : 1.0f;
    s.dr[i] = s.dg[i] = s.db[i] = start;
    s.ssr[i] = s.ssg[i] = s.ssb[i] = 0;

    if (b.textured) {
        const float u = mix(v0.uv.u, v1.uv.u, v2.uv.u, w0, w1, w2),
                    v = mix(v0.uv.v, v1.uv.v, v2.uv.v, w0, w1, w2);
        const TQ3ColorARGB tc = q3::sampleTexture(b.texture, u, v);
        s.br[i] = tc.r;
        s.bg[i] = tc.g;
        s.bb[i] = tc.b;
        s.alpha[i] *= clamp01(tc.a);
    }
}

namespace {

// The loops below run on several points at a time: the arrays they read and
// write never overlap, which INDEPENDENT tells the compiler, and their
// conditions are selections, not branches.
#if defined(__clang__)
#define LWSL_INDEPENDENT _Pragma("clang loop vectorize(assume_safety)")
#elif defined(__GNUC__)
#define LWSL_INDEPENDENT _Pragma("GCC ivdep")
#else
#define LWSL_INDEPENDENT
#endif
// Where the processor has AVX2, the loops also come in a version for it,
// picked when the program loads; it has no fused multiply-add, so the
// results are the same.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__)
#define LWSL_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define LWSL_WIDE
#endif
#define LWSL_ARRAY(name, from) float* name = (from).data()
#define LWSL_FLAGS(name, from) const std::int32_t* name = (from).data()

// Light li's part of the shadow rays: start, end and reach of each point.
// The unit direction from each point to point p and the distance, for the
// shadow rays and the lighting both.
LWSL_WIDE void towardsPoint(Surfaces& s, std::size_t off, const TQ3Point3D& p) {
    const std::size_t n = s.count;
    const float ax = p.x, ay = p.y, az = p.z;
    LWSL_ARRAY(px, s.px);
    LWSL_ARRAY(py, s.py);
    LWSL_ARRAY(pz, s.pz);
    float* lx = s.lx.data() + off;
    float* ly = s.ly.data() + off;
    float* lz = s.lz.data() + off;
    float* ld = s.ld.data() + off;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float x = ax - px[i], y = ay - py[i], z = az - pz[i];
        const float d = std::sqrt(x * x + y * y + z * z);
        lx[i] = x / d;
        ly[i] = y / d;
        lz[i] = z / d;
        ld[i] = d;
    }
}

template <bool Directional>
LWSL_WIDE void shadowGeometry(Surfaces& s, std::size_t off, const float c[3], float e,
                              float* reach) {
    const std::size_t n = s.count;
    LWSL_ARRAY(px, s.px);
    LWSL_ARRAY(py, s.py);
    LWSL_ARRAY(pz, s.pz);
    LWSL_ARRAY(nx, s.nx);
    LWSL_ARRAY(ny, s.ny);
    LWSL_ARRAY(nz, s.nz);
    LWSL_ARRAY(gx, s.gx);
    LWSL_ARRAY(gy, s.gy);
    LWSL_ARRAY(gz, s.gz);
    LWSL_ARRAY(ox, s.ox);
    LWSL_ARRAY(oy, s.oy);
    LWSL_ARRAY(oz, s.oz);
    LWSL_ARRAY(far, s.far);
    const float* lx = s.lx.data() + off;
    const float* ly = s.ly.data() + off;
    const float* lz = s.lz.data() + off;
    const float* ld = s.ld.data() + off;
    LWSL_FLAGS(shaded, s.shaded);
    const float inf = std::numeric_limits<float>::infinity();
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float dx = Directional ? c[0] : lx[i], dy = Directional ? c[1] : ly[i],
                    dz = Directional ? c[2] : lz[i], d = Directional ? inf : ld[i];
        const bool reaches = Directional || ((d > 0) & (std::fabs(d) <= kFloatMax));
        const bool faces = nx[i] * dx + ny[i] * dy + nz[i] * dz > 0;
        const float side = gx[i] * dx + gy[i] * dy + gz[i] * dz >= 0 ? 1.0f : -1.0f;
        ox[i] = px[i] + side * e * gx[i];
        oy[i] = py[i] + side * e * gy[i];
        oz[i] = pz[i] + side * e * gz[i];
        far[i] = Directional ? inf : d * (1 - 1e-4f);
        reach[i] = (shaded[i] == 0) | !reaches ? 1.0f : faces ? -1.0f : 0.0f;
    }
}

// What a point or directional light gives each point; the specular powers
// that are not whole numbers are left to the caller, marked in s.later.
template <bool Directional, int Attenuation>
LWSL_WIDE bool addLight(Surfaces& s, std::size_t off, const TQ3XLight& l, const float* reach) {
    const std::size_t n = s.count;
    LWSL_ARRAY(nx, s.nx);
    LWSL_ARRAY(ny, s.ny);
    LWSL_ARRAY(nz, s.nz);
    LWSL_ARRAY(vx, s.vx);
    LWSL_ARRAY(vy, s.vy);
    LWSL_ARRAY(vz, s.vz);
    LWSL_ARRAY(sr, s.sr);
    LWSL_ARRAY(sg, s.sg);
    LWSL_ARRAY(sb, s.sb);
    LWSL_ARRAY(control, s.control);
    LWSL_ARRAY(dr, s.dr);
    LWSL_ARRAY(dg, s.dg);
    LWSL_ARRAY(db, s.db);
    LWSL_ARRAY(ssr, s.ssr);
    LWSL_ARRAY(ssg, s.ssg);
    LWSL_ARRAY(ssb, s.ssb);
    const float* lx = s.lx.data() + off;
    const float* ly = s.ly.data() + off;
    const float* lz = s.lz.data() + off;
    const float* ld = s.ld.data() + off;
    LWSL_FLAGS(lit, s.lit);
    LWSL_FLAGS(phong, s.phong);
    std::int32_t* later = s.later.data();
    const float cr = l.color.r, cg = l.color.g, cb = l.color.b, brightness = l.brightness;
    const float cx = -l.direction.x, cy = -l.direction.y, cz = -l.direction.z;
    // the diffuse part, and what the specular part needs
    LWSL_ARRAY(rv, s.rv);
    LWSL_ARRAY(st, s.strength);
    std::int32_t* shines = s.shines.data();
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float r = reach[i], dist = Directional ? 1.0f : ld[i];
        const float Lx = Directional ? cx : lx[i], Ly = Directional ? cy : ly[i],
                    Lz = Directional ? cz : lz[i];
        const float strength = Attenuation == 1   ? brightness / std::max(dist, 1e-6f)
                               : Attenuation == 2 ? brightness / std::max(dist * dist, 1e-12f)
                                                  : brightness;
        const float Nx = nx[i], Ny = ny[i], Nz = nz[i];
        const float nl = Nx * Lx + Ny * Ly + Nz * Lz;
        const bool on = (lit[i] != 0) & (r > 0) & (dist > 0) & !(nl <= 0);
        const float k = strength * nl;
        dr[i] += on ? r * (k * cr) : 0.0f;
        dg[i] += on ? r * (k * cg) : 0.0f;
        db[i] += on ? r * (k * cb) : 0.0f;
        const float Rx = 2 * nl * Nx - Lx, Ry = 2 * nl * Ny - Ly, Rz = 2 * nl * Nz - Lz;
        const float v = Rx * vx[i] + Ry * vy[i] + Rz * vz[i];
        rv[i] = v;
        st[i] = strength;
        shines[i] = on & (phong[i] != 0) & (v > 0) ? 1 : 0;
    }
    // the specular part: the power by squaring for whole exponents up to 64,
    // as specularPower takes them (a factor of 1 changes nothing); others
    // wait for the loop below
    std::int32_t anyLater = 0;
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const float ex = control[i];
        // the binary digits of a whole exponent, from the top, in floats
        // (exact for whole numbers up to 64); what is left is its fraction
        float rest = (ex > 0) & (ex <= 64) ? ex : 0.5f;
        bool digit[7];
        for (int k = 6; k >= 0; --k) {
            const auto place = static_cast<float>(1 << k);
            digit[k] = rest >= place;
            rest -= digit[k] ? place : 0.0f;
        }
        const bool byBits = rest == 0;
        float power = 1, b = rv[i];
        for (int k = 0; k < 7; ++k) {
            power *= digit[k] ? b : 1.0f;
            b *= b;
        }
        const bool shine = shines[i] != 0;
        const bool waits = shine & (ex > 0) & !byBits;
        later[i] = waits ? 1 : 0;
        anyLater += waits ? 1 : 0;
        const float r = reach[i], p = st[i] * power;
        const bool now = shine & !waits;
        // every load outside the selections, which leaves no branch
        const float Sr = r * (p * cr * sr[i]), Sg = r * (p * cg * sg[i]), Sb = r * (p * cb * sb[i]);
        ssr[i] += now ? Sr : 0.0f;
        ssg[i] += now ? Sg : 0.0f;
        ssb[i] += now ? Sb : 0.0f;
    }
    if (anyLater == 0) return false;
    for (std::size_t i = 0; i < n; ++i) {
        if (!later[i]) continue;
        const float p = st[i] * q3::specularPower(rv[i], control[i]);
        ssr[i] += reach[i] * (p * cr * sr[i]);
        ssg[i] += reach[i] * (p * cg * sg[i]);
        ssb[i] += reach[i] * (p * cb * sb[i]);
    }
    return true;
}

#undef LWSL_ARRAY
#undef LWSL_FLAGS
#undef LWSL_WIDE

} // namespace

std::size_t Shader::shadowRays(Surfaces& s, std::size_t li, float* reach, RTCRay* rays,
                               std::uint32_t* which) const {
    const TQ3XLight& l = lights[li];
    const std::size_t n = s.count, off = li * n;
    const bool directional = l.type == kQ3LightTypeDirectional;
    if (l.type != kQ3LightTypeAmbient && !directional) {
        // the unit direction to the light and its distance, for the rays and
        // the lighting both
        towardsPoint(s, off, l.location);
    }
    if (!l.castsShadows || l.type == kQ3LightTypeAmbient) {
        std::fill(reach, reach + n, 1.0f);
        return 0;
    }
    const float e = scene.epsilon();
    const float c[3] = {-l.direction.x, -l.direction.y, -l.direction.z};
    if (directional)
        shadowGeometry<true>(s, off, c, e, reach);
    else
        shadowGeometry<false>(s, off, c, e, reach);
    std::size_t count = 0;
    for (std::size_t i = 0; i < n; ++i) {
        if (reach[i] >= 0) continue;
        RTCRay& ray = rays[count];
        ray.org_x = s.ox[i];
        ray.org_y = s.oy[i];
        ray.org_z = s.oz[i];
        ray.dir_x = directional ? c[0] : s.lx[off + i];
        ray.dir_y = directional ? c[1] : s.ly[off + i];
        ray.dir_z = directional ? c[2] : s.lz[off + i];
        ray.tnear = e;
        ray.tfar = s.far[i];
        ray.time = 0;
        ray.mask = 0xFFFFFFFFu;
        ray.flags = 0;
        ray.id = 0;
        which[count++] = static_cast<std::uint32_t>(i);
    }
    return count;
}

// The lighting equation of the interactive renderer for one light, in the
// same steps, so that both renderers give a point the same colour. Spot
// lights, which are rare, go through the equation itself.
void Shader::light(Surfaces& s, std::size_t li, const float* reach) const {
    const TQ3XLight& l = lights[li];
    const std::size_t n = s.count;
    const float cr = l.color.r, cg = l.color.g, cb = l.color.b;
    if (l.type == kQ3LightTypeAmbient) {
        for (std::size_t i = 0; i < n; ++i) {
            if (!s.lit[i] || !(reach[i] > 0)) continue;
            const float k = l.brightness * s.ambient[i];
            s.dr[i] += reach[i] * (k * cr);
            s.dg[i] += reach[i] * (k * cg);
            s.db[i] += reach[i] * (k * cb);
        }
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

Shaded Shader::finish(const Surfaces& s, std::size_t i) const {
    return {clamp01(s.br[i] * s.dr[i] + s.ssr[i]), clamp01(s.bg[i] * s.dg[i] + s.ssg[i]),
            clamp01(s.bb[i] * s.db[i] + s.ssb[i]), clamp01(s.alpha[i])};
}

Shaded Shader::shade(const Hit& hit, const float org[3], const float dir[3], Surfaces& one,
                     std::uint64_t& shadowCount) const {
    one.resize(1, lights.size());
    prepare(hit, org, dir, one, 0);
    for (std::size_t li = 0; li < lights.size(); ++li) {
        float reach;
        RTCRay ray;
        std::uint32_t which;
        if (shadowRays(one, li, &reach, &ray, &which) != 0) {
            ++shadowCount;
            const float o[3] = {ray.org_x, ray.org_y, ray.org_z};
            const float d[3] = {ray.dir_x, ray.dir_y, ray.dir_z};
            reach = scene.transmission(o, d, ray.tnear, ray.tfar);
        }
        light(one, li, &reach);
    }
    return finish(one, 0);
}

} // namespace lwsl
