// _qordPow_50: y = a^b in double precision, largest error 0.6 ulp in the middle of the
// range of results, 1.7 ulp at its ends.
//
// a = m 2^k outside of [0.25, 4): with c = 1 + i/256, the mantissa cut to its top 8
// bits, and r = (m - c) / c from a table of reciprocals, log2 a = k + log2 c + P(r),
// log2 c in two parts. Inside, where that would cancel, and for results at the ends of
// the range the unit's own logarithm. Its product with b is K + j3/32 + j2/1024 +
// j1/16384 + r with |r| <= 2^-15, by adding a shifter; 2^r is a cubic. All at 64-bit
// precision, rounded once.
//
// Special values: powerCase in special_powers.hpp.
#include <qor_core/_heap/logarithm_rows.hpp>
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/_heap/special_powers.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordPow_50";

#include "qor_a6_dpow_50_tables.inc"
constexpr LogarithmRows logRows(log2TabD);
constexpr Rows fineRows(expTabFine, 1);
constexpr Rows midRows(expTabMid, 1);
constexpr Rows coarseRows(expTabCoarse, 1);

constexpr double logPolynomial[6] = {1.4426950408889634, -0.7213475204444753,
                                     0.4808983469435075, -0.36067373893122234,
                                     0.2885284853076438, -0.238049490349166};
constexpr double expPolynomial[3] = {0.6931471805599453, 0.24022650699493103,
                                     0.05550410867227228};
constexpr float stepShifter = 0x1.8p+38f;
static_assert(hasPattern(stepShifter, 0x52C00000));

/// An exponent of 2 of 1022 and more goes the scalar way, 1075 and more is beyond every
/// double.
constexpr double moderateExponent = 1022;
constexpr double lastExponent = 1075;
static_assert(hasPattern(moderateExponent, 0x408FF00000000000));
static_assert(hasPattern(lastExponent, 0x4090CC0000000000));

/// True for numbers in [0.25, 4), by their high words.
QORKES_INLINE bool isForUnit(uint32_t high) { return high - 0x3FD00000 < 0x00400000; }

/// `rest` keeps all of the argument's mantissa but its top 8 bits.
QORKES_INLINE ext log2ByTable(uint32_t high, const double& rest) {
    const double(&c)[6] = logPolynomial;
    const LogarithmRow& row = logRows.row[high >> 12 & 0xFF];
    const ext r = (ext{rest} - 1.0L) * row.recip;
    const ext p =
        (((((c[5] * r + c[4]) * r + c[3]) * r + c[2]) * r + c[1]) * r + c[0]) * r;
    return ((ext{row.high} + exponents.k[high >> 20]) + row.low) + p;
}

/// An exponent of 2 taken apart. The low word of `steps` holds K in its upper 18 bits,
/// then j3, j2 and j1.
struct Exponent {
    double steps, rest;
    double excess; // of a rest that has more than 53 bits
};
QORKES_INLINE Exponent takenApart(ext exponent) {
    Exponent parts;
    parts.steps = round64(exponent + stepShifter);
    const ext rest = exponent - (ext{parts.steps} - stepShifter);
    parts.rest = round64(rest);
    parts.excess = round64(rest - loadedHere(parts.rest));
    return parts;
}

/// 2^exponent without its factor 2^K.
QORKES_INLINE ext mantissaOf(const Exponent& exponent) {
    const double(&c)[3] = expPolynomial;
    const uint32_t w = lowWord(exponent.steps);
    const ext r = ext{exponent.rest} + exponent.excess;
    const ext p = ((c[2] * r + c[1]) * r + c[0]) * r + 1.0L;
    return p * fineRows.at(w << 4 & 0xF0) * midRows.at(w & 0x1F0) *
           coarseRows.at(w >> 5 & 0x1F0);
}

// ---- One element --------------------------------------------------------------------

