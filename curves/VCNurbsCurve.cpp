#include "curves/VCNurbsCurve.h"

#include "curves/VCurvatureFrame.h"

#include <cmath>
#include <cstring>
#include <limits>

VCNurbsCurve::VCNurbsCurve(VCurveStatus& status, std::int32_t deg, std::int32_t pointCount) {
    status = kCurveOK;
    if (deg < 1 || deg > kCurveMaxDegree) {
        status = kCurveBadDegree;
        return;
    }
    if (pointCount < 1 || pointCount > kCurveMaxCount || deg > kCurveMaxCount) {
        status = kCurveBadPointCount;
        return;
    }
    auto cp =
        std::unique_ptr<VCurveCtrlPoints>(new (std::nothrow) VCurveCtrlPoints(status, pointCount));
    if (!cp) status = kCurveNoMemory;
    if (status != kCurveOK) return;
    auto kn =
        std::unique_ptr<VKnots>(new (std::nothrow) VKnots(status, pointCount + deg + 1, nullptr));
    if (!kn) status = kCurveNoMemory;
    if (status != kCurveOK) return;
    degree = deg;
    ctrlPoints = std::move(cp);
    knots = std::move(kn);
}

void VCNurbsCurve::Invalidate() {
    drawingData.reset();
    arcLengthData.reset();
    chordSums.reset();
}

VCurveStatus VCNurbsCurve::CheckValid() const {
    if (degree < 1 || degree > kCurveMaxDegree) return kCurveBadDegree;
    if (!ctrlPoints || !ctrlPoints->points) return kCurveMissingCtrlPoints;
    if (ctrlPoints->count < 1) return kCurveBadPointCount;
    if (!knots || !knots->values || knots->count < 2) return kCurveMissingKnots;
    if (std::int64_t(knots->count) != std::int64_t(ctrlPoints->count) + degree + 1)
        return kCurveBadKnotCount;
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::Set(std::int32_t deg, std::int32_t pointCount, const KVector3D* pts,
                               std::int32_t knotCount, const double* knotValues,
                               std::int32_t isClosed) {
    ctrlPoints.reset();
    knots.reset();
    Invalidate();
    arcLength = 0.0f;
    if (deg < 1 || deg > kCurveMaxDegree) return kCurveBadDegree;
    if (!pts) return kCurveMissingCtrlPoints;
    if (pointCount < 1 || pointCount > kCurveMaxCount) return kCurveBadPointCount;
    if (!knotValues || knotCount < 2) return kCurveMissingKnots;
    if (std::int64_t(knotCount) != std::int64_t(pointCount) + deg + 1) return kCurveBadKnotCount;
    for (std::int32_t i = 0; i < pointCount; ++i) {
        const KVector3D& p = pts[i];
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z) ||
            !std::isfinite(p.w))
            return kCurveMissingCtrlPoints;
    }
    VCurveStatus st = kCurveOK;
    auto kn = std::unique_ptr<VKnots>(new (std::nothrow) VKnots(st, knotCount, knotValues));
    if (!kn) return kCurveNoMemory;
    if (st != kCurveOK) return st;
    st = kn->Validate(deg, pointCount);
    if (st != kCurveOK) return st;
    auto cp =
        std::unique_ptr<VCurveCtrlPoints>(new (std::nothrow) VCurveCtrlPoints(st, pointCount));
    if (!cp) return kCurveNoMemory;
    if (st != kCurveOK) return st;
    std::memcpy(static_cast<void*>(cp->points.get()), pts,
                sizeof(KVector3D) * std::size_t(pointCount));
    cp->UpdateRational();
    cp->UpdateDimension();
    degree = deg;
    closed = isClosed ? 1 : 0;
    ctrlPoints = std::move(cp);
    knots = std::move(kn);
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::GetDomain(double& uMin, double& uMax) const {
    if (!knots || !knots->values || knots->count < 2) return kCurveMissingKnots;
    uMin = knots->First();
    uMax = knots->Last();
    return kCurveOK;
}

std::int32_t VCNurbsCurve::GetControlPointCount() const {
    return ctrlPoints ? ctrlPoints->count : 0;
}

