// Shading a hit.
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

TQ3ColorRGB mixColour(const TQ3ColorRGB& a, const TQ3ColorRGB& b, const TQ3ColorRGB& c, float wa,
                      float wb, float wc) {
    return {a.r * wa + b.r * wb + c.r * wc, a.g * wa + b.g * wb + c.g * wc,
            a.b * wa + b.b * wb + c.b * wc};
}

float clamp01(float v) {
    return std::isfinite(v) ? std::clamp(v, 0.0f, 1.0f) : 0.0f;
}

} // namespace

void Shader::prepare(const Hit& hit, const float org[3], const float dir[3], Surface& s) const {
    const Batch& b = scene.batch(hit.batch);
    const std::uint32_t* t = &b.indices[3 * static_cast<std::size_t>(hit.triangle)];
    const TQ3XVertex& v0 = b.vertices[t[0]];
    const TQ3XVertex& v1 = b.vertices[t[1]];
    const TQ3XVertex& v2 = b.vertices[t[2]];
    const float w1 = hit.u, w2 = hit.v, w0 = 1 - w1 - w2;
    const TQ3XDrawState& d = b.state;
    s.batch = &b;
    TQ3Vector3D N;
    if (d.interpolation == kQ3InterpolationStyleNone) {
        // flat: the face normal and the first corner's attributes
        N = {hit.ng[0], hit.ng[1], hit.ng[2]};
        s.base = v0.diffuse;
        s.specular = v0.specular;
        s.specularControl = v0.specularControl;
        s.ambient = v0.ambientCoefficient;
    } else {
        N = {mix(v0.normal.x, v1.normal.x, v2.normal.x, w0, w1, w2),
             mix(v0.normal.y, v1.normal.y, v2.normal.y, w0, w1, w2),
             mix(v0.normal.z, v1.normal.z, v2.normal.z, w0, w1, w2)};
        s.base = mixColour(v0.diffuse, v1.diffuse, v2.diffuse, w0, w1, w2);
        s.specular = mixColour(v0.specular, v1.specular, v2.specular, w0, w1, w2);
        s.specularControl =
            mix(v0.specularControl, v1.specularControl, v2.specularControl, w0, w1, w2);
        s.ambient =
            mix(v0.ambientCoefficient, v1.ambientCoefficient, v2.ambientCoefficient, w0, w1, w2);
    }
    s.point = {org[0] + hit.t * dir[0], org[1] + hit.t * dir[1], org[2] + hit.t * dir[2]};
    s.alpha = clamp01(mix(b.alpha[t[0]], b.alpha[t[1]], b.alpha[t[2]], w0, w1, w2));
    std::copy(hit.ng, hit.ng + 3, s.ng);

    float len = std::sqrt(N.x * N.x + N.y * N.y + N.z * N.z);
    if (!(len > 1e-12f) || !std::isfinite(len)) {
        N = {hit.ng[0], hit.ng[1], hit.ng[2]};
        len = std::sqrt(N.x * N.x + N.y * N.y + N.z * N.z);
        if (!(len > 1e-12f)) len = 1;
    }
    N = {N.x / len, N.y / len, N.z / len};
    s.V = {-dir[0], -dir[1], -dir[2]};
    if (d.backfacing == kQ3BackfacingStyleFlip && N.x * s.V.x + N.y * s.V.y + N.z * s.V.z < 0)
        N = {-N.x, -N.y, -N.z};
    s.normal = N;
    s.receives =
        shadows && d.receiveShadows != kQ3False && d.illumination != kQ3IlluminationTypeNULL;

    if (b.textured) {
        const float u = mix(v0.uv.u, v1.uv.u, v2.uv.u, w0, w1, w2),
                    v = mix(v0.uv.v, v1.uv.v, v2.uv.v, w0, w1, w2);
        const TQ3ColorARGB tc = q3::sampleTexture(b.texture, u, v);
        s.base = {tc.r, tc.g, tc.b};
        s.alpha *= clamp01(tc.a);
    }
}

float Shader::shadowRay(const Surface& s, std::size_t li, RTCRay& ray, float toLight[4]) const {
    const TQ3XLight& l = lights[li];
    if (!s.receives || !l.castsShadows || l.type == kQ3LightTypeAmbient) return 1;
    const TQ3Point3D& p = s.point;
    float dir[3];
    float far;
    if (l.type == kQ3LightTypeDirectional) {
        dir[0] = -l.direction.x;
        dir[1] = -l.direction.y;
        dir[2] = -l.direction.z;
        far = std::numeric_limits<float>::infinity();
    } else {
        dir[0] = l.location.x - p.x;
        dir[1] = l.location.y - p.y;
        dir[2] = l.location.z - p.z;
        const float d = std::sqrt(dir[0] * dir[0] + dir[1] * dir[1] + dir[2] * dir[2]);
        if (!(d > 0) || !std::isfinite(d)) return 1;
        for (float& c : dir)
            c /= d;
        far = d * (1 - 1e-4f);
        toLight[0] = dir[0];
        toLight[1] = dir[1];
        toLight[2] = dir[2];
        toLight[3] = d;
    }
    const TQ3Vector3D& N = s.normal;
    // a light that does not face the point adds nothing: no ray for it
    if (!(N.x * dir[0] + N.y * dir[1] + N.z * dir[2] > 0)) return 0;
    // leave the surface on the side the light is on
    const float side = s.ng[0] * dir[0] + s.ng[1] * dir[1] + s.ng[2] * dir[2] >= 0 ? 1.0f : -1.0f;
    const float e = scene.epsilon();
    ray.org_x = p.x + side * e * s.ng[0];
    ray.org_y = p.y + side * e * s.ng[1];
    ray.org_z = p.z + side * e * s.ng[2];
    ray.dir_x = dir[0];
    ray.dir_y = dir[1];
    ray.dir_z = dir[2];
    ray.tnear = e;
    ray.tfar = far;
    ray.time = 0;
    ray.mask = 0xFFFFFFFFu;
    ray.flags = 0;
    ray.id = 0;
    return -1;
}

