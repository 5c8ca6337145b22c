// Geometry objects of points, lines and polygons, and what every geometry
// shares: its attribute set, its cached mesh, its submit.
#include "platform/qd3d/Q3Geometry.h"

#include "platform/qd3d/Q3GeometryKinds.h"
#include "platform/qd3d/Q3Set.h"
#include "platform/qd3d/Q3View.h"

#include <cstdlib>
#include <cstring>

namespace q3 {

void Vertices::clear() {
    for (TQ3Vertex3D& v : items)
        release(v.attributeSet);
    items.clear();
}

bool Vertices::assign(const TQ3Vertex3D* v, TQ3Uns32 n) {
    if (n && !v) {
        postError(kQ3ErrorNULLParameter);
        return false;
    }
    for (TQ3Uns32 i = 0; i < n; ++i)
        if (!finite(v[i].point) || !validSet(v[i].attributeSet)) {
            if (finite(v[i].point)) return false;
            postError(kQ3ErrorInvalidParameter);
            return false;
        }
    std::vector<TQ3Vertex3D> copy(v, v + n);
    for (TQ3Vertex3D& c : copy)
        retain(c.attributeSet);
    clear();
    items = std::move(copy);
    return true;
}

bool validSet(TQ3Object set) {
    SetObject* s;
    return checkOptional(set, kQ3SetTypeAttribute, &s);
}

void holdSet(TQ3Object& slot, TQ3Object set) {
    replaceRef(slot, set);
}

TQ3Object shareSet(TQ3Object set) {
    return retain(set);
}

GeometryObject::~GeometryObject() {
    release(attributeSet);
}

const Mesh& GeometryObject::mesh(const Detail& detail) {
    if (!cacheValid || cacheStamp != attributeStamp() || cacheEdit != editIndex ||
        !(cacheDetail == detail)) {
        cache.clear();
        build(cache, detail);
        cacheValid = true;
        cacheStamp = attributeStamp();
        cacheEdit = editIndex;
        cacheDetail = detail;
    }
    return cache;
}

Detail GeometryObject::detailFor(View&) {
    return {};
}

TQ3Status GeometryObject::submit(View& view) {
    return view.drawMesh(this, mesh(detailFor(view)), static_cast<SetObject*>(attributeSet));
}

// ---- points, lines, polylines

void PointGeometry::build(Mesh& mesh, const Detail&) {
    MeshBuilder b(mesh);
    b.addPoint(b.source(point, nullptr));
}

void LineGeometry::build(Mesh& mesh, const Detail&) {
    if (vertices.items.size() != 2) return;
    MeshBuilder b(mesh);
    TQ3Uns32 a = b.source(vertices.items[0].point, as(vertices.items[0].attributeSet));
    TQ3Uns32 c = b.source(vertices.items[1].point, as(vertices.items[1].attributeSet));
    b.addSegment(a, c, nullptr);
}

void PolyLineGeometry::build(Mesh& mesh, const Detail&) {
    MeshBuilder b(mesh);
    const auto& v = vertices.items;
    for (const TQ3Vertex3D& x : v)
        b.source(x.point, as(x.attributeSet));
    for (size_t i = 0; i + 1 < v.size(); ++i)
        b.addSegment(static_cast<TQ3Uns32>(i), static_cast<TQ3Uns32>(i + 1),
                     segmentSets.empty() ? nullptr : as(segmentSets[i]));
}

// ---- triangles and polygons

void TriangleGeometry::build(Mesh& mesh, const Detail&) {
    if (vertices.items.size() != 3) return;
    MeshBuilder b(mesh);
    for (const TQ3Vertex3D& x : vertices.items)
        b.source(x.point, as(x.attributeSet));
    b.addTriangle(0, 1, 2, nullptr, 7);
}

void PolygonGeometry::build(Mesh& mesh, const Detail&) {
    const auto& v = vertices.items;
    if (v.size() < 3) return;
    MeshBuilder b(mesh);
    for (const TQ3Vertex3D& x : v)
        b.source(x.point, as(x.attributeSet));
    TQ3Uns32 n = static_cast<TQ3Uns32>(v.size());
    for (TQ3Uns32 i = 1; i + 1 < n; ++i) {
        TQ3Uns8 flags = 2; // the edge i, i + 1 is always outline
        if (i == 1) flags |= 1;
        if (i + 2 == n) flags |= 4;
        b.addTriangle(0, i, i + 1, nullptr, flags);
    }
}

GeneralPolygonGeometry::~GeneralPolygonGeometry() = default;

void GeneralPolygonGeometry::build(Mesh& mesh, const Detail&) {
    MeshBuilder b(mesh);
    std::vector<std::vector<TQ3Uns32>> indices;
    std::vector<TQ3Point3D> points;
    for (const auto& c : contours) {
        indices.emplace_back();
        for (const TQ3Vertex3D& x : c->items) {
            indices.back().push_back(b.source(x.point, as(x.attributeSet)));
            points.push_back(x.point);
        }
    }
    tessellateContours(b, indices, points);
}

void TriGridGeometry::build(Mesh& mesh, const Detail&) {
    if (rows < 2 || columns < 2) return;
    MeshBuilder b(mesh);
    for (const TQ3Vertex3D& x : vertices.items)
        b.source(x.point, as(x.attributeSet));
    auto at = [&](TQ3Uns32 r, TQ3Uns32 c) { return r * columns + c; };
    for (TQ3Uns32 r = 0; r + 1 < rows; ++r)
        for (TQ3Uns32 c = 0; c + 1 < columns; ++c) {
            TQ3Uns32 facet = 2 * (r * (columns - 1) + c);
            const SetObject* f0 = facetSets.empty() ? nullptr : as(facetSets[facet]);
            const SetObject* f1 = facetSets.empty() ? nullptr : as(facetSets[facet + 1]);
            // outline edges: those on the grid's border
            bool top = r == 0, bottom = r + 2 == rows, left = c == 0, right = c + 2 == columns;
            if ((r + c) % 2 == 0) {
                b.addTriangle(at(r, c), at(r + 1, c), at(r + 1, c + 1), f0,
                              static_cast<TQ3Uns8>((left ? 1 : 0) | (bottom ? 2 : 0)));
                b.addTriangle(at(r, c), at(r + 1, c + 1), at(r, c + 1), f1,
                              static_cast<TQ3Uns8>((right ? 2 : 0) | (top ? 4 : 0)));
            } else {
                b.addTriangle(at(r, c), at(r + 1, c), at(r, c + 1), f0,
                              static_cast<TQ3Uns8>((left ? 1 : 0) | (top ? 4 : 0)));
                b.addTriangle(at(r, c + 1), at(r + 1, c), at(r + 1, c + 1), f1,
                              static_cast<TQ3Uns8>((bottom ? 2 : 0) | (right ? 4 : 0)));
            }
        }
}

// ---- shared pieces of the C interface

GeometryObject* geometry(TQ3Object o, TQ3ObjectType t) {
    return check<GeometryObject>(o, t);
}

TQ3Vertex3D* copyOut(const Vertices& v) {
    if (v.items.empty()) return nullptr;
    auto* out = static_cast<TQ3Vertex3D*>(std::malloc(v.items.size() * sizeof(TQ3Vertex3D)));
    if (!out) {
        postError(kQ3ErrorOutOfMemory);
        return nullptr;
    }
    for (size_t i = 0; i < v.items.size(); ++i) {
        out[i] = v.items[i];
        retain(out[i].attributeSet);
    }
    return out;
}

void freeVertices(TQ3Vertex3D* v, TQ3Uns32 n) {
    if (!v) return;
    for (TQ3Uns32 i = 0; i < n; ++i)
        release(v[i].attributeSet);
    std::free(v);
}

bool validSets(const TQ3AttributeSet* sets, TQ3Uns32 n) {
    if (!sets) return true;
    for (TQ3Uns32 i = 0; i < n; ++i)
        if (!validSet(sets[i])) return false;
    return true;
}

void holdSets(std::vector<TQ3Object>& slots, const TQ3AttributeSet* sets, TQ3Uns32 n) {
    std::vector<TQ3Object> fresh;
    if (sets)
        for (TQ3Uns32 i = 0; i < n; ++i)
            fresh.push_back(retain(sets[i]));
    for (TQ3Object o : slots)
        release(o);
    slots = std::move(fresh);
}

TQ3AttributeSet* copySetsOut(const std::vector<TQ3Object>& sets) {
    if (sets.empty()) return nullptr;
    auto* out = static_cast<TQ3AttributeSet*>(std::malloc(sets.size() * sizeof(TQ3AttributeSet)));
    if (!out) return nullptr;
    for (size_t i = 0; i < sets.size(); ++i)
        out[i] = retain(sets[i]);
    return out;
}

void freeSets(TQ3AttributeSet* sets, TQ3Uns32 n) {
    if (!sets) return;
    for (TQ3Uns32 i = 0; i < n; ++i)
        release(sets[i]);
    std::free(sets);
}

} // namespace q3

