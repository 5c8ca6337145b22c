// The root of the widgets, the handles they offer, and the pick ids of
// their parts.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DGroupObject.h"

#include <cstdint>

// The parts of a widget carry the widget's id plus a multiple of these.
inline constexpr std::uint32_t kPickPartStep = 1u << 24;
inline constexpr std::uint32_t kPickWireStep = 1u << 28;
// Set in every widget's id.
inline constexpr std::uint32_t kWidgetPickBit = 1u << 31;

// A widget: a display group inside a selected object's own group, grey
// unless a part says otherwise.
class DWidget : public DAttributeDisplayGroup {
  public:
    // `id` is the object's pick id; the widget keeps it with bit 31 set.
    explicit DWidget(std::uint32_t id);
    // Whether the widget is drawn over a box.
    virtual bool IsBoxWidget() const { return true; }
    // 0 plain, 1 scale, 2 rotate, 7 translate only.
    virtual int GetWidgetKind() const { return 0; }

    std::uint32_t pickId;
};

// A handle: three flat crossing diamonds around a point, red, seen from
// both sides, with a pick id of its own.
class DWidgetHandle : public DAttributeDisplayGroup {
  public:
    // `name` says what the handle is for ("ScaleHotBox", "RotateHotBox",
    // "CameraHotBox", "OrbitHotBox"); it is not kept.
    DWidgetHandle(const KVector3D& point, const KVector3D& halfSizes, const char* name,
                  std::uint32_t id);
    DWidgetHandle(const KVector3D& point, float halfSize, const char* name, std::uint32_t id);
};

// A scale factor that can stand in a division: zero, infinite or not a
// number becomes 1.
float UsableScale(float s);

// The eight corners of a box, from its maximum round to its minimum.
void BoxCorners(const TQ3BoundingBox& box, KVector3D corners[8]);
// A pick id style and the twelve edges between the corners, without a
// colour of their own.
void AddWireBox(DGroupObject& group, const KVector3D corners[8], std::uint32_t id);
// One closed ring of 32 points of radius r around c, in the plane of `ring`
// (1: x-y, 2: y-z, 3: z-x).
void AddRing(DGroupObject& group, int ring, const KVector3D& c, float r, const char* tag = nullptr,
             std::int32_t tagNumber = 0);
