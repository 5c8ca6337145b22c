// A polyline built point by point and handed to the library in one piece.
#pragma once

#include "d3d/DGeometryObject.h"

class DPolyLine : public DGeometryObject {
  public:
    static constexpr int kCapacity = 262;

    // `planned` is the count the caller expects; the array has room for
    // kCapacity points whatever it says.
    explicit DPolyLine(int planned = 0);

    // Appends a point with an attribute set (may be null), of which the
    // polyline keeps a reference of its own until Clear. Throws kFailPlin
    // when the array is full.
    void AddPoint(const TQ3Point3D& point, TQ3AttributeSet attributes = nullptr);
    // Makes the library polyline, repeating the first point at the end when
    // `close` is true; once made, the same as Commit.
    void Finish(bool close);
    // Hands what the array holds to the library polyline.
    void Commit();
    // Points outside the count read as the origin and are not written.
    TQ3Point3D GetPoint(int i) const;
    void SetPoint(int i, const TQ3Point3D& point);
    void Clear();
    int GetCount() const { return count; }

  private:
    TQ3PolyLineData Data();

    int planned;
    int count = 0;
    TQ3Vertex3D vertices[kCapacity];
    DReference sets[kCapacity];
};
