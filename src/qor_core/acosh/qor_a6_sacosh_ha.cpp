// _qorsAcosh_HA: y = acosh(a) in single precision, largest error 0.62 ulp.
//
// log(a + sqrt(a^2 - 1)), at 53-bit precision, rounded once.
//
//   1                         +0
//   +infinity, positive NaN   the argument
//   below 1, -infinity        the NaN 0x7FFFFFFF, status 1
//   negative NaN              that NaN too, no report
#include <qor_core/_heap/single_inverse_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsAcosh_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

constexpr uint32_t one = 0x3F800000;
constexpr uint32_t outOfDomain = 0x7FFFFFFF;

struct InverseCosine {
    static constexpr bool isOdd = false;
    static constexpr uint32_t halvings = 0;

    QORKES_INLINE static bool isForLogarithm(uint32_t bits) {
        return bits - (one + 1) < floatInfinity - (one + 1);
    }
    QORKES_INLINE static ext argument(ext x) { return x + squareRoot(x * x - 1.0L); }

    QORKES_COLD static void special(int i, const float* a, float* y) {
        const uint32_t bits = bitsOf(a[i]);
        if (bits < signBit && bits >= floatInfinity) {
            setBits(y[i], bits);
        } else if (bits == one) {
            y[i] = 0.0f;
        } else {
            const bool isReported = !isNaN(a[i]);
            setBits(y[i], outOfDomain);
            if (isReported) _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
        }
    }
};

} // namespace

void _qorsAcosh_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared, inverseHyperbolics<InverseCosine>>(n, a,
                                                                                  y);
}
