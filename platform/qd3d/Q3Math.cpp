// Vectors, matrices, quaternions and bounding boxes.
#include "platform/qd3d/Q3Internal.h"

#include <cmath>

using namespace q3;

namespace {
TQ3Matrix4x4 identity() {
    TQ3Matrix4x4 m{};
    for (int i = 0; i < 4; ++i)
        m.value[i][i] = 1;
    return m;
}
} // namespace

extern "C" {

TQ3Point2D* Q3Point2D_Set(TQ3Point2D* p, float x, float y) {
    *p = {x, y};
    return p;
}
TQ3Point3D* Q3Point3D_Set(TQ3Point3D* p, float x, float y, float z) {
    *p = {x, y, z};
    return p;
}
TQ3Vector3D* Q3Vector3D_Set(TQ3Vector3D* v, float x, float y, float z) {
    *v = {x, y, z};
    return v;
}

TQ3Point2D* Q3PolarPoint_ToPoint2D(const TQ3PolarPoint* p, TQ3Point2D* r) {
    float x = p->r * std::cos(p->theta), y = p->r * std::sin(p->theta);
    *r = {x, y};
    return r;
}

TQ3PolarPoint* Q3Point2D_ToPolar(const TQ3Point2D* p, TQ3PolarPoint* r) {
    float rr = std::sqrt(p->x * p->x + p->y * p->y);
    float t = rr > 0 ? std::atan2(p->y, p->x) : 0.0f;
    if (t < 0) t += 2.0f * static_cast<float>(M_PI);
    *r = {rr, t};
    return r;
}

float Q3Vector3D_Length(const TQ3Vector3D* v) {
    return std::sqrt(v->x * v->x + v->y * v->y + v->z * v->z);
}
float Q3Vector3D_Dot(const TQ3Vector3D* a, const TQ3Vector3D* b) {
    return a->x * b->x + a->y * b->y + a->z * b->z;
}
TQ3Vector3D* Q3Vector3D_Cross(const TQ3Vector3D* a, const TQ3Vector3D* b, TQ3Vector3D* r) {
    TQ3Vector3D c{a->y * b->z - a->z * b->y, a->z * b->x - a->x * b->z, a->x * b->y - a->y * b->x};
    *r = c;
    return r;
}
TQ3Vector3D* Q3Vector3D_Normalize(const TQ3Vector3D* v, TQ3Vector3D* r) {
    float len = Q3Vector3D_Length(v);
    if (len > 0 && std::isfinite(len))
        *r = {v->x / len, v->y / len, v->z / len};
    else
        *r = {0, 0, 0};
    return r;
}
TQ3Vector3D* Q3Vector3D_Add(const TQ3Vector3D* a, const TQ3Vector3D* b, TQ3Vector3D* r) {
    *r = {a->x + b->x, a->y + b->y, a->z + b->z};
    return r;
}
TQ3Vector3D* Q3Vector3D_Subtract(const TQ3Vector3D* a, const TQ3Vector3D* b, TQ3Vector3D* r) {
    *r = {a->x - b->x, a->y - b->y, a->z - b->z};
    return r;
}
TQ3Vector3D* Q3Vector3D_Scale(const TQ3Vector3D* v, float s, TQ3Vector3D* r) {
    *r = {v->x * s, v->y * s, v->z * s};
    return r;
}
TQ3Vector3D* Q3Vector3D_Negate(const TQ3Vector3D* v, TQ3Vector3D* r) {
    *r = {-v->x, -v->y, -v->z};
    return r;
}
TQ3Vector3D* Q3Vector3D_Transform(const TQ3Vector3D* v, const TQ3Matrix4x4* m, TQ3Vector3D* r) {
    const float(*a)[4] = m->value;
    TQ3Vector3D o{v->x * a[0][0] + v->y * a[1][0] + v->z * a[2][0],
                  v->x * a[0][1] + v->y * a[1][1] + v->z * a[2][1],
                  v->x * a[0][2] + v->y * a[1][2] + v->z * a[2][2]};
    *r = o;
    return r;
}
TQ3Vector3D* Q3Point3D_Subtract(const TQ3Point3D* a, const TQ3Point3D* b, TQ3Vector3D* r) {
    *r = {a->x - b->x, a->y - b->y, a->z - b->z};
    return r;
}
TQ3Point3D* Q3Point3D_Vector3D_Add(const TQ3Point3D* p, const TQ3Vector3D* v, TQ3Point3D* r) {
    *r = {p->x + v->x, p->y + v->y, p->z + v->z};
    return r;
}
float Q3Point3D_Distance(const TQ3Point3D* a, const TQ3Point3D* b) {
    float dx = a->x - b->x, dy = a->y - b->y, dz = a->z - b->z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}
TQ3Point3D* Q3Point3D_Transform(const TQ3Point3D* p, const TQ3Matrix4x4* m, TQ3Point3D* r) {
    const float(*a)[4] = m->value;
    float x = p->x * a[0][0] + p->y * a[1][0] + p->z * a[2][0] + a[3][0];
    float y = p->x * a[0][1] + p->y * a[1][1] + p->z * a[2][1] + a[3][1];
    float z = p->x * a[0][2] + p->y * a[1][2] + p->z * a[2][2] + a[3][2];
    float w = p->x * a[0][3] + p->y * a[1][3] + p->z * a[2][3] + a[3][3];
    if (w != 0 && w != 1) {
        x /= w;
        y /= w;
        z /= w;
    }
    *r = {x, y, z};
    return r;
}
TQ3RationalPoint4D* Q3RationalPoint4D_Transform(const TQ3RationalPoint4D* p, const TQ3Matrix4x4* m,
                                                TQ3RationalPoint4D* r) {
    const float(*a)[4] = m->value;
    TQ3RationalPoint4D o;
    o.x = p->x * a[0][0] + p->y * a[1][0] + p->z * a[2][0] + p->w * a[3][0];
    o.y = p->x * a[0][1] + p->y * a[1][1] + p->z * a[2][1] + p->w * a[3][1];
    o.z = p->x * a[0][2] + p->y * a[1][2] + p->z * a[2][2] + p->w * a[3][2];
    o.w = p->x * a[0][3] + p->y * a[1][3] + p->z * a[2][3] + p->w * a[3][3];
    *r = o;
    return r;
}

TQ3Matrix4x4* Q3Matrix4x4_SetIdentity(TQ3Matrix4x4* m) {
    *m = identity();
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_Copy(const TQ3Matrix4x4* m, TQ3Matrix4x4* r) {
    *r = *m;
    return r;
}
TQ3Matrix4x4* Q3Matrix4x4_Transpose(const TQ3Matrix4x4* m, TQ3Matrix4x4* r) {
    TQ3Matrix4x4 t;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            t.value[i][j] = m->value[j][i];
    *r = t;
    return r;
}
TQ3Matrix4x4* Q3Matrix4x4_Multiply(const TQ3Matrix4x4* a, const TQ3Matrix4x4* b, TQ3Matrix4x4* r) {
    TQ3Matrix4x4 t;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            float s = 0;
            for (int k = 0; k < 4; ++k)
                s += a->value[i][k] * b->value[k][j];
            t.value[i][j] = s;
        }
    *r = t;
    return r;
}

TQ3Matrix4x4* Q3Matrix4x4_Invert(const TQ3Matrix4x4* m, TQ3Matrix4x4* r) {
    // Gauss-Jordan with partial pivoting, in double precision.
    double a[4][8];
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            a[i][j] = m->value[i][j];
            a[i][j + 4] = i == j ? 1.0 : 0.0;
        }
    for (int c = 0; c < 4; ++c) {
        int p = c;
        for (int i = c + 1; i < 4; ++i)
            if (std::fabs(a[i][c]) > std::fabs(a[p][c])) p = i;
        if (!(std::fabs(a[p][c]) > 1e-30)) {
            postError(kQ3ErrorInvalidParameter);
            return nullptr;
        }
        if (p != c)
            for (int j = 0; j < 8; ++j)
                std::swap(a[p][j], a[c][j]);
        double d = a[c][c];
        for (int j = 0; j < 8; ++j)
            a[c][j] /= d;
        for (int i = 0; i < 4; ++i)
            if (i != c) {
                double f = a[i][c];
                for (int j = 0; j < 8; ++j)
                    a[i][j] -= f * a[c][j];
            }
    }
    TQ3Matrix4x4 t;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            t.value[i][j] = static_cast<float>(a[i][j + 4]);
    *r = t;
    return r;
}

