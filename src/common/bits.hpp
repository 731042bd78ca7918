// Words and exponents of a double or a float, without arithmetic: nothing here goes
// through a floating-point register, so a signaling NaN stays as it is. Arguments are
// references for the same reason: they name the memory to look at.
#pragma once

#include <common/abi.hpp>

#include <cstring>

namespace qorkes {

template <class To, class From> QORKES_INLINE To copyBits(const From& from) {
    static_assert(sizeof(To) == sizeof(From));
    To to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

QORKES_INLINE uint64_t bitsOf(const double& x) { return copyBits<uint64_t>(x); }
QORKES_INLINE uint32_t bitsOf(const float& x) { return copyBits<uint32_t>(x); }

QORKES_INLINE void setBits(double& x, uint64_t bits) {
    std::memcpy(&x, &bits, sizeof x);
}
QORKES_INLINE void setBits(float& x, uint32_t bits) {
    std::memcpy(&x, &bits, sizeof x);
}

/// Sign, exponent and the top 20 bits of the fraction.
QORKES_INLINE uint32_t highWord(const double& x) {
    uint32_t word;
    std::memcpy(&word, reinterpret_cast<const char*>(&x) + sizeof word, sizeof word);
    return word;
}

/// The low 32 bits of the fraction.
QORKES_INLINE uint32_t lowWord(const double& x) {
    uint32_t word;
    std::memcpy(&word, &x, sizeof word);
    return word;
}

QORKES_INLINE void setHighWord(double& x, uint32_t word) {
    std::memcpy(reinterpret_cast<char*>(&x) + sizeof word, &word, sizeof word);
}

QORKES_INLINE void setWords(double& x, uint32_t high, uint32_t low) {
    setBits(x, uint64_t{high} << 32 | low);
}

/// Adds to the high word of a stored double. With `k << 20` this multiplies a normal
/// number by 2^k, exactly, provided that the product is a normal number too. The empty
/// statement makes the compiler round into x itself and not by way of a temporary.
QORKES_INLINE void addToHighWord(double& x, uint32_t addend) {
    asm("" : "+m"(x));
    setHighWord(x, highWord(x) + addend);
}

/// The place of the lowest bit that is set, of a word that is not 0. The compiler's own
/// form of it has a prefix that newer processors read as another instruction (tzcnt).
QORKES_INLINE int lowestBit(uint32_t word) {
    uint32_t place;
    asm("bsf %1, %0" : "=r"(place) : "rm"(word) : "cc");
    return static_cast<int>(place);
}

constexpr uint32_t signBit = 0x80000000;
constexpr uint32_t magnitudeBits = 0x7FFFFFFF;

/// The first high word of a double (bit pattern of a float) that is no finite number.
constexpr uint32_t doubleInfinityHigh = 0x7FF00000;
constexpr uint32_t floatInfinity = 0x7F800000;

/// True for positive normal numbers, told by the high word alone.
QORKES_INLINE bool isPositiveNormal(uint32_t high) {
    return high - 0x00100000u < 0x7FE00000u;
}

/// The same, told by the bit pattern of a float.
QORKES_INLINE bool isPositiveNormalFloat(uint32_t bits) {
    return bits - 0x00800000u < 0x7F000000u;
}

/// The same for both of two doubles.
QORKES_INLINE bool arePositiveNormal(const double* x) {
    return isPositiveNormal(highWord(x[0])) && isPositiveNormal(highWord(x[1]));
}

QORKES_INLINE bool isZero(const double& x) {
    return ((highWord(x) & magnitudeBits) | lowWord(x)) == 0;
}
QORKES_INLINE bool isZero(const float& x) { return (bitsOf(x) & magnitudeBits) == 0; }

QORKES_INLINE bool isNaN(const double& x) {
    const uint32_t high = highWord(x) & magnitudeBits;
    return high > doubleInfinityHigh || (high == doubleInfinityHigh && lowWord(x) != 0);
}
QORKES_INLINE bool isNaN(const float& x) {
    return (bitsOf(x) & magnitudeBits) > floatInfinity;
}

} // namespace qorkes
