// Asinh, Acosh and Atanh in single precision: logarithms of arguments that a root or a
// quotient gives, at 53 bits.
//
// Passes over a block: first the arguments, then their bits taken apart, then the
// logarithms. To a function as inverse_hyperbolic_pairs.hpp has it belong
//
//     halvings     f = log(argument) 2^-halvings
#pragma once

#include <qor_core/_heap/inverse_hyperbolic_pairs.hpp>
#include <qor_core/_heap/single_logarithm.hpp>

namespace qorkes {

#include <qor_core/ln/qor_a6_sln_tables.inc>

static_assert(areRoundedAsOnce(lnOf2));
constexpr SingleLogarithm singleNaturalLogarithm = {lnTabS, lnOf2, lnOf2, nullptr};

/// The argument of a logarithm, its high word, and then its mantissa.
struct SingleSlot {
    double mantissa;
    uint32_t high;

    QORKES_INLINE void take(ext argument) { mantissa = round64(argument); }
};

template <class F> QORKES_NOINLINE int logarithmPairs(int n, const float* a, float* y) {
    constexpr uint32_t exponentOfRowZero = 0x3FF - 127;
    SingleSlot slots[blockSize];
    const int count = storeArguments<F>(n, a, slots);
    for (int i = 0; i < count; ++i) {
        slots[i].high = highWord(slots[i].mantissa);
        setHighWord(slots[i].mantissa, (slots[i].high & 0xFFFFF) | 0x3FF00000);
    }
    for (int i = 0; i < count; ++i) {
        const uint32_t high = slots[i].high;
        const uint32_t sign = F::isOdd ? bitsOf(a[i]) & signBit : 0;
        const float logarithm = round32(pieceLogarithm<singleNaturalLogarithm>(
            high >> 7 & 0x1FE0, (high >> 20) - exponentOfRowZero,
            loaded(slots[i].mantissa)));
        setBits(y[i], bitsOf(logarithm) + sign - (F::halvings << 23));
    }
    return count;
}

template <class F>
QORKES_NOINLINE void inverseHyperbolics(int n, const float* a, float* y) {
    inversePairs<F, logarithmPairs<F>>(n, a, y);
}

} // namespace qorkes
