// The loop of the float kernels of lower accuracy (Sin_21 and its fellows). Counting
// and polynomials run in four lanes, rounded to single precision at each step; the
// reduction between them runs on the x87 unit at 64 bits. Each block of the array is
// reduced before it is evaluated: a vector load right behind the four stores that it
// covers would wait for them.
//
// A kernel brings, as static members,
//     limit                  of |x|, beyond which a group goes to the scalar code
//     step                   what x is reduced by
//     counts(x)              how often
//     skipsSmall             whether four |x| up to pi/4 are left as they are
//     evaluate(r, counts)    the results
//     hasSecond              whether there are two
//     scalarCode(i, a, y, z)
#pragma once

#include <qor_core/_heap/lanes.hpp>
#include <qor_core/_heap/trig_groups.hpp>

namespace qorkes {

struct LaneResults {
    __m128 first, second;
};

/// The nearest integer, for magnitudes below 2^22.
QORKES_INLINE __m128 nearestInteger(__m128 x) {
    const __m128 shifter = _mm_set1_ps(0x1.8p+23f);
    return _mm_sub_ps(_mm_add_ps(x, shifter), shifter);
}

/// All bits of the lanes whose integer is odd.
QORKES_INLINE __m128 areOdd(__m128 integer) {
    const __m128 half = _mm_mul_ps(integer, _mm_set1_ps(0.5f));
    return _mm_cmpneq_ps(half, nearestInteger(half));
}

QORKES_INLINE __m128 quarterTurns(__m128 x) {
    return nearestInteger(_mm_mul_ps(x, _mm_set1_ps(0x1.45f306p-1f)));
}

constexpr float quarterPi = 0x1.921fb6p-1f;
static_assert(hasPattern(quarterPi, 0x3F490FDB));

template <class Kernel>
QORKES_INLINE void reduceLanes(const float* x, float* counts, float* r) {
    const __m128 lanes = _mm_loadu_ps(x);
    if (Kernel::skipsSmall && areWithin(lanes, quarterPi)) {
        _mm_store_ps(counts, _mm_setzero_ps());
        _mm_store_ps(r, lanes);
        return;
    }
    _mm_store_ps(counts, Kernel::counts(lanes));
    r[0] = round32(reduced(x[0], loadedHere(counts[0]), Kernel::step));
    r[1] = round32(reduced(x[1], loadedHere(counts[1]), Kernel::step));
    r[2] = round32(reduced(x[2], loadedHere(counts[2]), Kernel::step));
    r[3] = round32(reduced(x[3], loadedHere(counts[3]), Kernel::step));
}

/// Up to blockSize elements in whole groups of four.
template <class Kernel>
QORKES_INLINE void evaluateBlock(int i, int end, const float* a, float* y, float* z) {
    alignas(16) float counts[blockSize], r[blockSize];
    bool isDone[blockSize / 4] = {};
    for (int k = 0; i + k < end; k += 4) {
        if (areWithin(_mm_loadu_ps(a + i + k), Kernel::limit)) [[likely]] {
            reduceLanes<Kernel>(a + i + k, counts + k, r + k);
            continue;
        }
        for (int j = i + k; j < i + k + 4; ++j) Kernel::scalarCode(j, a, y, z);
        isDone[k / 4] = true;
    }
    for (int k = 0; i + k < end; k += 4) {
        if (isDone[k / 4]) [[unlikely]]
            continue;
        const LaneResults results =
            Kernel::evaluate(_mm_load_ps(r + k), _mm_load_ps(counts + k));
        _mm_storeu_ps(y + i + k, results.first);
        if (Kernel::hasSecond) _mm_storeu_ps(z + i + k, results.second);
    }
}

template <class Kernel>
QORKES_INLINE void evaluateOne(int i, const float* a, float* y, float* z) {
    const __m128 x = _mm_load_ss(a + i);
    if (!areWithin(x, Kernel::limit)) [[unlikely]]
        return Kernel::scalarCode(i, a, y, z);
    alignas(16) float lanes[4], counts[4], r[4];
    _mm_store_ps(lanes, x);
    reduceLanes<Kernel>(lanes, counts, r);
    const LaneResults results = Kernel::evaluate(_mm_load_ps(r), _mm_load_ps(counts));
    _mm_store_ss(y + i, results.first);
    if (Kernel::hasSecond) _mm_store_ss(z + i, results.second);
}

template <class Kernel>
QORKES_NOINLINE void evaluateLanes(int n, const float* a, float* y, float* z) {
    const int whole = n < 4 ? 0 : n & ~3;
    for (int i = 0; i < whole; i += blockSize)
        evaluateBlock<Kernel>(i, whole - i < blockSize ? whole : i + blockSize, a, y,
                              z);
    for (int i = whole; i < n; ++i) evaluateOne<Kernel>(i, a, y, z);
}

} // namespace qorkes
