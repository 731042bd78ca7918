// _qordExp_HA: y = e^a in double precision, largest error 0.80 ulp, 0.51 for |a| up to
// 16 and 0.65 if denormal: a log2(e) has 64 bits, and its error grows with a.
//
// a log2(e) = k + j3/32 + j2/1024 + j1/16384 + r with |r| <= 2^-15, by adding a
// shifter; 2^r = c p(r), p a monic cubic whose factor c is part of the rows for j1. All
// at 64-bit precision, rounded once. Inside, one unit is a step of 2^-14, so that the
// steps are an integer: powers of two, which change no rounding.
//
// Two passes over blocks, the steps of each argument and then the rest, keep the chains
// of dependent operations short.
//
//   NaN                          the same NaN, quiet
//   +infinity, -infinity         +infinity, +0
//   709.7827128933841 and up     +infinity, status 3
//   -745.1332191019412 and down  +0, status 4
//   |a| >= 708.3964185322642     e^a, the status is twice j2, which means nothing; none
//                                from 709.7822265625 up
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordExp_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

#include "qor_a6_dexp_tables.inc"

constexpr float expShifterD = 0x1.8p+38f;
constexpr ext expPolyA = 0x8.a7fac5f0df14283p-1L;
constexpr ext expPolyB = 0xc.7cfb95cac480639p+0L;
constexpr ext expPolyC = 0x9.0222b58db3c8e05p+1L;
static_assert(hasPattern(expShifterD, 0x52C00000));
static_assert(hasPattern(expPolyA, 0x4001, 0x8A7FAC5F0DF14283));
static_assert(hasPattern(expPolyB, 0x4002, 0xC7CFB95CAC480639));
static_assert(hasPattern(expPolyC, 0x4003, 0x90222B58DB3C8E05));

/// What a pass computes with: the constants for steps as the unit.
constexpr ext unit = 0x1p+14L;
constexpr auto shifter = static_cast<float>(expShifterD * unit);
struct Constants {
    ext stepsPerArgument = inRegister(log2OfE * unit);
    ext a = inRegister(expPolyA * unit);
    ext b = inRegister(expPolyB * unit * unit);
    ext c = inRegister(expPolyC * unit * unit * unit);
};

constexpr Rows fineRows(expTabFine, 1 / (unit * unit * unit));
constexpr Rows midRows(expTabMid, 1);
constexpr Rows coarseRows(expTabCoarse, 1);

/// A number whose low word holds k in its upper 18 bits, then j3, j2 and j1.
QORKES_INLINE double stepsOf(const double& x, ext stepsPerArgument) {
    return round64(loaded(x) * stepsPerArgument + shifter);
}

/// e^x without its factor 2^k.
QORKES_INLINE ext mantissaOf(const double& x, const double& steps, const Constants& k) {
    const uint32_t w = lowWord(steps);
    const ext r = loaded(x) * k.stepsPerArgument - lowWordAsInteger(steps);
    const ext p = ((r + k.a) * r + k.b) * r + k.c;
    return p * fineRows.at(w << 4 & 0xF0) * midRows.at(w & 0x1F0) *
           coarseRows.at(w >> 5 & 0x1F0);
}

/// e^x, rounded once also if it is denormal; the status of such a result is what the
/// index calculation leaves.
QORKES_INLINE uint32_t storeScaledExp(double& y, const double& x) {
    const Constants constants;
    const double steps = stepsOf(x, constants.stepsPerArgument);
    const auto w = static_cast<int32_t>(lowWord(steps));
    y = round64(scaleByPowerOfTwo(mantissaOf(x, steps, constants), w >> 14));
    return (lowWord(steps) & 0x1F0) >> 3;
}

constexpr uint64_t overflowFrom = 0x40862E42FEFA39F0;  // 709.7827128933841
constexpr uint64_t totalLossFrom = 0x40874910D52D3052; // 745.1332191019412
constexpr uint64_t denormalFrom = 0x4086232BDD7ABCD3;  // 708.3964185322642
constexpr uint32_t notFlaggedHigh = 0x40862E42;        // 709.7822265625

QORKES_COLD void _ExpSc(int i, const double* a, double* y) {
    const uint32_t high = highWord(a[i]);
    const uint64_t magnitude = bitsOf(a[i]) & ~(uint64_t{signBit} << 32);
    const bool isNegative = high & signBit;
    const bool isInfinite = magnitude == uint64_t{doubleInfinityHigh} << 32;
    if (isNaN(a[i])) {
        y[i] = quietNaN(a[i]);
    } else if (!isNegative && magnitude >= overflowFrom) {
        y[i] = __builtin_inf();
        if (!isInfinite) _ErrorGate(QOR_STATUS_OVERFLOW, i, a, y);
    } else if (magnitude >= totalLossFrom) {
        y[i] = 0.0;
        if (!isInfinite) _ErrorGate(QOR_STATUS_UNDERFLOW, i, a, y);
    } else {
        const uint32_t status = storeScaledExp(y[i], a[i]);
        if (magnitude >= denormalFrom && high != notFlaggedHigh)
            _ErrorGate(static_cast<int>(status), i, a, y);
    }
}

QORKES_INLINE bool isForExpSc(const double& x) {
    return (highWord(x) & magnitudeBits) >= 0x4086232B;
}

QORKES_INLINE void storeExp(double& y, const double& x, const double& steps,
                            const Constants& constants) {
    y = round64(mantissaOf(x, steps, constants));
    addToHighWord(y, (lowWord(steps) & 0xFFFFC000) << 6);
}

/// The pairs before the first one for _ExpSc, up to a block of them; returns how many
/// elements these are.
QORKES_NOINLINE int ordinaryPairs(int n, const double* a, double* y) {
    double steps[blockSize];
    const ext stepsPerArgument = inRegister(log2OfE * unit);
    const int count = takeOrdinary<2>(
        n, [=](int i) { return !isForExpSc(a[i]) && !isForExpSc(a[i + 1]); },
        [&](int i) {
            steps[i] = stepsOf(a[i], stepsPerArgument);
            steps[i + 1] = stepsOf(a[i + 1], stepsPerArgument);
        });
    const Constants constants{stepsPerArgument};
    for (int i = 0; i < count; i += 2) {
        storeExp(y[i], a[i], steps[i], constants);
        storeExp(y[i + 1], a[i + 1], steps[i + 1], constants);
    }
    return count;
}

QORKES_NOINLINE void exponentials(int n, const double* a, double* y) {
    inRuns<2>(
        n, [=](int i) { return ordinaryPairs(n - i, a + i, y + i); },
        [=](int i) { _ExpSc(i, a, y); });
}

} // namespace

void _qordExp_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, exponentials>(n, a, y);
}
