// Window point picks: hit tests in window coordinates and the hit list.
#pragma once

#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3Mesh.h"

namespace q3 {

class View;

struct Hit {
    TQ3Object object = nullptr;    // held
    TQ3Object rootGroup = nullptr; // held
    std::vector<TQ3GroupPosition> positions;
    TQ3Matrix4x4 localToWorld{};
    TQ3Uns32 pickID = 0;
    TQ3Point3D point{};
    float distance = 0;
    TQ3Vector3D normal{};
    TQ3PickDetail valid = 0;
};

class PickObject : public OpaqueTQ3Object {
  public:
    PickObject() : OpaqueTQ3Object(kQ3PickTypeWindowPoint) {}
    ~PickObject() override;
    TQ3WindowPointPickData data{};
    std::vector<Hit> hits;
    View* activeView = nullptr;

    void begin(View* view);
    void clear();
    void finish(); // sorts and trims the list
    struct PathEntry {
        TQ3Object group;
        TQ3GroupPosition position;
    };
    template <class P>
    void testMesh(View& view, TQ3Object geometry, const TQ3XDrawState& draw, const Mesh& mesh,
                  const std::vector<TQ3XVertex>& world, const std::vector<TQ3Vector3D>& faceNormals,
                  const std::vector<P>& path) {
        std::vector<PathEntry> p;
        for (const auto& e : path)
            p.push_back({e.group, e.position});
        testMeshImpl(view, geometry, draw, mesh, world, faceNormals, p);
    }
    template <class P>
    void testMarker(View& view, TQ3Object geometry, const TQ3XDrawState& draw,
                    const TQ3XMarker& marker, const std::vector<P>& path) {
        std::vector<PathEntry> p;
        for (const auto& e : path)
            p.push_back({e.group, e.position});
        testMarkerImpl(view, geometry, draw, marker, p);
    }

  private:
    void testMeshImpl(View& view, TQ3Object geometry, const TQ3XDrawState& draw, const Mesh& mesh,
                      const std::vector<TQ3XVertex>& world,
                      const std::vector<TQ3Vector3D>& faceNormals,
                      const std::vector<PathEntry>& path);
    void testMarkerImpl(View& view, TQ3Object geometry, const TQ3XDrawState& draw,
                        const TQ3XMarker& marker, const std::vector<PathEntry>& path);
    void record(View& view, TQ3Object geometry, const TQ3XDrawState& draw, const TQ3Point3D& point,
                const TQ3Vector3D* normal, const std::vector<PathEntry>& path);
};

} // namespace q3
