// The lighting equation of the interactive renderer.
#pragma once

#include "platform/qd3d/QD3DRendererExtension.h"

namespace q3 {

struct LightTerms {
    TQ3ColorRGB diffuse;  // multiplies the surface colour (ambient included)
    TQ3ColorRGB specular; // added after
};

// With N the unit normal, V the unit direction to the eye and P the point:
// diffuse = sum over ambient lights of brightness * colour * ambient coefficient
//         + sum over others of brightness * colour * attenuation * cone * max(0, N.L);
// specular (Phong only) = sum of brightness * colour * attenuation * cone *
//                         specular colour * max(0, R.V)^specularControl,
// R the reflection of L about N. Null illumination answers (1, 1, 1) and 0.
LightTerms lightVertex(TQ3ObjectType illumination, const TQ3XLight* lights, TQ3Uns32 numLights,
                       const TQ3Point3D& P, const TQ3Vector3D& N, const TQ3Vector3D& V,
                       const TQ3XVertex& vertex);

// x^e for x in (0, 1], as the specular term takes it: whole exponents up to
// 64 by squaring, which is the usual case.
float specularPower(float x, float e);

} // namespace q3
