// _qorsInvCbrt_HA: y = a^(-1/3) in single precision, largest error 0.84 ulp.
//
// With a = m 8^q 2^k and m in [1, 2), without its sign: m^(-1/3) from a table of
// quadratics (2.1e-8), times the powers of two and the sign, rounded once.
//
//   +-0           the infinity of the same sign, status 2
//   +-infinity    the zero of the same sign
//   NaN           the same NaN, quiet
//   denormal      scaled by 1e45, rounded once
#include <qor_core/_heap/single_cube_roots.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsInvCbrt_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

#include "qor_a6_sinvcbrt_tables.inc"

struct InvCbrt {
    static constexpr double scaleUp = 1e45;
    static constexpr auto& remainder = dbCbrt;
    static constexpr auto& scaledRemainder = dbScaledCbrt;

    /// The power for an exponent field in its place. The smallest exponent wraps, and
    /// comes out right.
    static constexpr double power(uint32_t field, const double (&remainders)[3]) {
        const uint32_t third = thirdOfFloatExponent((field >> 16 & 0x7F80) - 256);
        return powerOfField(0x54000000 - (third & floatInfinity)) *
               remainders[third >> 19 & 3];
    }

    static const SingleCubeTable table;
    QORKES_COLD static void special(int i, const float* a, float* y) {
        const uint32_t bits = bitsOf(a[i]);
        if (isNaN(a[i])) {
            y[i] = round32(ext{a[i]} + a[i]);
        } else if (isZero(a[i])) {
            setBits(y[i], bits | floatInfinity);
            _ErrorGate(QOR_STATUS_SING, i, a, y);
        } else if ((bits & magnitudeBits) == floatInfinity) {
            setBits(y[i], bits & signBit);
        } else {
            storeDenormalRoot<InvCbrt>(y[i], a[i]);
        }
    }
};

constexpr SingleCubeTable InvCbrt::table(InvCbrt{}, dwA0, dwA1, dwA2);

} // namespace

void _qorsInvCbrt_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, singleCubeRoots<InvCbrt>>(n, a, y);
}
