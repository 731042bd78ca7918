// _qorreduce_pio2d against MPFR: on every binade, and on the doubles that come nearest
// to a multiple of pi/2.
#include <qorkes/qor.h>

#include <gtest/gtest.h>
#include <mpfr.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

/// Holds all bits of the largest double and 200 of its fraction.
constexpr mpfr_prec_t precision = 1400;

struct Number {
    mpfr_t value;
    Number() { mpfr_init2(value, precision); }
    ~Number() { mpfr_clear(value); }
    Number(const Number&) = delete;
    Number& operator=(const Number&) = delete;
    operator mpfr_ptr() { return value; }
};

/// pi / 2^shift
void setPi(mpfr_ptr value, unsigned shift) {
    mpfr_const_pi(value, MPFR_RNDN);
    mpfr_div_2ui(value, value, shift, MPFR_RNDN);
}

/// What the rounding of both parts leaves, and what pi/4 in parts lacks; from 2^30 on
/// the 79 bits of the last factor.
double allowedError(double x, double r) {
    x = std::fabs(x);
    r = std::fabs(r);
    if (x >= 0x1p30) return 0x1p-76 * r;
    return 0x1p-106 * r + (x < 0x1p23 ? 0x1p-115 : 0x1p-107);
}

void expectReduced(double x) {
    SCOPED_TRACE(testing::Message() << std::hexfloat << x);
    double out[2];
    const int quadrant = _qorreduce_pio2d(x, out);
    EXPECT_TRUE(quadrant >= 0 && quadrant <= 3);
    EXPECT_LE(std::fabs(out[0]), M_PI_4 * (1 + 0x1p-20));
    EXPECT_LE(std::fabs(out[1]), std::ldexp(1.0, std::ilogb(out[0]) - 53));

    // x less quadrant and parts, less the nearest multiple of 2 pi
    Number turn, rest, count;
    setPi(turn, 1);
    mpfr_mul_si(rest, turn, quadrant, MPFR_RNDN);
    mpfr_add_d(rest, rest, out[0], MPFR_RNDN);
    mpfr_add_d(rest, rest, out[1], MPFR_RNDN);
    mpfr_d_sub(rest, x, rest, MPFR_RNDN);
    mpfr_mul_2ui(turn, turn, 2, MPFR_RNDN);
    mpfr_div(count, rest, turn, MPFR_RNDN);
    mpfr_rint(count, count, MPFR_RNDN);
    mpfr_mul(count, count, turn, MPFR_RNDN);
    mpfr_sub(rest, rest, count, MPFR_RNDN);
    EXPECT_LE(std::fabs(mpfr_get_d(rest, MPFR_RNDN)), allowedError(x, out[0]));
}

TEST(Reduction, EveryBinade) {
    std::mt19937_64 random(1);
    for (int exponent = -1074; exponent < 1024; ++exponent)
        for (int k = 0; k < 20; ++k) {
            double mantissa = 1 + static_cast<double>(random() >> 12) * 0x1p-52;
            if (k == 0) mantissa = 1;
            if (k == 1) mantissa = 2 - 0x1p-51;
            const double x = std::ldexp(k & 1 ? -mantissa : mantissa, exponent);
            expectReduced(x);
            if (testing::Test::HasFailure()) return;
        }
}

/// The integers below 2^53 of which 2^exponent times pi/2's inverse come nearest to an
/// integer: the denominators of the convergents of its continued fraction.
std::vector<double> nearMultiples(int exponent) {
    Number alpha, digit;
    setPi(alpha, 1);
    mpfr_ui_div(alpha, 1, alpha, MPFR_RNDN);
    mpfr_mul_2si(alpha, alpha, exponent, MPFR_RNDN);
    std::vector<double> found;
    double before = 0, q = 1;
    mpfr_frac(alpha, alpha, MPFR_RNDN);
    while (true) {
        mpfr_ui_div(alpha, 1, alpha, MPFR_RNDN);
        mpfr_floor(digit, alpha);
        mpfr_frac(alpha, alpha, MPFR_RNDN);
        const double next = mpfr_get_d(digit, MPFR_RNDN) * q + before;
        if (!(next < 0x1p53)) return found;
        before = q;
        q = next;
        if (q >= 0x1p40) found.push_back(q);
    }
}

TEST(Reduction, NearestToMultiplesOfAQuarterTurn) {
    double nearest = 1;
    for (int exponent = -30; exponent <= 970; ++exponent)
        for (const double q : nearMultiples(exponent)) {
            const double x = std::ldexp(q, exponent);
            expectReduced(x);
            expectReduced(-x);
            if (testing::Test::HasFailure()) return;
            double out[2];
            _qorreduce_pio2d(x, out);
            nearest = std::min(nearest, std::fabs(out[0]));
        }
    // The least of all doubles (Muller, "Elementary functions", 1997, chapter 8).
    EXPECT_LT(nearest, 4.7e-19);
}

TEST(Reduction, KeepsAZeroAndItsSign) {
    double out[2];
    EXPECT_EQ(_qorreduce_pio2d(-0.0, out), 0);
    EXPECT_TRUE(out[0] == 0 && std::signbit(out[0]));
}

} // namespace
