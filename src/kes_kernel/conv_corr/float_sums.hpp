// Sums of float products along a line, every step rounded. Runs of eight products and
// more are summed in two registers of four, once y has reached its alignment; which
// products meet in which lane therefore depends on the address of y.
#pragma once

#include <common/abi.hpp>

#include <xmmintrin.h>

namespace qorkes {

constexpr int productsAtOnce = 8;

/// Elements from p up to the next multiple of `alignment` bytes, or -1 if there is
/// none.
QORKES_INLINE int elementsToBoundary(const float* p, uintptr_t alignment) {
    const uintptr_t address = reinterpret_cast<uintptr_t>(p);
    if (address % sizeof(float) != 0) return -1;
    return static_cast<int>((0 - address) % alignment / sizeof(float));
}

QORKES_INLINE bool hasBody(int head, int n) {
    return head >= 0 && n - head >= productsAtOnce;
}

QORKES_INLINE __m128 addOne(__m128 sum, const float* x, const float* y) {
    return _mm_add_ss(sum, _mm_mul_ss(_mm_load_ss(x), _mm_load_ss(y)));
}

/// Lanes 0 and 2 plus lanes 1 and 3, into lane 0.
QORKES_INLINE __m128 lanesAdded(__m128 v) {
    v = _mm_add_ps(v, _mm_movehl_ps(v, v));
    return _mm_add_ss(v, _mm_shuffle_ps(v, v, 1));
}

QORKES_INLINE void addProducts(float& total, const float* x, const float* y, int n) {
    __m128 sum = _mm_load_ss(&total);
    int i = 0;
    const int head = elementsToBoundary(y, 16);
    if (hasBody(head, n)) {
        for (; i < head; ++i) sum = addOne(sum, x + i, y + i);
        __m128 second = _mm_setzero_ps();
        for (; i <= n - productsAtOnce; i += productsAtOnce) {
            _mm_prefetch(reinterpret_cast<const char*>(x + i) + 64, _MM_HINT_T0);
            _mm_prefetch(reinterpret_cast<const char*>(y + i) + 64, _MM_HINT_T0);
            sum = _mm_add_ps(sum, _mm_mul_ps(_mm_loadu_ps(x + i), _mm_load_ps(y + i)));
            second = _mm_add_ps(
                second, _mm_mul_ps(_mm_loadu_ps(x + i + 4), _mm_load_ps(y + i + 4)));
        }
        sum = lanesAdded(_mm_add_ps(sum, second));
    }
    for (; i < n; ++i) sum = addOne(sum, x + i, y + i);
    _mm_store_ss(&total, sum);
}

/// One product for each of four outputs, whose y are neighbours.
QORKES_INLINE __m128 addFour(__m128 sums, const float* x, const float* y) {
    return _mm_add_ps(sums, _mm_mul_ps(_mm_load1_ps(x), _mm_loadu_ps(y)));
}

/// Four products of every eight, for four outputs.
QORKES_INLINE void addBody(__m128 (&sums)[4], const float* x, const float* y, int n) {
    __m128 sum0 = sums[0], sum1 = sums[1], sum2 = sums[2], sum3 = sums[3];
    for (int i = 0; i < n; i += productsAtOnce) {
        _mm_prefetch(reinterpret_cast<const char*>(x + i) + 64, _MM_HINT_T0);
        _mm_prefetch(reinterpret_cast<const char*>(y + i) + 76, _MM_HINT_T0);
        const __m128 factors = _mm_loadu_ps(x + i);
        sum0 = _mm_add_ps(sum0, _mm_mul_ps(factors, _mm_loadu_ps(y + i)));
        sum1 = _mm_add_ps(sum1, _mm_mul_ps(factors, _mm_loadu_ps(y + i + 1)));
        sum2 = _mm_add_ps(sum2, _mm_mul_ps(factors, _mm_loadu_ps(y + i + 2)));
        sum3 = _mm_add_ps(sum3, _mm_mul_ps(factors, _mm_load_ps(y + i + 3)));
    }
    sums[0] = sum0;
    sums[1] = sum1;
    sums[2] = sum2;
    sums[3] = sum3;
}

/// The same for four outputs, sum by sum: what is single in each of them goes in the
/// lanes of one register. Aligned is y of the last output.
QORKES_INLINE void addProducts(float (&totals)[4], const float* x, const float* y,
                               int n) {
    __m128 sums = _mm_loadu_ps(totals);
    int i = 0;
    const int head = elementsToBoundary(y + 3, 32);
    if (hasBody(head, n)) {
        for (; i < head; ++i) sums = addFour(sums, x + i, y + i);
        const int body = (n - i) / productsAtOnce * productsAtOnce;
        const __m128 zero = _mm_setzero_ps();
        __m128 first[4] = {sums, zero, zero, zero};
        _MM_TRANSPOSE4_PS(first[0], first[1], first[2], first[3]);
        addBody(first, x + i, y + i, body);
        __m128 second[4] = {zero, zero, zero, zero};
        addBody(second, x + i + 4, y + i + 4, body);
        for (int j = 0; j < 4; ++j) first[j] = _mm_add_ps(first[j], second[j]);
        _MM_TRANSPOSE4_PS(first[0], first[1], first[2], first[3]);
        sums =
            _mm_add_ps(_mm_add_ps(first[0], first[2]), _mm_add_ps(first[1], first[3]));
        i += body;
    }
    for (; i < n; ++i) sums = addFour(sums, x + i, y + i);
    _mm_storeu_ps(totals, sums);
}

} // namespace qorkes
