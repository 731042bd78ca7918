// Steps on the four lanes of an SSE register that several kernels take.
#pragma once

#include <common/abi.hpp>

#include <xmmintrin.h>

namespace qorkes {

QORKES_INLINE __m128 signOf(__m128 x) { return _mm_and_ps(x, _mm_set1_ps(-0.0f)); }

/// Lane by lane a where the mask is set, b elsewhere.
QORKES_INLINE __m128 select(__m128 mask, __m128 a, __m128 b) {
    return _mm_or_ps(_mm_and_ps(mask, a), _mm_andnot_ps(mask, b));
}

QORKES_INLINE __m128 magnitudeOf(__m128 x) {
    return _mm_andnot_ps(_mm_set1_ps(-0.0f), x);
}

/// body(k) for each lane k whose bit is set.
template <class Body> QORKES_INLINE void forEachLane(int lanes, Body body) {
    for (int k = 0; lanes != 0; lanes >>= 1, ++k)
        if (lanes & 1) body(k);
}

/// c0 + c1 x + ... by Horner's rule.
QORKES_INLINE __m128 polynomial(__m128, float c0) { return _mm_set1_ps(c0); }
template <class... Rest>
QORKES_INLINE __m128 polynomial(__m128 x, float c0, Rest... rest) {
    return _mm_add_ps(_mm_set1_ps(c0), _mm_mul_ps(x, polynomial(x, rest...)));
}

} // namespace qorkes
