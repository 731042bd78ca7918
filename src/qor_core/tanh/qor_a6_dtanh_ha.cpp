// _qordTanh_HA: y = tanh(a) in double precision, largest error 0.78 ulp.
//
// 2 a log2(e) = k + j/64 + r with |r| <= 1/128, by adding a shifter and rounding the
// sum to single precision. e = e^2a from 2^(j/64) by table and a polynomial for 2^r;
// tanh a = 1 - 2/(e + 1). Near 0, where that would cancel, two terms of the Taylor
// series after a. All at 64-bit precision, rounded once.
//
//   denormal                 the argument
//   20 and up in magnitude   1 with the sign of a, infinities included
//   NaN                      the same NaN, quiet; 1 with the sign of the NaN if its
//                            high word without sign is 0x7FF00000
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_dtanh_tables.inc"

constexpr ext ld2xLog2e = 0xb.8aa3b295c17f0bcp-2L;
constexpr ext tanhPoly6 = 0xa.184bb5f6f665068p-16L;
constexpr ext tanhPoly5 = 0xa.ec43736aa71699ep-13L;
constexpr ext tanhPoly4 = 0x9.d955b7dc971c673p-10L;
constexpr ext tanhPoly3 = 0xe.35846b8170765efp-8L;
constexpr ext tanhPoly2 = 0xf.5fdeffc162c776ep-6L;
constexpr ext tanhPoly1 = 0xb.17217f7d1cf7b6cp-4L;
constexpr float tanhShifter = 0x1.8p+17f;
static_assert(hasPattern(ld2xLog2e, 0x4000, 0xB8AA3B295C17F0BC));
static_assert(hasPattern(tanhPoly6, 0x3FF2, 0xA184BB5F6F665068));
static_assert(hasPattern(tanhPoly5, 0x3FF5, 0xAEC43736AA71699E));
static_assert(hasPattern(tanhPoly4, 0x3FF8, 0x9D955B7DC971C673));
static_assert(hasPattern(tanhPoly3, 0x3FFA, 0xE35846B8170765EF));
static_assert(hasPattern(tanhPoly2, 0x3FFC, 0xF5FDEFFC162C776E));
static_assert(hasPattern(tanhPoly1, 0x3FFE, 0xB17217F7D1CF7B6C));

constexpr uint32_t firstForTable = 0x3F60624E; // 0.002
constexpr uint32_t onesFrom = 0x40340000;      // 20

constexpr Rows tanhRows(ldPow2Table, 1);

QORKES_INLINE bool isForTable(const double& x) {
    return (highWord(x) & magnitudeBits) - firstForTable < onesFrom - firstForTable;
}

/// The steps of an argument in units of 1/64, as the low bits of a float, and 2^k.
struct Steps {
    float shifted, scale;
};

QORKES_INLINE void storeSteps(Steps& steps, const double& x, ext twiceLog2OfE) {
    steps.shifted = round32(loaded(x) * twiceLog2OfE + tanhShifter);
    setBits(steps.scale, ((bitsOf(steps.shifted) & ~0x3Fu) << 17) + 0x3F800000);
}

/// What a pass computes with.
struct Constants {
    ext twiceLog2OfE = inRegister(ld2xLog2e);
    ext poly1 = inRegister(tanhPoly1);
    ext poly2 = inRegister(tanhPoly2);
    ext poly3 = inRegister(tanhPoly3);
};

QORKES_INLINE double tableTanh(const double& x, const Steps& steps,
                               const Constants& c) {
    const ext r = loaded(x) * c.twiceLog2OfE - (loaded(steps.shifted) - tanhShifter);
    const ext upper =
        (loadedHere(tanhPoly6) * r + loadedHere(tanhPoly5)) * r + loadedHere(tanhPoly4);
    const ext p = (((upper * r + c.poly3) * r + c.poly2) * r + c.poly1) * r + 1.0L;
    const ext e = p * tanhRows.at((bitsOf(steps.shifted) & 0x3F) << 4) * steps.scale;
    return round64(1.0L - 2.0L / (e + 1.0L));
}

QORKES_COLD void _qordTanh_Scalar(int i, const double* a, double* y) {
    constexpr ext minusThird = -1.0L / 3, twoFifteenths = 2.0L / 15;
    const uint32_t high = highWord(a[i]);
    const uint32_t magnitude = high & magnitudeBits;
    if (magnitude < 0x00100000) {
        setBits(y[i], bitsOf(a[i]));
    } else if (magnitude < firstForTable) {
        const ext x = loaded(a[i]);
        const ext square = x * x;
        y[i] = round64(x + (minusThird + twoFifteenths * square) * square * x);
    } else if (magnitude < onesFrom) {
        const Constants constants;
        Steps steps;
        storeSteps(steps, a[i], constants.twiceLog2OfE);
        y[i] = tableTanh(a[i], steps, constants);
    } else if (magnitude > doubleInfinityHigh) {
        y[i] = round64(loaded(a[i]) * a[i]);
    } else {
        setWords(y[i], (high & signBit) | 0x3FF00000, 0);
    }
}

QORKES_INLINE bool areForTable(const double* x) {
    return isForTable(x[0]) && isForTable(x[1]) && isForTable(x[2]) && isForTable(x[3]);
}

/// The groups before the first special one, up to a block of them, in two passes that
/// keep the chains of dependent operations short; returns how many elements these are.
QORKES_NOINLINE int tableGroups(int n, const double* a, double* y) {
    Steps steps[blockSize];
    const Constants constants;
    const int count = takeOrdinary<4>(
        n, [=](int i) { return areForTable(a + i); },
        [&](int i) {
            for (int k = i; k < i + 4; ++k)
                storeSteps(steps[k], a[k], constants.twiceLog2OfE);
        });
    for (int i = 0; i < count; ++i) y[i] = tableTanh(a[i], steps[i], constants);
    return count;
}

QORKES_NOINLINE void tangents(int n, const double* a, double* y) {
    inRuns<4>(
        n, [=](int i) { return tableGroups(n - i, a + i, y + i); },
        [=](int i) { _qordTanh_Scalar(i, a, y); });
}

} // namespace

void _qordTanh_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, tangents>(n, a, y);
}
