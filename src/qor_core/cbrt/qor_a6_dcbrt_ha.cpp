// _qordCbrt_HA: y = a^(1/3) in double precision, largest error 0.69 ulp.
//
// With a = m 2^k and m in [1, 2), without its sign: m^(-1/3) from a table of quadratics
// (2.6e-9) and one Newton step at 64-bit precision; with the constant of k's remainder
// by three it is p, and y = p p m, rounded once. Powers of two and the sign are put
// into the stored result.
//
//   +-0, +-infinity   the argument
//   NaN               the same NaN, quiet
//   denormal          scaled by 2^996, rounded once
#include <qor_core/_heap/cube_roots.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_dcbrt_tables.inc"
constexpr CubeTable cbrtTab(T0, T1, T2, cbrtRemainder);

QORKES_INLINE void storeRoot(double& y, const CubeTable& table, const CubeArgument& x,
                             const CubeConstants& constants) {
    const ext p = inverseCubeRoot(table, x, constants);
    y = round64(p * p * x.mantissa);
    addToHighWord(y, (x.high & signBit) + cubeRootExponent(x.third) +
                         exponentOfRemainder(x.third));
}

QORKES_COLD void _qordCbrtScalar(int i, const double* a, double* y) {
    if (isNormal(a[i])) {
        storeRoot(y[i], cbrtTab, cubeArgument(a[i]), {});
    } else if (isZero(a[i]) || (highWord(a[i]) & magnitudeBits) >= doubleInfinityHigh) {
        y[i] = round64(ext{a[i]} + a[i]);
    } else {
        const double scaled = round64(ext{a[i]} * cubeDenormalScale);
        storeRoot(y[i], cbrtTab, cubeArgument(scaled), {});
        addToHighWord(y[i], 0 - thirdOfScale);
    }
}

} // namespace

void _qordCbrt_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers,
            cubeRoots<cbrtTab, storeRoot, _qordCbrtScalar>>(n, a, y);
}
