// 1/sqrt(m) for a mantissa m in [1, 2), by a quadratic on each of 128 pieces and one
// Newton step at 64-bit precision. Four kernels and scalar routines stand on it; each
// brings its own copy of the table.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// Row i of the three arrays: c0 + c1 m + c2 m^2 for 1/sqrt(m) on
/// [1 + i/128, 1 + (i+1)/128].
struct RootTable {
    const double *c0, *c1, *c2;
};

/// sqrt(2), rounded to double.
constexpr double sqrtTwo = 0x1.6a09e667f3bcdp+0;
static_assert(hasPattern(sqrtTwo, 0x3FF6A09E667F3BCD));

/// What the parity of the exponent brings in, indexed by the low bit of the exponent
/// field. An argument m 2^e with e odd counts as m/2 times 2^(e+1): its root estimate
/// takes the factor sqrt(2), and half of it is m/4.
struct Parity {
    double estimateFactor;
    double minusHalf;
};
constexpr Parity rootParity[2] = {{sqrtTwo, -0.25}, {1.0, -0.5}};

/// The argument as the two steps see it: its mantissa and its high word.
struct RootArgument {
    ext mantissa;
    uint32_t high;
};

/// 1/sqrt of the argument without its even power of two: one Newton step on the
/// estimate. Powers of two change no rounding, so that leaving them out changes no bit.
QORKES_INLINE ext inverseRoot(const RootTable& table, const RootArgument& x) {
    const uint32_t i = (x.high & 0xFE000) >> 13;
    const Parity& parity = rootParity[x.high >> 20 & 1];
    const ext m = x.mantissa;
    const ext estimate = (table.c2[i] * m + table.c1[i]) * m + table.c0[i];
    const ext r = estimate * parity.estimateFactor;
    return r * (1.5L + m * parity.minusHalf * r * r);
}

/// What inverseRoot leaves out of 1/sqrt: an addend for the high word of the result.
QORKES_INLINE uint32_t inverseRootExponent(uint32_t high) {
    return 0x1FF00000u - (high >> 1 & 0x7FF00000u);
}

/// The same for sqrt = m * inverseRoot.
QORKES_INLINE uint32_t rootExponent(uint32_t high) {
    return ((high - 0x00100000u) >> 1 & 0x7FF00000u) - 0x1FF00000u;
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

/// Mantissas of doubles two at a time: one aligned store each, from which the x87 unit
/// loads without waiting.
struct alignas(16) MantissaPair {
    double m[2];
};
QORKES_INLINE MantissaPair mantissasOf(const double* a) {
    alignas(16) static constexpr uint32_t fraction[4] = {0xFFFFFFFF, 0xFFFFF,
                                                         0xFFFFFFFF, 0xFFFFF};
    alignas(16) static constexpr uint32_t one[4] = {0, 0x3FF00000, 0, 0x3FF00000};
    const auto pattern = [](const uint32_t* p) {
        return _mm_load_ps(reinterpret_cast<const float*>(p));
    };
    const __m128 x = _mm_loadu_ps(reinterpret_cast<const float*>(a));
    MantissaPair pair;
    _mm_store_ps(reinterpret_cast<float*>(&pair),
                 _mm_or_ps(_mm_and_ps(x, pattern(fraction)), pattern(one)));
    return pair;
}

/// The mantissa of one positive normal double.
QORKES_INLINE RootArgument rootArgument(const double& x) {
    const uint32_t high = highWord(x);
    double m;
    setWords(m, (high & 0xFFFFF) | 0x3FF00000, lowWord(x));
    return {m, high};
}

QORKES_INLINE bool areFourPositiveNormal(const double* a) {
    return isPositiveNormal(highWord(a[0])) & isPositiveNormal(highWord(a[1])) &
           isPositiveNormal(highWord(a[2])) & isPositiveNormal(highWord(a[3]));
}

} // namespace qorkes
