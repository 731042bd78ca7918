// _qorsAtanh_HA: y = atanh(a) in single precision, largest error 0.73 ulp.
//
// log((1 + |a|) / (1 - |a|)) / 2 with the sign of a, at 53-bit precision, rounded once.
//
//   below 2^-28 in magnitude   the argument
//   +-1                        infinity with the sign of a, status 2
//   above 1 in magnitude       a NaN of all ones with the sign of a, status 1
//   NaN                        the same, no report
#include <qor_core/_heap/single_inverse_hyperbolic.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsAtanh_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

constexpr uint32_t one = 0x3F800000;
constexpr uint32_t firstForLogarithm = 0x31800000; // 2^-28

struct InverseTangent {
    static constexpr bool isOdd = true;
    static constexpr uint32_t halvings = 1;

    QORKES_INLINE static bool isForLogarithm(uint32_t bits) {
        return (bits & magnitudeBits) - firstForLogarithm < one - firstForLogarithm;
    }
    QORKES_INLINE static ext argument(ext x) {
        return -2.0L / (__builtin_fabsl(x) - 1.0L) - 1.0L;
    }
    QORKES_COLD static void special(int i, const float* a, float* y) {
        const uint32_t bits = bitsOf(a[i]);
        const uint32_t sign = bits & signBit, magnitude = bits & magnitudeBits;
        if (magnitude < firstForLogarithm) {
            setBits(y[i], bits);
        } else if (magnitude == one) {
            setBits(y[i], sign | floatInfinity);
            _ErrorGate(QOR_STATUS_SING, i, a, y);
        } else {
            setBits(y[i], sign | magnitudeBits);
            if (magnitude <= floatInfinity) _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
        }
    }
};

} // namespace

void _qorsAtanh_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared, inverseHyperbolics<InverseTangent>>(n, a,
                                                                                   y);
}
