#include "curves/VKnots.h"

#include <cmath>
#include <cstring>

VKnots::VKnots(VCurveStatus& status, std::int32_t n, const double* src) {
    status = kCurveOK;
    if (n < 1 || n > kCurveMaxCount) {
        status = kCurveBadPointCount;
        return;
    }
    values = NewCurveArray<double>(n);
    if (!values) {
        status = kCurveNoMemory;
        return;
    }
    count = n;
    if (src) std::memcpy(values.get(), src, sizeof(double) * std::size_t(n));
}

std::unique_ptr<VKnots> VKnots::Clone(VCurveStatus& status) const {
    auto copy = std::unique_ptr<VKnots>(new (std::nothrow) VKnots());
    if (!copy) {
        status = kCurveNoMemory;
        return nullptr;
    }
    status = kCurveOK;
    if (!values || count < 1) return copy;
    copy->values = NewCurveArray<double>(count);
    if (!copy->values) {
        status = kCurveNoMemory;
        return copy;
    }
    copy->count = count;
    std::memcpy(copy->values.get(), values.get(), sizeof(double) * std::size_t(count));
    return copy;
}

VCurveStatus VKnots::Validate(std::int32_t degree, std::int32_t pointCount) const {
    if (degree < 1 || degree > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (pointCount < 1) return kCurveBadPointCount;
    if (std::int64_t(count) != std::int64_t(pointCount) + degree + 1) return kCurveBadKnotCount;
    if (pointCount < degree + 1) return kCurveBadKnotCount;
    for (std::int32_t i = 0; i < count; ++i) {
        if (!std::isfinite(values[i])) return kCurveBadKnotCount;
        if (i > 0 && values[i] < values[i - 1]) return kCurveBadKnotCount;
    }
    const double* U = values.get();
    if (!(U[count - 1] - U[0] > kCurveEqualEps)) return kCurveBadKnotCount;
    for (std::int32_t i = 1; i <= degree; ++i) {
        if (U[i] - U[0] >= kCurveEqualEps) return kCurveBadKnotCount;
        if (U[count - 1] - U[count - 1 - i] >= kCurveEqualEps) return kCurveBadKnotCount;
    }
    // Clamped exactly: the end runs hold degree + 1 knots, no run holds more.
    std::int32_t run = 1;
    for (std::int32_t i = 1; i < count; ++i) {
        run = (U[i] - U[i - 1] < kCurveEqualEps) ? run + 1 : 1;
        if (run > degree + 1) return kCurveBadKnotCount;
    }
    return kCurveOK;
}

bool VKnots::BasicChecks(std::int32_t degree) const {
    return values && count >= 2 && degree >= 1 && degree <= kCurveMaxDegree &&
           count >= 2 * (degree + 1);
}

std::int32_t VKnots::CountSpans(std::int32_t degree) const {
    if (!BasicChecks(degree)) return 0;
    std::int32_t spans = 0;
    for (std::int32_t i = degree; i <= count - degree - 2; ++i)
        if (values[i + 1] - values[i] > kCurveEqualEps) ++spans;
    return spans;
}

bool VKnots::InSpan(std::int32_t j, double u, bool fromRight) const {
    return fromRight ? (values[j] <= u && u < values[j + 1])
                     : (values[j] < u && u <= values[j + 1]);
}

VCurveStatus VKnots::FindSpan(std::int32_t degree, double u, bool fromRight,
                              std::int32_t& span) const {
    if (degree < 1 || degree > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (!BasicChecks(degree)) return kCurveBadKnotCount;
    const double* U = values.get();
    if (!(u >= U[0] - kCurveEqualEps && u <= U[count - 1] + kCurveEqualEps))
        return kCurveParamOutOfRange;
    std::int32_t low = degree;
    std::int32_t high = count - degree - 1;
    if (!fromRight && std::fabs(u - U[degree]) < kCurveEqualEps) {
        span = degree;
        return kCurveOK;
    }
    if (fromRight && std::fabs(u - U[high]) < kCurveEqualEps) {
        span = high - 1;
        return kCurveOK;
    }
    // Bisection keeps U[low] <= u < U[high] (from the right) or
    // U[low] < u <= U[high] (from the left); it always ends, even on a
    // malformed vector.
    while (high - low > 1) {
        std::int32_t mid = low + (high - low) / 2;
        bool below = fromRight ? (u < U[mid]) : (u <= U[mid]);
        if (below)
            high = mid;
        else
            low = mid;
    }
    span = low;
    return kCurveOK;
}

VCurveStatus VKnots::FindSpanMult(std::int32_t degree, double u, bool fromRight, std::int32_t& span,
                                  std::int32_t& multiplicity) const {
    VCurveStatus st = FindSpan(degree, u, fromRight, span);
    if (st != kCurveOK) return st;
    std::int32_t m = 0;
    for (std::int32_t i = 0; i < count; ++i)
        if (std::fabs(values[i] - u) < kCurveEqualEps) ++m;
    multiplicity = m;
    return kCurveOK;
}

namespace {
// Scratch storage for the small arrays of one basis evaluation: on the stack
// for ordinary degrees, from the heap beyond.
struct Scratch {
    double local[64];
    std::unique_ptr<double[]> heap;
    double* data = nullptr;
    bool Get(std::int64_t n) {
        if (n <= 64) {
            data = local;
        } else {
            heap = NewCurveArray<double>(n);
            data = heap.get();
        }
        return data != nullptr;
    }
};
} // namespace

VCurveStatus VKnots::BasisFuns(std::int32_t degree, double u, bool fromRight, double* N,
                               std::int32_t& span) const {
    if (!N) return kCurveBadBezierArgument;
    const std::int32_t p = degree;
    if (p < 1 || p > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (!BasicChecks(p)) return kCurveBadKnotCount;
    const double* U = values.get();
    if (!(u >= U[0] - kCurveEqualEps && u <= U[count - 1] + kCurveEqualEps))
        return kCurveParamOutOfRange;
    if (std::fabs(u - U[p]) < kCurveEqualEps) {
        for (std::int32_t j = 0; j <= p; ++j)
            N[j] = 0.0;
        N[0] = 1.0;
        span = p;
        return kCurveOK;
    }
    if (std::fabs(u - U[count - p - 1]) < kCurveEqualEps) {
        for (std::int32_t j = 0; j <= p; ++j)
            N[j] = 0.0;
        N[p] = 1.0;
        span = count - p - 2;
        return kCurveOK;
    }
    std::int32_t i = 0;
    VCurveStatus st = FindSpan(p, u, fromRight, i);
    if (st != kCurveOK) return st;
    Scratch s;
    if (!s.Get(2 * (std::int64_t(p) + 1))) return kCurveNoMemory;
    double* left = s.data;
    double* right = s.data + p + 1;
    N[0] = 1.0;
    for (std::int32_t j = 1; j <= p; ++j) {
        left[j] = u - U[i + 1 - j];
        right[j] = U[i + j] - u;
        double saved = 0.0;
        for (std::int32_t r = 0; r < j; ++r) {
            double den = right[r + 1] + left[j - r];
            double temp = den != 0.0 ? N[r] / den : 0.0;
            N[r] = saved + right[r + 1] * temp;
            saved = left[j - r] * temp;
        }
        N[j] = saved;
    }
    span = i;
    return kCurveOK;
}

VCurveStatus VKnots::DersBasisFuns(std::int32_t degree, double u, bool fromRight,
                                   std::int32_t derivCount, double* ders,
                                   std::int32_t& span) const {
    if (!ders || derivCount < 0) return kCurveBadBezierArgument;
    const std::int32_t p = degree;
    std::int32_t i = 0;
    VCurveStatus st = FindSpan(p, u, fromRight, i);
    if (st != kCurveOK) return st;
    const double* U = values.get();
    const std::int64_t w = std::int64_t(p) + 1;
    Scratch s;
    if (!s.Get(w * w + 4 * w)) return kCurveNoMemory;
    double* ndu = s.data; // ndu[j][r] at j * w + r
    double* left = ndu + w * w;
    double* right = left + w;
    double* a0 = right + w;
    double* a1 = a0 + w;
    auto NDU = [&](std::int64_t r, std::int64_t c) -> double& { return ndu[r * w + c]; };
    NDU(0, 0) = 1.0;
    for (std::int32_t j = 1; j <= p; ++j) {
        left[j] = u - U[i + 1 - j];
        right[j] = U[i + j] - u;
        double saved = 0.0;
        for (std::int32_t r = 0; r < j; ++r) {
            NDU(j, r) = right[r + 1] + left[j - r];
            double temp = NDU(j, r) != 0.0 ? NDU(r, j - 1) / NDU(j, r) : 0.0;
            NDU(r, j) = saved + right[r + 1] * temp;
            saved = left[j - r] * temp;
        }
        NDU(j, j) = saved;
    }
    for (std::int64_t k = 0; k <= derivCount; ++k)
        for (std::int64_t j = 0; j <= p; ++j)
            ders[k * w + j] = 0.0;
    for (std::int32_t j = 0; j <= p; ++j)
        ders[j] = NDU(j, p);
    const std::int32_t n = derivCount < p ? derivCount : p;
    auto safeDiv = [](double a, double b) { return b != 0.0 ? a / b : 0.0; };
    for (std::int32_t r = 0; r <= p; ++r) {
        double* as1 = a0;
        double* as2 = a1;
        as1[0] = 1.0;
        for (std::int32_t k = 1; k <= n; ++k) {
            double d = 0.0;
            std::int32_t rk = r - k;
            std::int32_t pk = p - k;
            if (r >= k) {
                as2[0] = safeDiv(as1[0], NDU(pk + 1, rk));
                d = as2[0] * NDU(rk, pk);
            }
            std::int32_t j1 = rk >= -1 ? 1 : -rk;
            std::int32_t j2 = (r - 1 <= pk) ? k - 1 : p - r;
            for (std::int32_t j = j1; j <= j2; ++j) {
                as2[j] = safeDiv(as1[j] - as1[j - 1], NDU(pk + 1, rk + j));
                d += as2[j] * NDU(rk + j, pk);
            }
            if (r <= pk) {
                as2[k] = safeDiv(-as1[k - 1], NDU(pk + 1, r));
                d += as2[k] * NDU(r, pk);
            }
            ders[k * w + r] = d;
            double* t = as1;
            as1 = as2;
            as2 = t;
        }
    }
    double factor = p;
    for (std::int32_t k = 1; k <= n; ++k) {
        for (std::int32_t j = 0; j <= p; ++j)
            ders[k * w + j] *= factor;
        factor *= (p - k);
    }
    span = i;
    return kCurveOK;
}

VCurveStatus VKnots::OneBasisFun(std::int32_t index, std::int32_t degree, double u, bool fromRight,
                                 double& value) const {
    return DersOneBasisFun(index, degree, u, fromRight, 0, &value);
}

VCurveStatus VKnots::DersOneBasisFun(std::int32_t index, std::int32_t degree, double u,
                                     bool fromRight, std::int32_t derivCount, double* ders) const {
    const std::int32_t p = degree;
    if (p < 1 || p > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (!BasicChecks(p)) return kCurveBadKnotCount;
    if (!ders || derivCount < 0) return kCurveBadBezierArgument;
    if (index < 0 || index > count - p - 2) return kCurveBadBasisIndex;
    const double* U = values.get();
    if (!(u >= U[0] - kCurveEqualEps && u <= U[count - 1] + kCurveEqualEps))
        return kCurveParamOutOfRange;
    // At the ends of the domain only the one-sided limit from inside exists.
    if (fromRight && std::fabs(u - U[count - 1]) < kCurveEqualEps) fromRight = false;
    if (!fromRight && std::fabs(u - U[0]) < kCurveEqualEps) fromRight = true;
    if (u < U[0]) u = U[0];
    if (u > U[count - 1]) u = U[count - 1];

    for (std::int32_t k = 0; k <= derivCount; ++k)
        ders[k] = 0.0;
    const std::int32_t i = index;
    bool inSupport = fromRight ? (U[i] <= u && u < U[i + p + 1]) : (U[i] < u && u <= U[i + p + 1]);
    if (!inSupport) return kCurveOK;

    const std::int64_t w = std::int64_t(p) + 1;
    Scratch s;
    if (!s.Get(w * w + w)) return kCurveNoMemory;
    auto N = [&](std::int64_t j, std::int64_t k) -> double& { return s.data[j * w + k]; };
    double* ND = s.data + w * w;
    for (std::int32_t j = 0; j <= p; ++j)
        N(j, 0) = InSpan(i + j, u, fromRight) ? 1.0 : 0.0;
    for (std::int32_t k = 1; k <= p; ++k) {
        double saved = N(0, k - 1) == 0.0 ? 0.0 : ((u - U[i]) * N(0, k - 1)) / (U[i + k] - U[i]);
        for (std::int32_t j = 0; j <= p - k; ++j) {
            double uLeft = U[i + j + 1];
            double uRight = U[i + j + k + 1];
            if (N(j + 1, k - 1) == 0.0) {
                N(j, k) = saved;
                saved = 0.0;
            } else {
                double temp = N(j + 1, k - 1) / (uRight - uLeft);
                N(j, k) = saved + (uRight - u) * temp;
                saved = (u - uLeft) * temp;
            }
        }
    }
    ders[0] = N(0, p);
    const std::int32_t n = derivCount < p ? derivCount : p;
    for (std::int32_t k = 1; k <= n; ++k) {
        for (std::int32_t j = 0; j <= k; ++j)
            ND[j] = N(j, p - k);
        for (std::int32_t jj = 1; jj <= k; ++jj) {
            double saved = ND[0] == 0.0 ? 0.0 : ND[0] / (U[i + p - k + jj] - U[i]);
            for (std::int32_t j = 0; j <= k - jj; ++j) {
                double uLeft = U[i + j + 1];
                double uRight = U[i + j + p - k + jj + 1];
                if (ND[j + 1] == 0.0) {
                    ND[j] = (p - k + jj) * saved;
                    saved = 0.0;
                } else {
                    double temp = ND[j + 1] / (uRight - uLeft);
                    ND[j] = (p - k + jj) * (saved - temp);
                    saved = temp;
                }
            }
        }
        ders[k] = ND[0];
    }
    return kCurveOK;
}

VCurveStatus VKnots::Distinct(std::int32_t& outCount, std::unique_ptr<double[]>& outValues) const {
    if (!values || count < 1) return kCurveMissingKnots;
    auto out = NewCurveArray<double>(count);
    if (!out) return kCurveNoMemory;
    std::int32_t n = 0;
    for (std::int32_t i = 0; i < count; ++i)
        if (n == 0 || std::fabs(values[i] - out[n - 1]) >= kCurveEqualEps) out[n++] = values[i];
    outCount = n;
    outValues = std::move(out);
    return kCurveOK;
}

VCurveStatus VKnots::Rescale(std::int32_t degree, double a, double b) {
    if (degree < 1 || degree > kCurveMaxDegree) return kCurveBadDegree;
    if (!values || count < 2) return kCurveMissingKnots;
    if (!std::isfinite(a) || !std::isfinite(b) || !(b - a > kCurveEqualEps))
        return kCurveParamOutOfRange;
    double u0 = values[0];
    double u1 = values[count - 1];
    if (std::fabs(u0 - a) < 1e-5 && std::fabs(u1 - b) < 1e-5) return kCurveOK;
    double len = u1 - u0;
    if (!(len > kCurveEqualEps)) return kCurveMissingKnots;
    for (std::int32_t i = 0; i < count; ++i)
        values[i] = a + (values[i] - u0) / len * (b - a);
    values[count - 1] = b;
    return kCurveOK;
}
