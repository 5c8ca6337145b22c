// Scanline rasterisation of triangles, lines and marker bitmaps.
#include "platform/qd3d/Q3Raster.h"

#include <algorithm>
#include <cmath>

namespace q3 {
namespace {

inline std::uint32_t pack(float r, float g, float b, float a) {
    auto c = [](float v) {
        if (!(v > 0.0f)) return 0u; // also a NaN
        if (v >= 1.0f) return 255u;
        return static_cast<std::uint32_t>(v * 255.0f + 0.5f);
    };
    return (c(a) << 24) | (c(r) << 16) | (c(g) << 8) | c(b);
}

// ceil for window coordinates, without a call into the maths library
inline int ceilInt(float x) {
    if (!(x >= -1e9f)) x = -1e9f; // also a NaN
    if (!(x <= 1e9f)) x = 1e9f;
    int i = static_cast<int>(x);
    return i + (x > static_cast<float>(i) ? 1 : 0);
}

inline void unpack(std::uint32_t p, float& r, float& g, float& b, float& a) {
    constexpr float k = 1.0f / 255.0f;
    a = static_cast<float>(p >> 24) * k;
    r = static_cast<float>((p >> 16) & 255) * k;
    g = static_cast<float>((p >> 8) & 255) * k;
    b = static_cast<float>(p & 255) * k;
}

} // namespace

void FrameBuffer::resize(int width, int height, void* pixels, size_t rowBytes) {
    w = std::max(width, 0);
    h = std::max(height, 0);
    depth.resize(static_cast<size_t>(w) * h);
    if (pixels) {
        rgba.clear();
        base = static_cast<unsigned char*>(pixels);
        stride = rowBytes;
    } else {
        rgba.resize(static_cast<size_t>(w) * h);
        base = reinterpret_cast<unsigned char*>(rgba.data());
        stride = static_cast<size_t>(w) * 4;
    }
}

void FrameBuffer::clearRows(const Band& band, std::uint32_t clearWord) {
    for (int y = band.next(0); y < h; y = band.next(y + 1)) {
        std::fill_n(row(y), w, clearWord);
        std::fill_n(depth.begin() + static_cast<long>(y) * w, w, 1.0f);
    }
}

void FrameBuffer::clearRows(const Band&, int, int y) {
    if (y >= 0 && y < h) std::fill_n(depth.begin() + static_cast<long>(y) * w, w, 1.0f);
}

inline void FrameBuffer::writePixel(int x, int y, float z, float r, float g, float b, float a,
                                    bool blend, bool depthWrite) {
    size_t i = static_cast<size_t>(y) * w + x;
    if (!(z >= 0.0f && z < depth[i])) return;
    std::uint32_t& out = row(y)[x];
    r = std::clamp(r, 0.0f, 1.0f);
    g = std::clamp(g, 0.0f, 1.0f);
    b = std::clamp(b, 0.0f, 1.0f);
    a = std::clamp(a, 0.0f, 1.0f);
    if (blend) {
        float dr, dg, db, da;
        unpack(out, dr, dg, db, da);
        float k = 1 - a;
        out = pack(r * a + dr * k, g * a + dg * k, b * a + db * k, a + da * k);
    } else {
        out = pack(r, g, b, 1.0f);
    }
    if (depthWrite) depth[i] = z;
}

bool ScreenTriangle::setUp(const ScreenVertex& p, const ScreenVertex& q, const ScreenVertex& r,
                           int h, bool raw) {
    const ScreenVertex* v[3] = {&p, &q, &r};
    if (v[1]->y < v[0]->y) std::swap(v[0], v[1]);
    if (v[2]->y < v[1]->y) std::swap(v[1], v[2]);
    if (v[1]->y < v[0]->y) std::swap(v[0], v[1]);
    const ScreenVertex &a = *v[0], &b = *v[1], &c = *v[2];
    const float area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!(std::fabs(area) > 1e-12f)) return false;
    y0 = std::max(0, ceilInt(a.y - 0.5f));
    y1 = std::min(h, ceilInt(c.y - 0.5f));
    if (y0 >= y1) return false;
    ax = a.x;
    ay = a.y;
    bx = b.x;
    by = b.y;
    cx = c.x;
    cy = c.y;
    dac = (c.x - a.x) / (c.y - a.y);
    dab = b.y > a.y ? (b.x - a.x) / (b.y - a.y) : 0;
    dbc = c.y > b.y ? (c.x - b.x) / (c.y - b.y) : 0;
    const float inv = 1.0f / area;
    auto grad = [&](float fa, float fb, float fc, float& dx, float& dy) {
        dx = ((fb - fa) * (c.y - a.y) - (fc - fa) * (b.y - a.y)) * inv;
        dy = ((fc - fa) * (b.x - a.x) - (fb - fa) * (c.x - a.x)) * inv;
    };
    z = a.z;
    w = a.iw;
    grad(a.z, b.z, c.z, zdx, zdy);
    grad(a.iw, b.iw, c.iw, wdx, wdy);
    // Opaque plain colours are interpolated straight across the screen: the
    // eye cannot tell, and it spares a division a pixel.
    const bool affine = shade == Shade::Colour && !blend;
    attributes = affine ? 3 : shade == Shade::Colour ? 4 : 9;
    for (int k = 0; k < attributes; ++k) {
        if (affine) {
            float fa = raw ? a.at[k] : a.at[k] / a.iw, fb = raw ? b.at[k] : b.at[k] / b.iw,
                  fc = raw ? c.at[k] : c.at[k] / c.iw;
            at[k] = fa;
            grad(fa, fb, fc, adx[k], ady[k]);
        } else {
            at[k] = a.at[k];
            grad(a.at[k], b.at[k], c.at[k], adx[k], ady[k]);
        }
    }
    depthKey = a.z + b.z + c.z;
    return std::isfinite(zdx) && std::isfinite(zdy) && std::isfinite(wdx) && std::isfinite(wdy);
}