float Q3Matrix4x4_Determinant(const TQ3Matrix4x4* m) {
    double a[4][4];
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            a[i][j] = m->value[i][j];
    double det = 1;
    for (int c = 0; c < 4; ++c) {
        int p = c;
        for (int i = c + 1; i < 4; ++i)
            if (std::fabs(a[i][c]) > std::fabs(a[p][c])) p = i;
        if (a[p][c] == 0) return 0;
        if (p != c) {
            for (int j = 0; j < 4; ++j)
                std::swap(a[p][j], a[c][j]);
            det = -det;
        }
        det *= a[c][c];
        for (int i = c + 1; i < 4; ++i) {
            double f = a[i][c] / a[c][c];
            for (int j = c; j < 4; ++j)
                a[i][j] -= f * a[c][j];
        }
    }
    return static_cast<float>(det);
}

TQ3Matrix4x4* Q3Matrix4x4_SetTranslate(TQ3Matrix4x4* m, float x, float y, float z) {
    *m = identity();
    m->value[3][0] = x;
    m->value[3][1] = y;
    m->value[3][2] = z;
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetScale(TQ3Matrix4x4* m, float x, float y, float z) {
    *m = identity();
    m->value[0][0] = x;
    m->value[1][1] = y;
    m->value[2][2] = z;
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_X(TQ3Matrix4x4* m, float t) {
    *m = identity();
    float c = std::cos(t), s = std::sin(t);
    m->value[1][1] = c;
    m->value[1][2] = s;
    m->value[2][1] = -s;
    m->value[2][2] = c;
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_Y(TQ3Matrix4x4* m, float t) {
    *m = identity();
    float c = std::cos(t), s = std::sin(t);
    m->value[0][0] = c;
    m->value[0][2] = -s;
    m->value[2][0] = s;
    m->value[2][2] = c;
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_Z(TQ3Matrix4x4* m, float t) {
    *m = identity();
    float c = std::cos(t), s = std::sin(t);
    m->value[0][0] = c;
    m->value[0][1] = s;
    m->value[1][0] = -s;
    m->value[1][1] = c;
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotate_XYZ(TQ3Matrix4x4* m, float x, float y, float z) {
    TQ3Matrix4x4 a, b, c;
    Q3Matrix4x4_SetRotate_X(&a, x);
    Q3Matrix4x4_SetRotate_Y(&b, y);
    Q3Matrix4x4_SetRotate_Z(&c, z);
    Q3Matrix4x4_Multiply(&a, &b, &a);
    Q3Matrix4x4_Multiply(&a, &c, m);
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotateAboutPoint(TQ3Matrix4x4* m, const TQ3Point3D* o, float x,
                                              float y, float z) {
    TQ3Matrix4x4 to, rot, back;
    Q3Matrix4x4_SetTranslate(&to, -o->x, -o->y, -o->z);
    Q3Matrix4x4_SetRotate_XYZ(&rot, x, y, z);
    Q3Matrix4x4_SetTranslate(&back, o->x, o->y, o->z);
    Q3Matrix4x4_Multiply(&to, &rot, &to);
    Q3Matrix4x4_Multiply(&to, &back, m);
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotateAboutAxis(TQ3Matrix4x4* m, const TQ3Point3D* o,
                                             const TQ3Vector3D* axis, float angle) {
    TQ3Quaternion q;
    Q3Quaternion_SetRotateAboutAxis(&q, axis, angle);
    TQ3Matrix4x4 to, rot, back;
    Q3Matrix4x4_SetTranslate(&to, -o->x, -o->y, -o->z);
    Q3Matrix4x4_SetQuaternion(&rot, &q);
    Q3Matrix4x4_SetTranslate(&back, o->x, o->y, o->z);
    Q3Matrix4x4_Multiply(&to, &rot, &to);
    Q3Matrix4x4_Multiply(&to, &back, m);
    return m;
}
TQ3Matrix4x4* Q3Matrix4x4_SetRotateVectorToVector(TQ3Matrix4x4* m, const TQ3Vector3D* v1,
                                                  const TQ3Vector3D* v2) {
    TQ3Quaternion q;
    Q3Quaternion_SetRotateVectorToVector(&q, v1, v2);
    return Q3Matrix4x4_SetQuaternion(m, &q);
}

TQ3Matrix4x4* Q3Matrix4x4_SetQuaternion(TQ3Matrix4x4* m, const TQ3Quaternion* q) {
    float w = q->w, x = q->x, y = q->y, z = q->z;
    *m = identity();
    // The row-vector form: the transpose of the usual column-vector matrix.
    m->value[0][0] = 1 - 2 * (y * y + z * z);
    m->value[0][1] = 2 * (x * y + w * z);
    m->value[0][2] = 2 * (x * z - w * y);
    m->value[1][0] = 2 * (x * y - w * z);
    m->value[1][1] = 1 - 2 * (x * x + z * z);
    m->value[1][2] = 2 * (y * z + w * x);
    m->value[2][0] = 2 * (x * z + w * y);
    m->value[2][1] = 2 * (y * z - w * x);
    m->value[2][2] = 1 - 2 * (x * x + y * y);
    return m;
}

TQ3Quaternion* Q3Quaternion_Set(TQ3Quaternion* q, float w, float x, float y, float z) {
    *q = {w, x, y, z};
    return q;
}
TQ3Quaternion* Q3Quaternion_SetIdentity(TQ3Quaternion* q) {
    return Q3Quaternion_Set(q, 1, 0, 0, 0);
}
TQ3Quaternion* Q3Quaternion_Copy(const TQ3Quaternion* q, TQ3Quaternion* r) {
    *r = *q;
    return r;
}
TQ3Quaternion* Q3Quaternion_Normalize(const TQ3Quaternion* q, TQ3Quaternion* r) {
    float n = std::sqrt(q->w * q->w + q->x * q->x + q->y * q->y + q->z * q->z);
    if (n > 0 && std::isfinite(n))
        *r = {q->w / n, q->x / n, q->y / n, q->z / n};
    else
        *r = {1, 0, 0, 0};
    return r;
}
TQ3Quaternion* Q3Quaternion_Invert(const TQ3Quaternion* q, TQ3Quaternion* r) {
    *r = {q->w, -q->x, -q->y, -q->z};
    return r;
}
TQ3Quaternion* Q3Quaternion_Multiply(const TQ3Quaternion* a, const TQ3Quaternion* b,
                                     TQ3Quaternion* r) {
    TQ3Quaternion o{a->w * b->w - a->x * b->x - a->y * b->y - a->z * b->z,
                    a->w * b->x + a->x * b->w + a->y * b->z - a->z * b->y,
                    a->w * b->y - a->x * b->z + a->y * b->w + a->z * b->x,
                    a->w * b->z + a->x * b->y - a->y * b->x + a->z * b->w};
    *r = o;
    return r;
}
TQ3Quaternion* Q3Quaternion_SetRotate_X(TQ3Quaternion* q, float t) {
    return Q3Quaternion_Set(q, std::cos(t / 2), std::sin(t / 2), 0, 0);
}
TQ3Quaternion* Q3Quaternion_SetRotate_Y(TQ3Quaternion* q, float t) {
    return Q3Quaternion_Set(q, std::cos(t / 2), 0, std::sin(t / 2), 0);
}
TQ3Quaternion* Q3Quaternion_SetRotate_Z(TQ3Quaternion* q, float t) {
    return Q3Quaternion_Set(q, std::cos(t / 2), 0, 0, std::sin(t / 2));
}
TQ3Quaternion* Q3Quaternion_SetRotate_XYZ(TQ3Quaternion* q, float x, float y, float z) {
    TQ3Quaternion qx, qy, qz;
    Q3Quaternion_SetRotate_X(&qx, x);
    Q3Quaternion_SetRotate_Y(&qy, y);
    Q3Quaternion_SetRotate_Z(&qz, z);
    Q3Quaternion_Multiply(&qy, &qx, &qy);
    return Q3Quaternion_Multiply(&qz, &qy, q);
}
TQ3Quaternion* Q3Quaternion_SetRotateAboutAxis(TQ3Quaternion* q, const TQ3Vector3D* axis,
                                               float angle) {
    TQ3Vector3D n;
    Q3Vector3D_Normalize(axis, &n);
    float s = std::sin(angle / 2);
    return Q3Quaternion_Set(q, std::cos(angle / 2), n.x * s, n.y * s, n.z * s);
}
TQ3Quaternion* Q3Quaternion_SetRotateVectorToVector(TQ3Quaternion* q, const TQ3Vector3D* v1,
                                                    const TQ3Vector3D* v2) {
    TQ3Vector3D a, b, c;
    Q3Vector3D_Normalize(v1, &a);
    Q3Vector3D_Normalize(v2, &b);
    float d = Q3Vector3D_Dot(&a, &b);
    if (d > 0.999999f) return Q3Quaternion_SetIdentity(q);
    if (d < -0.999999f) {
        // half turn about any axis at right angles to a
        TQ3Vector3D other = std::fabs(a.x) < 0.9f ? TQ3Vector3D{1, 0, 0} : TQ3Vector3D{0, 1, 0};
        Q3Vector3D_Cross(&a, &other, &c);
        return Q3Quaternion_SetRotateAboutAxis(q, &c, static_cast<float>(M_PI));
    }
    Q3Vector3D_Cross(&a, &b, &c);
    TQ3Quaternion t{1 + d, c.x, c.y, c.z};
    return Q3Quaternion_Normalize(&t, q);
}
TQ3Quaternion* Q3Quaternion_SetMatrix(TQ3Quaternion* q, const TQ3Matrix4x4* m) {
    // inverse of Q3Matrix4x4_SetQuaternion (row-vector form)
    const float(*a)[4] = m->value;
    float tr = a[0][0] + a[1][1] + a[2][2];
    TQ3Quaternion r;
    if (tr > 0) {
        float s = std::sqrt(tr + 1) * 2;
        r = {0.25f * s, (a[1][2] - a[2][1]) / s, (a[2][0] - a[0][2]) / s, (a[0][1] - a[1][0]) / s};
    } else if (a[0][0] > a[1][1] && a[0][0] > a[2][2]) {
        float s = std::sqrt(1 + a[0][0] - a[1][1] - a[2][2]) * 2;
        r = {(a[1][2] - a[2][1]) / s, 0.25f * s, (a[1][0] + a[0][1]) / s, (a[2][0] + a[0][2]) / s};
    } else if (a[1][1] > a[2][2]) {
        float s = std::sqrt(1 + a[1][1] - a[0][0] - a[2][2]) * 2;
        r = {(a[2][0] - a[0][2]) / s, (a[1][0] + a[0][1]) / s, 0.25f * s, (a[2][1] + a[1][2]) / s};
    } else {
        float s = std::sqrt(1 + a[2][2] - a[0][0] - a[1][1]) * 2;
        r = {(a[0][1] - a[1][0]) / s, (a[2][0] + a[0][2]) / s, (a[2][1] + a[1][2]) / s, 0.25f * s};
    }
    return Q3Quaternion_Normalize(&r, q);
}
TQ3Vector3D* Q3Vector3D_TransformQuaternion(const TQ3Vector3D* v, const TQ3Quaternion* q,
                                            TQ3Vector3D* r) {
    TQ3Matrix4x4 m;
    Q3Matrix4x4_SetQuaternion(&m, q);
    return Q3Vector3D_Transform(v, &m, r);
}
TQ3Point3D* Q3Point3D_TransformQuaternion(const TQ3Point3D* p, const TQ3Quaternion* q,
                                          TQ3Point3D* r) {
    TQ3Matrix4x4 m;
    Q3Matrix4x4_SetQuaternion(&m, q);
    return Q3Point3D_Transform(p, &m, r);
}

TQ3BoundingBox* Q3BoundingBox_Reset(TQ3BoundingBox* b) {
    *b = {{0, 0, 0}, {0, 0, 0}, kQ3True};
    return b;
}
TQ3BoundingBox* Q3BoundingBox_UnionPoint3D(const TQ3BoundingBox* b, const TQ3Point3D* p,
                                           TQ3BoundingBox* r) {
    if (b->isEmpty) {
        *r = {*p, *p, kQ3False};
        return r;
    }
    TQ3BoundingBox o{
        {std::fmin(b->min.x, p->x), std::fmin(b->min.y, p->y), std::fmin(b->min.z, p->z)},
        {std::fmax(b->max.x, p->x), std::fmax(b->max.y, p->y), std::fmax(b->max.z, p->z)},
        kQ3False};
    *r = o;
    return r;
}
TQ3BoundingBox* Q3BoundingBox_Union(const TQ3BoundingBox* a, const TQ3BoundingBox* b,
                                    TQ3BoundingBox* r) {
    if (a->isEmpty) {
        *r = *b;
        return r;
    }
    if (b->isEmpty) {
        *r = *a;
        return r;
    }
    TQ3BoundingBox o = *a;
    Q3BoundingBox_UnionPoint3D(&o, &b->min, &o);
    Q3BoundingBox_UnionPoint3D(&o, &b->max, &o);
    *r = o;
    return r;
}

} // extern "C"
