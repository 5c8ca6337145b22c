// Window point picking.
#include "platform/qd3d/Q3Pick.h"

#include "platform/qd3d/Q3View.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace q3 {
namespace {

struct Clip {
    float x, y, z, w;
};

Clip toClip(const TQ3Point3D& p, const TQ3Matrix4x4& m) {
    const float(*a)[4] = m.value;
    return {p.x * a[0][0] + p.y * a[1][0] + p.z * a[2][0] + a[3][0],
            p.x * a[0][1] + p.y * a[1][1] + p.z * a[2][1] + a[3][1],
            p.x * a[0][2] + p.y * a[1][2] + p.z * a[2][2] + a[3][2],
            p.x * a[0][3] + p.y * a[1][3] + p.z * a[2][3] + a[3][3]};
}

constexpr float kMinW = 1e-6f;

// The eye ray through a window point, in world coordinates.
bool eyeRay(const View& view, float px, float py, TQ3Point3D& origin, TQ3Vector3D& dir) {
    TQ3Matrix4x4 inverse;
    if (!Q3Matrix4x4_Invert(&view.worldToWindow, &inverse)) {
        Q3Error_Get(nullptr);
        return false;
    }
    TQ3RationalPoint4D nearP{px, py, 0, 1}, farP{px, py, -1, 1}, a, b;
    Q3RationalPoint4D_Transform(&nearP, &inverse, &a);
    Q3RationalPoint4D_Transform(&farP, &inverse, &b);
    if (a.w == 0 || b.w == 0) return false;
    origin = {a.x / a.w, a.y / a.w, a.z / a.w};
    TQ3Point3D far{b.x / b.w, b.y / b.w, b.z / b.w};
    dir = {far.x - origin.x, far.y - origin.y, far.z - origin.z};
    float len = std::sqrt(dir.x * dir.x + dir.y * dir.y + dir.z * dir.z);
    if (!(len > 0) || !std::isfinite(len)) return false;
    dir = {dir.x / len, dir.y / len, dir.z / len};
    return true;
}

// Ray against triangle (Moller-Trumbore); answers the distance along the ray.
bool rayTriangle(const TQ3Point3D& o, const TQ3Vector3D& d, const TQ3Point3D& a,
                 const TQ3Point3D& b, const TQ3Point3D& c, float& t) {
    TQ3Vector3D e1{b.x - a.x, b.y - a.y, b.z - a.z}, e2{c.x - a.x, c.y - a.y, c.z - a.z};
    TQ3Vector3D p{d.y * e2.z - d.z * e2.y, d.z * e2.x - d.x * e2.z, d.x * e2.y - d.y * e2.x};
    double det = static_cast<double>(e1.x) * p.x + static_cast<double>(e1.y) * p.y +
                 static_cast<double>(e1.z) * p.z;
    if (std::fabs(det) < 1e-20) return false;
    double inv = 1.0 / det;
    TQ3Vector3D s{o.x - a.x, o.y - a.y, o.z - a.z};
    double u = (s.x * p.x + s.y * p.y + s.z * p.z) * inv;
    if (u < -1e-6 || u > 1 + 1e-6) return false;
    TQ3Vector3D q{s.y * e1.z - s.z * e1.y, s.z * e1.x - s.x * e1.z, s.x * e1.y - s.y * e1.x};
    double v = (d.x * q.x + d.y * q.y + d.z * q.z) * inv;
    if (v < -1e-6 || u + v > 1 + 1e-6) return false;
    t = static_cast<float>((e2.x * q.x + e2.y * q.y + e2.z * q.z) * inv);
    return t >= 0 && std::isfinite(t);
}

// Window distance from (px, py) to a segment between two clip points; the
// parameter of the nearest point along the segment goes to s.
bool segmentDistance(Clip a, Clip b, const View& view, float px, float py, float& dist, float& s) {
    if (a.w < kMinW && b.w < kMinW) return false;
    float s0 = 0, s1 = 1;
    if (a.w < kMinW || b.w < kMinW) { // cut at the eye plane
        float t = (kMinW - a.w) / (b.w - a.w);
        Clip c{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z), kMinW};
        if (a.w < kMinW) {
            a = c;
            s0 = t;
        } else {
            b = c;
            s1 = t;
        }
    }
    const TQ3Matrix4x4& f = view.frustumToWindow;
    auto win = [&](const Clip& c, float& x, float& y) {
        float fx = c.x / c.w, fy = c.y / c.w;
        x = fx * f.value[0][0] + f.value[3][0];
        y = fy * f.value[1][1] + f.value[3][1];
    };
    float ax, ay, bx, by;
    win(a, ax, ay);
    win(b, bx, by);
    float dx = bx - ax, dy = by - ay, l2 = dx * dx + dy * dy;
    float t = l2 > 0 ? ((px - ax) * dx + (py - ay) * dy) / l2 : 0;
    t = std::clamp(t, 0.0f, 1.0f);
    float cx = ax + t * dx - px, cy = ay + t * dy - py;
    dist = std::sqrt(cx * cx + cy * cy);
    s = s0 + t * (s1 - s0);
    return std::isfinite(dist);
}

} // namespace

