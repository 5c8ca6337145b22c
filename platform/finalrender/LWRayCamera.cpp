// Camera rays by inverting world to frustum.
#include "platform/finalrender/LWRayCamera.h"

#include "platform/finalrender/LWLoops.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace lwsl {
namespace {

using M4 = double[4][4];

void multiply(const TQ3Matrix4x4& a, const TQ3Matrix4x4& b, M4 out) {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            double s = 0;
            for (int k = 0; k < 4; ++k)
                s += static_cast<double>(a.value[i][k]) * b.value[k][j];
            out[i][j] = s;
        }
}

// Gauss-Jordan with partial pivoting; false for a singular matrix.
bool invert(const M4 in, M4 out) {
    double a[4][8];
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            a[i][j] = in[i][j];
            a[i][j + 4] = i == j ? 1 : 0;
        }
    for (int c = 0; c < 4; ++c) {
        int p = c;
        for (int r = c + 1; r < 4; ++r)
            if (std::fabs(a[r][c]) > std::fabs(a[p][c])) p = r;
        if (!(std::fabs(a[p][c]) > 1e-300)) return false;
        if (p != c)
            for (int j = 0; j < 8; ++j)
                std::swap(a[p][j], a[c][j]);
        double k = 1 / a[c][c];
        for (int j = 0; j < 8; ++j)
            a[c][j] *= k;
        for (int r = 0; r < 4; ++r) {
            if (r == c) continue;
            double f = a[r][c];
            if (f == 0) continue;
            for (int j = 0; j < 8; ++j)
                a[r][j] -= f * a[c][j];
        }
    }
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            out[i][j] = a[i][j + 4];
            if (!std::isfinite(out[i][j])) return false;
        }
    return true;
}

} // namespace

bool RayCamera::setUp(const TQ3XPassInfo& pass) {
    multiply(pass.worldToView, pass.viewToFrustum, forward);
    M4 inverse;
    if (!invert(forward, inverse)) return false;
    // frustum z is 0 at hither and -1 at yon
    for (int j = 0; j < 4; ++j) {
        at[0][j] = static_cast<float>(inverse[3][j]);
        at[1][j] = static_cast<float>(inverse[3][j] - inverse[2][j]);
        acrossX[j] = static_cast<float>(inverse[0][j]);
        acrossY[j] = static_cast<float>(inverse[1][j]);
    }
    fx = pass.frustumToWindow.value[0][0];
    fy = pass.frustumToWindow.value[1][1];
    ox = pass.frustumToWindow.value[3][0];
    oy = pass.frustumToWindow.value[3][1];
    ortho = pass.cameraType == kQ3CameraTypeOrthographic;
    return std::isfinite(fx) && std::isfinite(fy) && std::isfinite(ox) && std::isfinite(oy) &&
           fx != 0 && fy != 0;
}

void Rays::resize(std::size_t n) {
    if (x.size() >= n) return;
    for (std::vector<double>* v : {&x, &y})
        v->resize(n);
    for (std::vector<float>* v : {&ox, &oy, &oz, &dx, &dy, &dz, &tfar})
        v->resize(n);
    ok.resize(n);
}

namespace {

// The frustum to world rows of RayCamera, for the loop below.
struct Inverse {
    float at[2][4], acrossX[4], acrossY[4];
};

// Each window point is taken to the hither and yon planes; the ray runs
// from the one to the other.
LWSL_WIDE void makeRays(const Inverse& m, double fx, double fy, double offX, double offY, Rays& r,
                        std::size_t n) {
    const double* x = r.x.data();
    const double* y = r.y.data();
    float *ox = r.ox.data(), *oy = r.oy.data(), *oz = r.oz.data();
    float *dx = r.dx.data(), *dy = r.dy.data(), *dz = r.dz.data(), *tfar = r.tfar.data();
    std::int32_t* ok = r.ok.data();
    const float most = std::numeric_limits<float>::max(); // above it: not finite
    LWSL_INDEPENDENT
    for (std::size_t i = 0; i < n; ++i) {
        const auto nx = static_cast<float>((x[i] - offX) / fx),
                   ny = static_cast<float>((y[i] - offY) / fy);
        float p[2][3];
        bool good = true;
        for (int k = 0; k < 2; ++k) {
            float h[4];
            for (int j = 0; j < 4; ++j)
                h[j] = m.at[k][j] + nx * m.acrossX[j] + ny * m.acrossY[j];
            good &= std::fabs(h[3]) > 1e-30f;
            const float w = 1 / h[3];
            for (int j = 0; j < 3; ++j)
                p[k][j] = h[j] * w;
        }
        const float d[3] = {p[1][0] - p[0][0], p[1][1] - p[0][1], p[1][2] - p[0][2]};
        const float len = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        good &= (len > 0) & (len <= most);
        const float k = 1 / len;
        ox[i] = p[0][0];
        oy[i] = p[0][1];
        oz[i] = p[0][2];
        dx[i] = d[0] * k;
        dy[i] = d[1] * k;
        dz[i] = d[2] * k;
        tfar[i] = len;
        ok[i] = good & (std::fabs(p[0][0]) <= most) & (std::fabs(p[0][1]) <= most) &
                (std::fabs(p[0][2]) <= most);
    }
}

} // namespace

void RayCamera::raysAt(Rays& r, std::size_t n) const {
    Inverse m;
    std::copy(&at[0][0], &at[0][0] + 8, &m.at[0][0]);
    std::copy(acrossX, acrossX + 4, m.acrossX);
    std::copy(acrossY, acrossY + 4, m.acrossY);
    makeRays(m, fx, fy, ox, oy, r, n);
}

bool RayCamera::windowOf(const TQ3Point3D& p, double& x, double& y) const {
    double h[4];
    for (int j = 0; j < 4; ++j)
        h[j] = p.x * forward[0][j] + p.y * forward[1][j] + p.z * forward[2][j] + forward[3][j];
    if (!(h[3] > 1e-12) || !std::isfinite(h[3])) return false;
    x = h[0] / h[3] * fx + ox;
    y = h[1] / h[3] * fy + oy;
    return std::isfinite(x) && std::isfinite(y);
}

} // namespace lwsl
