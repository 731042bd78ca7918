// Asin and Acos in single precision, in four lanes that round at each step: the odd
// series in |x| up to a half, and from there to 1 twice the arcsine of the root of
// z = (1 - |x|) / 2.
#pragma once

#include <qor_core/_heap/lanes.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

/// pi/2 and pi as one float and in two parts, the first one truncated.
constexpr float flPio2 = 0x1.921fb6p+0f, flPio2hi = 0x1.921fb4p+0f,
                flPio2lo = 0x1.4442dp-24f;
constexpr float flPihiN = 0x1.921fb6p+1f, flPihi = 0x1.921fb4p+1f,
                flPilo = 0x1.4442dp-23f;
static_assert(hasPattern(flPio2, 0x3FC90FDB) && hasPattern(flPio2hi, 0x3FC90FDA) &&
              hasPattern(flPio2lo, 0x33A22168));
static_assert(hasPattern(flPihiN, 0x40490FDB) && hasPattern(flPihi, 0x40490FDA) &&
              hasPattern(flPilo, 0x34222168));

QORKES_INLINE __m128 distanceFromOne(__m128 magnitude) {
    return _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(1.0f), magnitude), _mm_set1_ps(0.5f));
}

QORKES_INLINE __m128 isNegative(__m128 x) { return _mm_cmplt_ps(x, _mm_setzero_ps()); }

/// The value in `mask`'s lanes, 0 elsewhere.
QORKES_INLINE __m128 where(__m128 mask, float value) {
    return _mm_and_ps(mask, _mm_set1_ps(value));
}

/// 1/x from the processor's estimate and one Newton step.
QORKES_INLINE __m128 refinedReciprocal(__m128 x) {
    const __m128 r = _mm_rcp_ps(x);
    return _mm_mul_ps(r, _mm_sub_ps(_mm_set1_ps(2.0f), _mm_mul_ps(x, r)));
}

/// high + low is the arcsine of |x|, or in the lanes of isEdge the arccosine.
struct ArcsineParts {
    __m128 isEdge, high, low;
};

/// The root is split in a short high part, whose square is exact, and a low part, which
/// makes up for the estimate of the root too.
QORKES_INLINE ArcsineParts arcsineParts(__m128 x) {
    alignas(16) static constexpr uint32_t shortMask[4] = {0xFFFF0000, 0xFFFF0000,
                                                          0xFFFF0000, 0xFFFF0000};
    const __m128 magnitude = magnitudeOf(x);
    const __m128 isEdge = _mm_cmpgt_ps(magnitude, _mm_set1_ps(0.5f));
    const __m128 w = distanceFromOne(magnitude);
    const __m128 isNotOne = _mm_cmpneq_ps(w, _mm_setzero_ps());

    const __m128 r = _mm_and_ps(_mm_rsqrt_ps(w), isNotOne);
    const __m128 estimate = _mm_mul_ps(w, r);
    const __m128 root =
        _mm_mul_ps(_mm_mul_ps(_mm_set1_ps(0.5f), estimate),
                   _mm_sub_ps(_mm_set1_ps(3.0f), _mm_mul_ps(r, estimate)));
    const __m128 high =
        _mm_and_ps(root, _mm_load_ps(reinterpret_cast<const float*>(shortMask)));
    const __m128 low = _mm_and_ps(_mm_mul_ps(_mm_sub_ps(w, _mm_mul_ps(high, high)),
                                             refinedReciprocal(_mm_add_ps(root, high))),
                                  isNotOne);

    const __m128 z = select(isEdge, w, _mm_mul_ps(magnitude, magnitude));
    const __m128 series = polynomial(z, 0x1.5555c8p-3f, 0x1.3301e4p-4f, 0x1.747e4ap-5f,
                                     0x1.8c283ep-6f, 0x1.596d28p-5f);
    const __m128 rest =
        _mm_mul_ps(select(isEdge, root, magnitude), _mm_mul_ps(z, series));
    const __m128 edgeRest = _mm_add_ps(rest, _mm_add_ps(low, low));
    return {isEdge, select(isEdge, _mm_add_ps(high, high), magnitude),
            _mm_add_ps(rest, _mm_and_ps(isEdge, edgeRest))};
}

/// The same sum as one float or, in the lanes of isEdge, half of it.
struct ShortArcsine {
    __m128 isEdge, value;
};

QORKES_INLINE ShortArcsine shortArcsine(__m128 x) {
    const __m128 magnitude = magnitudeOf(x);
    const __m128 isEdge = _mm_cmpge_ps(magnitude, _mm_set1_ps(0.5f));
    const __m128 w = distanceFromOne(magnitude);
    const __m128 z = select(isEdge, w, _mm_mul_ps(magnitude, magnitude));
    const __m128 root = select(isEdge, _mm_sqrt_ps(w), magnitude);
    const __m128 series =
        polynomial(z, 0x1.554f88p-3f, 0x1.34e25cp-4f, 0x1.4795p-5f, 0x1.9a201cp-5f);
    return {isEdge, _mm_add_ps(root, _mm_mul_ps(root, _mm_mul_ps(z, series)))};
}

/// Gives special lanes their NaN, and reports them if they are numbers.
template <class Function>
QORKES_COLD void storeSpecials(int lanes, int i, __m128 x, const float* a, float* y) {
    constexpr uint32_t defaultNaN = 0xFFC00000, quietBit = 0x00400000;
    alignas(16) uint32_t bits[4];
    _mm_store_ps(reinterpret_cast<float*>(bits), x);
    forEachLane(lanes, [&](int k) {
        const bool isNumber = (bits[k] & magnitudeBits) <= floatInfinity;
        setBits(y[i + k], isNumber ? defaultNaN : bits[k] | quietBit);
        if (isNumber) Function::errorGate(QOR_STATUS_ERRDOM, i + k, a, y);
    });
}

/// Corrects stored lanes, of the arguments x.
template <class Function>
QORKES_INLINE void correctSpecials(int i, __m128 x, const float* a, float* y) {
    const __m128 isSpecial = _mm_cmpnle_ps(magnitudeOf(x), _mm_set1_ps(1.0f));
    const int lanes = _mm_movemask_ps(isSpecial);
    if (lanes) [[unlikely]]
        storeSpecials<Function>(lanes, i, x, a, y);
}

/// A function is a structure of evaluate(x) and errorGate.
template <class Function>
QORKES_NOINLINE void arcsineLanes(int n, const float* a, float* y) {
    const auto four = [=](int i) {
        const __m128 x = _mm_loadu_ps(a + i);
        _mm_storeu_ps(y + i, Function::evaluate(x));
        correctSpecials<Function>(i, x, a, y);
    };
    const auto one = [=](int i) {
        const __m128 x = _mm_load_ss(a + i);
        _mm_store_ss(y + i, Function::evaluate(x));
        correctSpecials<Function>(i, x, a, y);
    };
    inGroups<4>(n, four, one);
}

} // namespace qorkes
