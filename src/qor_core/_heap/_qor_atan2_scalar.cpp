// _qorsatan2_scalar: the angle of one point (b, a) for the float kernels, without a
// frame: it computes at the precision and rounding in force. 1.5e-8 off in relative
// terms. Special points, in the order of the tests:
//
//   a or b a NaN     b + a
//   a = +-0          a for b > 0 and b = +0; pi with the sign of a for b < 0 and b = -0
//   b = +-0          pi/2 with the sign of a
//   b = +infinity    0 with the sign of a; for an infinite a pi/4
//   b = -infinity    pi with the sign of a; for an infinite a 3 pi/4
//   a infinite       pi/2 with the sign of a
#include <common/bits.hpp>
#include <qor_core/_heap/horner.hpp>
#include <qorkes/qor.h>

using namespace qorkes;

namespace {

constexpr float pi = 0x1.921fb6p+1f, halfPi = 0x1.921fb6p+0f,
                quarterPi = 0x1.921fb6p-1f, threeQuarterPi = 0x1.2d97c8p+1f;
static_assert(hasPattern(pi, 0x40490FDB) && hasPattern(halfPi, 0x3FC90FDB) &&
              hasPattern(quarterPi, 0x3F490FDB) &&
              hasPattern(threeQuarterPi, 0x4016CBE4));

constexpr double wideHalfPi = 0x1.921fb54442d18p+0, widePi = 0x1.921fb54442d18p+1;

/// arctan(t) = t (c[0] + c[1] t^2 + ...) for |t| up to 1.
constexpr double series[9] = {
    0x1.ffffff7d2397ap-1,  -0x1.5554a6dbb1614p-2, 0x1.9972e7842a425p-3,
    -0x1.22e400e7f97e8p-3, 0x1.b3da47dc4bc7ap-4,  -0x1.33603b7747c3cp-4,
    0x1.5dba9b6416141p-5,  -0x1.0744b79fa4c68p-6, 0x1.758a6ece26a15p-9};

/// The number with the sign bit of `signedBits`.
ext withSign(uint32_t signedBits, ext x) { return signedBits & signBit ? -x : x; }

ext specialAngle(uint32_t a, uint32_t b) {
    const bool isInfinite = (a & magnitudeBits) == floatInfinity;
    if ((a & magnitudeBits) == 0) return withSign(a, b & signBit ? pi : 0.0f);
    if ((b & magnitudeBits) == 0) return withSign(a, halfPi);
    if (b == floatInfinity) return withSign(a, isInfinite ? quarterPi : 0.0f);
    if (b == (signBit | floatInfinity))
        return withSign(a, isInfinite ? threeQuarterPi : pi);
    return withSign(a, halfPi);
}

ext ordinaryAngle(float a, float b) {
    const uint32_t ordinate = bitsOf(a) & magnitudeBits;
    const uint32_t abscissa = bitsOf(b) & magnitudeBits;
    const bool isSteep = ordinate >= abscissa;
    const ext N = isSteep ? -__builtin_fabsl(b) : __builtin_fabsl(a);
    const ext D = isSteep ? __builtin_fabsl(a) : __builtin_fabsl(b);
    const ext square = D * D, reciprocal = 1.0L / (square * square);
    const ext t = N * (D * (square * reciprocal)), u = t * t;
    const ext angle = t * polynomial<9>(series, u) + (isSteep ? wideHalfPi : 0.0);
    return withSign(bitsOf(a),
                    withSign(bitsOf(b), angle) + (bitsOf(b) & signBit ? widePi : 0.0));
}

} // namespace

long double _qorsatan2_scalar(float a, float b) {
    if (isNaN(a) || isNaN(b)) return ext{b} + a;
    const auto isSpecial = [](uint32_t bits) {
        return (bits & magnitudeBits) - 1 >= floatInfinity - 1;
    };
    if (isSpecial(bitsOf(a)) || isSpecial(bitsOf(b)))
        return specialAngle(bitsOf(a), bitsOf(b));
    return ordinaryAngle(a, b);
}
