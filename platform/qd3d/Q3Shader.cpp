// Illumination shaders, the texture shader and pixmap textures.
#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3Texture.h"
#include "platform/qd3d/Q3View.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace q3 {
namespace {

class ShaderObject : public OpaqueTQ3Object {
  public:
    explicit ShaderObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    ~ShaderObject() override { release(texture); }
    TQ3Object texture = nullptr;
    TQ3ShaderUVBoundary uBoundary = kQ3ShaderUVBoundaryWrap;
    TQ3ShaderUVBoundary vBoundary = kQ3ShaderUVBoundaryWrap;

    TQ3Status submit(View& view) override {
        TQ3XDrawState& d = view.state().draw;
        if (isSubtype(type, kQ3ShaderTypeIllumination)) {
            d.illumination = type;
        } else if (type == kQ3SurfaceShaderTypeTexture) {
            d.texture = texture;
            d.uBoundary = uBoundary;
            d.vBoundary = vBoundary;
            view.state().attributes.surfaceShader = this;
        }
        return kQ3Success;
    }
};

class PixmapTexture : public OpaqueTQ3Object {
  public:
    PixmapTexture() : OpaqueTQ3Object(kQ3TextureTypePixmap) {}
    ~PixmapTexture() override { release(pixmap.image); }
    TQ3StoragePixmap pixmap{};
};

bool validPixmap(const TQ3StoragePixmap* p) {
    if (!p) {
        postError(kQ3ErrorNULLParameter);
        return false;
    }
    if (!checkObject(p->image, kQ3SharedTypeStorage)) return false;
    if (p->pixelSize != 32 || (enumValue(p->pixelType) != kQ3PixelTypeRGB32 &&
                               enumValue(p->pixelType) != kQ3PixelTypeARGB32)) {
        postError(kQ3ErrorUnsupportedPixelType);
        return false;
    }
    if (p->width == 0 || p->height == 0 || p->width > 65536 || p->height > 65536 ||
        p->rowBytes < p->width * 4) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    return true;
}

} // namespace

bool textureView(TQ3Object texture, TextureView& view) {
    if (!isLive(texture) || texture->type != kQ3TextureTypePixmap) return false;
    const TQ3StoragePixmap& p = static_cast<PixmapTexture*>(texture)->pixmap;
    unsigned char* bytes = nullptr;
    TQ3Uns32 valid = 0;
    if (!isLive(p.image) ||
        Q3MemoryStorage_GetBuffer(p.image, &bytes, &valid, nullptr) != kQ3Success)
        return false;
    if (!bytes || static_cast<std::uint64_t>(p.rowBytes) * (p.height - 1) + p.width * 4ull > valid)
        return false;
    view.bytes = bytes;
    view.width = p.width;
    view.height = p.height;
    view.rowBytes = p.rowBytes;
    view.hasAlpha = p.pixelType == kQ3PixelTypeARGB32;
    return true;
}

TQ3ColorARGB sampleTexture(const TextureView& t, float u, float v) {
    if (!std::isfinite(u)) u = 0;
    if (!std::isfinite(v)) v = 0;
    auto coord = [](float c, TQ3Uns32 n, TQ3ShaderUVBoundary b, int& i0, int& i1, float& f) {
        float x = c * static_cast<float>(n) - 0.5f;
        float fl = std::floor(x);
        f = x - fl;
        long long i = static_cast<long long>(fl);
        long long N = n;
        if (b == kQ3ShaderUVBoundaryWrap) {
            i0 = static_cast<int>(((i % N) + N) % N);
            i1 = static_cast<int>((i0 + 1) % N);
        } else {
            i0 = static_cast<int>(std::clamp<long long>(i, 0, N - 1));
            i1 = static_cast<int>(std::clamp<long long>(i + 1, 0, N - 1));
        }
    };
    // keep huge coordinates in range before the conversion to integers
    if (std::fabs(u) > 1e6f) u = std::fmod(u, 1.0f);
    if (std::fabs(v) > 1e6f) v = std::fmod(v, 1.0f);
    int x0, x1, y0, y1;
    float fx, fy;
    coord(u, t.width, t.uBoundary, x0, x1, fx);
    coord(1.0f - v, t.height, t.vBoundary, y0, y1, fy);
    auto px = [&](int x, int y) {
        std::uint32_t w;
        std::memcpy(&w, t.bytes + static_cast<size_t>(y) * t.rowBytes + static_cast<size_t>(x) * 4,
                    4);
        return w;
    };
    std::uint32_t p00 = px(x0, y0), p10 = px(x1, y0), p01 = px(x0, y1), p11 = px(x1, y1);
    auto ch = [&](int shift) {
        float a = static_cast<float>((p00 >> shift) & 255),
              b = static_cast<float>((p10 >> shift) & 255);
        float c = static_cast<float>((p01 >> shift) & 255),
              d = static_cast<float>((p11 >> shift) & 255);
        float top = a + (b - a) * fx, bottom = c + (d - c) * fx;
        return (top + (bottom - top) * fy) / 255.0f;
    };
    return {t.hasAlpha ? ch(24) : 1.0f, ch(16), ch(8), ch(0)};
}

} // namespace q3

using namespace q3;

