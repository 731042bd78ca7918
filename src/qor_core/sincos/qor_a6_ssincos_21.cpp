// _qorsSinCos_21: y = sin(a), z = cos(a) in single precision, largest error 1.7 ulp.
//
// x less a multiple of pi/2, rounded to float, then an odd and an even polynomial for r
// in [-pi/4, pi/4] in float arithmetic. An odd multiple swaps the two. Groups with all
// |x| up to pi/4 are not reduced.
//
//   |x| > 1000000, infinity, NaN   the group goes to _qorsSinCos_SC_LA
#include <qor_core/_heap/single_lanes.hpp>

using namespace qorkes;

namespace {

constexpr float AA1 = -0x1.555546p-3f, AA2 = 0x1.11073ap-7f, AA3 = -0x1.9943e0p-13f;
static_assert(hasPattern(AA1, 0xBE2AAAA3) && hasPattern(AA2, 0x3C08839D) &&
              hasPattern(AA3, 0xB94CA1F0));
constexpr float BB_ONE = 1.0f, BB0 = -0.5f, BB1 = 0x1.55554ap-5f,
                BB2 = -0x1.6c0c34p-10f, BB3 = 0x1.99eb9cp-16f;
static_assert(hasPattern(BB1, 0x3D2AAAA5) && hasPattern(BB2, 0xBAB6061A) &&
              hasPattern(BB3, 0x37CCF5CE));

/// The sum loses the sign of a zero, and has the sign of r elsewhere.
QORKES_INLINE __m128 sineOf(__m128 r, __m128 r2) {
    const __m128 tail = _mm_mul_ps(_mm_mul_ps(r, r2), polynomial(r2, AA1, AA2, AA3));
    return _mm_or_ps(_mm_add_ps(r, tail), signOf(r));
}

QORKES_INLINE __m128 cosineOf(__m128 r2) {
    const __m128 tail = _mm_mul_ps(_mm_mul_ps(r2, r2), polynomial(r2, BB1, BB2, BB3));
    const __m128 lower = _mm_add_ps(_mm_mul_ps(r2, _mm_set1_ps(BB0)), tail);
    return _mm_add_ps(_mm_set1_ps(BB_ONE), lower);
}

struct SineAndCosine {
    static constexpr float limit = 1000000.0f;
    static constexpr const auto& step = quarterTurn<float>;
    static constexpr bool skipsSmall = true, hasSecond = true;

    QORKES_INLINE static __m128 counts(__m128 x) { return quarterTurns(x); }
    QORKES_INLINE static LaneResults evaluate(__m128 r, __m128 counts) {
        const __m128 r2 = _mm_mul_ps(r, r);
        const __m128 s = sineOf(r, r2), c = cosineOf(r2);
        const __m128 odd = areOdd(counts);
        const __m128 rest = _mm_sub_ps(counts, _mm_and_ps(odd, _mm_set1_ps(1.0f)));
        const __m128 isNegative = areOdd(_mm_mul_ps(rest, _mm_set1_ps(0.5f)));
        return {_mm_xor_ps(select(odd, c, s), signOf(isNegative)),
                _mm_xor_ps(select(odd, s, c), signOf(_mm_xor_ps(isNegative, odd)))};
    }
    static void scalarCode(int i, const float* a, float* y, float* z) {
        _qorsSinCos_SC_LA(i, a, y, z, nullptr);
    }
};

} // namespace

void _qorsSinCos_21(int n, const float* a, float* y, float* z) {
    inFrame<Precision::bits64, Mxcsr::cleared, evaluateLanes<SineAndCosine>>(n, a, y,
                                                                             z);
}
