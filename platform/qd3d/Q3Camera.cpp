// Cameras: placement, range, view port and the projection of each kind.
#include "platform/qd3d/Q3Camera.h"

#include <cmath>

namespace q3 {
namespace {

class CameraObject : public OpaqueTQ3Object {
  public:
    explicit CameraObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    TQ3CameraData data{};
    TQ3ViewAngleAspectCameraData angle{};
    TQ3OrthographicCameraData ortho{};
    TQ3ViewPlaneCameraData plane{};
};

bool validCameraData(const TQ3CameraData& d) {
    const auto& p = d.placement;
    return finite(p.cameraLocation) && finite(p.pointOfInterest) && finite(p.upVector) &&
           finite(d.range.hither) && finite(d.range.yon) && finite(d.viewPort.origin.x) &&
           finite(d.viewPort.origin.y) && finite(d.viewPort.width) && finite(d.viewPort.height);
}

CameraObject* camera(TQ3Object o, TQ3ObjectType t = kQ3ShapeTypeCamera) {
    return check<CameraObject>(o, t);
}

template <class D> TQ3Object newCamera(TQ3ObjectType t, const D* d, D CameraObject::*field) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (!validCameraData(d->cameraData)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<CameraObject>(t);
    if (o) {
        auto* c = static_cast<CameraObject*>(o);
        c->*field = *d;
        c->data = d->cameraData;
    }
    return o;
}

template <class D>
TQ3Status setCamera(TQ3Object o, TQ3ObjectType t, const D* d, D CameraObject::*field) {
    CameraObject* c = camera(o, t);
    if (!c) return kQ3Failure;
    if (!d || !validCameraData(d->cameraData)) {
        postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    c->*field = *d;
    c->data = d->cameraData;
    c->edited();
    return kQ3Success;
}

template <class D> TQ3Status getCamera(TQ3Object o, TQ3ObjectType t, D* d, D CameraObject::*field) {
    CameraObject* c = camera(o, t);
    if (!c || !d) {
        if (c) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *d = c->*field;
    d->cameraData = c->data;
    return kQ3Success;
}

TQ3Vector3D normalised(TQ3Vector3D v) {
    TQ3Vector3D r;
    Q3Vector3D_Normalize(&v, &r);
    return r;
}

bool worldToViewOf(const TQ3CameraPlacement& p, TQ3Matrix4x4& m) {
    TQ3Vector3D z;
    Q3Point3D_Subtract(&p.cameraLocation, &p.pointOfInterest, &z);
    z = normalised(z);
    if (z.x == 0 && z.y == 0 && z.z == 0) return false;
    TQ3Vector3D x, y, up = p.upVector;
    Q3Vector3D_Cross(&up, &z, &x);
    x = normalised(x);
    if (x.x == 0 && x.y == 0 && x.z == 0) {
        // up along the line of sight: take any up at right angles
        up = std::fabs(z.y) < 0.9f ? TQ3Vector3D{0, 1, 0} : TQ3Vector3D{1, 0, 0};
        Q3Vector3D_Cross(&up, &z, &x);
        x = normalised(x);
    }
    Q3Vector3D_Cross(&z, &x, &y);
    const TQ3Point3D& l = p.cameraLocation;
    Q3Matrix4x4_SetIdentity(&m);
    const TQ3Vector3D axes[3] = {x, y, z};
    for (int j = 0; j < 3; ++j) {
        m.value[0][j] = axes[j].x;
        m.value[1][j] = axes[j].y;
        m.value[2][j] = axes[j].z;
        m.value[3][j] = -(l.x * axes[j].x + l.y * axes[j].y + l.z * axes[j].z);
    }
    return true;
}

} // namespace

bool cameraMatrices(TQ3Object o, TQ3Matrix4x4& worldToView, TQ3Matrix4x4& viewToFrustum,
                    TQ3CameraData* out) {
    CameraObject* c = camera(o);
    if (!c) return false;
    const TQ3CameraData& d = c->data;
    if (out) *out = d;
    float n = d.range.hither, f = d.range.yon;
    if (!worldToViewOf(d.placement, worldToView) || !(n > 0) || !(f > n) || d.viewPort.width == 0 ||
        d.viewPort.height == 0) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    TQ3Matrix4x4& m = viewToFrustum;
    m = {};
    if (c->type == kQ3CameraTypeOrthographic) {
        const auto& od = c->ortho;
        if (od.right == od.left || od.top == od.bottom) {
            postError(kQ3ErrorInvalidParameter);
            return false;
        }
        m.value[0][0] = 2 / (od.right - od.left);
        m.value[3][0] = -(od.right + od.left) / (od.right - od.left);
        m.value[1][1] = 2 / (od.top - od.bottom);
        m.value[3][1] = -(od.top + od.bottom) / (od.top - od.bottom);
        m.value[2][2] = 1 / (f - n);
        m.value[3][2] = n / (f - n);
        m.value[3][3] = 1;
    } else {
        if (c->type == kQ3CameraTypeViewPlane) {
            const auto& pd = c->plane;
            if (!(pd.viewPlane > 0) || pd.halfWidthAtViewPlane == 0 ||
                pd.halfHeightAtViewPlane == 0) {
                postError(kQ3ErrorInvalidParameter);
                return false;
            }
            m.value[0][0] = pd.viewPlane / pd.halfWidthAtViewPlane;
            m.value[2][0] = pd.centerXOnViewPlane / pd.halfWidthAtViewPlane;
            m.value[1][1] = pd.viewPlane / pd.halfHeightAtViewPlane;
            m.value[2][1] = pd.centerYOnViewPlane / pd.halfHeightAtViewPlane;
        } else {
            const auto& ad = c->angle;
            float t = std::tan(ad.fov / 2);
            if (!(ad.fov > 0) || !(ad.fov < 3.14159f) || !(ad.aspectRatioXToY > 0) || !(t > 0)) {
                postError(kQ3ErrorInvalidParameter);
                return false;
            }
            m.value[0][0] = 1 / (t * ad.aspectRatioXToY);
            m.value[1][1] = 1 / t;
        }
        m.value[2][2] = f / (f - n);
        m.value[3][2] = n * f / (f - n);
        m.value[2][3] = -1;
    }
    return true;
}

} // namespace q3

using namespace q3;
using C = CameraObject;

extern "C" {

TQ3ObjectType Q3Camera_GetType(TQ3CameraObject o) {
    return camera(o) ? o->type : kQ3ObjectTypeInvalid;
}

TQ3Status Q3Camera_SetData(TQ3CameraObject o, const TQ3CameraData* d) {
    C* c = camera(o);
    if (!c) return kQ3Failure;
    if (!d || !validCameraData(*d)) {
        postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    c->data = *d;
    c->edited();
    return kQ3Success;
}

TQ3Status Q3Camera_GetData(TQ3CameraObject o, TQ3CameraData* d) {
    C* c = camera(o);
    if (!c || !d) {
        if (c) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *d = c->data;
    return kQ3Success;
}

#define Q3_CAMERA_PART(Name, Type, Field)                                                          \
    TQ3Status Q3Camera_Set##Name(TQ3CameraObject o, const Type* v) {                               \
        TQ3CameraData d;                                                                           \
        if (!v) {                                                                                  \
            postError(kQ3ErrorNULLParameter);                                                      \
            return kQ3Failure;                                                                     \
        }                                                                                          \
        if (Q3Camera_GetData(o, &d) != kQ3Success) return kQ3Failure;                              \
        d.Field = *v;                                                                              \
        return Q3Camera_SetData(o, &d);                                                            \
    }                                                                                              \
    TQ3Status Q3Camera_Get##Name(TQ3CameraObject o, Type* v) {                                     \
        TQ3CameraData d;                                                                           \
        if (!v) {                                                                                  \
            postError(kQ3ErrorNULLParameter);                                                      \
            return kQ3Failure;                                                                     \
        }                                                                                          \
        if (Q3Camera_GetData(o, &d) != kQ3Success) return kQ3Failure;                              \
        *v = d.Field;                                                                              \
        return kQ3Success;                                                                         \
    }

Q3_CAMERA_PART(Placement, TQ3CameraPlacement, placement)
Q3_CAMERA_PART(Range, TQ3CameraRange, range)
Q3_CAMERA_PART(ViewPort, TQ3CameraViewPort, viewPort)

TQ3Status Q3Camera_GetWorldToView(TQ3CameraObject o, TQ3Matrix4x4* m) {
    TQ3Matrix4x4 toFrustum;
    if (!m) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    return status(cameraMatrices(o, *m, toFrustum, nullptr));
}

TQ3Status Q3Camera_GetViewToFrustum(TQ3CameraObject o, TQ3Matrix4x4* m) {
    TQ3Matrix4x4 toView;
    if (!m) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    return status(cameraMatrices(o, toView, *m, nullptr));
}

TQ3Status Q3Camera_GetWorldToFrustum(TQ3CameraObject o, TQ3Matrix4x4* m) {
    TQ3Matrix4x4 a, b;
    if (!m) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!cameraMatrices(o, a, b, nullptr)) return kQ3Failure;
    Q3Matrix4x4_Multiply(&a, &b, m);
    return kQ3Success;
}

TQ3CameraObject Q3ViewAngleAspectCamera_New(const TQ3ViewAngleAspectCameraData* d) {
    return newCamera(kQ3CameraTypeViewAngleAspect, d, &C::angle);
}
TQ3Status Q3ViewAngleAspectCamera_SetData(TQ3CameraObject o,
                                          const TQ3ViewAngleAspectCameraData* d) {
    return setCamera(o, kQ3CameraTypeViewAngleAspect, d, &C::angle);
}
TQ3Status Q3ViewAngleAspectCamera_GetData(TQ3CameraObject o, TQ3ViewAngleAspectCameraData* d) {
    return getCamera(o, kQ3CameraTypeViewAngleAspect, d, &C::angle);
}
TQ3Status Q3ViewAngleAspectCamera_SetFOV(TQ3CameraObject o, float fov) {
    C* c = camera(o, kQ3CameraTypeViewAngleAspect);
    if (!c) return kQ3Failure;
    c->angle.fov = fov;
    c->edited();
    return kQ3Success;
}
TQ3Status Q3ViewAngleAspectCamera_GetFOV(TQ3CameraObject o, float* fov) {
    C* c = camera(o, kQ3CameraTypeViewAngleAspect);
    if (!c || !fov) return kQ3Failure;
    *fov = c->angle.fov;
    return kQ3Success;
}
TQ3Status Q3ViewAngleAspectCamera_SetAspectRatio(TQ3CameraObject o, float aspect) {
    C* c = camera(o, kQ3CameraTypeViewAngleAspect);
    if (!c) return kQ3Failure;
    c->angle.aspectRatioXToY = aspect;
    c->edited();
    return kQ3Success;
}
TQ3Status Q3ViewAngleAspectCamera_GetAspectRatio(TQ3CameraObject o, float* aspect) {
    C* c = camera(o, kQ3CameraTypeViewAngleAspect);
    if (!c || !aspect) return kQ3Failure;
    *aspect = c->angle.aspectRatioXToY;
    return kQ3Success;
}

TQ3CameraObject Q3OrthographicCamera_New(const TQ3OrthographicCameraData* d) {
    return newCamera(kQ3CameraTypeOrthographic, d, &C::ortho);
}
TQ3Status Q3OrthographicCamera_SetData(TQ3CameraObject o, const TQ3OrthographicCameraData* d) {
    return setCamera(o, kQ3CameraTypeOrthographic, d, &C::ortho);
}
TQ3Status Q3OrthographicCamera_GetData(TQ3CameraObject o, TQ3OrthographicCameraData* d) {
    return getCamera(o, kQ3CameraTypeOrthographic, d, &C::ortho);
}

TQ3CameraObject Q3ViewPlaneCamera_New(const TQ3ViewPlaneCameraData* d) {
    return newCamera(kQ3CameraTypeViewPlane, d, &C::plane);
}
TQ3Status Q3ViewPlaneCamera_SetData(TQ3CameraObject o, const TQ3ViewPlaneCameraData* d) {
    return setCamera(o, kQ3CameraTypeViewPlane, d, &C::plane);
}
TQ3Status Q3ViewPlaneCamera_GetData(TQ3CameraObject o, TQ3ViewPlaneCameraData* d) {
    return getCamera(o, kQ3CameraTypeViewPlane, d, &C::plane);
}

} // extern "C"
