// _qorsSinh_HA: y = sinh(a) in single precision, largest error 0.51 ulp.
//
//   NaN                                    the same NaN, quiet
//   +-infinity                             the argument
//   below 0.0003 in magnitude              the argument
//   89.4159927368164 and up in magnitude   infinity with the sign of a, status 3
#include <qor_core/_heap/single_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsSinh_HA";

constexpr SingleHyperbolic sine = {
    .parity = Parity::odd,
    .odd1 = 0x1.62e42fef9e28ep-1,  // 0.6931471805574618
    .odd3 = 0x1.c6b0cef9b9f1ep-5,  // 0.05550423073674281
    .even0 = 0x1.fffffffff626bp-1, // 0.9999999999955212
    .even2 = 0x1.ebfc2ec2dedaep-3, // 0.240227094003655
    .kernel = _QOR_THISFUNC_NAME,
};
static_assert(hasPattern(sine.odd1, 0x3FE62E42FEF9E28E));
static_assert(hasPattern(sine.odd3, 0x3FAC6B0CEF9B9F1E));
static_assert(hasPattern(sine.even0, 0x3FEFFFFFFFFF626B));
static_assert(hasPattern(sine.even2, 0x3FCEBFC2EC2DEDAE));

} // namespace

void _qorsSinh_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits64, Mxcsr::cleared, hyperbolics<sine>>(n, a, y);
}
