// The vector kernels that distributions stand on, by the type of the numbers: an
// algorithm is written once for doubles and floats. Where the float kernel is a fast
// one, the name says `quick`.
#pragma once

#include <common/bits.hpp>
#include <qorkes/qor.h>

#include <algorithm>

namespace qorkes {

QORKES_INLINE void exponential(int n, const double* a, double* y) {
    _qordExp_HA(n, a, y);
}
QORKES_INLINE void exponential(int n, const float* a, float* y) {
    _qorsExp_HA(n, a, y);
}

QORKES_INLINE void logarithm(int n, const double* a, double* y) { _qordLn_HA(n, a, y); }
QORKES_INLINE void logarithm(int n, const float* a, float* y) { _qorsLn_HA(n, a, y); }

/// The logarithms that a call for each would give; y may be a. Of a pair with a number
/// that is not positive and normal, the float kernel takes the other one another way.
QORKES_INLINE void singleLogarithms(int n, const double* a, double* y) {
    logarithm(n, a, y);
}
QORKES_INLINE void singleLogarithms(int n, const float* a, float* y) {
    const bool areOrdinary = std::all_of(
        a, a + n, [](const float& x) { return isPositiveNormalFloat(bitsOf(x)); });
    if (areOrdinary) return logarithm(n, a, y);
    for (int i = 0; i < n; ++i) logarithm(1, a + i, y + i);
}

QORKES_INLINE void squareRoot(int n, const double* a, double* y) {
    _qordSqrt_HA(n, a, y);
}
QORKES_INLINE void squareRoot(int n, const float* a, float* y) {
    _qorsSqrt_HA(n, a, y);
}

QORKES_INLINE void power(int n, const double* a, const double* b, double* y) {
    _qordPow_HA(n, a, b, y);
}
QORKES_INLINE void power(int n, const float* a, const float* b, float* y) {
    _qorsPow_HA(n, a, b, y);
}
QORKES_INLINE void power(int n, const double* a, double b, double* y) {
    _qordPowx_HA(n, a, b, y);
}
QORKES_INLINE void power(int n, const float* a, float b, float* y) {
    _qorsPowx_HA(n, a, b, y);
}

QORKES_INLINE void quickPower(int n, const double* a, const double* b, double* y) {
    _qordPow_50(n, a, b, y);
}
QORKES_INLINE void quickPower(int n, const float* a, const float* b, float* y) {
    _qorsPow_21(n, a, b, y);
}

QORKES_INLINE void quickSine(int n, const double* a, double* y) {
    _qordSin_HA(n, a, y);
}
QORKES_INLINE void quickSine(int n, const float* a, float* y) { _qorsSin_21(n, a, y); }

QORKES_INLINE void quickCosine(int n, const double* a, double* y) {
    _qordCos_HA(n, a, y);
}
QORKES_INLINE void quickCosine(int n, const float* a, float* y) {
    _qorsCos_21(n, a, y);
}

QORKES_INLINE void quickSineCosine(int n, const double* a, double* sine,
                                   double* cosine) {
    _qordSinCos_HA(n, a, sine, cosine);
}
QORKES_INLINE void quickSineCosine(int n, const float* a, float* sine, float* cosine) {
    _qorsSinCos_21(n, a, sine, cosine);
}

QORKES_INLINE void quickTangent(int n, const double* a, double* y) {
    _qordTan_50(n, a, y);
}
QORKES_INLINE void quickTangent(int n, const float* a, float* y) {
    _qorsTan_21(n, a, y);
}

/// Every step-th number of a; y may be a.
QORKES_INLINE void pick(int n, const double* a, int step, double* y) {
    _qordPackI(n, a, step, y);
}
QORKES_INLINE void pick(int n, const float* a, int step, float* y) {
    _qorsPackI(n, a, step, y);
}

/// The value of a kernel at one number.
template <class T> QORKES_INLINE T logarithmOf(T x) {
    logarithm(1, &x, &x);
    return x;
}
template <class T> QORKES_INLINE T exponentialOf(T x) {
    exponential(1, &x, &x);
    return x;
}
template <class T> QORKES_INLINE T squareRootOf(T x) {
    squareRoot(1, &x, &x);
    return x;
}
template <class T> QORKES_INLINE T powerOf(T x, T y) {
    power(1, &x, y, &x);
    return x;
}

} // namespace qorkes
