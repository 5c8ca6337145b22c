// What tools may do to an object of the scene: move, turn and scale it, and
// ask where it is. Every operation has a do-nothing or false default.
#pragma once

#include "curves/KVector3D.h"
#include "foundation/KListEntry.h"
#include "platform/qd3d/QD3D.h"

class K3DObject : public KListEntry {
  public:
    ~K3DObject() override = default;
    virtual void Translate(const KVector3D& /*delta*/) {}
    // After a gesture moved the object: an object built from what it holds
    // (a path from its control points) builds itself again.
    virtual void UpdateAfterMove() {}
    virtual void GetRotationMatrix(TQ3Matrix4x4& out) const;
    virtual void GetScaleMatrix(TQ3Matrix4x4& out) const;
    // Mode 1 leaves the scale out.
    virtual void GetLocalToWorld(TQ3Matrix4x4& out, int mode) const;
    virtual void GetBoundingBox(TQ3BoundingBox& out) const;
    virtual void SetScale(const KVector3D& /*scale*/) {}
    virtual void SetRotation(const KVector3D& /*angles*/) {}
    virtual void MultiplyScale(const KVector3D& /*factors*/) {}
    virtual void GetBoundingSphere(TQ3BoundingSphere& out) const;
    virtual void GetCenter(KVector3D& out) const;
    virtual void RotateAboutAxis(const KVector3D& /*axis*/, float /*angle*/) {}
    // The lengths of the three rows of the local-to-world matrix.
    virtual void GetAxisScales(KVector3D& out) const;
    virtual void GetPosition(KVector3D& out) const;
    // An edit of the object's parts begins or ends: editable objects show
    // or hide their controls.
    virtual void BeginEdit() {}
    virtual void EndEdit() {}
    // Selects the part of the object that the last pick named; false when
    // the object has no parts to select.
    virtual bool SelectPart(bool /*toggle*/) { return false; }
    // Acts on the selected part (a path drops its selected point); false
    // when there is nothing to act on.
    virtual bool EditAtPart() { return false; }
};

// The identity matrix.
TQ3Matrix4x4 IdentityMatrix();
// The identity with a move by (x, y, z) in its last row.
TQ3Matrix4x4 TranslationMatrix(float x, float y, float z);
