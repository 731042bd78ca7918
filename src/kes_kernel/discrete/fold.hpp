// The way back from a folded problem: variates counted from the other end.
#pragma once

#include <common/abi.hpp>

#include <mmintrin.h>

namespace qorkes {

/// r[i] = base + sign * r[i]. A function of its own, as MMX registers are the x87
/// stack.
template <int sign> QORKES_NOINLINE void unfold(int n, int32_t* r, int32_t base) {
    static_assert(sign == 1 || sign == -1);
    const __m64 bases = _mm_set1_pi32(base);
    int i = 0;
    for (; i < n - 7; i += 8)
        for (int j = i; j < i + 8; j += 2) {
            __m64& pair = *reinterpret_cast<__m64*>(r + j);
            pair = sign < 0 ? _mm_sub_pi32(bases, pair) : _mm_add_pi32(bases, pair);
        }
    _mm_empty();
    for (; i < n; ++i) r[i] = base + sign * r[i];
}

} // namespace qorkes
