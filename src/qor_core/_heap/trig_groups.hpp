// What the kernels of the sine family share: the limits beyond which a group goes to
// the scalar code, the reduction, and the loop of those on the x87 unit.
#pragma once

#include <qor_core/_heap/horner.hpp>
#include <qor_core/_heap/lanes.hpp>
#include <qor_core/frame.hpp>

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

/// The sign bit of a zero, 0 for other numbers. Sums lose it: with an odd function it
/// is flipped in the stored result, before which it has to be asked for, since y may be
/// a.
QORKES_INLINE uint32_t signOfZero(const double& x) {
    return isZero(x) ? highWord(x) : 0;
}
QORKES_INLINE uint32_t signOfZero(const float& x) { return isZero(x) ? bitsOf(x) : 0; }

// ---- Limits -------------------------------------------------------------------------

/// High word of 128000.0, where all double kernels hand over. Infinities and NaNs lie
/// beyond.
constexpr uint32_t doubleLimitHigh = 0x40FF4000;

QORKES_INLINE bool isBelowLimit(const double& x) {
    return (highWord(x) & magnitudeBits) < doubleLimitHigh;
}

/// True if no lane is above the limit, and none a NaN.
QORKES_INLINE bool areWithin(__m128 x, float limit) {
    const __m128 magnitude = magnitudeOf(x);
    return _mm_movemask_ps(_mm_cmple_ps(magnitude, _mm_set1_ps(limit))) == 0xF;
}

/// The limits of a kernel, for one element and for four.
struct DoubleLimit {
    QORKES_INLINE static bool isOrdinary(const double* x) { return isBelowLimit(*x); }
    QORKES_INLINE static bool areOrdinary(const double* x) {
        return isBelowLimit(x[0]) && isBelowLimit(x[1]) && isBelowLimit(x[2]) &&
               isBelowLimit(x[3]);
    }
};
template <int limit> struct FloatLimit {
    QORKES_INLINE static bool isOrdinary(const float* x) {
        return areWithin(_mm_load_ss(x), limit);
    }
    QORKES_INLINE static bool areOrdinary(const float* x) {
        return areWithin(_mm_loadu_ps(x), limit);
    }
};

// ---- Reduction ----------------------------------------------------------------------

/// What x is counted in, and reduced by in parts. Products of all parts but the last
/// with a count are exact.
template <int n> struct Step {
    double inverse;
    double parts[n];
};

template <class T> constexpr auto halfTurn = nullptr;

template <>
inline constexpr Step<4> halfTurn<double> = {
    0x1.45f306dc9c883p-2,
    {0x1.921fb4p+1, 0x1.4442dp-23, 0x1.846988p-47, 0x1.8cc51701b839ap-71}};
static_assert(hasPattern(halfTurn<double>.inverse, 0x3FD45F306DC9C883));
static_assert(hasPattern(halfTurn<double>.parts[0], 0x400921FB40000000));
static_assert(hasPattern(halfTurn<double>.parts[1], 0x3E84442D00000000));
static_assert(hasPattern(halfTurn<double>.parts[2], 0x3D08469880000000));
static_assert(hasPattern(halfTurn<double>.parts[3], 0x3B88CC51701B839A));

template <>
inline constexpr Step<2> halfTurn<float> = {0x1.45f306dc9c883p-2,
                                            {0x1.921fb5444p+1, 0x1.68c234c4c6629p-38}};
static_assert(hasPattern(halfTurn<float>.inverse, 0x3FD45F306DC9C883));
static_assert(hasPattern(halfTurn<float>.parts[0], 0x400921FB54440000));
static_assert(hasPattern(halfTurn<float>.parts[1], 0x3D968C234C4C6629));

template <int n> constexpr Step<n> halved(Step<n> step) {
    step.inverse *= 2;
    for (double& part : step.parts) part /= 2;
    return step;
}
template <class T> constexpr auto quarterTurn = halved(halfTurn<T>);

