// Sets and attribute sets.
#include "platform/qd3d/Q3Set.h"

#include "platform/qd3d/Q3View.h"

#include <algorithm>
#include <cstring>

namespace q3 {

TQ3Uns32 builtinAttributeSize(TQ3AttributeType type) {
    switch (type) {
    case kQ3AttributeTypeSurfaceUV:
    case kQ3AttributeTypeShadingUV:
        return sizeof(TQ3Param2D);
    case kQ3AttributeTypeNormal:
        return sizeof(TQ3Vector3D);
    case kQ3AttributeTypeAmbientCoefficient:
    case kQ3AttributeTypeSpecularControl:
        return sizeof(float);
    case kQ3AttributeTypeDiffuseColor:
    case kQ3AttributeTypeSpecularColor:
    case kQ3AttributeTypeTransparencyColor:
        return sizeof(TQ3ColorRGB);
    case kQ3AttributeTypeSurfaceTangent:
        return sizeof(TQ3Tangent2D);
    case kQ3AttributeTypeHighlightState:
        return sizeof(TQ3Switch);
    case kQ3AttributeTypeSurfaceShader:
        return sizeof(TQ3Object);
    default:
        return 0;
    }
}

namespace {
template <class F> F method(TQ3XMetaHandler meta, TQ3XMethodType type) {
    return meta ? reinterpret_cast<F>(meta(type)) : nullptr;
}
} // namespace

SetObject::~SetObject() {
    empty();
}

void SetObject::destroy(Element& e) {
    if (e.type == kQ3AttributeTypeSurfaceShader) {
        TQ3Object shader;
        std::memcpy(&shader, e.data.data(), sizeof shader);
        release(shader);
    } else if (auto del = method<TQ3XElementDeleteMethod>(e.meta, kQ3XMethodTypeElementDelete)) {
        del(e.data.data());
    }
}

TQ3Status SetObject::add(TQ3ElementType type, const void* data) {
    if (!data) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    TQ3Uns32 size = type > 0 ? builtinAttributeSize(type) : 0;
    TQ3XMetaHandler meta = nullptr;
    if (size == 0) {
        const ClassInfo* c = findClass(type);
        if (!c || c->elementSize == 0) {
            postError(kQ3ErrorAttributeInvalidType);
            return kQ3Failure;
        }
        size = c->elementSize;
        meta = c->metaHandler;
    }
    if (type == kQ3AttributeTypeSurfaceShader) {
        TQ3Object shader;
        std::memcpy(&shader, data, sizeof shader);
        if (!checkObject(shader, kQ3ShaderTypeSurface)) return kQ3Failure;
    } else if (type > 0 && type != kQ3AttributeTypeHighlightState) {
        // built-in attributes are floats: no NaN or infinity gets in
        float f[sizeof(TQ3Tangent2D) / sizeof(float)];
        std::memcpy(f, data, size);
        for (TQ3Uns32 i = 0; i < size / sizeof(float); ++i)
            if (!finite(f[i])) {
                postError(kQ3ErrorInvalidParameter);
                return kQ3Failure;
            }
    }
    bumpAttributeStamp();
    edited();
    for (Element& e : elements)
        if (e.type == type) {
            if (auto replace =
                    method<TQ3XElementCopyReplaceMethod>(meta, kQ3XMethodTypeElementCopyReplace))
                return replace(data, e.data.data());
            if (type == kQ3AttributeTypeSurfaceShader) retain(*static_cast<const TQ3Object*>(data));
            destroy(e);
            if (auto copy = method<TQ3XElementCopyAddMethod>(meta, kQ3XMethodTypeElementCopyAdd)) {
                std::memset(e.data.data(), 0, e.data.size());
                return copy(data, e.data.data());
            }
            std::memcpy(e.data.data(), data, size);
            return kQ3Success;
        }
    // Room beyond the declared size: an element declared with 32-bit
    // references in mind still has space for a 64-bit one in its copy methods.
    const TQ3Uns32 room = type < 0 ? size + 8 : size;
    Element e{type, std::vector<unsigned char>(room, 0), meta};
    if (auto copy = method<TQ3XElementCopyAddMethod>(meta, kQ3XMethodTypeElementCopyAdd)) {
        if (copy(data, e.data.data()) != kQ3Success) return kQ3Failure;
    } else {
        std::memcpy(e.data.data(), data, size);
        if (type == kQ3AttributeTypeSurfaceShader) retain(*static_cast<const TQ3Object*>(data));
    }
    elements.push_back(std::move(e));
    return kQ3Success;
}

const void* SetObject::find(TQ3ElementType type) const {
    for (const Element& e : elements)
        if (e.type == type) return e.data.data();
    return nullptr;
}

TQ3Status SetObject::get(TQ3ElementType type, void* data) const {
    if (!data) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    for (const Element& e : elements)
        if (e.type == type) {
            if (auto copy = method<TQ3XElementCopyGetMethod>(e.meta, kQ3XMethodTypeElementCopyGet))
                return copy(e.data.data(), data);
            TQ3Uns32 declared = e.type > 0 ? builtinAttributeSize(e.type) : 0;
            if (declared == 0) Q3XElementType_GetElementSize(e.type, &declared);
            std::memcpy(data, e.data.data(), std::min<size_t>(declared, e.data.size()));
            if (type == kQ3AttributeTypeSurfaceShader) retain(*static_cast<TQ3Object*>(data));
            return kQ3Success;
        }
    postError(kQ3ErrorAttributeNotContained);
    return kQ3Failure;
}

TQ3Status SetObject::clear(TQ3ElementType type) {
    for (size_t i = 0; i < elements.size(); ++i)
        if (elements[i].type == type) {
            destroy(elements[i]);
            elements.erase(elements.begin() + static_cast<long>(i));
            bumpAttributeStamp();
            edited();
            return kQ3Success;
        }
    postError(kQ3ErrorAttributeNotContained);
    return kQ3Failure;
}

void SetObject::empty() {
    for (Element& e : elements)
        destroy(e);
    if (!elements.empty()) bumpAttributeStamp();
    elements.clear();
    edited();
}

TQ3Status SetObject::nextType(TQ3ElementType* type) const {
    if (!type) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (*type == kQ3AttributeTypeNone) {
        *type = elements.empty() ? kQ3AttributeTypeNone : elements.front().type;
        return kQ3Success;
    }
    for (size_t i = 0; i < elements.size(); ++i)
        if (elements[i].type == *type) {
            *type = i + 1 < elements.size() ? elements[i + 1].type : kQ3AttributeTypeNone;
            return kQ3Success;
        }
    postError(kQ3ErrorAttributeNotContained);
    return kQ3Failure;
}

void SetObject::mergeFrom(const SetObject& from) {
    for (const Element& src : from.elements) {
        for (size_t i = 0; i < elements.size(); ++i)
            if (elements[i].type == src.type) {
                destroy(elements[i]);
                elements.erase(elements.begin() + static_cast<long>(i));
                break;
            }
        Element e{src.type, std::vector<unsigned char>(src.data.size(), 0), src.meta};
        if (auto dup = method<TQ3XElementCopyDuplicateMethod>(src.meta,
                                                              kQ3XMethodTypeElementCopyDuplicate)) {
            if (dup(src.data.data(), e.data.data()) != kQ3Success) continue;
        } else {
            e.data = src.data;
            if (src.type == kQ3AttributeTypeSurfaceShader) {
                TQ3Object o;
                std::memcpy(&o, e.data.data(), sizeof o);
                retain(o);
            }
        }
        elements.push_back(std::move(e));
    }
    bumpAttributeStamp();
    edited();
}

TQ3Status SetObject::submit(View& view) {
    if (type != kQ3SetTypeAttribute) return kQ3Success;
    view.submitAttributeSet(this);
    return kQ3Success;
}

} // namespace q3

