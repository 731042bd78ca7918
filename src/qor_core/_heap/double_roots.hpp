// The loop of Sqrt and InvSqrt in double precision, which differ in what they store and
// in their special elements.
#pragma once

#include <common/pattern.hpp>
#include <qor_core/_heap/root_tables.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

/// The parts of two arguments, each pair in one aligned store, from which the x87 unit
/// loads without waiting.
struct alignas(16) RootArgumentPair {
    double mantissa[2];
    double minus[2];
};

QORKES_INLINE RootArgumentPair rootArgumentPair(const double* a) {
    static constexpr DoublePattern fraction{0xFFFFF, 0xFFFFFFFF}, one{0x3FF00000, 0};
    // With the low bit of the exponent kept, -1/2 is -1 where that bit is set.
    static constexpr DoublePattern andParity{0x1FFFFF, 0xFFFFFFFF},
        minusHalf{0xBFE00000, 0};
    const __m128 x = _mm_loadu_ps(reinterpret_cast<const float*>(a));
    RootArgumentPair pair;
    _mm_store_ps(reinterpret_cast<float*>(pair.mantissa),
                 _mm_or_ps(_mm_and_ps(x, fraction.load()), one.load()));
    _mm_store_ps(reinterpret_cast<float*>(pair.minus),
                 _mm_or_ps(_mm_and_ps(x, andParity.load()), minusHalf.load()));
    asm("" : "+m"(pair));
    return pair;
}

QORKES_INLINE RootArgument rootArgument(const RootArgumentPair& pair, int k,
                                        const double& x) {
    return {pair.mantissa[k], pair.minus[k], highWord(x)};
}

QORKES_INLINE bool areFourPositiveNormal(const double* a) {
    return arePositiveNormal(a) && arePositiveNormal(a + 2);
}

/// The root of a denormal by way of a normal number; `factor` takes the scale out
/// again.
template <auto store>
QORKES_INLINE double rootOfDenormal(const RootTable& table, const double& x,
                                    double factor) {
    const double scaled = round64(ext{x} * denormalScale);
    double root;
    store(root, table, rootArgument(scaled));
    return round64(ext{root} * factor);
}

template <auto store, auto scalar>
QORKES_INLINE void rootsOfFour(int i, const RootTable& table, const double* a,
                               double* y) {
    prefetchAhead(a + i, 32);
    if (!areFourPositiveNormal(a + i)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) scalar(i + k, a, y);
        return;
    }
    const RootArgumentPair low = rootArgumentPair(a + i);
    const RootArgumentPair high = rootArgumentPair(a + i + 2);
    store(y[i], table, rootArgument(low, 0, a[i]));
    store(y[i + 1], table, rootArgument(low, 1, a[i + 1]));
    store(y[i + 2], table, rootArgument(high, 0, a[i + 2]));
    store(y[i + 3], table, rootArgument(high, 1, a[i + 3]));
}

/// `store(y, table, x)` on groups of four positive normal numbers; `scalar(i, a, y)`
/// for the elements of other groups and of the rest.
template <const RootTable& table, auto store, auto scalar>
QORKES_NOINLINE void roots(int n, const double* a, double* y) {
    const RootTable* rows = inRegister(&table);
    inGroups<4>(
        n, [=](int i) { rootsOfFour<store, scalar>(i, *rows, a, y); },
        [=](int i) { scalar(i, a, y); });
}

} // namespace qorkes
