#include "d3d/DNURBSCurveObject.h"

DNURBSCurveObject::DNURBSCurveObject(int count, const TQ3RationalPoint4D* controlPoints,
                                     int knotCount, const double* knotValues, int degree) {
    const long curveOrder = static_cast<long>(degree) + 1;
    if (curveOrder <= 1 || count <= 0 || !controlPoints || !knotValues ||
        static_cast<long>(knotCount) != static_cast<long>(count) + curveOrder)
        return;
    CheckVertexCount(count);
    points.assign(controlPoints, controlPoints + count);
    knots.reserve(static_cast<size_t>(knotCount));
    for (int i = 0; i < knotCount; ++i)
        knots.push_back(static_cast<float>(knotValues[i]));
    DReference set = MakeColorSet(0, 1, 0);
    TQ3NURBCurveData data{static_cast<TQ3Uns32>(curveOrder), static_cast<TQ3Uns32>(count),
                          points.data(), knots.data(), set.get()};
    object = Q3NURBCurve_New(&data);
    CheckObject(object);
    order = static_cast<std::uint32_t>(curveOrder);
    pointCount = static_cast<std::uint32_t>(count);
}

void DNURBSCurveObject::SetControlPoint(int i, const TQ3RationalPoint4D& point) {
    if (!object || i < 0 || static_cast<std::uint32_t>(i) >= pointCount) return;
    TQ3RationalPoint4D current;
    CheckStatus(Q3NURBCurve_GetControlPoint(object, static_cast<TQ3Uns32>(i), &current));
    CheckStatus(Q3NURBCurve_SetControlPoint(object, static_cast<TQ3Uns32>(i), &point));
    points[static_cast<size_t>(i)] = point;
}

void DNURBSCurveObject::MoveControlPoint(const KVector3D& delta, int i) {
    if (!object || i < 0 || static_cast<std::uint32_t>(i) >= pointCount) return;
    TQ3RationalPoint4D p = points[static_cast<size_t>(i)];
    if (p.w == 0.0f) return;
    const float x = p.x / p.w + delta.x, y = p.y / p.w + delta.y, z = p.z / p.w + delta.z;
    SetControlPoint(i, {x * p.w, y * p.w, z * p.w, p.w});
}
