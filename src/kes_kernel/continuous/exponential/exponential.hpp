// Exponential variates, a - beta ln(u): the inverse of their distribution function.
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

QORKES_INLINE void scaleExponentials(int n, double* r, double a, double beta) {
    scale(n, r, -ext{beta}, a);
}

/// Floats stay at a or above.
QORKES_INLINE void scaleExponentials(int n, float* r, float a, float beta) {
    const __m128 shifts = _mm_set1_ps(a);
    const __m128 factors = _mm_sub_ps(_mm_setzero_ps(), _mm_set1_ps(beta));
    inFours(n, r, [=](__m128 x) {
        return _mm_max_ps(_mm_add_ps(_mm_mul_ps(x, factors), shifts), shifts);
    });
}

template <class T>
QORKES_INLINE int exponentials(StreamState* stream, int n, T* r, T a, T beta) {
    const int status = uniforms(stream, n, r);
    if (failed(status)) return status;
    logarithm(n, r, r);
    scaleExponentials(n, r, a, beta);
    return status;
}

} // namespace qorkes
