// Draw contexts over the caller's pixel memory.
#include "platform/qd3d/Q3DrawContext.h"

namespace q3 {
namespace {

class DrawContextObject : public OpaqueTQ3Object {
  public:
    explicit DrawContextObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    TQ3DrawContextData data{};
    TQ3Pixmap pixmap{};
    TQ3DeviceContext dc = nullptr;
};

bool validPixmap(const TQ3Pixmap& p) {
    if (!p.image) return false;
    if (p.pixelSize != 32 || (enumValue(p.pixelType) != kQ3PixelTypeRGB32 &&
                              enumValue(p.pixelType) != kQ3PixelTypeARGB32)) {
        postError(kQ3ErrorUnsupportedPixelType);
        return false;
    }
    if (p.width == 0 || p.height == 0 || p.width > 32768 || p.height > 32768 ||
        p.rowBytes < p.width * 4) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    return true;
}

bool validData(const TQ3DrawContextData& d) {
    return finite(d.clearImageColor.a) && finite(d.clearImageColor.r) &&
           finite(d.clearImageColor.g) && finite(d.clearImageColor.b) && finite(d.pane.min.x) &&
           finite(d.pane.min.y) && finite(d.pane.max.x) && finite(d.pane.max.y);
}

DrawContextObject* context(TQ3Object o, TQ3ObjectType t = kQ3SharedTypeDrawContext) {
    return check<DrawContextObject>(o, t);
}

template <class F> TQ3Status edit(TQ3Object o, const void* ptr, F f) {
    DrawContextObject* c = context(o);
    if (!c) return kQ3Failure;
    if (!ptr) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    f(*c);
    c->edited();
    return kQ3Success;
}

} // namespace

bool drawContextTarget(TQ3Object o, TQ3DrawContextData& data, TQ3Pixmap& pixmap) {
    if (!isLive(o) || !isSubtype(o->type, kQ3SharedTypeDrawContext)) return false;
    auto* c = static_cast<DrawContextObject*>(o);
    data = c->data;
    pixmap = c->pixmap;
    if (c->type == kQ3DrawContextTypeWin32DC) pixmap = c->dc ? *c->dc : TQ3Pixmap{};
    if (pixmap.image && !validPixmap(pixmap)) pixmap.image = nullptr;
    return true;
}

} // namespace q3

using namespace q3;
using D = DrawContextObject;

extern "C" {

TQ3ObjectType Q3DrawContext_GetType(TQ3DrawContextObject o) {
    return context(o) ? o->type : kQ3ObjectTypeInvalid;
}

TQ3Status Q3DrawContext_SetData(TQ3DrawContextObject o, const TQ3DrawContextData* d) {
    if (d && !validData(*d)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    return edit(o, d, [&](D& c) { c.data = *d; });
}
TQ3Status Q3DrawContext_GetData(TQ3DrawContextObject o, TQ3DrawContextData* d) {
    return edit(o, d, [&](D& c) { *d = c.data; });
}
TQ3Status Q3DrawContext_SetClearImageColor(TQ3DrawContextObject o, const TQ3ColorARGB* v) {
    return edit(o, v, [&](D& c) { c.data.clearImageColor = *v; });
}
TQ3Status Q3DrawContext_GetClearImageColor(TQ3DrawContextObject o, TQ3ColorARGB* v) {
    return edit(o, v, [&](D& c) { *v = c.data.clearImageColor; });
}
TQ3Status Q3DrawContext_SetClearImageMethod(TQ3DrawContextObject o,
                                            TQ3DrawContextClearImageMethod v) {
    return edit(o, &v, [&](D& c) { c.data.clearImageMethod = v; });
}
TQ3Status Q3DrawContext_GetClearImageMethod(TQ3DrawContextObject o,
                                            TQ3DrawContextClearImageMethod* v) {
    return edit(o, v, [&](D& c) { *v = c.data.clearImageMethod; });
}
TQ3Status Q3DrawContext_SetPane(TQ3DrawContextObject o, const TQ3Area* v) {
    return edit(o, v, [&](D& c) { c.data.pane = *v; });
}
TQ3Status Q3DrawContext_GetPane(TQ3DrawContextObject o, TQ3Area* v) {
    return edit(o, v, [&](D& c) { *v = c.data.pane; });
}
TQ3Status Q3DrawContext_SetPaneState(TQ3DrawContextObject o, TQ3Boolean v) {
    return edit(o, &v, [&](D& c) { c.data.paneState = v; });
}
TQ3Status Q3DrawContext_GetPaneState(TQ3DrawContextObject o, TQ3Boolean* v) {
    return edit(o, v, [&](D& c) { *v = c.data.paneState; });
}
TQ3Status Q3DrawContext_SetDoubleBufferState(TQ3DrawContextObject o, TQ3Boolean v) {
    return edit(o, &v, [&](D& c) { c.data.doubleBufferState = v; });
}
TQ3Status Q3DrawContext_GetDoubleBufferState(TQ3DrawContextObject o, TQ3Boolean* v) {
    return edit(o, v, [&](D& c) { *v = c.data.doubleBufferState; });
}
TQ3Status Q3DrawContext_SetMaskState(TQ3DrawContextObject o, TQ3Boolean v) {
    return edit(o, &v, [&](D& c) { c.data.maskState = v; });
}
TQ3Status Q3DrawContext_GetMaskState(TQ3DrawContextObject o, TQ3Boolean* v) {
    return edit(o, v, [&](D& c) { *v = c.data.maskState; });
}

TQ3DrawContextObject Q3PixmapDrawContext_New(const TQ3PixmapDrawContextData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (!validData(d->drawContextData) || (d->pixmap.image && !validPixmap(d->pixmap))) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<D>(kQ3DrawContextTypePixmap);
    if (o) {
        static_cast<D*>(o)->data = d->drawContextData;
        static_cast<D*>(o)->pixmap = d->pixmap;
    }
    return o;
}

TQ3Status Q3PixmapDrawContext_SetPixmap(TQ3DrawContextObject o, const TQ3Pixmap* p) {
    D* c = context(o, kQ3DrawContextTypePixmap);
    if (!c) return kQ3Failure;
    if (!p || !validPixmap(*p)) {
        postError(p ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    c->pixmap = *p;
    c->edited();
    return kQ3Success;
}

TQ3Status Q3PixmapDrawContext_GetPixmap(TQ3DrawContextObject o, TQ3Pixmap* p) {
    D* c = context(o, kQ3DrawContextTypePixmap);
    if (!c || !p) {
        if (c) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *p = c->pixmap;
    return kQ3Success;
}

TQ3DrawContextObject Q3Win32DCDrawContext_New(const TQ3Win32DCDrawContextData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (!validData(d->drawContextData)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    TQ3Object o = make<D>(kQ3DrawContextTypeWin32DC);
    if (o) {
        static_cast<D*>(o)->data = d->drawContextData;
        static_cast<D*>(o)->dc = d->hdc;
    }
    return o;
}

TQ3Status Q3Win32DCDrawContext_SetDC(TQ3DrawContextObject o, TQ3DeviceContext dc) {
    D* c = context(o, kQ3DrawContextTypeWin32DC);
    if (!c) return kQ3Failure;
    c->dc = dc;
    c->edited();
    return kQ3Success;
}

TQ3Status Q3Win32DCDrawContext_GetDC(TQ3DrawContextObject o, TQ3DeviceContext* dc) {
    D* c = context(o, kQ3DrawContextTypeWin32DC);
    if (!c || !dc) return kQ3Failure;
    *dc = c->dc;
    return kQ3Success;
}

} // extern "C"
