// What the curve tools have in common: the mark by which the keys know a
// curve tool, and the conversions between the scene and a model's frame.
#pragma once

#include "curves/KVector3D.h"
#include "scene/MouseEvent.h"

class K3DManipulator;
class K3DObject;
class VZarbesoView;
class WView;

class VNurbsCurveManipulator {
  public:
    virtual ~VNurbsCurveManipulator() = default;
    // The Delete key while this tool is current: the tools that edit points
    // delete the selected anchor of the view's path. False when the key is
    // not for the path.
    virtual bool DeleteSelectedPoint(VZarbesoView& /*view*/) { return false; }
};

// A scene point in the frame of an object's own points, and back.
KVector3D WorldToObject(const K3DObject& object, const KVector3D& point);
KVector3D ObjectToWorld(const K3DObject& object, const KVector3D& point);
// A scene vector in that frame.
KVector3D WorldVectorToObject(const K3DObject& object, const KVector3D& vector);

// The working depth of a manipulator at a scene point (behind the camera
// transforms), where the path's points are.
void SetDepthAtScenePoint(K3DManipulator& manipulator, const KVector3D& point);

// Whether a mouse has moved far enough from where it went down for a drag
// to shape handles: more than 2 pixels.
bool MovedBeyondClick(const Point& down, const Point& now);

// A drag that pulls handles out of an anchor: the handle ahead goes to the
// pointer, the one behind to its mirror through the anchor.
void PullHandles(const KVector3D& anchor, const KVector3D& pointer, KVector3D& behind,
                 KVector3D& ahead);

// The Delete key on the view's Bezier path: its selected anchor goes, and
// the text follows the path again. False when nothing was deleted.
bool DeleteSelectedAnchor(VZarbesoView& view);
