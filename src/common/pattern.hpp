// Patterns of bits for the SSE registers, which take doubles apart without arithmetic.
#pragma once

#include <common/abi.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// A high word and a low word, for both doubles of a register.
struct alignas(16) DoublePattern {
    uint32_t words[4];

    constexpr DoublePattern(uint32_t high, uint32_t low)
        : words{low, high, low, high} {}
    QORKES_INLINE __m128 load() const {
        return _mm_load_ps(reinterpret_cast<const float*>(words));
    }
};

} // namespace qorkes
