#include "scene/K3DObject.h"

#include <cmath>

TQ3Matrix4x4 IdentityMatrix() {
    TQ3Matrix4x4 m{};
    for (int i = 0; i < 4; ++i)
        m.value[i][i] = 1.0f;
    return m;
}

TQ3Matrix4x4 TranslationMatrix(float x, float y, float z) {
    TQ3Matrix4x4 m = IdentityMatrix();
    m.value[3][0] = x;
    m.value[3][1] = y;
    m.value[3][2] = z;
    return m;
}

void K3DObject::GetRotationMatrix(TQ3Matrix4x4& out) const {
    out = IdentityMatrix();
}
void K3DObject::GetScaleMatrix(TQ3Matrix4x4& out) const {
    out = IdentityMatrix();
}
void K3DObject::GetLocalToWorld(TQ3Matrix4x4& out, int) const {
    out = IdentityMatrix();
}
void K3DObject::GetBoundingBox(TQ3BoundingBox& out) const {
    out = {};
}
void K3DObject::GetBoundingSphere(TQ3BoundingSphere& out) const {
    out = {};
}
void K3DObject::GetCenter(KVector3D& out) const {
    out = {};
}
void K3DObject::GetPosition(KVector3D& out) const {
    out = {};
}

void K3DObject::GetAxisScales(KVector3D& out) const {
    TQ3Matrix4x4 m;
    GetLocalToWorld(m, 0);
    auto row = [&m](int r) {
        return std::sqrt(m.value[r][0] * m.value[r][0] + m.value[r][1] * m.value[r][1] +
                         m.value[r][2] * m.value[r][2]);
    };
    out = {};
    out.x = row(0);
    out.y = row(1);
    out.z = row(2);
}