PickObject::~PickObject() {
    if (activeView && activeView->pick == this) activeView->pick = nullptr;
    clear();
}

void PickObject::begin(View* view) {
    clear();
    activeView = view;
}

void PickObject::clear() {
    for (Hit& h : hits) {
        release(h.object);
        release(h.rootGroup);
    }
    hits.clear();
}

void PickObject::finish() {
    if (data.data.sort == kQ3PickSortNearToFar)
        std::stable_sort(hits.begin(), hits.end(),
                         [](const Hit& a, const Hit& b) { return a.distance < b.distance; });
    else if (data.data.sort == kQ3PickSortFarToNear)
        std::stable_sort(hits.begin(), hits.end(),
                         [](const Hit& a, const Hit& b) { return a.distance > b.distance; });
    if (data.data.numHitsToReturn && hits.size() > data.data.numHitsToReturn) {
        for (size_t i = data.data.numHitsToReturn; i < hits.size(); ++i) {
            release(hits[i].object);
            release(hits[i].rootGroup);
        }
        hits.resize(data.data.numHitsToReturn);
    }
}

void PickObject::record(View& view, TQ3Object geometry, const TQ3XDrawState& draw,
                        const TQ3Point3D& point, const TQ3Vector3D* normal,
                        const std::vector<PathEntry>& path) {
    TQ3Point3D eye{};
    TQ3Matrix4x4 inv;
    if (Q3Matrix4x4_Invert(&view.worldToView, &inv))
        eye = {inv.value[3][0], inv.value[3][1], inv.value[3][2]};
    else
        Q3Error_Get(nullptr);
    float dist = Q3Point3D_Distance(&eye, &point);
    // one hit per geometry submit: keep the nearest
    Hit h;
    h.object = retain(geometry);
    if (!path.empty()) {
        h.rootGroup = retain(path.front().group);
        for (const PathEntry& e : path)
            h.positions.push_back(e.position);
    }
    h.localToWorld = draw.localToWorld;
    h.pickID = draw.pickID;
    h.point = point;
    h.distance = dist;
    h.valid = kQ3PickDetailMaskPickID | kQ3PickDetailMaskObject |
              kQ3PickDetailMaskLocalToWorldMatrix | kQ3PickDetailMaskXYZ |
              kQ3PickDetailMaskDistance | (path.empty() ? 0 : kQ3PickDetailMaskPath);
    if (normal) {
        h.normal = *normal;
        h.valid |= kQ3PickDetailMaskNormal;
    }
    h.valid &= data.data.mask;
    hits.push_back(std::move(h));
}