using namespace q3;

extern "C" {

TQ3ObjectType Q3Geometry_GetType(TQ3GeometryObject g) {
    return geometry(g, kQ3ShapeTypeGeometry) ? g->type : kQ3ObjectTypeInvalid;
}

TQ3Status Q3Geometry_GetAttributeSet(TQ3GeometryObject g, TQ3AttributeSet* set) {
    GeometryObject* x = geometry(g, kQ3ShapeTypeGeometry);
    if (!x || !set) {
        if (x) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *set = retain(x->attributeSet);
    return kQ3Success;
}

TQ3Status Q3Geometry_SetAttributeSet(TQ3GeometryObject g, TQ3AttributeSet set) {
    GeometryObject* x = geometry(g, kQ3ShapeTypeGeometry);
    if (!x || !validSet(set)) return kQ3Failure;
    holdSet(x->attributeSet, set);
    x->edited();
    return kQ3Success;
}

TQ3Status Q3Geometry_Submit(TQ3GeometryObject g, TQ3ViewObject view) {
    if (!geometry(g, kQ3ShapeTypeGeometry)) return kQ3Failure;
    return Q3Object_Submit(g, view);
}

// ---- point

TQ3GeometryObject Q3Point_New(const TQ3PointData* d) {
    TQ3Object o = make<PointGeometry>();
    if (o && Q3Point_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Point_SetData(TQ3GeometryObject g, const TQ3PointData* d) {
    auto* x = static_cast<PointGeometry*>(geometry(g, kQ3GeometryTypePoint));
    if (!x) return kQ3Failure;
    if (!d || !finite(d->point)) {
        postError(d ? kQ3ErrorInvalidParameter : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!validSet(d->pointAttributeSet)) return kQ3Failure;
    x->point = d->point;
    holdSet(x->attributeSet, d->pointAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Point_GetData(TQ3GeometryObject g, TQ3PointData* d) {
    auto* x = static_cast<PointGeometry*>(geometry(g, kQ3GeometryTypePoint));
    if (!x || !d) return kQ3Failure;
    d->point = x->point;
    d->pointAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3Point_EmptyData(TQ3PointData* d) {
    if (!d) return kQ3Failure;
    release(d->pointAttributeSet);
    d->pointAttributeSet = nullptr;
    return kQ3Success;
}
TQ3Status Q3Point_GetPosition(TQ3GeometryObject g, TQ3Point3D* p) {
    auto* x = static_cast<PointGeometry*>(geometry(g, kQ3GeometryTypePoint));
    if (!x || !p) return kQ3Failure;
    *p = x->point;
    return kQ3Success;
}
TQ3Status Q3Point_SetPosition(TQ3GeometryObject g, const TQ3Point3D* p) {
    auto* x = static_cast<PointGeometry*>(geometry(g, kQ3GeometryTypePoint));
    if (!x || !p || !finite(*p)) return kQ3Failure;
    x->point = *p;
    x->edited();
    return kQ3Success;
}

// ---- line

TQ3GeometryObject Q3Line_New(const TQ3LineData* d) {
    TQ3Object o = make<LineGeometry>();
    if (o && Q3Line_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Line_SetData(TQ3GeometryObject g, const TQ3LineData* d) {
    auto* x = static_cast<LineGeometry*>(geometry(g, kQ3GeometryTypeLine));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!validSet(d->lineAttributeSet) || !x->vertices.assign(d->vertices, 2)) return kQ3Failure;
    holdSet(x->attributeSet, d->lineAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Line_GetData(TQ3GeometryObject g, TQ3LineData* d) {
    auto* x = static_cast<LineGeometry*>(geometry(g, kQ3GeometryTypeLine));
    if (!x || !d) return kQ3Failure;
    for (int i = 0; i < 2; ++i) {
        d->vertices[i] = x->vertices.items[i];
        retain(d->vertices[i].attributeSet);
    }
    d->lineAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3Line_EmptyData(TQ3LineData* d) {
    if (!d) return kQ3Failure;
    for (auto& v : d->vertices) {
        release(v.attributeSet);
        v.attributeSet = nullptr;
    }
    release(d->lineAttributeSet);
    d->lineAttributeSet = nullptr;
    return kQ3Success;
}
TQ3Status Q3Line_GetVertexPosition(TQ3GeometryObject g, TQ3Uns32 i, TQ3Point3D* p) {
    auto* x = static_cast<LineGeometry*>(geometry(g, kQ3GeometryTypeLine));
    if (!x || !p || i > 1) {
        if (x) postError(kQ3ErrorParameterOutOfRange);
        return kQ3Failure;
    }
    *p = x->vertices.items[i].point;
    return kQ3Success;
}
TQ3Status Q3Line_SetVertexPosition(TQ3GeometryObject g, TQ3Uns32 i, const TQ3Point3D* p) {
    auto* x = static_cast<LineGeometry*>(geometry(g, kQ3GeometryTypeLine));
    if (!x || !p || i > 1 || !finite(*p)) {
        if (x) postError(kQ3ErrorParameterOutOfRange);
        return kQ3Failure;
    }
    x->vertices.items[i].point = *p;
    x->edited();
    return kQ3Success;
}

// ---- polyline

TQ3GeometryObject Q3PolyLine_New(const TQ3PolyLineData* d) {
    TQ3Object o = make<PolyLineGeometry>();
    if (o && Q3PolyLine_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3PolyLine_SetData(TQ3GeometryObject g, const TQ3PolyLineData* d) {
    auto* x = static_cast<PolyLineGeometry*>(geometry(g, kQ3GeometryTypePolyLine));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (d->numVertices < 2 || d->numVertices > (1u << 24)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    if (!validSet(d->polyLineAttributeSet) ||
        !validSets(d->segmentAttributeSet, d->numVertices - 1) ||
        !x->vertices.assign(d->vertices, d->numVertices))
        return kQ3Failure;
    holdSets(x->segmentSets, d->segmentAttributeSet, d->numVertices - 1);
    holdSet(x->attributeSet, d->polyLineAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3PolyLine_GetData(TQ3GeometryObject g, TQ3PolyLineData* d) {
    auto* x = static_cast<PolyLineGeometry*>(geometry(g, kQ3GeometryTypePolyLine));
    if (!x || !d) return kQ3Failure;
    d->numVertices = static_cast<TQ3Uns32>(x->vertices.items.size());
    d->vertices = copyOut(x->vertices);
    d->segmentAttributeSet = copySetsOut(x->segmentSets);
    d->polyLineAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3PolyLine_EmptyData(TQ3PolyLineData* d) {
    if (!d) return kQ3Failure;
    freeVertices(d->vertices, d->numVertices);
    freeSets(d->segmentAttributeSet, d->numVertices ? d->numVertices - 1 : 0);
    release(d->polyLineAttributeSet);
    *d = {};
    return kQ3Success;
}
TQ3Status Q3PolyLine_GetVertexPosition(TQ3GeometryObject g, TQ3Uns32 i, TQ3Point3D* p) {
    auto* x = static_cast<PolyLineGeometry*>(geometry(g, kQ3GeometryTypePolyLine));
    if (!x || !p || i >= x->vertices.items.size()) {
        if (x) postError(kQ3ErrorParameterOutOfRange);
        return kQ3Failure;
    }
    *p = x->vertices.items[i].point;
    return kQ3Success;
}
TQ3Status Q3PolyLine_SetVertexPosition(TQ3GeometryObject g, TQ3Uns32 i, const TQ3Point3D* p) {
    auto* x = static_cast<PolyLineGeometry*>(geometry(g, kQ3GeometryTypePolyLine));
    if (!x || !p || i >= x->vertices.items.size() || !finite(*p)) {
        if (x) postError(kQ3ErrorParameterOutOfRange);
        return kQ3Failure;
    }
    x->vertices.items[i].point = *p;
    x->edited();
    return kQ3Success;
}

// ---- triangle

TQ3GeometryObject Q3Triangle_New(const TQ3TriangleData* d) {
    TQ3Object o = make<TriangleGeometry>();
    if (o && Q3Triangle_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Triangle_SetData(TQ3GeometryObject g, const TQ3TriangleData* d) {
    auto* x = static_cast<TriangleGeometry*>(geometry(g, kQ3GeometryTypeTriangle));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!validSet(d->triangleAttributeSet) || !x->vertices.assign(d->vertices, 3))
        return kQ3Failure;
    holdSet(x->attributeSet, d->triangleAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Triangle_GetData(TQ3GeometryObject g, TQ3TriangleData* d) {
    auto* x = static_cast<TriangleGeometry*>(geometry(g, kQ3GeometryTypeTriangle));
    if (!x || !d) return kQ3Failure;
    for (int i = 0; i < 3; ++i) {
        d->vertices[i] = x->vertices.items[i];
        retain(d->vertices[i].attributeSet);
    }
    d->triangleAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3Triangle_EmptyData(TQ3TriangleData* d) {
    if (!d) return kQ3Failure;
    for (auto& v : d->vertices) {
        release(v.attributeSet);
        v.attributeSet = nullptr;
    }
    release(d->triangleAttributeSet);
    d->triangleAttributeSet = nullptr;
    return kQ3Success;
}

// ---- polygon

TQ3GeometryObject Q3Polygon_New(const TQ3PolygonData* d) {
    TQ3Object o = make<PolygonGeometry>();
    if (o && Q3Polygon_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Polygon_SetData(TQ3GeometryObject g, const TQ3PolygonData* d) {
    auto* x = static_cast<PolygonGeometry*>(geometry(g, kQ3GeometryTypePolygon));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (d->numVertices < 3 || d->numVertices > (1u << 24)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    if (!validSet(d->polygonAttributeSet) || !x->vertices.assign(d->vertices, d->numVertices))
        return kQ3Failure;
    holdSet(x->attributeSet, d->polygonAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Polygon_GetData(TQ3GeometryObject g, TQ3PolygonData* d) {
    auto* x = static_cast<PolygonGeometry*>(geometry(g, kQ3GeometryTypePolygon));
    if (!x || !d) return kQ3Failure;
    d->numVertices = static_cast<TQ3Uns32>(x->vertices.items.size());
    d->vertices = copyOut(x->vertices);
    d->polygonAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3Polygon_EmptyData(TQ3PolygonData* d) {
    if (!d) return kQ3Failure;
    freeVertices(d->vertices, d->numVertices);
    release(d->polygonAttributeSet);
    *d = {};
    return kQ3Success;
}

// ---- general polygon

TQ3GeometryObject Q3GeneralPolygon_New(const TQ3GeneralPolygonData* d) {
    TQ3Object o = make<GeneralPolygonGeometry>();
    if (o && Q3GeneralPolygon_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3GeneralPolygon_SetData(TQ3GeometryObject g, const TQ3GeneralPolygonData* d) {
    auto* x = static_cast<GeneralPolygonGeometry*>(geometry(g, kQ3GeometryTypeGeneralPolygon));
    if (!x) return kQ3Failure;
    if (!d || (d->numContours && !d->contours)) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (d->numContours == 0 || d->numContours > (1u << 20) ||
        enumValue(d->shapeHint) < kQ3GeneralPolygonShapeHintComplex ||
        enumValue(d->shapeHint) > kQ3GeneralPolygonShapeHintConvex) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    if (!validSet(d->generalPolygonAttributeSet)) return kQ3Failure;
    std::vector<std::unique_ptr<Vertices>> contours;
    for (TQ3Uns32 i = 0; i < d->numContours; ++i) {
        const auto& c = d->contours[i];
        if (c.numVertices < 3 || c.numVertices > (1u << 24)) {
            postError(kQ3ErrorInvalidParameter);
            return kQ3Failure;
        }
        contours.push_back(std::make_unique<Vertices>());
        if (!contours.back()->assign(c.vertices, c.numVertices)) return kQ3Failure;
    }
    x->contours = std::move(contours);
    x->shapeHint = d->shapeHint;
    holdSet(x->attributeSet, d->generalPolygonAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3GeneralPolygon_GetData(TQ3GeometryObject g, TQ3GeneralPolygonData* d) {
    auto* x = static_cast<GeneralPolygonGeometry*>(geometry(g, kQ3GeometryTypeGeneralPolygon));
    if (!x || !d) return kQ3Failure;
    TQ3Uns32 n = static_cast<TQ3Uns32>(x->contours.size());
    auto* cs = static_cast<TQ3GeneralPolygonContourData*>(
        std::calloc(n, sizeof(TQ3GeneralPolygonContourData)));
    if (!cs) {
        postError(kQ3ErrorOutOfMemory);
        return kQ3Failure;
    }
    for (TQ3Uns32 i = 0; i < n; ++i) {
        cs[i].numVertices = static_cast<TQ3Uns32>(x->contours[i]->items.size());
        cs[i].vertices = copyOut(*x->contours[i]);
    }
    d->numContours = n;
    d->contours = cs;
    d->shapeHint = x->shapeHint;
    d->generalPolygonAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3GeneralPolygon_EmptyData(TQ3GeneralPolygonData* d) {
    if (!d) return kQ3Failure;
    if (d->contours)
        for (TQ3Uns32 i = 0; i < d->numContours; ++i)
            freeVertices(d->contours[i].vertices, d->contours[i].numVertices);
    std::free(d->contours);
    release(d->generalPolygonAttributeSet);
    *d = {};
    return kQ3Success;
}

// ---- trigrid

TQ3GeometryObject Q3TriGrid_New(const TQ3TriGridData* d) {
    TQ3Object o = make<TriGridGeometry>();
    if (o && Q3TriGrid_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3TriGrid_SetData(TQ3GeometryObject g, const TQ3TriGridData* d) {
    auto* x = static_cast<TriGridGeometry*>(geometry(g, kQ3GeometryTypeTriGrid));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (d->numRows < 2 || d->numColumns < 2 || d->numRows > 65536 || d->numColumns > 65536 ||
        static_cast<std::uint64_t>(d->numRows) * d->numColumns > (1u << 24)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    TQ3Uns32 facets = 2 * (d->numRows - 1) * (d->numColumns - 1);
    if (!validSet(d->triGridAttributeSet) || !validSets(d->facetAttributeSet, facets) ||
        !x->vertices.assign(d->vertices, d->numRows * d->numColumns))
        return kQ3Failure;
    x->rows = d->numRows;
    x->columns = d->numColumns;
    holdSets(x->facetSets, d->facetAttributeSet, facets);
    holdSet(x->attributeSet, d->triGridAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3TriGrid_GetData(TQ3GeometryObject g, TQ3TriGridData* d) {
    auto* x = static_cast<TriGridGeometry*>(geometry(g, kQ3GeometryTypeTriGrid));
    if (!x || !d) return kQ3Failure;
    d->numRows = x->rows;
    d->numColumns = x->columns;
    d->vertices = copyOut(x->vertices);
    d->facetAttributeSet = copySetsOut(x->facetSets);
    d->triGridAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3TriGrid_EmptyData(TQ3TriGridData* d) {
    if (!d) return kQ3Failure;
    freeVertices(d->vertices, d->numRows * d->numColumns);
    TQ3Uns32 facets =
        d->numRows > 1 && d->numColumns > 1 ? 2 * (d->numRows - 1) * (d->numColumns - 1) : 0;
    freeSets(d->facetAttributeSet, facets);
    release(d->triGridAttributeSet);
    *d = {};
    return kQ3Success;
}

} // extern "C"
