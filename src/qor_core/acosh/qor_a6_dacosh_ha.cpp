// _qordAcosh_HA: y = acosh(a) in double precision, largest error 0.75 ulp.
//
// log(a + sqrt(a^2 - 1)); below 1.00048828125, where that would cancel, the root of
// 2 t times a polynomial, t = a - 1. At 64-bit precision, rounded once.
//
//   +infinity, positive NaN   the argument
//   below 1, -infinity        the NaN 0x7FFFFFFFFFFFFFFF, status 1
//   negative NaN              that NaN too, no report
#include <qor_core/_heap/inverse_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordAcosh_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

constexpr uint32_t oneHigh = 0x3FF00000;
constexpr uint32_t firstForLogarithm = 0x3FF00200; // 1.00048828125
constexpr uint64_t outOfDomain = 0x7FFFFFFFFFFFFFFF;

constexpr double acosh1 = -0x1.555555554cfd2p-4; // -0.083333333332859
constexpr double acosh2 = 0x1.333330a736759p-6;  // 0.018749997628084134
constexpr double acosh3 = -0x1.6d772cca47234p-8; // -0.005576561389059754
static_assert(hasPattern(acosh1, 0xBFB555555554CFD2));
static_assert(hasPattern(acosh2, 0x3F9333330A736759));
static_assert(hasPattern(acosh3, 0xBF76D772CCA47234));

struct InverseCosine {
    static constexpr Logarithm logarithm =
        naturalLogarithm(_QOR_THISFUNC_NAME, unitOfRests);
    static constexpr bool isOdd = false;
    static constexpr uint32_t factorBits = 0x3F800000;

    QORKES_INLINE static bool isForLogarithm(uint32_t high) {
        return high - firstForLogarithm < doubleInfinityHigh - firstForLogarithm;
    }
    QORKES_INLINE static ext argument(ext x) { return x + squareRoot(x * x - 1.0L); }

    QORKES_COLD static void special(int i, const double* a, double* y) {
        const uint32_t high = highWord(a[i]);
        if (high < signBit && high >= doubleInfinityHigh) {
            setBits(y[i], bitsOf(a[i]));
        } else if (high < signBit && high >= oneHigh) {
            const ext t = loaded(a[i]) - 1.0L;
            const ext p = 1.0L + t * (acosh1 + t * (acosh2 + t * acosh3));
            y[i] = round64(squareRoot(2.0L * t) * p);
        } else {
            const bool isReported = !isNaN(a[i]);
            setBits(y[i], outOfDomain);
            if (isReported) _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
        }
    }
};

} // namespace

void _qordAcosh_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, inverseHyperbolics<InverseCosine>>(n, a,
                                                                                  y);
}
