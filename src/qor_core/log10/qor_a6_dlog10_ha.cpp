// _qordLog10_HA: y = log10(a) in double precision, largest error 0.94 ulp.
//
//   +-0                   -infinity, status 2
//   positive denormal     log10(a), by the unit
//   +infinity             +infinity
//   negative, -infinity   the default NaN, status 1
//   NaN                   the same NaN, quiet; status 1 if its high word is 0xFFF00000
#include <qor_core/_heap/logarithm.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordLog10_HA";

#include "qor_a6_dlog10_tables.inc"

constexpr Logarithm commonLogarithm = {
    lnTabD10,
    {0x1.bcb7b1526e50ep-2, -0x1.bcb7b1526e4c7p-3, 0x1.287a7636c0a11p-3,
     -0x1.bcb7af99fddbap-4, 0x1.63c2d5227d24bp-4, -0x1.2584feb8cb841p-4},
    {0x1.bcb7b1526e50ep-2, -0x1.bcb7b1526e50ep-3, 0x1.287a7636f435fp-3,
     -0x1.bcb7b1526e50ep-4, 0x1.63c62775250d8p-4, -0x1.287a7636f435fp-4},
    log10Of2,
    _QOR_THISFUNC_NAME};
static_assert(hasPattern(commonLogarithm.main[0], 0x3FDBCB7B1526E50E));
static_assert(hasPattern(commonLogarithm.main[1], 0xBFCBCB7B1526E4C7));
static_assert(hasPattern(commonLogarithm.main[2], 0x3FC287A7636C0A11));
static_assert(hasPattern(commonLogarithm.main[3], 0xBFBBCB7AF99FDDBA));
static_assert(hasPattern(commonLogarithm.main[4], 0x3FB63C2D5227D24B));
static_assert(hasPattern(commonLogarithm.main[5], 0xBFB2584FEB8CB841));

} // namespace

void _qordLog10_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, logarithms<commonLogarithm>>(n, a, y);
}
