// x^y in single precision by a logarithm in two parts: the one kernel of the float
// Pow_HA and Powx_HA, which bring their own tables.
//
// x = m 2^k with m in [1, 2). Three short reciprocals, each from the leading bits of
// the product so far, take m R1 R2 R3 to R0 + r with |r| <= 2.2e-5, where R0 = log2(e)
// to 23 bits; log2 x = k + L1 + L2 + L3 + r + q(r), the L in two parts each. m R1 cut
// to 20 bits of fraction has an exact product with R2 R3, which saves r from
// cancellation. The logarithm is rounded to 24 bits and what is left of it kept as a
// double, so that both products with y are exact or small; 2 to their sum as in
// accurate_exp2.hpp. All at 53-bit precision, the result rounded once more to single.
#pragma once

#include <qor_core/_heap/accurate_exp2.hpp>
#include <qor_core/_heap/logarithm_rows.hpp>
#include <qor_core/_heap/powers_of_two.hpp>
#include <qor_core/_heap/special_powers.hpp>

namespace qorkes {

constexpr double logPolynomial[4] = {0x1.9c3a6966457e8p-24, -0.3465736568077919,
                                     0.16015105075870564, -0.08325619496470027};
static_assert(hasPattern(logPolynomial[0], 0x3E79C3A6966457E8));

/// The tables with each row in a place of 32 bytes: what selects a row is masked so
/// that it is the row's place.
struct alignas(32) PowStage {
    double recip, logHi, logLo;
};
struct FloatPowTables {
    PowStage stage1[33], stage2[33], stage3[129];
    double exp2[128][2];

    template <class Tables>
    constexpr FloatPowTables(const Tables& tables)
        : stage1{}, stage2{}, stage3{}, exp2{} {
        for (int i = 0; i < 33; ++i) stage1[i] = stageOf(tables.stage1[i]);
        for (int i = 0; i < 33; ++i) stage2[i] = stageOf(tables.stage2[i]);
        for (int i = 0; i < 129; ++i) stage3[i] = stageOf(tables.stage3[i]);
        for (int j = 0; j < 128; ++j)
            for (int part = 0; part < 2; ++part) exp2[j][part] = tables.exp2[j][part];
    }
    template <class Row> static constexpr PowStage stageOf(const Row& row) {
        return {row.recip, row.logHi, row.logLo};
    }
};
QORKES_INLINE const PowStage& stageAt(const PowStage* stage, uint32_t place) {
    return *reinterpret_cast<const PowStage*>(reinterpret_cast<const char*>(stage) +
                                              (place & ~31u));
}

/// log2 of a positive normal number from its exponent, the high word of its mantissa,
/// and the mantissa.
QORKES_INLINE Log2 log2Of(const FloatPowTables& tables, ext k, uint32_t high, ext m) {
    const double(&c)[4] = logPolynomial;
    const PowStage& row1 = stageAt(tables.stage1, ((high & 0xFC000) + 0x4000) >> 10);
    const ext product = m * row1.recip;
    const double product1 = round64(product);
    const PowStage& row2 =
        stageAt(tables.stage2, ((highWord(product1) & 0xFC00) + 0x400) >> 6);
    const double product2 = round64(product * row2.recip);
    const PowStage& row3 = stageAt(tables.stage3, (highWord(product2) & 0xFF0) + 0x10);

    const ext recip = ext{row2.recip} * row3.recip;
    float upper; // product1 without its low word
    setBits(upper, highWord(product1) << 3 & 0x3FFFFFFF);
    const ext r = (upper * recip - leadingReciprocal) + (product - upper) * recip;
    const ext q = (((c[3] * r + c[2]) * r + c[1]) * r + c[0]) * r;
    const ext lead = ((k + row1.logHi) + row2.logHi) + row3.logHi;
    const ext rest = r + (q + ((ext{row1.logLo} + row2.logLo) + row3.logLo));
    const float log = round32(lead + rest);
    return {log, round64((lead - log) + rest)};
}

QORKES_INLINE Power powerOf(const double (*exp2)[2], const Log2& log, const float& y) {
    return exp2OfSum(exp2, ext{y} * log.high, ext{y} * log.low);
}

/// Every K from -256 to 255 has its row; other powers are beyond every float.
QORKES_INLINE bool isInRange(const double& steps) {
    return isExponentWithin<-256, 256>(steps);
}
QORKES_INLINE float rounded(const Power& power) {
    const ext scale = singlePowers.at(lowWord(power.steps) >> 7);
    return round32((power.rest + power.lead) * scale);
}

// ---- One element --------------------------------------------------------------------

/// |x|^y for finite x and y, x not zero. A float widened is a normal number.
template <const FloatPowTables& tables>
QORKES_INLINE float magnitudeOfPower(const double& x, const float& y) {
    const uint32_t high = highWord(x) & magnitudeBits;
    double mantissa;
    setWords(mantissa, (high & 0xFFFFF) | 0x3FF00000, lowWord(x));
    const Log2 log = log2Of(tables, exponents.k[high >> 20], high, mantissa);
    const Power power = powerOf(tables.exp2, log, y);
    if (isInRange(power.steps)) return rounded(power);
    return power.steps < stepShifter ? 0 : __builtin_inff();
}

template <const FloatPowTables& tables, const char* name, ExponentStep step>
QORKES_COLD void pow_scalar(int i, const float* a, const float* b, float* y) {
    const float& exponent = b[i * step];
    const double wideBase = a[i], wideExponent = exponent;
    storePower<float, name, step>(powerCase(wideBase, wideExponent), i, a, b, y, [&] {
        return magnitudeOfPower<tables>(wideBase, exponent);
    });
}

// ---- Blocks -------------------------------------------------------------------------

/// The logarithms of the elements before the first one that is no positive normal
/// number, up to a block of them; returns how many these are.
template <const FloatPowTables& tables>
QORKES_NOINLINE int takeLogarithms(int n, const float* a, Log2* log) {
    const FloatPowTables* table = inRegister(&tables);
    const float* numbers = inRegister(exponents.k + 1023 - 127);
    return takeOrdinary<1>(
        n, [=](int i) { return isPositiveNormalFloat(bitsOf(a[i])); },
        [=](int i) {
            const uint32_t bits = bitsOf(a[i]);
            float mantissa;
            setBits(mantissa, (bits & 0x7FFFFF) | 0x3F800000);
            log[i] = log2Of(*table, numbers[bits >> 23], bits >> 3, mantissa);
        });
}

/// The powers of the elements from `first` on.
template <const FloatPowTables& tables, const char* name, ExponentStep step>
QORKES_NOINLINE void takePowers(int first, int n, const Log2* log, const float* a,
                                const float* b, float* y) {
    for (int i = first; i < first + n; ++i) {
        const Power power = powerOf(tables.exp2, log[i - first], b[i * step]);
        if (isInRange(power.steps)) [[likely]]
            y[i] = rounded(power);
        else
            pow_scalar<tables, name, step>(i, a, b, y);
    }
}

template <const FloatPowTables& tables, const char* name, ExponentStep step>
QORKES_NOINLINE void floatPowers(int n, const float* a, const float* b, float* y) {
    Log2 log[blockSize];
    const auto ordinary = [&](int i) {
        const int count = takeLogarithms<tables>(n - i, a + i, log);
        takePowers<tables, name, step>(i, count, log, a, b, y);
        return count;
    };
    inRuns<1>(n, ordinary, [=](int i) { pow_scalar<tables, name, step>(i, a, b, y); });
}

} // namespace qorkes
