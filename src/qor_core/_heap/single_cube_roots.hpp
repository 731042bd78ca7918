// Cube roots of floats and their inverses: a quadratic on each of 64 pieces of the
// mantissa, times a power of 2^(1/3), at 53-bit precision.
#pragma once

#include <qor_core/frame.hpp>

namespace qorkes {

/// c0 + c1 m + c2 m^2 for a root of m in [1, 2).
struct alignas(32) SingleCubeRow {
    double c0, c1, c2;
};

/// Half the product of an exponent field, in bits 7 to 14, with 0xAAAB: its third from
/// bit 23 up, the remainder in bits 19 and 20.
constexpr uint32_t thirdOfFloatExponent(uint32_t field) { return field * 0xAAAB >> 1; }

/// 2^(e - 127) for the exponent field e in its place.
constexpr double powerOfField(uint32_t field) {
    return std::bit_cast<float>(field & floatInfinity);
}

/// Rows by the top six bits of the fraction, and what sign and exponent of a number,
/// its top nine bits, contribute to the root: Root::power, with the sign.
struct SingleCubeTable {
    SingleCubeRow rows[64];
    double powers[512];

    template <class Root>
    constexpr SingleCubeTable(Root, const double (&c0)[64], const double (&c1)[64],
                              const double (&c2)[64])
        : rows{}, powers{} {
        for (int t = 0; t < 64; ++t) rows[t] = {c0[t], c1[t], c2[t]};
        for (uint32_t i = 0; i < 256; ++i) {
            powers[i] = Root::power(i << 23, Root::remainder);
            powers[i + 256] = -powers[i];
        }
    }
    QORKES_INLINE const SingleCubeRow& rowOf(uint32_t bits) const {
        return rows[bits >> 17 & 0x3F];
    }
    QORKES_INLINE const double& powerOf(uint32_t bits) const {
        return powers[bits >> 23];
    }
};

QORKES_INLINE ext quadraticAt(ext m, const SingleCubeRow& row) {
    return (row.c2 * m + row.c1) * m + row.c0;
}

QORKES_INLINE bool isNormalFloat(const float& x) {
    return isPositiveNormalFloat(bitsOf(x) & magnitudeBits);
}

/// The root of a denormal by way of a double, `Root::scaleUp` times as large.
template <class Root> QORKES_COLD void storeDenormalRoot(float& y, const float& x) {
    const double scaled = round64(ext{x} * Root::scaleUp);
    const uint32_t high = highWord(scaled);
    double mantissa;
    setWords(mantissa, (high & 0xFFFFF) | 0x3FF00000, lowWord(scaled));
    const uint32_t bits = bitsOf(round32(scaled)) & magnitudeBits;
    const double power = Root::power(bits, Root::scaledRemainder);
    const ext root = quadraticAt(mantissa, Root::table.rowOf(bits)) * power;
    y = round32(high & signBit ? -root : root);
}

QORKES_INLINE __m128 mantissasOf(__m128 x) {
    alignas(16) static constexpr uint32_t fraction[4] = {0x7FFFFF, 0x7FFFFF, 0x7FFFFF,
                                                         0x7FFFFF};
    const __m128 mask = _mm_load_ps(reinterpret_cast<const float*>(fraction));
    return _mm_or_ps(_mm_and_ps(x, mask), _mm_set1_ps(1.0f));
}

/// One element; Root::special(i, a, y) does those that are no normal numbers.
template <class Root>
QORKES_INLINE void singleCubeRoot(int i, const float* a, float* y,
                                  const float& mantissa, const SingleCubeTable* table) {
    if (!isNormalFloat(a[i])) [[unlikely]]
        return Root::special(i, a, y);
    const uint32_t bits = bitsOf(a[i]);
    y[i] = round32(quadraticAt(mantissa, table->rowOf(bits)) * table->powerOf(bits));
}

template <class Root>
QORKES_NOINLINE void singleCubeRoots(int n, const float* a, float* y) {
    const SingleCubeTable* table = inRegister(&Root::table);
    inGroups<4>(
        n,
        [=](int i) {
            alignas(16) float mantissa[4];
            _mm_store_ps(mantissa, mantissasOf(_mm_loadu_ps(a + i)));
            asm("" : "+m"(mantissa));
            singleCubeRoot<Root>(i, a, y, mantissa[0], table);
            singleCubeRoot<Root>(i + 1, a, y, mantissa[1], table);
            singleCubeRoot<Root>(i + 2, a, y, mantissa[2], table);
            singleCubeRoot<Root>(i + 3, a, y, mantissa[3], table);
        },
        [=](int i) {
            float mantissa;
            _mm_store_ss(&mantissa, mantissasOf(_mm_load_ss(a + i)));
            singleCubeRoot<Root>(i, a, y, mantissa, table);
        });
}

} // namespace qorkes
