// The logarithm to the base e in double precision, which Ln and the inverse hyperbolic
// functions compute each from a table of its own.
#pragma once

#include <qor_core/_heap/logarithm.hpp>

namespace qorkes {

#include <qor_core/ln/qor_a6_dln_tables.inc>

constexpr Logarithm naturalLogarithm(const char* kernel, double unitOfRests = 1) {
    return {LogarithmRows(lnTabD, unitOfRests),
            {0x1p+0, -0x1.fffffffffffafp-2, 0x1.5555555519f2ap-2, -0x1.fffffe04ecef7p-3,
             0x1.9995c6a12e46ap-3, -0x1.51ed447a1b8c5p-3},
            {0x1p+0, -0x1p-1, 0x1.5555555555555p-2, -0x1p-2, 0x1.999999999999ap-3,
             -0x1.5555555555555p-3},
            lnOf2,
            kernel};
}
static_assert(hasPattern(naturalLogarithm("").main[0], 0x3FF0000000000000));
static_assert(hasPattern(naturalLogarithm("").main[1], 0xBFDFFFFFFFFFFFAF));
static_assert(hasPattern(naturalLogarithm("").main[2], 0x3FD5555555519F2A));
static_assert(hasPattern(naturalLogarithm("").main[3], 0xBFCFFFFFE04ECEF7));
static_assert(hasPattern(naturalLogarithm("").main[4], 0x3FC9995C6A12E46A));
static_assert(hasPattern(naturalLogarithm("").main[5], 0xBFC51ED447A1B8C5));

} // namespace qorkes
