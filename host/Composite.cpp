#include "host/Composite.h"

#include "host/WGWorld.h"

#include <algorithm>

namespace {
// Close to 1/255, as the blend tables have always used it.
constexpr double K = 0.003921568;

inline uint8_t Trunc(double v) {
    return static_cast<uint8_t>(static_cast<int>(v));
}
inline float Single(double v) {
    return static_cast<float>(v);
}
} // namespace

void LimitToAlpha(uint8_t a, uint8_t* r, uint8_t* g, uint8_t* b) {
    if (a == 0) return;
    const double m = std::max({*r, *g, *b}) * (1.0 / a);
    if (m > 1.0) {
        const double scale = 1.0 / m;
        *r = Trunc(*r * scale);
        *g = Trunc(*g * scale);
        *b = Trunc(*b * scale);
    }
}

BlendResult NormalBlend(const uint8_t s[3], uint8_t a, const uint8_t d[3], uint8_t da) {
    if (a == 0) return {d[0], d[1], d[2], da};
    if (a == 255) return {s[0], s[1], s[2], 255};
    BlendResult out{};
    uint8_t* c[3] = {&out.r, &out.g, &out.b};
    if (da == 0) {
        const float f = Single(255.0 / a);
        for (int i = 0; i < 3; ++i)
            *c[i] = Trunc(s[i] * double(f));
        out.alpha = a;
    } else if (da == 255) {
        const float f = Single(1.0 - a * K);
        for (int i = 0; i < 3; ++i)
            *c[i] = static_cast<uint8_t>(Trunc(d[i] * double(f)) + s[i]);
        out.alpha = 255;
    } else {
        const float f = Single((1.0 - a * K) * (da * K));
        const uint8_t A = std::max(a, da);
        const float g = Single(255.0 / A);
        for (int i = 0; i < 3; ++i) {
            const auto mixed = static_cast<uint8_t>(Trunc(d[i] * double(f)) + s[i]);
            *c[i] = static_cast<uint8_t>(std::min(static_cast<int>(mixed * double(g)), 255));
        }
        out.alpha = A;
    }
    return out;
}

BlendResult ProtectedBlend(const uint8_t s[3], uint8_t a, const uint8_t d[3], uint8_t da) {
    if (a == 0 || da == 0) return {d[0], d[1], d[2], da};
    const float f = Single(1.0 - a * K);
    BlendResult out{};
    out.r = static_cast<uint8_t>(Trunc(d[0] * double(f)) + s[0]);
    out.g = static_cast<uint8_t>(Trunc(d[1] * double(f)) + s[1]);
    out.b = static_cast<uint8_t>(Trunc(d[2] * double(f)) + s[2]);
    out.alpha = da;
    return out;
}

HostBinding MakeHostBinding(void* inData, int32 inRowBytes, void* outData, int32 outRowBytes,
                            int16 width, int16 height, int16 planes, int16 alphaPlane,
                            uint8 protectedTransparency) {
    HostBinding b;
    b.protectedTransparency = protectedTransparency;
    b.inData = inData;
    b.outData = outData;
    b.inRowBytes = inRowBytes;
    b.outRowBytes = outRowBytes;
    b.inPlanes = planes;
    b.outPlanes = protectedTransparency ? 3 : planes;
    b.width = width;
    b.height = height;
    b.alphaPlane = alphaPlane;
    if (height <= 0 || !RowsHold(inRowBytes, width, b.inPlanes) ||
        !RowsHold(outRowBytes, width, b.outPlanes))
        b.inData = b.outData = nullptr;
    return b;
}

void CompositeToHost(const HostBinding& b, const WGWorld& world, bool useProtectedBlend) {
    if (b.inPlanes != b.outPlanes && !useProtectedBlend) return;
    if (!b.inData || !b.outData || world.GetDepth() != 32 || b.inPlanes < 3 || b.outPlanes < 3)
        return;
    const int width = std::min<int>(b.width, world.GetWidth());
    const int height = std::min<int>(b.height, world.GetHeight());
    const bool alphaIn = b.alphaPlane >= 0 && b.alphaPlane < b.inPlanes;
    const bool alphaOut = alphaIn && !useProtectedBlend && b.alphaPlane < b.outPlanes;
    for (int y = 0; y < height; ++y) {
        const uint8_t* in = static_cast<const uint8_t*>(b.inData) + std::size_t(y) * b.inRowBytes;
        uint8_t* out = static_cast<uint8_t*>(b.outData) + std::size_t(y) * b.outRowBytes;
        const auto* row = reinterpret_cast<const uint32_t*>(world.Row(y));
        for (int x = 0; x < width; ++x, in += b.inPlanes, out += b.outPlanes) {
            const uint32_t px = row[x];
            const auto a = static_cast<uint8_t>(px >> 24);
            if (a == 0) {
                // Most of a frame is empty: the image shows through as it is.
                out[0] = in[0];
                out[1] = in[1];
                out[2] = in[2];
                if (alphaOut) out[b.alphaPlane] = in[b.alphaPlane];
                continue;
            }
            uint8_t s[3] = {static_cast<uint8_t>(px >> 16), static_cast<uint8_t>(px >> 8),
                            static_cast<uint8_t>(px)};
            LimitToAlpha(a, &s[0], &s[1], &s[2]);
            const uint8_t da = alphaIn ? in[b.alphaPlane] : 255;
            const BlendResult r =
                useProtectedBlend ? ProtectedBlend(s, a, in, da) : NormalBlend(s, a, in, da);
            out[0] = r.r;
            out[1] = r.g;
            out[2] = r.b;
            if (alphaOut) out[b.alphaPlane] = r.alpha;
        }
    }
}
