// Equal-chord tessellation for picking, nearest-sample search and the
// arc-length table of a NURBS curve.
#include "curves/VCNurbsCurve.h"

#include <cmath>
#include <limits>
#include <vector>

VCurveStatus VCNurbsCurve::SampleSpan(double u0, double u1, std::int32_t n, double tolerance,
                                      KVector3D* points, double* params) const {
    std::vector<double> c(std::size_t(n), 0.0);
    std::vector<double> next(std::size_t(n), 0.0);
    params[0] = u0;
    params[n - 1] = u1;
    for (std::int32_t i = 1; i < n - 1; ++i)
        params[i] = u0 + i * (u1 - u0) / n;
    for (int pass = 1; pass <= 50; ++pass) {
        for (std::int32_t i = 0; i < n; ++i) {
            VCurveStatus st = Evaluate(params[i], true, points[i]);
            if (st != kCurveOK) return st;
        }
        c[0] = 0.0;
        for (std::int32_t i = 1; i < n; ++i)
            c[i] = c[i - 1] + (points[i] - points[i - 1]).Length();
        if (WouldOverflow(c[n - 1], double(n - 1), VCurveOp::Divide)) return kCurveDivisionOverflow;
        const double avg = c[n - 1] / (n - 1);
        bool even = true;
        for (std::int32_t i = 1; i < n && even; ++i) {
            double dev = std::fabs(c[i] - c[i - 1] - avg);
            if (WouldOverflow(dev, avg, VCurveOp::Divide)) {
                if (dev == 0.0 && avg != 0.0) continue;
                return kCurveDivisionOverflow;
            }
            if (dev / avg > tolerance) even = false;
        }
        if (even || pass == 50) return kCurveOK;
        next[0] = u0;
        next[n - 1] = u1;
        for (std::int32_t i = 1; i < n - 1; ++i) {
            const double target = i * avg;
            std::int32_t j = 1;
            while (j < n - 1 && c[j] < target)
                ++j;
            double span = c[j] - c[j - 1];
            double num = (target - c[j - 1]) * (params[j] - params[j - 1]);
            if (WouldOverflow(num, span, VCurveOp::Divide)) {
                if (num == 0.0 && span != 0.0) {
                    next[i] = params[j - 1];
                    continue;
                }
                return kCurveDivisionOverflow;
            }
            next[i] = params[j - 1] + num / span;
        }
        for (std::int32_t i = 0; i < n; ++i)
            params[i] = next[i];
    }
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::Tessellate(double tolerance) {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    const std::int32_t n = pointsPerSpan < 2 ? 2 : pointsPerSpan;
    const std::int32_t spans = knots->CountSpans(degree);
    if (spans < 1) return kCurveBadKnotCount;
    const std::int64_t total = std::int64_t(spans) * n;
    auto data = std::unique_ptr<VCurveDrawingData>(new (std::nothrow) VCurveDrawingData());
    if (!data) return kCurveNoMemory;
    data->points = NewCurveArray<KVector3D>(total);
    data->parameters = NewCurveArray<double>(total);
    if (!data->points || !data->parameters) return kCurveNoMemory;
    const double* U = knots->values.get();
    std::int64_t at = 0;
    try {
        for (std::int32_t i = degree; i <= knots->count - degree - 2; ++i) {
            if (!(U[i + 1] - U[i] > kCurveEqualEps)) continue;
            st = SampleSpan(U[i], U[i + 1], n, tolerance, data->points.get() + at,
                            data->parameters.get() + at);
            if (st != kCurveOK) return st;
            at += n;
        }
    } catch (const std::bad_alloc&) {
        return kCurveNoMemory;
    }
    data->count = std::int32_t(at);
    drawingData = std::move(data);
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::FindNearest(const KVector3D& point, double& distance, double& u) {
    drawingData.reset();
    pointsPerSpan = 30;
    VCurveStatus st = Tessellate(0.01);
    if (st != kCurveOK) return st;
    double best = std::numeric_limits<double>::infinity();
    std::int32_t bestIndex = -1;
    for (std::int32_t i = 0; i < drawingData->count; ++i) {
        const KVector3D& q = drawingData->points[i];
        double dx = double(q.x) - point.x, dy = double(q.y) - point.y, dz = double(q.z) - point.z;
        double d = dx * dx + dy * dy + dz * dz;
        if (d < best) {
            best = d;
            bestIndex = i;
        }
    }
    if (bestIndex < 0) return kCurveBadPointCount;
    distance = best;
    u = drawingData->parameters[bestIndex];
    return kCurveOK;
}

double VCNurbsCurve::MeasureInterval(double u0, double u1, const KVector3D& p0, const KVector3D& p1,
                                     double tolerance, int depth) const {
    const double chord = (p1 - p0).Length();
    const double um = 0.5 * (u0 + u1);
    KVector3D pm = p0;
    if (Evaluate(um, true, pm) != kCurveOK) return chord;
    const double polygon = (pm - p0).Length() + (p1 - pm).Length();
    if (depth >= 8 || polygon - chord <= tolerance || polygon - chord <= 1e-6 * polygon)
        return polygon;
    return MeasureInterval(u0, um, p0, pm, tolerance * 0.5, depth + 1) +
           MeasureInterval(um, u1, pm, p1, tolerance * 0.5, depth + 1);
}

VCurveStatus VCNurbsCurve::BuildArcLengthTable(std::int32_t count, double tolerance) {
    VCurveStatus st = CheckValid();
    if (st != kCurveOK) return st;
    if (count < 2 || count > kCurveMaxCount) return kCurveBadPointCount;
    if (!(tolerance > 0.0)) tolerance = 1e-6;
    auto table = std::unique_ptr<VCNURBSArcLenthData>(new (std::nothrow) VCNURBSArcLenthData());
    if (!table) return kCurveNoMemory;
    table->parameters = NewCurveArray<double>(count);
    table->lengths = NewCurveArray<double>(count);
    if (!table->parameters || !table->lengths) return kCurveNoMemory;
    double uMin = 0.0, uMax = 0.0;
    GetDomain(uMin, uMax);
    KVector3D prev;
    if ((st = Evaluate(uMin, true, prev)) != kCurveOK) return st;
    table->parameters[0] = uMin;
    table->lengths[0] = 0.0;
    for (std::int32_t i = 1; i < count; ++i) {
        double u = i == count - 1 ? uMax : uMin + (uMax - uMin) * i / (count - 1);
        KVector3D pt;
        if ((st = Evaluate(u, true, pt)) != kCurveOK) return st;
        table->parameters[i] = u;
        table->lengths[i] =
            table->lengths[i - 1] +
            MeasureInterval(table->parameters[i - 1], u, prev, pt, tolerance / (count - 1), 0);
        prev = pt;
    }
    table->count = count;
    arcLengthData = std::move(table);
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::GetParameterAt(double s, double& u) const {
    if (!arcLengthData || arcLengthData->count < 2) return kCurveNoSuchOperation;
    const VCNURBSArcLenthData& t = *arcLengthData;
    const std::int32_t n = t.count;
    if (std::isnan(s)) return kCurveParamOutOfRange;
    if (s <= t.lengths[0]) {
        u = t.parameters[0];
        return kCurveOK;
    }
    if (s >= t.lengths[n - 1] - kCurveEqualEps) {
        u = t.parameters[n - 1];
        return kCurveOK;
    }
    std::int32_t lo = 0, hi = n - 1;
    while (hi - lo > 1) {
        std::int32_t mid = lo + (hi - lo) / 2;
        if (t.lengths[mid] <= s)
            lo = mid;
        else
            hi = mid;
    }
    double span = t.lengths[hi] - t.lengths[lo];
    double f = span > 0.0 ? (s - t.lengths[lo]) / span : 0.0;
    u = t.parameters[lo] + f * (t.parameters[hi] - t.parameters[lo]);
    return kCurveOK;
}

VCurveStatus VCNurbsCurve::GetTotalLength(double tolerance, double& length) const {
    if (arcLengthData && arcLengthData->count > 0) {
        length = arcLengthData->lengths[arcLengthData->count - 1];
        return kCurveOK;
    }
    return LengthByBezierPieces(tolerance, length);
}
