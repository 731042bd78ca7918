// Words of 32 bits in the lanes of SSE registers, for logic on four at a time. They
// never pass through the x87 unit, which would change the patterns of some NaNs.
#pragma once

#include <common/abi.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// A word in an array of real numbers.
using WordInPlace [[gnu::may_alias]] = uint32_t;

QORKES_INLINE __m128 loadFour(const WordInPlace* words) {
    return _mm_loadu_ps(reinterpret_cast<const float*>(words));
}
QORKES_INLINE void storeFour(WordInPlace* words, __m128 four) {
    _mm_storeu_ps(reinterpret_cast<float*>(words), four);
}

/// A word in lane 0, zero above it.
QORKES_INLINE __m128 inLaneZero(const WordInPlace& word) {
    __m128 lanes;
    asm("movss %1, %0" : "=x"(lanes) : "m"(word));
    return lanes;
}

/// A word in every lane.
QORKES_INLINE __m128 fourOf(const WordInPlace& word) {
    const __m128 lanes = inLaneZero(word);
    return _mm_shuffle_ps(lanes, lanes, 0);
}

} // namespace qorkes
