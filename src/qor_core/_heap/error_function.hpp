// erf of both precisions where the rows of its table do not serve: near 0 and beyond
// saturation. At 53-bit precision; what has to be good to more than that comes in two
// parts whose leading products are exact (Dekker, "A floating-point technique for
// extending the available precision", 1971).
#pragma once

#include <qor_core/_heap/split_rows.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

constexpr double erfAHigh = 0x1.20dd75p+0; // 2/sqrt(pi), in 25 bits and the rest
constexpr double erfALow = 0x1.0a6db446b8ea4p-30;
constexpr double erfBHigh = -0x1.8127468p-2; // a third of that, the sign changed
constexpr double erfBLow = -0x1.81bcf35cfdb21p-29;
constexpr double erfC3 = 0x1.ce2f21a042b41p-4;
constexpr double erfC4 = -0x1.b82ce31247c36p-6;
constexpr double erfC5 = 0x1.565bcc4d1d139p-8;
constexpr double erfC6 = -0x1.c02b6e14edcedp-11;
constexpr double erfC7 = 0x1.f644dd9e75958p-14;
static_assert(hasPattern(erfAHigh, 0x3FF20DD750000000));
static_assert(hasPattern(erfALow, 0x3E10A6DB446B8EA4));
static_assert(hasPattern(erfBHigh, 0xBFD8127468000000));
static_assert(hasPattern(erfBLow, 0xBE281BCF35CFDB21));
static_assert(hasPattern(erfC3, 0x3FBCE2F21A042B41));
static_assert(hasPattern(erfC4, 0xBF9B82CE31247C36));
static_assert(hasPattern(erfC5, 0x3F7565BCC4D1D139));
static_assert(hasPattern(erfC6, 0xBF4C02B6E14EDCED));
static_assert(hasPattern(erfC7, 0x3F1F644DD9E75958));

/// Where the steps change: words of a double without its sign.
constexpr uint32_t erfSeriesFrom = 0x3D700000;            // 2^-40
constexpr uint32_t erfRowsFrom = 0x3FC00000;              // 1/8
constexpr uint64_t erfSaturate = 0x4017AFB48DC96628;      // 5.9215871957945083
constexpr uint64_t erfDenormalBelow = 0x000E2DFC48DA77B5; // 1.971920364530142e-308

/// x in two parts of 26 bits.
QORKES_INLINE Parts split(ext x) {
    const ext scaled = x * 0x1.0000002p+27;
    const ext high = scaled - (scaled - x);
    return {high, x - high};
}

/// The sum rounded once to a multiple of the least denormal.
QORKES_INLINE ext roundedToDenormal(const Parts& x) {
    const ext shifter = inRegister(0x1.8p-1022L);
    const ext multiple = x.high + shifter - shifter;
    const ext rest = x.high - multiple + x.low;
    return multiple + (rest + shifter - shifter);
}

/// erf(x) = x 2/sqrt(pi), for magnitudes below 2^-40.
QORKES_INLINE Parts linearErf(ext x) {
    const Parts parts = split(x);
    return {parts.high * erfAHigh, parts.low * erfAHigh + x * erfALow};
}

/// erf(x) for magnitudes from 2^-40 to 1/8.
QORKES_INLINE ext seriesErf(ext x) {
    const ext high = round32(x);
    const ext square = x * x, cube = square * x;
    const ext q =
        (((erfC7 * square + erfC6) * square + erfC5) * square + erfC4) * square + erfC3;
    const ext cubeHigh = round32(cube);
    const ext first = high * erfAHigh, second = cubeHigh * erfBHigh; // exact
    const ext sum = first + second;
    const ext lost = second - (sum - first);
    return sum +
           (lost + ((x - high) * erfAHigh + x * erfALow + (cube - cubeHigh) * erfBHigh +
                    cube * erfBLow + cube * square * q));
}

/// What the rows do not serve.
template <class T> QORKES_NOINLINE void specialErf(int i, const T* a, T* y) {
    if (isNaN(a[i])) return store(y[i], ext{a[i]} + a[i]);
    const double x = a[i];
    const uint64_t magnitude = bitsOf(x) & ~(uint64_t{signBit} << 32);
    const auto high = static_cast<uint32_t>(magnitude >> 32);
    if (magnitude == 0) {
        y[i] = a[i];
    } else if (magnitude < erfDenormalBelow) {
        store(y[i], roundedToDenormal(linearErf(x)));
    } else if (high < erfSeriesFrom) {
        const Parts erf = linearErf(x);
        store(y[i], erf.high + erf.low);
    } else if (high < erfRowsFrom) {
        store(y[i], seriesErf(x));
    } else {
        // Inexact, but for an infinity.
        const ext one = high < doubleInfinityHigh ? inRegister(0x1p-200L) + 1.0L : 1.0L;
        store(y[i], highWord(x) & signBit ? -one : one);
    }
}

} // namespace qorkes
