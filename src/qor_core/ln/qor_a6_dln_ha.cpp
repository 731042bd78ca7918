// _qordLn_HA: y = ln(a) in double precision, largest error 0.68 ulp.
//
//   +-0                   -infinity, status 2
//   positive denormal     ln(a), by the unit
//   +infinity             +infinity
//   negative, -infinity   the default NaN, status 1
//   NaN                   the same NaN, quiet; status 1 if its high word is 0xFFF00000
#include <qor_core/_heap/natural_logarithm.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordLn_HA";

constexpr Logarithm logarithm = naturalLogarithm(_QOR_THISFUNC_NAME);

} // namespace

void _qordLn_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, logarithms<logarithm>>(n, a, y);
}
