// Scanline rasterisation of triangles, lines and marker bitmaps.
#include "platform/qd3d/Q3Raster.h"

#include <algorithm>
#include <cmath>

namespace q3 {
namespace {

inline std::uint32_t pack(float r, float g, float b, float a) {
    auto c = [](float v) {
        v = std::clamp(v, 0.0f, 1.0f);
        return static_cast<std::uint32_t>(v * 255.0f + 0.5f);
    };
    return (c(a) << 24) | (c(r) << 16) | (c(g) << 8) | c(b);
}

inline void unpack(std::uint32_t p, float& r, float& g, float& b, float& a) {
    constexpr float k = 1.0f / 255.0f;
    a = static_cast<float>(p >> 24) * k;
    r = static_cast<float>((p >> 16) & 255) * k;
    g = static_cast<float>((p >> 8) & 255) * k;
    b = static_cast<float>(p & 255) * k;
}

} // namespace

void FrameBuffer::reset(int width, int height, std::uint32_t clearWord) {
    w = std::max(width, 0);
    h = std::max(height, 0);
    rgba.assign(static_cast<size_t>(w) * h, clearWord);
    depth.assign(static_cast<size_t>(w) * h, 1.0f);
}

inline void FrameBuffer::writePixel(int x, int y, float z, float r, float g, float b, float a,
                                    bool blend, bool depthWrite) {
    size_t i = static_cast<size_t>(y) * w + x;
    if (!(z >= 0.0f && z < depth[i])) return;
    r = std::clamp(r, 0.0f, 1.0f);
    g = std::clamp(g, 0.0f, 1.0f);
    b = std::clamp(b, 0.0f, 1.0f);
    a = std::clamp(a, 0.0f, 1.0f);
    if (blend) {
        float dr, dg, db, da;
        unpack(rgba[i], dr, dg, db, da);
        float k = 1 - a;
        rgba[i] = pack(r * a + dr * k, g * a + dg * k, b * a + db * k, a + da * k);
    } else {
        rgba[i] = pack(r, g, b, 1.0f);
    }
    if (depthWrite) depth[i] = z;
}

void FrameBuffer::drawTriangle(const ScreenTriangle& t, const Band& band,
                               const std::vector<TextureView>& textures) {
    const ScreenVertex* v[3] = {&t.v[0], &t.v[1], &t.v[2]};
    std::sort(v, v + 3, [](const ScreenVertex* a, const ScreenVertex* b) { return a->y < b->y; });
    const ScreenVertex &a = *v[0], &b = *v[1], &c = *v[2];
    const float area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!(std::fabs(area) > 1e-12f)) return;
    int y0 = std::max(0, static_cast<int>(std::ceil(a.y - 0.5f)));
    int y1 = std::min(h, static_cast<int>(std::ceil(c.y - 0.5f)));
    if (y0 >= y1) return;
    const int nat = t.shade == Shade::Colour ? 4 : 9;
    // plane gradients of z, 1/w and the attributes
    const float inv = 1.0f / area;
    auto grad = [&](float fa, float fb, float fc, float& dx, float& dy) {
        dx = ((fb - fa) * (c.y - a.y) - (fc - fa) * (b.y - a.y)) * inv;
        dy = ((fc - fa) * (b.x - a.x) - (fb - fa) * (c.x - a.x)) * inv;
    };
    float zdx, zdy, wdx, wdy, adx[kMaxAttributes], ady[kMaxAttributes];
    grad(a.z, b.z, c.z, zdx, zdy);
    grad(a.iw, b.iw, c.iw, wdx, wdy);
    for (int k = 0; k < nat; ++k)
        grad(a.at[k], b.at[k], c.at[k], adx[k], ady[k]);
    const TextureView* tex = t.texture >= 0 && t.texture < static_cast<int>(textures.size())
                                 ? &textures[t.texture]
                                 : nullptr;
    const bool depthWrite = !t.blend;
    for (int y = y0; y < y1; ++y) {
        if (!band.owns(y)) continue;
        const float yc = static_cast<float>(y) + 0.5f;
        // x on the long edge a-c and on the short edge a-b or b-c
        float xl = a.x + (c.x - a.x) * (yc - a.y) / (c.y - a.y);
        float xs;
        if (yc < b.y)
            xs = (b.y > a.y) ? a.x + (b.x - a.x) * (yc - a.y) / (b.y - a.y) : b.x;
        else
            xs = (c.y > b.y) ? b.x + (c.x - b.x) * (yc - b.y) / (c.y - b.y) : b.x;
        if (xs < xl) std::swap(xs, xl);
        int x0 = std::max(0, static_cast<int>(std::ceil(xl - 0.5f)));
        int x1 = std::min(w, static_cast<int>(std::ceil(xs - 0.5f)));
        if (x0 >= x1) continue;
        const float dxs = static_cast<float>(x0) + 0.5f - a.x, dys = yc - a.y;
        float z = a.z + zdx * dxs + zdy * dys;
        float iw = a.iw + wdx * dxs + wdy * dys;
        float at[kMaxAttributes];
        for (int k = 0; k < nat; ++k)
            at[k] = a.at[k] + adx[k] * dxs + ady[k] * dys;
        for (int x = x0; x < x1; ++x) {
            size_t i = static_cast<size_t>(y) * w + x;
            if (z >= 0.0f && z < depth[i] && iw > 0) {
                const float wv = 1.0f / iw;
                if (t.shade == Shade::Colour) {
                    writePixel(x, y, z, at[0] * wv, at[1] * wv, at[2] * wv, at[3] * wv, t.blend,
                               depthWrite);
                } else {
                    TQ3ColorARGB tc{1, 1, 1, 1};
                    if (tex) tc = sampleTexture(*tex, at[6] * wv, at[7] * wv);
                    writePixel(x, y, z, tc.r * at[0] * wv + at[3] * wv,
                               tc.g * at[1] * wv + at[4] * wv, tc.b * at[2] * wv + at[5] * wv,
                               tc.a * at[8] * wv, t.blend || tc.a < 1.0f, depthWrite);
                }
            }
            z += zdx;
            iw += wdx;
            for (int k = 0; k < nat; ++k)
                at[k] += adx[k];
        }
    }
}

