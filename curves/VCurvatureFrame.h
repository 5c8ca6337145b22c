// The three-point frame shared by the analytic paths and the NURBS curves.
#pragma once

#include "curves/KVector3D.h"

// Below this length a chord or a change of direction counts as none.
inline constexpr float kFrameEps = 1e-5f;

// From points A, B, C: u = unit(B - A), v = unit(C - B); tangent = unit(u + v),
// normal = unit(v - u). Fails (returns false, writes nothing) when a chord or
// v - u is shorter than kFrameEps, or the path turns straight back on itself.
bool CurvatureFrame(const KVector3D& A, const KVector3D& B, const KVector3D& C, KVector3D& tangent,
                    KVector3D& normal);
