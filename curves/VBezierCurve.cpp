#include "curves/VBezierCurve.h"

#include <cmath>
#include <vector>

VCurveStatus VBezierHandle::Set(KVector3D* a, KVector3D* h, KVector3D* na, VCNurbsCurve* c,
                                KVector3D* nh) {
    if (!a || !h || (na == nullptr) != (nh == nullptr)) return kCurveMissingHandlePointer;
    anchor = a;
    handle = h;
    neighbourAnchor = na;
    curve = c;
    neighbourHandle = nh;
    return kCurveOK;
}

VCurveStatus VBezierHandle::MoveAnchor(const KVector3D& point) {
    if (!anchor || !handle) return kCurveMissingHandlePointer;
    const float w = anchor->w;
    KVector3D offset;
    if (std::fabs(double(w) - 1.0) < kCurveEqualEps) {
        offset = KVector3D(point.x - anchor->x, point.y - anchor->y, point.z - anchor->z);
        *anchor = KVector3D(point.x, point.y, point.z, w);
    } else {
        const KVector3D old = ToEuclidean(*anchor);
        offset = KVector3D(point.x - old.x, point.y - old.y, point.z - old.z);
        *anchor = KVector3D(point.x * w, point.y * w, point.z * w, w);
    }
    auto carry = [&](KVector3D* p) {
        if (!p) return;
        p->x += offset.x * p->w;
        p->y += offset.y * p->w;
        p->z += offset.z * p->w;
    };
    carry(handle);
    carry(neighbourHandle);
    if (neighbourAnchor) *neighbourAnchor = *anchor;
    if (curve) curve->Invalidate();
    return kCurveOK;
}

VBezierCurve::VBezierCurve()
    : startHandle(new (std::nothrow) VBezierHandle()),
      endHandle(new (std::nothrow) VBezierHandle()) {}

VBezierCurve::VBezierCurve(VCurveStatus& status, std::int32_t deg)
    : VCNurbsCurve(status, deg, deg + 1), placeTag(1) {
    if (status != kCurveOK) return;
    for (std::int32_t i = 0; i <= deg; ++i) {
        knots->values[i] = 0.0;
        knots->values[deg + 1 + i] = 1.0;
        ctrlPoints->points[i].w = 1.0f;
    }
}

VCurveStatus VBezierCurve::SetPoints(std::int32_t deg, const VCurveCtrlPoints* points,
                                     std::int32_t isClosed) {
    Invalidate();
    if (deg < 1) return kCurveBadDegree;
    if (!points || !points->points) return kCurveMissingCtrlPoints;
    if (points->count < 1) return kCurveBadPointCount;
    if (points->dimension != 2 && points->dimension != 3) return kCurveBadDimension;
    if (deg != points->count - 1) return kCurveBadKnotCount;
    try {
        std::vector<double> U(std::size_t(2 * (deg + 1)), 0.0);
        for (std::int32_t i = deg + 1; i < 2 * (deg + 1); ++i)
            U[std::size_t(i)] = 1.0;
        return Set(deg, points->count, points->points.get(), 2 * (deg + 1), U.data(), isClosed);
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
}

VCurveStatus VBezierCurve::SetHandles(VBezierCurve* startNeighbour, VBezierCurve* endNeighbour) {
    if (!ctrlPoints || !ctrlPoints->points || ctrlPoints->count < 2) return kCurveMissingCtrlPoints;
    if (!startHandle) startHandle.reset(new (std::nothrow) VBezierHandle());
    if (!endHandle) endHandle.reset(new (std::nothrow) VBezierHandle());
    if (!startHandle || !endHandle) return kCurveNoMemory;
    KVector3D* P = ctrlPoints->points.get();
    const std::int32_t last = ctrlPoints->count - 1;
    // The neighbour's facing end: the last two points of the one before,
    // the first two of the one after.
    auto ends = [](VBezierCurve* n, bool atEnd, KVector3D*& a, KVector3D*& h) {
        a = h = nullptr;
        if (!n || !n->ctrlPoints || !n->ctrlPoints->points || n->ctrlPoints->count < 2) return;
        KVector3D* Q = n->ctrlPoints->points.get();
        const std::int32_t nl = n->ctrlPoints->count - 1;
        a = atEnd ? &Q[nl] : &Q[0];
        h = atEnd ? &Q[nl - 1] : &Q[1];
    };
    KVector3D *sa, *sh, *ea, *eh;
    ends(startNeighbour, true, sa, sh);
    ends(endNeighbour, false, ea, eh);
    VCurveStatus st = startHandle->Set(&P[0], &P[1], sa, this, sh);
    if (st != kCurveOK) return st;
    return endHandle->Set(&P[last], &P[last - 1], ea, this, eh);
}
