// Styles: one value each, written into the view's state when submitted.
#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3Set.h"
#include "platform/qd3d/Q3View.h"

namespace q3 {
namespace {

class StyleObject : public OpaqueTQ3Object {
  public:
    explicit StyleObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    ~StyleObject() override { release(highlight); }
    TQ3Int32 value = 0; // enum styles, receive shadows, pick id
    TQ3SubdivisionStyleData subdivision{};
    TQ3Object highlight = nullptr;

    TQ3Status submit(View& view) override {
        apply(view.state(), type, value, subdivision, highlight);
        return kQ3Success;
    }

    static void apply(ViewState& s, TQ3ObjectType type, TQ3Int32 value,
                      const TQ3SubdivisionStyleData& sub, TQ3Object highlight) {
        TQ3XDrawState& d = s.draw;
        switch (type) {
        case kQ3StyleTypeSubdivision:
            d.subdivision = sub;
            break;
        case kQ3StyleTypeInterpolation:
            d.interpolation = static_cast<TQ3InterpolationStyle>(value);
            break;
        case kQ3StyleTypeBackfacing:
            d.backfacing = static_cast<TQ3BackfacingStyle>(value);
            break;
        case kQ3StyleTypeFill:
            d.fill = static_cast<TQ3FillStyle>(value);
            break;
        case kQ3StyleTypeOrientation:
            d.orientation = static_cast<TQ3OrientationStyle>(value);
            break;
        case kQ3StyleTypeReceiveShadows:
            d.receiveShadows = value ? kQ3True : kQ3False;
            break;
        case kQ3StyleTypePickID:
            d.pickID = static_cast<TQ3Uns32>(value);
            break;
        case kQ3StyleTypeHighlight:
            s.highlightSet = static_cast<const SetObject*>(highlight);
            break;
        default:
            break;
        }
    }
};

bool validValue(TQ3ObjectType type, TQ3Int32 v) {
    switch (type) {
    case kQ3StyleTypeInterpolation:
    case kQ3StyleTypeBackfacing:
    case kQ3StyleTypeFill:
        return v >= 0 && v <= 2;
    case kQ3StyleTypeOrientation:
    case kQ3StyleTypeReceiveShadows:
        return v == 0 || v == 1;
    default:
        return true;
    }
}

bool validSubdivision(const TQ3SubdivisionStyleData* d) {
    const std::int32_t method = enumValue(d->method);
    if (method < kQ3SubdivisionMethodConstant || method > kQ3SubdivisionMethodScreenSpace)
        return false;
    if (!finite(d->c1) || !finite(d->c2)) return false;
    if (d->method == kQ3SubdivisionMethodConstant) return d->c1 >= 1 && d->c2 >= 1;
    return d->c1 > 0;
}

TQ3Object newValue(TQ3ObjectType type, TQ3Int32 v) {
    if (!validValue(type, v)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<StyleObject>(type);
    if (o) static_cast<StyleObject*>(o)->value = v;
    return o;
}

template <class V> TQ3Status getValue(TQ3Object o, TQ3ObjectType type, V* out) {
    auto* s = check<StyleObject>(o, type);
    if (!s || !out) {
        if (s) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *out = static_cast<V>(s->value);
    return kQ3Success;
}

TQ3Status setValue(TQ3Object o, TQ3ObjectType type, TQ3Int32 v) {
    auto* s = check<StyleObject>(o, type);
    if (!s) return kQ3Failure;
    if (!validValue(type, v)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    s->value = v;
    s->edited();
    return kQ3Success;
}

TQ3Status submitValue(TQ3ObjectType type, TQ3Int32 v, TQ3ViewObject view) {
    View* vw = viewInPass(view);
    if (!vw) return kQ3Failure;
    if (!validValue(type, v)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    StyleObject::apply(vw->state(), type, v, {}, nullptr);
    return kQ3Success;
}

} // namespace
} // namespace q3

using namespace q3;

#define Q3_VALUE_STYLE(Name, TypeConst, ValueType)                                                 \
    TQ3StyleObject Q3##Name##_New(ValueType v) {                                                   \
        return newValue(TypeConst, enumValue(v));                                                  \
    }                                                                                              \
    TQ3Status Q3##Name##_Get(TQ3StyleObject s, ValueType* v) {                                     \
        return getValue(s, TypeConst, v);                                                          \
    }                                                                                              \
    TQ3Status Q3##Name##_Set(TQ3StyleObject s, ValueType v) {                                      \
        return setValue(s, TypeConst, enumValue(v));                                               \
    }                                                                                              \
    TQ3Status Q3##Name##_Submit(ValueType v, TQ3ViewObject view) {                                 \
        return submitValue(TypeConst, enumValue(v), view);                                         \
    }

