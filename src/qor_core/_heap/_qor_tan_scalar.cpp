// _dTan and the scalar-code entries of Tan: one tangent, of any argument.
//
// All at 53 bits, largest error 0.6 ulp. With x = T + t + low for a table angle T that
// is a multiple of pi/32, tan(x) is a polynomial in t to t^15. In the rows around the
// pole that is the polynomial of tan(x) + 1/w, where w = h + e is the distance of x
// from the pole; R, the reciprocal of the short h, then brings in the pole:
// 1/w = R (1 + (1 - h R - e R)).
//
//   infinity          NaN, invalid; entries: the default NaN, status 1
//   NaN               a NaN; double entries: the default NaN, status 1 if the high
//                     word's fraction is all zero
//   |x| < 2^-252      x, inexact unless zero
//   |x| >= 12800      reduced by multiples of pi/2 first
#include <qor_core/_heap/scalar_code.hpp>
#include <qor_core/_heap/sine_rows.hpp>

using namespace qorkes;

namespace {

#include "_qor_tan_scalar_tables.inc"

constexpr double inverseStep = 0x1.45f306dc9c883p+3; // 32/pi
constexpr double shifter = 0x1.8p+52;
constexpr double quarterTurnShifter = 0x1.8p+56; // rounds to a multiple of 16
static_assert(hasPattern(inverseStep, 0x40245F306DC9C883));
static_assert(hasPattern(shifter, 0x4338000000000000));
static_assert(hasPattern(quarterTurnShifter, 0x4378000000000000));

// pi/32 in parts, for the distance from a pole and from a table angle.
constexpr double poleStep1 = 0x1.921fb54444p-4;
constexpr double poleStep2 = -0x1.2e7b967674p-44;
constexpr double poleStep3 = 0x1.8a2e03707344ap-85;
static_assert(hasPattern(poleStep1, 0x3FB921FB54444000));
static_assert(hasPattern(poleStep2, 0xBD32E7B967674000));
static_assert(hasPattern(poleStep3, 0x3AA8A2E03707344A));
constexpr double tableStep1 = 0x1.921fb5444p-4;
constexpr double tableStep2 = 0x1.68c234c4cp-43;
constexpr double tableStep3 = 0x1.98a2e03707345p-81;
static_assert(hasPattern(tableStep1, 0x3FB921FB54440000));
static_assert(hasPattern(tableStep2, 0x3D468C234C4C0000));
static_assert(hasPattern(tableStep3, 0x3AE98A2E03707345));
// Rounds to -poleStep2 - poleStep3.
constexpr double minusPoleRest = 0x1.2e7b9676733afp-44;
static_assert(hasPattern(minusPoleRest, 0x3D32E7B9676733AF));

constexpr uint64_t shortDistance = 0xFFFFFFFFFFFC0000;

/// From here on (top 16 bits of |x|, 12800.0) x is reduced by quarter turns first.
constexpr uint32_t firstReducedTop = 0x40C9;

QORKES_INLINE double masked(double x, uint64_t mask) {
    setBits(x, bitsOf(x) & mask);
    return x;
}

/// x = w + a multiple of pi/2, w = h + e with a short h: R = 1/h and E = e/h.
struct PoleDistance {
    ext h, R, E;
};
QORKES_INLINE PoleDistance poleDistance(const Reduced& x, ext turns) {
    const ext m = (turns + quarterTurnShifter) - quarterTurnShifter;
    const ext p = x.r - poleStep1 * m;
    const ext h = masked(round64(p + m * minusPoleRest), shortDistance);
    const ext R = 1.0L / h;
    const ext p4 = p - poleStep2 * m;
    const ext e = ((p - p4) - poleStep2 * m) - poleStep3 * m + x.low + (p4 - h);
    return {h, R, R * e};
}

/// The terms from t^2 on.
QORKES_INLINE ext higherTerms(const TanRow& row, ext t) {
    const ext t2 = t * t, t4 = t2 * t2;
    const ext a = (row.c3 * t + row.c2) * t2 + row.c4 * t4;
    const ext b = (row.c6 * t + row.c5 + row.c7 * t2) * t4 * t;
    const ext highest = row.c15 * t2 + row.c14 * t + row.c13;
    const ext d = t4 * t4 *
                  (row.c9 * t + row.c8 + (row.c11 * t + row.c10) * t2 + row.c12 * t4 +
                   t4 * t * highest);
    return a + b + d;
}

QORKES_INLINE double tangentOf(const Reduced& x) {
    const ext turns = x.r * inverseStep;
    const PoleDistance pole = poleDistance(x, turns);

    const double shifted = round64(turns + shifter);
    const ext n = shifted - ext{shifter};
    const TanRow& row = _dTanTab[(16 * x.quadrant + lowWord(shifted)) & 31];
    const ext a = x.r - tableStep1 * n;
    const ext b = tableStep2 * n;
    const ext c = n * tableStep3;
    const ext t = a - b;
    const ext low = a - t - b - c + x.low;

    const ext linear = t * row.tanLead + t * row.tanRest;
    const ext linearLow = t * row.tanRest + (t * row.tanLead - linear) + row.tanLo +
                          (row.tanLead + ext{row.tanRest}) * low;

    const ext shortR = masked(round64(pole.R), row.mask);
    const ext minusHigh = shortR - row.tanHi;
    const ext high = linear - minusHigh;
    const ext residual = (1.0L - pole.h * shortR - pole.E) * (row.tanPoleFlag * pole.R);
    return round64((higherTerms(row, t) + linearLow) + (linear - (minusHigh + high)) -
                   residual + high);
}

QORKES_NOINLINE void tangent(double x, double* y) {
    const uint32_t exponent = exponentField(x);
    if (exponent == nonFiniteExponent) {
        *y = valueAtNonFinite(x);
    } else if (exponent < firstOrdinaryExponent) {
        *y = tinyArgument(x);
    } else {
        const bool isSmall = (highWord(x) & magnitudeBits) >> 16 < firstReducedTop;
        *y = tangentOf(isSmall ? unreduced(x) : reducedByQuarterTurns(x));
    }
}

void _qordTan_SC(int i, const double* a, double* y, const char* name) {
    scalarCode<_dTan>(i, a, y, name);
}
void _qorsTan_SC(int i, const float* a, float* y, const char* name) {
    scalarCode<_dTan>(i, a, y, name);
}

} // namespace

double _dTan(double x) {
    double y;
    inFrame<Precision::bits53, Mxcsr::callers, tangent>(x, &y);
    return y;
}

void _qordTan_SC_HA(int i, const double* a, double* y, int*) {
    _qordTan_SC(i, a, y, "dTan_HA");
}
void _qordTan_SC_LA(int i, const double* a, double* y, int*) {
    _qordTan_SC(i, a, y, "dTan_LA");
}
void _qordTan_SC_A11(int i, const double* a, double* y, int*) {
    _qordTan_SC(i, a, y, "dTan_A11");
}
void _qorsTan_SC_HA(int i, const float* a, float* y, int*) {
    _qorsTan_SC(i, a, y, "sTan_HA");
}
void _qorsTan_SC_LA(int i, const float* a, float* y, int*) {
    _qorsTan_SC(i, a, y, "sTan_LA");
}
void _qorsTan_SC_A11(int i, const float* a, float* y, int*) {
    _qorsTan_SC(i, a, y, "sTan_A11");
}
