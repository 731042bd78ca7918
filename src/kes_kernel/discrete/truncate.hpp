// A double as a 32-bit integer, truncated towards zero on its bits: the one way from
// reals to integers in the discrete distributions. It needs no control word, and it is
// defined beyond the range of integers too: a magnitude of 2^31 or more gives the top
// 32 bits of the significand, shifted by what the exponent says modulo 32.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

namespace qorkes {

QORKES_INLINE int32_t truncate(const double& x) {
    const uint32_t high = highWord(x);
    const uint32_t exponent = high >> 20 & 0x7FF;
    const uint32_t significand = 0x80000000u | high << 11 | lowWord(x) >> 21;
    const uint32_t magnitude =
        exponent < 1023 ? 0 : significand >> ((1054 - exponent) & 31);
    const uint32_t sign = 0u - (high >> 31);
    return static_cast<int32_t>((magnitude ^ sign) - sign);
}

/// The value rounded to a double, then truncated.
QORKES_INLINE int32_t truncate(ext x) {
    const double rounded = round64(x);
    return truncate(rounded);
}

} // namespace qorkes
