// Logarithms in double precision, to the base e or 10: the one kernel of Ln and Log10.
//
// a = m 2^k and c = 1 + i/256, the mantissa m cut to its top 8 bits. With the rest r =
// (m - c) / c from a table of reciprocals, log a = k log 2 + log c + P(r): the
// logarithm of c in two parts, P a polynomial. In [0.998046875, 1), where that would
// cancel, the Taylor series of log(1 + t), t = a - 1. All at 64-bit precision, rounded
// once.
#pragma once

#include <qor_core/_heap/logarithm_rows.hpp>
#include <qor_core/_heap/pairs.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

struct Logarithm {
    LogarithmRows rows;
    double main[6], nearOne[6]; // coefficients of r, t and their powers
    ext logOf2;
    const char* kernel;
};

/// True in [0.998046875, 1).
QORKES_INLINE bool isNearOne(uint32_t high) { return high >> 12 == 0x3FEFF; }

QORKES_INLINE bool areForTable(const double* x) {
    return arePositiveNormal(x) && !isNearOne(highWord(x[0])) &&
           !isNearOne(highWord(x[1]));
}

/// Stores the rests of the pairs before the first one that is not for the table, up to
/// a block of them; returns how many elements these are.
QORKES_NOINLINE static int tableRests(int n, const double* a, double* rests) {
    return takeOrdinary<2>(
        n, [=](int i) { return areForTable(a + i); },
        [=](int i) { storeRests(rests + i, a + i); });
}

/// The logarithms of an even count of arguments, each given by its rest, `restOf(i)`,
/// and the high word that it has as a double, `highOf(i)`, to `store(i, logarithm)`.
/// Each is begun before the one in front of it is finished, which keeps the chains of
/// dependent operations short.
template <const Logarithm& f, class RestOf, class HighOf, class Store>
QORKES_INLINE void logarithmsInTurn(int count, RestOf&& restOf, HighOf&& highOf,
                                    Store&& store) {
    const ext logOf2 = inRegister(f.logOf2);
    const auto& c = f.main;
    const auto rowOf = [](uint32_t high) -> const LogarithmRow& {
        const char* place =
            reinterpret_cast<const char*>(f.rows.row) + (high >> 7 & 0x1FE0);
        return *reinterpret_cast<const LogarithmRow*>(place);
    };
    const auto begin = [&](int i, ext& r, ext& upper) {
        r = restOf(i) * rowOf(highOf(i)).recip;
        upper = ((c[5] * r + c[4]) * r + c[3]) * r + c[2];
    };
    const auto finish = [&](int i, ext r, ext upper) {
        const uint32_t high = highOf(i);
        const LogarithmRow& row = rowOf(high);
        const ext p = ((upper * r + c[1]) * r + c[0]) * r;
        const ext k = loaded(exponents.k[high >> 20]);
        store(i, ((k * logOf2 + row.high) + row.low) + p);
    };
    ext r0, r1, upper0, upper1;
    begin(0, r0, upper0);
    for (int i = 0; i < count; i += 2) {
        begin(i + 1, r1, upper1);
        finish(i, r0, upper0);
        begin(i + 2 < count ? i + 2 : i, r0, upper0);
        finish(i + 1, r1, upper1);
    }
}

/// The logarithms of the pairs for the table; returns how many elements they are.
template <const Logarithm& f>
QORKES_NOINLINE int tablePairs(int n, const double* a, double* y) {
    alignas(16) double rests[blockSize];
    const int count = tableRests(n, a, rests);
    if (count == 0) return 0;
    const ext one = inRegister(1.0L);
    logarithmsInTurn<f>(
        count, [&](int i) { return loaded(rests[i]) - one; },
        [=](int i) { return highWord(a[i]); },
        [=](int i, ext logarithm) { y[i] = round64(logarithm); });
    return count;
}

template <const Logarithm& f> QORKES_COLD double seriesNearOne(const double& x) {
    const auto& c = f.nearOne;
    const ext t = ext{x} - 1.0L;
    return round64(
        (((((c[5] * t + c[4]) * t + c[3]) * t + c[2]) * t + c[1]) * t + c[0]) * t);
}

/// The unit's own logarithm serves what is no positive normal number.
template <const Logarithm& f>
QORKES_COLD void specialLogarithm(int i, const double* a, double* y) {
    const uint32_t high = highWord(a[i]);
    const int status = isZero(a[i])                           ? QOR_STATUS_SING
                       : high - signBit <= doubleInfinityHigh ? QOR_STATUS_ERRDOM
                                                              : QOR_STATUS_OK;
    y[i] = round64(timesLog2(f.logOf2, a[i]));
    if (status != QOR_STATUS_OK) report(status, i, a, a, y, y, f.kernel);
}

template <const Logarithm& f>
QORKES_COLD void scalarLogarithm(int i, const double* a, double* y) {
    const uint32_t high = highWord(a[i]);
    if (!isPositiveNormal(high)) {
        specialLogarithm<f>(i, a, y);
    } else if (isNearOne(high)) {
        y[i] = seriesNearOne<f>(a[i]);
    } else {
        asPair<tablePairs<f>>(a[i], y[i]);
    }
}

template <const Logarithm& f>
QORKES_NOINLINE void logarithms(int n, const double* a, double* y) {
    inRuns<2>(
        n, [=](int i) { return tablePairs<f>(n - i, a + i, y + i); },
        [=](int i) { scalarLogarithm<f>(i, a, y); });
}

} // namespace qorkes
