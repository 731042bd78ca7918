// _qordAsin_HA: y = asin(a) in double precision, largest error 0.66 ulp.
//
//   +-1                     +-pi/2
//   NaN                     the same NaN, quiet and without its sign
//   above 1 in magnitude    the default NaN, status 1, infinities included
#include <qor_core/_heap/arcsine.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordAsin_HA";

struct Arcsine {
    static constexpr auto errorGate = qorkes::errorGate<double, _QOR_THISFUNC_NAME>;

    QORKES_INLINE static ext central(ext x) { return centralArcsine(x); }
    QORKES_INLINE static ext edge(ext R, uint32_t isNegative) {
        static constexpr float signs[2] = {1, -1};
        return loaded(signs[isNegative]) * (wideHalfPi - R);
    }
};

} // namespace

void _qordAsin_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, arcsines<Arcsine>>(n, a, y);
}