// The lighting equation of the interactive renderer for one light, in the
// same steps, so that both renderers give a point the same colour. Spot
// lights, which are rare, go through the equation itself.
void Shader::addLight(const Surface& s, std::size_t li, float reach, const float* toLight,
                      TQ3ColorRGB& D, TQ3ColorRGB& S) const {
    const TQ3XLight& l = lights[li];
    const TQ3XDrawState& d = s.batch->state;
    if (l.type == kQ3LightTypeAmbient) {
        const float k = l.brightness * s.ambient;
        D.r += reach * (k * l.color.r);
        D.g += reach * (k * l.color.g);
        D.b += reach * (k * l.color.b);
        return;
    }
    if (l.type != kQ3LightTypeDirectional && l.type != kQ3LightTypePoint) {
        TQ3XVertex at{};
        at.point = s.point;
        at.normal = s.normal;
        at.specular = s.specular;
        at.specularControl = s.specularControl;
        at.ambientCoefficient = s.ambient;
        const q3::LightTerms terms =
            q3::lightVertex(d.illumination, &l, 1, s.point, s.normal, s.V, at);
        D.r += reach * terms.diffuse.r;
        D.g += reach * terms.diffuse.g;
        D.b += reach * terms.diffuse.b;
        S.r += reach * terms.specular.r;
        S.g += reach * terms.specular.g;
        S.b += reach * terms.specular.b;
        return;
    }
    TQ3Vector3D L;
    float strength = l.brightness;
    if (l.type == kQ3LightTypeDirectional) {
        L = {-l.direction.x, -l.direction.y, -l.direction.z};
    } else {
        float dist;
        if (toLight && toLight[3] > 0) {
            L = {toLight[0], toLight[1], toLight[2]};
            dist = toLight[3];
        } else {
            L = {l.location.x - s.point.x, l.location.y - s.point.y, l.location.z - s.point.z};
            dist = std::sqrt(L.x * L.x + L.y * L.y + L.z * L.z);
            if (!(dist > 0)) return;
            L = {L.x / dist, L.y / dist, L.z / dist};
        }
        if (l.attenuation == kQ3AttenuationTypeInverseDistance)
            strength /= std::max(dist, 1e-6f);
        else if (l.attenuation == kQ3AttenuationTypeInverseDistanceSquared)
            strength /= std::max(dist * dist, 1e-12f);
    }
    const TQ3Vector3D& N = s.normal;
    const float nl = N.x * L.x + N.y * L.y + N.z * L.z;
    if (nl <= 0) return;
    const float k = strength * nl;
    D.r += reach * (k * l.color.r);
    D.g += reach * (k * l.color.g);
    D.b += reach * (k * l.color.b);
    if (d.illumination != kQ3IlluminationTypePhong) return;
    const TQ3Vector3D R{2 * nl * N.x - L.x, 2 * nl * N.y - L.y, 2 * nl * N.z - L.z};
    const float rv = R.x * s.V.x + R.y * s.V.y + R.z * s.V.z;
    if (!(rv > 0)) return;
    const float p = strength * q3::specularPower(rv, s.specularControl);
    S.r += reach * (p * l.color.r * s.specular.r);
    S.g += reach * (p * l.color.g * s.specular.g);
    S.b += reach * (p * l.color.b * s.specular.b);
}

Shaded Shader::finish(const Surface& s, const float* reach, const float* toLight) const {
    const TQ3XDrawState& d = s.batch->state;
    TQ3ColorRGB L{1, 1, 1}, S{0, 0, 0}; // null illumination shows the plain colour
    if (d.illumination != kQ3IlluminationTypeNULL) {
        L = {0, 0, 0};
        for (std::size_t li = 0; li < lights.size(); ++li)
            if (reach[li] > 0)
                addLight(s, li, reach[li], toLight ? toLight + 4 * li : nullptr, L, S);
    }
    return {clamp01(s.base.r * L.r + S.r), clamp01(s.base.g * L.g + S.g),
            clamp01(s.base.b * L.b + S.b), clamp01(s.alpha)};
}

Shaded Shader::shade(const Hit& hit, const float org[3], const float dir[3],
                     std::uint64_t& shadowRays) const {
    Surface s;
    prepare(hit, org, dir, s);
    std::vector<float> reach(lights.size(), 1.0f), toLight(4 * lights.size(), 0.0f);
    for (std::size_t li = 0; li < lights.size(); ++li) {
        RTCRay ray;
        reach[li] = shadowRay(s, li, ray, &toLight[4 * li]);
        if (reach[li] < 0) {
            ++shadowRays;
            const float o[3] = {ray.org_x, ray.org_y, ray.org_z};
            const float d[3] = {ray.dir_x, ray.dir_y, ray.dir_z};
            reach[li] = scene.transmission(o, d, ray.tnear, ray.tfar);
        }
    }
    return finish(s, reach.data(), toLight.data());
}

} // namespace lwsl
