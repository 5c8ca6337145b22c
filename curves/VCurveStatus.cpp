#include "curves/VCurveStatus.h"

#include <cmath>
#include <limits>

namespace {
const double kLogMax = std::log(std::numeric_limits<double>::max());
const double kLogMin = std::log(std::numeric_limits<double>::min());

bool LogInRange(double v) {
    return v > kLogMin && v < kLogMax;
}
} // namespace

bool WouldOverflow(double a, double b, VCurveOp op) {
    if (!std::isfinite(a) || !std::isfinite(b)) return true;
    const double largest = std::numeric_limits<double>::max();
    switch (op) {
    case VCurveOp::Multiply:
        if (a == 0.0 || b == 0.0) return false;
        return !LogInRange(std::log(std::fabs(a)) + std::log(std::fabs(b)));
    case VCurveOp::Divide:
        if (b == 0.0) return true;
        if (a == 0.0) return false;
        return !LogInRange(std::log(std::fabs(a)) - std::log(std::fabs(b)));
    case VCurveOp::Add:
        if ((a < 0.0) != (b < 0.0)) return false;
        return !(std::fabs(b) < largest - std::fabs(a));
    case VCurveOp::Subtract:
        if ((a < 0.0) == (b < 0.0)) return false;
        return !(std::fabs(b) < largest - std::fabs(a));
    }
    return true;
}
