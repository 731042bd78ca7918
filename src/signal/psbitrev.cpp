// zubs_initTabBitRev, zubs_initTabBitRevNorm, zubs_BitRev1_Z, _C, zubs_BitRev2_Z, _C:
// bit reversal of 2^order complex numbers.
//
// An index is its high bit, the middle bits and its low bit. Only the middle bits are
// tabulated: an entry stands for the four numbers that share them, which go to the four
// places with the middle bits reversed and the two outer bits exchanged.
#include <common/abi.hpp>
#include <qorkes/zubs.h>

#include <algorithm>
#include <xmmintrin.h>

using namespace qorkes;

namespace {

/// visit(i, i reversed in `bits` bits) for i from 1 up.
template <class Visit> void eachReversed(int bits, Visit visit) {
    const uint32_t count = 1u << bits;
    uint32_t reversed = 0;
    for (uint32_t i = 1; i < count; ++i) {
        uint32_t bit = count >> 1;
        for (; reversed & bit; bit >>= 1) reversed ^= bit;
        reversed |= bit;
        visit(i, reversed);
    }
}

/// Four complex numbers: outer bits 0 0, 0 1, 1 0 and 1 1, in this order.
template <class T> struct Four;

template <> struct Four<double> {
    __m128 x00, x01, x10, x11;

    QORKES_INLINE static Four load(const double* x, size_t half) {
        const float* low = reinterpret_cast<const float*>(x);
        const float* high = reinterpret_cast<const float*>(x + half);
        return {_mm_loadu_ps(low), _mm_loadu_ps(low + 4), _mm_loadu_ps(high),
                _mm_loadu_ps(high + 4)};
    }
    QORKES_INLINE void storeExchanged(double* x, size_t half) const {
        float* low = reinterpret_cast<float*>(x);
        float* high = reinterpret_cast<float*>(x + half);
        _mm_storeu_ps(low, x00);
        _mm_storeu_ps(low + 4, x10);
        _mm_storeu_ps(high, x01);
        _mm_storeu_ps(high + 4, x11);
    }
};

template <> struct Four<float> {
    __m128 x0, x1; // two numbers each

    QORKES_INLINE static Four load(const float* x, size_t half) {
        return {_mm_loadu_ps(x), _mm_loadu_ps(x + half)};
    }
    QORKES_INLINE void storeExchanged(float* x, size_t half) const {
        _mm_storeu_ps(x, _mm_movelh_ps(x0, x1));
        _mm_storeu_ps(x + half, _mm_movehl_ps(x1, x0));
    }
};

/// The step of short arrays: two lines of two numbers.
template <class T> struct Fours {
    static constexpr int bits = 1;
    size_t half;
    explicit Fours(int n) : half(static_cast<size_t>(n)) {}

    QORKES_INLINE void go(const T* from, T* to) const {
        Four<T>::load(from, half).storeExchanged(to, half);
    }
    QORKES_INLINE void exchange(T* x, T* y) const {
        const Four<T> a = Four<T>::load(x, half), b = Four<T>::load(y, half);
        a.storeExchanged(y, half);
        b.storeExchanged(x, half);
    }
};

QORKES_INLINE void moveNumber(const float* from, float* to) {
    const __m64* const pair = reinterpret_cast<const __m64*>(from);
    _mm_storel_pi(reinterpret_cast<__m64*>(to), _mm_loadl_pi(_mm_setzero_ps(), pair));
}

/// The step of long float arrays: eight numbers, a line of the cache, from each of
/// eight lines. An entry of the table whose outer bits are zero stands for all of them;
/// in the order of the table alone each line would be fetched four times. (Gatlin and
/// Carter, "Memory hierarchy considerations for fast transpose and bit-reversals",
/// 1999.)
struct Tiles {
    static constexpr int bits = 3;
    static constexpr int side = 8;
    size_t line;
    explicit Tiles(int n) : line(static_cast<size_t>(n) * 2 / side) {}

