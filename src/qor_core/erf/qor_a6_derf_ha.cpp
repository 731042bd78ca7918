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

struct ErfRows {
    SplitRow<14> rows[22];

    constexpr ErfRows() : rows{} {
        for (int i = 0; i < 22; ++i) {
            const double(&row)[19] = _qordErfHATab[i];
            Wide c[15];
            for (int k = 0; k <= 2; ++k) c[k] = Wide{row[1 + 2 * k]} + row[2 + 2 * k];
            for (int k = 3; k <= 14; ++k) c[k] = row[4 + k];
            rows[i].set(-row[0], c);
        }
    }
};
constexpr ErfRows erfRows;

QORKES_NOINLINE void errorFunctions(int n, const double* a, double* y) {
    const auto* rows = inRegister(erfRows.rows);
    for (int i = 0; i < n; ++i) {
        const uint32_t high = highWord(a[i]);
        const uint64_t magnitude = uint64_t{high & magnitudeBits} << 32 | lowWord(a[i]);
        constexpr uint64_t first = uint64_t{erfRowsFrom} << 32;
        if (magnitude - first >= erfSaturate - first) [[unlikely]] {
            specialErf(i, a, y);
            continue;
        }
        const uint32_t key = ((high & magnitudeBits) - erfRowsFrom) >> 18;
        const Parts erf = sumAt(__builtin_fabsl(a[i]), rows[key]);
        y[i] = round64(erf.high + erf.low);
        addToHighWord(y[i], high & signBit);
    }
}

} // namespace

void _qordErf_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers, errorFunctions>(n, a, y);
}
