// _qordLn_HA: y = ln(a) in double precision, largest error 0.68 ulp.
//
//   +-0                   -infinity, status 2
//   positive denormal     ln(a), by the unit
//   +infinity             +infinity
//   negative, -infinity   the default NaN, status 1
//   NaN                   the same NaN, quiet; status 1 if its high word is 0xFFF00000
#include <qor_core/_heap/logarithm.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordLn_HA";

#include "qor_a6_dln_tables.inc"

constexpr Logarithm naturalLogarithm = {lnTabD,
                                        {0x1p+0, -0x1.fffffffffffafp-2,
                                         0x1.5555555519f2ap-2, -0x1.fffffe04ecef7p-3,
                                         0x1.9995c6a12e46ap-3, -0x1.51ed447a1b8c5p-3},
                                        {0x1p+0, -0x1p-1, 0x1.5555555555555p-2, -0x1p-2,
                                         0x1.999999999999ap-3, -0x1.5555555555555p-3},
                                        lnOf2,
                                        _QOR_THISFUNC_NAME};
static_assert(hasPattern(naturalLogarithm.main[0], 0x3FF0000000000000));
static_assert(hasPattern(naturalLogarithm.main[1], 0xBFDFFFFFFFFFFFAF));
static_assert(hasPattern(naturalLogarithm.main[2], 0x3FD5555555519F2A));
static_assert(hasPattern(naturalLogarithm.main[3], 0xBFCFFFFFE04ECEF7));
static_assert(hasPattern(naturalLogarithm.main[4], 0x3FC9995C6A12E46A));
static_assert(hasPattern(naturalLogarithm.main[5], 0xBFC51ED447A1B8C5));

} // namespace

void _qordLn_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, logarithms<naturalLogarithm>>(n, a, y);
}
