// A run is the part of a sum of products that goes along dimension 0. Each of the
// structures here adds runs to the sums of outputs:
//
//     Sum      the sum of one output, or of several that are neighbours in dimension 0
//     one      adds a run of n products
//     four     the same for four sums whose y lie `step` apart
//     store    puts a sum into z
//
// Between runs a sum is a number of the arrays' type.
#pragma once

#include <kes_kernel/conv_corr/sums.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// In extended precision, rounded after each run.
struct DoubleRuns {
    using Sum = double;

    QORKES_INLINE static void one(double& sum, const double* x, const double* y,
                                  int n) {
        ext extended = sum;
        addProducts(extended, x, y, n);
        sum = round64(extended);
    }
    QORKES_INLINE static void four(double (&sums)[4], const double* x, const double* y,
                                   ptrdiff_t step, int n) {
        ext extended[4] = {sums[0], sums[1], sums[2], sums[3]};
        addProducts(extended, x, y, step, n);
        for (int j = 0; j < 4; ++j) sums[j] = round64(extended[j]);
    }
    static void store(double* z, double sum) { *z = sum; }
};

/// Each lane of a register sums for one output: n products of a factor that all share
/// and of neighbours.
QORKES_INLINE __m128 addLanes(__m128 sums, const float* shared, const float* neighbours,
                              int n) {
    for (int i = 0; i < n; ++i)
        sums = _mm_add_ps(
            sums, _mm_mul_ps(_mm_load1_ps(shared + i), _mm_loadu_ps(neighbours + i)));
    return sums;
}

/// One output.
struct FloatRuns {
    using Sum = __m128;

    QORKES_INLINE static void one(__m128& sum, const float* x, const float* y, int n) {
        for (int i = 0; i < n; ++i)
            sum = _mm_add_ss(sum, _mm_mul_ss(_mm_load_ss(x + i), _mm_load_ss(y + i)));
    }
    QORKES_INLINE static void four(__m128 (&sums)[4], const float* x, const float* y,
                                   ptrdiff_t step, int n) {
        for (int j = 0; j < 4; ++j) one(sums[j], x, y + j * step, n);
    }
    static void store(float* z, __m128 sum) { _mm_store_ss(z, sum); }
};

/// Four outputs that take the same part of x, from places of y that move along.
struct FloatRunsAlongY {
    using Sum = __m128;

    QORKES_INLINE static void one(__m128& sum, const float* x, const float* y, int n) {
        sum = addLanes(sum, x, y, n);
    }
    QORKES_INLINE static void four(__m128 (&sums)[4], const float* x, const float* y,
                                   ptrdiff_t step, int n) {
        __m128 sum0 = sums[0], sum1 = sums[1], sum2 = sums[2], sum3 = sums[3];
        for (int i = 0; i < n; ++i) {
            const __m128 factor = _mm_load1_ps(x + i);
            const float* const at = y + i;
            sum0 = _mm_add_ps(sum0, _mm_mul_ps(factor, _mm_loadu_ps(at)));
            sum1 = _mm_add_ps(sum1, _mm_mul_ps(factor, _mm_loadu_ps(at + step)));
            sum2 = _mm_add_ps(sum2, _mm_mul_ps(factor, _mm_loadu_ps(at + 2 * step)));
            sum3 = _mm_add_ps(sum3, _mm_mul_ps(factor, _mm_loadu_ps(at + 3 * step)));
        }
        sums[0] = sum0;
        sums[1] = sum1;
        sums[2] = sum2;
        sums[3] = sum3;
    }
    static void store(float* z, __m128 sum) { _mm_storeu_ps(z, sum); }
};

/// Four outputs that take the same part of y, from places of x that move back; x is
/// that of the last output, which has lane 0.
struct FloatRunsAlongX {
    using Sum = __m128;

    QORKES_INLINE static void one(__m128& sum, const float* x, const float* y, int n) {
        sum = addLanes(sum, y, x, n);
    }
    QORKES_INLINE static void four(__m128 (&sums)[4], const float* x, const float* y,
                                   ptrdiff_t step, int n) {
        __m128 sum0 = sums[0], sum1 = sums[1], sum2 = sums[2], sum3 = sums[3];
        for (int i = 0; i < n; ++i) {
            const __m128 neighbours = _mm_loadu_ps(x + i);
            const float* const at = y + i;
            sum0 = _mm_add_ps(sum0, _mm_mul_ps(neighbours, _mm_load1_ps(at)));
            sum1 = _mm_add_ps(sum1, _mm_mul_ps(neighbours, _mm_load1_ps(at + step)));
            sum2 =
                _mm_add_ps(sum2, _mm_mul_ps(neighbours, _mm_load1_ps(at + 2 * step)));
            sum3 =
                _mm_add_ps(sum3, _mm_mul_ps(neighbours, _mm_load1_ps(at + 3 * step)));
        }
        sums[0] = sum0;
        sums[1] = sum1;
        sums[2] = sum2;
        sums[3] = sum3;
    }
    static void store(float* z, __m128 sum) {
        _mm_storeu_ps(z, _mm_shuffle_ps(sum, sum, _MM_SHUFFLE(0, 1, 2, 3)));
    }
};

} // namespace qorkes
