// The vector kernels that distributions stand on, by the type of the numbers: an
// algorithm is written once for doubles and floats. Where the double kernel is the _HA
// one and the float kernel is a fast one, the name says `quick`.
#pragma once

#include <common/abi.hpp>
#include <qorkes/qor.h>

namespace qorkes {

QORKES_INLINE void exponential(int n, const double* a, double* y) {
    _qordExp_HA(n, a, y);
}
QORKES_INLINE void exponential(int n, const float* a, float* y) {
    _qorsExp_HA(n, a, y);
}

QORKES_INLINE void logarithm(int n, const double* a, double* y) { _qordLn_HA(n, a, y); }
QORKES_INLINE void logarithm(int n, const float* a, float* y) { _qorsLn_HA(n, a, y); }

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

/// Every step-th number of a; y may be a.
QORKES_INLINE void pick(int n, const double* a, int step, double* y) {
    _qordPackI(n, a, step, y);
}
QORKES_INLINE void pick(int n, const float* a, int step, float* y) {
    _qorsPackI(n, a, step, y);
}

/// The value of a kernel at one number.
QORKES_INLINE double logarithmOf(double x) {
    _qordLn_HA(1, &x, &x);
    return x;
}
QORKES_INLINE float logarithmOf(float x) {
    _qorsLn_HA(1, &x, &x);
    return x;
}
QORKES_INLINE double exponentialOf(double x) {
    _qordExp_HA(1, &x, &x);
    return x;
}
QORKES_INLINE float exponentialOf(float x) {
    _qorsExp_HA(1, &x, &x);
    return x;
}
QORKES_INLINE double squareRootOf(double x) {
    _qordSqrt_HA(1, &x, &x);
    return x;
}
QORKES_INLINE float squareRootOf(float x) {
    _qorsSqrt_HA(1, &x, &x);
    return x;
}

} // namespace qorkes
