// The root of the geometry wrappers, with names and tags on geometry, and
// the simple geometries: line, point, triangle, box, cone and ellipsoid.
#pragma once

#include "d3d/DCustomElements.h"
#include "d3d/DObject.h"

#include <cstdint>
#include <string>

// A geometry: the library object starts null and is disposed of only when
// it was made.
class DGeometryObject : public DShapeObject {
  public:
    ~DGeometryObject() override;
    TQ3Object GetObject() const override { return object; }

    // Puts a name on the geometry's attribute set, making the set if the
    // geometry has none.
    void SetName(const char* text);
    // The same with a tag of a name and a number.
    void SetTag(const char* text, std::int32_t number);
    // The name of a geometry; false if the object is not a geometry or has
    // no name.
    static bool GetName(TQ3Object object, std::string& text);
    // The tag of a geometry: its text and number; false if there is none.
    static bool GetTag(TQ3Object object, std::string& text, std::int32_t& number);

    TQ3GeometryObject object = nullptr;

  protected:
    DGeometryObject() = default;
    // Gives back the library object before a rebuild makes a new one.
    void ReleaseObject();

  private:
    void AddElement(TQ3ElementType type, const void* data);
};

// The most vertices one geometry may have; more throws kFailPlin before any
// memory is asked for.
inline constexpr long kMaxVertices = 1L << 24;
// Throws kFailPlin unless 0 <= count <= kMaxVertices.
void CheckVertexCount(long count);

// Makes a new attribute set that holds a diffuse colour.
DReference MakeColorSet(float red, float green, float blue);
// Makes a new attribute set that holds a normal.
DReference MakeNormalSet(const TQ3Vector3D& normal);

// A straight line between two points. With a red below 0 the line has no
// attribute set and takes the colour of its surroundings.
class DLineObject : public DGeometryObject {
  public:
    DLineObject(const TQ3Point3D& from, const TQ3Point3D& to, float red, float green, float blue);
    void SetPoints(const TQ3Point3D& from, const TQ3Point3D& to);
};

// A point with an id of its own.
class DPointObject : public DGeometryObject {
  public:
    DPointObject(float x, float y, float z, std::uint32_t id);
    void SetPosition(const TQ3Point3D& point);
    std::uint32_t id;
};

// A triangle; normals, if given, go on the vertices.
class DTriangle : public DGeometryObject {
  public:
    DTriangle(const TQ3Point3D points[3], const TQ3Vector3D* normals);
};

// A box of height h, width w and depth d with one corner at the origin.
class DBoxGeometry : public DGeometryObject {
  public:
    DBoxGeometry(float h, float w, float d);
};

// A unit cone along y, without caps.
class DConeGeometry : public DGeometryObject {
  public:
    DConeGeometry();
};

// An ellipsoid of the radii a (along y), b (x) and c (z) around the origin.
class DEllipsoidGeometry : public DGeometryObject {
  public:
    DEllipsoidGeometry(float a, float b, float c);
};
