// A knot vector: a non-decreasing array of doubles. Every curve of the
// library is clamped: its first degree + 1 and last degree + 1 knots are equal.
#pragma once

#include "curves/VCurveStatus.h"

#include <cstdint>
#include <memory>

class VKnots {
  public:
    VKnots() = default;
    // count < 1 gives status 6; values are copied when given, else zeroed.
    VKnots(VCurveStatus& status, std::int32_t count, const double* values);
    virtual ~VKnots() = default;

    VKnots(const VKnots&) = delete;
    VKnots& operator=(const VKnots&) = delete;

    // A copy with status 1 when memory runs out (then the copy is empty).
    std::unique_ptr<VKnots> Clone(VCurveStatus& status) const;

    // Checks that the vector is usable for a clamped curve of this degree with
    // pointCount control points: finite, non-decreasing, clamped at both ends
    // and of non-zero length. Status 13 for a missing array, 7 otherwise.
    VCurveStatus Validate(std::int32_t degree, std::int32_t pointCount) const;

    // Number of spans from index degree to count - degree - 2 of non-zero length.
    std::int32_t CountSpans(std::int32_t degree) const;

    VCurveStatus FindSpan(std::int32_t degree, double u, bool fromRight, std::int32_t& span) const;
    VCurveStatus FindSpanMult(std::int32_t degree, double u, bool fromRight, std::int32_t& span,
                              std::int32_t& multiplicity) const;
    // N receives degree + 1 values.
    VCurveStatus BasisFuns(std::int32_t degree, double u, bool fromRight, double* N,
                           std::int32_t& span) const;
    // ders is (derivCount + 1) rows of degree + 1 values; row k holds the k-th
    // derivatives of the non-zero basis functions.
    VCurveStatus DersBasisFuns(std::int32_t degree, double u, bool fromRight,
                               std::int32_t derivCount, double* ders, std::int32_t& span) const;
    VCurveStatus OneBasisFun(std::int32_t index, std::int32_t degree, double u, bool fromRight,
                             double& value) const;
    // ders receives derivCount + 1 values: the function and its derivatives.
    VCurveStatus DersOneBasisFun(std::int32_t index, std::int32_t degree, double u, bool fromRight,
                                 std::int32_t derivCount, double* ders) const;
    // A new array of the distinct knot values, in order.
    VCurveStatus Distinct(std::int32_t& outCount, std::unique_ptr<double[]>& outValues) const;
    // Maps the knots linearly onto a..b; nothing happens when both ends are
    // already within 1e-5 of a and b.
    VCurveStatus Rescale(std::int32_t degree, double a, double b);

    // The maximum of basis function N(index, degree) and where it lies.
    VCurveStatus FindBasisMaximum(std::int32_t index, std::int32_t degree, double tolerance,
                                  double& value, double& location) const;
    // Smallest (L) and largest (R) values of N(index, degree) on each of the
    // degree + 1 spans of its support, and the location of its maximum.
    VCurveStatus GetBasisExtents(std::int32_t index, std::int32_t degree, double tolerance,
                                 double* L, double* R, double& location) const;

    double First() const { return values[0]; }
    double Last() const { return values[count - 1]; }

    std::int32_t count = 0;
    std::unique_ptr<double[]> values;

  private:
    bool BasicChecks(std::int32_t degree) const;
    bool InSpan(std::int32_t j, double u, bool fromRight) const;
};
