// _qordInvSqrt_HA: y = 1 / sqrt(a) in double precision, largest error 0.787 ulp.
//
// With a = m 2^e and m in [1, 2): 1/sqrt(m) from a table of quadratics (2^-27.7) and
// one Newton step at 64-bit precision, rounded once; the power of two is put into the
// stored result.
//
//   +-0                   the infinity of the same sign, status 2
//   positive denormal     scaled by 2^996, rounded once
//   +infinity             +0
//   NaN                   the same NaN, quiet
//   negative, -infinity   the NaN 0x7FF8A5A55A5A5A5A, status 1
#include <qor_core/_heap/double_roots.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordInvSqrt_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

#include "qor_a6_dinvsqrt_tables.inc"
constexpr RootTable sqrtTab(sqrtTabC0, sqrtTabC1, sqrtTabC2);

/// Stores the inverse root of m and puts the exponent into the stored number.
QORKES_INLINE void storeInverseRoot(double& y, const RootTable& table,
                                    const RootArgument& x) {
    y = round64(twiceInverseRoot(table, x));
    addToHighWord(y, inverseRootExponent(x.high));
}

QORKES_COLD void _qordInvSqrtScalar(int i, const double* a, double* y) {
    const uint32_t high = highWord(a[i]);
    if (isPositiveNormal(high)) {
        storeInverseRoot(y[i], sqrtTab, rootArgument(a[i]));
    } else if (isNaN(a[i])) {
        y[i] = quietNaN(a[i]);
    } else if (isZero(a[i])) {
        setWords(y[i], (high & signBit) | doubleInfinityHigh, 0);
        _ErrorGate(QOR_STATUS_SING, i, a, y);
    } else if (high == doubleInfinityHigh) {
        y[i] = 0.0;
    } else if (high & signBit) {
        setWords(y[i], rootNaNHigh, rootNaNLow);
        _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
    } else {
        y[i] = rootOfDenormal<storeInverseRoot>(sqrtTab, a[i], rootOfDenormalScale);
    }
}

} // namespace

void _qordInvSqrt_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::cleared,
            roots<sqrtTab, storeInverseRoot, _qordInvSqrtScalar>>(n, a, y);
}
