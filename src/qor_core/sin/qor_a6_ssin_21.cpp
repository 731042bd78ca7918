// _qorsSin_21: y = sin(a) in single precision, largest error 3.2 ulp.
//
// x less a multiple of pi, rounded to float, then one odd polynomial for r in
// [-pi/2, pi/2] in float arithmetic.
//
//   |x| > 1000000, infinity, NaN   the group goes to _qorsSin_SC_LA
#include <qor_core/_heap/single_waves.hpp>

using namespace qorkes;

namespace {

struct Sine {
    static constexpr float limit = 1000000.0f;
    static constexpr const auto& step = halfTurn<float>;
    static constexpr bool skipsSmall = false, hasSecond = false;

    QORKES_INLINE static __m128 counts(__m128 x) {
        return nearestInteger(_mm_mul_ps(x, _mm_set1_ps(singleInversePi)));
    }
    QORKES_INLINE static LaneResults evaluate(__m128 r, __m128 counts) {
        return waveLanes(r, counts);
    }
    static void scalarCode(int i, const float* a, float* y, float*) {
        _qorsSin_SC_LA(i, a, y, nullptr);
    }
};

} // namespace

void _qorsSin_21(int n, const float* a, float* y) {
    inFrame<Precision::bits64, Mxcsr::cleared, evaluateLanes<Sine>>(n, a, y, nullptr);
}
