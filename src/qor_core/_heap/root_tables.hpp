// 1/sqrt(m) for a mantissa m in [1, 2), by a quadratic on each of 128 pieces and one
// Newton step at 64-bit precision. Four kernels and scalar routines stand on it; each
// brings its own copy of the table.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

namespace qorkes {

/// sqrt(2), rounded to double.
constexpr double sqrtTwo = 0x1.6a09e667f3bcdp+0;
static_assert(hasPattern(sqrtTwo, 0x3FF6A09E667F3BCD));

/// All that an argument m 2^e takes from tables. With e odd it counts as m/2 times
/// 2^(e+1), so that its root estimate takes the factor sqrt(2).
struct alignas(32) RootRow {
    double c0, c1, c2; // c0 + c1 m + c2 m^2 for 1/sqrt(m)
    double factor;
};

/// Indexed by the low bit of the exponent field, which is clear for an odd e, and the
/// top seven bits of the fraction: row i of the arrays holds on
/// [1 + i/128, 1 + (i+1)/128].
struct RootTable {
    RootRow rows[256];

    constexpr RootTable(const double (&c0)[128], const double (&c1)[128],
                        const double (&c2)[128])
        : rows{} {
        for (int i = 0; i < 128; ++i) {
            rows[i] = {c0[i], c1[i], c2[i], sqrtTwo};
            rows[i + 128] = {c0[i], c1[i], c2[i], 1.0};
        }
    }
    QORKES_INLINE const RootRow& operator[](uint32_t high) const {
        return rows[high >> 13 & 0xFF];
    }
};

/// The argument as the steps see it.
struct RootArgument {
    ext mantissa; // m
    ext minus;    // -m or -m/2, by the parity of the exponent
    uint32_t high;
};

/// Twice 1/sqrt of the argument without its even power of two: r (3 - m r^2), a Newton
/// step on the estimate r. Powers of two change no rounding, so that leaving them out
/// changes no bit.
QORKES_INLINE ext twiceInverseRoot(const RootTable& table, const RootArgument& x) {
    const RootRow& row = table[x.high];
    const ext m = x.mantissa;
    const ext r = ((row.c2 * m + row.c1) * m + row.c0) * row.factor;
    return r * (3.0L + x.minus * r * r);
}

/// What twiceInverseRoot leaves out of 1/sqrt: an addend for the high word of the
/// result.
QORKES_INLINE uint32_t inverseRootExponent(uint32_t high) {
    return 0x1FE00000u - (high >> 1 & 0x7FF00000u);
}

/// The same for sqrt = m * twiceInverseRoot.
QORKES_INLINE uint32_t rootExponent(uint32_t high) {
    return ((high - 0x00100000u) >> 1 & 0x7FF00000u) - 0x20000000u;
}

/// 2^996 takes every denormal to a normal number; a root halves the exponent.
constexpr double denormalScale = 0x1p+996;
constexpr double rootOfDenormalScale = 0x1p+498;
constexpr double inverseOfRootScale = 0x1p-498;
static_assert(hasPattern(denormalScale, 0x7E30000000000000));
static_assert(hasPattern(rootOfDenormalScale, 0x5F10000000000000));
static_assert(hasPattern(inverseOfRootScale, 0x20D0000000000000));

/// The library's own NaN for the root of a negative number: positive and quiet.
constexpr uint32_t rootNaNHigh = 0x7FF8A5A5;
constexpr uint32_t rootNaNLow = 0x5A5A5A5A;

/// One positive normal double.
QORKES_INLINE RootArgument rootArgument(const double& x) {
    const uint32_t high = highWord(x);
    double mantissa;
    setWords(mantissa, (high & 0xFFFFF) | 0x3FF00000, lowWord(x));
    const ext m = mantissa;
    return {m, m * (high & 0x00100000 ? -1.0L : -0.5L), high};
}

} // namespace qorkes