using namespace q3;

extern "C" {

TQ3SetObject Q3Set_New(void) {
    return make<SetObject>(kQ3SharedTypeSet);
}
TQ3AttributeSet Q3AttributeSet_New(void) {
    return make<SetObject>(kQ3SetTypeAttribute);
}

TQ3Status Q3Set_Add(TQ3SetObject set, TQ3ElementType type, const void* data) {
    auto* s = check<SetObject>(set, kQ3SharedTypeSet);
    return s ? s->add(type, data) : kQ3Failure;
}

TQ3Status Q3Set_Get(TQ3SetObject set, TQ3ElementType type, void* data) {
    auto* s = check<SetObject>(set, kQ3SharedTypeSet);
    return s ? s->get(type, data) : kQ3Failure;
}

TQ3Boolean Q3Set_Contains(TQ3SetObject set, TQ3ElementType type) {
    auto* s = check<SetObject>(set, kQ3SharedTypeSet);
    return s && s->contains(type) ? kQ3True : kQ3False;
}

TQ3Status Q3Set_Clear(TQ3SetObject set, TQ3ElementType type) {
    auto* s = check<SetObject>(set, kQ3SharedTypeSet);
    return s ? s->clear(type) : kQ3Failure;
}

TQ3Status Q3Set_Empty(TQ3SetObject set) {
    auto* s = check<SetObject>(set, kQ3SharedTypeSet);
    if (!s) return kQ3Failure;
    s->empty();
    return kQ3Success;
}

TQ3Status Q3Set_GetNextElementType(TQ3SetObject set, TQ3ElementType* type) {
    auto* s = check<SetObject>(set, kQ3SharedTypeSet);
    return s ? s->nextType(type) : kQ3Failure;
}

TQ3Status Q3AttributeSet_Add(TQ3AttributeSet set, TQ3AttributeType type, const void* data) {
    auto* s = check<SetObject>(set, kQ3SetTypeAttribute);
    return s ? s->add(type, data) : kQ3Failure;
}

TQ3Boolean Q3AttributeSet_Contains(TQ3AttributeSet set, TQ3AttributeType type) {
    auto* s = check<SetObject>(set, kQ3SetTypeAttribute);
    return s && s->contains(type) ? kQ3True : kQ3False;
}

TQ3Status Q3AttributeSet_Get(TQ3AttributeSet set, TQ3AttributeType type, void* data) {
    auto* s = check<SetObject>(set, kQ3SetTypeAttribute);
    return s ? s->get(type, data) : kQ3Failure;
}

TQ3Status Q3AttributeSet_Clear(TQ3AttributeSet set, TQ3AttributeType type) {
    auto* s = check<SetObject>(set, kQ3SetTypeAttribute);
    return s ? s->clear(type) : kQ3Failure;
}

TQ3Status Q3AttributeSet_Empty(TQ3AttributeSet set) {
    auto* s = check<SetObject>(set, kQ3SetTypeAttribute);
    if (!s) return kQ3Failure;
    s->empty();
    return kQ3Success;
}

TQ3Status Q3AttributeSet_GetNextAttributeType(TQ3AttributeSet set, TQ3AttributeType* type) {
    auto* s = check<SetObject>(set, kQ3SetTypeAttribute);
    return s ? s->nextType(type) : kQ3Failure;
}

TQ3Status Q3AttributeSet_Inherit(TQ3AttributeSet parent, TQ3AttributeSet child,
                                 TQ3AttributeSet result) {
    auto* p = check<SetObject>(parent, kQ3SetTypeAttribute);
    auto* c = check<SetObject>(child, kQ3SetTypeAttribute);
    auto* r = check<SetObject>(result, kQ3SetTypeAttribute);
    if (!p || !c || !r) return kQ3Failure;
    if (r != p) r->mergeFrom(*p);
    if (r != c) r->mergeFrom(*c);
    return kQ3Success;
}

TQ3Status Q3AttributeSet_Submit(TQ3AttributeSet set, TQ3ViewObject view) {
    return Q3Object_Submit(set, view);
}

TQ3Object Q3Object_Duplicate(TQ3Object object) {
    if (!checkObject(object, 0)) return nullptr;
    if (isSubtype(object->type, kQ3SetTypeAttribute)) {
        TQ3AttributeSet copy = Q3AttributeSet_New();
        TQ3AttributeSet empty = Q3AttributeSet_New();
        if (copy && empty && Q3AttributeSet_Inherit(empty, object, copy) == kQ3Success) {
            release(empty);
            return copy;
        }
        release(copy);
        release(empty);
        return nullptr;
    }
    postError(kQ3ErrorUnsupportedFunctionality);
    return nullptr;
}

} // extern "C"
