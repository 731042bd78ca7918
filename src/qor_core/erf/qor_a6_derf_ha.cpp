// _qordErf_HA: y = erf(a) in double precision, largest error 0.507 ulp.
//
// With v = |a| and c the middle of its quarter of a binade: a polynomial of degree 14
// in t = v - c. t is cut to th, a multiple of 2^-16, and the first three coefficients
// are cut so that their part of the sum at th is exact at 53 bits. What is left is at
// most 2^-11 of erf(v), and plain arithmetic is good enough for it; one rounding joins
// the two. Below 1/8 a series, below 2^-40 a product.
//
//   +-0                             the argument
//   +-infinity                      +-1
//   5.9215871957945083 and beyond   +-1, inexact
//   NaN                             the same NaN, quiet
//   denormal                        rounded once
#include <qor_core/_heap/error_function.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_derf_tables.inc"

/// Adding it rounds to a multiple of 2^-16.
constexpr float gridShifter = 0x1.8p+36f;

/// x cut to a multiple of 1/unit.
constexpr double cut(double x, ext unit) {
    return static_cast<double>(static_cast<int64_t>(x * unit) / unit);
}

/// The row's polynomial: three coefficients cut, what the cut took from them, and the
/// others.
struct ErfRow {
    double centre, value, slope, curve, rest[3], further[12];

    constexpr void set(const double (&row)[19]) {
        centre = -row[0];
        value = cut(row[1], 0x1p53L);
        slope = cut(row[3], 0x1p37L);
        curve = cut(row[5], 0x1p21L);
        rest[0] = static_cast<double>(ext{row[1]} - value + row[2]);
        rest[1] = static_cast<double>(ext{row[3]} - slope + row[4]);
        rest[2] = static_cast<double>(ext{row[5]} - curve + row[6]);
        for (int k = 0; k < 12; ++k) further[k] = row[7 + k];
    }
};
struct ErfRows {
    ErfRow rows[22];

    constexpr ErfRows() : rows{} {
        for (int i = 0; i < 22; ++i) rows[i].set(_qordErfHATab[i]);
    }
};
constexpr ErfRows erfRows;

QORKES_INLINE ext rowErf(ext v, const ErfRow& row) {
    const ext t = v - row.centre;
    const ext th = t + gridShifter - gridShifter;
    const ext slope = row.curve * th + row.slope;
    const ext main = slope * th + row.value; // exact, as is all before it
    ext rest = row.further[11];
#pragma GCC unroll 11
    for (int k = 10; k >= 0; --k) rest = rest * t + row.further[k];
    rest = ((rest * t + row.rest[2]) * t + row.rest[1]) * t + row.rest[0];
    return main + (rest + (row.curve * t + slope) * (t - th));
}

QORKES_NOINLINE void errorFunctions(int n, const double* a, double* y) {
    const ErfRow* rows = inRegister(erfRows.rows);
    for (int i = 0; i < n; ++i) {
        const uint32_t high = highWord(a[i]);
        const uint64_t magnitude = uint64_t{high & magnitudeBits} << 32 | lowWord(a[i]);
        constexpr uint64_t first = uint64_t{erfRowsFrom} << 32;
        if (magnitude - first >= erfSaturate - first) [[unlikely]] {
            specialErf(i, a, y);
            continue;
        }
        const uint32_t key = ((high & magnitudeBits) - erfRowsFrom) >> 18;
        y[i] = round64(rowErf(__builtin_fabsl(a[i]), rows[key]));
        addToHighWord(y[i], high & signBit);
    }
}

} // namespace

void _qordErf_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers, errorFunctions>(n, a, y);
}
