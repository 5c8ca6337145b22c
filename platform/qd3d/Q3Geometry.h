// Geometry objects: the data of each kind and its cached mesh.
#pragma once

#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3Mesh.h"

namespace q3 {

class SetObject;
class View;

// How finely curved geometry is cut, worked out for one submit.
struct Detail {
    TQ3Uns32 u = 16, v = 16;
    bool operator==(const Detail& o) const { return u == o.u && v == o.v; }
};

// A vertex array that holds a reference to each vertex's set.
struct Vertices {
    std::vector<TQ3Vertex3D> items;
    Vertices() = default;
    Vertices(const Vertices&) = delete;
    Vertices& operator=(const Vertices&) = delete;
    ~Vertices() { clear(); }
    void clear();
    bool assign(const TQ3Vertex3D* v, TQ3Uns32 n); // false (no change) on bad input
};

class GeometryObject : public OpaqueTQ3Object {
  public:
    explicit GeometryObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    ~GeometryObject() override;
    TQ3Status submit(View& view) override;

    TQ3Object attributeSet = nullptr; // held
    // The mesh for a detail, rebuilt when the data or any set changed.
    const Mesh& mesh(const Detail& detail);
    // The detail this geometry wants in the view's present state.
    virtual Detail detailFor(View& view);

  protected:
    virtual void build(Mesh& mesh, const Detail& detail) = 0;

  private:
    Mesh cache;
    bool cacheValid = false;
    std::uint64_t cacheStamp = 0;
    std::uint32_t cacheEdit = 0;
    Detail cacheDetail;
};

// Checks that set is null or a live attribute set; posts the error if not.
bool validSet(TQ3Object set);
// Copies a set reference into a slot, holding it.
void holdSet(TQ3Object& slot, TQ3Object set);
// Hands out a held set as a new reference for _GetData.
TQ3Object shareSet(TQ3Object set);

// Tessellation of a general polygon through the GLU tessellator, odd winding.
// contours hold indices of the builder's source vertices, points their places.
void tessellateContours(MeshBuilder& builder, const std::vector<std::vector<TQ3Uns32>>& contours,
                        const std::vector<TQ3Point3D>& points);

} // namespace q3
