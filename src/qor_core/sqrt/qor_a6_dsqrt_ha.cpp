// _qordSqrt_HA: y = sqrt(a) in double precision, largest error 0.703 ulp.
//
// With a = m 2^e and m in [1, 2): 1/sqrt(m) from a table of quadratics (2^-27.7), one
// Newton step at 64-bit precision, y = m times that, rounded once; the power of two is
// put into the stored result.
//
//   +-0                   the argument
//   positive denormal     scaled by 2^996, rounded once
//   +infinity             the argument
//   NaN                   the same NaN, quiet
//   negative, -infinity   the NaN 0x7FF8A5A55A5A5A5A, status 1
#include <qor_core/_heap/double_roots.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordSqrt_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

#include "qor_a6_dsqrt_tables.inc"
constexpr RootTable sqrtTab(sqrtTabC0, sqrtTabC1, sqrtTabC2);

/// Stores m times its inverse root and puts the exponent into the stored number.
QORKES_INLINE void storeRoot(double& y, const RootTable& table, const RootArgument& x) {
    y = round64(x.mantissa * twiceInverseRoot(table, x));
    addToHighWord(y, rootExponent(x.high));
}

QORKES_COLD void _qordSqrtScalar(int i, const double* a, double* y) {
    const uint32_t high = highWord(a[i]);
    if (isPositiveNormal(high)) {
        storeRoot(y[i], sqrtTab, rootArgument(a[i]));
    } else if (isNaN(a[i])) {
        y[i] = quietNaN(a[i]);
    } else if (isZero(a[i]) || high == doubleInfinityHigh) {
        y[i] = a[i];
    } else if (high & signBit) {
        setWords(y[i], rootNaNHigh, rootNaNLow);
        _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
    } else {
        y[i] = rootOfDenormal<storeRoot>(sqrtTab, a[i], inverseOfRootScale);
    }
}

} // namespace

void _qordSqrt_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::cleared,
            roots<sqrtTab, storeRoot, _qordSqrtScalar>>(n, a, y);
}