    static void move(const float* from, size_t fromLine, float* to, size_t toLine) {
        constexpr size_t reversed[side] = {0, 4, 2, 6, 1, 5, 3, 7};
        for (size_t l = 0; l < side; ++l)
#pragma GCC unroll 8
            for (size_t h = 0; h < side; ++h)
                moveNumber(from + h * fromLine + 2 * l,
                           to + reversed[l] * toLine + 2 * reversed[h]);
    }
    void go(const float* from, float* to) const { move(from, line, to, line); }
    void exchange(float* x, float* y) const {
        float kept[2 * side * side];
        for (size_t h = 0; h < side; ++h)
            for (size_t l = 0; l < 2 * side; l += 4)
                _mm_storeu_ps(kept + h * 2 * side + l, _mm_loadu_ps(x + h * line + l));
        if (x != y) go(y, x);
        move(kept, 2 * side, y, line);
    }
};

/// pair(i, r) for the table's pairs and pair(i, i) for what stays, but only for entries
/// that stand for a step of 2^bits lines. What stays is at the end of the table.
template <int bits, class Pair>
QORKES_INLINE void eachEntry(const int32_t* table, int n, Pair pair) {
    constexpr int32_t low = (4 << (bits - 1)) - 1;
    const int32_t high = n >> (bits - 1);
    pair(0, 0);
    for (const int32_t* p = table; *p && *p < high; p += 2)
        if ((*p & low) == 0) pair(p[0], p[1]);
    for (const int32_t* p = table + n / 4 - 1; *p && *p < high; --p)
        if ((*p & low) == 0) pair(*p, *p);
}

template <class Steps, class T> void reverseInPlace(T* x, int n, const int32_t* table) {
    const Steps steps(n);
    eachEntry<Steps::bits>(table, n,
                           [=](int32_t i, int32_t r) { steps.exchange(x + i, x + r); });
}

template <class Steps, class T>
void reverseTo(const T* src, T* dst, int n, const int32_t* table) {
    const Steps steps(n);
    eachEntry<Steps::bits>(table, n, [=](int32_t i, int32_t r) {
        steps.go(src + i, dst + r);
        if (i != r) steps.go(src + r, dst + i);
    });
}

/// From here on a float array is larger than the first-level cache. Doubles gain
/// nothing: four of them fill a line.
constexpr int longFloats = 8192;

template <class T> void reverse(const T* src, T* dst, int n, const int32_t* table) {
    if (n < 4)
        std::copy_n(src, 2 * n, dst);
    else if (src == dst)
        reverseInPlace<Fours<T>>(dst, n, table);
    else
        reverseTo<Fours<T>>(src, dst, n, table);
}
void reverseFloats(const float* src, float* dst, int n, const int32_t* table) {
    if (n < longFloats)
        reverse(src, dst, n, table);
    else if (src == dst)
        reverseInPlace<Tiles>(dst, n, table);
    else
        reverseTo<Tiles>(src, dst, n, table);
}

} // namespace

void zubs_initTabBitRev(int order, int32_t* table) {
    int32_t* pairs = table;
    int32_t* alone = table + (1u << (order - 2));
    *alone = 0;
    eachReversed(order - 2, [&](uint32_t i, uint32_t reversed) {
        if (i < reversed) {
            *pairs++ = static_cast<int32_t>(4 * i);
            *pairs++ = static_cast<int32_t>(4 * reversed);
        } else if (i == reversed) {
            *--alone = static_cast<int32_t>(4 * i);
        }
    });
    *pairs = 0;
}

void zubs_initTabBitRevNorm(int order, int32_t* table) {
    table[0] = 0;
    table[1u << (order - 2)] = 0;
    eachReversed(order - 2, [=](uint32_t i, uint32_t reversed) {
        table[i] = static_cast<int32_t>(2 * reversed);
    });
}

void zubs_BitRev1_Z(double* data, int n, const int32_t* table) {
    reverse(data, data, n, table);
}
void zubs_BitRev1_C(float* data, int n, const int32_t* table) {
    reverseFloats(data, data, n, table);
}
void zubs_BitRev2_Z(const double* src, double* dst, int n, const int32_t* table) {
    reverse(src, dst, n, table);
}
void zubs_BitRev2_C(const float* src, float* dst, int n, const int32_t* table) {
    reverseFloats(src, dst, n, table);
}
