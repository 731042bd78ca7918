// _qordAtanh_HA: y = atanh(a) in double precision, largest error 0.75 ulp.
//
// log((1 + |a|) / (1 - |a|)) / 2 with the sign of a; below 0.0009765625, where that
// would cancel, the Taylor series. At 64-bit precision, rounded once.
//
//   +-1                       infinity with the sign of a, status 2
//   above 1 in magnitude      a NaN of all ones with the sign of a, status 1
//   NaN                       the same, no report
#include <qor_core/_heap/inverse_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordAtanh_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

constexpr uint32_t oneHigh = 0x3FF00000;
constexpr uint32_t firstForLogarithm = 0x3F500000; // 0.0009765625

struct InverseTangent {
    static constexpr Logarithm logarithm =
        naturalLogarithm(_QOR_THISFUNC_NAME, unitOfRests);
    static constexpr bool isOdd = true;
    static constexpr uint32_t factorBits = 0x3F000000;

    QORKES_INLINE static bool isForLogarithm(uint32_t high) {
        return (high & magnitudeBits) - firstForLogarithm < oneHigh - firstForLogarithm;
    }
    QORKES_INLINE static ext argument(ext x) {
        return -2.0L / (__builtin_fabsl(x) - 1.0L) - 1.0L;
    }
    QORKES_COLD static void special(int i, const double* a, double* y) {
        const uint32_t high = highWord(a[i]);
        const uint32_t sign = high & signBit, magnitude = high & magnitudeBits;
        if (magnitude < firstForLogarithm) {
            constexpr ext third = 1.0L / 3, fifth = 0.2L;
            const ext x = loaded(a[i]);
            const ext square = x * x;
            y[i] = round64(x + x * square * (third + fifth * square));
        } else if (magnitude == oneHigh && lowWord(a[i]) == 0) {
            setWords(y[i], sign | doubleInfinityHigh, 0);
            _ErrorGate(QOR_STATUS_SING, i, a, y);
        } else {
            const bool isReported = !isNaN(a[i]);
            setWords(y[i], sign | magnitudeBits, 0xFFFFFFFF);
            if (isReported) _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
        }
    }
};

} // namespace

void _qordAtanh_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits64, Mxcsr::callers, inverseHyperbolics<InverseTangent>>(n, a,
                                                                                   y);
}
