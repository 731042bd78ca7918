// Single-precision roots from the processor's estimate of 1/sqrt(x), cut to its top
// bits so that products with it are short, and one third-order correction. Every step
// rounds to single precision.
#pragma once

#include <common/bits.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// The bits of a float that take part in exact products: sign, exponent, 8 of fraction.
QORKES_INLINE __m128 shortPart(__m128 x) {
    alignas(16) static constexpr uint32_t mask[4] = {0xFFFF8000, 0xFFFF8000, 0xFFFF8000,
                                                     0xFFFF8000};
    return _mm_and_ps(x, _mm_load_ps(reinterpret_cast<const float*>(mask)));
}

/// -0.5 + e (0.375 - 0.3125 e): what is left of ((1 + e)^(-1/2) - 1) / e.
QORKES_INLINE __m128 rootCorrection(__m128 e) {
    const __m128 inner =
        _mm_add_ps(_mm_set1_ps(0.375f), _mm_mul_ps(e, _mm_set1_ps(-0.3125f)));
    return _mm_add_ps(_mm_set1_ps(-0.5f), _mm_mul_ps(e, inner));
}

} // namespace qorkes
