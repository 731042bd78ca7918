// _qordAcos_HA: y = acos(a) in double precision, largest error 0.65 ulp.
//
//   1, -1                   +0, pi
//   NaN                     the same NaN, quiet and without its sign
//   above 1 in magnitude    the default NaN, status 1, infinities included
#include <qor_core/_heap/arcsine.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordAcos_HA";

/// s (R - low) + high is R for a positive x and pi - R for a negative one.
constexpr struct {
    double s, low, high;
} rows[2] = {{1, 0, 0}, {-1, 0x1.1a62633145c04p-53, 0x1.921fb54442d18p+1}};
static_assert(hasPattern(rows[1].low, 0x3CA1A62633145C04));
static_assert(hasPattern(rows[1].high, 0x400921FB54442D18));

struct Arccosine {
    static constexpr auto errorGate = qorkes::errorGate<double, _QOR_THISFUNC_NAME>;

    QORKES_INLINE static ext central(ext x) { return wideHalfPi - centralArcsine(x); }
    QORKES_INLINE static ext edge(ext R, uint32_t isNegative) {
        const auto& row = rows[isNegative];
        return (R - row.low) * row.s + row.high;
    }
};

} // namespace

void _qordAcos_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, arcsines<Arccosine>>(n, a, y);
}
