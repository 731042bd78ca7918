// _qorsTanh_HA: y = tanh(a) in single precision, largest error 0.76 ulp.
//
// |a| = i/16 + r with |r| <= 1/32, by adding a shifter and rounding the sum to single
// precision. With T = tanh(i/16) from a table, tanh r = N/C by two short polynomials
// and the addition theorem, tanh |a| = (N + T C) / (C + T N). Near 0 the Taylor series.
// At 53-bit precision, rounded once; the sign of a comes last.
//
//   zero, denormal, least normal   the argument
//   10 and up in magnitude         1 with the sign of a, infinities included
//   NaN                            the same NaN, quiet
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_stanh_tables.inc"

constexpr float tanhShifterS = 0x1p+19f; // 524288.0
constexpr double tanhN1 = 0x1.0000002eee44cp+0;
constexpr double tanhN3 = 0x1.555111173a039p-3;
constexpr double tanhC0 = 0x1.ffffffd5592c5p-1;
constexpr double tanhC2 = 0x1.0005553db99b2p-1;
constexpr double tanhSeries7 = 0x1.ba1ba1ba1ba1cp-5;
static_assert(hasPattern(tanhN1, 0x3FF0000002EEE44C));
static_assert(hasPattern(tanhN3, 0x3FC555111173A039));
static_assert(hasPattern(tanhC0, 0x3FEFFFFFFD5592C5));
static_assert(hasPattern(tanhC2, 0x3FE0005553DB99B2));
static_assert(hasPattern(tanhSeries7, 0x3FABA1BA1BA1BA1C));

constexpr uint32_t firstForTable = 0x3A83126F; // 0.001
constexpr uint32_t onesFrom = 0x41200000;      // 10
constexpr uint32_t lastItself = 0x00800000;

QORKES_INLINE void storeTable(float& y, const float& x, const float& steps) {
    const uint32_t sign = bitsOf(x) & signBit;
    const ext r = __builtin_fabsl(loaded(x)) - (loaded(steps) - tanhShifterS);
    const ext table = loaded(tanhTab[bitsOf(steps) & 0xFF]);
    const ext square = r * r;
    const ext numerator = (square * tanhN3 + tanhN1) * r;
    const ext cofactor = square * tanhC2 + tanhC0;
    y = round32((numerator + table * cofactor) / (cofactor + table * numerator));
    setBits(y, bitsOf(y) | sign);
}

QORKES_INLINE void storeSteps(float& steps, const float& x) {
    steps = round32(__builtin_fabsl(loaded(x)) + tanhShifterS);
}

QORKES_INLINE bool isForTable(const float& x) {
    return (bitsOf(x) & magnitudeBits) - firstForTable < onesFrom - firstForTable;
}

QORKES_COLD void specialTangent(float& y, const float& x) {
    constexpr double minusThird = -0x1.5555555555555p-2;
    constexpr double twoFifteenths = 0x1.1111111111111p-3;
    const uint32_t bits = bitsOf(x), magnitude = bits & magnitudeBits;
    if (magnitude <= lastItself) {
        setBits(y, bits);
    } else if (magnitude < firstForTable) {
        const ext square = loaded(x) * x;
        y = round32(loaded(x) +
                    loaded(x) * square *
                        (minusThird + square * (twoFifteenths - square * tanhSeries7)));
    } else if (magnitude > floatInfinity) {
        y = round32(loaded(x) + x);
    } else {
        setBits(y, (bits & signBit) | 0x3F800000);
    }
}

/// The elements before the first special one, up to a block of them, in two passes that
/// keep the chains of dependent operations short; returns how many these are.
QORKES_NOINLINE int tableTangents(int n, const float* a, float* y) {
    float steps[blockSize];
    const int count = takeOrdinary<1>(
        n, [=](int i) { return isForTable(a[i]); },
        [&](int i) { storeSteps(steps[i], a[i]); });
    for (int i = 0; i < count; ++i) storeTable(y[i], a[i], steps[i]);
    return count;
}

QORKES_NOINLINE void tangents(int n, const float* a, float* y) {
    inRuns<1>(
        n, [=](int i) { return tableTangents(n - i, a + i, y + i); },
        [=](int i) { specialTangent(y[i], a[i]); });
}

} // namespace

void _qorsTanh_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, tangents>(n, a, y);
}
