// Polygons with holes become triangles through the GLU tessellator.
#include "platform/qd3d/Q3Geometry.h"

#include <GL/glu.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <deque>

namespace q3 {
namespace {

struct TessContext {
    MeshBuilder* builder;
    std::vector<LocalVertex> extra; // vertices made where contours cross
    std::deque<std::array<double, 3>> coords;
    std::vector<TQ3Uns32> pending;
    TQ3Uns8 edge = 1;
    TQ3Uns8 flags = 0;
    bool error = false;
};

void onBegin(GLenum, void*) {}

void onEdgeFlag(GLboolean flag, void* data) {
    static_cast<TessContext*>(data)->edge = flag ? 1 : 0;
}

void onVertex(void* vertex, void* data) {
    auto* t = static_cast<TessContext*>(data);
    auto index = static_cast<TQ3Uns32>(reinterpret_cast<std::uintptr_t>(vertex) - 1);
    // the flag given before a vertex tells whether the edge from it is outline
    t->flags |= static_cast<TQ3Uns8>(t->edge << t->pending.size());
    t->pending.push_back(index);
    if (t->pending.size() == 3) {
        t->builder->addTriangle(t->pending[0], t->pending[1], t->pending[2], nullptr, t->flags);
        t->pending.clear();
        t->flags = 0;
    }
}

void onCombine(GLdouble coords[3], void* vertexData[4], GLfloat weight[4], void** outData,
               void* data) {
    auto* t = static_cast<TessContext*>(data);
    LocalVertex v;
    v.point = {static_cast<float>(coords[0]), static_cast<float>(coords[1]),
               static_cast<float>(coords[2])};
    TQ3Uns32 common = ~0u;
    const LocalVertex* parts[4] = {};
    for (int i = 0; i < 4; ++i) {
        if (!vertexData[i] || weight[i] <= 0) continue;
        auto index = static_cast<TQ3Uns32>(reinterpret_cast<std::uintptr_t>(vertexData[i]) - 1);
        parts[i] = t->builder->sourceAt(index);
        if (parts[i]) common &= parts[i]->has;
    }
    v.has = common == ~0u ? 0 : common & ~kFilledNormal;
    for (int i = 0; i < 4; ++i) {
        if (!parts[i]) continue;
        float w = weight[i];
        const LocalVertex& p = *parts[i];
        v.normal = {v.normal.x + w * p.normal.x, v.normal.y + w * p.normal.y,
                    v.normal.z + w * p.normal.z};
        v.uv = {v.uv.u + w * p.uv.u, v.uv.v + w * p.uv.v};
        v.diffuse = {v.diffuse.r + w * p.diffuse.r, v.diffuse.g + w * p.diffuse.g,
                     v.diffuse.b + w * p.diffuse.b};
        v.transparency = {v.transparency.r + w * p.transparency.r,
                          v.transparency.g + w * p.transparency.g,
                          v.transparency.b + w * p.transparency.b};
        v.specular = {v.specular.r + w * p.specular.r, v.specular.g + w * p.specular.g,
                      v.specular.b + w * p.specular.b};
        v.specularControl += w * p.specularControl;
        v.ambient += w * p.ambient;
    }
    if (v.has & kHasNormal) {
        float len =
            std::sqrt(v.normal.x * v.normal.x + v.normal.y * v.normal.y + v.normal.z * v.normal.z);
        if (len > 0)
            v.normal = {v.normal.x / len, v.normal.y / len, v.normal.z / len};
        else
            v.has &= ~kHasNormal;
    }
    TQ3Uns32 index = t->builder->source(v);
    *outData = reinterpret_cast<void*>(static_cast<std::uintptr_t>(index) + 1);
}

void onError(GLenum, void* data) {
    static_cast<TessContext*>(data)->error = true;
}

} // namespace

void tessellateContours(MeshBuilder& builder, const std::vector<std::vector<TQ3Uns32>>& contours,
                        const std::vector<TQ3Point3D>& points) {
    // The plane's normal by Newell's method over the first contour, so that
    // triangles keep the winding of the outer contour.
    double nx = 0, ny = 0, nz = 0;
    if (!contours.empty()) {
        const auto& c = contours.front();
        for (size_t i = 0; i < c.size(); ++i) {
            const TQ3Point3D& a = points[c[i]];
            const TQ3Point3D& b = points[c[(i + 1) % c.size()]];
            nx += (static_cast<double>(a.y) - b.y) * (static_cast<double>(a.z) + b.z);
            ny += (static_cast<double>(a.z) - b.z) * (static_cast<double>(a.x) + b.x);
            nz += (static_cast<double>(a.x) - b.x) * (static_cast<double>(a.y) + b.y);
        }
    }
    if (!(std::fabs(nx) + std::fabs(ny) + std::fabs(nz) > 0)) return;
    GLUtesselator* tess = gluNewTess();
    if (!tess) {
        postError(kQ3ErrorOutOfMemory);
        return;
    }
    TessContext ctx{&builder, {}, {}, {}, 1, 0, false};
    using Fn = _GLUfuncptr;
    gluTessCallback(tess, GLU_TESS_BEGIN_DATA, reinterpret_cast<Fn>(onBegin));
    gluTessCallback(tess, GLU_TESS_EDGE_FLAG_DATA, reinterpret_cast<Fn>(onEdgeFlag));
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, reinterpret_cast<Fn>(onVertex));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<Fn>(onCombine));
    gluTessCallback(tess, GLU_TESS_ERROR_DATA, reinterpret_cast<Fn>(onError));
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_ODD);
    gluTessNormal(tess, nx, ny, nz);
    gluTessBeginPolygon(tess, &ctx);
    for (const auto& contour : contours) {
        if (contour.size() < 3) continue;
        gluTessBeginContour(tess);
        for (TQ3Uns32 i : contour) {
            const TQ3Point3D& p = points[i];
            ctx.coords.push_back({p.x, p.y, p.z});
            gluTessVertex(tess, ctx.coords.back().data(),
                          reinterpret_cast<void*>(static_cast<std::uintptr_t>(i) + 1));
        }
        gluTessEndContour(tess);
    }
    gluTessEndPolygon(tess);
    gluDeleteTess(tess);
    if (ctx.error) postError(kQ3ErrorDegenerateGeometry);
}

} // namespace q3
