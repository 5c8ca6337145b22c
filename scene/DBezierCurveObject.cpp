#include "scene/DBezierCurveObject.h"

#include "curves/VNurbsAlgorithms.h"

namespace {
constexpr float kGuideColour[3] = {0.8f, 0.2f, 0.6f};

std::unique_ptr<DMarkerObject> AnchorMarker(const KVector3D& p, bool selected) {
    if (selected) return std::make_unique<DBezierSelMarker>(ToLibraryPoint(p));
    return std::make_unique<DBezierUnSelMarker>(ToLibraryPoint(p));
}

std::unique_ptr<DLineObject> Guide(const KVector3D& a, const KVector3D& b) {
    return std::make_unique<DLineObject>(ToLibraryPoint(a), ToLibraryPoint(b), kGuideColour[0],
                                         kGuideColour[1], kGuideColour[2]);
}
} // namespace

KVector3D Euclidean(const KVector3D& p) {
    if (p.w == 0.0f || p.w == 1.0f) return {p.x, p.y, p.z, 1.0f};
    return {p.x / p.w, p.y / p.w, p.z / p.w, 1.0f};
}

TQ3Point3D ToLibraryPoint(const KVector3D& homogeneous) {
    const KVector3D e = Euclidean(homogeneous);
    return {e.x, e.y, e.z};
}

DBezierCurveObject::DBezierCurveObject(std::int32_t count, const KVector3D* points) {
    if (count < 2 || count > 4 || !points) return;
    curve = MakeBezierCurve(count, points);
    if (!curve) return;
    pointCount = count;
    std::vector<TQ3RationalPoint4D> q(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i)
        q[std::size_t(i)] = {points[i].x, points[i].y, points[i].z, points[i].w};
    geometry = std::make_unique<DNURBSCurveObject>(count, q.data(), curve->knots->count,
                                                   curve->knots->values.get(), count - 1);
    selected_ = std::make_unique<bool[]>(std::size_t(count));
    markers = std::make_unique<std::unique_ptr<DMarkerObject>[]>(std::size_t(count));
    for (std::int32_t i = 0; i < count; ++i) {
        const bool anchor = i == 0 || i == count - 1;
        markers[i] = anchor ? AnchorMarker(points[i], false)
                            : std::make_unique<DBezierCtHndMarker>(ToLibraryPoint(points[i]));
    }
    startGuide = Guide(points[0], points[1]);
    endGuide = Guide(points[count - 2], points[count - 1]);
}

KVector3D DBezierCurveObject::GetPoint(std::int32_t place) const {
    KVector3D p;
    curve->GetControlPoint(place, p);
    return p;
}

KVector3D DBezierCurveObject::GetPosition(std::int32_t place) const {
    return Euclidean(GetPoint(place));
}

void DBezierCurveObject::SetPoint(std::int32_t place, const KVector3D& p) {
    if (place < 0 || place >= pointCount) return;
    curve->SetControlPoint(place, p);
    geometry->SetControlPoint(place, {p.x, p.y, p.z, p.w});
    markers[place]->SetPosition(ToLibraryPoint(p));
    if (place <= 1) startGuide->SetPoints(ToLibraryPoint(GetPoint(0)), ToLibraryPoint(GetPoint(1)));
    if (place >= pointCount - 2)
        endGuide->SetPoints(ToLibraryPoint(GetPoint(pointCount - 2)),
                            ToLibraryPoint(GetPoint(pointCount - 1)));
}

void DBezierCurveObject::MovePoint(std::int32_t place, const KVector3D& delta) {
    if (place < 0 || place >= pointCount) return;
    PlacePoint(place, GetPosition(place) + delta);
}

void DBezierCurveObject::PlacePoint(std::int32_t place, const KVector3D& to) {
    if (place < 0 || place >= pointCount) return;
    const float w = GetPoint(place).w;
    const float weight = w == 0.0f ? 1.0f : w;
    SetPoint(place, {to.x * weight, to.y * weight, to.z * weight, weight});
}

void DBezierCurveObject::SetPoints(const KVector3D* points) {
    for (std::int32_t i = 0; i < pointCount; ++i)
        SetPoint(i, points[i]);
}

void DBezierCurveObject::SetAnchorSelected(std::int32_t place, bool selected) {
    if ((place != 0 && place != pointCount - 1) || selected_[place] == selected) return;
    markers[place] = AnchorMarker(GetPoint(place), selected);
    selected_[place] = selected;
}

bool DBezierCurveObject::IsAnchorSelected(std::int32_t place) const {
    return place >= 0 && place < pointCount && selected_[place];
}