extern "C" {

TQ3ObjectType Q3Shader_GetType(TQ3ShaderObject s) {
    if (!checkObject(s, kQ3ShapeTypeShader)) return kQ3ObjectTypeInvalid;
    return typeBelow(s->type, kQ3ShapeTypeShader);
}

TQ3ObjectType Q3IlluminationShader_GetType(TQ3ShaderObject s) {
    if (!checkObject(s, kQ3ShaderTypeIllumination)) return kQ3ObjectTypeInvalid;
    return s->type;
}

TQ3Status Q3Shader_Submit(TQ3ShaderObject s, TQ3ViewObject view) {
    if (!checkObject(s, kQ3ShapeTypeShader)) return kQ3Failure;
    return Q3Object_Submit(s, view);
}

TQ3Status Q3Shader_SetUBoundary(TQ3ShaderObject s, TQ3ShaderUVBoundary b) {
    auto* x = check<ShaderObject>(s, kQ3ShapeTypeShader);
    if (!x) return kQ3Failure;
    if (enumValue(b) != kQ3ShaderUVBoundaryWrap && enumValue(b) != kQ3ShaderUVBoundaryClamp) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    x->uBoundary = b;
    return kQ3Success;
}

TQ3Status Q3Shader_SetVBoundary(TQ3ShaderObject s, TQ3ShaderUVBoundary b) {
    auto* x = check<ShaderObject>(s, kQ3ShapeTypeShader);
    if (!x) return kQ3Failure;
    if (enumValue(b) != kQ3ShaderUVBoundaryWrap && enumValue(b) != kQ3ShaderUVBoundaryClamp) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    x->vBoundary = b;
    return kQ3Success;
}

TQ3Status Q3Shader_GetUBoundary(TQ3ShaderObject s, TQ3ShaderUVBoundary* b) {
    auto* x = check<ShaderObject>(s, kQ3ShapeTypeShader);
    if (!x || !b) return kQ3Failure;
    *b = x->uBoundary;
    return kQ3Success;
}

TQ3Status Q3Shader_GetVBoundary(TQ3ShaderObject s, TQ3ShaderUVBoundary* b) {
    auto* x = check<ShaderObject>(s, kQ3ShapeTypeShader);
    if (!x || !b) return kQ3Failure;
    *b = x->vBoundary;
    return kQ3Success;
}

TQ3ShaderObject Q3PhongIllumination_New(void) {
    return make<ShaderObject>(kQ3IlluminationTypePhong);
}
TQ3ShaderObject Q3LambertIllumination_New(void) {
    return make<ShaderObject>(kQ3IlluminationTypeLambert);
}
TQ3ShaderObject Q3NULLIllumination_New(void) {
    return make<ShaderObject>(kQ3IlluminationTypeNULL);
}

TQ3ShaderObject Q3TextureShader_New(TQ3TextureObject texture) {
    if (!checkObject(texture, kQ3SharedTypeTexture)) return nullptr;
    TQ3Object o = make<ShaderObject>(kQ3SurfaceShaderTypeTexture);
    if (o) static_cast<ShaderObject*>(o)->texture = retain(texture);
    return o;
}

TQ3Status Q3TextureShader_GetTexture(TQ3ShaderObject s, TQ3TextureObject* texture) {
    auto* x = check<ShaderObject>(s, kQ3SurfaceShaderTypeTexture);
    if (!x || !texture) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *texture = retain(x->texture);
    return kQ3Success;
}

TQ3Status Q3TextureShader_SetTexture(TQ3ShaderObject s, TQ3TextureObject texture) {
    auto* x = check<ShaderObject>(s, kQ3SurfaceShaderTypeTexture);
    if (!x || !checkObject(texture, kQ3SharedTypeTexture)) return kQ3Failure;
    replaceRef(x->texture, texture);
    x->edited();
    return kQ3Success;
}

TQ3TextureObject Q3PixmapTexture_New(const TQ3StoragePixmap* pixmap) {
    if (!validPixmap(pixmap)) return nullptr;
    TQ3Object o = make<PixmapTexture>();
    if (o) {
        static_cast<PixmapTexture*>(o)->pixmap = *pixmap;
        retain(pixmap->image);
    }
    return o;
}

TQ3Status Q3PixmapTexture_GetPixmap(TQ3TextureObject t, TQ3StoragePixmap* pixmap) {
    auto* x = check<PixmapTexture>(t, kQ3TextureTypePixmap);
    if (!x || !pixmap) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *pixmap = x->pixmap;
    retain(pixmap->image);
    return kQ3Success;
}

TQ3Status Q3PixmapTexture_SetPixmap(TQ3TextureObject t, const TQ3StoragePixmap* pixmap) {
    auto* x = check<PixmapTexture>(t, kQ3TextureTypePixmap);
    if (!x || !validPixmap(pixmap)) return kQ3Failure;
    TQ3Object old = x->pixmap.image;
    retain(pixmap->image);
    x->pixmap = *pixmap;
    release(old);
    x->edited();
    return kQ3Success;
}

TQ3Status Q3Texture_GetWidth(TQ3TextureObject t, TQ3Uns32* width) {
    auto* x = check<PixmapTexture>(t, kQ3TextureTypePixmap);
    if (!x || !width) return kQ3Failure;
    *width = x->pixmap.width;
    return kQ3Success;
}

TQ3Status Q3Texture_GetHeight(TQ3TextureObject t, TQ3Uns32* height) {
    auto* x = check<PixmapTexture>(t, kQ3TextureTypePixmap);
    if (!x || !height) return kQ3Failure;
    *height = x->pixmap.height;
    return kQ3Success;
}

TQ3Status Q3XTexture_Sample(TQ3TextureObject texture, float u, float v, TQ3ShaderUVBoundary ub,
                            TQ3ShaderUVBoundary vb, TQ3ColorARGB* color) {
    if (!color) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *color = {1, 1, 1, 1};
    if (!texture) return kQ3Success;
    TextureView view;
    if (!checkObject(texture, kQ3SharedTypeTexture) || !textureView(texture, view))
        return kQ3Failure;
    view.uBoundary = ub;
    view.vBoundary = vb;
    *color = sampleTexture(view, u, v);
    return kQ3Success;
}

} // extern "C"
