// What the kernels of the sine family share: the limits beyond which a group goes to
// the scalar code, and the steps of the double kernels up to the reduced argument.
//
// The steps are taken for four elements before the next ones: each waits for the one
// before, and only other elements fill the gap.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

#include <xmmintrin.h>

namespace qorkes {

/// Stores the nearest integer; one beyond the range becomes the most negative.
QORKES_INLINE void storeNearest(int32_t& n, ext x) {
    asm("fistpl %0" : "=m"(n) : "t"(x) : "st");
}
QORKES_INLINE ext loadInteger(const int32_t& n) {
    ext loaded;
    asm("fildl %1" : "=t"(loaded) : "m"(n));
    return loaded;
}

/// Rounds into y, and flips its sign if the top bit of `flip` is set.
QORKES_INLINE void storeFlipped(double& y, ext value, uint32_t flip) {
    y = round64(value);
    asm("" : "+m"(y));
    setHighWord(y, highWord(y) ^ (flip & signBit));
}

QORKES_INLINE void storeFlipped(float& y, ext value, uint32_t flip) {
    y = round32(value);
    asm("" : "+m"(y));
    setBits(y, bitsOf(y) ^ (flip & signBit));
}

/// High word of 128000.0, where all double kernels hand over. Infinities and NaNs lie
/// beyond.
constexpr uint32_t doubleLimitHigh = 0x40FF4000;

QORKES_INLINE bool isBelowLimit(const double& x) {
    return (highWord(x) & magnitudeBits) < doubleLimitHigh;
}
QORKES_INLINE bool areFourBelowLimit(const double* a) {
    return isBelowLimit(a[0]) && isBelowLimit(a[1]) && isBelowLimit(a[2]) &&
           isBelowLimit(a[3]);
}

/// What x is counted in and reduced by. Products of the first three parts with a count
/// are exact at 64 bits.
struct Step {
    double inverse;
    double parts[4];
};
constexpr Step halfTurn = {
    0x1.45f306dc9c883p-2,
    {0x1.921fb4p+1, 0x1.4442dp-23, 0x1.846988p-47, 0x1.8cc51701b839ap-71}};
static_assert(hasPattern(halfTurn.inverse, 0x3FD45F306DC9C883));
static_assert(hasPattern(halfTurn.parts[0], 0x400921FB40000000));
static_assert(hasPattern(halfTurn.parts[1], 0x3E84442D00000000));
static_assert(hasPattern(halfTurn.parts[2], 0x3D08469880000000));
static_assert(hasPattern(halfTurn.parts[3], 0x3B88CC51701B839A));
constexpr Step quarterTurn = {
    0x1.45f306dc9c883p-1,
    {0x1.921fb4p+0, 0x1.4442dp-24, 0x1.846988p-48, 0x1.8cc51701b839ap-72}};
static_assert(hasPattern(quarterTurn.inverse, 0x3FE45F306DC9C883));
static_assert(hasPattern(quarterTurn.parts[0], 0x3FF921FB40000000));
static_assert(hasPattern(quarterTurn.parts[1], 0x3E74442D00000000));
static_assert(hasPattern(quarterTurn.parts[2], 0x3CF8469880000000));
static_assert(hasPattern(quarterTurn.parts[3], 0x3B78CC51701B839A));

/// Less a count of steps.
QORKES_INLINE ext reduced(const double& x, ext count, const Step& step) {
    ext r = loadedHere(x);
    r -= loadedHere(step.parts[0]) * count;
    r -= loadedHere(step.parts[1]) * count;
    r -= loadedHere(step.parts[2]) * count;
    r -= loadedHere(step.parts[3]) * count;
    return r;
}

/// The same in two parts, for floats.
struct ShortStep {
    double inverse;
    double parts[2];
};
constexpr ShortStep shortHalfTurn = {halfTurn.inverse,
                                     {0x1.921fb5444p+1, 0x1.68c234c4c6629p-38}};
static_assert(hasPattern(shortHalfTurn.parts[0], 0x400921FB54440000));
static_assert(hasPattern(shortHalfTurn.parts[1], 0x3D968C234C4C6629));
constexpr ShortStep shortQuarterTurn = {quarterTurn.inverse,
                                        {0x1.921fb5444p+0, 0x1.68c234c4c6629p-39}};
static_assert(hasPattern(shortQuarterTurn.parts[0], 0x3FF921FB54440000));
static_assert(hasPattern(shortQuarterTurn.parts[1], 0x3D868C234C4C6629));

QORKES_INLINE ext reduced(const float& x, ext count, const ShortStep& step) {
    ext r = loadedHere(x);
    r -= loadedHere(step.parts[0]) * count;
    r -= loadedHere(step.parts[1]) * count;
    return r;
}

/// True if no lane is above the limit, and none a NaN.
QORKES_INLINE bool areWithin(__m128 x, float limit) {
    const __m128 magnitude = _mm_andnot_ps(_mm_set1_ps(-0.0f), x);
    return _mm_movemask_ps(_mm_cmple_ps(magnitude, _mm_set1_ps(limit))) == 0xF;
}

} // namespace qorkes
