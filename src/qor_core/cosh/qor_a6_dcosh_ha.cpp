// _qordCosh_HA: y = cosh(a) in double precision, largest error 0.91 ulp near overflow,
// below 0.58 up to 16 in magnitude.
//
//   NaN                                    the argument
//   +-infinity                             +infinity
//   710.475860073944 and up in magnitude   +infinity, status 3
#include <qor_core/_heap/hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordCosh_HA";

constexpr Hyperbolic cosine = {Parity::even, _QOR_THISFUNC_NAME};

} // namespace

void _qordCosh_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, hyperbolics<cosine>>(n, a, y);
}
