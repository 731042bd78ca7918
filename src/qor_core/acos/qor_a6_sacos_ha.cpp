// _qorsAcos_HA: y = acos(a) in single precision, largest error 0.79 ulp.
//
// pi/2 less the arcsine, or, beyond 1/2 in magnitude, the arccosine of |x| itself or pi
// less that; the high parts come last.
//
//   NaN                     the same NaN, quiet
//   above 1 in magnitude    the default NaN, status 1, infinities included
#include <qor_core/_heap/single_arcsine.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsAcos_HA";

struct Arccosine {
    static constexpr auto errorGate = qorkes::errorGate<float, _QOR_THISFUNC_NAME>;

    QORKES_INLINE static __m128 evaluate(__m128 x) {
        const ArcsineParts p = arcsineParts(x);
        const __m128 negative = isNegative(x);
        const __m128 flip =
            _mm_xor_ps(signOf(x), _mm_andnot_ps(p.isEdge, _mm_set1_ps(-0.0f)));
        const __m128 high =
            select(p.isEdge, where(negative, flPihi), _mm_set1_ps(flPio2hi));
        const __m128 low =
            select(p.isEdge, where(negative, flPilo), _mm_set1_ps(flPio2lo));
        const __m128 rest = _mm_add_ps(_mm_xor_ps(p.low, flip), low);
        return _mm_add_ps(high, _mm_add_ps(_mm_xor_ps(p.high, flip), rest));
    }
};

} // namespace

void _qorsAcos_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, arcsineLanes<Arccosine>>(n, a, y);
}
