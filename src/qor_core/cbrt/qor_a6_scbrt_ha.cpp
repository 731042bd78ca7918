// _qorsCbrt_HA: y = a^(1/3) in single precision, largest error 0.61 ulp.
//
// With a = m 8^q 2^k and m in [1, 2), without its sign: m^(1/3) from a table of
// quadratics (7.3e-9), times the powers of two and the sign, rounded once.
//
//   +-0, +-infinity   the argument
//   NaN               the same NaN, quiet
//   denormal          scaled by 1e39, rounded once
#include <qor_core/_heap/single_cube_roots.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_scbrt_tables.inc"

struct Cbrt {
    static constexpr double scaleUp = 1e39;
    static constexpr auto& remainder = cbrtRemainder;
    static constexpr auto& scaledRemainder = cbrtScaledRemainder;

    /// The power for an exponent field in its place.
    static constexpr double power(uint32_t field, const double (&remainders)[3]) {
        const uint32_t third = thirdOfFloatExponent(field >> 16 & 0x7F80);
        return powerOfField(third + 0x2A600000) * remainders[third >> 19 & 3];
    }

    static const SingleCubeTable table;
    QORKES_COLD static void special(int i, const float* a, float* y) {
        if (isZero(a[i]) || (bitsOf(a[i]) & magnitudeBits) >= floatInfinity)
            y[i] = round32(ext{a[i]} + a[i]);
        else
            storeDenormalRoot<Cbrt>(y[i], a[i]);
    }
};

constexpr SingleCubeTable Cbrt::table(Cbrt{}, T0, T1, T2);

} // namespace

void _qorsCbrt_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, singleCubeRoots<Cbrt>>(n, a, y);
}
