// Shading a hit.
#include "platform/finalrender/LWShader.h"

#include "platform/qd3d/Q3Lighting.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lwsl {
namespace {

template <class T> T mix(const T& a, const T& b, const T& c, float wa, float wb, float wc);

template <>
float mix(const float& a, const float& b, const float& c, float wa, float wb, float wc) {
    return a * wa + b * wb + c * wc;
}

TQ3ColorRGB mixColour(const TQ3ColorRGB& a, const TQ3ColorRGB& b, const TQ3ColorRGB& c, float wa,
                      float wb, float wc) {
    return {a.r * wa + b.r * wb + c.r * wc, a.g * wa + b.g * wb + c.g * wc,
            a.b * wa + b.b * wb + c.b * wc};
}

float clamp01(float v) {
    return std::isfinite(v) ? std::clamp(v, 0.0f, 1.0f) : 0.0f;
}

} // namespace

float Shader::lightReaching(const TQ3XLight& l, const float p[3], const float ng[3],
                            ShadeCounters& counters) const {
    float dir[3];
    float far;
    if (l.type == kQ3LightTypeDirectional) {
        dir[0] = -l.direction.x;
        dir[1] = -l.direction.y;
        dir[2] = -l.direction.z;
        far = std::numeric_limits<float>::infinity();
    } else {
        dir[0] = l.location.x - p[0];
        dir[1] = l.location.y - p[1];
        dir[2] = l.location.z - p[2];
        const float d = std::sqrt(dir[0] * dir[0] + dir[1] * dir[1] + dir[2] * dir[2]);
        if (!(d > 0) || !std::isfinite(d)) return 1;
        for (float& c : dir)
            c /= d;
        far = d * (1 - 1e-4f);
    }
    // leave the surface on the side the light is on
    const float side = ng[0] * dir[0] + ng[1] * dir[1] + ng[2] * dir[2] >= 0 ? 1.0f : -1.0f;
    const float e = scene.epsilon();
    const float org[3] = {p[0] + side * e * ng[0], p[1] + side * e * ng[1],
                          p[2] + side * e * ng[2]};
    ++counters.shadowRays;
    return scene.transmission(org, dir, e, far);
}

Shaded Shader::shade(const Hit& hit, const float org[3], const float dir[3],
                     ShadeCounters& counters) const {
    const Batch& b = scene.batch(hit.batch);
    const std::uint32_t* t = &b.indices[3 * static_cast<std::size_t>(hit.triangle)];
    const TQ3XVertex& v0 = b.vertices[t[0]];
    const TQ3XVertex& v1 = b.vertices[t[1]];
    const TQ3XVertex& v2 = b.vertices[t[2]];
    const float w1 = hit.u, w2 = hit.v, w0 = 1 - w1 - w2;
    const TQ3XDrawState& d = b.state;

    TQ3XVertex at; // the attributes at the hit
    const bool flat = d.interpolation == kQ3InterpolationStyleNone;
    if (flat) {
        at = v0;
        at.normal = {hit.ng[0], hit.ng[1], hit.ng[2]};
    } else {
        at = v0;
        at.normal = {mix(v0.normal.x, v1.normal.x, v2.normal.x, w0, w1, w2),
                     mix(v0.normal.y, v1.normal.y, v2.normal.y, w0, w1, w2),
                     mix(v0.normal.z, v1.normal.z, v2.normal.z, w0, w1, w2)};
        at.diffuse = mixColour(v0.diffuse, v1.diffuse, v2.diffuse, w0, w1, w2);
        at.specular = mixColour(v0.specular, v1.specular, v2.specular, w0, w1, w2);
        at.specularControl =
            mix(v0.specularControl, v1.specularControl, v2.specularControl, w0, w1, w2);
        at.ambientCoefficient =
            mix(v0.ambientCoefficient, v1.ambientCoefficient, v2.ambientCoefficient, w0, w1, w2);
    }
    at.uv = {mix(v0.uv.u, v1.uv.u, v2.uv.u, w0, w1, w2),
             mix(v0.uv.v, v1.uv.v, v2.uv.v, w0, w1, w2)};
    const float alpha = clamp01(mix(b.alpha[t[0]], b.alpha[t[1]], b.alpha[t[2]], w0, w1, w2));
    at.point = {org[0] + hit.t * dir[0], org[1] + hit.t * dir[1], org[2] + hit.t * dir[2]};

    TQ3Vector3D N = at.normal;
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

    TQ3ColorRGB L{0, 0, 0}, S{0, 0, 0};
    const bool lit = d.illumination != kQ3IlluminationTypeNULL;
    const bool receives = shadows && d.receiveShadows != kQ3False && lit;
    const float p[3] = {at.point.x, at.point.y, at.point.z};
    const std::size_t count = lit ? lights.size() : 0;
    for (std::size_t li = 0; li < count; ++li) {
        const TQ3XLight& light = lights[li];
        float reach = 1;
        if (receives && light.castsShadows && light.type != kQ3LightTypeAmbient) {
            // a light that does not face the point adds nothing: no ray for it
            TQ3Vector3D toLight =
                light.type == kQ3LightTypeDirectional
                    ? TQ3Vector3D{-light.direction.x, -light.direction.y, -light.direction.z}
                    : TQ3Vector3D{light.location.x - p[0], light.location.y - p[1],
                                  light.location.z - p[2]};
            if (N.x * toLight.x + N.y * toLight.y + N.z * toLight.z <= 0) continue;
            reach = lightReaching(light, p, hit.ng, counters);
            if (reach <= 0) continue;
        }
        const q3::LightTerms terms = q3::lightVertex(d.illumination, &light, 1, at.point, N, V, at);
        L.r += reach * terms.diffuse.r;
        L.g += reach * terms.diffuse.g;
        L.b += reach * terms.diffuse.b;
        S.r += reach * terms.specular.r;
        S.g += reach * terms.specular.g;
        S.b += reach * terms.specular.b;
    }
    if (!lit) L = {1, 1, 1}; // null illumination shows the plain colour, with no lights at all

    TQ3ColorRGB base = at.diffuse;
    float a = alpha;
    if (b.textured) {
        const TQ3ColorARGB tc = q3::sampleTexture(b.texture, at.uv.u, at.uv.v);
        base = {tc.r, tc.g, tc.b};
        a *= tc.a;
    }
    return {clamp01(base.r * L.r + S.r), clamp01(base.g * L.g + S.g), clamp01(base.b * L.b + S.b),
            clamp01(a)};
}

} // namespace lwsl
