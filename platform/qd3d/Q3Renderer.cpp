// Renderer classes and renderer objects.
#include "platform/qd3d/Q3Renderer.h"

#include <cstring>

namespace q3 {

RendererObject::RendererObject(TQ3ObjectType t, const TQ3XRendererMethods& m)
    : OpaqueTQ3Object(t), methods(m) {}

RendererObject::~RendererObject() {
    if (methods.deleteInstance && instance) methods.deleteInstance(instance);
}

void registerBuiltinRenderers() {
    static bool done = false;
    if (done) return;
    done = true;
    ClassInfo generic;
    generic.type = kQ3RendererTypeGeneric;
    generic.parent = kQ3SharedTypeRenderer;
    generic.name = "Generic";
    generic.nickName = "Generic";
    generic.isRenderer = true;
    registerClass(generic, nullptr);
    ClassInfo interactive;
    interactive.type = kQ3RendererTypeInteractive;
    interactive.parent = kQ3SharedTypeRenderer;
    interactive.name = "Interactive";
    interactive.nickName = "Interactive Renderer";
    interactive.isRenderer = true;
    interactive.rendererMethods = interactiveRendererMethods();
    registerClass(interactive, nullptr);
    findClassMutable(kQ3RendererTypeGeneric)->builtin = true;
    findClassMutable(kQ3RendererTypeInteractive)->builtin = true;
}

} // namespace q3

using namespace q3;

namespace {
RendererObject* renderer(TQ3Object o, TQ3ObjectType t = kQ3SharedTypeRenderer) {
    return check<RendererObject>(o, t);
}
} // namespace

extern "C" {

TQ3XObjectClass Q3XRendererClass_Register(TQ3ObjectType type, const char* className,
                                          const char* nickName, const TQ3XRendererMethods* methods,
                                          TQ3ObjectType* outType) {
    if (!className || !methods) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    findClass(0);
    ClassInfo c;
    c.type = type;
    c.parent = kQ3SharedTypeRenderer;
    c.name = className;
    c.nickName = nickName ? nickName : "";
    c.isRenderer = true;
    c.rendererMethods = *methods;
    return registerClass(c, outType);
}

void* Q3XRenderer_GetInstance(TQ3RendererObject r) {
    RendererObject* x = renderer(r);
    return x ? x->instance : nullptr;
}

TQ3RendererObject Q3Renderer_NewFromType(TQ3ObjectType type) {
    const ClassInfo* c = findClass(type);
    if (!c || !c->isRenderer) {
        postError(kQ3ErrorInvalidObjectClass);
        return nullptr;
    }
    TQ3Object o = make<RendererObject>(type, c->rendererMethods);
    if (!o) return nullptr;
    auto* r = static_cast<RendererObject*>(o);
    if (r->methods.newInstance) {
        r->instance = r->methods.newInstance();
        if (!r->instance) {
            delete r;
            postError(kQ3ErrorOutOfMemory);
            return nullptr;
        }
    }
    return o;
}

TQ3ObjectType Q3Renderer_GetType(TQ3RendererObject r) {
    return renderer(r) ? r->type : kQ3ObjectTypeInvalid;
}

TQ3Boolean Q3Renderer_IsInteractive(TQ3RendererObject r) {
    RendererObject* x = renderer(r);
    return x && x->methods.isInteractive ? kQ3True : kQ3False;
}

TQ3Boolean Q3Renderer_HasModalConfigure(TQ3RendererObject r) {
    RendererObject* x = renderer(r);
    return x && x->methods.modalConfigure ? kQ3True : kQ3False;
}

TQ3Status Q3Renderer_ModalConfigure(TQ3RendererObject r, TQ3DialogAnchor anchor,
                                    TQ3Boolean* canceled) {
    RendererObject* x = renderer(r);
    if (!x) return kQ3Failure;
    if (!canceled) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *canceled = kQ3True;
    if (!x->methods.modalConfigure) {
        postError(kQ3ErrorUnsupportedFunctionality);
        return kQ3Failure;
    }
    return x->methods.modalConfigure(x->instance, anchor, canceled);
}

TQ3Status Q3RendererClass_GetNickNameString(TQ3ObjectType type, TQ3ObjectClassNameString out) {
    if (!out) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    out[0] = 0;
    const ClassInfo* c = findClass(type);
    if (!c || !c->isRenderer) {
        postError(kQ3ErrorInvalidObjectClass);
        return kQ3Failure;
    }
    std::strncpy(out, c->nickName.c_str(), kQ3StringMaximumLength - 1);
    out[kQ3StringMaximumLength - 1] = 0;
    return kQ3Success;
}

TQ3Status Q3InteractiveRenderer_SetDoubleBufferBypass(TQ3RendererObject r, TQ3Boolean bypass) {
    RendererObject* x = renderer(r, kQ3RendererTypeInteractive);
    if (!x) return kQ3Failure;
    x->doubleBufferBypass = bypass;
    return kQ3Success;
}

TQ3Status Q3InteractiveRenderer_GetDoubleBufferBypass(TQ3RendererObject r, TQ3Boolean* bypass) {
    RendererObject* x = renderer(r, kQ3RendererTypeInteractive);
    if (!x || !bypass) return kQ3Failure;
    *bypass = x->doubleBufferBypass;
    return kQ3Success;
}

TQ3Status Q3InteractiveRenderer_SetPreferences(TQ3RendererObject r, TQ3RaveVendorID vendor,
                                               TQ3RaveEngineID engine) {
    RendererObject* x = renderer(r, kQ3RendererTypeInteractive);
    if (!x) return kQ3Failure;
    x->vendor = vendor;
    x->engine = engine;
    return kQ3Success;
}

TQ3Status Q3InteractiveRenderer_GetPreferences(TQ3RendererObject r, TQ3RaveVendorID* vendor,
                                               TQ3RaveEngineID* engine) {
    RendererObject* x = renderer(r, kQ3RendererTypeInteractive);
    if (!x || !vendor || !engine) return kQ3Failure;
    *vendor = x->vendor;
    *engine = x->engine;
    return kQ3Success;
}

} // extern "C"
