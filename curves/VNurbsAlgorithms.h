// Routines that make and transform curves: cubic interpolation, Bezier
// splitting, extraction, length and degree elevation.
#pragma once

#include "curves/KVector3D.h"
#include "curves/VCNurbsCurve.h"
#include "curves/VCurveStatus.h"

#include <cstdint>
#include <memory>

// Parameter modes of ChooseParameters.
enum : std::int32_t { kParamUniform = 0, kParamChordLength = 1, kParamCentripetal = 2 };

// u receives count parameters from 0 to 1. Status 20 for a bad argument.
VCurveStatus ChooseParameters(const KVector3D* points, std::int32_t count, std::int32_t mode,
                              double* u);

// C2 cubic spline through count points with the given end derivatives.
// The curve is handed over only on success.
VCurveStatus InterpolateCubic(const KVector3D* points, std::int32_t count,
                              const KVector3D& startTangent, const KVector3D& endTangent,
                              std::int32_t mode, std::unique_ptr<VCNurbsCurve>& curve);

// A single Bezier segment of degree count - 1 through the homogeneous points.
std::unique_ptr<VCNurbsCurve> MakeBezierCurve(std::int32_t count, const KVector3D* points);

// de Casteljau split at t in homogeneous coordinates; left and right each
// receive degree + 1 points.
VCurveStatus SplitBezier(std::int32_t degree, const KVector3D* points, double t, KVector3D* left,
                         KVector3D* right);

// The part of a Bezier segment between t1 and t2 (degree + 1 points).
VCurveStatus ExtractBezier(std::int32_t degree, const KVector3D* points, double t1, double t2,
                           KVector3D* result);

// Length by adaptive subdivision of polygon against chord.
VCurveStatus BezierLength(std::int32_t degree, const KVector3D* points, double tolerance,
                          double& length);

// Raises the degree by times; result receives degree + times + 1 points.
VCurveStatus ElevateBezier(std::int32_t degree, std::int32_t times, const KVector3D* points,
                           KVector3D* result);

// Binomial coefficients C(i, j) for 0 <= j <= i <= n, row i at i * (n + 1).
VCurveStatus MakeBinomialTable(std::unique_ptr<std::int64_t[]>& table, std::int32_t n);

// count new knot vectors, each the union of the given ones: every distinct
// value with the highest multiplicity that any input gives it.
VCurveStatus MergeKnots(std::int32_t count, const VKnots* const* vectors,
                        std::unique_ptr<VKnots>* merged);
