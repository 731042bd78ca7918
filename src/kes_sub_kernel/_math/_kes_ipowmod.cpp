// Powers with which multiplicative generators jump in their sequences.
#include <kes_sub_kernel/_math/modular.hpp>
#include <qorkes/kes.h>

using namespace qorkes;

uint32_t __kesiPowMod(uint32_t base, int32_t exponent, uint32_t modulus) {
    return power(base, exponent,
                 [=](uint32_t x, uint32_t y) { return multiplyMod(x, y, modulus); });
}

uint32_t __kesiPowMod2P31M1(uint32_t base, int32_t exponent) {
    return power(base, exponent, multiplyMod2P31M1);
}

uint64_t __kesiPowMod2P59(uint32_t baseLow, uint32_t baseHigh, int32_t exponent) {
    return power(uint64_t{baseHigh} << 32 | baseLow, exponent, multiplyMod2P59);
}
