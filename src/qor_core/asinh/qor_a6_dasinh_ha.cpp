// _qordAsinh_HA: y = asinh(a) in double precision, largest error 0.68 ulp.
//
// log(|a| + sqrt(a^2 + 1)) with the sign of a; below 0.001953125, where that would
// cancel, the Taylor series. At 64-bit precision, rounded once. NaNs and infinities are
// their own results.
#include <qor_core/_heap/inverse_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordAsinh_HA";

constexpr uint32_t firstForLogarithm = 0x3F600000; // 0.001953125

struct InverseSine {
    static constexpr Logarithm logarithm =
        naturalLogarithm(_QOR_THISFUNC_NAME, unitOfRests);
    static constexpr bool isOdd = true;
    static constexpr uint32_t factorBits = 0x3F800000;

    QORKES_INLINE static bool isForLogarithm(uint32_t high) {
        return (high & magnitudeBits) - firstForLogarithm < 0x40900000;
    }
    QORKES_INLINE static ext argument(ext x) {
        return __builtin_fabsl(x) + squareRoot(x * x + 1.0L);
    }
    QORKES_COLD static void special(int i, const double* a, double* y) {
        if ((highWord(a[i]) & magnitudeBits) >= doubleInfinityHigh) {
            setBits(y[i], bitsOf(a[i]));
            return;
        }
        constexpr ext minusSixth = -1.0L / 6, threeFortieths = 0.075L;
        const ext x = loaded(a[i]);
        const ext square = x * x;
        const uint32_t sign = highWord(a[i]) & signBit; // of -0, which the sum loses
        y[i] = round64(x + x * square * (minusSixth + square * threeFortieths));
        setHighWord(y[i], highWord(y[i]) | sign);
    }
};

} // namespace

void _qordAsinh_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, inverseHyperbolics<InverseSine>>(n, a,
                                                                                y);
}
