// Logarithms in single precision, to the base e or 10: the one kernel of Ln and Log10.
//
// a = m 2^k: log a = k log 2 + P(m), P the cubic of the piece that the top 8 bits of m
// select. At 53-bit precision, rounded once. The first and the last piece are Taylor
// cubics about 1 and 2, so that the result goes to zero on both sides of 1.
#pragma once

#include <qor_core/_heap/pairs.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

/// k log 2 for each exponent field, as the unit rounds that product at 53 bits.
struct LogarithmsOfPowers {
    double row[256];

    constexpr LogarithmsOfPowers(ext logOf2) : row{} {
        for (int i = 0; i < 256; ++i) row[i] = static_cast<double>((i - 127) * logOf2);
    }
};

/// True if rounding these products to 64 bits first, as constant arithmetic does, makes
/// no tie for the rounding to 53 bits: at a tie the neighbour that was not chosen, as
/// far away on the other side, is a double too.
constexpr bool areRoundedAsOnce(ext logOf2) {
    for (int k = -127; k < 128; ++k) {
        const ext product = k * logOf2;
        const ext rest = product - static_cast<double>(product);
        const ext neighbour = product + rest;
        if (rest != 0 && neighbour == static_cast<double>(neighbour)) return false;
    }
    return true;
}

struct SingleLogarithm {
    const double (*rows)[4]; // powers of m, ascending
    LogarithmsOfPowers powers;
    ext logOf2;
    const char* kernel;
};

/// The logarithm of mantissa times 2^k: the place of the mantissa's piece, 32 bytes for
/// each, and k + 127.
template <const SingleLogarithm& f>
QORKES_INLINE ext pieceLogarithm(uint32_t place, uint32_t exponent, ext mantissa) {
    const auto* c =
        reinterpret_cast<const double*>(reinterpret_cast<const char*>(f.rows) + place);
    const ext p = ((c[3] * mantissa + c[2]) * mantissa + c[1]) * mantissa + c[0];
    return f.powers.row[exponent] + p;
}

QORKES_INLINE bool arePositiveNormal(const float* x) {
    return isPositiveNormalFloat(bitsOf(x[0])) && isPositiveNormalFloat(bitsOf(x[1]));
}

QORKES_INLINE void storeMantissa(float& mantissa, const float& x) {
    setBits(mantissa, (bitsOf(x) & 0x7FFFFF) | 0x3F800000);
}

/// Stores the mantissas of the pairs before the first special one, up to a block of
/// them; returns how many elements these are.
QORKES_NOINLINE static int storeMantissas(int n, const float* a, float* mantissas) {
    return takeOrdinary<2>(
        n, [=](int i) { return arePositiveNormal(a + i); },
        [=](int i) {
            storeMantissa(mantissas[i], a[i]);
            storeMantissa(mantissas[i + 1], a[i + 1]);
        });
}

template <const SingleLogarithm& f>
QORKES_NOINLINE int ordinaryPairs(int n, const float* a, float* y) {
    float mantissas[blockSize];
    const int count = storeMantissas(n, a, mantissas);
    for (int i = 0; i < count; ++i) {
        const uint32_t bits = bitsOf(a[i]);
        y[i] = round32(
            pieceLogarithm<f>(bits >> 10 & 0x1FE0, bits >> 23, loaded(mantissas[i])));
    }
    return count;
}

/// The unit's own logarithm serves special elements and what is paired with them.
template <const SingleLogarithm& f>
QORKES_COLD void unitLogarithm(int i, const float* a, float* y) {
    const uint32_t bits = bitsOf(a[i]);
    const int status = isZero(a[i])                      ? QOR_STATUS_SING
                       : bits - signBit <= floatInfinity ? QOR_STATUS_ERRDOM
                                                         : QOR_STATUS_OK;
    y[i] = round32(timesLog2(f.logOf2, a[i]));
    if (status != QOR_STATUS_OK) reportBesideUnit(status, i, a, y, f.kernel);
}

template <const SingleLogarithm& f>
QORKES_COLD void lastLogarithm(int i, const float* a, float* y) {
    if (isPositiveNormalFloat(bitsOf(a[i])))
        asPair<ordinaryPairs<f>>(a[i], y[i]);
    else
        unitLogarithm<f>(i, a, y);
}

template <const SingleLogarithm& f>
QORKES_NOINLINE void logarithms(int n, const float* a, float* y) {
    inRuns<2>(
        n, [=](int i) { return ordinaryPairs<f>(n - i, a + i, y + i); },
        [=](int i) { unitLogarithm<f>(i, a, y); },
        [=](int i) { lastLogarithm<f>(i, a, y); });
}

} // namespace qorkes
