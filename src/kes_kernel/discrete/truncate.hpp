// Reals as 32-bit integers in the discrete distributions. One double is truncated
// towards zero on its bits. That needs no control word, and it is defined beyond the
// range of integers too: a magnitude of 2^31 or more gives the top 32 bits of the
// significand, shifted by what the exponent says modulo 32. Arrays go through the
// unit's stores of integers.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>
#include <kes_kernel/discrete/in_place.hpp>

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

/// Words for the unit in which a store of an integer truncates or rounds down: extended
/// precision, all exceptions masked.
enum class Rounding : uint16_t { down = 0x077F, truncating = 0x0F7F };

[[maybe_unused]] QORKES_NOINLINE static void storeIntegers(int n,
                                                           const DoubleInPlace* x,
                                                           int32_t* r) {
    for (int i = 0; i < n; ++i)
        asm volatile("fldl %1\n\tfistpl %0" : "=m"(r[i]) : "m"(x[i]) : "memory");
}

/// r[i] is x[i] as an integer, INT32_MIN where it is none of 32 bits. Both may begin at
/// one address: r[i] covers doubles that have been read.
template <Rounding rounding>
QORKES_INLINE void toIntegers(int n, const DoubleInPlace* x, int32_t* r) {
    const uint16_t callers = controlWord();
    setControlWord(static_cast<uint16_t>(rounding));
    storeIntegers(n, x, r);
    setControlWord(callers);
}

/// r[i] = truncate(x[i]), for arrays apart from each other.
QORKES_INLINE void truncateAll(int n, const double* x, int32_t* r) {
    toIntegers<Rounding::truncating>(n, x, r);
    for (int i = 0; i < n; ++i)
        if (r[i] == INT32_MIN) r[i] = truncate(x[i]);
}

} // namespace qorkes
