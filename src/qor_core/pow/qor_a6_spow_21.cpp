// _qorsPow_21: y = a^b in single precision, largest error 0.62 ulp; 1.3 ulp for bases
// just above 1.
//
// a = m 2^k: log2 a = k + P(m), P the cubic of the piece that the top 8 bits of m
// select. Its product with b is K + j/64 + r with |r| <= 1/128, by adding a shifter and
// rounding the sum to single precision; 2^r is a quadratic. At 53-bit precision,
// rounded once.
//
// The first piece is exact at a = 1. In [1, 1.004) its relative error of 8e-10 adds up
// to 0.7 ulp for results at the ends of their range, and exponents above 2^24 magnify
// the cancellation of its terms, to 8 ulp at 2^29.
//
// Special values: powerCase in special_powers.hpp.
#include <qor_core/_heap/logarithm_rows.hpp>
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/_heap/special_powers.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsPow_21";

#include "qor_a6_spow_21_tables.inc"
constexpr double expPolynomial[3] = {0.9999999999910424, 0.6931497213394309,
                                     0.2402272407649173};
constexpr float stepShifter = 0x1.8p+17f; // 196608

/// What the steps for one element take from memory. Pointers in registers, since a loop
/// would form the addresses of the tables anew for every element.
struct Tables {
    const double (*log2)[4] = inRegister(sLog2Tab);
    const float* exponent = inRegister(exponents.k + 1023 - 127);
    const double* exp2 = inRegister(twoJ);
    const double* power = inRegister(singlePowers.row);
    ext shifter = inRegister(ext{stepShifter});
};

/// log2 of a positive normal number with these bits.
QORKES_INLINE ext log2Of(uint32_t bits, const Tables& tables) {
    float mantissa;
    setBits(mantissa, (bits & 0x7FFFFF) | 0x3F800000);
    const ext m = mantissa;
    const ext square = m * m;
    const double(&c)[4] = tables.log2[bits >> 15 & 0xFF];
    return ((ext{c[0]} + tables.exponent[bits >> 23]) + c[2] * square) +
           m * (c[1] + c[3] * square);
}

/// True for steps that stand for an exponent from -256 to 256: these have a power of
/// two in the table, and others are beyond every float.
QORKES_INLINE bool isInRange(const float& steps) {
    constexpr uint32_t first = std::bit_cast<uint32_t>(stepShifter - 256);
    constexpr uint32_t end = std::bit_cast<uint32_t>(stepShifter + 256);
    return bitsOf(steps) - first < end - first;
}

/// Stores 2^exponent, unless that is out of range.
QORKES_INLINE bool storeExp2(float& y, const double& exponent, const Tables& tables) {
    const double(&c)[3] = expPolynomial;
    const float steps = round32(ext{exponent} + tables.shifter);
    if (!isInRange(steps)) [[unlikely]]
        return false;
    const ext r = ext{exponent} - (steps - tables.shifter);
    const ext p = (c[2] * r + c[1]) * r + c[0];
    const uint32_t w = bitsOf(steps);
    y = round32(p * tables.exp2[w & 63] * tables.power[w >> 6 & 0x1FF]);
    return true;
}

// ---- One element --------------------------------------------------------------------

/// |x|^y for finite x and y, x not zero.
QORKES_INLINE float magnitudeOfPower(const float& x, float y) {
    const Tables tables;
    uint32_t bits = bitsOf(x) & magnitudeBits;
    ext log = 0;
    if (bits < 0x00800000) {
        bits = bitsOf(round32(__builtin_fabsl(x) * 0x1p+24));
        log = -24;
    }
    log += log2Of(bits, tables);
    const double exponent = round64(log * y);
    float magnitude;
    if (storeExp2(magnitude, exponent, tables)) return magnitude;
    return exponent < 0 ? 0 : __builtin_inff();
}

QORKES_COLD void powf_scalar(int i, const float* a, const float* b, float* y) {
    storePower<float, _QOR_THISFUNC_NAME, oneEach>(
        powerCase(a[i], b[i]), i, a, b, y,
        [=] { return magnitudeOfPower(a[i], b[i]); });
}

// ---- Blocks -------------------------------------------------------------------------

/// The exponents of 2 of the elements before the first one with an x that is no
/// positive normal number, up to a block of them; returns how many these are.
QORKES_NOINLINE int takeExponents(int n, const float* a, const float* b,
                                  double* exponent) {
    const Tables tables;
    return takeOrdinary<1>(
        n, [=](int i) { return isPositiveNormalFloat(bitsOf(a[i])); },
        [&](int i) { exponent[i] = round64(log2Of(bitsOf(a[i]), tables) * b[i]); });
}

/// The powers of the elements from `first` on.
QORKES_NOINLINE void takePowers(int first, int n, const double* exponent,
                                const float* a, const float* b, float* y) {
    const Tables tables;
    for (int i = 0; i < n; ++i)
        if (!storeExp2(y[first + i], exponent[i], tables)) [[unlikely]]
            powf_scalar(first + i, a, b, y);
}

QORKES_NOINLINE void powers(int n, const float* a, const float* b, float* y) {
    double exponent[blockSize];
    const auto ordinary = [&](int i) {
        const int count = takeExponents(n - i, a + i, b + i, exponent);
        takePowers(i, count, exponent, a, b, y);
        return count;
    };
    inRuns<1>(n, ordinary, [=](int i) { powf_scalar(i, a, b, y); });
}

} // namespace

void _qorsPow_21(int n, const float* a, const float* b, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, powers>(n, a, b, y);
}
