// Lights: ambient, directional, point and spot.
#include "platform/qd3d/Q3Internal.h"

#include <cmath>

namespace q3 {
namespace {

class LightObject : public OpaqueTQ3Object {
  public:
    explicit LightObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    TQ3SpotLightData data{}; // the fields that a type lacks stay unused
};

bool validLightData(const TQ3LightData& d) {
    return finite(d.brightness) && finite(d.color.r) && finite(d.color.g) && finite(d.color.b);
}
bool validAttenuation(const TQ3AttenuationType& a) {
    const std::int32_t v = enumValue(a);
    return v >= kQ3AttenuationTypeNone && v <= kQ3AttenuationTypeInverseDistanceSquared;
}
bool validFallOff(const TQ3FallOffType& f) {
    const std::int32_t v = enumValue(f);
    return v >= kQ3FallOffTypeNone && v <= kQ3FallOffTypeCosine;
}

LightObject* light(TQ3Object o, TQ3ObjectType t = kQ3ShapeTypeLight) {
    return check<LightObject>(o, t);
}

template <class F> TQ3Status with(TQ3Object o, TQ3ObjectType t, const void* ptr, F f) {
    LightObject* l = light(o, t);
    if (!l) return kQ3Failure;
    if (!ptr) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!f(*l)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    return kQ3Success;
}

TQ3Object newLight(TQ3ObjectType t, const TQ3SpotLightData& d) {
    if (!validLightData(d.lightData) || !validAttenuation(d.attenuation) ||
        !validFallOff(d.fallOff) || !finite(d.location) || !finite(d.direction) ||
        !finite(d.hotAngle) || !finite(d.outerAngle)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<LightObject>(t);
    if (o) static_cast<LightObject*>(o)->data = d;
    return o;
}

} // namespace

// The light as the renderers see it; false if it is off or not a light.
bool lightRecord(TQ3Object o, TQ3XLight& out) {
    if (!isLive(o) || !isSubtype(o->type, kQ3ShapeTypeLight)) return false;
    const TQ3SpotLightData& d = static_cast<LightObject*>(o)->data;
    if (!d.lightData.isOn) return false;
    out = {};
    out.type = o->type;
    out.brightness = d.lightData.brightness;
    out.color = d.lightData.color;
    out.castsShadows = d.castsShadows;
    if (o->type == kQ3LightTypePoint || o->type == kQ3LightTypeSpot) {
        out.location = d.location;
        out.attenuation = d.attenuation;
    }
    if (o->type == kQ3LightTypeDirectional || o->type == kQ3LightTypeSpot) {
        TQ3Vector3D n;
        Q3Vector3D_Normalize(&d.direction, &n);
        if (n.x == 0 && n.y == 0 && n.z == 0) n = {0, 0, -1};
        out.direction = n;
    }
    if (o->type == kQ3LightTypeSpot) {
        out.hotAngle = std::fabs(d.hotAngle);
        out.outerAngle = std::fmax(std::fabs(d.outerAngle), out.hotAngle);
        out.fallOff = d.fallOff;
    }
    return true;
}

} // namespace q3

using namespace q3;
using L = LightObject;

extern "C" {

TQ3ObjectType Q3Light_GetType(TQ3LightObject o) {
    return light(o) ? o->type : kQ3ObjectTypeInvalid;
}
TQ3Status Q3Light_GetState(TQ3LightObject o, TQ3Boolean* v) {
    return with(o, kQ3ShapeTypeLight, v, [&](L& l) { return *v = l.data.lightData.isOn, true; });
}
TQ3Status Q3Light_SetState(TQ3LightObject o, TQ3Boolean v) {
    return with(o, kQ3ShapeTypeLight, &v, [&](L& l) { return l.data.lightData.isOn = v, true; });
}
TQ3Status Q3Light_GetBrightness(TQ3LightObject o, float* v) {
    return with(o, kQ3ShapeTypeLight, v,
                [&](L& l) { return *v = l.data.lightData.brightness, true; });
}
TQ3Status Q3Light_SetBrightness(TQ3LightObject o, float v) {
    return with(o, kQ3ShapeTypeLight, &v, [&](L& l) {
        if (!finite(v)) return false;
        l.data.lightData.brightness = v;
        return true;
    });
}
TQ3Status Q3Light_GetColor(TQ3LightObject o, TQ3ColorRGB* v) {
    return with(o, kQ3ShapeTypeLight, v, [&](L& l) { return *v = l.data.lightData.color, true; });
}
TQ3Status Q3Light_SetColor(TQ3LightObject o, const TQ3ColorRGB* v) {
    return with(o, kQ3ShapeTypeLight, v, [&](L& l) {
        if (!finite(v->r) || !finite(v->g) || !finite(v->b)) return false;
        l.data.lightData.color = *v;
        return true;
    });
}
TQ3Status Q3Light_GetData(TQ3LightObject o, TQ3LightData* v) {
    return with(o, kQ3ShapeTypeLight, v, [&](L& l) { return *v = l.data.lightData, true; });
}
TQ3Status Q3Light_SetData(TQ3LightObject o, const TQ3LightData* v) {
    return with(o, kQ3ShapeTypeLight, v, [&](L& l) {
        if (!validLightData(*v)) return false;
        l.data.lightData = *v;
        return true;
    });
}

TQ3LightObject Q3AmbientLight_New(const TQ3LightData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    TQ3SpotLightData s{};
    s.lightData = *d;
    return newLight(kQ3LightTypeAmbient, s);
}
TQ3Status Q3AmbientLight_GetData(TQ3LightObject o, TQ3LightData* d) {
    return with(o, kQ3LightTypeAmbient, d, [&](L& l) { return *d = l.data.lightData, true; });
}
TQ3Status Q3AmbientLight_SetData(TQ3LightObject o, const TQ3LightData* d) {
    return with(o, kQ3LightTypeAmbient, d, [&](L& l) {
        if (!validLightData(*d)) return false;
        l.data.lightData = *d;
        return true;
    });
}

TQ3LightObject Q3DirectionalLight_New(const TQ3DirectionalLightData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    TQ3SpotLightData s{};
    s.lightData = d->lightData;
    s.castsShadows = d->castsShadows;
    s.direction = d->direction;
    return newLight(kQ3LightTypeDirectional, s);
}
TQ3Status Q3DirectionalLight_GetData(TQ3LightObject o, TQ3DirectionalLightData* d) {
    return with(o, kQ3LightTypeDirectional, d, [&](L& l) {
        *d = {l.data.lightData, l.data.castsShadows, l.data.direction};
        return true;
    });
}
TQ3Status Q3DirectionalLight_SetData(TQ3LightObject o, const TQ3DirectionalLightData* d) {
    return with(o, kQ3LightTypeDirectional, d, [&](L& l) {
        if (!validLightData(d->lightData) || !finite(d->direction)) return false;
        l.data.lightData = d->lightData;
        l.data.castsShadows = d->castsShadows;
        l.data.direction = d->direction;
        return true;
    });
}
TQ3Status Q3DirectionalLight_GetDirection(TQ3LightObject o, TQ3Vector3D* v) {
    return with(o, kQ3LightTypeDirectional, v, [&](L& l) { return *v = l.data.direction, true; });
}
TQ3Status Q3DirectionalLight_SetDirection(TQ3LightObject o, const TQ3Vector3D* v) {
    return with(o, kQ3LightTypeDirectional, v, [&](L& l) {
        if (!finite(*v)) return false;
        l.data.direction = *v;
        return true;
    });
}
TQ3Status Q3DirectionalLight_GetCastShadowsState(TQ3LightObject o, TQ3Boolean* v) {
    return with(o, kQ3LightTypeDirectional, v,
                [&](L& l) { return *v = l.data.castsShadows, true; });
}
TQ3Status Q3DirectionalLight_SetCastShadowsState(TQ3LightObject o, TQ3Boolean v) {
    return with(o, kQ3LightTypeDirectional, &v,
                [&](L& l) { return l.data.castsShadows = v, true; });
}

TQ3LightObject Q3PointLight_New(const TQ3PointLightData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    TQ3SpotLightData s{};
    s.lightData = d->lightData;
    s.castsShadows = d->castsShadows;
    s.attenuation = d->attenuation;
    s.location = d->location;
    return newLight(kQ3LightTypePoint, s);
}
TQ3Status Q3PointLight_GetData(TQ3LightObject o, TQ3PointLightData* d) {
    return with(o, kQ3LightTypePoint, d, [&](L& l) {
        *d = {l.data.lightData, l.data.castsShadows, l.data.attenuation, l.data.location};
        return true;
    });
}
TQ3Status Q3PointLight_SetData(TQ3LightObject o, const TQ3PointLightData* d) {
    return with(o, kQ3LightTypePoint, d, [&](L& l) {
        if (!validLightData(d->lightData) || !validAttenuation(d->attenuation) ||
            !finite(d->location))
            return false;
        l.data.lightData = d->lightData;
        l.data.castsShadows = d->castsShadows;
        l.data.attenuation = d->attenuation;
        l.data.location = d->location;
        return true;
    });
}
TQ3Status Q3PointLight_GetLocation(TQ3LightObject o, TQ3Point3D* v) {
    return with(o, kQ3LightTypePoint, v, [&](L& l) { return *v = l.data.location, true; });
}
TQ3Status Q3PointLight_SetLocation(TQ3LightObject o, const TQ3Point3D* v) {
    return with(o, kQ3LightTypePoint, v, [&](L& l) {
        if (!finite(*v)) return false;
        l.data.location = *v;
        return true;
    });
}
TQ3Status Q3PointLight_GetAttenuation(TQ3LightObject o, TQ3AttenuationType* v) {
    return with(o, kQ3LightTypePoint, v, [&](L& l) { return *v = l.data.attenuation, true; });
}
TQ3Status Q3PointLight_SetAttenuation(TQ3LightObject o, TQ3AttenuationType v) {
    return with(o, kQ3LightTypePoint, &v, [&](L& l) {
        if (!validAttenuation(v)) return false;
        l.data.attenuation = v;
        return true;
    });
}
TQ3Status Q3PointLight_GetCastShadowsState(TQ3LightObject o, TQ3Boolean* v) {
    return with(o, kQ3LightTypePoint, v, [&](L& l) { return *v = l.data.castsShadows, true; });
}
TQ3Status Q3PointLight_SetCastShadowsState(TQ3LightObject o, TQ3Boolean v) {
    return with(o, kQ3LightTypePoint, &v, [&](L& l) { return l.data.castsShadows = v, true; });
}

TQ3LightObject Q3SpotLight_New(const TQ3SpotLightData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    return newLight(kQ3LightTypeSpot, *d);
}
TQ3Status Q3SpotLight_GetData(TQ3LightObject o, TQ3SpotLightData* d) {
    return with(o, kQ3LightTypeSpot, d, [&](L& l) { return *d = l.data, true; });
}
TQ3Status Q3SpotLight_SetData(TQ3LightObject o, const TQ3SpotLightData* d) {
    return with(o, kQ3LightTypeSpot, d, [&](L& l) {
        if (!validLightData(d->lightData) || !validAttenuation(d->attenuation) ||
            !finite(d->location) || !finite(d->direction) || !finite(d->hotAngle) ||
            !finite(d->outerAngle))
            return false;
        l.data = *d;
        return true;
    });
}
TQ3Status Q3SpotLight_GetLocation(TQ3LightObject o, TQ3Point3D* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.location, true; });
}
TQ3Status Q3SpotLight_SetLocation(TQ3LightObject o, const TQ3Point3D* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) {
        if (!finite(*v)) return false;
        l.data.location = *v;
        return true;
    });
}
TQ3Status Q3SpotLight_GetDirection(TQ3LightObject o, TQ3Vector3D* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.direction, true; });
}
TQ3Status Q3SpotLight_SetDirection(TQ3LightObject o, const TQ3Vector3D* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) {
        if (!finite(*v)) return false;
        l.data.direction = *v;
        return true;
    });
}
TQ3Status Q3SpotLight_GetHotAngle(TQ3LightObject o, float* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.hotAngle, true; });
}
TQ3Status Q3SpotLight_SetHotAngle(TQ3LightObject o, float v) {
    return with(o, kQ3LightTypeSpot, &v,
                [&](L& l) { return finite(v) && (l.data.hotAngle = v, true); });
}
TQ3Status Q3SpotLight_GetOuterAngle(TQ3LightObject o, float* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.outerAngle, true; });
}
TQ3Status Q3SpotLight_SetOuterAngle(TQ3LightObject o, float v) {
    return with(o, kQ3LightTypeSpot, &v,
                [&](L& l) { return finite(v) && (l.data.outerAngle = v, true); });
}
TQ3Status Q3SpotLight_GetFallOff(TQ3LightObject o, TQ3FallOffType* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.fallOff, true; });
}
TQ3Status Q3SpotLight_SetFallOff(TQ3LightObject o, TQ3FallOffType v) {
    return with(o, kQ3LightTypeSpot, &v, [&](L& l) {
        if (!validFallOff(v)) return false;
        l.data.fallOff = v;
        return true;
    });
}
TQ3Status Q3SpotLight_GetAttenuation(TQ3LightObject o, TQ3AttenuationType* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.attenuation, true; });
}
TQ3Status Q3SpotLight_SetAttenuation(TQ3LightObject o, TQ3AttenuationType v) {
    return with(o, kQ3LightTypeSpot, &v, [&](L& l) {
        if (!validAttenuation(v)) return false;
        l.data.attenuation = v;
        return true;
    });
}
TQ3Status Q3SpotLight_GetCastShadowsState(TQ3LightObject o, TQ3Boolean* v) {
    return with(o, kQ3LightTypeSpot, v, [&](L& l) { return *v = l.data.castsShadows, true; });
}
TQ3Status Q3SpotLight_SetCastShadowsState(TQ3LightObject o, TQ3Boolean v) {
    return with(o, kQ3LightTypeSpot, &v, [&](L& l) { return l.data.castsShadows = v, true; });
}

} // extern "C"
