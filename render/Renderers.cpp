#include "render/Renderers.h"

#include "platform/finalrender/LightWorksSL.h"
#include "scene/VZarbesoView.h"

#include <cstring>

namespace {
constexpr TQ3RaveVendorID kAnyVendor = -1;
} // namespace

// ---- DRendererObject ---------------------------------------------------------

DRendererObject::DRendererObject(TQ3ObjectType t) {
    object = Q3Renderer_NewFromType(t);
    CheckObject(object);
    if (t == kQ3RendererTypeInteractive) {
        Q3InteractiveRenderer_SetDoubleBufferBypass(object, kQ3True);
        Q3InteractiveRenderer_SetPreferences(object, kAnyVendor, 0);
    }
    TQ3ObjectClassNameString name = {};
    if (Q3RendererClass_GetNickNameString(t, name) != kQ3Success || name[0] == 0)
        Q3ObjectHierarchy_GetStringFromType(t, name);
    SetNickName(name);
    type = t;
}

DRendererObject::~DRendererObject() {
    if (object) Q3Object_Dispose(object);
}

bool DRendererObject::ModalConfigure(TQ3DialogAnchor anchor, bool* ok) {
    TQ3Boolean canceled = kQ3True;
    const TQ3Status status = Q3Renderer_ModalConfigure(object, anchor, &canceled);
    if (ok) *ok = status == kQ3Success && !canceled;
    return status == kQ3Success;
}

bool DRendererObject::IsInteractive() const {
    return Q3Renderer_IsInteractive(object) == kQ3True;
}

bool DRendererObject::HasModalConfigure() const {
    return Q3Renderer_HasModalConfigure(object) == kQ3True;
}

void DRendererObject::SetNickName(const char* text) {
    std::strncpy(nickName, text ? text : "", kNameSize - 1);
    nickName[kNameSize - 1] = 0;
}

// ---- RendererTable -----------------------------------------------------------

RendererTable::~RendererTable() {
    for (DRendererObject* r : renderers)
        delete r;
}

bool RendererTable::Build() {
    DObjectHierarchy hierarchy;
    DSubClassData classes;
    hierarchy.GetSubClassData(kQ3SharedTypeRenderer, &classes.data);
    if (classes.data.numClasses == 0) {
        hierarchy.EmptySubClassData(&classes.data);
        throw kFailTrsa;
    }
    bool any = false;
    try {
        renderers.assign(classes.data.numClasses, nullptr);
        for (TQ3Uns32 i = classes.data.numClasses; i-- > 0;) {
            auto* r = new DRendererObject(classes.data.classTypes[i]);
            renderers[i] = r;
            any = true;
            // See-through letters let the image show through the picture.
            if (std::strcmp(r->nickName, kFinalRendererNickName) == 0)
                Q3LightWorks_SL_SetTransparencyAffectsAlpha(r->object, kQ3True);
            if (r->type == kQ3RendererTypeInteractive)
                Q3InteractiveRenderer_SetPreferences(r->object, kAnyVendor, 0);
        }
    } catch (...) {
        hierarchy.EmptySubClassData(&classes.data);
        throw;
    }
    hierarchy.EmptySubClassData(&classes.data);
    return any;
}

DRendererObject* RendererTable::Find(TQ3ObjectType type) const {
    for (DRendererObject* r : renderers)
        if (r && r->type == type) return r;
    return nullptr;
}

bool RendererTable::IsInteractive(TQ3ObjectType type) const {
    const DRendererObject* r = Find(type);
    return r && r->IsInteractive();
}

bool RendererTable::HasConfigure(TQ3ObjectType type) const {
    const DRendererObject* r = Find(type);
    return r && r->HasModalConfigure();
}

bool RendererTable::NameOfType(TQ3ObjectType type, std::string* name) const {
    const DRendererObject* r = Find(type);
    if (!r) return false;
    *name = r->nickName;
    return true;
}

bool RendererTable::TypeOfName(const char* name, TQ3ObjectType* type) const {
    if (!name) return false;
    for (DRendererObject* r : renderers)
        if (r && std::strcmp(r->nickName, name) == 0) {
            *type = r->type;
            return true;
        }
    return false;
}

// ---- QRenderer ---------------------------------------------------------------

QRenderer::QRenderer(VZarbesoView* v) : view(v) {
    table.Build();
}

QRenderer::~QRenderer() = default;

std::vector<std::string> QRenderer::FillRendererNames() const {
    std::vector<std::string> names;
    for (auto it = table.renderers.rbegin(); it != table.renderers.rend(); ++it) {
        const DRendererObject* r = *it;
        if (!r || r->type == kQ3RendererTypeGeneric) continue;
        names.emplace_back(r->nickName);
    }
    return names;
}

void QRenderer::SelectFinalRenderer(const char* name) {
    table.TypeOfName(name, &finalType);
}

void QRenderer::UseInteractivePreview() {
    if (previewType != kQ3RendererTypeInteractive) {
        if (DRendererObject* r = table.Find(kQ3RendererTypeInteractive)) {
            previewType = kQ3RendererTypeInteractive;
            view->viewer.SetRenderer(*r);
        }
    }
    view->GetSceneManager()->fillStyle.Set(kQ3FillStyleFilled);
}

bool QRenderer::FinalHasConfigure() const {
    return table.HasConfigure(finalType);
}

void QRenderer::ConfigureFinal(TQ3DialogAnchor anchor) {
    if (finalType == 0) return;
    if (DRendererObject* r = table.Find(finalType)) r->ModalConfigure(anchor, nullptr);
}

bool QRenderer::Render(bool interactive) {
    if (DRendererObject* r = table.Find(finalType)) view->viewer.SetRenderer(*r);
    DFillStyle& fill = view->GetSceneManager()->fillStyle;
    const bool interactiveFinal = finalType == kQ3RendererTypeInteractive;
    const TQ3FillStyle keptFill = fill.Get();
    if (interactiveFinal) fill.Set(kQ3FillStyleFilled);
    bool done;
    try {
        done = view->ShowRender(interactive, false);
    } catch (...) {
        if (interactiveFinal) fill.Set(keptFill);
        if (DRendererObject* p = table.Find(previewType)) view->viewer.SetRenderer(*p);
        throw;
    }
    if (interactiveFinal) fill.Set(keptFill);
    if (DRendererObject* p = table.Find(previewType)) view->viewer.SetRenderer(*p);
    return done;
}
