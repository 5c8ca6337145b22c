// The widgets of a centroid, a camera and a light.
#pragma once

#include "d3d/DWidget.h"

// Axes through an object's centre.
class DCentroidWidget : public DWidget {
  public:
    DCentroidWidget(const KVector3D& center, const KVector3D& scale, std::uint32_t id);
    // A move to the centre and axes of the lengths 1 / sizes.
    void Update(const KVector3D& sizes);

    KVector3D center;
    KVector3D scale;
};

// A camera's widget keeps a matrix set from outside and has no geometry.
class DCameraWidget : public DWidget {
  public:
    explicit DCameraWidget(std::uint32_t id);
    void SetMatrix(const TQ3Matrix4x4& m) { matrix = m; }
    void Update();

    TQ3Matrix4x4 matrix;
    KVector3D handlePoints[2];
};

// Two handles of a light, picked as parts 0 and 1.
class DLightWidget : public DWidget {
  public:
    explicit DLightWidget(std::uint32_t id);
    void Update(const KVector3D& sizes);

    KVector3D handlePoints[2];
};
