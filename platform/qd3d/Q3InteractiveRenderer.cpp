// The interactive renderer: collects what a pass submits, lights it,
// clips it at the hither plane and rasterises it with a z-buffer on worker
// threads, then writes premultiplied ARGB into the draw context's pixmap.
#include "platform/qd3d/Q3Lighting.h"
#include "platform/qd3d/Q3Raster.h"
#include "platform/qd3d/Q3Renderer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <thread>

namespace q3 {
namespace {

// Runs fn(part, parts) on `parts` threads (the caller's among them) and
// returns when all are done.
template <class F> void parallel(int parts, F fn) {
    if (parts <= 1) {
        fn(0, 1);
        return;
    }
    std::vector<std::thread> threads;
    threads.reserve(static_cast<size_t>(parts - 1));
    for (int p = 1; p < parts; ++p) {
        try {
            threads.emplace_back([&fn, p, parts] { fn(p, parts); });
        } catch (...) {
            // no thread to be had: do that part here
            fn(p, parts);
        }
    }
    fn(0, parts);
    for (std::thread& t : threads)
        t.join();
}

int workerCount() {
    unsigned n = std::thread::hardware_concurrency();
    return static_cast<int>(std::clamp(n, 1u, 8u));
}

struct Batch {
    TQ3XDrawState draw;
    int texture; // index into textures, or -1
};

struct Triangle {
    TQ3Uns32 v[3];
    TQ3Vector3D faceNormal;
    TQ3Uns32 batch;
    TQ3Uns8 edges;
};

struct Segment {
    TQ3Uns32 v[2]; // into lineVertices
    TQ3Uns32 batch;
};

struct Marker {
    TQ3XVertex location;
    TQ3Int32 xOffset, yOffset;
    TQ3Bitmap bitmap;
    std::vector<TQ3Uns8> bits;
};

struct Lit {
    float x, y, z, w; // clip
    TQ3ColorRGB L, S;
    float alpha;
};

struct ClipVertex {
    float x, y, z, w;
    float at[kMaxAttributes];
};

class Interactive {
  public:
    ~Interactive() { dropTextures(); }

    TQ3Status startPass(const TQ3XPassInfo& info) {
        clear();
        pass = info;
        lights.assign(info.lights, info.lights + info.numLights);
        pass.lights = nullptr;
        Q3Matrix4x4_Multiply(&pass.worldToView, &pass.viewToFrustum, &worldToFrustum);
        TQ3Matrix4x4 inv;
        ortho = pass.cameraType == kQ3CameraTypeOrthographic;
        if (Q3Matrix4x4_Invert(&pass.worldToView, &inv)) {
            eye = {inv.value[3][0], inv.value[3][1], inv.value[3][2]};
            viewDir = {-inv.value[2][0], -inv.value[2][1], -inv.value[2][2]};
        } else {
            Q3Error_Get(nullptr);
        }
        return kQ3Success;
    }

    TQ3Status addTriangles(const TQ3XTriangleBatch& b) {
        TQ3Uns32 base = static_cast<TQ3Uns32>(vertices.size());
        TQ3Uns32 bi = addBatch(*b.state);
        vertices.insert(vertices.end(), b.vertices, b.vertices + b.numVertices);
        vertexBatch.insert(vertexBatch.end(), b.numVertices, bi);
        for (TQ3Uns32 t = 0; t < b.numTriangles; ++t) {
            const TQ3Uns32* i = b.indices + 3 * t;
            if (i[0] >= b.numVertices || i[1] >= b.numVertices || i[2] >= b.numVertices) continue;
            triangles.push_back({{base + i[0], base + i[1], base + i[2]},
                                 b.faceNormals ? b.faceNormals[t] : TQ3Vector3D{0, 0, 1},
                                 bi,
                                 b.edgeFlags ? b.edgeFlags[t] : TQ3Uns8(7)});
        }
        return kQ3Success;
    }