void FrameBuffer::drawLine(const ScreenLine& l, const Band& band) {
    const ScreenVertex &p = l.v[0], &q = l.v[1];
    float dx = q.x - p.x, dy = q.y - p.y;
    float len = std::max(std::fabs(dx), std::fabs(dy));
    if (!std::isfinite(len)) return;
    int steps = std::max(1, static_cast<int>(std::ceil(len)));
    if (steps > 4 * (w + h)) steps = 4 * (w + h); // a line far outside gets no more samples
    constexpr float kBias = 2e-5f;                // lines win over the surfaces they lie on
    for (int s = 0; s <= steps; ++s) {
        float t = static_cast<float>(s) / static_cast<float>(steps);
        float x = p.x + dx * t, y = p.y + dy * t;
        int xi = static_cast<int>(std::floor(x)), yi = static_cast<int>(std::floor(y));
        if (xi < 0 || yi < 0 || xi >= w || yi >= h || !band.owns(yi)) continue;
        float iw = p.iw + (q.iw - p.iw) * t;
        if (!(iw > 0)) continue;
        float wv = 1 / iw;
        float at[4];
        for (int k = 0; k < 4; ++k)
            at[k] = (p.at[k] + (q.at[k] - p.at[k]) * t) * wv;
        float z = p.z + (q.z - p.z) * t - kBias;
        writePixel(xi, yi, std::max(z, 0.0f), at[0], at[1], at[2], at[3], l.blend, !l.blend);
    }
}

void FrameBuffer::drawMarker(const ScreenMarker& m, const Band& band) {
    if (!m.bits) return;
    const long ox = std::lround(std::floor(m.x)) + m.xOffset;
    const long oy = std::lround(std::floor(m.y)) + m.yOffset;
    for (std::uint32_t r = 0; r < m.height; ++r) {
        long y = oy + static_cast<long>(r);
        if (y < 0 || y >= h || !band.owns(static_cast<int>(y))) continue;
        for (std::uint32_t c = 0; c < m.width; ++c) {
            long x = ox + static_cast<long>(c);
            if (x < 0 || x >= w) continue;
            std::uint8_t byte = m.bits[static_cast<size_t>(r) * m.rowBytes + c / 8];
            bool on = m.msbFirst ? (byte >> (7 - c % 8)) & 1 : (byte >> (c % 8)) & 1;
            if (on)
                writePixel(static_cast<int>(x), static_cast<int>(y), std::max(m.z - 2e-5f, 0.0f),
                           m.r, m.g, m.b, m.a, m.a < 1, true);
        }
    }
}

} // namespace q3