void PickObject::testMeshImpl(View& view, TQ3Object geometry, const TQ3XDrawState& draw,
                              const Mesh& mesh, const std::vector<TQ3XVertex>& world,
                              const std::vector<TQ3Vector3D>& faceNormals,
                              const std::vector<PathEntry>& path) {
    const float px = data.point.x, py = data.point.y;
    bool found = false;
    float bestT = 0;
    TQ3Point3D bestPoint{};
    TQ3Vector3D bestNormal{};
    bool haveNormal = false;
    TQ3Point3D origin{0, 0, 0};
    TQ3Vector3D dir{0, 0, 0};
    bool ray = eyeRay(view, px, py, origin, dir);
    if (ray && draw.fill == kQ3FillStyleFilled) {
        for (size_t t = 0; t * 3 < mesh.triangles.size(); ++t) {
            const TQ3Uns32* i = &mesh.triangles[t * 3];
            const TQ3Vector3D& n = faceNormals[t];
            if (draw.backfacing == kQ3BackfacingStyleRemove &&
                n.x * dir.x + n.y * dir.y + n.z * dir.z > 0)
                continue;
            float hitT;
            if (rayTriangle(origin, dir, world[i[0]].point, world[i[1]].point, world[i[2]].point,
                            hitT) &&
                (!found || hitT < bestT)) {
                found = true;
                bestT = hitT;
                bestPoint = {origin.x + dir.x * hitT, origin.y + dir.y * hitT,
                             origin.z + dir.z * hitT};
                bestNormal = n;
                haveNormal = true;
            }
        }
    }
    // segments and points, and triangle edges when they are drawn as edges
    TQ3Matrix4x4 worldToFrustum;
    Q3Matrix4x4_Multiply(&view.worldToView, &view.viewToFrustum, &worldToFrustum);
    float bestLine = 0;
    auto tryLine = [&](const TQ3Point3D& a, const TQ3Point3D& b, float tolerance) {
        float d, s;
        if (!segmentDistance(toClip(a, worldToFrustum), toClip(b, worldToFrustum), view, px, py, d,
                             s) ||
            d > tolerance)
            return;
        TQ3Point3D p{a.x + s * (b.x - a.x), a.y + s * (b.y - a.y), a.z + s * (b.z - a.z)};
        float along =
            (p.x - origin.x) * dir.x + (p.y - origin.y) * dir.y + (p.z - origin.z) * dir.z;
        if (!found || (ray && along < bestT) || (!ray && d < bestLine)) {
            found = true;
            bestT = along;
            bestLine = d;
            bestPoint = p;
            haveNormal = false;
        }
    };
    for (size_t i = 0; i + 1 < mesh.segments.size(); i += 2)
        tryLine(world[mesh.segments[i]].point, world[mesh.segments[i + 1]].point,
                data.edgeTolerance);
    if (draw.fill == kQ3FillStyleEdges)
        for (size_t t = 0; t * 3 < mesh.triangles.size(); ++t)
            for (int e = 0; e < 3; ++e)
                if (mesh.edgeFlags[t] & (1 << e))
                    tryLine(world[mesh.triangles[t * 3 + e]].point,
                            world[mesh.triangles[t * 3 + (e + 1) % 3]].point, data.edgeTolerance);
    std::vector<TQ3Uns32> pts = mesh.points;
    if (draw.fill == kQ3FillStylePoints)
        for (TQ3Uns32 i : mesh.triangles)
            pts.push_back(i);
    for (TQ3Uns32 i : pts)
        tryLine(world[i].point, world[i].point, data.vertexTolerance);
    if (found) record(view, geometry, draw, bestPoint, haveNormal ? &bestNormal : nullptr, path);
}

void PickObject::testMarkerImpl(View& view, TQ3Object geometry, const TQ3XDrawState& draw,
                                const TQ3XMarker& marker, const std::vector<PathEntry>& path) {
    Clip c = toClip(marker.location.point, view.worldToWindow);
    if (c.w < kMinW) return;
    float x = c.x / c.w + static_cast<float>(marker.xOffset);
    float y = c.y / c.w + static_cast<float>(marker.yOffset);
    float tol = data.vertexTolerance;
    float w = static_cast<float>(marker.bitmap->width),
          h = static_cast<float>(marker.bitmap->height);
    if (data.point.x >= x - tol && data.point.x <= x + w + tol && data.point.y >= y - tol &&
        data.point.y <= y + h + tol)
        record(view, geometry, draw, marker.location.point, nullptr, path);
}

} // namespace q3

using namespace q3;

namespace {
PickObject* pick(TQ3Object o) {
    return check<PickObject>(o, kQ3ObjectTypePick);
}

bool validData(const TQ3WindowPointPickData* d) {
    if (!d) {
        postError(kQ3ErrorNULLParameter);
        return false;
    }
    if (!finite(d->point.x) || !finite(d->point.y) || !(d->vertexTolerance >= 0) ||
        !(d->edgeTolerance >= 0) || !finite(d->vertexTolerance) || !finite(d->edgeTolerance) ||
        enumValue(d->data.sort) < kQ3PickSortNone ||
        enumValue(d->data.sort) > kQ3PickSortFarToNear) {
        postError(kQ3ErrorInvalidParameter);
        return false;
    }
    return true;
}

const Hit* hitAt(TQ3Object o, TQ3Uns32 index) {
    PickObject* p = pick(o);
    if (!p) return nullptr;
    if (index >= p->hits.size()) {
        postError(kQ3ErrorParameterOutOfRange);
        return nullptr;
    }
    return &p->hits[index];
}
} // namespace

