// __kesdFloor: the greatest integer that is not above x, found on the bits of x.
#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qorkes/kes.h>

using namespace qorkes;

namespace {

constexpr uint32_t oneHigh = 0x3FF00000;
constexpr uint32_t endOfFractions = 52; // exponent from which all doubles are integers

double floorBelowOne(const double& x) {
    if (isZero(x)) return x;
    return highWord(x) & signBit ? -1.0 : 0.0;
}

} // namespace

double __kesdFloor(double x) {
    const uint32_t high = highWord(x) & magnitudeBits;
    if (high < oneHigh) return floorBelowOne(x);
    const uint32_t exponent = (high - oneHigh) >> 20;
    if (exponent >= endOfFractions) return high < doubleInfinityHigh ? x : x * 1.0;

    // Below 0 an odd bit is carried away from 0, into the exponent if need be.
    const uint64_t fraction = (uint64_t{1} << (endOfFractions - exponent)) - 1;
    uint64_t bits = bitsOf(x);
    if (bits >> 63 && (bits & fraction)) bits += fraction + 1;
    setBits(x, bits & ~fraction);
    return x;
}
