// The geometry classes, one per kind.
#pragma once

#include "platform/qd3d/Q3Geometry.h"

#include <memory>

namespace q3 {

inline const SetObject* as(TQ3Object set) {
    return reinterpret_cast<const SetObject*>(set);
}

class PointGeometry : public GeometryObject {
  public:
    PointGeometry() : GeometryObject(kQ3GeometryTypePoint) {}
    TQ3Point3D point{};

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class LineGeometry : public GeometryObject {
  public:
    LineGeometry() : GeometryObject(kQ3GeometryTypeLine) {}
    Vertices vertices;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class PolyLineGeometry : public GeometryObject {
  public:
    PolyLineGeometry() : GeometryObject(kQ3GeometryTypePolyLine) {}
    ~PolyLineGeometry() override {
        for (TQ3Object s : segmentSets)
            release(s);
    }
    Vertices vertices;
    std::vector<TQ3Object> segmentSets; // held; empty or one per segment

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class TriangleGeometry : public GeometryObject {
  public:
    TriangleGeometry() : GeometryObject(kQ3GeometryTypeTriangle) {}
    Vertices vertices;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class PolygonGeometry : public GeometryObject {
  public:
    PolygonGeometry() : GeometryObject(kQ3GeometryTypePolygon) {}
    Vertices vertices;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class GeneralPolygonGeometry : public GeometryObject {
  public:
    GeneralPolygonGeometry() : GeometryObject(kQ3GeometryTypeGeneralPolygon) {}
    ~GeneralPolygonGeometry() override;
    std::vector<std::unique_ptr<Vertices>> contours;
    TQ3GeneralPolygonShapeHint shapeHint = kQ3GeneralPolygonShapeHintComplex;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class TriGridGeometry : public GeometryObject {
  public:
    TriGridGeometry() : GeometryObject(kQ3GeometryTypeTriGrid) {}
    ~TriGridGeometry() override {
        for (TQ3Object s : facetSets)
            release(s);
    }
    TQ3Uns32 rows = 0, columns = 0;
    Vertices vertices;
    std::vector<TQ3Object> facetSets; // held; empty or one per facet

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class BoxGeometry : public GeometryObject {
  public:
    BoxGeometry() : GeometryObject(kQ3GeometryTypeBox) {}
    ~BoxGeometry() override {
        for (TQ3Object s : faceSets)
            release(s);
    }
    TQ3Point3D origin{};
    TQ3Vector3D orientation{}, majorAxis{}, minorAxis{};
    std::vector<TQ3Object> faceSets; // held; empty or six

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

// Cones and ellipsoids share their data.
class QuadricGeometry : public GeometryObject {
  public:
    explicit QuadricGeometry(TQ3ObjectType t) : GeometryObject(t) {}
    ~QuadricGeometry() override {
        release(interiorSet);
        release(faceSet);
        release(bottomSet);
    }
    TQ3Point3D origin{};
    TQ3Vector3D orientation{}, majorRadius{}, minorRadius{};
    float uMin = 0, uMax = 1, vMin = 0, vMax = 1;
    TQ3EndCap caps = 0;
    TQ3Object interiorSet = nullptr, faceSet = nullptr, bottomSet = nullptr; // held
    Detail detailFor(View& view) override;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class NURBCurveGeometry : public GeometryObject {
  public:
    NURBCurveGeometry() : GeometryObject(kQ3GeometryTypeNURBCurve) {}
    TQ3Uns32 order = 0;
    std::vector<TQ3RationalPoint4D> points;
    std::vector<float> knots;
    Detail detailFor(View& view) override;
    // The point of the curve at parameter t.
    TQ3Point3D evaluate(float t) const;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

class MarkerGeometry : public GeometryObject {
  public:
    MarkerGeometry() : GeometryObject(kQ3GeometryTypeMarker) {}
    TQ3Point3D location{};
    TQ3Int32 xOffset = 0, yOffset = 0;
    TQ3Bitmap bitmap{}; // image points into bits
    std::vector<TQ3Uns8> bits;
    TQ3Status submit(View& view) override;

  protected:
    void build(Mesh& mesh, const Detail& detail) override;
};

GeometryObject* geometry(TQ3Object o, TQ3ObjectType t);
bool validSets(const TQ3AttributeSet* sets, TQ3Uns32 n);
void holdSets(std::vector<TQ3Object>& slots, const TQ3AttributeSet* sets, TQ3Uns32 n);
TQ3AttributeSet* copySetsOut(const std::vector<TQ3Object>& sets);
void freeSets(TQ3AttributeSet* sets, TQ3Uns32 n);

} // namespace q3
