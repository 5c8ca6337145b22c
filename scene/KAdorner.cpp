#include "scene/KAdorner.h"

#include "d3d/DViewerObject.h"
#include "foundation/Messages.h"
#include "scene/K3DObject.h"
#include "scene/K3DViewMatrix.h"

KAdorner::KAdorner() : WAttachment(kMsgAnyMessage, true) {}

void KAdorner::RunSelf(std::int32_t message, void* parameter) {
    if (message == kMsgSubmitAdorners && parameter) {
        Submit(*static_cast<const DViewerObject*>(parameter));
        SetRunHost(false);
    } else if (message == kMsgAdornerSecondPass && parameter) {
        Accumulate(*static_cast<TQ3Matrix4x4*>(parameter));
        SetRunHost(false);
    } else {
        SetRunHost(true);
    }
}

void KMatrixAdorner::Submit(const DViewerObject& viewer) {
    Q3MatrixTransform_Submit(&held, viewer.object);
}

void KMatrixAdorner::Accumulate(TQ3Matrix4x4& m) const {
    m = MultiplyMatrices(m, held);
}

void KMatrixAdorner::Apply(const void* value) {
    if (value) held = MultiplyMatrices(held, *static_cast<const TQ3Matrix4x4*>(value));
}

void KMatrixAdorner::Reset() {
    held = IdentityMatrix();
}

void KScaleAdorner::Submit(const DViewerObject& viewer) {
    const TQ3Vector3D v{held.x, held.y, held.z};
    Q3ScaleTransform_Submit(&v, viewer.object);
}

void KScaleAdorner::Accumulate(TQ3Matrix4x4& m) const {
    TQ3Matrix4x4 s{};
    s.value[0][0] = held.x;
    s.value[1][1] = held.y;
    s.value[2][2] = held.z;
    s.value[3][3] = 1;
    m = MultiplyMatrices(m, s);
}

void KScaleAdorner::Apply(const void* value) {
    if (!value) return;
    const auto& v = *static_cast<const KVector3D*>(value);
    held = {held.x * v.x, held.y * v.y, held.z * v.z, 0};
}

void KScaleAdorner::Set(const TQ3Matrix4x4& m) {
    held = {m.value[0][0], m.value[1][1], m.value[2][2], 0};
}

void KTranslateAdorner::Submit(const DViewerObject& viewer) {
    const TQ3Vector3D v{held.x, held.y, held.z};
    Q3TranslateTransform_Submit(&v, viewer.object);
}

void KTranslateAdorner::Accumulate(TQ3Matrix4x4& m) const {
    TQ3Matrix4x4 t{};
    for (int i = 0; i < 4; ++i)
        t.value[i][i] = 1;
    t.value[3][0] = held.x;
    t.value[3][1] = held.y;
    t.value[3][2] = held.z;
    m = MultiplyMatrices(m, t);
}

void KTranslateAdorner::Apply(const void* value) {
    if (!value) return;
    const auto& v = *static_cast<const KVector3D*>(value);
    held = {held.x + v.x, held.y + v.y, held.z + v.z, 0};
}

void KTranslateAdorner::Set(const TQ3Matrix4x4& m) {
    held = {m.value[0][0], m.value[1][1], m.value[2][2], 0};
}
