// From a generator's words to real numbers of a range [a, b): word * scale + a, in
// extended precision with one rounding at the store. Where the scale is rounded itself,
// the generator says so: round64(rangeScale(...)).
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

#include <qorkes/kes.h>

#include <xmmintrin.h>

namespace qorkes {

/// The width of one step of 32-bit words in [0, 1).
constexpr double stepOfWords = 0x1p-32;
static_assert(hasPattern(stepOfWords, 0x3DF0000000000000));

/// b - a times the width of one step of the words, unrounded.
template <class Real> QORKES_INLINE ext rangeScale(Real a, Real b, double step) {
    return (ext{b} - a) * step;
}

QORKES_INLINE void storeRounded(double& r, ext x) { r = round64(x); }
QORKES_INLINE void storeRounded(float& r, ext x) { r = round32(x); }

/// A word in an array of real numbers.
using WordInPlace [[gnu::may_alias]] = uint32_t;

/// A 32-bit word in lane 0 of an SSE register, zero above it.
QORKES_INLINE __m128 inLaneZero(const WordInPlace& word) {
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
QORKES_INLINE ext wordAsNumber(const WordInPlace& word) {
    return lowHalfAsNumber(inLaneZero(word));
}
QORKES_INLINE ext wordsAsNumber(const uint32_t& low, const uint32_t& high) {
    return lowHalfAsNumber(_mm_unpacklo_ps(inLaneZero(low), inLaneZero(high)));
}

/// r[i] becomes words[i] * scale + a. A shift by +0 is left out where it cannot even
/// change the sign of a zero.
template <class Real>
QORKES_INLINE void scaleWords(const WordInPlace* words, int n, Real* r, ext scale,
                              Real a) {
    if (bitsOf(a) == 0 && scale > 0) {
        for (int i = 0; i < n; ++i) storeRounded(r[i], wordAsNumber(words[i]) * scale);
        return;
    }
    const ext shift = a;
    for (int i = 0; i < n; ++i)
        storeRounded(r[i], wordAsNumber(words[i]) * scale + shift);
}

/// The real slots of a generator with words of 32 bits: n words by the integer slot
/// into the array's upper end, then real numbers from its start on. Those never
/// overtake the words: a float takes the place of its own, a double that of some before
/// it.
template <BrngIntegers deliver, class Real>
QORKES_INLINE int drawScaled(StreamState* stream, int n, Real* r, ext scale, Real a) {
    if (n < 1) return KesStatusOk;
    constexpr int wordsEach = sizeof(Real) / sizeof(uint32_t);
    WordInPlace* words = reinterpret_cast<WordInPlace*>(r) + (wordsEach - 1) * n;
    deliver(stream, n, words);
    scaleWords(words, n, r, scale, a);
    return KesStatusOk;
}

} // namespace qorkes