// Opaque plain colour, the common case: edges and values stepped row by row.
void FrameBuffer::drawPlain(const ScreenTriangle& t, const Band& band) {
    const int ymid = std::clamp(ceilInt(t.by - 0.5f), t.y0, t.y1);
    float xl = 0, xs = 0, z = 0, r = 0, g = 0, b = 0;
    auto start = [&](int y) {
        const float yc = static_cast<float>(y) + 0.5f, dy = yc - t.ay;
        xl = t.ax + t.dac * dy;
        xs = y < ymid ? t.ax + t.dab * dy : t.bx + t.dbc * (yc - t.by);
        z = t.z + t.zdy * dy;
        r = t.at[0] + t.ady[0] * dy;
        g = t.at[1] + t.ady[1] * dy;
        b = t.at[2] + t.ady[2] * dy;
    };
    int y = band.next(t.y0);
    if (y >= t.y1) return;
    start(y);
    while (true) {
        float lo = xl, hi = xs;
        if (hi < lo) std::swap(lo, hi);
        const int x0 = std::max(0, ceilInt(lo - 0.5f));
        const int x1 = std::min(w, ceilInt(hi - 0.5f));
        if (x0 < x1) {
            const float dx = static_cast<float>(x0) + 0.5f - t.ax;
            float zz = z + t.zdx * dx, rr = r + t.adx[0] * dx, gg = g + t.adx[1] * dx,
                  bb = b + t.adx[2] * dx;
            std::uint32_t* colour = row(y);
            float* depthRow = depth.data() + static_cast<size_t>(y) * w;
            for (int x = x0; x < x1; ++x) {
                if (zz >= 0.0f && zz < depthRow[x]) {
                    colour[x] = pack(rr, gg, bb, 1.0f);
                    depthRow[x] = zz;
                }
                zz += t.zdx;
                rr += t.adx[0];
                gg += t.adx[1];
                bb += t.adx[2];
            }
        }
        if (++y >= t.y1) break;
        if (y % Band::kBlockRows == 0) {
            int next = band.next(y);
            if (next >= t.y1) break;
            if (next != y) {
                y = next;
                start(y);
                continue;
            }
        }
        if (y == ymid) {
            start(y);
            continue;
        }
        xl += t.dac;
        xs += y < ymid ? t.dab : t.dbc;
        z += t.zdy;
        r += t.ady[0];
        g += t.ady[1];
        b += t.ady[2];
    }
}

