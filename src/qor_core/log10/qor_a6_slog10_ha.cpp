// _qorsLog10_HA: y = log10(a) in single precision, largest error 0.75 ulp.
//
//   +-0                   -infinity, status 2
//   positive denormal     log10(a), by the unit
//   +infinity             +infinity
//   negative, -infinity   the default NaN, status 1
//   NaN                   the same NaN, quiet
#include <qor_core/_heap/single_logarithm.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsLog10_HA";

#include "qor_a6_slog10_tables.inc"

static_assert(areRoundedAsOnce(log10Of2));
constexpr SingleLogarithm commonLogarithm = {lnTabS10, log10Of2, log10Of2,
                                             _QOR_THISFUNC_NAME};

} // namespace

void _qorsLog10_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, logarithms<commonLogarithm>>(n, a, y);
}
