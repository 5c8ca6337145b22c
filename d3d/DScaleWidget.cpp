#include "d3d/DScaleWidget.h"

#include "d3d/DTransformObject.h"

TQ3BoundingBox TemplateBox() {
    return {{-1, -1, -1}, {1, 1, 1}, kQ3False};
}

DScaleWidget::DScaleWidget(const TQ3BoundingBox& box, std::uint32_t id) : DWidget(id) {
    BoxCorners(box, corners);
    center = {(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2, (box.min.z + box.max.z) / 2,
              1.0f};
    guides = std::make_unique<DGuideLineObject>(center);
    Update({1, 1, 1}, {1, 1, 1});
}

void DScaleWidget::Update(const KVector3D& objectScale, const KVector3D& screenScale) {
    Empty();
    const KVector3D half{0.5f / UsableScale(screenScale.x), 0.5f / UsableScale(screenScale.y),
                         0.5f / UsableScale(screenScale.z)};
    for (std::uint32_t i = 0; i < 8; ++i) {
        DWidgetHandle handle(corners[i], half, "ScaleHotBox", pickId + i * kPickPartStep);
        AddObject(handle);
    }
    AddWireBox(*this, corners, pickId + kPickWireStep);
    if (showGuides) {
        DTranslateTransform move(center.x, center.y, center.z);
        AddObject(move);
        DScaleTransform unscale(1.0f / UsableScale(objectScale.x),
                                1.0f / UsableScale(objectScale.y),
                                1.0f / UsableScale(objectScale.z));
        AddObject(unscale);
        AddObject(*guides);
    }
}

void DScaleWidget::CueHandle(const KVector3D& point, bool on) {
    showGuides = on;
    guides->MoveTo(point);
}

DTranslateWidget::DTranslateWidget(const TQ3BoundingBox& box, std::uint32_t id) : DWidget(id) {
    BoxCorners(box, corners);
    AddWireBox(*this, corners, pickId + kPickWireStep);
}
