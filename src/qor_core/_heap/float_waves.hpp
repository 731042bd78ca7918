// The kernels of float Sin and Cos, high accuracy: x less a multiple of pi (for the
// cosine an odd multiple of pi/2) in two parts, and one odd polynomial for r in
// [-pi/2, pi/2], all at 53 bits and rounded to float once.
#pragma once

#include <qor_core/_heap/trig_groups.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

enum class Wave { sine, cosine };

constexpr double halfPi = 0x1.921fb54442d18p+0;
static_assert(hasPattern(halfPi, 0x3FF921FB54442D18));

/// Arguments above it go to the scalar code.
constexpr float waveLimit = 500000.0f;

/// sin(r) / r in powers of r^2.
constexpr double waveCoefficients[5] = {1.000000002, -0.166666589, 0.008333075,
                                        -0.000198107, 2.608e-06};

template <Wave wave> QORKES_INLINE void countHalfTurns(int32_t& count, const float& x) {
    ext halfTurns = loadedHere(halfTurn.inverse);
    halfTurns *= wave == Wave::sine ? ext{x} : ext{x} + halfPi;
    storeNearest(count, halfTurns);
}

template <Wave wave>
QORKES_INLINE ext reducedWave(const int32_t& count, const float& x) {
    if constexpr (wave == Wave::sine)
        return reduced(x, loadInteger(count), shortHalfTurn);
    const int32_t quarters = 2 * count - 1;
    return reduced(x, loadInteger(quarters), shortQuarterTurn);
}

QORKES_INLINE void storeWave(float& y, ext r, int32_t count) {
    const ext r2 = r * r;
    const double* c = inRegister(waveCoefficients);
    ext p = loadedHere(c[4]);
    p = p * r2 + c[3];
    p = p * r2 + c[2];
    p = p * r2 + c[1];
    p = p * r2 + c[0];
    storeFlipped(y, p * r, static_cast<uint32_t>(count) << 31);
}

using ScalarCode = void (*)(int i, const float* a, float* y, int* status);

template <Wave wave, ScalarCode scalarCode>
QORKES_INLINE void waveOfFour(int i, const float* a, float* y) {
    const float* x = a + i;
    if (!areWithin(_mm_loadu_ps(x), waveLimit)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) scalarCode(i + k, a, y, nullptr);
        return;
    }
    int32_t count[4];
    countHalfTurns<wave>(count[0], x[0]);
    countHalfTurns<wave>(count[1], x[1]);
    countHalfTurns<wave>(count[2], x[2]);
    countHalfTurns<wave>(count[3], x[3]);
    const ext r0 = reducedWave<wave>(count[0], x[0]);
    const ext r1 = reducedWave<wave>(count[1], x[1]);
    const ext r2 = reducedWave<wave>(count[2], x[2]);
    const ext r3 = reducedWave<wave>(count[3], x[3]);
    storeWave(y[i + 3], r3, count[3]);
    storeWave(y[i + 2], r2, count[2]);
    storeWave(y[i + 1], r1, count[1]);
    storeWave(y[i], r0, count[0]);
}

template <Wave wave, ScalarCode scalarCode>
QORKES_INLINE void waveOfOne(int i, const float* a, float* y) {
    if (!areWithin(_mm_load_ss(a + i), waveLimit)) [[unlikely]]
        return scalarCode(i, a, y, nullptr);
    int32_t count;
    countHalfTurns<wave>(count, a[i]);
    const ext r = reducedWave<wave>(count, a[i]);
    storeWave(y[i], r, count);
}

template <Wave wave, ScalarCode scalarCode>
QORKES_NOINLINE [[gnu::flatten]] void waves(int n, const float* a, float* y) {
    inGroups<4>(
        n, [=](int i) { waveOfFour<wave, scalarCode>(i, a, y); },
        [=](int i) { waveOfOne<wave, scalarCode>(i, a, y); });
}

} // namespace qorkes
