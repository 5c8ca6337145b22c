#include "curves/VCustomPathData.h"

#include <algorithm>
#include <cstdio>
#include <new>

bool VCustomPathData::SetCurve(std::int32_t newPointCount, const KVector3D* newPoints,
                               std::int32_t newKnotCount, const double* newKnots,
                               std::uint8_t newClosed, const KVector3D& tangent,
                               const KVector3D& normal) {
    if (newPointCount <= 1 || !newPoints || (newKnotCount > 0 && !newKnots)) return false;
    std::unique_ptr<KVector3D[]> p(new (std::nothrow) KVector3D[std::size_t(newPointCount)]);
    std::unique_ptr<double[]> k;
    if (newKnotCount > 0) k.reset(new (std::nothrow) double[std::size_t(newKnotCount)]);
    if (!p || (newKnotCount > 0 && !k)) return false;
    std::copy_n(newPoints, newPointCount, p.get());
    if (k) std::copy_n(newKnots, newKnotCount, k.get());
    pointCount = newPointCount;
    points = std::move(p);
    knotCount = std::max(newKnotCount, 0);
    knots = std::move(k);
    closed = newClosed;
    startTangent = tangent;
    startNormal = normal;
    return true;
}

void VCustomPathData::GetCurve(std::int32_t& outPointCount, const KVector3D*& outPoints,
                               std::int32_t& outKnotCount, const double*& outKnots,
                               std::uint8_t& outClosed, KVector3D& tangent,
                               KVector3D& normal) const {
    outPointCount = pointCount;
    outPoints = points.get();
    outKnotCount = knotCount;
    outKnots = knots.get();
    outClosed = closed;
    tangent = startTangent;
    normal = startNormal;
}

void VCustomPathData::SetName(const char* text) {
    std::snprintf(name, sizeof name, "%s", text ? text : "");
}

std::unique_ptr<VCustomPathData> VCustomPathData::Clone() const {
    std::unique_ptr<VCustomPathData> copy(new (std::nothrow) VCustomPathData);
    if (!copy) return nullptr;
    if (pointCount > 1 && !copy->SetCurve(pointCount, points.get(), knotCount, knots.get(), closed,
                                          startTangent, startNormal))
        return nullptr;
    std::copy_n(name, kNameSize, copy->name);
    copy->isBezier = isBezier;
    return copy;
}
