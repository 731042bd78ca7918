// _qorsTan_21: y = tan(a) in single precision, largest error 3.5 ulp.
//
// x less a multiple of pi/2, rounded to float, then the tangent of r in [-pi/4, pi/4]
// as a quotient u / v of an odd and an even polynomial in float arithmetic. An odd
// multiple makes it -v / u. Groups with all |x| up to pi/4 are not reduced.
//
//   |x| > 500000, infinity, NaN   the group goes to _qorsTan_SC_LA
#include <qor_core/_heap/single_lanes.hpp>

using namespace qorkes;

namespace {

constexpr float tangentA = -0x1.886770p-4f;
constexpr float tangentB1 = -0x1.b76f5ep-2f, tangentB2 = 0x1.3e66eap-7f;
static_assert(hasPattern(tangentA, 0xBDC433B8) && hasPattern(tangentB1, 0xBEDBB7AF) &&
              hasPattern(tangentB2, 0x3C1F3375));

struct Tangent {
    static constexpr float limit = 500000.0f;
    static constexpr const auto& step = quarterTurn<float>;
    static constexpr bool skipsSmall = true, hasSecond = false;

    QORKES_INLINE static __m128 counts(__m128 x) { return quarterTurns(x); }
    QORKES_INLINE static LaneResults evaluate(__m128 r, __m128 counts) {
        const __m128 r2 = _mm_mul_ps(r, r);
        const __m128 u = _mm_mul_ps(r, polynomial(r2, 1.0f, tangentA));
        const __m128 v = polynomial(r2, 1.0f, tangentB1, tangentB2);
        const __m128 odd = areOdd(counts);
        const __m128 quotient = _mm_div_ps(select(odd, v, u), select(odd, u, v));
        return {_mm_xor_ps(quotient, signOf(odd)), _mm_setzero_ps()};
    }
    static void scalarCode(int i, const float* a, float* y, float*) {
        _qorsTan_SC_LA(i, a, y, nullptr);
    }
};

} // namespace

void _qorsTan_21(int n, const float* a, float* y) {
    inFrame<Precision::bits64, Mxcsr::cleared, evaluateLanes<Tangent>>(n, a, y,
                                                                       nullptr);
}
