// Transforms: each gives a matrix that a pass multiplies into local-to-world.
#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3View.h"

#include <cstring>

namespace q3 {
namespace {

// Every float of the data is a finite number.
template <class D> bool allFinite(const D& d) {
    static_assert(sizeof(D) % sizeof(float) == 0);
    float f[sizeof(D) / sizeof(float)];
    std::memcpy(f, &d, sizeof(D));
    for (float x : f)
        if (!finite(x)) return false;
    return true;
}
// The rotate records hold an axis (an enum); their floats are checked by name.
template <> bool allFinite(const TQ3RotateTransformData& d) {
    return finite(d.radians);
}
template <> bool allFinite(const TQ3RotateAboutPointTransformData& d) {
    return finite(d.radians) && finite(d.about);
}

class TransformObject : public OpaqueTQ3Object {
  public:
    explicit TransformObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    TQ3Matrix4x4 matrix{};
    TQ3Vector3D vector{};
    TQ3RotateTransformData rotate{};
    TQ3RotateAboutPointTransformData aboutPoint{};
    TQ3RotateAboutAxisTransformData aboutAxis{};
    TQ3Quaternion quaternion{1, 0, 0, 0};

    TQ3Matrix4x4 getMatrix() const {
        TQ3Matrix4x4 m;
        switch (type) {
        case kQ3TransformTypeMatrix:
            return matrix;
        case kQ3TransformTypeTranslate:
            return *Q3Matrix4x4_SetTranslate(&m, vector.x, vector.y, vector.z);
        case kQ3TransformTypeScale:
            return *Q3Matrix4x4_SetScale(&m, vector.x, vector.y, vector.z);
        case kQ3TransformTypeRotate:
            return rotation(rotate.axis, rotate.radians);
        case kQ3TransformTypeRotateAboutPoint: {
            TQ3Matrix4x4 to, back;
            Q3Matrix4x4_SetTranslate(&to, -aboutPoint.about.x, -aboutPoint.about.y,
                                     -aboutPoint.about.z);
            Q3Matrix4x4_SetTranslate(&back, aboutPoint.about.x, aboutPoint.about.y,
                                     aboutPoint.about.z);
            TQ3Matrix4x4 r = rotation(aboutPoint.axis, aboutPoint.radians);
            Q3Matrix4x4_Multiply(&to, &r, &m);
            return *Q3Matrix4x4_Multiply(&m, &back, &m);
        }
        case kQ3TransformTypeRotateAboutAxis:
            return *Q3Matrix4x4_SetRotateAboutAxis(&m, &aboutAxis.origin, &aboutAxis.orientation,
                                                   aboutAxis.radians);
        case kQ3TransformTypeQuaternion: {
            TQ3Quaternion q;
            Q3Quaternion_Normalize(&quaternion, &q);
            return *Q3Matrix4x4_SetQuaternion(&m, &q);
        }
        default:
            return *Q3Matrix4x4_SetIdentity(&m);
        }
    }

    static TQ3Matrix4x4 rotation(TQ3Axis axis, float radians) {
        TQ3Matrix4x4 m;
        if (axis == kQ3AxisX) return *Q3Matrix4x4_SetRotate_X(&m, radians);
        if (axis == kQ3AxisY) return *Q3Matrix4x4_SetRotate_Y(&m, radians);
        return *Q3Matrix4x4_SetRotate_Z(&m, radians);
    }

