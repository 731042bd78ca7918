// _qorsLn_HA: y = ln(a) in single precision, largest error 0.75 ulp.
//
//   +-0                   -infinity, status 2
//   positive denormal     ln(a), by the unit
//   +infinity             +infinity
//   negative, -infinity   the default NaN, status 1
//   NaN                   the same NaN, quiet
#include <qor_core/_heap/single_logarithm.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsLn_HA";

#include "qor_a6_sln_tables.inc"

static_assert(areRoundedAsOnce(lnOf2));
constexpr SingleLogarithm naturalLogarithm = {lnTabS, lnOf2, lnOf2, _QOR_THISFUNC_NAME};

} // namespace

void _qorsLn_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, logarithms<naturalLogarithm>>(n, a, y);
}
