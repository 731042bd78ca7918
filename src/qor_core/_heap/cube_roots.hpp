// x^(-1/3) of doubles without division or logarithm. The exponent is divided by three
// with a multiplication. The inverse root of the mantissa comes from a quadratic on
// each of 128 pieces (2.6e-9) and one Newton step at 64-bit precision; the remainder of
// the exponent brings a constant. The power of two with a whole root is left out. Two
// kernels stand on it, each with its own copy of the table.
#pragma once

#include <common/pattern.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

/// c0 + c1 m + c2 m^2 for m^(-1/3).
struct alignas(32) CubeRow {
    double c0, c1, c2;
};

/// Rows by the top seven bits of the fraction, and the inverse roots of 1/4, 1/2 and 1.
struct CubeTable {
    CubeRow rows[128];
    struct alignas(16) Remainder {
        ext constant;
    } remainder[3];

    constexpr CubeTable(const double (&c0)[128], const double (&c1)[128],
                        const double (&c2)[128], const ext (&constants)[3])
        : rows{}, remainder{{constants[0]}, {constants[1]}, {constants[2]}} {
        for (int t = 0; t < 128; ++t) rows[t] = {c0[t], c1[t], c2[t]};
    }
    QORKES_INLINE const CubeRow& rowOf(uint32_t high) const {
        return rows[high >> 13 & 0x7F];
    }
    QORKES_INLINE const ext& remainderOf(uint32_t third) const {
        return remainder[third >> 16 & 3].constant;
    }
};

/// Of a normal number with the exponent field e: (e - 1) / 3 from bit 20 up, the
/// remainder in bits 16 and 17.
QORKES_INLINE uint32_t thirdOfExponent(uint32_t high) {
    return (((high & doubleInfinityHigh) - 0x00100000) >> 16) * 0xAAAB >> 1;
}

/// A third of the exponent that is left out, as an addend for the high word of a root.
QORKES_INLINE uint32_t cubeRootExponent(uint32_t third) {
    return (third & 0xFFF00000) - 0x15400000;
}

/// What the number in [1/4, 2) that remains is to the mantissa in [1, 2), as an addend
/// for a high word.
QORKES_INLINE uint32_t exponentOfRemainder(uint32_t third) {
    return ((third & 0x30000) << 4) - 0x00200000;
}

/// A normal number as the steps see it: `mantissa` is in [1, 2), without the sign.
struct CubeArgument {
    ext mantissa;
    uint32_t high, third;
};

struct CubeConstants {
    ext fourThirds = inRegister(4.0L / 3);
    ext minusThird = inRegister(-1.0L / 3);
};

QORKES_INLINE ext inverseCubeRoot(const CubeTable& table, const CubeArgument& x,
                                  const CubeConstants& c) {
    const CubeRow& row = table.rowOf(x.high);
    const ext m = x.mantissa;
    const ext p = (row.c2 * m + row.c1) * m + row.c0;
    return p * (c.fourThirds + c.minusThird * m * p * p * p) *
           table.remainderOf(x.third);
}

/// The parts of two arguments, the mantissas in one aligned store, from which the x87
/// unit loads without waiting.
struct alignas(16) CubeArgumentPair {
    double mantissa[2];
    uint32_t third[2];
};

QORKES_INLINE CubeArgumentPair cubeArgumentPair(const double* a) {
    static constexpr DoublePattern fraction{0xFFFFF, 0xFFFFFFFF}, one{0x3FF00000, 0};
    CubeArgumentPair pair;
    pair.third[0] = thirdOfExponent(highWord(a[0]));
    pair.third[1] = thirdOfExponent(highWord(a[1]));
    const __m128 x = _mm_loadu_ps(reinterpret_cast<const float*>(a));
    _mm_store_ps(reinterpret_cast<float*>(pair.mantissa),
                 _mm_or_ps(_mm_and_ps(x, fraction.load()), one.load()));
    asm("" : "+m"(pair.mantissa));
    return pair;
}

QORKES_INLINE CubeArgument cubeArgument(const CubeArgumentPair& pair, int k,
                                        const double& x) {
    return {pair.mantissa[k], highWord(x), pair.third[k]};
}

/// One normal number.
QORKES_INLINE CubeArgument cubeArgument(const double& x) {
    const uint32_t high = highWord(x), third = thirdOfExponent(high);
    double mantissa;
    setWords(mantissa, (high & 0xFFFFF) | 0x3FF00000, lowWord(x));
    return {mantissa, high, third};
}

QORKES_INLINE bool isNormal(const double& x) {
    return isPositiveNormal(highWord(x) & magnitudeBits);
}

QORKES_INLINE bool areNormal(const double* x) {
    return isNormal(x[0]) && isNormal(x[1]);
}

/// 2^996 takes every denormal to a normal number; this is a third of the exponent, as
/// an addend for a high word.
constexpr double cubeDenormalScale = 0x1p+996;
constexpr uint32_t thirdOfScale = 332u << 20;
static_assert(hasPattern(cubeDenormalScale, 0x7E30000000000000));

/// `store(y, table, x, constants)` on groups of four normal numbers; `scalar(i, a, y)`
/// for the elements of other groups and of the rest.
template <const CubeTable& table, auto store, auto scalar>
QORKES_NOINLINE void cubeRoots(int n, const double* a, double* y) {
    const CubeTable* rows = inRegister(&table);
    const CubeConstants constants;
    const auto group = [=](int i) {
        if (!areNormal(a + i) || !areNormal(a + i + 2)) [[unlikely]] {
            for (int k = 0; k < 4; ++k) scalar(i + k, a, y);
            return;
        }
        const CubeArgumentPair low = cubeArgumentPair(a + i);
        const CubeArgumentPair high = cubeArgumentPair(a + i + 2);
        store(y[i], *rows, cubeArgument(low, 0, a[i]), constants);
        store(y[i + 1], *rows, cubeArgument(low, 1, a[i + 1]), constants);
        store(y[i + 2], *rows, cubeArgument(high, 0, a[i + 2]), constants);
        store(y[i + 3], *rows, cubeArgument(high, 1, a[i + 3]), constants);
    };
    inGroups<4>(n, group, [=](int i) { scalar(i, a, y); });
}

} // namespace qorkes