    TQ3Status submit(View& view) override {
        view.applyMatrix(getMatrix());
        return kQ3Success;
    }
};

bool validAxis(const TQ3Axis& a) {
    const std::int32_t v = enumValue(a);
    return v == kQ3AxisX || v == kQ3AxisY || v == kQ3AxisZ;
}

template <class D>
TQ3Status setField(TQ3Object o, TQ3ObjectType t, D TransformObject::*field, const D* value) {
    auto* x = check<TransformObject>(o, t);
    if (!x || !value) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    x->*field = *value;
    x->edited();
    return kQ3Success;
}

template <class D>
TQ3Status getField(TQ3Object o, TQ3ObjectType t, D TransformObject::*field, D* value) {
    auto* x = check<TransformObject>(o, t);
    if (!x || !value) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *value = x->*field;
    return kQ3Success;
}

template <class D> TQ3Object newWith(TQ3ObjectType t, D TransformObject::*field, const D* value) {
    if (!value) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (!allFinite(*value)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<TransformObject>(t);
    if (o) static_cast<TransformObject*>(o)->*field = *value;
    return o;
}

TQ3Status submitMatrix(const TQ3Matrix4x4& m, TQ3ViewObject view) {
    View* v = viewInPass(view);
    if (!v) return kQ3Failure;
    if (!allFinite(m)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    v->applyMatrix(m);
    return kQ3Success;
}

TransformObject* rotateAbout(TQ3Object o) {
    return check<TransformObject>(o, kQ3TransformTypeRotateAboutPoint);
}
TransformObject* rotateAxis(TQ3Object o) {
    return check<TransformObject>(o, kQ3TransformTypeRotateAboutAxis);
}

} // namespace
} // namespace q3

using namespace q3;
using T = TransformObject;

extern "C" {

TQ3ObjectType Q3Transform_GetType(TQ3TransformObject t) {
    if (!checkObject(t, kQ3ShapeTypeTransform)) return kQ3ObjectTypeInvalid;
    return t->type;
}

TQ3Status Q3Transform_GetMatrix(TQ3TransformObject t, TQ3Matrix4x4* m) {
    auto* x = check<T>(t, kQ3ShapeTypeTransform);
    if (!x || !m) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *m = x->getMatrix();
    return kQ3Success;
}

TQ3Status Q3Transform_Submit(TQ3TransformObject t, TQ3ViewObject view) {
    if (!checkObject(t, kQ3ShapeTypeTransform)) return kQ3Failure;
    return Q3Object_Submit(t, view);
}

TQ3TransformObject Q3MatrixTransform_New(const TQ3Matrix4x4* m) {
    return newWith(kQ3TransformTypeMatrix, &T::matrix, m);
}
TQ3Status Q3MatrixTransform_Set(TQ3TransformObject t, const TQ3Matrix4x4* m) {
    return setField(t, kQ3TransformTypeMatrix, &T::matrix, m);
}
TQ3Status Q3MatrixTransform_Get(TQ3TransformObject t, TQ3Matrix4x4* m) {
    return getField(t, kQ3TransformTypeMatrix, &T::matrix, m);
}
TQ3Status Q3MatrixTransform_Submit(const TQ3Matrix4x4* m, TQ3ViewObject view) {
    if (!m) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    return submitMatrix(*m, view);
}

TQ3TransformObject Q3TranslateTransform_New(const TQ3Vector3D* v) {
    return newWith(kQ3TransformTypeTranslate, &T::vector, v);
}
TQ3Status Q3TranslateTransform_Set(TQ3TransformObject t, const TQ3Vector3D* v) {
    return setField(t, kQ3TransformTypeTranslate, &T::vector, v);
}
TQ3Status Q3TranslateTransform_Get(TQ3TransformObject t, TQ3Vector3D* v) {
    return getField(t, kQ3TransformTypeTranslate, &T::vector, v);
}
TQ3Status Q3TranslateTransform_Submit(const TQ3Vector3D* v, TQ3ViewObject view) {
    if (!v) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    TQ3Matrix4x4 m;
    return submitMatrix(*Q3Matrix4x4_SetTranslate(&m, v->x, v->y, v->z), view);
}

TQ3TransformObject Q3ScaleTransform_New(const TQ3Vector3D* v) {
    return newWith(kQ3TransformTypeScale, &T::vector, v);
}
TQ3Status Q3ScaleTransform_Set(TQ3TransformObject t, const TQ3Vector3D* v) {
    return setField(t, kQ3TransformTypeScale, &T::vector, v);
}
TQ3Status Q3ScaleTransform_Get(TQ3TransformObject t, TQ3Vector3D* v) {
    return getField(t, kQ3TransformTypeScale, &T::vector, v);
}
TQ3Status Q3ScaleTransform_Submit(const TQ3Vector3D* v, TQ3ViewObject view) {
    if (!v) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    TQ3Matrix4x4 m;
    return submitMatrix(*Q3Matrix4x4_SetScale(&m, v->x, v->y, v->z), view);
}

TQ3TransformObject Q3RotateTransform_New(const TQ3RotateTransformData* d) {
    if (d && !validAxis(d->axis)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    return newWith(kQ3TransformTypeRotate, &T::rotate, d);
}
TQ3Status Q3RotateTransform_SetData(TQ3TransformObject t, const TQ3RotateTransformData* d) {
    if (d && !validAxis(d->axis)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    return setField(t, kQ3TransformTypeRotate, &T::rotate, d);
}
TQ3Status Q3RotateTransform_GetData(TQ3TransformObject t, TQ3RotateTransformData* d) {
    return getField(t, kQ3TransformTypeRotate, &T::rotate, d);
}
TQ3Status Q3RotateTransform_SetAxis(TQ3TransformObject t, TQ3Axis axis) {
    TQ3RotateTransformData d;
    if (Q3RotateTransform_GetData(t, &d) != kQ3Success) return kQ3Failure;
    d.axis = axis;
    return Q3RotateTransform_SetData(t, &d);
}
TQ3Status Q3RotateTransform_GetAxis(TQ3TransformObject t, TQ3Axis* axis) {
    TQ3RotateTransformData d;
    if (!axis || Q3RotateTransform_GetData(t, &d) != kQ3Success) return kQ3Failure;
    *axis = d.axis;
    return kQ3Success;
}
TQ3Status Q3RotateTransform_SetAngle(TQ3TransformObject t, float radians) {
    TQ3RotateTransformData d;
    if (Q3RotateTransform_GetData(t, &d) != kQ3Success) return kQ3Failure;
    d.radians = radians;
    return Q3RotateTransform_SetData(t, &d);
}
TQ3Status Q3RotateTransform_GetAngle(TQ3TransformObject t, float* radians) {
    TQ3RotateTransformData d;
    if (!radians || Q3RotateTransform_GetData(t, &d) != kQ3Success) return kQ3Failure;
    *radians = d.radians;
    return kQ3Success;
}
TQ3Status Q3RotateTransform_Submit(const TQ3RotateTransformData* d, TQ3ViewObject view) {
    if (!d || !validAxis(d->axis)) {
        postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    return submitMatrix(T::rotation(d->axis, d->radians), view);
}

TQ3TransformObject Q3RotateAboutPointTransform_New(const TQ3RotateAboutPointTransformData* d) {
    if (d && !validAxis(d->axis)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    return newWith(kQ3TransformTypeRotateAboutPoint, &T::aboutPoint, d);
}
TQ3Status Q3RotateAboutPointTransform_SetData(TQ3TransformObject t,
                                              const TQ3RotateAboutPointTransformData* d) {
    if (d && !validAxis(d->axis)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    return setField(t, kQ3TransformTypeRotateAboutPoint, &T::aboutPoint, d);
}
TQ3Status Q3RotateAboutPointTransform_GetData(TQ3TransformObject t,
                                              TQ3RotateAboutPointTransformData* d) {
    return getField(t, kQ3TransformTypeRotateAboutPoint, &T::aboutPoint, d);
}
TQ3Status Q3RotateAboutPointTransform_SetAxis(TQ3TransformObject t, TQ3Axis axis) {
    auto* x = rotateAbout(t);
    if (!x || !validAxis(axis)) {
        if (x) postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    x->aboutPoint.axis = axis;
    x->edited();
    return kQ3Success;
}
TQ3Status Q3RotateAboutPointTransform_GetAxis(TQ3TransformObject t, TQ3Axis* axis) {
    auto* x = rotateAbout(t);
    if (!x || !axis) return kQ3Failure;
    *axis = x->aboutPoint.axis;
    return kQ3Success;
}
TQ3Status Q3RotateAboutPointTransform_SetAngle(TQ3TransformObject t, float radians) {
    auto* x = rotateAbout(t);
    if (!x) return kQ3Failure;
    if (!finite(radians)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    x->aboutPoint.radians = radians;
    x->edited();
    return kQ3Success;
}
TQ3Status Q3RotateAboutPointTransform_GetAngle(TQ3TransformObject t, float* radians) {
    auto* x = rotateAbout(t);
    if (!x || !radians) return kQ3Failure;
    *radians = x->aboutPoint.radians;
    return kQ3Success;
}
TQ3Status Q3RotateAboutPointTransform_SetAboutPoint(TQ3TransformObject t, const TQ3Point3D* p) {
    auto* x = rotateAbout(t);
    if (!x || !p || !finite(*p)) return kQ3Failure;
    x->aboutPoint.about = *p;
    x->edited();
    return kQ3Success;
}
TQ3Status Q3RotateAboutPointTransform_GetAboutPoint(TQ3TransformObject t, TQ3Point3D* p) {
    auto* x = rotateAbout(t);
    if (!x || !p) return kQ3Failure;
    *p = x->aboutPoint.about;
    return kQ3Success;
}

TQ3TransformObject Q3RotateAboutAxisTransform_New(const TQ3RotateAboutAxisTransformData* d) {
    return newWith(kQ3TransformTypeRotateAboutAxis, &T::aboutAxis, d);
}
TQ3Status Q3RotateAboutAxisTransform_SetData(TQ3TransformObject t,
                                             const TQ3RotateAboutAxisTransformData* d) {
    return setField(t, kQ3TransformTypeRotateAboutAxis, &T::aboutAxis, d);
}
TQ3Status Q3RotateAboutAxisTransform_GetData(TQ3TransformObject t,
                                             TQ3RotateAboutAxisTransformData* d) {
    return getField(t, kQ3TransformTypeRotateAboutAxis, &T::aboutAxis, d);
}
TQ3Status Q3RotateAboutAxisTransform_SetOrigin(TQ3TransformObject t, const TQ3Point3D* p) {
    auto* x = rotateAxis(t);
    if (!x || !p || !finite(*p)) return kQ3Failure;
    x->aboutAxis.origin = *p;
    x->edited();
    return kQ3Success;
}
TQ3Status Q3RotateAboutAxisTransform_GetOrigin(TQ3TransformObject t, TQ3Point3D* p) {
    auto* x = rotateAxis(t);
    if (!x || !p) return kQ3Failure;
    *p = x->aboutAxis.origin;
    return kQ3Success;
}
TQ3Status Q3RotateAboutAxisTransform_SetOrientation(TQ3TransformObject t, const TQ3Vector3D* v) {
    auto* x = rotateAxis(t);
    if (!x || !v || !finite(*v)) return kQ3Failure;
    x->aboutAxis.orientation = *v;
    x->edited();
    return kQ3Success;
}
TQ3Status Q3RotateAboutAxisTransform_GetOrientation(TQ3TransformObject t, TQ3Vector3D* v) {
    auto* x = rotateAxis(t);
    if (!x || !v) return kQ3Failure;
    *v = x->aboutAxis.orientation;
    return kQ3Success;
}
TQ3Status Q3RotateAboutAxisTransform_SetAngle(TQ3TransformObject t, float radians) {
    auto* x = rotateAxis(t);
    if (!x) return kQ3Failure;
    if (!finite(radians)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    x->aboutAxis.radians = radians;
    x->edited();
    return kQ3Success;
}
TQ3Status Q3RotateAboutAxisTransform_GetAngle(TQ3TransformObject t, float* radians) {
    auto* x = rotateAxis(t);
    if (!x || !radians) return kQ3Failure;
    *radians = x->aboutAxis.radians;
    return kQ3Success;
}

TQ3TransformObject Q3QuaternionTransform_New(const TQ3Quaternion* q) {
    return newWith(kQ3TransformTypeQuaternion, &T::quaternion, q);
}
TQ3Status Q3QuaternionTransform_Set(TQ3TransformObject t, const TQ3Quaternion* q) {
    return setField(t, kQ3TransformTypeQuaternion, &T::quaternion, q);
}
TQ3Status Q3QuaternionTransform_Get(TQ3TransformObject t, TQ3Quaternion* q) {
    return getField(t, kQ3TransformTypeQuaternion, &T::quaternion, q);
}
TQ3Status Q3QuaternionTransform_Submit(const TQ3Quaternion* q, TQ3ViewObject view) {
    if (!q) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    TQ3Quaternion n;
    TQ3Matrix4x4 m;
    Q3Quaternion_Normalize(q, &n);
    return submitMatrix(*Q3Matrix4x4_SetQuaternion(&m, &n), view);
}

} // extern "C"
