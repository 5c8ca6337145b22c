// A clamped non-uniform rational B-spline: double-precision knots and
// single-precision homogeneous control points. The representation behind
// every custom path and every shape the curve tools make.
#pragma once

#include "curves/KVector3D.h"
#include "curves/VCurveCtrlPoints.h"
#include "curves/VCurveStatus.h"
#include "curves/VKnots.h"
#include "foundation/KListEntry.h"

#include <cstdint>
#include <memory>

// Points sampled along the curve for picking, with their parameters.
class VCurveDrawingData {
  public:
    virtual ~VCurveDrawingData() = default;
    std::int32_t count = 0;
    std::unique_ptr<KVector3D[]> points;
    std::unique_ptr<double[]> parameters;
};

// Bezier pieces of a curve in one block; pieces[i] points at piece i.
struct VBezierPieces {
    std::int32_t count = 0;
    std::int32_t size = 0; // points per piece: degree + 1
    std::unique_ptr<KVector3D[]> block;
    std::unique_ptr<KVector3D*[]> pieces;
};

// A list entry, so that lists of curves (the results of merging Bezier
// chains, the records of custom paths) can own them.
class VCNurbsCurve : public KListEntry {
  public:
    // Running arc length against uniform parameters over the domain.
    class VCNURBSArcLenthData {
      public:
        virtual ~VCNURBSArcLenthData() = default;
        std::int32_t count = 0;
        std::unique_ptr<double[]> parameters;
        std::unique_ptr<double[]> lengths;
    };

    VCNurbsCurve() = default;
    // Zeroed arrays for degree and pointCount; status 2, 6 or 1 on failure.
    VCNurbsCurve(VCurveStatus& status, std::int32_t degree, std::int32_t pointCount);
    ~VCNurbsCurve() override = default;

    VCNurbsCurve(const VCNurbsCurve&) = delete;
    VCNurbsCurve& operator=(const VCNurbsCurve&) = delete;

    // Stores a homogeneous point; on a closed curve the first and last stay equal.
    virtual VCurveStatus SetControlPoint(std::int32_t index, const KVector3D& point);
    // Frame at arc length s of the 100-chord measure.
    virtual bool GetFrameAt(float s, KVector3D& point, KVector3D& tangent, KVector3D& normal,
                            KVector3D& binormal);
    virtual bool GetTangentAt(float s, KVector3D& tangent);
    virtual bool GetPointAt(float s, KVector3D& point);

    // Copies the given homogeneous points and knots. Status 2, 6, 7, 12 or 13
    // for bad input, 1 without memory; on failure the curve is left empty.
    VCurveStatus Set(std::int32_t degree, std::int32_t pointCount, const KVector3D* points,
                     std::int32_t knotCount, const double* knotValues, std::int32_t closed);
    // Status 0 when the curve has consistent points and knots.
    VCurveStatus CheckValid() const;
    VCurveStatus GetDomain(double& uMin, double& uMax) const;
    std::int32_t GetControlPointCount() const;
    VCurveStatus GetControlPoints(std::int32_t& count, const KVector3D*& pointer) const;
    VCurveStatus GetControlPoint(std::int32_t index, KVector3D& point) const;
    // Replaces all points; the array must hold GetControlPointCount() points.
    VCurveStatus SetControlPoints(const KVector3D* points);
    // Adds delta to the Euclidean position of one point, keeping its weight.
    VCurveStatus AddToControlPoint(std::int32_t index, const KVector3D& delta);
    VCurveStatus Translate(const KVector3D& delta);

    // Point (x, y, z, 1) at parameter u; the output is untouched on failure.
    VCurveStatus Evaluate(double u, bool fromRight, KVector3D& point) const;
    // Length of the 100-chord polygon over uniform parameters, into arcLength.
    VCurveStatus CalcLength();
    // Point and parameter at arc length s; false unless 0 <= s < arcLength.
    bool FindAtLength(float s, KVector3D& point, double& u) const;
    // Equal-chord samples, pointsPerSpan per non-empty span, into drawingData.
    VCurveStatus Tessellate(double tolerance);
    // Sample nearest to point (squared distance and its parameter).
    VCurveStatus FindNearest(const KVector3D& point, double& distance, double& u);

    // Arc-length table of count uniform parameters; each interval is measured
    // by subdividing its chord until it is flat within tolerance.
    VCurveStatus BuildArcLengthTable(std::int32_t count, double tolerance);
    // Parameter at arc length s from the table (status 11 without a table).
    VCurveStatus GetParameterAt(double s, double& u) const;
    // The table's total, or the length by Bezier pieces without a table.
    VCurveStatus GetTotalLength(double tolerance, double& length) const;

    // Bezier pieces of the curve, homogeneous, in one block.
    VCurveStatus DecomposeToBezier(VBezierPieces& out) const;
    // Sum of the Bezier lengths of the pieces, each with tolerance / spans.
    VCurveStatus LengthByBezierPieces(double tolerance, double& length) const;

    // A new curve of the same degree running from u1 to u2.
    std::unique_ptr<VCNurbsCurve> ExtractSegment(double u1, double u2, VCurveStatus& status) const;
    // Inserts the count non-decreasing knots X.
    VCurveStatus RefineKnots(std::int32_t count, const double* X);
    // Derivatives 0..derivCount of the Euclidean curve at u (out[k] is C^(k)).
    VCurveStatus EvaluateDerivatives(double u, bool fromRight, std::int32_t derivCount,
                                     KVector3D* out) const;
    VCurveStatus GetFrenetFrame(double u, bool fromRight, KVector3D& tangent, KVector3D& normal,
                                KVector3D& binormal) const;
    // Removes as many inner knots as keep the curve within tolerance.
    VCurveStatus RemoveKnots(float tolerance);
    // Error bound for removing one instance of knot r of multiplicity s.
    VCurveStatus GetRemovalBound(std::int32_t r, std::int32_t s, double& bound) const;

    // Frees the caches; every change of points or knots ends with it, and
    // code that writes ctrlPoints or knots directly must call it too.
    void Invalidate();

    std::int32_t degree = 0;
    std::int32_t closed = 0;
    std::unique_ptr<VCurveCtrlPoints> ctrlPoints;
    std::unique_ptr<VKnots> knots;
    std::int32_t pointsPerSpan = 5;
    std::unique_ptr<VCurveDrawingData> drawingData;
    std::unique_ptr<VCNURBSArcLenthData> arcLengthData;
    float arcLength = 0.0f;

  private:
    // Chords of the arc-length measure.
    static constexpr int kChordCount = 100;
    VCurveStatus BuildChordSums() const;
    // Running chord sums of FindAtLength and the last sample; a cache
    // dropped by Invalidate.
    mutable std::unique_ptr<float[]> chordSums;
    mutable KVector3D chordEnd;

    VCurveStatus SampleSpan(double u0, double u1, std::int32_t n, double tolerance,
                            KVector3D* points, double* params) const;
    double MeasureInterval(double u0, double u1, const KVector3D& p0, const KVector3D& p1,
                           double tolerance, int depth) const;
};