/// x less a count of steps.
template <class T, int n>
QORKES_INLINE ext reduced(const T& x, ext count, const Step<n>& step) {
    ext r = loadedHere(x);
    r -= loadedHere(step.parts[0]) * count;
    r -= loadedHere(step.parts[1]) * count;
    if constexpr (n == 4) {
        r -= loadedHere(step.parts[2]) * count;
        r -= loadedHere(step.parts[3]) * count;
    }
    return r;
}

template <class T> QORKES_INLINE void countQuarterTurns(int32_t& count, const T& x) {
    storeNearest(count, loadedHere(quarterTurn<T>.inverse) * x);
}
template <class T>
QORKES_INLINE ext reducedByQuarterTurns(const T& x, const int32_t& count) {
    return reduced(x, loadInteger(count), quarterTurn<T>);
}

/// The cosine is the sine from a quarter turn on: its half turns are one half less than
/// their count.
enum class Wave { sine, cosine };

constexpr double halfPi = 0x1.921fb54442d18p+0;
static_assert(hasPattern(halfPi, 0x3FF921FB54442D18));

template <Wave wave, class T>
QORKES_INLINE void countHalfTurns(int32_t& count, const T& x) {
    ext halfTurns = loadedHere(halfTurn<T>.inverse);
    halfTurns *= wave == Wave::sine ? ext{x} : ext{x} + halfPi;
    storeNearest(count, halfTurns);
}

/// For the cosine the products are those of numbers twice and half as large.
template <Wave wave, class T>
QORKES_INLINE ext reducedByHalfTurns(const T& x, const int32_t& count) {
    if constexpr (wave == Wave::sine)
        return reduced(x, loadInteger(count), halfTurn<T>);
    const int32_t quarters = 2 * count - 1;
    return reduced(x, loadInteger(quarters), quarterTurn<T>);
}

// ---- Loop ---------------------------------------------------------------------------

/// Groups of four in three steps, each for all four before the next: a step waits for
/// the one before, and only other elements fill the gap. A kernel has a type Argument,
/// one of the limits above, and
///     count(argument, x)       how often its step goes into x
///     reduce(argument, x)      what is left
///     store(r, argument, x, y...)
///     handOver(i, count, a, y...)  to the scalar code
template <class Kernel, class T, class... Y>
QORKES_INLINE void evaluateFour(const Kernel& kernel, int i, const T* a, Y*... y) {
    const T* x = a + i;
    if (!kernel.areOrdinary(x)) [[unlikely]]
        return kernel.handOver(i, 4, a, y...);
    typename Kernel::Argument argument[4];
    kernel.count(argument[0], x[0]);
    kernel.count(argument[1], x[1]);
    kernel.count(argument[2], x[2]);
    kernel.count(argument[3], x[3]);
    const ext r0 = kernel.reduce(argument[0], x[0]);
    const ext r1 = kernel.reduce(argument[1], x[1]);
    const ext r2 = kernel.reduce(argument[2], x[2]);
    const ext r3 = kernel.reduce(argument[3], x[3]);
    kernel.store(r3, argument[3], x[3], y + i + 3 ...);
    kernel.store(r2, argument[2], x[2], y + i + 2 ...);
    kernel.store(r1, argument[1], x[1], y + i + 1 ...);
    kernel.store(r0, argument[0], x[0], y + i...);
}

template <class Kernel, class T, class... Y>
QORKES_INLINE void evaluateOne(const Kernel& kernel, int i, const T* a, Y*... y) {
    if (!kernel.isOrdinary(a + i)) [[unlikely]]
        return kernel.handOver(i, 1, a, y...);
    typename Kernel::Argument argument;
    kernel.count(argument, a[i]);
    const ext r = kernel.reduce(argument, a[i]);
    kernel.store(r, argument, a[i], y + i...);
}

template <class Kernel, class T, class... Y>
QORKES_NOINLINE [[gnu::flatten]] void evaluate(int n, const T* a, Y*... y) {
    const Kernel kernel;
    inGroups<4>(
        n, [=](int i) { evaluateFour(kernel, i, a, y...); },
        [=](int i) { evaluateOne(kernel, i, a, y...); });
}

} // namespace qorkes
