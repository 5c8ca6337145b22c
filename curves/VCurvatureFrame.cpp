#include "curves/VCurvatureFrame.h"

bool CurvatureFrame(const KVector3D& A, const KVector3D& B, const KVector3D& C, KVector3D& tangent,
                    KVector3D& normal) {
    KVector3D ab = B - A;
    KVector3D bc = C - B;
    if (!(ab.Length() >= kFrameEps) || !(bc.Length() >= kFrameEps)) return false;
    KVector3D u = ab.Unit();
    KVector3D v = bc.Unit();
    KVector3D turn = v - u;
    KVector3D along = u + v;
    // A turn of exactly 180 degrees leaves no tangent to speak of.
    if (!(turn.Length() >= kFrameEps) || !(along.Length() >= kFrameEps)) return false;
    KVector3D t = along.Unit();
    // v - u is perpendicular to u + v for unit u and v; remove the rounding
    // so that the frame stays orthonormal.
    KVector3D n = turn - t * turn.Dot(t);
    if (!(n.Length() >= kFrameEps)) return false;
    tangent = t;
    normal = n.Unit();
    return true;
}
