// Status codes of the curve library. Every operation that can fail returns
// one of these; 0 is success. The library never throws.
#pragma once

#include <cstdint>
#include <memory>
#include <new>

using VCurveStatus = std::int32_t;

enum : VCurveStatus {
    kCurveOK = 0,
    kCurveNoMemory = 1,
    kCurveBadDegree = 2,
    kCurveBadDimension = 3,
    kCurveParamOutOfRange = 4,
    kCurveBadBasisIndex = 5,
    kCurveBadPointCount = 6,
    kCurveBadKnotCount = 7,
    kCurveMissingHandlePointer = 8,
    kCurveRunWithoutFirst = 9,
    kCurveRunWithoutLast = 10,
    kCurveNoSuchOperation = 11,
    kCurveMissingCtrlPoints = 12,
    kCurveMissingKnots = 13,
    kCurveNoBasisMaximum = 14,
    kCurveDivisionOverflow = 15,
    kCurveNegativeRadius = 16,
    kCurveSizeTooSmall = 17,
    kCurveTooFewSides = 18,
    kCurveBadAxis = 19,
    kCurveBadBezierArgument = 20,
};

// Knots, weights and coordinates count as equal within this absolute distance.
inline constexpr double kCurveEqualEps = 1e-12;

// The largest point or knot count the library accepts, so that sizes such as
// count + degree + 1 never overflow a 32-bit integer.
inline constexpr std::int32_t kCurveMaxCount = 1 << 24;

// The highest degree the library accepts (status 2 above it): the basis
// derivative tables grow with its square.
inline constexpr std::int32_t kCurveMaxDegree = 64;

// WouldOverflow operations.
enum class VCurveOp { Multiply = 0, Divide = 1, Add = 2, Subtract = 3 };

// True when a op b would leave the range of a double (or divide by zero).
bool WouldOverflow(double a, double b, VCurveOp op);

// Allocates a zero-initialised array without throwing; null on failure.
template <class T> std::unique_ptr<T[]> NewCurveArray(std::int64_t n) {
    if (n < 0 || n > (std::int64_t(1) << 30)) return nullptr;
    return std::unique_ptr<T[]>(new (std::nothrow) T[n < 1 ? 1 : n]());
}
