// zubs_initTabBitRev, zubs_initTabBitRevNorm, zubs_BitRev1_Z, _C, zubs_BitRev2_Z, _C:
// bit reversal of 2^order complex numbers.
//
// An index is its high bit, the middle bits and its low bit. Only the middle bits are
// tabulated: an entry stands for the four numbers that share them, which go to the four
// places with the middle bits reversed and the two outer bits exchanged.
#include <common/abi.hpp>
#include <qorkes/zubs.h>

#include <utility>
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

template <class T> void reverseInPlace(T* x, int n, const int32_t* table) {
    if (n < 4) return;
    const size_t half = static_cast<size_t>(n);
    const auto alone = [=](int32_t i) {
        Four<T>::load(x + i, half).storeExchanged(x + i, half);
    };
    alone(0);
    for (; *table; table += 2) {
        const Four<T> a = Four<T>::load(x + table[0], half);
        const Four<T> b = Four<T>::load(x + table[1], half);
        a.storeExchanged(x + table[1], half);
        b.storeExchanged(x + table[0], half);
    }
    while (*++table) alone(*table);
}

template <class T> void reverse(const T* src, T* dst, int n, const int32_t* table) {
    if (n < 8) {
        static constexpr int place[4] = {0, 2, 1, 3};
        for (int i = 0; i < n; ++i) {
            const int to = n == 4 ? place[i] : i;
            dst[2 * to] = src[2 * i];
            dst[2 * to + 1] = src[2 * i + 1];
        }
        return;
    }
    const size_t half = static_cast<size_t>(n);
    const auto go = [=](int32_t from, int32_t to) {
        Four<T>::load(src + from, half).storeExchanged(dst + to, half);
    };
    go(0, 0);
    for (; *table; table += 2) {
        go(table[0], table[1]);
        go(table[1], table[0]);
    }
    while (*++table) go(*table, *table);
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
    reverseInPlace(data, n, table);
}
void zubs_BitRev1_C(float* data, int n, const int32_t* table) {
    reverseInPlace(data, n, table);
}
void zubs_BitRev2_Z(const double* src, double* dst, int n, const int32_t* table) {
    reverse(src, dst, n, table);
}
void zubs_BitRev2_C(const float* src, float* dst, int n, const int32_t* table) {
    reverse(src, dst, n, table);
}
