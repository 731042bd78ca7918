// Sinh and Cosh in double precision: the one kernel of both.
//
// a log2(e) = n/16384 + r with |r| <= 2^-15, by adding a shifter. Three tables give A =
// 2^(n/16384)/2 and its counterpart B = 2^(-n/16384)/2; with 2^r = E + O, an even and
// an odd polynomial,
//
//     sinh a = (A + B) O + (A - B) E,    cosh a = (A + B) E + (A - B) O.
//
// Near 0, where the difference would cancel, sinh is its Taylor series. All at 64-bit
// precision, rounded once. Inside, one unit is a step of 2^-14, so that the steps are
// an integer: powers of two, which change no rounding.
#pragma once

#include <qor_core/_heap/parity.hpp>
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

struct Hyperbolic {
    Parity parity;
    const char* kernel;
};

#include "_qor_dhyp_tables.inc"

constexpr float hypShifter = 0x1.8p+38f;
constexpr ext hypC3 = 0xe.35846b8a818fbd5p-8L;
constexpr ext hypC2 = 0xf.5fdeffcb3c1d0c1p-6L;
constexpr ext oneOver120 = 0x8.888888888888889p-10L;
constexpr ext oneOver6 = 0xa.aaaaaaaaaaaaaabp-6L;
static_assert(hasPattern(hypShifter, 0x52C00000));
static_assert(hasPattern(hypC3, 0x3FFA, 0xE35846B8A818FBD5));
static_assert(hasPattern(hypC2, 0x3FFC, 0xF5FDEFFCB3C1D0C1));
static_assert(hasPattern(oneOver120, 0x3FF8, 0x8888888888888889));
static_assert(hasPattern(oneOver6, 0x3FFC, 0xAAAAAAAAAAAAAAAB));

constexpr uint64_t hypOverflowFrom = 0x408633CE8FB9F87E; // 710.475860073944
constexpr uint32_t lastForSeries = 0x3F4F0000;           // 0.000946044921875

/// 2^(k-2) for each k of A and B, denormal rows for the B of the last arguments. With
/// the factor of the coarse rows that is 2^(k-1).
struct QuarterPowers {
    static constexpr int first = -1026, last = 1025;
    double row[last - first + 1];

    constexpr QuarterPowers() : row{} {
        for (int k = first; k <= last; ++k)
            row[k - first] =
                std::bit_cast<double>(k - 2 > -1023 ? uint64_t(k - 2 + 1023) << 52
                                                    : uint64_t{1} << (k + 1072));
    }
    QORKES_INLINE const double& at(int k) const { return (row - first)[k]; }
};
constexpr QuarterPowers quarterPowers;
constexpr Rows hypFineRows(hypTabFine, 1);
constexpr Rows hypMidRows(hypTabMid, 1);
constexpr Rows hypCoarseRows(hypTabCoarse, 2);

/// The constants for steps as the unit: two that a pass keeps in registers, and two
/// that it loads where it needs them.
constexpr ext hypUnit = 0x1p+14L;
struct HyperbolicConstants {
    ext stepsPerArgument = inRegister(log2OfE * hypUnit);
    ext odd1 = inRegister(lnOf2 / hypUnit);
};
constexpr ext hypOdd3 = hypC3 / (hypUnit * hypUnit * hypUnit);
constexpr ext hypEven2 = hypC2 / (hypUnit * hypUnit);

/// A number whose low word holds k in its upper 18 bits, then the three indices.
QORKES_INLINE double hyperbolicSteps(const double& x, ext stepsPerArgument) {
    constexpr auto shifter = static_cast<float>(hypShifter * hypUnit);
    return round64(loaded(x) * stepsPerArgument + shifter);
}

/// 2^(w/16384)/2.
QORKES_INLINE ext halfPower(uint32_t w) {
    return hypFineRows.at(w << 4 & 0xF0) * hypMidRows.at(w & 0x1F0) *
           (hypCoarseRows.at(w >> 5 & 0x1F0) *
            quarterPowers.at(static_cast<int32_t>(w) >> 14));
}

