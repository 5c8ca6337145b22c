#include "d3d/DMarkerObject.h"

namespace {
// The colours of the markers: control points and unselected anchors blue,
// everything that belongs to the selection and the drawing purple.
constexpr float kBlue[3] = {0.0f, 0.0f, 1.0f};
constexpr float kPurple[3] = {0.8f, 0.2f, 0.6f};
} // namespace

DMarkerObject::DMarkerObject(const TQ3Point3D& location, const Pattern& rows, float red,
                             float green, float blue) {
    DReference set = MakeColorSet(red, green, blue);
    TQ3MarkerData data{};
    data.location = location;
    data.xOffset = -3;
    data.yOffset = -3;
    data.bitmap = {const_cast<TQ3Uns8*>(rows.data()), 8, 8, 1, kQ3EndianBig};
    data.markerAttributeSet = set.get();
    object = Q3Marker_New(&data);
    CheckObject(object);
}

void DMarkerObject::SetPosition(const TQ3Point3D& location) {
    CheckStatus(Q3Marker_SetPosition(object, &location));
}

TQ3Point3D DMarkerObject::GetPosition() const {
    TQ3Point3D p{0, 0, 0};
    CheckStatus(Q3Marker_GetPosition(object, &p));
    return p;
}

DNURBSCtrlPointMarker::DNURBSCtrlPointMarker(const TQ3Point3D& location)
    : DMarkerObject(location, {0xFF, 0xFF, 0xFF, 0xE7, 0xE7, 0xFF, 0xFF, 0xFF}, kBlue[0], kBlue[1],
                    kBlue[2]) {}

DBezierHandleMarker::DBezierHandleMarker(const TQ3Point3D& location)
    : DMarkerObject(location, {0xC0, 0xA0, 0x60, 0x00, 0x00, 0x06, 0x05, 0x03}, kPurple[0],
                    kPurple[1], kPurple[2]) {}

DBezierUnSelMarker::DBezierUnSelMarker(const TQ3Point3D& location)
    : DMarkerObject(location, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, kBlue[0], kBlue[1],
                    kBlue[2]) {}

DBezierSelMarker::DBezierSelMarker(const TQ3Point3D& location)
    : DMarkerObject(location, {0x3C, 0x3C, 0xFF, 0xFF, 0xFF, 0xFF, 0x3C, 0x3C}, kPurple[0],
                    kPurple[1], kPurple[2]) {}

DBezierCtHndMarker::DBezierCtHndMarker(const TQ3Point3D& location)
    : DMarkerObject(location, {0x18, 0x3C, 0x7E, 0xFF, 0xFF, 0x7E, 0x3C, 0x18}, kPurple[0],
                    kPurple[1], kPurple[2]) {}
