// Meshes: attribute reading and the triangle builder.
#include "platform/qd3d/Q3Mesh.h"

#include "platform/qd3d/Q3Set.h"

#include <cmath>
#include <cstring>

namespace q3 {

namespace {
template <class T> bool read(const SetObject* set, TQ3AttributeType type, T& out) {
    const void* p = set->find(type);
    if (!p) return false;
    std::memcpy(&out, p, sizeof(T));
    return true;
}

TQ3Vector3D faceNormal(const TQ3Point3D& a, const TQ3Point3D& b, const TQ3Point3D& c) {
    TQ3Vector3D u{b.x - a.x, b.y - a.y, b.z - a.z}, v{c.x - a.x, c.y - a.y, c.z - a.z};
    TQ3Vector3D n{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    float len = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    if (!(len > 0) || !std::isfinite(len)) return {0, 0, 0};
    return {n.x / len, n.y / len, n.z / len};
}
} // namespace

void applyAttributes(const SetObject* set, LocalVertex& v) {
    if (!set) return;
    if (read(set, kQ3AttributeTypeNormal, v.normal)) {
        float len =
            std::sqrt(v.normal.x * v.normal.x + v.normal.y * v.normal.y + v.normal.z * v.normal.z);
        if (len > 0 && std::isfinite(len)) {
            v.normal = {v.normal.x / len, v.normal.y / len, v.normal.z / len};
            v.has = (v.has | kHasNormal) & ~kFilledNormal;
        }
    }
    if (read(set, kQ3AttributeTypeSurfaceUV, v.uv) || read(set, kQ3AttributeTypeShadingUV, v.uv))
        v.has |= kHasUV;
    if (read(set, kQ3AttributeTypeDiffuseColor, v.diffuse)) v.has |= kHasDiffuse;
    if (read(set, kQ3AttributeTypeTransparencyColor, v.transparency)) v.has |= kHasTransparency;
    if (read(set, kQ3AttributeTypeSpecularColor, v.specular)) v.has |= kHasSpecular;
    if (read(set, kQ3AttributeTypeSpecularControl, v.specularControl)) v.has |= kHasSpecularControl;
    if (read(set, kQ3AttributeTypeAmbientCoefficient, v.ambient)) v.has |= kHasAmbient;
}

void Mesh::clear() {
    vertices.clear();
    triangles.clear();
    edgeFlags.clear();
    segments.clear();
    points.clear();
}

TQ3Uns32 Mesh::addVertex(const LocalVertex& v) {
    vertices.push_back(v);
    return static_cast<TQ3Uns32>(vertices.size() - 1);
}

void Mesh::addSegment(TQ3Uns32 a, TQ3Uns32 b) {
    segments.push_back(a);
    segments.push_back(b);
}

TQ3BoundingBox Mesh::bounds() const {
    TQ3BoundingBox box{{0, 0, 0}, {0, 0, 0}, kQ3True};
    for (const LocalVertex& v : vertices) {
        const TQ3Point3D& p = v.point;
        if (box.isEmpty) {
            box.min = box.max = p;
            box.isEmpty = kQ3False;
            continue;
        }
        box.min = {std::fmin(box.min.x, p.x), std::fmin(box.min.y, p.y), std::fmin(box.min.z, p.z)};
        box.max = {std::fmax(box.max.x, p.x), std::fmax(box.max.y, p.y), std::fmax(box.max.z, p.z)};
    }
    return box;
}

TQ3Uns32 MeshBuilder::source(const TQ3Point3D& p, const SetObject* set) {
    LocalVertex v;
    v.point = p;
    applyAttributes(set, v);
    return source(v);
}

TQ3Uns32 MeshBuilder::source(const LocalVertex& v) {
    sources.push_back(v);
    shared.push_back(-1);
    return static_cast<TQ3Uns32>(sources.size() - 1);
}

TQ3Uns32 MeshBuilder::corner(TQ3Uns32 src, const LocalVertex* face, const TQ3Vector3D& normal) {
    const LocalVertex& s = sources[src];
    bool faceHas = face && face->has != 0;
    if (!faceHas && (s.has & kHasNormal)) {
        if (shared[src] < 0) shared[src] = static_cast<TQ3Int32>(mesh.addVertex(s));
        return static_cast<TQ3Uns32>(shared[src]);
    }
    LocalVertex v = faceHas ? *face : LocalVertex{};
    v.point = s.point;
    // the vertex's own attributes win over the face's
    if (s.has & kHasNormal) v.normal = s.normal;
    if (s.has & kHasUV) v.uv = s.uv;
    if (s.has & kHasDiffuse) v.diffuse = s.diffuse;
    if (s.has & kHasTransparency) v.transparency = s.transparency;
    if (s.has & kHasSpecular) v.specular = s.specular;
    if (s.has & kHasSpecularControl) v.specularControl = s.specularControl;
    if (s.has & kHasAmbient) v.ambient = s.ambient;
    v.has |= s.has;
    if (!(v.has & kHasNormal)) {
        v.normal = normal;
        v.has |= kHasNormal | kFilledNormal;
    }
    return mesh.addVertex(v);
}

void MeshBuilder::addTriangle(TQ3Uns32 a, TQ3Uns32 b, TQ3Uns32 c, const SetObject* faceSet,
                              TQ3Uns8 edgeFlags) {
    if (a >= sources.size() || b >= sources.size() || c >= sources.size()) return;
    TQ3Vector3D n = faceNormal(sources[a].point, sources[b].point, sources[c].point);
    if (n.x == 0 && n.y == 0 && n.z == 0) return;
    LocalVertex face;
    applyAttributes(faceSet, face);
    const LocalVertex* f = face.has ? &face : nullptr;
    mesh.triangles.push_back(corner(a, f, n));
    mesh.triangles.push_back(corner(b, f, n));
    mesh.triangles.push_back(corner(c, f, n));
    mesh.edgeFlags.push_back(edgeFlags);
}

void MeshBuilder::addSegment(TQ3Uns32 a, TQ3Uns32 b, const SetObject* segmentSet) {
    if (a >= sources.size() || b >= sources.size()) return;
    LocalVertex va = sources[a], vb = sources[b];
    if (segmentSet) {
        // the segment's attributes under each end's own
        LocalVertex seg;
        applyAttributes(segmentSet, seg);
        for (LocalVertex* v : {&va, &vb}) {
            const LocalVertex own = *v;
            *v = seg;
            v->point = own.point;
            if (own.has & kHasDiffuse) v->diffuse = own.diffuse;
            if (own.has & kHasTransparency) v->transparency = own.transparency;
            if (own.has & kHasNormal) v->normal = own.normal;
            if (own.has & kHasUV) v->uv = own.uv;
            v->has |= own.has;
        }
    }
    TQ3Uns32 ia = mesh.addVertex(va), ib = mesh.addVertex(vb);
    mesh.addSegment(ia, ib);
}

void MeshBuilder::addPoint(TQ3Uns32 a) {
    if (a >= sources.size()) return;
    mesh.points.push_back(mesh.addVertex(sources[a]));
}

} // namespace q3
