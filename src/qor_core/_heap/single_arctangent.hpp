// Atan and Atan2 in single precision, in four lanes that round at each step.
//
// The kernels of high accuracy take the angle of a base near the ratio, in two parts,
// and a short series for what is left of the ratio; the others one long series for a
// ratio up to 1.
#pragma once

#include <qor_core/_heap/lanes.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

/// Where the intervals of the bases 17/32, 1 and infinity begin.
constexpr float flBound1 = 0.4375f, flBound2 = 0.72f, flBound3 = 2.29f;
static_assert(hasPattern(flBound2, 0x3F3851EC) && hasPattern(flBound3, 0x40128F5C));

/// All bits of the lanes that lie beyond each bound.
struct Intervals {
    __m128 beyond1, beyond2, beyond3;
};

/// The value of the last bound that a lane lies beyond; 0 before the first one.
QORKES_INLINE __m128 valueAt(const Intervals& lanes, float v1, float v2, float v3) {
    const auto change = [](float from, float to) {
        return _mm_xor_ps(_mm_set1_ps(from), _mm_set1_ps(to));
    };
    return _mm_xor_ps(_mm_xor_ps(_mm_and_ps(lanes.beyond1, _mm_set1_ps(v1)),
                                 _mm_and_ps(lanes.beyond2, change(v1, v2))),
                      _mm_and_ps(lanes.beyond3, change(v2, v3)));
}

QORKES_INLINE __m128 baseOf(const Intervals& lanes) {
    return valueAt(lanes, 0.53125f, 1.0f, 1.0f);
}
QORKES_INLINE __m128 angleHighOf(const Intervals& lanes) {
    return valueAt(lanes, 0.484375f, 0.75f, 1.5625f);
}
QORKES_INLINE __m128 angleLowOf(const Intervals& lanes) {
    return valueAt(lanes, 0x1.03742ep-8f, 0x1.21fb54p-5f, 0x1.0fdaa2p-7f);
}
static_assert(hasPattern(0x1.03742ep-8f, 0x3B81BA17) &&
              hasPattern(0x1.21fb54p-5f, 0x3D10FDAA) &&
              hasPattern(0x1.0fdaa2p-7f, 0x3C07ED51));

/// arctan(t) - t, for |t| up to 7/16: two chains of every second coefficient.
QORKES_INLINE __m128 arctangentLessRatio(__m128 t) {
    const __m128 u = _mm_mul_ps(t, t), v = _mm_mul_ps(u, u);
    const __m128 first =
        polynomial(v, -0x1.555542p-2f, -0x1.236ba4p-3f, -0x1.dc9c22p-5f);
    const __m128 second = polynomial(v, 0x1.998db8p-3f, 0x1.adaf34p-4f);
    return _mm_mul_ps(_mm_add_ps(_mm_mul_ps(first, u), _mm_mul_ps(second, v)), t);
}

/// arctan(t) for |t| up to 1.
QORKES_INLINE __m128 longArctangent(__m128 t) {
    return _mm_mul_ps(t, polynomial(_mm_mul_ps(t, t), 1.0f, -0x1.5554a6p-2f,
                                    0x1.9972e8p-3f, -0x1.22e400p-3f, 0x1.b3da48p-4f,
                                    -0x1.33603cp-4f, 0x1.5dba9cp-5f, -0x1.0744b8p-6f,
                                    0x1.758a6ep-9f));
}

constexpr float flPiDiv2 = 0x1.921fb6p+0f;
static_assert(hasPattern(flPiDiv2, 0x3FC90FDB));

// ---- Atan2 --------------------------------------------------------------------------

/// All bits of the lanes within which no product of parts of a and b leaves the normal
/// numbers.
QORKES_INLINE __m128 isOrdinary(__m128 x) {
    const __m128 magnitude = magnitudeOf(x);
    return _mm_and_ps(_mm_cmpge_ps(magnitude, _mm_set1_ps(0x1p-62f)),
                      _mm_cmple_ps(magnitude, _mm_set1_ps(0x1p+62f)));
}

QORKES_COLD inline void storeSpecialAngles(int lanes, __m128 ordinates,
                                           __m128 abscissas, float* y) {
    alignas(16) float a[4], b[4];
    _mm_store_ps(a, ordinates);
    _mm_store_ps(b, abscissas);
    forEachLane(lanes, [&](int k) { y[k] = round32(_qorsatan2_scalar(a[k], b[k])); });
}

/// Corrects some stored lanes.
QORKES_INLINE void correctSpecials(int lanes, __m128 a, __m128 b, float* y) {
    lanes &= ~_mm_movemask_ps(_mm_and_ps(isOrdinary(a), isOrdinary(b)));
    if (lanes) [[unlikely]]
        storeSpecialAngles(lanes, a, b, y);
}

/// `angles(a, b)` for ordinary points, and the scalar routine for the others.
template <auto angles>
QORKES_NOINLINE void anglesOf(int n, const float* a, const float* b, float* y) {
    const auto four = [=](int i) {
        const __m128 ordinates = _mm_loadu_ps(a + i), abscissas = _mm_loadu_ps(b + i);
        _mm_storeu_ps(y + i, angles(ordinates, abscissas));
        correctSpecials(0xF, ordinates, abscissas, y + i);
    };
    const auto one = [=](int i) {
        const __m128 ordinate = _mm_load1_ps(a + i), abscissa = _mm_load1_ps(b + i);
        _mm_store_ss(y + i, angles(ordinate, abscissa));
        correctSpecials(1, ordinate, abscissa, y + i);
    };
    inGroups<4>(n, four, one);
}

} // namespace qorkes