    TQ3Status addLines(const TQ3XLineBatch& b) {
        TQ3Uns32 bi = addBatch(*b.state);
        for (TQ3Uns32 s = 0; s < b.numSegments; ++s) {
            TQ3Uns32 at = static_cast<TQ3Uns32>(lineVertices.size());
            lineVertices.push_back(b.vertices[2 * s]);
            lineVertices.push_back(b.vertices[2 * s + 1]);
            segments.push_back({{at, at + 1}, bi});
        }
        return kQ3Success;
    }

    TQ3Status addPoints(const TQ3XPointBatch& b) {
        TQ3Uns32 bi = addBatch(*b.state);
        for (TQ3Uns32 p = 0; p < b.numPoints; ++p) {
            TQ3Uns32 at = static_cast<TQ3Uns32>(lineVertices.size());
            lineVertices.push_back(b.vertices[p]);
            segments.push_back({{at, at}, bi});
        }
        return kQ3Success;
    }

    TQ3Status addMarker(const TQ3XMarker& m) {
        Marker k{m.location, m.xOffset, m.yOffset, *m.bitmap, {}};
        if (m.bitmap->image)
            k.bits.assign(m.bitmap->image,
                          m.bitmap->image +
                              static_cast<size_t>(m.bitmap->rowBytes) * m.bitmap->height);
        markers.push_back(std::move(k));
        return kQ3Success;
    }

    TQ3ViewStatus endPass() {
        render();
        clear();
        return kQ3ViewStatusDone;
    }

    void clear() {
        vertices.clear();
        vertexBatch.clear();
        triangles.clear();
        lineVertices.clear();
        segments.clear();
        markers.clear();
        batches.clear();
        dropTextures();
    }

  private:
    TQ3Uns32 addBatch(const TQ3XDrawState& d) {
        Batch b{d, -1};
        if (d.texture) {
            TextureView v;
            if (textureView(d.texture, v)) {
                v.uBoundary = d.uBoundary;
                v.vBoundary = d.vBoundary;
                // the texture stays alive until the pass ends
                textureObjects.push_back(retain(d.texture));
                textures.push_back(v);
                b.texture = static_cast<int>(textures.size() - 1);
            }
        }
        batches.push_back(b);
        return static_cast<TQ3Uns32>(batches.size() - 1);
    }

    void dropTextures() {
        for (TQ3Object t : textureObjects)
            release(t);
        textureObjects.clear();
        textures.clear();
    }

    TQ3Vector3D toEye(const TQ3Point3D& p) const {
        if (ortho) return {-viewDir.x, -viewDir.y, -viewDir.z};
        TQ3Vector3D v{eye.x - p.x, eye.y - p.y, eye.z - p.z};
        float l = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
        return l > 0 ? TQ3Vector3D{v.x / l, v.y / l, v.z / l} : TQ3Vector3D{0, 0, 1};
    }

