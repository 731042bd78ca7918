// Runs: products along dimension 0, added to the sums of up to four outputs whose y lie
// `step` apart. What is loaded of x then serves all four, and four sums are under way.
//
// Each structure here is a way to sum:
//
//     Sum, kept       a sum between two runs
//     Wide, widened   within a run
//     ofX, ofY        an element, or four neighbours for as many outputs
//     plus            the sum with a product added
#pragma once

#include <common/ext.hpp>

#include <type_traits>
#include <xmmintrin.h>

namespace qorkes {

template <class Runs, int outputs, class T>
QORKES_INLINE void addRun(typename Runs::Sum* sums, const T* x, const T* y,
                          ptrdiff_t step, int n) {
    // No array: the compiler would keep it in memory.
    typename Runs::Wide sum0 = Runs::widened(sums[0]), sum1 = sum0, sum2 = sum0,
                        sum3 = sum0;
    if constexpr (outputs > 1) sum1 = Runs::widened(sums[1]);
    if constexpr (outputs > 2) sum2 = Runs::widened(sums[2]);
    if constexpr (outputs > 3) sum3 = Runs::widened(sums[3]);
    for (int i = 0; i < n; ++i) {
        const auto factor = Runs::ofX(x + i);
        const T* const at = y + i;
        sum0 = Runs::plus(sum0, factor, Runs::ofY(at));
        if constexpr (outputs > 1)
            sum1 = Runs::plus(sum1, factor, Runs::ofY(at + step));
        if constexpr (outputs > 2)
            sum2 = Runs::plus(sum2, factor, Runs::ofY(at + 2 * step));
        if constexpr (outputs > 3)
            sum3 = Runs::plus(sum3, factor, Runs::ofY(at + 3 * step));
    }
    sums[0] = Runs::kept(sum0);
    if constexpr (outputs > 1) sums[1] = Runs::kept(sum1);
    if constexpr (outputs > 2) sums[2] = Runs::kept(sum2);
    if constexpr (outputs > 3) sums[3] = Runs::kept(sum3);
}

constexpr float none = 0;

/// In extended precision, kept as it is or rounded to double.
template <class Kept> struct ExtendedRuns {
    using Sum = Kept;
    using Wide = ext;

    static ext widened(Sum sum) { return sum; }
    static Sum kept(ext sum) {
        if constexpr (std::is_same_v<Sum, ext>)
            return sum;
        else
            return round64(sum);
    }
    static ext ofX(const double* x) { return loaded(*x); }
    static ext ofY(const double* y) { return loaded(*y); }
    static ext plus(ext sum, ext x, ext y) { return sum + x * y; }

    /// From memory, since the compiler would store a constant by halves, which the unit
    /// waits for when it loads the whole.
    static Sum zero() { return kept(loadedHere(none)); }
    static void store(double* z, Sum sum) { *z = round64(sum); }
};
using DoubleRuns = ExtendedRuns<double>;

/// In single precision: for one output; for four neighbours that take the same part of
/// x, from places of y that move along; or for four that take the same part of y, from
/// places of x that move back, of which x is that of the last output, in lane 0.
enum class Lanes { one, alongY, alongX };

template <Lanes lanes> struct FloatRuns {
    using Sum = __m128;
    using Wide = __m128;

    static Sum widened(Sum sum) { return sum; }
    static Sum kept(Sum sum) { return sum; }
    static __m128 ofX(const float* x) { return element(x, lanes == Lanes::alongX); }
    static __m128 ofY(const float* y) { return element(y, lanes == Lanes::alongY); }
    static __m128 plus(__m128 sum, __m128 x, __m128 y) {
        return lanes == Lanes::one ? _mm_add_ss(sum, _mm_mul_ss(x, y))
                                   : _mm_add_ps(sum, _mm_mul_ps(x, y));
    }
    static Sum zero() { return _mm_setzero_ps(); }
    static void store(float* z, Sum sum) {
        if (lanes == Lanes::one)
            _mm_store_ss(z, sum);
        else if (lanes == Lanes::alongY)
            _mm_storeu_ps(z, sum);
        else
            _mm_storeu_ps(z, _mm_shuffle_ps(sum, sum, _MM_SHUFFLE(0, 1, 2, 3)));
    }
    static __m128 element(const float* p, bool moves) {
        return lanes == Lanes::one ? _mm_load_ss(p)
               : moves             ? _mm_loadu_ps(p)
                                   : _mm_load1_ps(p);
    }
};

} // namespace qorkes
