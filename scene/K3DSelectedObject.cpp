#include "scene/K3DSelectedObject.h"

#include "d3d/DRotateWidget.h"
#include "d3d/DScaleWidget.h"
#include "scene/K3DView.h"
#include "scene/K3DViewMatrix.h"
#include "scene/SceneAlerts.h"
#include "scene/VC3DObject.h"
#include "scene/VCLight.h"

namespace {
KVector3D ScaleDiagonal(const K3DObject& object) {
    TQ3Matrix4x4 m;
    object.GetScaleMatrix(m);
    return {m.value[0][0], m.value[1][1], m.value[2][2], 0};
}
} // namespace

// ---- K3DSelectedObject ------------------------------------------------------

K3DSelectedObject::~K3DSelectedObject() = default;

std::unique_ptr<DWidget> K3DSelectedObject::CreateScaleWidget(K3DObject*) {
    return nullptr;
}
std::unique_ptr<DWidget> K3DSelectedObject::CreateRotateWidget(K3DObject*) {
    return nullptr;
}
std::unique_ptr<DWidget> K3DSelectedObject::CreateTranslateWidget(K3DObject*) {
    return nullptr;
}
std::unique_ptr<DWidget> K3DSelectedObject::CreateOtherWidget(int, K3DObject*) {
    return nullptr;
}

void K3DSelectedObject::RemoveWidget() {
    if (!widget) return;
    DeleteWidget(object, widget.get());
    widget.reset();
}

void K3DSelectedObject::SetWidget(int kind) {
    if (widget && widget->GetWidgetKind() != kind) RemoveWidget();
    if (widget) return;
    switch (kind) {
    case kNoWidget:
        break;
    case kScaleWidget:
        widget = CreateScaleWidget(object);
        break;
    case kRotateWidget:
        widget = CreateRotateWidget(object);
        break;
    case kTranslateWidget:
        widget = CreateTranslateWidget(object);
        break;
    default:
        widget = CreateOtherWidget(kind, object);
        break;
    }
}

void K3DSelectedObject::ShowWidget(bool flag) {
    if (widget) widget->SetDrawn(flag);
}

// ---- VCSelectedObject -------------------------------------------------------

VCSelectedObject::VCSelectedObject(VC3DObject* object, std::uint32_t id)
    : K3DSelectedObject(object), id(id), lastPickId(id) {}

VCSelectedObject::~VCSelectedObject() {
    RemoveWidget();
}

bool VCSelectedObject::GetWidgetPart(std::int16_t* part) const {
    const auto bits = static_cast<std::int16_t>((lastPickId >> 28) & 7u);
    if (part) *part = bits;
    return bits != 0;
}

bool VCSelectedObject::GetHandlePart(std::int16_t* handle) const {
    if (handle) *handle = static_cast<std::int16_t>((lastPickId >> 24) & 15u);
    return (lastPickId & 0x80000000u) != 0;
}

void VCSelectedObject::HighlightPart(std::int16_t part, bool on) {
    if (auto* rings = dynamic_cast<DRotateWidget*>(widget.get())) rings->HighlightRing(part, on);
}

void VCSelectedObject::CueHandle(const KVector3D& point, bool on) {
    if (auto* box = dynamic_cast<DScaleWidget*>(widget.get())) box->CueHandle(point, on);
}

void VCSelectedObject::Edit() {
    auto* light = dynamic_cast<VCLight*>(object);
    if (!light) return;
    float r, g, b;
    light->GetColor(r, g, b);
    std::uint16_t rgb[3] = {static_cast<std::uint16_t>(r * 65535.0),
                            static_cast<std::uint16_t>(g * 65535.0),
                            static_cast<std::uint16_t>(b * 65535.0)};
    if (ScenePickColor(" Select light color:", rgb))
        light->SetColor(rgb[0] / 65535.0f, rgb[1] / 65535.0f, rgb[2] / 65535.0f);
}

float VCSelectedObject::SizeFactor() const {
    K3DView* view = GetCurrent3DView();
    if (!view || !view->camera) return 1.0f;
    const TQ3Point3D& location = view->camera->GetData().placement.cameraLocation;
    TQ3Matrix4x4 adorner, inverse;
    view->GetAdornerMatrix(adorner);
    if (!Q3Matrix4x4_Invert(&adorner, &inverse)) return 1.0f;
    const KVector3D eye = TransformPoint({location.x, location.y, location.z, 1}, inverse);
    KVector3D position, centre;
    object->GetPosition(position);
    object->GetCenter(centre);
    return 20.0f / (eye - (position + centre)).Length();
}

void VCSelectedObject::UpdateWidget() {
    if (auto* box = dynamic_cast<DScaleWidget*>(widget.get())) {
        const KVector3D v = ScaleDiagonal(*object);
        box->Update(v, v * SizeFactor());
    } else if (auto* rings = dynamic_cast<DRotateWidget*>(widget.get())) {
        rings->Update({1, 1, 1, 0}, SizeFactor());
    }
}

void VCSelectedObject::DeleteWidget(K3DObject* of, DWidget* w) {
    if (auto* sceneObject = dynamic_cast<VC3DObject*>(of)) sceneObject->RemoveFromGroup(*w);
}

std::unique_ptr<DWidget> VCSelectedObject::CreateScaleWidget(K3DObject* of) {
    auto* sceneObject = dynamic_cast<VC3DObject*>(of);
    if (!sceneObject) return nullptr;
    TQ3BoundingBox box;
    of->GetBoundingBox(box);
    auto made = std::make_unique<DScaleWidget>(box, id);
    const KVector3D v = ScaleDiagonal(*of);
    made->Update(v, v * SizeFactor());
    sceneObject->AddToGroup(*made);
    return made;
}

std::unique_ptr<DWidget> VCSelectedObject::CreateRotateWidget(K3DObject* of) {
    auto* sceneObject = dynamic_cast<VC3DObject*>(of);
    if (!sceneObject) return nullptr;
    if (K3DView* view = GetCurrent3DView()) sceneObject->CalcBoundingSphere(view);
    TQ3BoundingSphere sphere;
    of->GetBoundingSphere(sphere);
    auto made = std::make_unique<DRotateWidget>(sphere, ScaleDiagonal(*of), id);
    made->Update({1, 1, 1, 0}, SizeFactor());
    sceneObject->InsertAfterRotation(*made);
    return made;
}

std::unique_ptr<DWidget> VCSelectedObject::CreateTranslateWidget(K3DObject* of) {
    auto* sceneObject = dynamic_cast<VC3DObject*>(of);
    if (!sceneObject) return nullptr;
    TQ3BoundingBox box;
    of->GetBoundingBox(box);
    auto made = std::make_unique<DTranslateWidget>(box, id);
    sceneObject->AddToGroup(*made);
    return made;
}
