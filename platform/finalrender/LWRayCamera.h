// Camera rays from the matrices of a rendering pass: a window point is taken
// back through the frustum to the hither and yon planes, which serves every
// kind of camera alike.
#pragma once

#include "platform/qd3d/QD3DRendererExtension.h"

#include <cstdint>
#include <vector>

namespace lwsl {

// Rays through many window points, one array a part. Arrays only grow.
struct Rays {
    void resize(std::size_t n);
    std::vector<double> x, y;      // the window point, in the pixmap's pixels
    std::vector<float> ox, oy, oz; // start, on the hither plane
    std::vector<float> dx, dy, dz; // unit direction
    std::vector<float> tfar;       // distance from the hither to the yon plane
    std::vector<std::int32_t> ok;  // 0 where the point has no ray
};

class RayCamera {
  public:
    // False when the matrices cannot be inverted or are not finite.
    bool setUp(const TQ3XPassInfo& pass);
    // The rays through the first n window points of r. A point outside
    // what the camera can see has no ray.
    void raysAt(Rays& r, std::size_t n) const;
    // The window point where world point p is seen. False when p is not in
    // front of the eye, where a perspective camera has no such point.
    bool windowOf(const TQ3Point3D& p, double& x, double& y) const;
    bool orthographic() const { return ortho; }

  private:
    double forward[4][4]{}; // world to frustum
    // Frustum to world in the form rays are made in: the homogeneous point
    // at frustum (nx, ny) on the hither (k = 0) or yon (k = 1) plane is
    // at[k] + nx * acrossX + ny * acrossY.
    float at[2][4]{}, acrossX[4]{}, acrossY[4]{};
    double fx = 1, fy = 1; // window scale
    double ox = 0, oy = 0; // window offset
    bool ortho = false;
};

} // namespace lwsl
