// Sine and cosine of one double in plain double arithmetic, to little more than half an
// ulp: all of this runs at 53 bits, so that every operation is a rounded double.
//
// With x = N pi/32 + t + l, t a double and l what it lacks, sin(x) comes from a table
// row for T = N pi/32 and polynomials in t; the leading sum sin(T) + cos(T) t is
// compensated, and exact in its largest product, since the row splits cos(T) into a
// power of two and a rest. The cosine is the sine of a row a quarter turn on. (Tang,
// "Table-driven implementation of the exponential function", 1989, for the class.)
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qorkes/qor.h>

namespace qorkes {

constexpr double trigInvStep = 0x1.45f306dc9c883p+3; // 32/pi
constexpr double trigShifter = 0x1.8p+52;
constexpr double trigStep1 = 0x1.921fb544p-4; // pi/32 in three parts
constexpr double trigStep2 = 0x1.0b4611a6p-38;
constexpr double trigStep3 = 0x1.3198a2e037073p-73;
static_assert(hasPattern(trigInvStep, 0x40245F306DC9C883));
static_assert(hasPattern(trigShifter, 0x4338000000000000));
static_assert(hasPattern(trigStep1, 0x3FB921FB54400000));
static_assert(hasPattern(trigStep2, 0x3D90B4611A600000));
static_assert(hasPattern(trigStep3, 0x3B63198A2E037073));

constexpr double sinC1 = -0x1.5555555555555p-3;
constexpr double sinC2 = 0x1.1111111111111p-7;
constexpr double sinC3 = -0x1.a01a01a01a01ap-13;
constexpr double sinC4 = 0x1.71de3a556c734p-19;
static_assert(hasPattern(sinC1, 0xBFC5555555555555));
static_assert(hasPattern(sinC2, 0x3F81111111111111));
static_assert(hasPattern(sinC3, 0xBF2A01A01A01A01A));
static_assert(hasPattern(sinC4, 0x3EC71DE3A556C734));

constexpr double cosC1 = -0x1p-1;
constexpr double cosC2 = 0x1.5555555555555p-5;
constexpr double cosC3 = -0x1.6c16c16c16c17p-10;
constexpr double cosC4 = 0x1.a01a01a01a01ap-16;
static_assert(hasPattern(cosC1, 0xBFE0000000000000));
static_assert(hasPattern(cosC2, 0x3FA5555555555555));
static_assert(hasPattern(cosC3, 0xBF56C16C16C16C17));
static_assert(hasPattern(cosC4, 0x3EFA01A01A01A01A));

/// The exponent fields at which the ways of one double part: below the first, sin(x) is
/// x; from the second on, x is reduced by multiples of pi/2 first.
constexpr uint32_t firstOrdinaryExponent = 771;
constexpr uint32_t firstReducedExponent = 1040;
constexpr uint32_t nonFiniteExponent = 0x7FF;

QORKES_INLINE uint32_t exponentField(const double& x) {
    return (highWord(x) & magnitudeBits) >> 20;
}

/// The value for an infinity (invalid) or a NaN.
QORKES_INLINE double valueAtNonFinite(double x) {
    return round64(isNaN(x) ? ext{x} * x : ext{x} * 0.0L);
}

/// x itself, and the inexact flag if it is not zero.
QORKES_INLINE double tinyArgument(double x) {
    if (isZero(x)) return x;
    return round64((ext{x} * 0x1p+55L - x) * 0x1p-55L);
}

QORKES_INLINE double cosineOfTiny(double x) {
    return round64(1.0L - __builtin_fabsl(x));
}

/// x is this many quarter turns and r + low.
struct Reduced {
    ext r, low;
    uint32_t quadrant;
};
QORKES_INLINE Reduced unreduced(double x) { return {x, 0, 0}; }
QORKES_INLINE Reduced reducedByQuarterTurns(double x) {
    double parts[2];
    const int quadrant = _qorreduce_pio2d(x, parts);
    return {parts[0], parts[1], static_cast<uint32_t>(quadrant)};
}

/// x = T + t + low for the table angle T of row `row` modulo 64.
struct RowArgument {
    ext t, low;
    ext t2;
    ext sine;   // (sin(t) - t) / t
    ext cosine; // (cos(t) - 1) / t^2
    uint32_t row;
};

QORKES_INLINE RowArgument rowArgument(const Reduced& x) {
    const double shifted = round64(x.r * trigInvStep + trigShifter);
    const ext n = shifted - ext{trigShifter};
    const ext u = x.r - trigStep1 * n;
    const ext v = trigStep2 * n;
    const ext w = n * trigStep3;
    const ext t = u - v;
    const ext low = ((u - t) - v) - w + x.low;
    const ext t2 = t * t;
    return {t,
            low,
            t2,
            (((sinC4 * t2 + sinC3) * t2 + sinC2) * t2 + sinC1) * t2,
            ((cosC4 * t2 + cosC3) * t2 + cosC2) * t2 + cosC1,
            16 * x.quadrant + lowWord(shifted)};
}
QORKES_INLINE RowArgument rowArgument(double x) {
    return rowArgument(exponentField(x) < firstReducedExponent
                           ? unreduced(x)
                           : reducedByQuarterTurns(x));
}

/// The cosine is the sine this many rows on.
constexpr uint32_t rowsOfQuarterTurn = 16;

/// sin(T + t + low) with the row of T: cosRest, sinHi, sinLo, cosLead.
QORKES_INLINE double sineAtRow(const double (&table)[64][4], uint32_t row,
                               const RowArgument& x) {
    const double* fields = table[row & 63];
    const ext cosRest = fields[0], sinHi = fields[1], sinLo = fields[2];
    const ext cosLead = fields[3];
    const ext h = sinHi + cosLead * x.t;
    const ext g = cosRest * x.t + h;
    const ext c1 = (h - g) + cosRest * x.t;
    const ext c2 = (sinHi - h) + cosLead * x.t;
    const ext c3 = x.low * ((cosRest + cosLead) - x.t * sinHi) + sinLo;
    const ext c4 = x.sine * x.t * (cosRest + cosLead);
    const ext c5 = x.t2 * x.cosine * sinHi;
    return round64(g + (c4 + c5 + c3 + c2 + c1));
}

} // namespace qorkes
