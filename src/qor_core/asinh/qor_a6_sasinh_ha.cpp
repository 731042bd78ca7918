// _qorsAsinh_HA: y = asinh(a) in single precision, largest error 0.74 ulp.
//
// log(|a| + sqrt(a^2 + 1)) with the sign of a, at 53-bit precision, rounded once. Below
// 2^-27 in magnitude a is its own result, as are NaNs and infinities.
#include <qor_core/_heap/single_inverse_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr uint32_t firstForLogarithm = 0x32000000; // 2^-27

struct InverseSine {
    static constexpr bool isOdd = true;
    static constexpr uint32_t halvings = 0;

    QORKES_INLINE static bool isForLogarithm(uint32_t bits) {
        return (bits & magnitudeBits) - firstForLogarithm <
               floatInfinity - firstForLogarithm;
    }
    QORKES_INLINE static ext argument(ext x) {
        return __builtin_fabsl(x) + squareRoot(x * x + 1.0L);
    }
    QORKES_INLINE static void special(int i, const float* a, float* y) {
        setBits(y[i], bitsOf(a[i]));
    }
};

} // namespace

void _qorsAsinh_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared, inverseHyperbolics<InverseSine>>(n, a,
                                                                                y);
}
