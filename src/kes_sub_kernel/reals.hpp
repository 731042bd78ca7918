// From a generator's words to real numbers of a range [a, b): word * scale + a, in
// extended precision with one rounding at the store. Where the scale is rounded itself,
// the generator says so: round64(rangeScale(...)).
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>
#include <kes_sub_kernel/lanes.hpp>
#include <qorkes/kes.h>

namespace qorkes {

/// The width of one step of 32-bit words in [0, 1).
constexpr double stepOfWords = 0x1p-32;
static_assert(hasPattern(stepOfWords, 0x3DF0000000000000));

/// b - a times the width of one step of the words, unrounded.
template <class Real> QORKES_INLINE ext rangeScale(Real a, Real b, double step) {
    return (ext{b} - a) * step;
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

/// r[i] becomes real(words[i] as a number). Words may stand in r itself, where element
/// i does not reach beyond word i. The empty statement keeps the stores of numbers
/// whole and their places apart, where the compiler would store each number by itself.
template <class Real, class Map>
QORKES_INLINE void mapWords(const WordInPlace* words, int n, Real* r, Map&& real) {
    int i = 0;
    for (; i < n - 3; i += 4) {
        alignas(16) int64_t numbers[4];
        const __m128 four = loadFour(words + i), zero = _mm_setzero_ps();
        _mm_store_ps(reinterpret_cast<float*>(numbers), _mm_unpacklo_ps(four, zero));
        _mm_store_ps(reinterpret_cast<float*>(numbers + 2),
                     _mm_unpackhi_ps(four, zero));
        asm("" : "+m"(numbers));
        store(r[i], real(static_cast<ext>(numbers[0])));
        store(r[i + 1], real(static_cast<ext>(numbers[1])));
        store(r[i + 2], real(static_cast<ext>(numbers[2])));
        store(r[i + 3], real(static_cast<ext>(numbers[3])));
    }
    for (; i < n; ++i) store(r[i], real(wordAsNumber(words[i])));
}

/// r[i] becomes words[i] * scale + a. A shift by +0 is left out where it cannot even
/// change the sign of a zero.
template <class Real>
QORKES_INLINE void scaleWords(const WordInPlace* words, int n, Real* r, ext scale,
                              Real a) {
    const ext shift = a;
    if (bitsOf(a) == 0 && scale > 0)
        mapWords(words, n, r, [=](ext number) { return number * scale; });
    else
        mapWords(words, n, r, [=](ext number) { return number * scale + shift; });
}

/// Numbers between the passes over them: few enough for the nearest cache, and more
/// than the words of any state, so that a state is left as by one call for all.
constexpr int sizeOfPass = 2048;

/// The real slots of a generator with words of 32 bits: n words by the integer slot
/// into the array's upper end, then real numbers from its start on. Those never
/// overtake the words: a float takes the place of its own, a double that of some before
/// it.
template <BrngIntegers deliver, class Real>
QORKES_INLINE int drawScaled(StreamState* stream, int n, Real* r, ext scale, Real a) {
    constexpr int wordsEach = sizeof(Real) / sizeof(uint32_t);
    while (n > 0) {
        const int count = n < 2 * sizeOfPass ? n : sizeOfPass;
        WordInPlace* words =
            reinterpret_cast<WordInPlace*>(r) + (wordsEach - 1) * count;
        deliver(stream, count, words);
        scaleWords(words, count, r, scale, a);
        r += count;
        n -= count;
    }
    return KesStatusOk;
}

} // namespace qorkes
