#include "curves/VCurve.h"

#include "curves/VCurveFrameTable.h"

#include <cmath>
#include <new>

VCurve::VCurve() = default;
VCurve::~VCurve() = default;

void VCurve::MakeTable(const KVector3D& tangent, const KVector3D& normal) {
    frameTable.reset(new (std::nothrow) VCurveFrameTable(this));
    if (frameTable && !frameTable->frames) frameTable.reset();
    if (frameTable) frameTable->Build(tangent, normal);
}

void VCurve::SetFrameMode(std::int32_t mode) {
    if (frameMode == kFrameModeTable) frameTable.reset();
    frameMode = mode;
    if (mode == kFrameModeTable) {
        KVector3D p, t(1, 0, 0), n(0, 1, 0), b;
        GetFrameAt(0.0f, p, t, n, b);
        MakeTable(t, n);
    }
}

void VCurve::SetStartFrame(const KVector3D& tangent, const KVector3D& normal) {
    frameTable.reset();
    frameMode = kFrameModeTable;
    MakeTable(tangent, normal);
}

void VCurve::Rebuild() {
    Recalculate();
    if (frameMode != kFrameModeTable) return;
    if (frameTable)
        frameTable->Renew();
    else
        SetFrameMode(kFrameModeTable);
}

bool VCurve::GetFrame(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                      KVector3D& binormal) {
    const float len = GetLength();
    if (!(len >= 0.00001f) || !std::isfinite(len) || !std::isfinite(s)) return false;
    if (IsClosed()) {
        // One division instead of repeated subtraction, so that a far-off s
        // cannot keep the loop going.
        s = std::fmod(s, len);
        if (s < 0.0f) s += len;
        if (!(s < len)) s = 0.0f;
    } else if (s < 0.0f || s > len) {
        return false;
    }
    if (frameMode == kFrameModeTable && frameTable) {
        KVector3D p;
        if (!GetPointAt(s, p)) {
            KVector3D t, n, b;
            if (!GetFrameAt(s, p, t, n, b)) return false;
        }
        point = p;
        frameTable->Interpolate(s, tangent, normal, binormal);
        return true;
    }
    return GetFrameAt(s, point, tangent, normal, binormal);
}

bool VCurve::GetStartFrame(KVector3D& tangent, KVector3D& normal) {
    if (frameMode == kFrameModeTable && frameTable) {
        tangent = frameTable->frames[0].tangent;
        normal = frameTable->frames[0].normal;
        return true;
    }
    KVector3D p, b;
    return GetFrameAt(0.0f, p, tangent, normal, b);
}
