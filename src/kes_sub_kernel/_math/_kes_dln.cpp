// __kesdLn: the natural logarithm of one double, largest error below 0.51 ulp.
//
// x = 2^k m with m in [1, 2). A row of 256 gives c near 1/m with 11 bits and -ln(c) in
// two parts; m c - 1 is exact in two parts and goes through a polynomial of degree 6
// (P. Tang, "Table-driven implementation of the logarithm function in IEEE
// floating-point arithmetic", 1990). Near 1 a series about 1 does without a row. All
// steps are 80-bit.
//
//   NaN                   the same NaN, quiet
//   +infinity             +infinity
//   negative, -infinity   the default NaN, invalid
//   +-0                   -infinity, division by zero
//   1                     +0
#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qorkes/kes.h>

using namespace qorkes;

namespace {

#include "_kes_dln_tables.inc"

// For 1 + t: the series that stops at t^10, the one that stops at t^5, and the
// polynomial of the reduced argument. LOG2 is ln(2), low part and high part.
constexpr double _Q1[9] = {-0.5,
                           0x1.5555555555555p-2,
                           -0x1.ffffffffffffcp-3,
                           0x1.99999999a2b21p-3,
                           -0x1.5555555566ad6p-3,
                           0x1.2492478d1d116p-3,
                           -0x1.fffffb94b8a57p-4,
                           0x1.c756a566ce20dp-4,
                           -0x1.99d9a03a0403ep-4};
constexpr double _Q2[4] = {-0.5, 0x1.5555555555555p-2, -0x1.0000003555556p-2,
                           0x1.99999a199b4b4p-3};
constexpr double _P[5] = {-0.5, 0x1.555555554d0dfp-2, -0x1.ffffffffe169dp-3,
                          0x1.999a24cdb6abcp-3, -0x1.5555f7bd1fcd4p-3};
constexpr double _LOG2[2] = {0x1.a39ef35793c76p-33, 0x1.62e42feep-1};
constexpr double _TWO_55 = 0x1p55;

template <int n>
constexpr bool havePatterns(const double (&x)[n], const uint64_t (&bits)[n]) {
    for (int i = 0; i < n; ++i)
        if (!hasPattern(x[i], bits[i])) return false;
    return true;
}
static_assert(
    havePatterns(_Q1, {0xBFE0000000000000, 0x3FD5555555555555, 0xBFCFFFFFFFFFFFFC,
                       0x3FC99999999A2B21, 0xBFC5555555566AD6, 0x3FC2492478D1D116,
                       0xBFBFFFFFB94B8A57, 0x3FBC756A566CE20D, 0xBFB99D9A03A0403E}));
static_assert(havePatterns(_Q2, {0xBFE0000000000000, 0x3FD5555555555555,
                                 0xBFD0000003555556, 0x3FC99999A199B4B4}));
static_assert(havePatterns(_P,
                           {0xBFE0000000000000, 0x3FD555555554D0DF, 0xBFCFFFFFFFFE169D,
                            0x3FC999A24CDB6ABC, 0xBFC5555F7BD1FCD4}));
static_assert(havePatterns(_LOG2, {0x3DEA39EF35793C76, 0x3FE62E42FEE00000}));

/// x rounded to double, of which the high word alone stays: 21 bits.
double leading(ext x) {
    double head = round64(x);
    setWords(head, highWord(head), 0);
    return head;
}

double logarithmOfZero() { return round64(-1 / inRegister(ext{0})); }

double logarithmOfNegativeOrInfinite(const double& x) {
    if (isNaN(x)) return quietNaN(x);
    if (highWord(x) == doubleInfinityHigh) return x;
    if (isZero(x)) return logarithmOfZero();
    return round64(0 * inRegister(ext{__builtin_inf()}));
}

/// ln(1 + t) for t in [0, 384 2^-20).
ext justAboveOne(ext t) {
    const ext z = t * t;
    return t + ((_Q2[3] * z + _Q2[1]) * z + (_Q2[2] * z + _Q2[0]) * t) * t;
}

/// ln(1 + t) for t in [-2^-6, 2^-6): t and t^2 / 2 are summed in two parts each.
ext nearOne(ext t) {
    const ext th = leading(t), tl = t - th;
    const ext z = t * t, s = leading(th * th);
    const ext p = ((_Q1[7] * z + _Q1[5]) * z + _Q1[3]) * z + _Q1[1];
    const ext q = (((_Q1[8] * z + _Q1[6]) * z + _Q1[4]) * z + _Q1[2]) * z;
    return th + _Q1[0] * s +
           (tl + (t * p + q) * z + (tl * th + (th + tl) * tl + (th * th - s)) * _Q1[0]);
}

/// ln(2^k m), m with the fraction and row that the high word of the argument gives.
ext byRow(int32_t k, uint32_t high, uint32_t low) {
    double m, mh;
    setWords(m, (high & 0xFFFFF) | 0x3FF00000, low);
    mh = leading(m);
    const uint32_t i = high >> 12 & 255;
    const double(&T)[2] = __libm_log_table_256[i];
    const ext c = __libm_rcp_table_256[i], ml = ext{m} - mh;
    const ext rh = mh * c - 1, rl = ml * c;
    const ext t = rh + rl, z = t * t;
    const ext A = ((_P[4] * z + _P[2]) * z + _P[0]) * z, B = _P[3] * z + _P[1];
    const ext w = rl + t * B * z + A;
    return w + (_LOG2[0] * k + T[0]) + (rh + (k * _LOG2[1] + T[1]));
}

} // namespace

double __kesdLn(double x) {
    uint32_t high = highWord(x);
    if (high >= doubleInfinityHigh) return logarithmOfNegativeOrInfinite(x);
    if (high - 0x3FEF8000 < 0xC000) {
        const ext t = ext{x} - 1;
        return round64(high - 0x3FF00000 < 384 ? justAboveOne(t) : nearOne(t));
    }
    int32_t exponentOfOne = 1023;
    if (high < 0x100000) {
        if (isZero(x)) return logarithmOfZero();
        x = round64(ext{x} * _TWO_55);
        high = highWord(x);
        exponentOfOne += 55;
    }
    const auto k = static_cast<int32_t>(high >> 20) - exponentOfOne;
    return round64(byRow(k, high, lowWord(x)));
}
