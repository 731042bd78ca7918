// The kernels of float Sin and Cos, high accuracy: x less a multiple of pi (for the
// cosine an odd multiple of pi/2) in two parts, and one odd polynomial for r in
// [-pi/2, pi/2], all at 53 bits and rounded to float once.
#pragma once

#include <qor_core/_heap/trig_groups.hpp>

namespace qorkes {

/// sin(r) / r in powers of r^2.
constexpr double waveCoefficients[5] = {0x1.000000089705fp+0, -0x1.55554ae8ba1bdp-3,
                                        0x1.110ee64cd0933p-7, -0x1.9f75e2c166f94p-13,
                                        0x1.5e0a329a17541p-19};
static_assert(waveCoefficients[0] == 1.000000002 &&
              waveCoefficients[1] == -0.166666589 &&
              waveCoefficients[2] == 0.008333075 &&
              waveCoefficients[3] == -0.000198107 && waveCoefficients[4] == 2.608e-06);

template <Wave wave, auto scalarCode> struct FloatWaveKernel : FloatLimit<500000> {
    using Argument = int32_t; // half turns

    QORKES_INLINE static void count(Argument& halfTurns, const float& x) {
        countHalfTurns<wave>(halfTurns, x);
    }
    QORKES_INLINE static ext reduce(const Argument& halfTurns, const float& x) {
        return reducedByHalfTurns<wave>(x, halfTurns);
    }
    QORKES_INLINE static void store(ext r, Argument halfTurns, const float&, float* y) {
        const double* c = inRegister(waveCoefficients);
        storeFlipped(*y, polynomial<5>(c, r * r) * r,
                     static_cast<uint32_t>(halfTurns) << 31);
    }
    QORKES_COLD static void handOver(int i, int count, const float* a, float* y) {
        for (int k = i; k < i + count; ++k) scalarCode(k, a, y, nullptr);
    }
};

template <Wave wave, auto scalarCode>
QORKES_INLINE void floatWavesInFrame(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared,
            evaluate<FloatWaveKernel<wave, scalarCode>, float, float>>(n, a, y);
}

} // namespace qorkes
