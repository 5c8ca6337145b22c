#pragma once

#include "d3d/DTransformObject.h"
#include "scene/K3DObject.h"

#include <cstdint>

class DShapeObject;
class DExtViewer;

// An object of the scene with an id, from which its pick id is made.
class VC3DObject : public K3DObject {
  public:
    explicit VC3DObject(std::uint32_t id) : id_(id) {}
    std::uint32_t GetId() const { return id_; }

    // Adds a shape at the end of the object's own group.
    virtual void AddToGroup(const DShapeObject& /*object*/) {}
    // Takes the first place of a shape out of the group; throws Plin when it
    // is not there.
    virtual void RemoveFromGroup(const DShapeObject& /*object*/) {}
    virtual void CalcBoundingSphere(DExtViewer* /*view*/) {}
    // Adds a shape right after the rotation: it follows rotation and
    // position, but not scale.
    virtual void InsertAfterRotation(const DShapeObject& /*object*/) {}

  private:
    std::uint32_t id_;
};

// Runs `calc` (a bounds pass) with the position at zero, so that the
// bounds never carry the position; the position is back afterwards, also
// when the pass throws.
template <typename Calc> void WithPositionAtZero(DTranslateTransform& position, Calc&& calc) {
    KVector3D keep;
    position.Get(keep);
    position.Set(0, 0, 0);
    try {
        calc();
    } catch (...) {
        position.Set(keep);
        throw;
    }
    position.Set(keep);
}
