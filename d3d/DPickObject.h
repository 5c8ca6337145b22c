// The pick of one pass and one hit read from it.
#pragma once

#include "d3d/DObject.h"

#include <cstdint>

class DPickObject : public DObject {
  public:
    ~DPickObject() override;
    TQ3Object GetObject() const override { return object; }

    TQ3PickObject object = nullptr;
    TQ3PickSort sort = kQ3PickSortNearToFar;
    TQ3PickDetail mask = 0x3F;
    TQ3Uns32 numHits = 0; // all

  protected:
    DPickObject() = default;
};

// Picks what lies under a window point, within 2 pixels of edges and
// vertices.
class DPointPickObject : public DPickObject {
  public:
    explicit DPointPickObject(const TQ3Point2D& point);
};

// One hit. It owns the object reference and the path it was given.
class DHitData {
  public:
    DHitData() = default;
    ~DHitData();
    DHitData(const DHitData&) = delete;
    DHitData& operator=(const DHitData&) = delete;

    TQ3PickDetail validMask = 0;
    TQ3Object object = nullptr;
    TQ3HitPath path{nullptr, 0, nullptr};
    TQ3Point3D point{0, 0, 0};
    float distance = 0;
    TQ3Matrix4x4 localToWorld{};
    std::uint32_t pickId = 0;
};