VCurveStatus VCNurbsCurve::GetControlPoints(std::int32_t& count, const KVector3D*& pointer) const {
    if (!ctrlPoints || !ctrlPoints->points) return kCurveMissingCtrlPoints;
    count = ctrlPoints->count;
    pointer = ctrlPoints->points.get();
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::GetControlPoint(std::int32_t index, KVector3D& point) const {
    if (!ctrlPoints) return kCurveMissingCtrlPoints;
    return ctrlPoints->GetPoint(index, point);
}

VCurveStatus VCNurbsCurve::SetControlPoint(std::int32_t index, const KVector3D& point) {
    VCurveStatus st = kCurveMissingCtrlPoints;
    if (ctrlPoints) {
        st = ctrlPoints->SetPoint(index, point);
        if (st == kCurveOK && closed) {
            std::int32_t last = ctrlPoints->count - 1;
            if (index == 0)
                ctrlPoints->SetPoint(last, point);
            else if (index == last)
                ctrlPoints->SetPoint(0, point);
        }
    }
    Invalidate();
    return st;
}

VCurveStatus VCNurbsCurve::SetControlPoints(const KVector3D* pts) {
    VCurveStatus st = kCurveOK;
    if (!ctrlPoints || !ctrlPoints->points || !pts) {
        st = kCurveMissingCtrlPoints;
    } else {
        for (std::int32_t i = 0; i < ctrlPoints->count; ++i)
            ctrlPoints->points[i] = pts[i];
        ctrlPoints->UpdateRational();
        ctrlPoints->UpdateDimension();
    }
    Invalidate();
    return st;
}

VCurveStatus VCNurbsCurve::AddToControlPoint(std::int32_t index, const KVector3D& delta) {
    KVector3D p;
    VCurveStatus st = GetControlPoint(index, p);
    if (st == kCurveOK) {
        KVector3D e = ToEuclidean(p);
        float w = p.w;
        KVector3D moved{(e.x + delta.x) * w, (e.y + delta.y) * w, (e.z + delta.z) * w, w};
        st = SetControlPoint(index, moved);
    }
    Invalidate();
    return st;
}

VCurveStatus VCNurbsCurve::Translate(const KVector3D& delta) {
    VCurveStatus st = ctrlPoints ? ctrlPoints->Translate(delta) : kCurveMissingCtrlPoints;
    Invalidate();
    return st;
}

VCurveStatus VCNurbsCurve::Evaluate(double u, bool fromRight, KVector3D& point) const {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    const std::int32_t p = degree;
    double local[16];
    std::unique_ptr<double[]> heap;
    double* N = local;
    if (p + 1 > 16) {
        heap = NewCurveArray<double>(std::int64_t(p) + 1);
        if (!heap) return kCurveNoMemory;
        N = heap.get();
    }
    std::int32_t span = 0;
    st = knots->BasisFuns(p, u, fromRight, N, span);
    if (st != kCurveOK) return st;
    const KVector3D* P = ctrlPoints->points.get();
    float x = 0.0f, y = 0.0f, z = 0.0f, w = 0.0f;
    for (std::int32_t j = 0; j <= p; ++j) {
        const KVector3D& c = P[span - p + j];
        float n = float(N[j]);
        x += n * c.x;
        y += n * c.y;
        z += n * c.z;
        w += n * c.w;
    }
    if (w == 0.0f || !std::isfinite(w)) return kCurveDivisionOverflow;
    KVector3D r{x / w, y / w, z / w, 1.0f};
    if (!std::isfinite(r.x) || !std::isfinite(r.y) || !std::isfinite(r.z))
        return kCurveDivisionOverflow;
    point = r;
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::CalcLength() {
    arcLength = 0.0f;
    double uMin = 0.0, uMax = 0.0;
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    GetDomain(uMin, uMax);
    float sum = 0.0f;
    KVector3D prev;
    for (int i = 0; i <= 100; ++i) {
        float u = float((uMax - uMin) * i / 100.0 + uMin);
        double ud = u;
        if (ud < uMin) ud = uMin;
        if (ud > uMax) ud = uMax;
        KVector3D pt;
        st = Evaluate(ud, true, pt);
        if (st != kCurveOK) return st;
        if (i > 0) sum += (pt - prev).Length();
        prev = pt;
    }
    arcLength = std::isfinite(sum) ? sum : 0.0f;
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::BuildChordSums() const {
    double uMin = 0.0, uMax = 0.0;
    GetDomain(uMin, uMax);
    auto sums = NewCurveArray<float>(kChordCount + 1);
    if (!sums) return kCurveNoMemory;
    KVector3D prev;
    VCurveStatus st = Evaluate(uMin, true, prev);
    if (st != kCurveOK) return st;
    float sum = 0.0f;
    sums[0] = 0.0f;
    for (int i = 1; i <= kChordCount; ++i) {
        double ui = (uMax - uMin) * i / double(kChordCount) + uMin;
        KVector3D pt;
        if ((st = Evaluate(ui > uMax ? uMax : ui, true, pt)) != kCurveOK) return st;
        sum += (pt - prev).Length();
        sums[i] = sum;
        prev = pt;
    }
    chordEnd = prev;
    chordSums = std::move(sums);
    return kCurveOK;
}

bool VCNurbsCurve::FindAtLength(float s, KVector3D& point, double& u) const {
    if (!(s >= 0.0f && s < arcLength)) return false;
    if (CheckValid() != kCurveOK) return false;
    // The running chord sums over the double-precision parameters are kept
    // until the next change of the curve, so that a search costs one
    // evaluation instead of a walk of a hundred.
    if (!chordSums && BuildChordSums() != kCurveOK) return false;
    double uMin = 0.0, uMax = 0.0;
    GetDomain(uMin, uMax);
    const float* sums = chordSums.get();
    // The first sample whose running sum exceeds s.
    int lo = 0, hi = kChordCount + 1;
    while (hi - lo > 1) {
        int mid = (lo + hi) / 2;
        if (sums[mid] > s)
            hi = mid;
        else
            lo = mid;
    }
    if (hi > kChordCount) {
        // s lies just below arcLength but the double sampling summed a
        // little less than the float one: the answer is the end of the curve.
        u = uMax;
        point = chordEnd;
        return true;
    }
    const int i = hi;
    const float prevSum = sums[i - 1], sum = sums[i];
    double f = (double(s) - prevSum) / (double(sum) - prevSum);
    double found = ((i - 1) + f) * (uMax - uMin) / double(kChordCount) + uMin;
    if (found > uMax) found = uMax;
    if (Evaluate(found, true, point) != kCurveOK) return false;
    u = found;
    return true;
}

bool VCNurbsCurve::GetPointAt(float s, KVector3D& point) {
    double u = 0.0;
    KVector3D found;
    if (!FindAtLength(s, found, u)) return false;
    point = found;
    return true;
}

bool VCNurbsCurve::GetTangentAt(float s, KVector3D& tangent) {
    double u = 0.0, uMin = 0.0, uMax = 0.0;
    KVector3D point;
    if (CheckValid() != kCurveOK) return false;
    GetDomain(uMin, uMax);
    if (!FindAtLength(s, point, u)) {
        // The far end (s = arcLength) has a tangent too: take it just inside.
        if (!(s >= arcLength) || !std::isfinite(s)) return false;
        u = uMax;
        Evaluate(u, true, point);
    }
    float du = float((uMax - uMin) / 1000.0);
    KVector3D q;
    double uq = u + du;
    KVector3D a = point;
    if (uq > uMax) {
        // Step backwards at the end so that the difference stays in the domain.
        uq = u - du;
        Evaluate(uq, true, q);
        tangent = (a - q).Unit();
    } else {
        Evaluate(uq, true, q);
        tangent = (q - a).Unit();
    }
    return tangent.Length() > 0.0f;
}

bool VCNurbsCurve::GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                              KVector3D& binormal) {
    if (CheckValid() != kCurveOK) return false;
    double uMin = 0.0, uMax = 0.0;
    GetDomain(uMin, uMax);
    double u = 0.0;
    KVector3D pt;
    if (!FindAtLength(s, pt, u)) {
        if (!std::isfinite(s)) return false;
        // Off the measured range (s = arcLength in particular): the nearer end.
        u = s >= arcLength ? uMax : uMin;
        if (Evaluate(u, true, pt) != kCurveOK) return false;
    }
    const double du = (uMax - uMin) / 1000.0;
    if (u < uMin + du) {
        u = uMin + du + 0.00001;
        Evaluate(u, true, pt);
    } else if (u > uMax - du) {
        u = uMax - du - 0.00001;
        Evaluate(u, true, pt);
    }
    auto eval = [&](double v, KVector3D& out) {
        if (v < uMin) v = uMin;
        if (v > uMax) v = uMax;
        Evaluate(v, true, out);
    };
    KVector3D prev = pt, next = pt, mid = pt;
    eval(u + du, next);
    eval(u - du, prev);
    KVector3D t, n;
    bool ok = CurvatureFrame(prev, mid, next, t, n);
    if (!ok) {
        if (u + 2 * du <= uMax) {
            prev = mid;
            mid = next;
            eval(u + 2 * du, next);
        } else {
            double v = uMax - du;
            eval(v - du, prev);
            eval(v, mid);
            eval(v + du, next);
        }
        ok = CurvatureFrame(prev, mid, next, t, n);
    }
    if (!ok) {
        // A straight stretch: any normal perpendicular to the tangent will do.
        t = (next - prev).Unit();
        if (t.Length() == 0.0f) t = KVector3D(1.0f, 0.0f, 0.0f);
        KVector3D ref =
            std::fabs(t.y) > kFrameEps ? KVector3D(1.0f, 0.0f, 0.0f) : KVector3D(0.0f, 1.0f, 0.0f);
        n = t.Cross(ref).Unit();
        if (n.Length() == 0.0f) n = t.Cross(KVector3D(0.0f, 0.0f, 1.0f)).Unit();
    }
    point = pt;
    tangent = t;
    normal = n;
    binormal = t.Cross(n);
    return true;
}
