// x^y in double precision with a logarithm of 75 bits: the one kernel of Pow_HA and
// Powx_HA, which bring their own tables.
//
// x = m 2^k with m in [1, 2); a short reciprocal R, about log2(e) / m, makes m R - R0
// = r small, with R0 = log2(e) to 23 bits. log2 x = (k - log2(R / R0)) + r + q(r). R
// and the upper 26 bits of m have an exact product, which gives r in two parts; the
// logarithm is rounded to 24 bits and what is left of it kept as a double. Its product
// with y is exact in the upper part, y taken to 24 bits there, and is cut at multiples
// of 1/128: 2^(j/128) from a table, in two parts, and a polynomial. All at 53-bit
// precision.
//
// The last rounding apart, an ordinary result is off by 0.02 ulp. A y of 2^15 and more,
// for an x near 1, magnifies the rounding of q and its coefficients, to 0.9 ulp at
// 2^19.
#pragma once

#include <qor_core/_heap/accurate_exp2.hpp>
#include <qor_core/_heap/logarithm_rows.hpp>
#include <qor_core/_heap/special_powers.hpp>

namespace qorkes {

constexpr double logPolynomial[7] = {0x1.9c3a6966457eep-24, -0.3465736568077919,
                                     0.16015105075297303,   -0.08325619496072671,
                                     0.04616704187202374,   -0.026667131649815552,
                                     0.015843641906397053};
static_assert(hasPattern(logPolynomial[0], 0x3E79C3A6966457EE));

/// What an element takes from a table, side by side.
struct alignas(32) PowLogRow {
    double recip, logHi, logLo;
};
struct PowTables {
    PowLogRow log[513];
    double exp2[128][2];

