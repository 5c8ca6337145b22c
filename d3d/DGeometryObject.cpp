#include "d3d/DGeometryObject.h"

#include <cstring>

DGeometryObject::~DGeometryObject() {
    if (object) Q3Object_Dispose(object);
}

void DGeometryObject::ReleaseObject() {
    if (object) Q3Object_Dispose(object);
    object = nullptr;
}

void DGeometryObject::AddElement(TQ3ElementType type, const void* data) {
    if (!object || type == 0) CheckStatus(kQ3Failure);
    TQ3AttributeSet held = nullptr;
    CheckStatus(Q3Geometry_GetAttributeSet(object, &held));
    DReference set(held);
    if (!set) {
        set.reset(Q3AttributeSet_New());
        CheckObject(set.get());
        CheckStatus(Q3Geometry_SetAttributeSet(object, set.get()));
    }
    CheckStatus(Q3Set_Add(set.get(), type, data));
}

void DGeometryObject::SetName(const char* text) {
    DReference string(Q3CString_New(text ? text : ""));
    CheckObject(string.get());
    TQ3Object raw = string.get();
    AddElement(GetNameAttributeType(), &raw);
}

void DGeometryObject::SetTag(const char* text, std::int32_t number) {
    DReference string(Q3CString_New(text ? text : ""));
    CheckObject(string.get());
    DTagAttributeData tag{string.get(), number};
    AddElement(GetTagAttributeType(), &tag);
}

namespace {

// The geometry's attribute set if the object is a geometry whose set holds
// the element; null otherwise.
DReference SetHolding(TQ3Object object, TQ3ElementType type) {
    if (!object || type == 0 || !Q3Object_IsType(object, kQ3ShapeTypeGeometry)) {
        Q3Error_Get(nullptr);
        return nullptr;
    }
    TQ3AttributeSet held = nullptr;
    if (Q3Geometry_GetAttributeSet(object, &held) != kQ3Success) {
        Q3Error_Get(nullptr);
        return nullptr;
    }
    DReference set(held);
    if (!set || !Q3Set_Contains(set.get(), type)) return nullptr;
    return set;
}

bool CopyString(TQ3StringObject string, std::string& text) {
    if (!string) {
        text.clear();
        return true;
    }
    char* chars = nullptr;
    if (Q3CString_GetString(string, &chars) != kQ3Success) {
        Q3Error_Get(nullptr);
        return false;
    }
    text = chars ? chars : "";
    Q3CString_EmptyData(&chars);
    return true;
}

} // namespace

bool DGeometryObject::GetName(TQ3Object object, std::string& text) {
    DReference set = SetHolding(object, GetNameAttributeType());
    if (!set) return false;
    TQ3Object raw = nullptr;
    if (Q3Set_Get(set.get(), GetNameAttributeType(), &raw) != kQ3Success) return false;
    DReference string(raw);
    return string && CopyString(string.get(), text);
}

bool DGeometryObject::GetTag(TQ3Object object, std::string& text, std::int32_t& number) {
    DReference set = SetHolding(object, GetTagAttributeType());
    if (!set) return false;
    DTagAttributeData tag{nullptr, 0};
    if (Q3Set_Get(set.get(), GetTagAttributeType(), &tag) != kQ3Success) return false;
    DReference string(tag.string);
    number = tag.number;
    return CopyString(string.get(), text);
}

void CheckVertexCount(long count) {
    if (count < 0 || count > kMaxVertices) throw kFailPlin;
}

DReference MakeColorSet(float red, float green, float blue) {
    DReference set(Q3AttributeSet_New());
    CheckObject(set.get());
    TQ3ColorRGB color{red, green, blue};
    CheckStatus(Q3AttributeSet_Add(set.get(), kQ3AttributeTypeDiffuseColor, &color));
    return set;
}

DReference MakeNormalSet(const TQ3Vector3D& normal) {
    DReference set(Q3AttributeSet_New());
    CheckObject(set.get());
    CheckStatus(Q3AttributeSet_Add(set.get(), kQ3AttributeTypeNormal, &normal));
    return set;
}

DLineObject::DLineObject(const TQ3Point3D& from, const TQ3Point3D& to, float red, float green,
                         float blue) {
    DReference set;
    if (red >= 0.0f) set = MakeColorSet(red, green, blue);
    TQ3LineData data{{{from, nullptr}, {to, nullptr}}, set.get()};
    object = Q3Line_New(&data);
    CheckObject(object);
}

void DLineObject::SetPoints(const TQ3Point3D& from, const TQ3Point3D& to) {
    TQ3LineData data;
    CheckStatus(Q3Line_GetData(object, &data));
    data.vertices[0].point = from;
    data.vertices[1].point = to;
    TQ3Status status = Q3Line_SetData(object, &data);
    Q3Line_EmptyData(&data);
    CheckStatus(status);
}

DPointObject::DPointObject(float x, float y, float z, std::uint32_t pointId) : id(pointId) {
    TQ3PointData data{{x, y, z}, nullptr};
    object = Q3Point_New(&data);
    CheckObject(object);
}

void DPointObject::SetPosition(const TQ3Point3D& point) {
    CheckStatus(Q3Point_SetPosition(object, &point));
}

DTriangle::DTriangle(const TQ3Point3D points[3], const TQ3Vector3D* normals) {
    DReference sets[3];
    TQ3TriangleData data{};
    for (int i = 0; i < 3; ++i) {
        if (normals) sets[i] = MakeNormalSet(normals[i]);
        data.vertices[i] = {points[i], sets[i].get()};
    }
    object = Q3Triangle_New(&data);
    CheckObject(object);
}

DBoxGeometry::DBoxGeometry(float h, float w, float d) {
    TQ3BoxData data{{0, 0, 0}, {0, h, 0}, {0, 0, w}, {d, 0, 0}, nullptr, nullptr};
    object = Q3Box_New(&data);
    CheckObject(object);
}

DConeGeometry::DConeGeometry() {
    TQ3ConeData data{};
    data.orientation = {0, 1, 0};
    data.majorRadius = {0, 0, 1};
    data.minorRadius = {1, 0, 0};
    data.uMax = 1.0f;
    data.vMax = 1.0f;
    data.caps = kQ3EndCapNone;
    object = Q3Cone_New(&data);
    CheckObject(object);
}

DEllipsoidGeometry::DEllipsoidGeometry(float a, float b, float c) {
    TQ3EllipsoidData data{};
    data.orientation = {0, a, 0};
    data.majorRadius = {b, 0, 0};
    data.minorRadius = {0, 0, c};
    data.uMax = 1.0f;
    data.vMax = 1.0f;
    data.caps = kQ3EndCapMaskInterior;
    object = Q3Ellipsoid_New(&data);
    CheckObject(object);
}