    Lit light(const TQ3XVertex& v, const TQ3XDrawState& d, TQ3Vector3D normal) const {
        Lit out{};
        const float(*m)[4] = worldToFrustum.value;
        const TQ3Point3D& p = v.point;
        out.x = p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0];
        out.y = p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1];
        out.z = p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2];
        out.w = p.x * m[0][3] + p.y * m[1][3] + p.z * m[2][3] + m[3][3];
        TQ3Vector3D V = toEye(p);
        if (d.backfacing == kQ3BackfacingStyleFlip &&
            normal.x * V.x + normal.y * V.y + normal.z * V.z < 0)
            normal = {-normal.x, -normal.y, -normal.z};
        LightTerms t = lightVertex(d.illumination, lights.data(),
                                   static_cast<TQ3Uns32>(lights.size()), p, normal, V, v);
        out.L = t.diffuse;
        out.S = t.specular;
        out.alpha = (v.transparency.r + v.transparency.g + v.transparency.b) / 3.0f;
        return out;
    }

    // Fills a clip vertex's attributes for the triangle's shading.
    static void attributes(ClipVertex& c, const Lit& l, const TQ3XVertex& v, bool textured) {
        c.x = l.x;
        c.y = l.y;
        c.z = l.z;
        c.w = l.w;
        if (textured) {
            float a[kMaxAttributes] = {l.L.r, l.L.g,  l.L.b,  l.S.r,  l.S.g,
                                       l.S.b, v.uv.u, v.uv.v, l.alpha};
            std::memcpy(c.at, a, sizeof a);
        } else {
            c.at[0] = v.diffuse.r * l.L.r + l.S.r;
            c.at[1] = v.diffuse.g * l.L.g + l.S.g;
            c.at[2] = v.diffuse.b * l.L.b + l.S.b;
            c.at[3] = l.alpha;
        }
    }

    ScreenVertex project(const ClipVertex& c, int nat) const {
        ScreenVertex s;
        float iw = 1.0f / c.w;
        const TQ3Matrix4x4& f = pass.frustumToWindow;
        s.x = c.x * iw * f.value[0][0] + f.value[3][0] - pass.window.min.x;
        s.y = c.y * iw * f.value[1][1] + f.value[3][1] - pass.window.min.y;
        s.z = -c.z * iw;
        s.iw = iw;
        for (int k = 0; k < nat; ++k)
            s.at[k] = c.at[k] * iw;
        for (int k = nat; k < kMaxAttributes; ++k)
            s.at[k] = 0;
        return s;
    }

    // Cuts a polygon at the hither plane (clip z <= 0); answers the count.
    static int clipNear(const ClipVertex* in, int n, ClipVertex* out, int nat) {
        int m = 0;
        for (int i = 0; i < n; ++i) {
            const ClipVertex &a = in[i], &b = in[(i + 1) % n];
            float da = -a.z, db = -b.z;
            bool ina = da >= 0 && a.w > 0, inb = db >= 0 && b.w > 0;
            if (ina) out[m++] = a;
            if (ina != inb && da != db) {
                float t = da / (da - db);
                ClipVertex c;
                c.x = a.x + t * (b.x - a.x);
                c.y = a.y + t * (b.y - a.y);
                c.z = 0;
                c.w = a.w + t * (b.w - a.w);
                for (int k = 0; k < nat; ++k)
                    c.at[k] = a.at[k] + t * (b.at[k] - a.at[k]);
                if (c.w > 0) out[m++] = c;
            }
        }
        return m;
    }

    void emitTriangle(const ClipVertex* c, const Triangle& tri, const Batch& b, bool textured,
                      std::vector<ScreenTriangle>& out) const {
        const int nat = textured ? 9 : 4;
        ClipVertex poly[4];
        int n = 3;
        const ClipVertex* src = c;
        bool needs = false;
        for (int k = 0; k < 3; ++k)
            if (c[k].z > 0 || c[k].w <= 0) needs = true;
        if (needs) {
            n = clipNear(c, 3, poly, nat);
            src = poly;
        }
        if (n < 3) return;
        bool blend = false;
        for (int k = 0; k < n; ++k)
            if (src[k].at[nat - 1] < 0.999f) blend = true;
        (void)tri;
        ScreenVertex sv[4];
        for (int k = 0; k < n; ++k) {
            sv[k] = project(src[k], nat);
            if (!std::isfinite(sv[k].x) || !std::isfinite(sv[k].y) || !std::isfinite(sv[k].z))
                return;
        }
        for (int k = 1; k + 1 < n; ++k) {
            ScreenTriangle st;
            st.shade = textured ? Shade::Textured : Shade::Colour;
            st.blend = blend;
            st.texture = textured ? b.texture : -1;
            if (st.setUp(sv[0], sv[k], sv[k + 1], height)) out.push_back(st);
        }
    }

    bool emitLine(ClipVertex a, ClipVertex b, std::vector<ScreenLine>& out) const {
        ClipVertex in[2] = {a, b};
        if (a.z > 0 || b.z > 0 || a.w <= 0 || b.w <= 0) {
            // cut at the hither plane
            float da = -a.z, db = -b.z;
            bool ina = da >= 0 && a.w > 0, inb = db >= 0 && b.w > 0;
            if (!ina && !inb) return false;
            if (ina != inb) {
                float t = da / (da - db);
                ClipVertex c;
                c.x = a.x + t * (b.x - a.x);
                c.y = a.y + t * (b.y - a.y);
                c.z = 0;
                c.w = a.w + t * (b.w - a.w);
                for (int k = 0; k < 4; ++k)
                    c.at[k] = a.at[k] + t * (b.at[k] - a.at[k]);
                if (!(c.w > 0)) return false;
                in[ina ? 1 : 0] = c;
            }
        }
        ScreenLine l{{project(in[0], 4), project(in[1], 4)}, in[0].at[3] < 0.999f};
        for (const ScreenVertex& s : l.v)
            if (!std::isfinite(s.x) || !std::isfinite(s.y)) return false;
        out.push_back(l);
        return true;
    }

    void render() {
        const TQ3Pixmap& pm = pass.pixmap;
        if (!pm.image) return;
        int x0 = std::clamp(static_cast<int>(std::floor(pass.window.min.x)), 0,
                            static_cast<int>(pm.width));
        int y0 = std::clamp(static_cast<int>(std::floor(pass.window.min.y)), 0,
                            static_cast<int>(pm.height));
        int x1 = std::clamp(static_cast<int>(std::ceil(pass.window.max.x)), x0,
                            static_cast<int>(pm.width));
        int y1 = std::clamp(static_cast<int>(std::ceil(pass.window.max.y)), y0,
                            static_cast<int>(pm.height));
        const int W = x1 - x0, H = y1 - y0;
        if (W <= 0 || H <= 0) return;
        const TQ3DrawContextData& dc = pass.drawContext;
        const bool clearIt = dc.clearImageMethod == kQ3ClearMethodWithColor;
        const TQ3ColorARGB cc = dc.clearImageColor;
        auto c8 = [](float v) {
            return static_cast<std::uint32_t>(std::clamp(v, 0.0f, 1.0f) * 255.0f + 0.5f);
        };
        float ca = std::clamp(cc.a, 0.0f, 1.0f);
        std::uint32_t clearWord =
            (c8(ca) << 24) | (c8(cc.r * ca) << 16) | (c8(cc.g * ca) << 8) | c8(cc.b * ca);
        // straight into the pixmap when its words are aligned, else through a
        // buffer of our own
        unsigned char* first = static_cast<unsigned char*>(pm.image) +
                               static_cast<size_t>(y0) * pm.rowBytes + static_cast<size_t>(x0) * 4;
        const bool direct =
            reinterpret_cast<std::uintptr_t>(first) % 4 == 0 && pm.rowBytes % 4 == 0;
        frame.resize(W, H, direct ? first : nullptr, pm.rowBytes);
        height = H;
        auto row = [&](int y) { return first + static_cast<size_t>(y) * pm.rowBytes; };

        const int parts = workerCount();
        // 1. light and transform every vertex
        lit.resize(vertices.size());
        screen.resize(vertices.size());
        inside.resize(vertices.size());
        parallel(parts, [&](int p, int n) {
            size_t a = vertices.size() * p / n, b = vertices.size() * (p + 1) / n;
            for (size_t i = a; i < b; ++i) {
                const Batch& bt = batches[vertexBatch[i]];
                lit[i] = light(vertices[i], bt.draw, vertices[i].normal);
                // the plain-colour form in window pixels, for triangles that
                // need no cutting at the hither plane
                inside[i] = lit[i].z <= 0 && lit[i].w > 0;
                if (inside[i]) {
                    ClipVertex c;
                    attributes(c, lit[i], vertices[i], false);
                    screen[i] = project(c, 4);
                    for (int k = 0; k < 4; ++k)
                        screen[i].at[k] = c.at[k]; // raw values
                }
            }
        });
        // 2. cull, shade flat faces, clip and project triangles
        tris.resize(parts);
        lines.resize(parts);
        for (auto& t : tris)
            t.clear();
        for (auto& l : lines)
            l.clear();
        parallel(parts, [&](int p, int n) {
            size_t a = triangles.size() * p / n, b = triangles.size() * (p + 1) / n;
            for (size_t t = a; t < b; ++t) {
                const Triangle& tri = triangles[t];
                const Batch& bt = batches[tri.batch];
                const TQ3XDrawState& d = bt.draw;
                const TQ3XVertex* v[3] = {&vertices[tri.v[0]], &vertices[tri.v[1]],
                                          &vertices[tri.v[2]]};
                if (d.backfacing == kQ3BackfacingStyleRemove) {
                    const TQ3Point3D& p0 = v[0]->point;
                    TQ3Vector3D V = ortho ? TQ3Vector3D{-viewDir.x, -viewDir.y, -viewDir.z}
                                          : TQ3Vector3D{eye.x - p0.x, eye.y - p0.y, eye.z - p0.z};
                    const TQ3Vector3D& fn = tri.faceNormal;
                    if (fn.x * V.x + fn.y * V.y + fn.z * V.z < 0) continue;
                }
                bool textured = bt.texture >= 0 && (v[0]->flags & kQ3XVertexHasUV);
                if (d.fill == kQ3FillStyleFilled && !textured &&
                    d.interpolation != kQ3InterpolationStyleNone && inside[tri.v[0]] &&
                    inside[tri.v[1]] && inside[tri.v[2]]) {
                    const ScreenVertex &s0 = screen[tri.v[0]], &s1 = screen[tri.v[1]],
                                       &s2 = screen[tri.v[2]];
                    ScreenTriangle& st = tris[p].emplace_back(); // set up in place
                    st.shade = Shade::Colour;
                    st.blend = s0.at[3] < 0.999f || s1.at[3] < 0.999f || s2.at[3] < 0.999f;
                    st.texture = -1;
                    bool ok;
                    if (st.blend) {
                        // see-through: back to values over w for perspective
                        ScreenVertex q[3] = {s0, s1, s2};
                        for (ScreenVertex& v : q)
                            for (int k = 0; k < 4; ++k)
                                v.at[k] *= v.iw;
                        ok = st.setUp(q[0], q[1], q[2], height);
                    } else {
                        ok = st.setUp(s0, s1, s2, height, true);
                    }
                    if (!ok) tris[p].pop_back();
                    continue;
                }
                ClipVertex c[3];
                if (d.interpolation == kQ3InterpolationStyleNone) {
                    TQ3XVertex centre = *v[0];
                    centre.point = {(v[0]->point.x + v[1]->point.x + v[2]->point.x) / 3,
                                    (v[0]->point.y + v[1]->point.y + v[2]->point.y) / 3,
                                    (v[0]->point.z + v[1]->point.z + v[2]->point.z) / 3};
                    Lit f = light(centre, d, tri.faceNormal);
                    for (int k = 0; k < 3; ++k) {
                        Lit l = lit[tri.v[k]];
                        l.L = f.L;
                        l.S = f.S;
                        attributes(c[k], l, textured ? *v[k] : centre, textured);
                    }
                } else {
                    for (int k = 0; k < 3; ++k)
                        attributes(c[k], lit[tri.v[k]], *v[k], textured);
                }
                if (d.fill == kQ3FillStyleFilled) {
                    emitTriangle(c, tri, bt, textured, tris[p]);
                    continue;
                }
                // edges and points: lines in the vertices' lit colours
                ClipVertex cc[3];
                for (int k = 0; k < 3; ++k)
                    attributes(cc[k], lit[tri.v[k]], *v[k], false);
                for (int k = 0; k < 3; ++k) {
                    if (d.fill == kQ3FillStylePoints)
                        emitLine(cc[k], cc[k], lines[p]);
                    else if (tri.edges & (1 << k))
                        emitLine(cc[k], cc[(k + 1) % 3], lines[p]);
                }
            }
        });
        // lines, points and markers: the diffuse colour, unlit
        for (const Segment& s : segments) {
            ClipVertex c[2];
            for (int k = 0; k < 2; ++k) {
                const TQ3XVertex& v = lineVertices[s.v[k]];
                Lit l{};
                const float(*m)[4] = worldToFrustum.value;
                const TQ3Point3D& p = v.point;
                l.x = p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0];
                l.y = p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1];
                l.z = p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2];
                l.w = p.x * m[0][3] + p.y * m[1][3] + p.z * m[2][3] + m[3][3];
                l.L = {1, 1, 1};
                l.alpha = (v.transparency.r + v.transparency.g + v.transparency.b) / 3;
                attributes(c[k], l, v, false);
            }
            emitLine(c[0], c[1], lines[0]);
        }
        std::vector<ScreenMarker> marks;
        for (const Marker& m : markers) {
            const float(*w)[4] = pass.worldToWindow.value;
            const TQ3Point3D& p = m.location.point;
            float x = p.x * w[0][0] + p.y * w[1][0] + p.z * w[2][0] + w[3][0];
            float y = p.x * w[0][1] + p.y * w[1][1] + p.z * w[2][1] + w[3][1];
            float z = p.x * w[0][2] + p.y * w[1][2] + p.z * w[2][2] + w[3][2];
            float ww = p.x * w[0][3] + p.y * w[1][3] + p.z * w[2][3] + w[3][3];
            if (!(ww > 0) || z / ww > 0 || !std::isfinite(x / ww) || !std::isfinite(y / ww))
                continue;
            const TQ3ColorRGB& d = m.location.diffuse;
            const TQ3ColorRGB& tr = m.location.transparency;
            marks.push_back({x / ww - pass.window.min.x, y / ww - pass.window.min.y, -z / ww,
                             m.xOffset, m.yOffset, m.bits.empty() ? nullptr : m.bits.data(),
                             m.bitmap.width, m.bitmap.height, m.bitmap.rowBytes,
                             m.bitmap.bitOrder == kQ3EndianBig, d.r, d.g, d.b,
                             (tr.r + tr.g + tr.b) / 3});
        }
        // 3. a compact list of the rows each opaque triangle covers, so that a
        // thread reads only its own triangles; see-through ones go back to
        // front after them
        seeThrough.clear();
        spans.clear();
        for (auto& part : tris)
            for (const ScreenTriangle& t : part) {
                if (t.blend)
                    seeThrough.push_back(&t);
                else
                    spans.push_back({t.y0, t.y1, &t});
            }
        std::stable_sort(seeThrough.begin(), seeThrough.end(),
                         [](const ScreenTriangle* a, const ScreenTriangle* b) {
                             return a->depthKey > b->depthKey;
                         });
        // 4. rasterise: each thread its own rows, from clearing to output
        const bool alpha = pm.pixelType == kQ3PixelTypeARGB32;
        parallel(parts, [&](int p, int n) {
            Band band{p, n};
            if (clearIt)
                frame.clearRows(band, clearWord);
            else
                for (int y = band.next(0); y < H; y = band.next(y + 1)) {
                    if (!direct) std::memcpy(frame.row(y), row(y), W * 4u);
                    frame.clearRows(band, 0, y); // depth only
                }
            for (const Span& sp : spans)
                if (band.touches(sp.y0, sp.y1)) frame.drawTriangle(*sp.triangle, band, textures);
            for (auto& part : lines)
                for (const ScreenLine& l : part)
                    if (!l.blend) frame.drawLine(l, band);
            for (const ScreenMarker& m : marks)
                frame.drawMarker(m, band);
            for (const ScreenTriangle* t : seeThrough)
                frame.drawTriangle(*t, band, textures);
            for (auto& part : lines)
                for (const ScreenLine& l : part)
                    if (l.blend) frame.drawLine(l, band);
            // 5. out to the pixmap
            for (int y = band.next(0); y < H; y = band.next(y + 1)) {
                std::uint32_t* src = frame.row(y);
                if (!alpha)
                    for (int x = 0; x < W; ++x)
                        src[x] |= 0xFF000000u;
                if (!direct) std::memcpy(row(y), src, W * 4u);
            }
        });
    }

    TQ3XPassInfo pass{};
    std::vector<TQ3XLight> lights;
    TQ3Matrix4x4 worldToFrustum{};
    TQ3Point3D eye{};
    TQ3Vector3D viewDir{0, 0, -1};
    bool ortho = false;
    std::vector<Batch> batches;
    std::vector<TQ3XVertex> vertices;
    std::vector<TQ3Uns32> vertexBatch;
    std::vector<Triangle> triangles;
    std::vector<TQ3XVertex> lineVertices;
    std::vector<Segment> segments;
    std::vector<Marker> markers;
    std::vector<TextureView> textures;
    std::vector<TQ3Object> textureObjects;
    FrameBuffer frame;
    int height = 0;
    // per frame, kept to spare the allocations
    std::vector<Lit> lit;
    std::vector<ScreenVertex> screen;
    std::vector<char> inside;
    std::vector<std::vector<ScreenTriangle>> tris;
    std::vector<std::vector<ScreenLine>> lines;
    std::vector<const ScreenTriangle*> seeThrough;
    struct Span {
        int y0, y1;
        const ScreenTriangle* triangle;
    };
    std::vector<Span> spans;
};

