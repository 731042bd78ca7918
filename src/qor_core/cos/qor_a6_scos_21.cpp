// _qorsCos_21: y = cos(a) in single precision, largest error 2.9 ulp.
//
// The sine of x + pi/2: x less an odd multiple of pi/2, rounded to float, then one odd
// polynomial for r in [-pi/2, pi/2] in float arithmetic.
//
//   |x| > 10048, infinity, NaN   the group goes to _qorsCos_SC_LA
#include <qor_core/_heap/single_waves.hpp>

using namespace qorkes;

namespace {

constexpr float singleHalfPi = 0x1.921fb6p+0f;
static_assert(hasPattern(singleHalfPi, 0x3FC90FDB));

struct Cosine {
    static constexpr float limit = 10048.0f;
    static constexpr const auto& step = halfTurn<float>;
    static constexpr bool skipsSmall = false, hasSecond = false;

    /// Half turns from a quarter turn on.
    QORKES_INLINE static __m128 counts(__m128 x) {
        const __m128 shifted = _mm_add_ps(x, _mm_set1_ps(singleHalfPi));
        const __m128 halfTurns =
            nearestInteger(_mm_mul_ps(shifted, _mm_set1_ps(singleInversePi)));
        return _mm_sub_ps(halfTurns, _mm_set1_ps(0.5f));
    }
    QORKES_INLINE static LaneResults evaluate(__m128 r, __m128 counts) {
        return waveLanes(r, _mm_add_ps(counts, _mm_set1_ps(0.5f)));
    }
    static void scalarCode(int i, const float* a, float* y, float*) {
        _qorsCos_SC_LA(i, a, y, nullptr);
    }
};

} // namespace

void _qorsCos_21(int n, const float* a, float* y) {
    inFrame<Precision::bits64, Mxcsr::cleared, evaluateLanes<Cosine>>(n, a, y, nullptr);
}