    constexpr PowTables(const double (&recip)[513], const double (&logarithm)[513][2],
                        const double (&power)[128][2])
        : log{}, exp2{} {
        for (int i = 0; i < 513; ++i)
            log[i] = {recip[i], logarithm[i][0], logarithm[i][1]};
        for (int j = 0; j < 128; ++j)
            for (int part = 0; part < 2; ++part) exp2[j][part] = power[j][part];
    }
};

/// The row is chosen by the mantissa rounded to 9 bits of fraction. From the middle of
/// the rows on they hold the logarithm less 1, and the exponent is taken one higher.
QORKES_INLINE const PowLogRow& logRow(const PowLogRow* rows, uint32_t high) {
    return rows[((high & 0xFFC00) + 1024) >> 11];
}
QORKES_INLINE uint32_t biasedExponent(uint32_t high) { return (high + 0x80400) >> 20; }

/// r = m R - R0 in two parts, and their rounded sum. `upper` is the mantissa with its
/// low 27 bits cleared.
struct ReducedMantissa {
    ext upper, lower, r;
};
QORKES_INLINE ReducedMantissa reduced(const PowLogRow& row, ext mantissa, ext upper) {
    ReducedMantissa x;
    x.upper = upper * row.recip - leadingReciprocal;
    x.lower = (mantissa - upper) * row.recip;
    x.r = x.upper + x.lower;
    return x;
}

/// The terms of q from r^3 on, without their r^2.
QORKES_INLINE ext higherTerms(ext r) {
    const double(&c)[7] = logPolynomial;
    return ((((c[6] * r + c[5]) * r + c[4]) * r + c[3]) * r + c[2]) * r;
}

QORKES_INLINE Log2 log2Of(const PowLogRow& row, ext mantissa, ext upper, ext k) {
    const double(&c)[7] = logPolynomial;
    const ReducedMantissa x = reduced(row, mantissa, upper);
    const ext q = ((higherTerms(x.r) + c[1]) * x.r + c[0]) * x.r;
    const ext lead = k + row.logHi;
    const float high = round32(lead + (x.r + q));
    return {high, round64((((lead - high) + x.upper) + x.lower) + q + row.logLo)};
}

/// The same with the square of r taken exactly, but for small terms: r by its upper 24
/// bits, and -11/32 of its coefficient.
QORKES_INLINE Log2 refinedLog2Of(const PowLogRow& row, ext mantissa, ext upper, ext k) {
    constexpr ext coefficient = -0.34375L;
    constexpr double restOfCoefficient = -0x1.721a334a083bbp-9;
    const ReducedMantissa x = reduced(row, mantissa, upper);
    const float head = round32(x.r);
    const ext square = ext{head} * head * coefficient;
    const ext q =
        ((higherTerms(x.r) + restOfCoefficient) * x.r + logPolynomial[0]) * x.r +
        ((x.upper - head) + x.lower) * (x.r + head) * coefficient;
    const ext lead = k + row.logHi;
    const float high = round32(lead + (x.r + (q + square)));
    const ext most = (lead - high) + x.upper;
    const ext more = most + x.lower;
    const ext lost = x.lower - (more - most);
    return {high, round64((more + square) + (q + lost) + row.logLo)};
}

/// True for exponents from 2^13 on, which need the refined logarithm. With an x near 1
/// the larger ones would magnify the rounding of q, to 0.9 ulp of the result at 2^19.
QORKES_INLINE bool isLargeExponent(const double& y) {
    return (highWord(y) & magnitudeBits) >= 0x40C00000;
}

/// x^y from log2 x; y is split in its turn, so that the product of the high parts is
/// exact.
QORKES_INLINE Power powerOf(const double (*exp2)[2], const Log2& log, const double& y) {
    const float upper = round32(y);
    const ext low = (ext{y} - upper) * log.high + ext{y} * log.low;
    return exp2OfSum(exp2, ext{upper} * log.high, low);
}

// ---- One element --------------------------------------------------------------------

/// lead + rest where it is below the smallest normal number, both scaled already:
/// rounded once, to a multiple of the smallest denormal, by adding a number whose last
/// place that is.
QORKES_INLINE double denormalSum(ext lead, ext rest) {
    constexpr ext shifter = 0x1p-1022L;
    const ext shifted = lead + shifter;
    const ext lost = lead - (shifted - shifter);
    return round64((shifted + (lost + rest)) - shifter);
}

/// |x|^y for finite x and y, x not zero and not 1.
template <const PowTables& tables>
QORKES_INLINE double magnitudeOfPower(double x, const double& y) {
    setHighWord(x, highWord(x) & magnitudeBits);
    ext k = 0;
    if (highWord(x) < 0x00100000) {
        x = round64(ext{x} * 0x1p+52);
        k = -52;
    }
    const uint32_t high = highWord(x), low = lowWord(x);
    double mantissa, upper;
    setWords(mantissa, (high & 0xFFFFF) | 0x3FF00000, low);
    setWords(upper, (high & 0xFFFFF) | 0x3FF00000, low & 0xF8000000);
    const PowLogRow& row = logRow(tables.log, high);
    k += exponents.k[biasedExponent(high)];
    const Log2 log = isLargeExponent(y) ? refinedLog2Of(row, mantissa, upper, k)
                                        : log2Of(row, mantissa, upper, k);

    const Power power = powerOf(tables.exp2, log, y);
    if (power.steps >= stepShifter + 1025)
        return std::numeric_limits<double>::infinity();
    if (power.steps < stepShifter - 1075) return 0;
    const ext scale = exponentIn(power.steps);
    const ext lead = scaleByPowerOfTwo(power.lead, scale);
    const ext rest = scaleByPowerOfTwo(power.rest, scale);
    const ext sum = lead + rest;
    return sum < 0x1p-1022L ? denormalSum(lead, rest) : round64(sum);
}

template <const PowTables& tables, const char* name, ExponentStep step>
QORKES_COLD void pow_scalar(int i, const double* a, const double* b, double* y) {
    const double& exponent = b[i * step];
    storePower<double, name, step>(powerCase(a[i], exponent), i, a, b, y, [&] {
        return magnitudeOfPower<tables>(a[i], exponent);
    });
}

// ---- Blocks of pairs ----------------------------------------------------------------

struct PowBlock {
    alignas(16) double mantissa[blockSize];
    alignas(16) double upper[blockSize];
    Log2 log[blockSize];
};

/// The mantissas of pairs before the first one with an x that is no positive normal
/// number, up to a block of them; returns how many elements these are.
QORKES_NOINLINE inline int takeMantissas(int n, const double* a, PowBlock& block) {
    static constexpr DoublePattern fraction{0xFFFFF, 0xFFFFFFFF}, one{0x3FF00000, 0};
    static constexpr DoublePattern kept{0xFFFFFFFF, 0xF8000000};
    return takeOrdinary<2>(
        n, [=](int i) { return arePositiveNormal(a + i); },
        [&](int i) {
            const __m128 x = _mm_loadu_ps(reinterpret_cast<const float*>(a + i));
            const __m128 m = _mm_or_ps(_mm_and_ps(x, fraction.load()), one.load());
            _mm_store_ps(reinterpret_cast<float*>(block.mantissa + i), m);
            _mm_store_ps(reinterpret_cast<float*>(block.upper + i),
                         _mm_and_ps(m, kept.load()));
        });
}

template <const PowTables& tables>
QORKES_NOINLINE void takeLogarithms(int n, const double* a, PowBlock& block) {
    const PowTables* table = inRegister(&tables);
    const float* numbers = inRegister(exponents.k);
    for (int i = 0; i < n; ++i) {
        const uint32_t high = highWord(a[i]);
        block.log[i] = log2Of(logRow(table->log, high), block.mantissa[i],
                              block.upper[i], numbers[biasedExponent(high)]);
    }
}

/// Takes those again that have a large exponent, from the k-th element on.
template <const PowTables& tables, ExponentStep step>
QORKES_NOINLINE void refineLogarithms(int k, int n, const double* a, const double* b,
                                      PowBlock& block) {
    for (; k < n; ++k) {
        const uint32_t high = highWord(a[k]);
        if (isLargeExponent(b[k * step]))
            block.log[k] =
                refinedLog2Of(logRow(tables.log, high), block.mantissa[k],
                              block.upper[k], exponents.k[biasedExponent(high)]);
    }
}

/// The powers of the elements from `first` on. What of them depends on the one exponent
/// of Powx alone stays out of the loop.
template <const PowTables& tables, const char* name, ExponentStep step>
QORKES_NOINLINE void takePowers(int first, int n, PowBlock& block, const double* a,
                                const double* b, double* y) {
    const double only = *b;
    bool areRefined = false;
    for (int k = 0; k < n; ++k) {
        const int i = first + k;
        const double& exponent = step == oneEach ? b[i] : only;
        if (isLargeExponent(exponent) && !areRefined) [[unlikely]] {
            refineLogarithms<tables, step>(k, n, a + first, b + first * step, block);
            areRefined = true;
        }
        const Power power = powerOf(tables.exp2, block.log[k], exponent);
        if (!isExponentWithin<-964, 1023>(power.steps)) [[unlikely]] {
            pow_scalar<tables, name, step>(i, a, b, y);
            continue;
        }
        y[i] = round64(power.rest + power.lead);
        addToHighWord(y[i], (lowWord(power.steps) & ~127u) << 13);
    }
}

template <const PowTables& tables, const char* name, ExponentStep step>
QORKES_NOINLINE void accuratePowers(int n, const double* a, const double* b,
                                    double* y) {
    PowBlock block;
    const auto ordinary = [&](int i) {
        const int count = takeMantissas(n - i, a + i, block);
        takeLogarithms<tables>(count, a + i, block);
        takePowers<tables, name, step>(i, count, block, a, b, y);
        return count;
    };
    inRuns<2>(n, ordinary, [=](int i) { pow_scalar<tables, name, step>(i, a, b, y); });
}

} // namespace qorkes
