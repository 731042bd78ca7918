// From a generator's words to real numbers of a range [a, b): word * scale + a, in
// extended precision with one rounding at the store. Where the scale is rounded itself,
// the generator says so: round64(rangeScale(...)).
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// b - a times the width of one step of the words, unrounded.
template <class Real> QORKES_INLINE ext rangeScale(Real a, Real b, double step) {
    return (ext{b} - a) * step;
}

QORKES_INLINE void storeRounded(double& r, ext x) { r = round64(x); }
QORKES_INLINE void storeRounded(float& r, ext x) { r = round32(x); }

/// A 32-bit word in lane 0 of an SSE register, zero above it.
QORKES_INLINE __m128 inLaneZero(const uint32_t& word) {
    __m128 lanes;
    asm("movss %1, %0" : "=x"(lanes) : "m"(word));
    return lanes;
}

/// The low 64 bits of an SSE register, below 2^63, as a number. They reach memory by
/// one store: the unit would wait for two stores of 32 bits to leave the store buffer
/// before it could load them as one 64-bit integer.
QORKES_INLINE ext lowHalfAsNumber(__m128 lanes) {
    int64_t integer;
    asm("movlps %1, %0" : "=m"(integer) : "x"(lanes));
    return static_cast<ext>(integer);
}

/// Unsigned words as numbers, exactly.
QORKES_INLINE ext wordAsNumber(const uint32_t& word) {
    return lowHalfAsNumber(inLaneZero(word));
}
QORKES_INLINE ext wordsAsNumber(const uint32_t& low, const uint32_t& high) {
    return lowHalfAsNumber(_mm_unpacklo_ps(inLaneZero(low), inLaneZero(high)));
}

} // namespace qorkes
