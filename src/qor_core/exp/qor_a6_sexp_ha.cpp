// _qorsExp_HA: y = e^a in single precision, largest error 0.62 ulp.
//
// a log2(e) = k + j/64 + r with |r| <= 1/128, by adding a shifter and rounding the sum
// to single precision; 2^r = c q(r), q a monic quadratic whose factor c is part of the
// table. At 53-bit precision, rounded once.
//
//   NaN                        the same NaN, quiet
//   +infinity, -infinity       +infinity, +0
//   88.72283935546875 and up   +infinity, status 3
//   below -103.97207641601562  +0, status 4
#include <qor_core/_heap/lanes.hpp>
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsExp_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

#include "qor_a6_sexp_tables.inc"

constexpr float expShifterS = 0x1.8p+17f;
constexpr double expPolySA = 0x1.7154fb6849716p+1;
constexpr double expPolySB = 0x1.0a6a6c7c4ae3ap+2;
constexpr float expLimitS = 0x1.62e43p+6f; // 88.72283935546875
static_assert(hasPattern(expShifterS, 0x48400000));
static_assert(hasPattern(expPolySA, 0x4007154FB6849716));
static_assert(hasPattern(expPolySB, 0x4010A6A6C7C4AE3A));
static_assert(hasPattern(expLimitS, 0x42B17218));

constexpr uint32_t lastDenormal = 0x42CFF1B4; // 103.97207641601562

QORKES_INLINE void storeExp(float& y, const float& x) {
    const ext shifted = loaded(x) * log2OfE + expShifterS;
    const float steps = round32(shifted);
    const uint32_t b = bitsOf(steps);
    const ext r = shifted - steps;
    const ext q = (r + expPolySA) * r + expPolySB;
    y = round32(q * expTabFloat[b & 0x3F] * singlePowers.at(b >> 6));
}

/// Lanes with |x| of expLimitS or more, NaNs excepted.
QORKES_INLINE int specialLanes(__m128 x) {
    const __m128 magnitude = magnitudeOf(x);
    const __m128 isBeyond = _mm_cmpnlt_ps(magnitude, _mm_set1_ps(expLimitS));
    return _mm_movemask_ps(_mm_and_ps(isBeyond, _mm_cmpord_ps(x, x)));
}

/// Corrects and reports the lanes given, of which element i is the first. x holds the
/// arguments: a may be y and overwritten.
QORKES_COLD void _qorsSpecLoop(int lanes, __m128 x, int i, const float* a, float* y) {
    float argument[4];
    _mm_storeu_ps(argument, x);
    forEachLane(lanes, [&](int k) {
        const uint32_t bits = bitsOf(argument[k]);
        const bool isNegative = bits & signBit;
        const uint32_t magnitude = bits & magnitudeBits;
        if (isNegative && magnitude <= lastDenormal) return;
        y[i + k] = isNegative ? 0.0f : __builtin_inff();
        if (magnitude != floatInfinity)
            _ErrorGate(isNegative ? QOR_STATUS_UNDERFLOW : QOR_STATUS_OVERFLOW, i + k,
                       a, y);
    });
}

QORKES_INLINE void expOfFour(int i, const float* a, float* y) {
    const __m128 x = _mm_loadu_ps(a + i);
    storeExp(y[i], a[i]);
    storeExp(y[i + 1], a[i + 1]);
    storeExp(y[i + 2], a[i + 2]);
    storeExp(y[i + 3], a[i + 3]);
    if (const int lanes = specialLanes(x)) [[unlikely]]
        _qorsSpecLoop(lanes, x, i, a, y);
}

QORKES_INLINE void _qorsExpScalar(int i, const float* a, float* y) {
    const __m128 x = _mm_load_ss(a + i);
    storeExp(y[i], a[i]);
    if (const int lanes = specialLanes(x)) [[unlikely]]
        _qorsSpecLoop(lanes, x, i, a, y);
}

QORKES_NOINLINE void exponentials(int n, const float* a, float* y) {
    inGroups<4>(
        n, [=](int i) { expOfFour(i, a, y); }, [=](int i) { _qorsExpScalar(i, a, y); });
}

} // namespace

void _qorsExp_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, exponentials>(n, a, y);
}
