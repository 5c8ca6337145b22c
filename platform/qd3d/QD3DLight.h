/* Lights: ambient, directional, point and spot. A view takes its lights from
 * a light group; their positions and directions are in world coordinates. */
#ifndef QD3D_LIGHT_H
#define QD3D_LIGHT_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3AttenuationType {
    kQ3AttenuationTypeNone = 0,
    kQ3AttenuationTypeInverseDistance = 1,
    kQ3AttenuationTypeInverseDistanceSquared = 2
} TQ3AttenuationType;

typedef enum TQ3FallOffType {
    kQ3FallOffTypeNone = 0,
    kQ3FallOffTypeLinear = 1,
    kQ3FallOffTypeExponential = 2,
    kQ3FallOffTypeCosine = 3
} TQ3FallOffType;

typedef struct TQ3LightData {
    TQ3Boolean isOn;
    float brightness;
    TQ3ColorRGB color;
} TQ3LightData;

/* direction is the way the light travels. */
typedef struct TQ3DirectionalLightData {
    TQ3LightData lightData;
    TQ3Boolean castsShadows;
    TQ3Vector3D direction;
} TQ3DirectionalLightData;

typedef struct TQ3PointLightData {
    TQ3LightData lightData;
    TQ3Boolean castsShadows;
    TQ3AttenuationType attenuation;
    TQ3Point3D location;
} TQ3PointLightData;

/* hotAngle and outerAngle are half angles of the cone, in radians. */
typedef struct TQ3SpotLightData {
    TQ3LightData lightData;
    TQ3Boolean castsShadows;
    TQ3AttenuationType attenuation;
    TQ3Point3D location;
    TQ3Vector3D direction;
    float hotAngle;
    float outerAngle;
    TQ3FallOffType fallOff;
} TQ3SpotLightData;

TQ3ObjectType Q3Light_GetType(TQ3LightObject light);
TQ3Status Q3Light_GetState(TQ3LightObject light, TQ3Boolean* isOn);
TQ3Status Q3Light_SetState(TQ3LightObject light, TQ3Boolean isOn);
TQ3Status Q3Light_GetBrightness(TQ3LightObject light, float* brightness);
TQ3Status Q3Light_SetBrightness(TQ3LightObject light, float brightness);
TQ3Status Q3Light_GetColor(TQ3LightObject light, TQ3ColorRGB* color);
TQ3Status Q3Light_SetColor(TQ3LightObject light, const TQ3ColorRGB* color);
TQ3Status Q3Light_GetData(TQ3LightObject light, TQ3LightData* lightData);
TQ3Status Q3Light_SetData(TQ3LightObject light, const TQ3LightData* lightData);

TQ3LightObject Q3AmbientLight_New(const TQ3LightData* lightData);
TQ3Status Q3AmbientLight_GetData(TQ3LightObject light, TQ3LightData* lightData);
TQ3Status Q3AmbientLight_SetData(TQ3LightObject light, const TQ3LightData* lightData);

TQ3LightObject Q3DirectionalLight_New(const TQ3DirectionalLightData* data);
TQ3Status Q3DirectionalLight_GetData(TQ3LightObject light, TQ3DirectionalLightData* data);
TQ3Status Q3DirectionalLight_SetData(TQ3LightObject light, const TQ3DirectionalLightData* data);
TQ3Status Q3DirectionalLight_GetDirection(TQ3LightObject light, TQ3Vector3D* direction);
TQ3Status Q3DirectionalLight_SetDirection(TQ3LightObject light, const TQ3Vector3D* direction);
TQ3Status Q3DirectionalLight_GetCastShadowsState(TQ3LightObject light, TQ3Boolean* castsShadows);
TQ3Status Q3DirectionalLight_SetCastShadowsState(TQ3LightObject light, TQ3Boolean castsShadows);

TQ3LightObject Q3PointLight_New(const TQ3PointLightData* data);
TQ3Status Q3PointLight_GetData(TQ3LightObject light, TQ3PointLightData* data);
TQ3Status Q3PointLight_SetData(TQ3LightObject light, const TQ3PointLightData* data);
TQ3Status Q3PointLight_GetLocation(TQ3LightObject light, TQ3Point3D* location);
TQ3Status Q3PointLight_SetLocation(TQ3LightObject light, const TQ3Point3D* location);
TQ3Status Q3PointLight_GetAttenuation(TQ3LightObject light, TQ3AttenuationType* attenuation);
TQ3Status Q3PointLight_SetAttenuation(TQ3LightObject light, TQ3AttenuationType attenuation);
TQ3Status Q3PointLight_GetCastShadowsState(TQ3LightObject light, TQ3Boolean* castsShadows);
TQ3Status Q3PointLight_SetCastShadowsState(TQ3LightObject light, TQ3Boolean castsShadows);

TQ3LightObject Q3SpotLight_New(const TQ3SpotLightData* data);
TQ3Status Q3SpotLight_GetData(TQ3LightObject light, TQ3SpotLightData* data);
TQ3Status Q3SpotLight_SetData(TQ3LightObject light, const TQ3SpotLightData* data);
TQ3Status Q3SpotLight_GetLocation(TQ3LightObject light, TQ3Point3D* location);
TQ3Status Q3SpotLight_SetLocation(TQ3LightObject light, const TQ3Point3D* location);
TQ3Status Q3SpotLight_GetDirection(TQ3LightObject light, TQ3Vector3D* direction);
TQ3Status Q3SpotLight_SetDirection(TQ3LightObject light, const TQ3Vector3D* direction);
TQ3Status Q3SpotLight_GetHotAngle(TQ3LightObject light, float* hotAngle);
TQ3Status Q3SpotLight_SetHotAngle(TQ3LightObject light, float hotAngle);
TQ3Status Q3SpotLight_GetOuterAngle(TQ3LightObject light, float* outerAngle);
TQ3Status Q3SpotLight_SetOuterAngle(TQ3LightObject light, float outerAngle);
TQ3Status Q3SpotLight_GetFallOff(TQ3LightObject light, TQ3FallOffType* fallOff);
TQ3Status Q3SpotLight_SetFallOff(TQ3LightObject light, TQ3FallOffType fallOff);
TQ3Status Q3SpotLight_GetAttenuation(TQ3LightObject light, TQ3AttenuationType* attenuation);
TQ3Status Q3SpotLight_SetAttenuation(TQ3LightObject light, TQ3AttenuationType attenuation);
TQ3Status Q3SpotLight_GetCastShadowsState(TQ3LightObject light, TQ3Boolean* castsShadows);
TQ3Status Q3SpotLight_SetCastShadowsState(TQ3LightObject light, TQ3Boolean castsShadows);

#ifdef __cplusplus
}
#endif

#endif