/// |x|^y for finite x and y, x not zero; rounded once also if it is denormal.
QORKES_INLINE double magnitudeOfPower(const double& x, double y) {
    const uint32_t high = highWord(x) & magnitudeBits;
    double rest;
    setWords(rest, (high & 0xFFF) | 0x3FF00000, lowWord(x));
    const ext byUnit = timesLog2(1.0L, __builtin_fabsl(x));
    const bool isForTable = isPositiveNormal(high) && !isForUnit(high);
    ext log = isForTable ? log2ByTable(high, rest) : byUnit;
    double exponent = round64(log * y);
    if (__builtin_fabsl(exponent) >= moderateExponent) {
        log = byUnit;
        exponent = round64(log * y);
    }
    if (exponent >= lastExponent) return std::numeric_limits<double>::infinity();
    if (exponent <= -lastExponent) return 0;
    const Exponent parts = takenApart(log * y);
    return round64(scaleByPowerOfTwo(mantissaOf(parts),
                                     static_cast<int32_t>(lowWord(parts.steps)) >> 14));
}

QORKES_COLD void pow_scalar(int i, const double* a, const double* b, double* y) {
    storePower<double, _QOR_THISFUNC_NAME, oneEach>(
        powerCase(a[i], b[i]), i, a, b, y,
        [=] { return magnitudeOfPower(a[i], b[i]); });
}

// ---- Blocks of pairs ----------------------------------------------------------------

struct Block {
    alignas(16) double rest[blockSize];
    Exponent exponent[blockSize];
};

/// The rests of pairs before the first one with an x that is no positive normal number,
/// up to a block of them; returns how many elements these are.
QORKES_NOINLINE int takeRests(int n, const double* a, Block& block) {
    return takeOrdinary<2>(
        n, [=](int i) { return arePositiveNormal(a + i); },
        [&](int i) { storeRests(block.rest + i, a + i); });
}

QORKES_NOINLINE void takeExponents(int n, const double* a, const double* b,
                                   Block& block) {
    for (int i = 0; i < n; ++i) {
        prefetchAhead(a + i, 32);
        prefetchAhead(b + i, 32);
        const uint32_t high = highWord(a[i]);
        const ext log =
            isForUnit(high) ? timesLog2(1.0L, a[i]) : log2ByTable(high, block.rest[i]);
        block.exponent[i] = takenApart(log * b[i]);
    }
}

/// True for exponents of 2 below 1022 in magnitude. The step of -1022 itself is left
/// out: exponents below it are rounded to it too.
QORKES_INLINE bool isModerate(const double& steps) {
    constexpr uint64_t end =
        std::bit_cast<uint64_t>(double{stepShifter} + moderateExponent);
    constexpr uint64_t first =
        std::bit_cast<uint64_t>(double{stepShifter} - moderateExponent) + 1;
    return bitsOf(steps) - first < end - first;
}

/// The powers of the elements from `first` on.
QORKES_NOINLINE void takePowers(int first, int n, const Block& block, const double* a,
                                const double* b, double* y) {
    for (int i = 0; i < n; ++i) {
        const Exponent& exponent = block.exponent[i];
        if (!isModerate(exponent.steps)) [[unlikely]] {
            pow_scalar(first + i, a, b, y);
            continue;
        }
        y[first + i] = round64(mantissaOf(exponent));
        addToHighWord(y[first + i], (lowWord(exponent.steps) & 0xFFFFC000) << 6);
    }
}

QORKES_NOINLINE void powers(int n, const double* a, const double* b, double* y) {
    Block block;
    const auto ordinary = [&](int i) {
        const int count = takeRests(n - i, a + i, block);
        takeExponents(count, a + i, b + i, block);
        takePowers(i, count, block, a, b, y);
        return count;
    };
    inRuns<2>(n, ordinary, [=](int i) { pow_scalar(i, a, b, y); });
}

} // namespace

void _qordPow_50(int n, const double* a, const double* b, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, powers>(n, a, b, y);
}
