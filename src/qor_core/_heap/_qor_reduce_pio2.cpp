// _qorreduce_pio2d: x less its nearest multiple of pi/2, in two doubles, and the
// quadrant.
//
// All at 53 bits. Below 2^30 a multiple of pi/4, in four or five short parts whose
// products with the count are exact, is subtracted with every lost bit kept. From there
// on x is multiplied by those digits of 4/pi that leave a fraction (Payne and Hanek,
// "Radian reduction for trigonometric functions", 1983).
#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

#include "_qor_reduce_pio2_tables.inc"

constexpr const double* signFactor = _qorReductionTab + 2;
constexpr double splitter = _qorReductionTab[5];
constexpr double quarterPiHigh = _qorReductionTab[6];
constexpr double quarterPiLow = _qorReductionTab[7];
constexpr double fourOverPi = _qorReductionTab[8];
constexpr const double* inFourParts = _qorReductionTab + 10;
constexpr const double* inFiveParts = _qorReductionTab + 14;
constexpr const double* digits = _qorReductionTab + 20; // of 4/pi

constexpr int digitsUsed = 9;
constexpr uint32_t digitScale = 200; // they are too large by 2 to this power

constexpr uint32_t firstLargeExponent = 1053;     // 2^30
constexpr uint32_t firstOfFiveParts = 0x41600000; // high word of 2^23

/// Adding and subtracting these rounds to a multiple of 8 and of 2.
constexpr double toEights = 0x1.8p+55;
constexpr double toTwos = 0x1.8p+53;

/// Adds to a sum and gives what rounding lost, exactly (Knuth, The Art of Computer
/// Programming, volume 2, section 4.2.2, theorem B).
QORKES_INLINE ext addTo(ext& sum, ext addend) {
    const ext before = sum;
    sum = before + addend;
    const ext added = sum - before;
    return (before - (sum - added)) + (addend - added);
}

struct Reduction {
    ext r, low;
    uint32_t quadrant;
};

/// The integer part of x, which is below 2^32.
uint32_t integerPart(const double& x) {
    const uint32_t exponent = highWord(x) >> 20;
    if (exponent < 1023) return 0;
    const uint32_t mantissa = signBit | highWord(x) << 11 | lowWord(x) >> 21;
    return mantissa >> (1054 - exponent);
}

Reduction reduceMedium(double x) {
    const uint32_t quarters = integerPart(round64(x * ext{fourOverPi}));
    const ext count = static_cast<int32_t>(quarters + (quarters & 1));
    const bool needsFive = highWord(x) >= firstOfFiveParts;
    const double* part = needsFive ? inFiveParts : inFourParts;
    const double* const end = part + (needsFive ? 5 : 4);
    ext r = x, low = 0;
    for (; part != end; ++part) low += addTo(r, -(count * *part));
    return {r, low, (quarters + 1) >> 1};
}

/// A number of eighths of a turn, modulo 8, in parts of falling size.
struct Eighths {
    ext high, middle, low;
};

void addModuloEight(Eighths& sum, ext product) {
    const ext eights = (product + toEights) - toEights;
    sum.low += addTo(sum.middle, addTo(sum.high, product - eights));
}

/// x times 4/pi. The product of the top half of x and the first digit is a multiple of
/// 8, as those of all digits before are.
Eighths eighthsOfTurn(double x) {
    const double* digit = digits + (((highWord(x) >> 20) - 1052) * 83886 >> 21);
    addToHighWord(x, -(digitScale << 20));
    double top;
    setBits(top, bitsOf(x) & ~uint64_t{0x7FFFFFF});
    const ext bottom = ext{x} - top;

    Eighths sum = {0, 0, 0};
    for (int n = 0; n < digitsUsed - 1; ++n) {
        addModuloEight(sum, bottom * digit[n]);
        addModuloEight(sum, top * ext{digit[n + 1]});
    }
    sum.middle = addTo(sum.high, sum.middle);
    return sum;
}

/// (r + low) pi/4. The products with the top of pi/4 are exact, and so are the sums.
Reduction timesQuarterPi(ext r, ext low, uint32_t quadrant) {
    const ext scaled = r * splitter;
    const ext top = (r + scaled) - scaled;
    ext product = top * quarterPiHigh;
    ext lost = addTo(product, (r - top) * quarterPiHigh);
    lost += addTo(product, r * quarterPiLow) + low * quarterPiHigh;
    return {product, lost, quadrant};
}

Reduction reduceLarge(double x) {
    const Eighths x4 = eighthsOfTurn(x);
    const double shifted = round64(x4.high + toTwos);
    ext r = x4.high - (shifted - ext{toTwos});
    ext low = addTo(r, x4.middle) + x4.low;
    low = addTo(r, low);
    return timesQuarterPi(r, low, lowWord(shifted));
}

QORKES_NOINLINE void reduce(double x, double* out, uint32_t* quadrant) {
    const uint32_t sign = highWord(x) >> 31;
    setHighWord(x, highWord(x) & magnitudeBits);
    const bool isMedium = highWord(x) >> 20 < firstLargeExponent;
    const Reduction reduced = isMedium ? reduceMedium(x) : reduceLarge(x);
    const ext r = reduced.r * signFactor[sign], low = reduced.low * signFactor[sign];
    out[0] = round64(r + low);
    out[1] = round64((r - out[0]) + low);
    *quadrant = (sign ? -reduced.quadrant : reduced.quadrant) & 3;
}

} // namespace

int _qorreduce_pio2d(double x, double out[2]) {
    uint32_t quadrant;
    inFrame<Precision::bits53, Mxcsr::callers, reduce>(x, out, &quadrant);
    return static_cast<int>(quadrant);
}
