// _qordSinh_HA: y = sinh(a) in double precision, largest error 0.95 ulp near 0.001,
// where the formula changes, 0.91 near overflow, below 0.58 from 0.01 to 16.
//
//   NaN, +-infinity                        the argument
//   710.475860073944 and up in magnitude   infinity with the sign of a, status 3
#include <qor_core/_heap/hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordSinh_HA";

constexpr Hyperbolic sine = {Parity::odd, _QOR_THISFUNC_NAME};

} // namespace

void _qordSinh_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, hyperbolics<sine>>(n, a, y);
}
