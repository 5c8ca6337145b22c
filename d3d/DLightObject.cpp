#include "d3d/DLightObject.h"

#include <cmath>

DLightObject::~DLightObject() {
    if (object) Q3Object_Dispose(object);
}

void DLightObject::SetLocation(const TQ3Point3D&) {}

void DLightObject::SetDirection(const TQ3Vector3D&) {}

// Brightness and colour are stored even if the library refuses them, so the
// light's record stays what the user chose.
void DLightObject::SetBrightness(float value) {
    brightness = value;
    if (Q3Light_SetBrightness(object, value) != kQ3Success) Q3Error_Get(nullptr);
}

void DLightObject::SetColor(float red, float green, float blue) {
    color = {red, green, blue};
    if (Q3Light_SetColor(object, &color) != kQ3Success) Q3Error_Get(nullptr);
}

DPointLight::DPointLight(const TQ3Point3D& location) {
    TQ3PointLightData data{LightData(), kQ3True, kQ3AttenuationTypeNone, location};
    object = Q3PointLight_New(&data);
    CheckObject(object);
}

void DPointLight::SetLocation(const TQ3Point3D& point) {
    CheckStatus(Q3PointLight_SetLocation(object, &point));
}

DDirectionalLight::DDirectionalLight(const TQ3Vector3D* direction, float value) {
    brightness = value;
    TQ3DirectionalLightData data{LightData(), kQ3False,
                                 direction ? *direction : TQ3Vector3D{10, 0, 10}};
    object = Q3DirectionalLight_New(&data);
    CheckObject(object);
}

void DDirectionalLight::SetDirection(const TQ3Vector3D& vector) {
    CheckStatus(Q3DirectionalLight_SetDirection(object, &vector));
}

DAmbientLight::DAmbientLight(float value) {
    brightness = value;
    TQ3LightData data = LightData();
    object = Q3AmbientLight_New(&data);
    CheckObject(object);
}

DSpotLight::DSpotLight() {
    TQ3SpotLightData data{LightData(), kQ3False,   kQ3AttenuationTypeNone, {-10, 0, 10}, {0, 0, 1},
                          1.5707964f,  1.5707964f, kQ3FallOffTypeNone};
    object = Q3SpotLight_New(&data);
    CheckObject(object);
}

void DSpotLight::SetLocation(const TQ3Point3D& point) {
    CheckStatus(Q3SpotLight_SetLocation(object, &point));
}

void DSpotLight::SetDirection(const TQ3Vector3D& vector) {
    CheckStatus(Q3SpotLight_SetDirection(object, &vector));
}

void DSpotLight::SetHotAngle(float angle) {
    CheckStatus(Q3SpotLight_SetHotAngle(object, std::fabs(angle / 2.0f)));
}

void DSpotLight::SetOuterAngle(float angle) {
    CheckStatus(Q3SpotLight_SetOuterAngle(object, std::fabs(angle / 2.0f)));
}

void DSpotLight::SetFallOff(TQ3FallOffType fallOff) {
    CheckStatus(Q3SpotLight_SetFallOff(object, fallOff));
}
