// Mersenne Twisters: the state, its seeding and the delivery of words, for every set of
// parameters. Matsumoto and Nishimura, "Mersenne Twister: a 623-dimensionally
// equidistributed uniform pseudo-random number generator", ACM TOMACS 8, 1998; seeding
// by an array as they published it in 2002.
//
// The state keeps raw words; what is delivered is tempered. A request for more than the
// state holds continues the recurrence inside the caller's array and tempers there, in
// passes over a stateful of words each: one that shifts every word by a bit in MMX
// registers; the recurrence, four words at a time in SSE registers, which have no
// shifts; and tempering, two words in an MMX register beside two in integer registers.
// Real numbers never meet them: MMX registers are the x87 stack under another name, so
// what uses them is a function of its own.
#pragma once

#include <kes_sub_kernel/lanes.hpp>
#include <qorkes/kes.h>

#include <mmintrin.h>

#include <algorithm>
#include <cstring>

namespace qorkes {

/// The parameters that the compiler is to know: number of words, distance of the middle
/// word, the bits taken from the older of two words, and the first tempering shift.
template <int size_, int middle_, uint32_t upperMask_, int firstShift_>
struct TwisterShape {
    static constexpr int size = size_;
    static constexpr int middle = middle_;
    static constexpr uint32_t upperMask = upperMask_;
    static constexpr int firstShift = firstShift_;
};

/// The parameters that members of a family differ by.
struct TwisterMasks {
    uint32_t matrix; // added to the shifted word where that was odd
    uint32_t b, c;   // for the tempering shifts by 7 and by 15
};

template <class Shape> struct TwisterState {
    uint32_t Words[Shape::size];
    int32_t Position; // of the next word to be delivered; size: all are
};

/// Seeds from n words at params, or from a single 1 if n is below 1.
template <class Shape>
QORKES_INLINE void seed(TwisterState<Shape>& state, int n, const uint32_t* params) {
    constexpr int size = Shape::size;
    constexpr uint32_t one = 1;
    const uint32_t* key = n < 1 ? &one : params;
    const int length = std::max(n, 1);
    uint32_t* w = state.Words;
    const auto mixed = [w](int i) { return w[i - 1] ^ w[i - 1] >> 30; };
    int i = 1;
    const auto advance = [w, &i] {
        if (++i < size) return;
        w[0] = w[size - 1];
        i = 1;
    };

    w[0] = 19650218;
    for (; i < size; ++i) w[i] = 1812433253 * mixed(i) + static_cast<uint32_t>(i);
    state.Position = size;

    i = 1;
    for (int round = 0, j = 0; round < std::max(size, length); ++round) {
        w[i] = (w[i] ^ 1664525 * mixed(i)) + key[j] + static_cast<uint32_t>(j);
        advance();
        if (++j == length) j = 0;
    }
    for (int round = 1; round < size; ++round) {
        w[i] = (w[i] ^ 1566083941 * mixed(i)) - static_cast<uint32_t>(i);
        advance();
    }
    w[0] = 0x80000000;
}

/// Two neighbouring words, anywhere in memory.
using WordPair [[gnu::may_alias, gnu::aligned(4)]] = __m64;

QORKES_INLINE __m64 loadPair(const uint32_t* words) {
    return *reinterpret_cast<const WordPair*>(words);
}
QORKES_INLINE void storePair(uint32_t* words, __m64 pair) {
    *reinterpret_cast<WordPair*>(words) = pair;
}
QORKES_INLINE __m64 pairOf(uint32_t word) {
    return _mm_set1_pi32(static_cast<int>(word));
}

/// The recurrence: what stands Shape::size places behind `word`. `next` follows that,
/// `middle` is Shape::middle places behind it.
template <class Shape> struct Twist {
    uint32_t matrix;

    QORKES_INLINE uint32_t operator()(uint32_t word, uint32_t next,
                                      uint32_t middle) const {
        const uint32_t y = (word & Shape::upperMask) | (next & ~Shape::upperMask);
        return middle ^ y >> 1 ^ (matrix & (0 - (next & 1)));
    }
};

template <class Shape> struct Temper {
    uint32_t b, c;

    QORKES_INLINE uint32_t operator()(uint32_t y) const {
        y ^= y >> Shape::firstShift;
        y ^= y << 7 & b;
        y ^= y << 15 & c;
        return y ^ y >> 18;
    }
};
template <class Shape> struct TemperPair {
    __m64 b, c;
    QORKES_INLINE TemperPair(uint32_t b_, uint32_t c_) : b(pairOf(b_)), c(pairOf(c_)) {}

    QORKES_INLINE __m64 operator()(__m64 y) const {
        y = _mm_xor_si64(y, _mm_srli_pi32(y, Shape::firstShift));
        y = _mm_xor_si64(y, _mm_and_si64(_mm_slli_pi32(y, 7), b));
        y = _mm_xor_si64(y, _mm_and_si64(_mm_slli_pi32(y, 15), c));
        return _mm_xor_si64(y, _mm_srli_pi32(y, 18));
    }
};

/// halves[i] becomes words[i] >> 1.
[[maybe_unused]] QORKES_NOINLINE static void halve(uint32_t* halves,
                                                   const uint32_t* words, int n) {
    int i = 0;
    for (; i < n - 1; i += 2)
        storePair(halves + i, _mm_srli_pi32(loadPair(words + i), 1));
    if (i < n) halves[i] = words[i] >> 1;
    _mm_empty();
}

/// to[i] becomes the word that follows from[i] by Shape::size, for i from 0 to n - 1, n
/// below Shape::size. `to` may be `from`, which is read up to from[n].
template <class Shape>
QORKES_INLINE void renew(uint32_t* to, const uint32_t* from, const uint32_t* middle,
                         int n, uint32_t matrix) {
    alignas(16) uint32_t halves[Shape::size];
    const __m128 upperHalf = fourOf(Shape::upperMask >> 1), matrices = fourOf(matrix);
    const __m128 lowest = fourOf(1), one = _mm_set1_ps(1);
    if (n > 3) halve(halves, from, n + 1);
    int i = 0;
    for (; i < n - 3; i += 4) {
        const __m128 word = loadFour(halves + i), next = loadFour(halves + i + 1);
        const __m128 y =
            _mm_xor_ps(_mm_and_ps(_mm_xor_ps(word, next), upperHalf), next);
        // The lowest bit as that of a number from 1 on: all ones if it is set.
        const __m128 number =
            _mm_or_ps(_mm_and_ps(loadFour(from + i + 1), lowest), one);
        const __m128 isOdd = _mm_cmpneq_ps(number, one);
        const __m128 shifted = _mm_xor_ps(y, loadFour(middle + i));
        storeFour(to + i, _mm_xor_ps(shifted, _mm_and_ps(isOdd, matrices)));
    }
    for (; i < n; ++i) to[i] = Twist<Shape>{matrix}(from[i], from[i + 1], middle[i]);
}

/// to[i] becomes from[i] tempered, n a multiple of 4; the arrays may be one.
template <class Shape>
QORKES_NOINLINE static void temperFours(uint32_t* to, const uint32_t* from, int n,
                                        const TwisterMasks& masks) {
    const Temper<Shape> temper{masks.b, masks.c};
    const TemperPair<Shape> temperPair(masks.b, masks.c);
    for (int i = 0; i < n; i += 4) {
        storePair(to + i, temperPair(loadPair(from + i)));
        to[i + 2] = temper(from[i + 2]);
        to[i + 3] = temper(from[i + 3]);
    }
    _mm_empty();
}

/// The same for any n.
template <class Shape>
QORKES_INLINE void temperAll(uint32_t* to, const uint32_t* from, int n,
                             const TwisterMasks& masks) {
    int i = n & ~3;
    if (i > 0) temperFours<Shape>(to, from, i, masks);
    for (; i < n; ++i) to[i] = Temper<Shape>{masks.b, masks.c}(from[i]);
}

/// With raw words in the first Shape::size elements of r: the n raw words behind them,
/// and the first n elements tempered as soon as the recurrence has done with them.
template <class Shape>
QORKES_INLINE void continueInPlace(uint32_t* r, int n, const TwisterMasks& masks) {
    constexpr int longest = (Shape::size - 1) & ~3;
    while (n > 0) {
        const int count = std::min(n, longest);
        renew<Shape>(r + Shape::size, r, r + Shape::middle, count, masks.matrix);
        temperAll<Shape>(r, r, count, masks);
        r += count;
        n -= count;
    }
}

/// Renews the first n words of the state.
template <class Shape>
QORKES_INLINE void renewState(uint32_t* words, int n, uint32_t matrix) {
    constexpr int size = Shape::size;
    constexpr int wrap = size - Shape::middle; // where the middle word is a renewed one
    renew<Shape>(words, words, words + Shape::middle, std::min(n, wrap), matrix);
    const int upToLast = std::min(n, size - 1);
    if (upToLast > wrap)
        renew<Shape>(words + wrap, words + wrap, words, upToLast - wrap, matrix);
    if (n == size)
        words[size - 1] =
            Twist<Shape>{matrix}(words[size - 1], words[0], words[Shape::middle - 1]);
}

QORKES_INLINE void copyWords(uint32_t* to, const uint32_t* from, int n) {
    std::memcpy(to, from, static_cast<std::size_t>(n) * sizeof *to);
}

/// The next n words of the sequence.
template <class Shape>
QORKES_INLINE void deliver(TwisterState<Shape>& state, int n, uint32_t* r,
                           const TwisterMasks& masks) {
    constexpr int size = Shape::size;
    if (n < 1) return;
    uint32_t* const words = state.Words;
    const int position = state.Position;
    const int left = size - position;
    if (n <= left) {
        temperAll<Shape>(r, words + position, n, masks);
        state.Position = position + n;
    } else if (n <= size) {
        temperAll<Shape>(r, words + position, left, masks);
        renewState<Shape>(words, size, masks.matrix);
        temperAll<Shape>(r + left, words, n - left, masks);
        state.Position = n - left;
    } else {
        copyWords(r, words + position, left);
        renewState<Shape>(words, position, masks.matrix);
        copyWords(r + left, words, position);
        continueInPlace<Shape>(r, n - size, masks);
        copyWords(words, r + n - size, size);
        temperAll<Shape>(r + n - size, words, size, masks);
        state.Position = size;
    }
}

} // namespace qorkes
