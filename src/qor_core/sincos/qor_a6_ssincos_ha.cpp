// _qorsSinCos_HA: y = sin(a), z = cos(a) in single precision, largest error 0.57 ulp;
// for |x| above 4e5 as much in units of the last place of 1, near zeros of either, too.
//
// x less a multiple of pi/2 in two parts, then an odd and an even polynomial for r in
// [-pi/4, pi/4], all at 53 bits and rounded to float once. An odd multiple swaps the
// two.
//
//   |x| > 1000000, infinity, NaN   the group goes to _qorsSinCos_SC_HA
#include <qor_core/_heap/trig_groups.hpp>

using namespace qorkes;

namespace {

/// sin(r) / r from its term in r^2 on, and cos(r) from that in r^4 on.
constexpr struct {
    double sine[3], cosine[3];
    double half, one;
} coefficients = {{-0x1.55554527af340p-3, 0x1.11073afce563fp-7, -0x1.9943e0fbea90ap-13},
                  {0x1.55554a115b568p-5, -0x1.6c0c33a81bd97p-10, 0x1.99eb9c49f772ep-16},
                  0.5,
                  1.0};
static_assert(coefficients.sine[0] == -0.16666654612881793 &&
              coefficients.sine[1] == 0.008332160761521766 &&
              coefficients.sine[2] == -0.00019515283190447318);
static_assert(coefficients.cosine[0] == 0.04166664568297557 &&
              coefficients.cosine[1] == -0.0013887316254360454 &&
              coefficients.cosine[2] == 2.443315705834904e-05);

struct Kernel : FloatLimit<1000000> {
    using Argument = int32_t; // quarter turns

    QORKES_INLINE static void count(Argument& quarterTurns, const float& x) {
        countQuarterTurns(quarterTurns, x);
    }
    QORKES_INLINE static ext reduce(const Argument& quarterTurns, const float& x) {
        return reducedByQuarterTurns(x, quarterTurns);
    }

    QORKES_INLINE static void store(ext r, Argument quarterTurns, const float& x,
                                    float* y, float* z) {
        const auto turns = static_cast<uint32_t>(quarterTurns);
        const uint32_t odd = turns & 1;
        const uint32_t zero = signOfZero(x);
        const ext r2 = r * r;
        const auto& k = *inRegister(&coefficients);
        const ext s = r * r2 * polynomial<3>(k.sine, r2) + r;
        storeFlipped(odd ? *z : *y, s, (turns + odd) << 30 ^ zero);
        const ext c = k.one - (r2 * k.half - r2 * r2 * polynomial<3>(k.cosine, r2));
        storeFlipped(odd ? *y : *z, c, (turns - odd) << 30);
    }
    QORKES_COLD static void handOver(int i, int count, const float* a, float* y,
                                     float* z) {
        for (int k = i; k < i + count; ++k) _qorsSinCos_SC_HA(k, a, y, z, nullptr);
    }
};

} // namespace

void _qorsSinCos_HA(int n, const float* a, float* y, float* z) {
    inFrame<Precision::bits53, Mxcsr::cleared, evaluate<Kernel, float, float, float>>(
        n, a, y, z);
}
