#include "d3d/DRotateWidget.h"

#include "d3d/DGeometryObject.h"
#include "d3d/DStyleObject.h"
#include "d3d/DWidgetColors.h"

#include <cmath>

namespace {

void SixPoints(KVector3D points[6], const KVector3D& c, float r) {
    points[0] = c + KVector3D{r, 0, 0};
    points[1] = c - KVector3D{r, 0, 0};
    points[2] = c + KVector3D{0, r, 0};
    points[3] = c - KVector3D{0, r, 0};
    points[4] = c + KVector3D{0, 0, r};
    points[5] = c - KVector3D{0, 0, r};
}

} // namespace

DRotateWidget::DRotateWidget(const TQ3BoundingSphere& sphere, const KVector3D&, std::uint32_t id)
    : DWidget(id), center{0, 0, 0, 1}, radius(std::isfinite(sphere.radius) ? sphere.radius : 0) {
    SixPoints(ringPoints, center, radius);
    Update({1, 1, 1}, 1);
}

void DRotateWidget::Update(const KVector3D&, float size) {
    Empty();
    const float half = 0.5f / UsableScale(size);
    for (std::uint32_t i = 0; i < 6; ++i) {
        DWidgetHandle handle(ringPoints[i], half, "RotateHotBox", pickId + (i + 1) * kPickPartStep);
        AddObject(handle);
    }
    for (std::uint32_t k = 1; k <= 3; ++k) {
        DAttributeDisplayGroup& ring = rings[k - 1];
        ring.Empty();
        ring.SetDiffuseColor(kWidgetGrey, kWidgetGrey, kWidgetGrey);
        DPickIDStyle pick(pickId + k * kPickWireStep);
        ring.AddObject(pick);
        AddRing(ring, static_cast<int>(k), center, radius);
        AddObject(ring);
    }
}

void DRotateWidget::HighlightRing(std::int16_t ring, bool on) {
    if (ring < 1 || ring > 3) return;
    if (on)
        rings[ring - 1].SetDiffuseColor(1, 0, 1);
    else
        rings[ring - 1].SetDiffuseColor(kWidgetGrey, kWidgetGrey, kWidgetGrey);
}

DOrbitWidget::DOrbitWidget(std::uint32_t id) : DWidget(id) {
    SixPoints(ringPoints, {0, 0, 0}, 1.0f);
    Update(1);
}

void DOrbitWidget::Update(float size) {
    Empty();
    for (int n = 1; n <= 3; ++n) {
        DAttributeDisplayGroup& ring = rings[n - 1];
        ring.Empty();
        ring.SetDiffuseColor(0, 1, 0);
        AddRing(ring, n, {0, 0, 0}, 1.0f, "OrbitHotBox", n);
        AddObject(ring);
    }
    const float half = 0.5f / UsableScale(size);
    DWidgetHandle atDirection(direction, half, "OrbitHotBox", 0);
    AddObject(atDirection);
    DWidgetHandle atNormal(normal, half, "OrbitHotBox", 0);
    AddObject(atNormal);
    const KVector3D back = -direction;
    DLineObject axis({direction.x, direction.y, direction.z}, {back.x, back.y, back.z}, -1, -1, -1);
    AddObject(axis);
}

DAttributeDisplayGroup* DOrbitWidget::GetRing(int n) {
    return n >= 1 && n <= 3 ? &rings[n - 1] : nullptr;
}
