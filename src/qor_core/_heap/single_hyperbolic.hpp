// Sinh and Cosh in single precision: the one kernel of both.
//
// a log2(e) = n/64 + r with |r| <= 1/128, by adding a shifter and rounding the sum to
// single precision. A table gives A = 2^(n/64)/2 and its counterpart B = 2^(-n/64)/2;
// with 2^r = E + O, an even and an odd polynomial,
//
//     sinh a = (A + B) O + (A - B) E,    cosh a = (A + B) E + (A - B) O.
//
// At 64-bit precision, rounded once.
#pragma once

#include <qor_core/_heap/lanes.hpp>
#include <qor_core/_heap/parity.hpp>
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

struct SingleHyperbolic {
    Parity parity;
    double odd1, odd3;   // O = (odd1 + odd3 r^2) r
    double even0, even2; // E = even0 + even2 r^2
    const char* kernel;
};

#include "_qor_shyp_tables.inc"

constexpr double singleLog2OfE = 0x1.71547652b82fep+0; // 1.4426950408889634
constexpr double singleHypShifter = 0x1.8p+17;         // 196608.0
constexpr float singleHypLimit = 0x1.65a9fap+6f;       // 89.4159927368164
constexpr float singleLeastForTable = 0x1.3a92a4p-12f; // 0.0003
static_assert(hasPattern(singleLog2OfE, 0x3FF71547652B82FE));
static_assert(hasPattern(singleHypShifter, 0x4108000000000000));
static_assert(hasPattern(singleHypLimit, 0x42B2D4FD));
static_assert(hasPattern(singleLeastForTable, 0x399D4952));

/// 2^(n/64)/2.
QORKES_INLINE ext singleHalfPower(uint32_t n) {
    constexpr uint32_t halved = 64;
    return loaded(hypTabFloat[n & 0x3F]) *
           singlePowers.at(static_cast<uint32_t>(n - halved) >> 6);
}

template <const SingleHyperbolic& f>
QORKES_INLINE void storeHyperbolic(float& y, const float& x) {
    const ext shifted = loaded(x) * singleLog2OfE + singleHypShifter;
    const float steps = round32(shifted);
    const ext r = shifted - steps;
    const ext a = singleHalfPower(bitsOf(steps)), b = singleHalfPower(-bitsOf(steps));
    const ext square = r * r;
    const ext odd = (f.odd3 != 0 ? square * f.odd3 + f.odd1 : ext{f.odd1}) * r;
    const ext even = square * f.even2 + f.even0;
    if constexpr (f.parity == Parity::odd)
        y = round32((a + b) * odd + (a - b) * even);
    else
        y = round32((a + b) * even + (a - b) * odd);
}

/// Lanes from the limit on, NaNs excepted, and if sinh is asked those near 0.
template <const SingleHyperbolic& f> QORKES_INLINE int specialLanes(__m128 x) {
    const __m128 magnitude = magnitudeOf(x);
    __m128 isSpecial = _mm_cmpge_ps(magnitude, _mm_set1_ps(singleHypLimit));
    if constexpr (f.parity == Parity::odd)
        isSpecial = _mm_or_ps(
            isSpecial, _mm_cmplt_ps(magnitude, _mm_set1_ps(singleLeastForTable)));
    return _mm_movemask_ps(isSpecial);
}

/// Corrects and reports the lanes given, of which element i is the first. x holds the
/// arguments: a may be y and overwritten.
template <const SingleHyperbolic& f>
QORKES_COLD void correctLanes(int lanes, __m128 x, int i, const float* a, float* y) {
    float argument[4];
    _mm_storeu_ps(argument, x);
    forEachLane(lanes, [&](int k) {
        const uint32_t bits = bitsOf(argument[k]), magnitude = bits & magnitudeBits;
        const bool isNearZero = magnitude < bitsOf(singleLeastForTable);
        const uint32_t sign = f.parity == Parity::odd ? bits & signBit : 0;
        setBits(y[i + k], isNearZero ? bits : floatInfinity | sign);
        if (!isNearZero && magnitude != floatInfinity)
            report(QOR_STATUS_OVERFLOW, i + k, a, a, y, y, f.kernel);
    });
}

/// Elements i to i + count - 1, whose arguments x holds too.
template <const SingleHyperbolic& f, int count>
QORKES_INLINE void hyperbolicLanes(__m128 x, int i, const float* a, float* y) {
    for (int lane = 0; lane < count; ++lane)
        storeHyperbolic<f>(y[i + lane], a[i + lane]);
    constexpr int lanesTaken = (1 << count) - 1;
    if (const int lanes = specialLanes<f>(x) & lanesTaken) [[unlikely]]
        correctLanes<f>(lanes, x, i, a, y);
}

template <const SingleHyperbolic& f>
QORKES_NOINLINE void hyperbolics(int n, const float* a, float* y) {
    inGroups<4>(
        n, [=](int i) { hyperbolicLanes<f, 4>(_mm_loadu_ps(a + i), i, a, y); },
        [=](int i) { hyperbolicLanes<f, 1>(_mm_load_ss(a + i), i, a, y); });
}

} // namespace qorkes