Interactive* self(void* p) {
    return static_cast<Interactive*>(p);
}

// Memory runs out as a failed submit, not as an exception into the caller.
template <class F> TQ3Status guard(F f) {
    try {
        return f();
    } catch (...) {
        postError(kQ3ErrorOutOfMemory);
        return kQ3Failure;
    }
}

TQ3XRendererMethods makeMethods() {
    TQ3XRendererMethods m{};
    m.newInstance = []() -> void* {
        try {
            return new Interactive;
        } catch (...) {
            return nullptr;
        }
    };
    m.deleteInstance = [](void* p) { delete self(p); };
    m.isInteractive = kQ3True;
    m.startPass = [](void* p, TQ3ViewObject, const TQ3XPassInfo* info) {
        return self(p)->startPass(*info);
    };
    m.submitTriangles = [](void* p, const TQ3XTriangleBatch* b) {
        return guard([&] { return self(p)->addTriangles(*b); });
    };
    m.submitLines = [](void* p, const TQ3XLineBatch* b) {
        return guard([&] { return self(p)->addLines(*b); });
    };
    m.submitPoints = [](void* p, const TQ3XPointBatch* b) {
        return guard([&] { return self(p)->addPoints(*b); });
    };
    m.submitMarker = [](void* p, const TQ3XMarker* k) {
        return guard([&] { return self(p)->addMarker(*k); });
    };
    m.endPass = [](void* p, TQ3ViewObject) {
        try {
            return self(p)->endPass();
        } catch (...) {
            self(p)->clear();
            postError(kQ3ErrorOutOfMemory);
            return kQ3ViewStatusError;
        }
    };
    m.cancelPass = [](void* p) { self(p)->clear(); };
    return m;
}

} // namespace

const TQ3XRendererMethods& interactiveRendererMethods() {
    static const TQ3XRendererMethods methods = makeMethods();
    return methods;
}

} // namespace q3
