// _qorsCosh_HA: y = cosh(a) in single precision, largest error 0.61 ulp.
//
//   NaN                                    the same NaN, quiet
//   +-infinity                             +infinity
//   89.4159927368164 and up in magnitude   +infinity, status 3
#include <qor_core/_heap/single_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsCosh_HA";

constexpr SingleHyperbolic cosine = {
    .parity = Parity::even,
    .odd1 = 0x1.62e48530b053p-1, // 0.693149721330121
    .odd3 = 0,
    .even0 = 0x1.000000001d8cp+0,  // 1.0000000000268727
    .even2 = 0x1.ebfba4e02d234p-3, // 0.24022606667644342
    .kernel = _QOR_THISFUNC_NAME,
};
static_assert(hasPattern(cosine.odd1, 0x3FE62E48530B0530));
static_assert(hasPattern(cosine.even0, 0x3FF000000001D8C0));
static_assert(hasPattern(cosine.even2, 0x3FCEBFBA4E02D234));

} // namespace

void _qorsCosh_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits64, Mxcsr::cleared, hyperbolics<cosine>>(n, a, y);
}
