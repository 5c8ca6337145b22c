#include "curves/VCurveAnalytical.h"

#include "curves/VCurvatureFrame.h"

#include <cmath>

VCurveAnalytical::VCurveAnalytical(float min, float max, float step)
    : paramMin(min), paramMax(max), paramStep(step) {}

template <class Visit> void VCurveAnalytical::WalkGrid(Visit visit) const {
    if (!std::isfinite(paramMin) || !std::isfinite(paramMax) || !(paramStep > 0.0f) ||
        !std::isfinite(paramStep))
        return;
    std::int32_t n = 0;
    for (float t = paramMin; t <= paramMax && n < kMaxSamples; t += paramStep, ++n) {
        KVector3D p;
        Evaluate(t, p);
        if (!visit(t, p)) return;
        // A step lost in the rounding of t would never reach the end.
        if (t + paramStep == t) return;
    }
}

void VCurveAnalytical::Recalculate() {
    float acc = 0.0f;
    std::int32_t n = 0;
    KVector3D prev;
    WalkGrid([&](float, const KVector3D& p) {
        if (n > 0) acc += (p - prev).Length();
        prev = p;
        ++n;
        return true;
    });
    sampleCount = n;
    length = std::isfinite(acc) ? acc : 0.0f;
}

bool VCurveAnalytical::FindParameterAt(float s, KVector3D& point, float& t) const {
    if (!(s >= 0.0f && s < length)) return false;
    float acc = 0.0f;
    std::int32_t n = 0;
    KVector3D prev;
    bool found = false;
    float foundT = 0.0f;
    WalkGrid([&](float ts, const KVector3D& p) {
        if (n++ > 0) {
            float before = acc;
            acc += (p - prev).Length();
            if (acc > s) {
                foundT = (s - before) / (acc - before) * paramStep + (ts - paramStep);
                found = true;
                return false;
            }
        }
        prev = p;
        return true;
    });
    if (!found) return false;
    Evaluate(foundT, point);
    t = foundT;
    return true;
}

bool VCurveAnalytical::Locate(float s, KVector3D& point, float& t) const {
    if (FindParameterAt(s, point, t)) return true;
    if (!std::isfinite(s) || sampleCount < 1) return false;
    if (s < 0.0f) {
        t = paramMin;
        Evaluate(t, point);
        return true;
    }
    // At or past the end: the last grid sample, where the chord polygon ends.
    float last = paramMin;
    WalkGrid([&](float ts, const KVector3D&) {
        last = ts;
        return true;
    });
    t = last;
    Evaluate(t, point);
    return true;
}

bool VCurveAnalytical::GetPointAt(float s, KVector3D& point) {
    float t = 0.0f;
    return FindParameterAt(s, point, t);
}

bool VCurveAnalytical::GetTangentAt(float s, KVector3D& tangent) {
    KVector3D point, q;
    float t = 0.0f;
    if (!Locate(s, point, t)) return false;
    Evaluate(t + paramStep / 2.0f, q);
    KVector3D d = q - point;
    if (d.Length() < 1e-12f) {
        // Half a step further is the same point: look half a step back.
        Evaluate(t - paramStep / 2.0f, q);
        d = point - q;
    }
    KVector3D u = d.Unit();
    if (u.Length() < 0.5f) return false;
    tangent = u;
    return true;
}

void VCurveAnalytical::SampleForConversion(std::int32_t& count, KVector3D* points,
                                           KVector3D& startTangent, KVector3D& endTangent,
                                           KVector3D& startNormal) {
    if (!points) {
        count = 0;
        return;
    }
    for (std::int32_t i = 0; i < kConversionSamples; ++i) {
        float t = (paramMax - paramMin) * float(i) / float(kConversionSamples - 1) + paramMin;
        Evaluate(t, points[i]);
    }
    if (closed) points[kConversionSamples - 1] = points[0];
    KVector3D p, t(1, 0, 0), n(0, 1, 0), b;
    if (!GetFrame(0.0f, p, t, n, b)) {
        t = KVector3D(1, 0, 0);
        n = KVector3D(0, 1, 0);
    }
    startTangent = t;
    startNormal = n;
    if (closed) {
        endTangent = t;
    } else {
        // The step of t taken from the arc length stands as the conversion
        // has always done it; a path shorter than a step asks at its start.
        KVector3D e;
        endTangent = GetTangentAt(length - paramStep, e) ? e : t;
    }
    count = kConversionSamples;
}

std::int32_t VCurveAnalytical::GetGridPoints(KVector3D* out, std::int32_t capacity) const {
    std::int32_t n = 0;
    WalkGrid([&](float, const KVector3D& p) {
        if (out && n < capacity) out[n] = p;
        ++n;
        return true;
    });
    return n;
}

bool VCurveAnalytic2D::GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                                  KVector3D& binormal) {
    KVector3D p, q;
    float t = 0.0f;
    if (!Locate(s, p, t)) return false;
    Evaluate(t + paramStep / 2.0f, q);
    KVector3D d(q.x - p.x, q.y - p.y, 0.0f);
    if (d.Length() < 1e-12f) {
        Evaluate(t - paramStep / 2.0f, q);
        d = KVector3D(p.x - q.x, p.y - q.y, 0.0f);
    }
    KVector3D tan = d.Unit();
    if (tan.Length() < 0.5f) tan = KVector3D(1, 0, 0);
    point = p;
    tangent = tan;
    normal = KVector3D(-tan.y, tan.x, 0.0f);
    binormal = tan.Cross(normal);
    return true;
}

bool VCurveAnalytic3D::GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                                  KVector3D& binormal) {
    KVector3D p;
    float t = 0.0f;
    if (!Locate(s, p, t)) return false;
    const float step = paramStep;
    KVector3D next, prev, mid = p;
    Evaluate(t + step / 5.0f, next);
    Evaluate(t - step / 5.0f, prev);
    KVector3D tan, nor;
    bool ok = CurvatureFrame(prev, mid, next, tan, nor);
    if (!ok) {
        prev = mid;
        mid = next;
        Evaluate(t + 2.0f * step / 5.0f, next);
        ok = CurvatureFrame(prev, mid, next, tan, nor);
    }
    if (!ok) {
        // A straight stretch: the normal comes from a reference axis.
        tan = (next - prev).Unit();
        if (tan.Length() < 0.5f) tan = KVector3D(1, 0, 0);
        KVector3D ref = std::fabs(tan.x) > kFrameEps   ? KVector3D(0, 1, 0)
                        : std::fabs(tan.y) > kFrameEps ? KVector3D(1, 0, 0)
                                                       : KVector3D(0, 1, 0);
        nor = tan.Cross(ref).Unit();
    }
    point = p;
    tangent = tan;
    normal = nor;
    binormal = tan.Cross(nor);
    return true;
}