template <const Hyperbolic& f>
QORKES_INLINE double tableHyperbolic(const double& x, const double& steps,
                                     const HyperbolicConstants& c) {
    const uint32_t w = lowWord(steps);
    const ext a = halfPower(w), b = halfPower(-w);
    const ext r = loaded(x) * c.stepsPerArgument - lowWordAsInteger(steps);
    const ext square = r * r;
    const ext odd = (square * loadedHere(hypOdd3) + c.odd1) * r;
    const ext even = square * loadedHere(hypEven2) + 1.0L;
    if constexpr (f.parity == Parity::odd)
        return round64((a + b) * odd + (a - b) * even);
    else
        return round64((a + b) * even + (a - b) * odd);
}

/// Arguments for the tables, told by the high word alone.
template <const Hyperbolic& f> QORKES_INLINE bool isForTables(const double& x) {
    constexpr uint32_t first = f.parity == Parity::odd ? lastForSeries + 1 : 0;
    return (highWord(x) & magnitudeBits) - first < (hypOverflowFrom >> 32) - first;
}

/// The overflow exception comes with the result.
template <const Hyperbolic& f>
QORKES_COLD void overflowingHyperbolic(int i, const double* a, double* y) {
    constexpr ext largest = 0x1.fffffep+127L;
    const bool isInfinite = (highWord(a[i]) & magnitudeBits) == doubleInfinityHigh;
    const uint32_t sign = f.parity == Parity::odd ? highWord(a[i]) & signBit : 0;
    y[i] = round32(inRegister(largest) + largest);
    addToHighWord(y[i], sign);
    if (!isInfinite) report(QOR_STATUS_OVERFLOW, i, a, a, y, y, f.kernel);
}

template <const Hyperbolic& f>
QORKES_COLD void scalarHyperbolic(int i, const double* a, double* y) {
    const uint64_t magnitude = bitsOf(a[i]) & ~(uint64_t{signBit} << 32);
    if (isNaN(a[i])) {
        setBits(y[i], bitsOf(a[i]));
    } else if (magnitude >= hypOverflowFrom) {
        overflowingHyperbolic<f>(i, a, y);
    } else if (f.parity == Parity::odd && magnitude >> 32 <= lastForSeries) {
        const ext x = loaded(a[i]);
        const ext square = x * x;
        y[i] = round64(x + x * square * (oneOver6 + square * oneOver120));
    } else {
        const HyperbolicConstants constants;
        const double steps = hyperbolicSteps(a[i], constants.stepsPerArgument);
        y[i] = tableHyperbolic<f>(a[i], steps, constants);
    }
}

/// The pairs for the tables before the first special one, up to a block of them, in two
/// passes that keep the chains of dependent operations short; returns how many elements
/// these are.
template <const Hyperbolic& f>
QORKES_NOINLINE int tablePairs(int n, const double* a, double* y) {
    double steps[blockSize];
    const ext stepsPerArgument = inRegister(log2OfE * hypUnit);
    const int count = takeOrdinary<2>(
        n, [=](int i) { return isForTables<f>(a[i]) && isForTables<f>(a[i + 1]); },
        [&](int i) {
            steps[i] = hyperbolicSteps(a[i], stepsPerArgument);
            steps[i + 1] = hyperbolicSteps(a[i + 1], stepsPerArgument);
        });
    const HyperbolicConstants constants{stepsPerArgument};
    for (int i = 0; i < count; ++i)
        y[i] = tableHyperbolic<f>(a[i], steps[i], constants);
    return count;
}

template <const Hyperbolic& f>
QORKES_NOINLINE void hyperbolics(int n, const double* a, double* y) {
    inRuns<2>(
        n, [=](int i) { return tablePairs<f>(n - i, a + i, y + i); },
        [=](int i) { scalarHyperbolic<f>(i, a, y); });
}

} // namespace qorkes
