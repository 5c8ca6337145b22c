// The lighting equation: ambient, directional, point and spot lights.
#include "platform/qd3d/Q3Lighting.h"

#include <algorithm>
#include <cmath>

namespace q3 {

float specularPower(float x, float e) {
    if (!(e > 0)) return 1.0f;
    if (e <= 64 && e == std::floor(e)) {
        auto n = static_cast<unsigned>(e);
        float r = 1, b = x;
        while (n) {
            if (n & 1) r *= b;
            b *= b;
            n >>= 1;
        }
        return r;
    }
    return std::pow(x, e);
}

LightTerms lightVertex(TQ3ObjectType illumination, const TQ3XLight* lights, TQ3Uns32 numLights,
                       const TQ3Point3D& P, const TQ3Vector3D& N, const TQ3Vector3D& V,
                       const TQ3XVertex& vertex) {
    LightTerms t{{0, 0, 0}, {0, 0, 0}};
    if (illumination == kQ3IlluminationTypeNULL) {
        t.diffuse = {1, 1, 1};
        return t;
    }
    const bool phong = illumination == kQ3IlluminationTypePhong;
    for (TQ3Uns32 i = 0; i < numLights; ++i) {
        const TQ3XLight& l = lights[i];
        const float br = l.brightness;
        if (l.type == kQ3LightTypeAmbient) {
            float k = br * vertex.ambientCoefficient;
            t.diffuse.r += k * l.color.r;
            t.diffuse.g += k * l.color.g;
            t.diffuse.b += k * l.color.b;
            continue;
        }
        TQ3Vector3D L;
        float strength = br;
        if (l.type == kQ3LightTypeDirectional) {
            L = {-l.direction.x, -l.direction.y, -l.direction.z};
        } else {
            L = {l.location.x - P.x, l.location.y - P.y, l.location.z - P.z};
            float d = std::sqrt(L.x * L.x + L.y * L.y + L.z * L.z);
            if (!(d > 0)) continue;
            L = {L.x / d, L.y / d, L.z / d};
            if (l.attenuation == kQ3AttenuationTypeInverseDistance)
                strength /= std::max(d, 1e-6f);
            else if (l.attenuation == kQ3AttenuationTypeInverseDistanceSquared)
                strength /= std::max(d * d, 1e-12f);
            if (l.type == kQ3LightTypeSpot) {
                float c = -(L.x * l.direction.x + L.y * l.direction.y + L.z * l.direction.z);
                float angle = std::acos(std::clamp(c, -1.0f, 1.0f));
                if (angle > l.outerAngle) continue;
                if (angle > l.hotAngle && l.outerAngle > l.hotAngle) {
                    float f = (l.outerAngle - angle) / (l.outerAngle - l.hotAngle); // 1 to 0
                    switch (l.fallOff) {
                    case kQ3FallOffTypeLinear:
                        strength *= f;
                        break;
                    case kQ3FallOffTypeExponential:
                        strength *= (std::exp(f) - 1) / (std::exp(1.0f) - 1);
                        break;
                    case kQ3FallOffTypeCosine:
                        strength *= std::cos((1 - f) * 1.5707964f);
                        break;
                    default:
                        break;
                    }
                }
            }
        }
        float nl = N.x * L.x + N.y * L.y + N.z * L.z;
        if (nl <= 0) continue;
        float k = strength * nl;
        t.diffuse.r += k * l.color.r;
        t.diffuse.g += k * l.color.g;
        t.diffuse.b += k * l.color.b;
        if (phong) {
            TQ3Vector3D R{2 * nl * N.x - L.x, 2 * nl * N.y - L.y, 2 * nl * N.z - L.z};
            float rv = R.x * V.x + R.y * V.y + R.z * V.z;
            if (rv > 0) {
                float s = strength * specularPower(rv, vertex.specularControl);
                t.specular.r += s * l.color.r * vertex.specular.r;
                t.specular.g += s * l.color.g * vertex.specular.g;
                t.specular.b += s * l.color.b * vertex.specular.b;
            }
        }
    }
    return t;
}

} // namespace q3
