#include "curves/VCurveCtrlPoints.h"

#include <cmath>
#include <cstring>
#include <limits>

KVector3D ToEuclidean(const KVector3D& h) {
    if (h.w == 0.0f) return {h.x, h.y, h.z, 1.0f};
    return {h.x / h.w, h.y / h.w, h.z / h.w, 1.0f};
}

VCurveCtrlPoints::VCurveCtrlPoints(VCurveStatus& status, std::int32_t n) {
    status = kCurveOK;
    if (n < 1 || n > kCurveMaxCount) {
        status = kCurveBadPointCount;
        return;
    }
    points = NewCurveArray<KVector3D>(n);
    if (!points) {
        status = kCurveNoMemory;
        return;
    }
    count = n;
}

std::unique_ptr<VCurveCtrlPoints> VCurveCtrlPoints::Clone(VCurveStatus& status) const {
    auto copy = std::unique_ptr<VCurveCtrlPoints>(new (std::nothrow) VCurveCtrlPoints());
    if (!copy) {
        status = kCurveNoMemory;
        return nullptr;
    }
    status = kCurveOK;
    copy->dimension = dimension;
    copy->rational = rational;
    if (!points || count < 1) return copy;
    copy->points = NewCurveArray<KVector3D>(count);
    if (!copy->points) {
        status = kCurveNoMemory;
        return copy;
    }
    copy->count = count;
    std::memcpy(static_cast<void*>(copy->points.get()), points.get(),
                sizeof(KVector3D) * std::size_t(count));
    return copy;
}

VCurveStatus VCurveCtrlPoints::SetPoint(std::int32_t index, const KVector3D& point) {
    if (!points) return kCurveMissingCtrlPoints;
    if (index < 0 || index >= count) return kCurveBadPointCount;
    points[index] = point;
    if (std::fabs(double(point.z)) >= kCurveEqualEps) dimension = 3;
    return kCurveOK;
}

VCurveStatus VCurveCtrlPoints::GetPoint(std::int32_t index, KVector3D& point) const {
    if (!points) return kCurveMissingCtrlPoints;
    if (index < 0 || index >= count) return kCurveBadPointCount;
    point = points[index];
    return kCurveOK;
}

VCurveStatus VCurveCtrlPoints::GetEuclidean(std::int32_t first, std::int32_t last,
                                            KVector3D* out) const {
    if (!points) return kCurveMissingCtrlPoints;
    if (!out || first < 0 || last >= count || first > last) return kCurveBadPointCount;
    for (std::int32_t i = first; i <= last; ++i)
        out[i - first] = ToEuclidean(points[i]);
    return kCurveOK;
}

VCurveStatus VCurveCtrlPoints::Translate(const KVector3D& delta) {
    if (!points) return kCurveMissingCtrlPoints;
    for (std::int32_t i = 0; i < count; ++i) {
        KVector3D& p = points[i];
        float w = p.w;
        KVector3D e = ToEuclidean(p);
        p = {(e.x + delta.x) * w, (e.y + delta.y) * w, (e.z + delta.z) * w, w};
    }
    if (std::fabs(double(delta.z)) >= kCurveEqualEps) dimension = 3;
    return kCurveOK;
}

VCurveStatus VCurveCtrlPoints::GetBounds(double& minWeight, double& maxWeight, double& minNorm,
                                         double& maxNorm) const {
    if (!points || count < 1) return kCurveMissingCtrlPoints;
    minWeight = minNorm = std::numeric_limits<double>::max();
    maxWeight = maxNorm = 0.0;
    for (std::int32_t i = 0; i < count; ++i) {
        double w = points[i].w;
        KVector3D e = ToEuclidean(points[i]);
        double norm = std::sqrt(double(e.x) * e.x + double(e.y) * e.y + double(e.z) * e.z);
        if (w < minWeight) minWeight = w;
        if (w > maxWeight) maxWeight = w;
        if (norm < minNorm) minNorm = norm;
        if (norm > maxNorm) maxNorm = norm;
    }
    return kCurveOK;
}

void VCurveCtrlPoints::UpdateRational() {
    rational = 0;
    for (std::int32_t i = 0; points && i < count; ++i)
        if (std::fabs(double(points[i].w) - 1.0) > kCurveEqualEps) rational = 1;
}

void VCurveCtrlPoints::UpdateDimension() {
    dimension = 2;
    for (std::int32_t i = 0; points && i < count; ++i)
        if (std::fabs(double(points[i].z)) > kCurveEqualEps) dimension = 3;
}