void FrameBuffer::drawTriangle(const ScreenTriangle& t, const Band& band,
                               const std::vector<TextureView>& textures) {
    if (t.shade == Shade::Colour && !t.blend) {
        drawPlain(t, band);
        return;
    }
    const int nat = t.attributes;
    const TextureView* tex = t.texture >= 0 && t.texture < static_cast<int>(textures.size())
                                 ? &textures[t.texture]
                                 : nullptr;
    const bool depthWrite = !t.blend;
    const bool plain = t.shade == Shade::Colour && !t.blend;
    for (int y = band.next(t.y0); y < t.y1; ++y) {
        if (y % Band::kBlockRows == 0) {
            y = band.next(y);
            if (y >= t.y1) break;
        }
        const float yc = static_cast<float>(y) + 0.5f;
        // x on the long edge a-c and on the short edge a-b or b-c
        float xl = t.ax + t.dac * (yc - t.ay);
        float xs = yc < t.by ? t.ax + t.dab * (yc - t.ay) : t.bx + t.dbc * (yc - t.by);
        if (xs < xl) std::swap(xs, xl);
        int x0 = std::max(0, ceilInt(xl - 0.5f));
        int x1 = std::min(w, ceilInt(xs - 0.5f));
        if (x0 >= x1) continue;
        const float dxs = static_cast<float>(x0) + 0.5f - t.ax, dys = yc - t.ay;
        float z = t.z + t.zdx * dxs + t.zdy * dys;
        float iw = t.w + t.wdx * dxs + t.wdy * dys;
        std::uint32_t* colour = row(y);
        float* depthRow = depth.data() + static_cast<size_t>(y) * w;
        if (plain) {
            float r = t.at[0] + t.adx[0] * dxs + t.ady[0] * dys;
            float g = t.at[1] + t.adx[1] * dxs + t.ady[1] * dys;
            float b = t.at[2] + t.adx[2] * dxs + t.ady[2] * dys;
            for (int x = x0; x < x1; ++x) {
                if (z >= 0.0f && z < depthRow[x]) {
                    colour[x] = pack(r, g, b, 1.0f);
                    depthRow[x] = z;
                }
                z += t.zdx;
                r += t.adx[0];
                g += t.adx[1];
                b += t.adx[2];
            }
            continue;
        }
        float at[kMaxAttributes];
        for (int k = 0; k < nat; ++k)
            at[k] = t.at[k] + t.adx[k] * dxs + t.ady[k] * dys;
        for (int x = x0; x < x1; ++x) {
            if (z >= 0.0f && z < depthRow[x] && iw > 0) {
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
            z += t.zdx;
            iw += t.wdx;
            for (int k = 0; k < nat; ++k)
                at[k] += t.adx[k];
        }
    }
}

void FrameBuffer::drawLine(const ScreenLine& l, const Band& band) {
    const ScreenVertex &p = l.v[0], &q = l.v[1];
    // in double: a line may reach far beyond the window
    const double dx = static_cast<double>(q.x) - p.x, dy = static_cast<double>(q.y) - p.y;
    if (!std::isfinite(dx) || !std::isfinite(dy)) return;
    // keep the part inside the window (Liang-Barsky), so that a long line
    // costs only its visible pixels
    double t0 = 0, t1 = 1;
    auto cut = [&](double num, double den) {
        if (den == 0) return num >= 0;
        double t = num / den;
        if (den > 0) {
            if (t < t0) return false;
            if (t < t1) t1 = t;
        } else {
            if (t > t1) return false;
            if (t > t0) t0 = t;
        }
        return true;
    };
    if (!cut(p.x, -dx) || !cut(w - static_cast<double>(p.x), dx) || !cut(p.y, -dy) ||
        !cut(h - static_cast<double>(p.y), dy))
        return;
    const double x0 = p.x + dx * t0, y0 = p.y + dy * t0;
    const double len = std::max(std::fabs(dx), std::fabs(dy)) * (t1 - t0);
    const int steps = len > 0 ? static_cast<int>(std::ceil(len)) : 0;
    constexpr float kBias = 2e-5f; // lines win over the surfaces they lie on
    for (int s = 0; s <= steps; ++s) {
        double f = steps ? static_cast<double>(s) / steps : 0;
        double t = t0 + (t1 - t0) * f;
        double x = x0 + dx * (t1 - t0) * f, y = y0 + dy * (t1 - t0) * f;
        int xi = static_cast<int>(std::floor(x)), yi = static_cast<int>(std::floor(y));
        if (xi < 0 || yi < 0 || xi >= w || yi >= h || !band.owns(yi)) continue;
        const float tf = static_cast<float>(t);
        float iw = p.iw + (q.iw - p.iw) * tf;
        if (!(iw > 0)) continue;
        float wv = 1 / iw;
        float at[4];
        for (int k = 0; k < 4; ++k)
            at[k] = (p.at[k] + (q.at[k] - p.at[k]) * tf) * wv;
        float z = p.z + (q.z - p.z) * tf - kBias;
        writePixel(xi, yi, std::max(z, 0.0f), at[0], at[1], at[2], at[3], l.blend, !l.blend);
    }
}

void FrameBuffer::drawMarker(const ScreenMarker& m, const Band& band) {
    if (!m.bits || !(std::fabs(m.x) < 1e7f) || !(std::fabs(m.y) < 1e7f)) return;
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
