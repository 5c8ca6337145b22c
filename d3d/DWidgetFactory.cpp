#include "d3d/DWidgetFactory.h"

#include "d3d/DMarkWidgets.h"
#include "d3d/DRotateWidget.h"
#include "d3d/DScaleWidget.h"

namespace {

DWidgetFactory gWidgetFactory;

} // namespace

DWidgetFactory& TheWidgetFactory() {
    return gWidgetFactory;
}

DWidgetFactory::DWidgetFactory() = default;

DWidgetFactory::~DWidgetFactory() = default;

DWidget* DWidgetFactory::Get(int kind) {
    if (kind < 1 || kind > 6) return nullptr;
    std::unique_ptr<DWidget>& slot = widgets[kind];
    if (!slot) {
        switch (kind) {
        case 1:
            slot = std::make_unique<DScaleWidget>(TemplateBox(), 0);
            break;
        case 2:
            slot = std::make_unique<DRotateWidget>(TQ3BoundingSphere{{0, 0, 0}, 1.75f, kQ3False},
                                                   KVector3D{1, 1, 1}, 0);
            break;
        case 3:
            slot = std::make_unique<DOrbitWidget>(0);
            break;
        case 4:
            slot = std::make_unique<DCentroidWidget>(KVector3D{0, 0, 0}, KVector3D{1, 1, 1}, 0);
            break;
        case 5:
            slot = std::make_unique<DCameraWidget>(0);
            break;
        default:
            slot = std::make_unique<DLightWidget>(0);
            break;
        }
    }
    return slot.get();
}

void DWidgetFactory::Clear() {
    for (auto& w : widgets)
        w.reset();
}
