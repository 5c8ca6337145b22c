// Boxes, cones, ellipsoids, NURB curves and markers.
#include "platform/qd3d/Q3GeometryKinds.h"
#include "platform/qd3d/Q3Set.h"
#include "platform/qd3d/Q3View.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace q3 {
namespace {

constexpr float kPi = 3.14159265358979f;

TQ3Vector3D add(TQ3Vector3D a, TQ3Vector3D b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
TQ3Vector3D scale(TQ3Vector3D a, float s) {
    return {a.x * s, a.y * s, a.z * s};
}
TQ3Vector3D cross(TQ3Vector3D a, TQ3Vector3D b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
float dot(TQ3Vector3D a, TQ3Vector3D b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
float length(TQ3Vector3D a) {
    return std::sqrt(dot(a, a));
}
TQ3Point3D offset(TQ3Point3D p, TQ3Vector3D v) {
    return {p.x + v.x, p.y + v.y, p.z + v.z};
}
TQ3Vector3D unit(TQ3Vector3D v) {
    float l = length(v);
    return l > 0 && std::isfinite(l) ? scale(v, 1 / l) : TQ3Vector3D{0, 0, 0};
}
TQ3Vector3D between(TQ3Point3D a, TQ3Point3D b) {
    return {b.x - a.x, b.y - a.y, b.z - a.z};
}

// Adds a triangle whose winding faces along `outward`.
void facing(MeshBuilder& b, const std::vector<TQ3Point3D>& pts, TQ3Uns32 i, TQ3Uns32 j, TQ3Uns32 k,
            TQ3Vector3D outward, const SetObject* face, TQ3Uns8 flags) {
    TQ3Vector3D n = cross(between(pts[i], pts[j]), between(pts[i], pts[k]));
    if (dot(n, outward) < 0)
        b.addTriangle(i, k, j, face, flags);
    else
        b.addTriangle(i, j, k, face, flags);
}

TQ3Uns32 segmentsFor(const TQ3SubdivisionStyleData& s, float worldLength, float pixelsPerUnit,
                     float constant, TQ3Uns32 lo, TQ3Uns32 hi) {
    double n = constant;
    if (s.method == kQ3SubdivisionMethodWorldSpace && s.c1 > 0)
        n = worldLength / s.c1;
    else if (s.method == kQ3SubdivisionMethodScreenSpace && s.c1 > 0)
        n = worldLength * pixelsPerUnit / s.c1;
    if (!std::isfinite(n)) n = hi;
    return static_cast<TQ3Uns32>(std::clamp<double>(std::ceil(n), lo, hi));
}

} // namespace

// ---- box

void BoxGeometry::build(Mesh& mesh, const Detail&) {
    MeshBuilder b(mesh);
    TQ3Vector3D axes[3] = {orientation, majorAxis, minorAxis};
    TQ3Point3D centre = offset(origin, scale(add(add(orientation, majorAxis), minorAxis), 0.5f));
    std::vector<TQ3Point3D> pts;
    // faces: orientation 0 and 1, major 0 and 1, minor 0 and 1
    for (int f = 0; f < 6; ++f) {
        int axis = f / 2;
        TQ3Vector3D fixed = (f % 2) ? axes[axis] : TQ3Vector3D{0, 0, 0};
        TQ3Vector3D s = axes[(axis + 1) % 3], t = axes[(axis + 2) % 3];
        TQ3Point3D base = offset(origin, fixed);
        TQ3Point3D q[4] = {base, offset(base, s), offset(offset(base, s), t), offset(base, t)};
        const TQ3Param2D uv[4] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        TQ3Uns32 first = b.sourceCount();
        for (int i = 0; i < 4; ++i) {
            LocalVertex v;
            v.point = q[i];
            v.uv = uv[i];
            v.has = kHasUV;
            b.source(v);
            pts.resize(b.sourceCount());
            pts[first + i] = q[i];
        }
        TQ3Point3D faceCentre = offset(base, scale(add(s, t), 0.5f));
        TQ3Vector3D outward = between(centre, faceCentre);
        const SetObject* face = faceSets.empty() ? nullptr : as(faceSets[f]);
        facing(b, pts, first, first + 1, first + 2, outward, face, 3);
        facing(b, pts, first, first + 2, first + 3, outward, face, 6);
    }
}

// ---- cone and ellipsoid

Detail QuadricGeometry::detailFor(View& view) {
    const TQ3SubdivisionStyleData& s = view.state().draw.subdivision;
    float radius = std::max(length(majorRadius), length(minorRadius));
    float ppu = s.method == kQ3SubdivisionMethodScreenSpace ? view.pixelsPerUnitAt(origin) : 1;
    float ws = view.worldScale();
    Detail d;
    d.u = segmentsFor(s, 2 * kPi * radius * ws * (uMax - uMin), ppu, s.c1, 3, 256);
    float along =
        type == kQ3GeometryTypeEllipsoid ? kPi * length(orientation) : length(orientation);
    d.v = segmentsFor(s, along * ws * (vMax - vMin), ppu, s.c2, type == kQ3GeometryTypeCone ? 1 : 2,
                      256);
    return d;
}

void QuadricGeometry::build(Mesh& mesh, const Detail& detail) {
    MeshBuilder b(mesh);
    const bool cone = type == kQ3GeometryTypeCone;
    const TQ3Uns32 nu = detail.u, nv = detail.v;
    const TQ3Vector3D A = orientation, M = majorRadius, m = minorRadius;
    // normals of the ellipsoid: the inverse transpose of the axes
    const TQ3Vector3D mA = cross(m, A), AM = cross(A, M), Mm = cross(M, m);
    const float det = dot(M, mA);
    auto surface = [&](float u, float v, TQ3Vector3D& n) {
        float th = 2 * kPi * u;
        TQ3Vector3D ring = add(scale(M, std::cos(th)), scale(m, std::sin(th)));
        if (cone) {
            TQ3Vector3D du = add(scale(M, -std::sin(th)), scale(m, std::cos(th)));
            TQ3Vector3D dv = add(A, scale(ring, -1));
            n = unit(cross(du, dv));
            if (dot(n, ring) < 0) n = scale(n, -1);
            return offset(offset(origin, scale(ring, 1 - v)), scale(A, v));
        }
        float ph = kPi * v;
        float sx = std::sin(ph) * std::cos(th), sy = std::sin(ph) * std::sin(th),
              sz = -std::cos(ph);
        n = unit(
            scale(add(add(scale(mA, sx), scale(AM, sy)), scale(Mm, sz)), det < 0 ? -1.f : 1.f));
        return offset(origin, add(add(scale(M, sx), scale(m, sy)), scale(A, sz)));
    };
    std::vector<TQ3Point3D> pts;
    std::vector<TQ3Vector3D> normals;
    const SetObject* side = as(faceSet);
    for (TQ3Uns32 j = 0; j <= nv; ++j)
        for (TQ3Uns32 i = 0; i <= nu; ++i) {
            float u = uMin + (uMax - uMin) * static_cast<float>(i) / static_cast<float>(nu);
            float v = vMin + (vMax - vMin) * static_cast<float>(j) / static_cast<float>(nv);
            LocalVertex x;
            TQ3Vector3D n;
            x.point = surface(u, v, n);
            if (cone && j == nv) surface(u, v - 1e-3f, n); // the apex takes its side's normal
            x.normal = n;
            x.uv = {u, v};
            x.has = kHasUV | (length(n) > 0 ? TQ3Uns32(kHasNormal) : 0u);
            b.source(x);
            pts.push_back(x.point);
            normals.push_back(n);
        }
    auto at = [&](TQ3Uns32 i, TQ3Uns32 j) { return j * (nu + 1) + i; };
    for (TQ3Uns32 j = 0; j < nv; ++j)
        for (TQ3Uns32 i = 0; i < nu; ++i) {
            TQ3Uns32 a = at(i, j), c = at(i + 1, j), d = at(i + 1, j + 1), e = at(i, j + 1);
            TQ3Vector3D out = add(add(normals[a], normals[c]), add(normals[d], normals[e]));
            facing(b, pts, a, c, d, out, side, 3);
            facing(b, pts, a, d, e, out, side, 6);
        }
    if (cone && (caps & kQ3EndCapMaskBottom) && vMin <= 0) {
        LocalVertex centre;
        centre.point = origin;
        centre.uv = {0.5f, 0.5f};
        centre.has = kHasUV;
        TQ3Uns32 c = b.source(centre);
        pts.push_back(origin);
        TQ3Vector3D down = scale(A, -1);
        for (TQ3Uns32 i = 0; i < nu; ++i) {
            LocalVertex r0, r1;
            r0.point = pts[at(i, 0)];
            r1.point = pts[at(i + 1, 0)];
            float t0 =
                2 * kPi * (uMin + (uMax - uMin) * static_cast<float>(i) / static_cast<float>(nu));
            float t1 = 2 * kPi *
                       (uMin + (uMax - uMin) * static_cast<float>(i + 1) / static_cast<float>(nu));
            r0.uv = {0.5f + 0.5f * std::cos(t0), 0.5f + 0.5f * std::sin(t0)};
            r1.uv = {0.5f + 0.5f * std::cos(t1), 0.5f + 0.5f * std::sin(t1)};
            r0.has = r1.has = kHasUV;
            TQ3Uns32 p0 = b.source(r0), p1 = b.source(r1);
            pts.push_back(r0.point);
            pts.push_back(r1.point);
            facing(b, pts, c, p0, p1, down, as(bottomSet), 2);
        }
    }
}

// ---- NURB curve

TQ3Point3D NURBCurveGeometry::evaluate(float t) const {
    const TQ3Uns32 n = static_cast<TQ3Uns32>(points.size()), k = order;
    TQ3Uns32 span = k - 1;
    while (span + 1 < n && !(t < knots[span + 1]))
        ++span;
    TQ3RationalPoint4D d[32];
    for (TQ3Uns32 j = 0; j < k; ++j)
        d[j] = points[span - (k - 1) + j];
    for (TQ3Uns32 r = 1; r < k; ++r)
        for (TQ3Uns32 j = k - 1; j >= r; --j) {
            TQ3Uns32 i = span - (k - 1) + j;
            float lo = knots[i], hi = knots[i + k - r];
            float a = hi > lo ? (t - lo) / (hi - lo) : 0;
            d[j] = {(1 - a) * d[j - 1].x + a * d[j].x, (1 - a) * d[j - 1].y + a * d[j].y,
                    (1 - a) * d[j - 1].z + a * d[j].z, (1 - a) * d[j - 1].w + a * d[j].w};
        }
    TQ3RationalPoint4D p = d[k - 1];
    if (p.w == 0) return {p.x, p.y, p.z};
    return {p.x / p.w, p.y / p.w, p.z / p.w};
}

Detail NURBCurveGeometry::detailFor(View& view) {
    const TQ3SubdivisionStyleData& s = view.state().draw.subdivision;
    float hull = 0;
    for (size_t i = 0; i + 1 < points.size(); ++i) {
        TQ3Point3D a{points[i].x / points[i].w, points[i].y / points[i].w,
                     points[i].z / points[i].w};
        TQ3Point3D c{points[i + 1].x / points[i + 1].w, points[i + 1].y / points[i + 1].w,
                     points[i + 1].z / points[i + 1].w};
        hull += length(between(a, c));
    }
    TQ3Uns32 spans = 0;
    for (TQ3Uns32 i = order - 1; i < points.size(); ++i)
        if (knots[i + 1] > knots[i]) ++spans;
    spans = std::max<TQ3Uns32>(spans, 1);
    float ppu = s.method == kQ3SubdivisionMethodScreenSpace
                    ? view.pixelsPerUnitAt({points[0].x / points[0].w, points[0].y / points[0].w,
                                            points[0].z / points[0].w})
                    : 1;
    Detail d;
    // u: segments per span
    TQ3Uns32 total = segmentsFor(s, hull * view.worldScale(), ppu, s.c1 * static_cast<float>(spans),
                                 spans, 4096);
    d.u = std::max<TQ3Uns32>(1, (total + spans - 1) / spans);
    d.v = 1;
    return d;
}

void NURBCurveGeometry::build(Mesh& mesh, const Detail& detail) {
    MeshBuilder b(mesh);
    TQ3Uns32 prev = 0;
    bool have = false;
    for (TQ3Uns32 i = order - 1; i < points.size(); ++i) {
        float t0 = knots[i], t1 = knots[i + 1];
        if (!(t1 > t0)) continue;
        for (TQ3Uns32 s = have ? 1 : 0; s <= detail.u; ++s) {
            float t = t0 + (t1 - t0) * static_cast<float>(s) / static_cast<float>(detail.u);
            if (s == detail.u) t = std::nextafter(t1, t0); // the last span ends inside
            TQ3Uns32 cur = b.source(evaluate(t), nullptr);
            if (have) b.addSegment(prev, cur, nullptr);
            prev = cur;
            have = true;
        }
    }
}

// ---- marker

void MarkerGeometry::build(Mesh& mesh, const Detail&) {
    MeshBuilder b(mesh);
    b.addPoint(b.source(location, nullptr));
}

TQ3Status MarkerGeometry::submit(View& view) {
    return view.drawMarker(this, location, xOffset, yOffset, bitmap, as(attributeSet));
}

} // namespace q3

using namespace q3;

namespace {

bool validNURB(const TQ3NURBCurveData* d) {
    if (!d || !d->controlPoints || !d->knots) {
        postError(kQ3ErrorNULLParameter);
        return false;
    }
    if (d->order < 2 || d->order > 32 || d->numPoints < d->order || d->numPoints > (1u << 20)) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    for (TQ3Uns32 i = 0; i < d->numPoints; ++i) {
        const auto& p = d->controlPoints[i];
        if (!finite(p.x) || !finite(p.y) || !finite(p.z) || !(p.w > 0) || !finite(p.w)) {
            postError(kQ3ErrorInvalidParameter);
            return false;
        }
    }
    for (TQ3Uns32 i = 0; i < d->numPoints + d->order; ++i)
        if (!finite(d->knots[i]) || (i && d->knots[i] < d->knots[i - 1])) {
            postError(kQ3ErrorInvalidParameter);
            return false;
        }
    if (!(d->knots[d->numPoints] > d->knots[d->order - 1])) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    return true;
}

template <class D> bool quadricData(const D* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return false;
    }
    if (!finite(d->origin) || !finite(d->orientation) || !finite(d->majorRadius) ||
        !finite(d->minorRadius) || !finite(d->uMin) || !finite(d->uMax) || !finite(d->vMin) ||
        !finite(d->vMax)) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    return true;
}

// The shape that cones and ellipsoids share: frame, radii, ranges and caps.
template <class D> void takeQuadric(QuadricGeometry* x, const D* d) {
    x->origin = d->origin;
    x->orientation = d->orientation;
    x->majorRadius = d->majorRadius;
    x->minorRadius = d->minorRadius;
    x->uMin = d->uMin;
    x->uMax = d->uMax;
    x->vMin = d->vMin;
    x->vMax = d->vMax;
    x->caps = d->caps;
}

} // namespace

extern "C" {

// ---- box

TQ3GeometryObject Q3Box_New(const TQ3BoxData* d) {
    TQ3Object o = make<BoxGeometry>();
    if (o && Q3Box_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Box_SetData(TQ3GeometryObject g, const TQ3BoxData* d) {
    auto* x = static_cast<BoxGeometry*>(geometry(g, kQ3GeometryTypeBox));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!finite(d->origin) || !finite(d->orientation) || !finite(d->majorAxis) ||
        !finite(d->minorAxis)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    if (!validSet(d->boxAttributeSet) || !validSets(d->faceAttributeSet, 6)) return kQ3Failure;
    x->origin = d->origin;
    x->orientation = d->orientation;
    x->majorAxis = d->majorAxis;
    x->minorAxis = d->minorAxis;
    holdSets(x->faceSets, d->faceAttributeSet, 6);
    holdSet(x->attributeSet, d->boxAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Box_GetData(TQ3GeometryObject g, TQ3BoxData* d) {
    auto* x = static_cast<BoxGeometry*>(geometry(g, kQ3GeometryTypeBox));
    if (!x || !d) return kQ3Failure;
    d->origin = x->origin;
    d->orientation = x->orientation;
    d->majorAxis = x->majorAxis;
    d->minorAxis = x->minorAxis;
    d->faceAttributeSet = copySetsOut(x->faceSets);
    d->boxAttributeSet = shareSet(x->attributeSet);
    return kQ3Success;
}
TQ3Status Q3Box_EmptyData(TQ3BoxData* d) {
    if (!d) return kQ3Failure;
    freeSets(d->faceAttributeSet, 6);
    release(d->boxAttributeSet);
    d->faceAttributeSet = nullptr;
    d->boxAttributeSet = nullptr;
    return kQ3Success;
}

// ---- cone

TQ3GeometryObject Q3Cone_New(const TQ3ConeData* d) {
    TQ3Object o = make<QuadricGeometry>(kQ3GeometryTypeCone);
    if (o && Q3Cone_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Cone_SetData(TQ3GeometryObject g, const TQ3ConeData* d) {
    auto* x = static_cast<QuadricGeometry*>(geometry(g, kQ3GeometryTypeCone));
    if (!x || !quadricData(d)) return kQ3Failure;
    if (!validSet(d->interiorAttributeSet) || !validSet(d->faceAttributeSet) ||
        !validSet(d->bottomAttributeSet) || !validSet(d->coneAttributeSet))
        return kQ3Failure;
    takeQuadric(x, d);
    holdSet(x->interiorSet, d->interiorAttributeSet);
    holdSet(x->faceSet, d->faceAttributeSet);
    holdSet(x->bottomSet, d->bottomAttributeSet);
    holdSet(x->attributeSet, d->coneAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Cone_GetData(TQ3GeometryObject g, TQ3ConeData* d) {
    auto* x = static_cast<QuadricGeometry*>(geometry(g, kQ3GeometryTypeCone));
    if (!x || !d) return kQ3Failure;
    *d = {x->origin,
          x->orientation,
          x->majorRadius,
          x->minorRadius,
          x->uMin,
          x->uMax,
          x->vMin,
          x->vMax,
          x->caps,
          shareSet(x->interiorSet),
          shareSet(x->faceSet),
          shareSet(x->bottomSet),
          shareSet(x->attributeSet)};
    return kQ3Success;
}
TQ3Status Q3Cone_EmptyData(TQ3ConeData* d) {
    if (!d) return kQ3Failure;
    for (TQ3Object* s : {&d->interiorAttributeSet, &d->faceAttributeSet, &d->bottomAttributeSet,
                         &d->coneAttributeSet}) {
        release(*s);
        *s = nullptr;
    }
    return kQ3Success;
}

// ---- ellipsoid

TQ3GeometryObject Q3Ellipsoid_New(const TQ3EllipsoidData* d) {
    TQ3Object o = make<QuadricGeometry>(kQ3GeometryTypeEllipsoid);
    if (o && Q3Ellipsoid_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Ellipsoid_SetData(TQ3GeometryObject g, const TQ3EllipsoidData* d) {
    auto* x = static_cast<QuadricGeometry*>(geometry(g, kQ3GeometryTypeEllipsoid));
    if (!x || !quadricData(d)) return kQ3Failure;
    if (!validSet(d->interiorAttributeSet) || !validSet(d->ellipsoidAttributeSet))
        return kQ3Failure;
    takeQuadric(x, d);
    holdSet(x->interiorSet, d->interiorAttributeSet);
    holdSet(x->attributeSet, d->ellipsoidAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Ellipsoid_GetData(TQ3GeometryObject g, TQ3EllipsoidData* d) {
    auto* x = static_cast<QuadricGeometry*>(geometry(g, kQ3GeometryTypeEllipsoid));
    if (!x || !d) return kQ3Failure;
    *d = {x->origin,
          x->orientation,
          x->majorRadius,
          x->minorRadius,
          x->uMin,
          x->uMax,
          x->vMin,
          x->vMax,
          x->caps,
          shareSet(x->interiorSet),
          shareSet(x->attributeSet)};
    return kQ3Success;
}
TQ3Status Q3Ellipsoid_EmptyData(TQ3EllipsoidData* d) {
    if (!d) return kQ3Failure;
    release(d->interiorAttributeSet);
    release(d->ellipsoidAttributeSet);
    d->interiorAttributeSet = d->ellipsoidAttributeSet = nullptr;
    return kQ3Success;
}

// ---- NURB curve

TQ3GeometryObject Q3NURBCurve_New(const TQ3NURBCurveData* d) {
    TQ3Object o = make<NURBCurveGeometry>();
    if (o && Q3NURBCurve_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3NURBCurve_SetData(TQ3GeometryObject g, const TQ3NURBCurveData* d) {
    auto* x = static_cast<NURBCurveGeometry*>(geometry(g, kQ3GeometryTypeNURBCurve));
    if (!x || !validNURB(d) || !validSet(d->curveAttributeSet)) return kQ3Failure;
    x->order = d->order;
    x->points.assign(d->controlPoints, d->controlPoints + d->numPoints);
    x->knots.assign(d->knots, d->knots + d->numPoints + d->order);
    holdSet(x->attributeSet, d->curveAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3NURBCurve_GetData(TQ3GeometryObject g, TQ3NURBCurveData* d) {
    auto* x = static_cast<NURBCurveGeometry*>(geometry(g, kQ3GeometryTypeNURBCurve));
    if (!x || !d) return kQ3Failure;
    auto* pts = static_cast<TQ3RationalPoint4D*>(
        std::malloc(x->points.size() * sizeof(TQ3RationalPoint4D)));
    auto* knots = static_cast<float*>(std::malloc(x->knots.size() * sizeof(float)));
    if (!pts || !knots) {
        std::free(pts);
        std::free(knots);
        postError(kQ3ErrorOutOfMemory);
        return kQ3Failure;
    }
    std::memcpy(pts, x->points.data(), x->points.size() * sizeof(TQ3RationalPoint4D));
    std::memcpy(knots, x->knots.data(), x->knots.size() * sizeof(float));
    *d = {x->order, static_cast<TQ3Uns32>(x->points.size()), pts, knots, shareSet(x->attributeSet)};
    return kQ3Success;
}
TQ3Status Q3NURBCurve_EmptyData(TQ3NURBCurveData* d) {
    if (!d) return kQ3Failure;
    std::free(d->controlPoints);
    std::free(d->knots);
    release(d->curveAttributeSet);
    *d = {};
    return kQ3Success;
}
TQ3Status Q3NURBCurve_GetControlPoint(TQ3GeometryObject g, TQ3Uns32 i, TQ3RationalPoint4D* p) {
    auto* x = static_cast<NURBCurveGeometry*>(geometry(g, kQ3GeometryTypeNURBCurve));
    if (!x || !p || i >= x->points.size()) {
        if (x) postError(p ? kQ3ErrorParameterOutOfRange : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *p = x->points[i];
    return kQ3Success;
}
TQ3Status Q3NURBCurve_SetControlPoint(TQ3GeometryObject g, TQ3Uns32 i,
                                      const TQ3RationalPoint4D* p) {
    auto* x = static_cast<NURBCurveGeometry*>(geometry(g, kQ3GeometryTypeNURBCurve));
    if (!x || !p || i >= x->points.size()) {
        if (x) postError(p ? kQ3ErrorParameterOutOfRange : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!finite(p->x) || !finite(p->y) || !finite(p->z) || !(p->w > 0) || !finite(p->w)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    x->points[i] = *p;
    x->edited();
    return kQ3Success;
}

// ---- marker

TQ3GeometryObject Q3Marker_New(const TQ3MarkerData* d) {
    TQ3Object o = make<MarkerGeometry>();
    if (o && Q3Marker_SetData(o, d) != kQ3Success) {
        delete o;
        return nullptr;
    }
    return o;
}
TQ3Status Q3Marker_SetData(TQ3GeometryObject g, const TQ3MarkerData* d) {
    auto* x = static_cast<MarkerGeometry*>(geometry(g, kQ3GeometryTypeMarker));
    if (!x) return kQ3Failure;
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    const TQ3Bitmap& bm = d->bitmap;
    if (!finite(d->location) || bm.width > 4096 || bm.height > 4096 || bm.rowBytes > 4096 ||
        (bm.width && bm.rowBytes < (bm.width + 7) / 8) || (bm.width && bm.height && !bm.image)) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    if (!validSet(d->markerAttributeSet)) return kQ3Failure;
    if (bm.image)
        x->bits.assign(bm.image, bm.image + static_cast<size_t>(bm.rowBytes) * bm.height);
    else
        x->bits.clear();
    x->bitmap = bm;
    x->bitmap.image = x->bits.empty() ? nullptr : x->bits.data();
    x->location = d->location;
    x->xOffset = d->xOffset;
    x->yOffset = d->yOffset;
    holdSet(x->attributeSet, d->markerAttributeSet);
    x->edited();
    return kQ3Success;
}
TQ3Status Q3Marker_GetData(TQ3GeometryObject g, TQ3MarkerData* d) {
    auto* x = static_cast<MarkerGeometry*>(geometry(g, kQ3GeometryTypeMarker));
    if (!x || !d) return kQ3Failure;
    *d = {x->location, x->xOffset, x->yOffset, x->bitmap, shareSet(x->attributeSet)};
    if (!x->bits.empty()) {
        d->bitmap.image = static_cast<TQ3Uns8*>(std::malloc(x->bits.size()));
        if (d->bitmap.image) std::memcpy(d->bitmap.image, x->bits.data(), x->bits.size());
    }
    return kQ3Success;
}
TQ3Status Q3Marker_EmptyData(TQ3MarkerData* d) {
    if (!d) return kQ3Failure;
    std::free(d->bitmap.image);
    release(d->markerAttributeSet);
    d->bitmap.image = nullptr;
    d->markerAttributeSet = nullptr;
    return kQ3Success;
}
TQ3Status Q3Marker_GetPosition(TQ3GeometryObject g, TQ3Point3D* p) {
    auto* x = static_cast<MarkerGeometry*>(geometry(g, kQ3GeometryTypeMarker));
    if (!x || !p) return kQ3Failure;
    *p = x->location;
    return kQ3Success;
}
TQ3Status Q3Marker_SetPosition(TQ3GeometryObject g, const TQ3Point3D* p) {
    auto* x = static_cast<MarkerGeometry*>(geometry(g, kQ3GeometryTypeMarker));
    if (!x || !p || !finite(*p)) return kQ3Failure;
    x->location = *p;
    x->edited();
    return kQ3Success;
}

} // extern "C"
