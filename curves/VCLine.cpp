#include "curves/VCLine.h"

#include <cmath>

namespace {
struct D3 {
    double x, y, z;
};
D3 ToD3(const KVector3D& v) {
    return {v.x, v.y, v.z};
}
double Dot(const D3& a, const D3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
double Len(const D3& a) {
    return std::sqrt(Dot(a, a));
}
} // namespace

VCurveStatus VCLine::Intersect(const VCLine& line, KVector3D& meeting, double& tThis,
                               double& tOther, bool& found) const {
    found = false;
    const D3 p1 = ToD3(point), p2 = ToD3(line.point);
    D3 d1 = ToD3(direction), d2 = ToD3(line.direction);
    const double len1 = Len(d1), len2 = Len(d2);
    if (!(len1 > kCurveEqualEps) || !(len2 > kCurveEqualEps) || !std::isfinite(len1) ||
        !std::isfinite(len2))
        return kCurveOK;
    d1 = {d1.x / len1, d1.y / len1, d1.z / len1};
    d2 = {d2.x / len2, d2.y / len2, d2.z / len2};
    const D3 w{p2.x - p1.x, p2.y - p1.y, p2.z - p1.z};
    const double a = Dot(d1, d1), b = Dot(d1, d2), c = Dot(d2, d2);
    const double d = Dot(d1, w), e = Dot(d2, w);
    const double det = a * c - b * b;
    if (std::fabs(det) < kCurveEqualEps) return kCurveOK;
    const double sNum = d * c - e * b;
    const double tNum = d * b - e * a;
    if (WouldOverflow(sNum, det, VCurveOp::Divide) && sNum != 0.0) return kCurveDivisionOverflow;
    if (WouldOverflow(tNum, det, VCurveOp::Divide) && tNum != 0.0) return kCurveDivisionOverflow;
    const double s = sNum / det;
    const double t = tNum / det;
    if (bounded && (s / len1 < 0.0 || s / len1 > 1.0)) return kCurveOK;
    if (line.bounded && (t / len2 < 0.0 || t / len2 > 1.0)) return kCurveOK;
    const D3 q1{p1.x + s * d1.x, p1.y + s * d1.y, p1.z + s * d1.z};
    const D3 q2{p2.x + t * d2.x, p2.y + t * d2.y, p2.z + t * d2.z};
    meeting = KVector3D(float(0.5 * (q1.x + q2.x)), float(0.5 * (q1.y + q2.y)),
                        float(0.5 * (q1.z + q2.z)), 1.0f);
    tThis = s;
    tOther = t;
    found = true;
    return kCurveOK;
}
