// The rotate widget: three rings about the object with six handles where
// they cross the axes.
#pragma once

#include "d3d/DWidget.h"

class DRotateWidget : public DWidget {
  public:
    // Over a bounding sphere, whose radius is taken and whose centre is
    // not: the rings stand around the object's own origin. `scale` plays
    // no part in the shape.
    DRotateWidget(const TQ3BoundingSphere& sphere, const KVector3D& scale, std::uint32_t id);
    bool IsBoxWidget() const override { return false; }
    int GetWidgetKind() const override { return 2; }

    // Rebuilds handles of half size 0.5 / size and the three rings.
    void Update(const KVector3D& scale, float size);
    // Turns ring 1, 2 or 3 magenta, or back to grey.
    void HighlightRing(std::int16_t ring, bool on);

    KVector3D ringPoints[6];
    DAttributeDisplayGroup rings[3];
    KVector3D center;
    float radius;
};

// The orbit widget of the camera: three green rings of radius 1 with a
// handle at the direction and one at the normal.
class DOrbitWidget : public DWidget {
  public:
    explicit DOrbitWidget(std::uint32_t id);
    bool IsBoxWidget() const override { return false; }

    void Update(float size);
    // Ring n (1 to 3), or null.
    DAttributeDisplayGroup* GetRing(int n);

    KVector3D ringPoints[6];
    KVector3D normal{0, 1, 0};
    KVector3D direction{0, 0, 1};
    DAttributeDisplayGroup rings[3];
};
