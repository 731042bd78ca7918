// Arithmetic modulo 2^31 - 1, 2^59 and any word, for the steps and jumps of
// multiplicative generators.
#pragma once

#include <common/abi.hpp>

namespace qorkes {

constexpr uint32_t mersenne31 = 0x7FFFFFFF;
constexpr uint64_t mask59 = (uint64_t{1} << 59) - 1;
constexpr uint32_t mask59High = 0x07FFFFFF;

/// x y mod 2^31 - 1 without a division, for factors below 2^31: the product is folded
/// at bit 31, since 2^31 is 1 here (Payne, Rabung and Bogyo, "Coding the Lehmer
/// pseudo-random number generator", 1969). With one factor doubled, the two halves of
/// the product are the two parts to add, the lower one shifted by a bit.
QORKES_INLINE uint32_t multiplyMod2P31M1(uint32_t x, uint32_t y) {
    const uint64_t doubled = uint64_t{x} * (y << 1);
    const uint32_t sum =
        static_cast<uint32_t>(doubled >> 32) + (static_cast<uint32_t>(doubled) >> 1);
    return sum >= mersenne31 ? sum - mersenne31 : sum;
}

QORKES_INLINE uint64_t multiplyMod2P59(uint64_t x, uint64_t y) {
    return x * y & mask59;
}

QORKES_INLINE uint32_t multiplyMod(uint32_t x, uint32_t y, uint32_t modulus) {
    return static_cast<uint32_t>(uint64_t{x} * y % modulus);
}

/// base^exponent by squaring, from the low bit of the exponent up.
template <class Number, class Multiply>
QORKES_INLINE Number power(Number base, int32_t exponent, Multiply multiply) {
    Number result = 1;
    for (; exponent != 0; exponent >>= 1) {
        if (exponent & 1) result = multiply(result, base);
        base = multiply(base, base);
    }
    return result;
}

} // namespace qorkes
