#include "d3d/DMarkWidgets.h"

#include "d3d/DAxesObject.h"
#include "d3d/DTransformObject.h"

namespace {

KVector3D Reciprocal(const KVector3D& s, float numerator) {
    return {numerator / UsableScale(s.x), numerator / UsableScale(s.y),
            numerator / UsableScale(s.z)};
}

} // namespace

DCentroidWidget::DCentroidWidget(const KVector3D& c, const KVector3D& s, std::uint32_t id)
    : DWidget(id), center(c), scale(s) {
    Update({1, 1, 1});
}

void DCentroidWidget::Update(const KVector3D& sizes) {
    Empty();
    const KVector3D inverse = Reciprocal(sizes, 1.0f);
    DTranslateTransform move(center.x * scale.x * inverse.x, center.y * scale.y * inverse.y,
                             center.z * scale.z * inverse.z);
    AddObject(move);
    DAxesObject axes({0, 0, 0}, inverse, "CentroidAxes");
    AddObject(axes);
}

DCameraWidget::DCameraWidget(std::uint32_t id) : DWidget(id), handlePoints{{1, 0, 1}, {-1, 0, 1}} {
    Q3Matrix4x4_SetIdentity(&matrix);
}

void DCameraWidget::Update() {
    Empty();
}

DLightWidget::DLightWidget(std::uint32_t id) : DWidget(id), handlePoints{{1, 0, 1}, {-1, 0, 1}} {
    Update({1, 1, 1});
}

void DLightWidget::Update(const KVector3D& sizes) {
    Empty();
    const KVector3D half = Reciprocal(sizes, 0.5f);
    for (std::uint32_t i = 0; i < 2; ++i) {
        DWidgetHandle handle(handlePoints[i], half, "CameraHotBox", i);
        AddObject(handle);
    }
}
