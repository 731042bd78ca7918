// 80-bit arithmetic. `ext` keeps what the x87 unit computes at the precision in its
// control word, from load to store; a value leaves it through round64 or round32 and in
// no other way. Operations of the unit that the language has no name for stand here.
#pragma once

#include <common/abi.hpp>

#include <bit>

namespace qorkes {

using ext = long double;
static_assert(__LDBL_MANT_DIG__ == 64, "ext is the 80-bit format of the x87 unit");

/// Rounds once, by a store in the control word's direction.
QORKES_INLINE double round64(ext x) { return static_cast<double>(x); }
QORKES_INLINE float round32(ext x) { return static_cast<float>(x); }

/// The same, to the type of the number that x goes to.
QORKES_INLINE void store(double& y, ext x) { y = round64(x); }
QORKES_INLINE void store(float& y, ext x) { y = round32(x); }

/// A NaN with its quiet bit set; a signaling one raises invalid.
QORKES_INLINE double quietNaN(double x) { return round64(ext{x} + x); }

/// The same constant, of which the compiler knows no more than that: a loop then keeps
/// it on the register stack instead of loading its 80 bits for every use.
QORKES_INLINE ext inRegister(ext constant) {
    asm("" : "+t"(constant));
    return constant;
}

/// x by a load of its own. The compiler multiplies by a number in memory, for which it
/// copies the other factor; with both on the stack a constant factor stays in place.
QORKES_INLINE ext loaded(const double& x) {
    ext result;
    asm("fldl %1" : "=t"(result) : "m"(x));
    return result;
}
QORKES_INLINE ext loaded(const float& x) {
    ext result;
    asm("flds %1" : "=t"(result) : "m"(x));
    return result;
}

/// The same at this place of the code, neither moved nor merged with an equal load: a
/// kernel that fills the register stack has no place for constants.
QORKES_INLINE ext loadedHere(const double& x) {
    ext result;
    asm volatile("fldl %1" : "=t"(result) : "m"(x));
    return result;
}
QORKES_INLINE ext loadedHere(const float& x) {
    ext result;
    asm volatile("flds %1" : "=t"(result) : "m"(x));
    return result;
}
QORKES_INLINE ext loadedHere(const ext& x) {
    ext result;
    asm volatile("fldt %1" : "=t"(result) : "m"(x));
    return result;
}

/// The low 32 bits of a double in memory as a signed integer, loaded from there (fild).
QORKES_INLINE ext lowWordAsInteger(const double& x) {
    ext result;
    asm("fildl %1" : "=t"(result) : "m"(x));
    return result;
}

/// The pattern of a double in memory as a signed integer, loaded from there (fild).
QORKES_INLINE ext patternAsInteger(const double& x) {
    ext result;
    asm("fildll %1" : "=t"(result) : "m"(x));
    return result;
}

/// True if a constant has exactly this pattern; for static_assert beside constants.
constexpr bool hasPattern(double x, uint64_t bits) {
    return std::bit_cast<uint64_t>(x) == bits;
}
constexpr bool hasPattern(float x, uint32_t bits) {
    return std::bit_cast<uint32_t>(x) == bits;
}
constexpr bool hasPattern(ext x, uint16_t signAndExponent, uint64_t mantissa) {
    struct Image {
        unsigned char byte[sizeof(ext)];
    };
    const Image image = std::bit_cast<Image>(x);
    for (int i = 0; i < 8; ++i)
        if (image.byte[i] != (mantissa >> 8 * i & 0xFF)) return false;
    return image.byte[8] == (signAndExponent & 0xFF) &&
           image.byte[9] == signAndExponent >> 8;
}

/// Constants that the unit holds: log2(e), ln(2) and log10(2), as it loads them when it
/// rounds to nearest.
constexpr ext log2OfE = 0xb.8aa3b295c17f0bcp-3L;
constexpr ext lnOf2 = 0xb.17217f7d1cf79acp-4L;
constexpr ext log10Of2 = 0x9.a209a84fbcff799p-5L;
static_assert(hasPattern(log2OfE, 0x3FFF, 0xB8AA3B295C17F0BC));
static_assert(hasPattern(lnOf2, 0x3FFE, 0xB17217F7D1CF79AC));
static_assert(hasPattern(log10Of2, 0x3FFD, 0x9A209A84FBCFF799));

/// The unit's control word: exception masks, precision (bits 0x300), rounding (0xC00).
/// Volatile, and a barrier for memory; arithmetic may still be moved across a change,
/// so what computes under it stands in a function of its own.
QORKES_INLINE uint16_t controlWord() {
    uint16_t word;
    asm volatile("fnstcw %0" : "=m"(word)::"memory");
    return word;
}
QORKES_INLINE void setControlWord(uint16_t word) {
    asm volatile("fldcw %0" ::"m"(word) : "memory");
}

/// The whole unit, control word first. Saving leaves it as finit does (fnsave, frstor).
struct UnitState {
    uint32_t word[27];
};
QORKES_INLINE void saveUnit(UnitState& unit) {
    asm volatile("fnsave %0" : "=m"(unit)::"memory");
}
QORKES_INLINE void restoreUnit(const UnitState& unit) {
    asm volatile("frstor %0" ::"m"(unit) : "memory");
}

/// Square root (fsqrt), rounded at the precision in force.
QORKES_INLINE ext squareRoot(ext x) {
    asm("fsqrt" : "+t"(x));
    return x;
}

/// x rounded to an integer in the direction in force (frndint).
QORKES_INLINE ext roundToInteger(ext x) {
    asm("frndint" : "+t"(x));
    return x;
}

/// y * log2(x) (fyl2x); -infinity for x = +-0 and the default NaN for x below 0, if y
/// is positive.
QORKES_INLINE ext timesLog2(ext y, ext x) {
    ext result;
    asm("fyl2x" : "=t"(result) : "0"(x), "u"(y) : "st(1)");
    return result;
}

/// x * 2^trunc(k) (fscale).
QORKES_INLINE ext scaleByPowerOfTwo(ext x, ext k) {
    asm("fscale" : "+t"(x) : "u"(k));
    return x;
}

/// The angle of the point (x, y) (fpatan).
QORKES_INLINE ext angleOf(ext y, ext x) {
    ext result;
    asm("fpatan" : "=t"(result) : "0"(x), "u"(y) : "st(1)");
    return result;
}

} // namespace qorkes
