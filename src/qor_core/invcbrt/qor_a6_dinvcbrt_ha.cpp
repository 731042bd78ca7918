// _qordInvCbrt_HA: y = a^(-1/3) in double precision, largest error 0.62 ulp.
//
// With a = m 2^k and m in [1, 2), without its sign: m^(-1/3) from a table of quadratics
// (2.6e-9) and one Newton step at 64-bit precision, times the constant of k's remainder
// by three, rounded once; the power of two and the sign are put into the stored result.
//
//   +-0           the infinity of the same sign, status 2
//   +-infinity    the zero of the same sign
//   NaN           the same NaN, quiet
//   denormal      scaled by 2^996, rounded once
#include <qor_core/_heap/cube_roots.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordInvCbrt_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

#include "qor_a6_dinvcbrt_tables.inc"
constexpr CubeTable cbrtTab(T0, T1, T2, cbrtRemainder);

QORKES_INLINE void storeInverseRoot(double& y, const CubeTable& table,
                                    const CubeArgument& x,
                                    const CubeConstants& constants) {
    y = round64(inverseCubeRoot(table, x, constants));
    addToHighWord(y, (x.high & signBit) - cubeRootExponent(x.third));
}

QORKES_COLD void _qordInvCbrtScalar(int i, const double* a, double* y) {
    const uint32_t high = highWord(a[i]);
    if (isNormal(a[i])) {
        storeInverseRoot(y[i], cbrtTab, cubeArgument(a[i]), {});
    } else if (isNaN(a[i])) {
        y[i] = quietNaN(a[i]);
    } else if (isZero(a[i])) {
        setWords(y[i], (high & signBit) | doubleInfinityHigh, 0);
        _ErrorGate(QOR_STATUS_SING, i, a, y);
    } else if ((high & magnitudeBits) == doubleInfinityHigh) {
        setWords(y[i], high & signBit, 0);
    } else {
        const double scaled = round64(ext{a[i]} * cubeDenormalScale);
        storeInverseRoot(y[i], cbrtTab, cubeArgument(scaled), {});
        addToHighWord(y[i], thirdOfScale);
    }
}

} // namespace

void _qordInvCbrt_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers,
            cubeRoots<cbrtTab, storeInverseRoot, _qordInvCbrtScalar>>(n, a, y);
}
