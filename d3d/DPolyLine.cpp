#include "d3d/DPolyLine.h"

DPolyLine::DPolyLine(int plannedCount) : planned(plannedCount), vertices{} {}

void DPolyLine::AddPoint(const TQ3Point3D& point, TQ3AttributeSet attributes) {
    if (count >= kCapacity) throw kFailPlin;
    TQ3AttributeSet own = nullptr;
    if (attributes) {
        own = Q3Shared_GetReference(attributes);
        CheckObject(own);
    }
    sets[count].reset(own);
    vertices[count++] = {point, own};
}

void DPolyLine::Clear() {
    for (int i = 0; i < count; ++i)
        sets[i].reset();
    count = 0;
}

TQ3PolyLineData DPolyLine::Data() {
    return {static_cast<TQ3Uns32>(count), vertices, nullptr, nullptr};
}

void DPolyLine::Finish(bool close) {
    if (object) {
        Commit();
        return;
    }
    if (close && count > 0) AddPoint(vertices[0].point, vertices[0].attributeSet);
    TQ3PolyLineData data = Data();
    object = Q3PolyLine_New(&data);
    CheckObject(object);
}

void DPolyLine::Commit() {
    TQ3PolyLineData data = Data();
    CheckStatus(Q3PolyLine_SetData(object, &data));
}

TQ3Point3D DPolyLine::GetPoint(int i) const {
    if (i < 0 || i >= count) return {0, 0, 0};
    return vertices[i].point;
}

void DPolyLine::SetPoint(int i, const TQ3Point3D& point) {
    if (i < 0 || i >= count) return;
    vertices[i].point = point;
}
