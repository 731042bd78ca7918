// How Pack and Unpack move elements: as bits, in ascending order, eight an iteration.
#pragma once

#include <common/bits.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// Copies one element's bits: a double whole, through half an SSE register, a float
/// through an integer one.
QORKES_INLINE void moveBits(double& to, const double& from) {
    const __m128 bits =
        _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(&from));
    _mm_storel_pi(reinterpret_cast<__m64*>(&to), bits);
}
QORKES_INLINE void moveBits(float& to, const float& from) { setBits(to, bitsOf(from)); }

/// `move(i)` for i from 0 to n - 1: whole blocks of eight, then the rest. The blocks
/// end where the rounded count is zero, not where it is below zero: a negative n moves
/// one block.
template <class Move> QORKES_INLINE void inBlocksOfEight(int n, Move&& move) {
    const int whole = n & ~7;
    int i = 0;
    if (whole != 0) {
        do {
            for (int k = 0; k < 8; ++k) move(i + k);
            i += 8;
        } while (i < whole);
    }
    for (; i < n; ++i) move(i);
}

/// y[i] = a[i * incra]; indices are as wide as pointers and may be negative.
template <class T> QORKES_INLINE void packStrided(int n, const T* a, int incra, T* y) {
    inBlocksOfEight(n, [=](int i) { moveBits(y[i], a[ptrdiff_t{i} * incra]); });
}

template <class T>
QORKES_INLINE void packIndexed(int n, const T* a, const int* ia, T* y) {
    inBlocksOfEight(n, [=](int i) { moveBits(y[i], a[ia[i]]); });
}

template <class T>
QORKES_INLINE void unpackStrided(int n, const T* a, T* y, int incry) {
    inBlocksOfEight(n, [=](int i) { moveBits(y[ptrdiff_t{i} * incry], a[i]); });
}

template <class T>
QORKES_INLINE void unpackIndexed(int n, const T* a, T* y, const int* iy) {
    inBlocksOfEight(n, [=](int i) { moveBits(y[iy[i]], a[i]); });
}

/// The mask forms take their element's way as `moveMasked`: doubles pass through the
/// x87 stack, where a signaling NaN becomes quiet.
QORKES_INLINE void moveMasked(double& to, const double& from) {
    long double x = from;
    asm("" : "+t"(x));
    to = static_cast<double>(x);
}
QORKES_INLINE void moveMasked(float& to, const float& from) { moveBits(to, from); }

/// The selected elements of a, side by side. Nothing runs for n of 0 and below.
template <class T>
QORKES_INLINE void packMasked(int n, const T* a, const int* ma, T* y) {
    for (int i = 0; i < n; ++i)
        if (ma[i] != 0) moveMasked(*y++, a[i]);
}

template <class T>
QORKES_INLINE void unpackMasked(int n, const T* a, T* y, const int* my) {
    for (int i = 0; i < n; ++i)
        if (my[i] != 0) moveMasked(y[i], *a++);
}

} // namespace qorkes
