// Asinh, Acosh and Atanh in double precision: logarithms of arguments that a root or a
// quotient gives, 80 bits each.
//
// Passes over a block: first the arguments, then their bits taken apart, then the
// logarithms. The root and the quotient have nothing else to wait for, and the
// polynomials no long operation in between.
//
// To a function as inverse_hyperbolic_pairs.hpp has it belong
//
//     logarithm    the table, the polynomial and the kernel's name
//     factorBits   the float by which the logarithm is multiplied
#pragma once

#include <qor_core/_heap/inverse_hyperbolic_pairs.hpp>
#include <qor_core/_heap/natural_logarithm.hpp>

namespace qorkes {

/// The argument w of a logarithm; its high word as a double of any exponent; and what
/// the logarithm is to be multiplied by. In the end w is its mantissa without the
/// leading bit and the next 8, an integer.
struct alignas(32) Slot {
    ext argument;
    uint32_t high;
    float factor;

    QORKES_INLINE void take(ext x) { argument = x; }
    QORKES_INLINE ext rest() const {
        ext result;
        asm("fildll %1" : "=t"(result) : "m"(argument));
        return result;
    }
};
constexpr double unitOfRests = 0x1p-63;

QORKES_INLINE void takeApart(Slot& slot) {
    constexpr uint32_t bias = 0x3FFF, doubleBias = 0x3FF;
    char* const top = reinterpret_cast<char*>(&slot.argument) + 4;
    uint32_t mantissa;
    uint16_t exponent;
    std::memcpy(&mantissa, top, sizeof mantissa);
    std::memcpy(&exponent, top + 4, sizeof exponent);
    slot.high = (exponent - bias + doubleBias) << 20 | (mantissa >> 11 & 0xFFFFF);
    mantissa &= 0x7FFFFF;
    std::memcpy(top, &mantissa, sizeof mantissa);
}

template <class F>
QORKES_NOINLINE int logarithmPairs(int n, const double* a, double* y) {
    Slot slots[blockSize];
    const int count = storeArguments<F>(n, a, slots);
    if (count == 0) return 0;
    for (int i = 0; i < count; ++i) {
        takeApart(slots[i]);
        setBits(slots[i].factor, (highWord(a[i]) & signBit) | F::factorBits);
    }
    logarithmsInTurn<F::logarithm>(
        count, [&](int i) { return slots[i].rest(); },
        [&](int i) { return slots[i].high; },
        [&](int i, ext logarithm) {
            y[i] = round64(F::isOdd ? logarithm * slots[i].factor : logarithm);
        });
    return count;
}

template <class F>
QORKES_NOINLINE void inverseHyperbolics(int n, const double* a, double* y) {
    inversePairs<F, logarithmPairs<F>>(n, a, y);
}

} // namespace qorkes
