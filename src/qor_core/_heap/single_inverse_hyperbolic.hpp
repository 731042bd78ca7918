// Asinh, Acosh and Atanh in single precision: logarithms of arguments that a root or a
// quotient gives, at 53 bits.
//
// Passes over a block: first the arguments, then their bits taken apart, then the
// logarithms. A function is a structure of
//
//     isForLogarithm(bits)    whether an argument is ordinary
//     argument(x)             of the logarithm, at least 1
//     isOdd, halvings         f = +-log(argument) 2^-halvings, with the sign of x if
//     odd special(i, a, y)        stores and reports the elements that are not ordinary
#pragma once

#include <qor_core/_heap/single_logarithm.hpp>

namespace qorkes {

#include <qor_core/ln/qor_a6_sln_tables.inc>

static_assert(areRoundedAsOnce(lnOf2));
constexpr SingleLogarithm singleNaturalLogarithm = {lnTabS, lnOf2, lnOf2, nullptr};

/// The argument of a logarithm, its high word, and then its mantissa.
struct SingleSlot {
    double mantissa;
    uint32_t high;
};

/// The arguments of the pairs before the first special one, up to a block of them;
/// returns how many elements these are.
template <class F>
QORKES_NOINLINE int storeArguments(int n, const float* a, SingleSlot* slots) {
    const int last = (n < blockSize ? n : blockSize) - 2;
    int count = 0;
    for (; count <= last; count += 2) {
        if (!F::isForLogarithm(bitsOf(a[count])) ||
            !F::isForLogarithm(bitsOf(a[count + 1])))
            break;
        slots[count].mantissa = round64(F::argument(loaded(a[count])));
        slots[count + 1].mantissa = round64(F::argument(loaded(a[count + 1])));
    }
    return count;
}

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

template <class F> QORKES_COLD void scalarInverse(int i, const float* a, float* y) {
    if (F::isForLogarithm(bitsOf(a[i]))) {
        const float twice[2] = {a[i], a[i]};
        float results[2];
        logarithmPairs<F>(2, twice, results);
        y[i] = results[0];
    } else {
        F::special(i, a, y);
    }
}

template <class F>
QORKES_NOINLINE void inverseHyperbolics(int n, const float* a, float* y) {
    const auto scalar = [=](int i) { scalarInverse<F>(i, a, y); };
    inPairs(
        n, [=](int i) { return logarithmPairs<F>(n - i, a + i, y + i); }, scalar,
        scalar);
}

} // namespace qorkes
