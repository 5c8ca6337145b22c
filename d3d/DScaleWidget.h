// The box widgets: a wire box with a handle at each corner, and the bare
// wire box of an object that may only be moved.
#pragma once

#include "d3d/DAxesObject.h"
#include "d3d/DWidget.h"

#include <memory>

class DScaleWidget : public DWidget {
  public:
    // Over a bounding box; the template has none and spans -1 to 1.
    DScaleWidget(const TQ3BoundingBox& box, std::uint32_t id);
    int GetWidgetKind() const override { return 1; }

    // Rebuilds the handles, the wire box and, when cued, the guide lines.
    // A handle's half size is 0.5 / screenScale on each axis; the guides
    // cancel the object's own scale.
    void Update(const KVector3D& objectScale, const KVector3D& screenScale);
    // Shows or hides guide lines through `point`, from the next Update on.
    void CueHandle(const KVector3D& point, bool on);

    KVector3D corners[8];
    bool showGuides = false;
    std::unique_ptr<DGuideLineObject> guides;
    KVector3D center;
};

class DTranslateWidget : public DWidget {
  public:
    // The wire box alone, built once.
    DTranslateWidget(const TQ3BoundingBox& box, std::uint32_t id);
    int GetWidgetKind() const override { return 7; }

    KVector3D corners[8];
};

// The box a template widget stands for.
TQ3BoundingBox TemplateBox();
