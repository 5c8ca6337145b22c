#include "scene/K3DViewAdorner.h"

#include "foundation/Messages.h"
#include "foundation/WAttachable.h"
#include "scene/K3DObject.h"
#include "scene/WView.h"

K3DViewAdorner::K3DViewAdorner(WAttachable& host, WView* v) : view(v), total(IdentityMatrix()) {
    host.AddAttachment(&pan, 0, false);
    host.AddAttachment(&orbit, 0, false);
    host.AddAttachment(&scale, 0, false);
}

K3DViewAdorner::~K3DViewAdorner() = default;

KAdorner* K3DViewAdorner::At(int index) {
    switch (index) {
    case kOrbit:
        return &orbit;
    case kPan:
        return &pan;
    case kScale:
        return &scale;
    default:
        return nullptr;
    }
}

void K3DViewAdorner::ApplyTo(int index, int operation, const void* value, bool redraw) {
    KAdorner* adorner = At(index);
    if (!adorner) return;
    if (operation == kApply)
        adorner->Apply(value);
    else if (operation == kReset)
        adorner->Reset();
    UpdateTotal();
    if (redraw && view) view->Refresh();
}

void K3DViewAdorner::SetAll(const TQ3Matrix4x4* s, const TQ3Matrix4x4* o, const TQ3Matrix4x4* p) {
    scale.Reset();
    orbit.Reset();
    pan.Reset();
    if (s) scale.Set(*s);
    if (o) orbit.Set(*o);
    if (p) pan.Set(*p);
    UpdateTotal();
}

void K3DViewAdorner::ResetAll() {
    SetAll(nullptr, nullptr, nullptr);
}

void K3DViewAdorner::GetAll(TQ3Matrix4x4* s, TQ3Matrix4x4* o, TQ3Matrix4x4* p) const {
    if (s) {
        *s = IdentityMatrix();
        scale.Accumulate(*s);
    }
    if (o) {
        *o = IdentityMatrix();
        orbit.Accumulate(*o);
    }
    if (p) {
        *p = IdentityMatrix();
        pan.Accumulate(*p);
    }
}

void K3DViewAdorner::GetTotal(TQ3Matrix4x4& out) const {
    out = IdentityMatrix();
    scale.Accumulate(out);
    orbit.Accumulate(out);
    pan.Accumulate(out);
}

void K3DViewAdorner::UpdateTotal() {
    GetTotal(total);
    Broadcast(kMsgViewMatrixChanged, &total);
}
