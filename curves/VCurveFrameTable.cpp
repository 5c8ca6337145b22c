#include "curves/VCurveFrameTable.h"

#include "curves/VCurvatureFrame.h"
#include "curves/VCurve.h"

#include <cmath>
#include <new>

KVector3D RotateVectorToVector(const KVector3D& a, const KVector3D& b, const KVector3D& v) {
    const KVector3D ua = a.Unit();
    const KVector3D ub = b.Unit();
    const KVector3D k = ua.Cross(ub);
    const float s = k.Length();
    const float c = ua.Dot(ub);
    if (s < 1e-7f) {
        if (c >= 0.0f) return v;
        // Half a turn: about the part of v across a, which keeps that part
        // (a normal stays the normal when the tangent reverses).
        KVector3D m = (v - ua * v.Dot(ua)).Unit();
        if (m.Length() == 0.0f) m = OrthogonalNormal(ua, KVector3D(0, 1, 0));
        return m * (2.0f * m.Dot(v)) - v;
    }
    const KVector3D axis = k * (1.0f / s);
    return v * c + axis.Cross(v) * s + axis * (axis.Dot(v) * (1.0f - c));
}

KVector3D OrthogonalNormal(const KVector3D& tangent, const KVector3D& n) {
    KVector3D t = tangent.Unit();
    KVector3D r = (n - t * n.Dot(t)).Unit();
    if (r.Length() > 0.5f) return r;
    KVector3D ref = std::fabs(t.x) > kFrameEps   ? KVector3D(0, 1, 0)
                    : std::fabs(t.y) > kFrameEps ? KVector3D(1, 0, 0)
                                                 : KVector3D(0, 1, 0);
    r = t.Cross(ref).Unit();
    if (r.Length() > 0.5f) return r;
    return KVector3D(0, 1, 0);
}

VCurveFrameTable::VCurveFrameTable(VCurve* owner) : curve(owner) {
    frames.reset(new (std::nothrow) VCurveFrame[kFrameCount]);
}

void VCurveFrameTable::Transport(const VCurveFrame& from, VCurveFrame& to) {
    const KVector3D d = to.tangent - from.tangent;
    KVector3D n;
    if (std::fabs(d.x) < kFrameEps && std::fabs(d.y) < kFrameEps && std::fabs(d.z) < kFrameEps)
        n = from.normal;
    else
        n = RotateVectorToVector(from.tangent, to.tangent, from.normal).Unit();
    // Rounding aside the rotated normal is already across the new tangent;
    // taking out what is left keeps every entry orthonormal.
    to.normal = OrthogonalNormal(to.tangent, n);
}

void VCurveFrameTable::Build(const KVector3D& startTangent, const KVector3D& startNormal) {
    if (!frames || !curve) return;
    KVector3D t = startTangent.Unit();
    if (t.Length() == 0.0f) t = KVector3D(1, 0, 0);
    frames[0].tangent = t;
    frames[0].normal = OrthogonalNormal(t, startNormal);
    const float len = curve->GetLength();
    for (std::int32_t i = 1; i < count; ++i) {
        KVector3D tan;
        if (!curve->GetTangentAt(float(i) * len / float(count), tan) || tan.Length() < 0.5f)
            tan = frames[i - 1].tangent;
        frames[i].tangent = tan.Unit();
        Transport(frames[i - 1], frames[i]);
    }
}

void VCurveFrameTable::Renew() {
    if (!frames || !curve) return;
    KVector3D tan;
    if (!curve->GetTangentAt(0.0f, tan) || tan.Length() < 0.5f) tan = frames[0].tangent;
    VCurveFrame start;
    start.tangent = tan.Unit();
    Transport(frames[0], start);
    Build(start.tangent, start.normal);
}

void VCurveFrameTable::Interpolate(float s, KVector3D& tangent, KVector3D& normal,
                                   KVector3D& binormal) const {
    KVector3D t(1, 0, 0), n(0, 1, 0);
    if (frames) {
        const float len = curve ? curve->GetLength() : 0.0f;
        float x = len > 0.0f ? float(count) * s / len : 0.0f;
        if (!(x >= 0.0f)) x = 0.0f;
        const std::int32_t last = count - 1;
        const std::int32_t i = x < float(last) ? std::int32_t(x) : last;
        if (i < last) {
            const float f = x - float(i);
            const VCurveFrame& a = frames[i];
            const VCurveFrame& b = frames[i + 1];
            t = (a.tangent * (1.0f - f) + b.tangent * f).Unit();
            if (t.Length() < 0.5f) t = a.tangent;
            n = OrthogonalNormal(t, a.normal * (1.0f - f) + b.normal * f);
        } else {
            t = frames[last].tangent;
            n = frames[last].normal;
        }
    }
    tangent = t;
    normal = n;
    binormal = t.Cross(n);
}
