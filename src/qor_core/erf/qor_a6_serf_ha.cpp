// _qorsErf_HA: y = erf(a) in single precision, largest error 0.5002 ulp.
//
// With v = |a| and c the middle of its quarter of a binade: a polynomial in v - c at
// 53-bit precision, the rows of the double kernel without what is too small to count,
// rounded once. Below 1/8 a series, below 2^-40 a product.
//
//   +-0                             the argument
//   +-infinity                      +-1
//   5.9215871957945083 and beyond   +-1, inexact
//   NaN                             the same NaN, quiet
#include <qor_core/_heap/error_function.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_serf_tables.inc"

/// The row's polynomial up to degree 10: what is left out is below 2^-35 of erf(v).
struct ErfRow {
    double centre, c[11];
};
struct ErfRows {
    ErfRow rows[22];

    constexpr ErfRows() : rows{} {
        for (int i = 0; i < 22; ++i) {
            const double(&row)[19] = _qorsErfHATab[i];
            rows[i] = {-row[0], {row[1], row[3], row[5] + row[6]}};
            for (int k = 3; k <= 10; ++k) rows[i].c[k] = row[4 + k];
        }
    }
};
constexpr ErfRows erfRows;

/// Even and odd powers apart: two short chains of operations instead of a long one.
QORKES_INLINE ext rowErf(ext v, const ErfRow& row) {
    const auto& c = row.c;
    const ext t = v - row.centre;
    const ext square = t * t;
    const ext even =
        ((((c[10] * square + c[8]) * square + c[6]) * square + c[4]) * square + c[2]) *
            square +
        c[0];
    const ext odd =
        (((c[9] * square + c[7]) * square + c[5]) * square + c[3]) * square + c[1];
    return odd * t + even;
}

constexpr uint32_t rowsFrom = 0x3E000000;    // 1/8
constexpr uint32_t lastForRows = 0x40BD7DA4; // 5.92158699

QORKES_NOINLINE void errorFunctions(int n, const float* a, float* y) {
    const ErfRow* rows = inRegister(erfRows.rows);
    for (int i = 0; i < n; ++i) {
        const uint32_t bits = bitsOf(a[i]);
        const uint32_t place = (bits & magnitudeBits) - rowsFrom;
        if (place > lastForRows - rowsFrom) [[unlikely]] {
            specialErf(i, a, y);
            continue;
        }
        y[i] = round32(rowErf(__builtin_fabsl(a[i]), rows[place >> 21]));
        setBits(y[i], bitsOf(y[i]) | (bits & signBit));
    }
}

} // namespace

void _qorsErf_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, errorFunctions>(n, a, y);
}