extern "C" {

TQ3ObjectType Q3Style_GetType(TQ3StyleObject s) {
    if (!checkObject(s, kQ3ShapeTypeStyle)) return kQ3ObjectTypeInvalid;
    return s->type;
}

TQ3Status Q3Style_Submit(TQ3StyleObject s, TQ3ViewObject view) {
    if (!checkObject(s, kQ3ShapeTypeStyle)) return kQ3Failure;
    return Q3Object_Submit(s, view);
}

Q3_VALUE_STYLE(InterpolationStyle, kQ3StyleTypeInterpolation, TQ3InterpolationStyle)
Q3_VALUE_STYLE(BackfacingStyle, kQ3StyleTypeBackfacing, TQ3BackfacingStyle)
Q3_VALUE_STYLE(FillStyle, kQ3StyleTypeFill, TQ3FillStyle)
Q3_VALUE_STYLE(OrientationStyle, kQ3StyleTypeOrientation, TQ3OrientationStyle)
Q3_VALUE_STYLE(ReceiveShadowsStyle, kQ3StyleTypeReceiveShadows, TQ3Boolean)
Q3_VALUE_STYLE(PickIDStyle, kQ3StyleTypePickID, TQ3Uns32)

TQ3StyleObject Q3SubdivisionStyle_New(const TQ3SubdivisionStyleData* d) {
    if (!d || !validSubdivision(d)) {
        postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return nullptr;
    }
    TQ3Object o = make<StyleObject>(kQ3StyleTypeSubdivision);
    if (o) static_cast<StyleObject*>(o)->subdivision = *d;
    return o;
}

TQ3Status Q3SubdivisionStyle_GetData(TQ3StyleObject s, TQ3SubdivisionStyleData* d) {
    auto* x = check<StyleObject>(s, kQ3StyleTypeSubdivision);
    if (!x || !d) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *d = x->subdivision;
    return kQ3Success;
}

TQ3Status Q3SubdivisionStyle_SetData(TQ3StyleObject s, const TQ3SubdivisionStyleData* d) {
    auto* x = check<StyleObject>(s, kQ3StyleTypeSubdivision);
    if (!x || !d || !validSubdivision(d)) {
        if (x) postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    x->subdivision = *d;
    x->edited();
    return kQ3Success;
}

TQ3Status Q3SubdivisionStyle_Submit(const TQ3SubdivisionStyleData* d, TQ3ViewObject view) {
    View* vw = viewInPass(view);
    if (!vw) return kQ3Failure;
    if (!d || !validSubdivision(d)) {
        postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    vw->state().draw.subdivision = *d;
    return kQ3Success;
}

TQ3StyleObject Q3HighlightStyle_New(TQ3AttributeSet set) {
    SetObject* s;
    if (!checkOptional(set, kQ3SetTypeAttribute, &s)) return nullptr;
    TQ3Object o = make<StyleObject>(kQ3StyleTypeHighlight);
    if (o) static_cast<StyleObject*>(o)->highlight = retain(set);
    return o;
}

TQ3Status Q3HighlightStyle_Get(TQ3StyleObject style, TQ3AttributeSet* set) {
    auto* x = check<StyleObject>(style, kQ3StyleTypeHighlight);
    if (!x || !set) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *set = retain(x->highlight);
    return kQ3Success;
}

TQ3Status Q3HighlightStyle_Set(TQ3StyleObject style, TQ3AttributeSet set) {
    auto* x = check<StyleObject>(style, kQ3StyleTypeHighlight);
    SetObject* s;
    if (!x || !checkOptional(set, kQ3SetTypeAttribute, &s)) return kQ3Failure;
    replaceRef(x->highlight, set);
    x->edited();
    return kQ3Success;
}

TQ3Status Q3HighlightStyle_Submit(TQ3AttributeSet set, TQ3ViewObject view) {
    View* vw = viewInPass(view);
    SetObject* s;
    if (!vw || !checkOptional(set, kQ3SetTypeAttribute, &s)) return kQ3Failure;
    vw->state().highlightSet = s;
    return kQ3Success;
}

} // extern "C"