extern "C" {

TQ3PickObject Q3WindowPointPick_New(const TQ3WindowPointPickData* d) {
    if (!validData(d)) return nullptr;
    TQ3Object o = make<PickObject>();
    if (o) static_cast<PickObject*>(o)->data = *d;
    return o;
}

TQ3Status Q3WindowPointPick_GetData(TQ3PickObject o, TQ3WindowPointPickData* d) {
    PickObject* p = pick(o);
    if (!p || !d) return kQ3Failure;
    *d = p->data;
    return kQ3Success;
}

TQ3Status Q3WindowPointPick_SetData(TQ3PickObject o, const TQ3WindowPointPickData* d) {
    PickObject* p = pick(o);
    if (!p || !validData(d)) return kQ3Failure;
    p->data = *d;
    return kQ3Success;
}

TQ3Status Q3WindowPointPick_GetPoint(TQ3PickObject o, TQ3Point2D* pt) {
    PickObject* p = pick(o);
    if (!p || !pt) return kQ3Failure;
    *pt = p->data.point;
    return kQ3Success;
}

TQ3Status Q3WindowPointPick_SetPoint(TQ3PickObject o, const TQ3Point2D* pt) {
    PickObject* p = pick(o);
    if (!p || !pt || !finite(pt->x) || !finite(pt->y)) return kQ3Failure;
    p->data.point = *pt;
    return kQ3Success;
}

TQ3ObjectType Q3Pick_GetType(TQ3PickObject o) {
    return pick(o) ? o->type : kQ3ObjectTypeInvalid;
}

TQ3Status Q3Pick_GetData(TQ3PickObject o, TQ3PickData* d) {
    PickObject* p = pick(o);
    if (!p || !d) return kQ3Failure;
    *d = p->data.data;
    return kQ3Success;
}

TQ3Status Q3Pick_GetNumHits(TQ3PickObject o, TQ3Uns32* n) {
    PickObject* p = pick(o);
    if (!p || !n) {
        if (p) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *n = static_cast<TQ3Uns32>(p->hits.size());
    return kQ3Success;
}

TQ3Status Q3Pick_EmptyHitList(TQ3PickObject o) {
    PickObject* p = pick(o);
    if (!p) return kQ3Failure;
    p->clear();
    return kQ3Success;
}

TQ3Status Q3Pick_GetPickDetailValidMask(TQ3PickObject o, TQ3Uns32 index, TQ3PickDetail* mask) {
    const Hit* h = hitAt(o, index);
    if (!h || !mask) return kQ3Failure;
    *mask = h->valid;
    return kQ3Success;
}

TQ3Status Q3Pick_GetPickDetailData(TQ3PickObject o, TQ3Uns32 index, TQ3PickDetail detail,
                                   void* out) {
    const Hit* h = hitAt(o, index);
    if (!h) return kQ3Failure;
    if (!out) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!(h->valid & detail) || (detail & (detail - 1))) {
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    switch (detail) {
    case kQ3PickDetailMaskPickID:
        *static_cast<TQ3Uns32*>(out) = h->pickID;
        break;
    case kQ3PickDetailMaskPath: {
        auto* path = static_cast<TQ3HitPath*>(out);
        path->rootGroup = retain(h->rootGroup);
        path->depth = static_cast<TQ3Uns32>(h->positions.size());
        path->positions = nullptr;
        if (path->depth) {
            path->positions =
                static_cast<TQ3GroupPosition*>(std::malloc(path->depth * sizeof(TQ3GroupPosition)));
            if (!path->positions) {
                release(path->rootGroup);
                path->rootGroup = nullptr;
                postError(kQ3ErrorOutOfMemory);
                return kQ3Failure;
            }
            std::memcpy(path->positions, h->positions.data(),
                        path->depth * sizeof(TQ3GroupPosition));
        }
        break;
    }
    case kQ3PickDetailMaskObject:
        *static_cast<TQ3Object*>(out) = retain(h->object);
        break;
    case kQ3PickDetailMaskLocalToWorldMatrix:
        *static_cast<TQ3Matrix4x4*>(out) = h->localToWorld;
        break;
    case kQ3PickDetailMaskXYZ:
        *static_cast<TQ3Point3D*>(out) = h->point;
        break;
    case kQ3PickDetailMaskDistance:
        *static_cast<float*>(out) = h->distance;
        break;
    case kQ3PickDetailMaskNormal:
        *static_cast<TQ3Vector3D*>(out) = h->normal;
        break;
    default:
        postError(kQ3ErrorInvalidParameter);
        return kQ3Failure;
    }
    return kQ3Success;
}

TQ3Status Q3HitPath_EmptyData(TQ3HitPath* path) {
    if (!path) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    release(path->rootGroup);
    std::free(path->positions);
    *path = {};
    return kQ3Success;
}

} // extern "C"
