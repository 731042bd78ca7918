// Laplace variates, a -+ beta ln(u): of the two uniforms of each the first, u, gives
// the distance from a, the second the side.
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

/// r[i] = r[i] * factor + a: the factor is beta, or -beta where side[i] is at most a
/// half.
QORKES_INLINE void scaleBySides(int n, double* r, const double* side, double a,
                                double beta) {
    const double factors[2] = {beta, -beta};
    for (int i = 0; i < n; ++i) r[i] = round64(ext{r[i]} * factors[0.5 >= side[i]] + a);
}
QORKES_INLINE void scaleBySides(int n, float* r, const float* side, float a,
                                float beta) {
    const __m128 half = _mm_set1_ps(0.5f), sign = _mm_set1_ps(-0.0f);
    const __m128 factor = _mm_set1_ps(beta), shift = _mm_set1_ps(a);
    inFours(n, r, side, [=](__m128 x, __m128 u) {
        const __m128 flip = _mm_and_ps(_mm_cmpge_ps(half, u), sign);
        return _mm_add_ps(_mm_mul_ps(x, _mm_xor_ps(factor, flip)), shift);
    });
}

template <class T>
QORKES_INLINE int laplaces(StreamState* stream, int n, T* r, T a, T beta) {
    constexpr int size = 1024;
    T u[2 * size];
    return inBlocks<size>(n, [&](int start, int count) {
        const int status = uniforms(stream, 2 * count, u);
        if (failed(status)) return status;
        T* const y = r + start;
        splitPairs(count, u, y);
        logarithm(count, y, y);
        scaleBySides(count, y, u, a, beta);
        return status;
    });
}

} // namespace qorkes
