// Powers of two of numbers in two parts, at 53-bit precision: the second half of all HA
// power kernels. The high part is cut at multiples of 1/128; 2^(j/128) comes from a
// table, in two parts, and the rest from a polynomial.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

namespace qorkes {

/// log2(e) to 23 bits, which every short reciprocal is a part of.
constexpr double leadingReciprocal = 0x1.715474p+0; // 1.442694902420044
static_assert(hasPattern(leadingReciprocal, 0x3FF7154740000000));

constexpr double expPolynomial[5] = {0.6931471805599453, 0.2402265069591007,
                                     0.055504108664821576, 0.009618129107628477,
                                     0.0013333558146428443};
constexpr double stepShifter = 0x1.8p+45;
static_assert(hasPattern(stepShifter, 0x42C8000000000000));

/// log2 of a number in two parts, the high one of 24 bits.
struct Log2 {
    float high;
    double low;
};

/// A power as (lead + rest) 2^K, the sum in [0.99, 2.01]. The low word of `steps` holds
/// K in its upper 25 bits.
struct Power {
    double steps;
    ext lead, rest;
};

/// 2^(high + low), low below 1/128 in magnitude.
QORKES_INLINE Power exp2OfSum(const double (*exp2)[2], ext high, ext low) {
    const double(&c)[5] = expPolynomial;
    const ext shifted = high + stepShifter;
    Power power;
    power.steps = round64(shifted);
    const ext f = (high - (shifted - stepShifter)) + low;
    const ext p = ((((c[4] * f + c[3]) * f + c[2]) * f + c[1]) * f + c[0]) * f;
    const double* row = exp2[lowWord(power.steps) & 127];
    power.lead = row[0];
    power.rest = row[0] * p + row[1];
    return power;
}

/// K, from `steps` within 2^24 of the shifter.
QORKES_INLINE int32_t exponentIn(const double& steps) {
    return static_cast<int32_t>(lowWord(steps)) >> 7;
}

/// True if smallest <= K < end.
template <int smallest, int end>
QORKES_INLINE bool isExponentWithin(const double& steps) {
    constexpr uint64_t first =
        std::bit_cast<uint64_t>(stepShifter) + int64_t{smallest} * 128;
    return bitsOf(steps) - first < uint64_t{(end - smallest) * 128};
}

} // namespace qorkes
