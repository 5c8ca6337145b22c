#include "d3d/DPickObject.h"

DPickObject::~DPickObject() {
    if (object) Q3Object_Dispose(object);
}

DPointPickObject::DPointPickObject(const TQ3Point2D& point) {
    TQ3WindowPointPickData data{{sort, mask, numHits}, point, 2.0f, 2.0f};
    object = Q3WindowPointPick_New(&data);
    CheckObject(object);
}

DHitData::~DHitData() {
    if (path.positions || path.rootGroup) Q3HitPath_EmptyData(&path);
    if (object) Q3Object_Dispose(object);
}
