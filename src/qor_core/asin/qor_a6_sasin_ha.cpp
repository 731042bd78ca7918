// _qorsAsin_HA: y = asin(a) in single precision, largest error 0.75 ulp.
//
// Series and root in two parts each, from which pi/2 is taken off high part first.
//
//   NaN                     the same NaN, quiet
//   above 1 in magnitude    the default NaN, status 1, infinities included
#include <qor_core/_heap/single_arcsine.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsAsin_HA";

struct Arcsine {
    static constexpr auto errorGate = qorkes::errorGate<float, _QOR_THISFUNC_NAME>;

    QORKES_INLINE static __m128 evaluate(__m128 x) {
        const ArcsineParts p = arcsineParts(x);
        const __m128 flip = signOf(p.isEdge);
        const __m128 high =
            _mm_add_ps(where(p.isEdge, flPio2hi), _mm_xor_ps(p.high, flip));
        const __m128 low =
            _mm_add_ps(where(p.isEdge, flPio2lo), _mm_xor_ps(p.low, flip));
        return _mm_or_ps(_mm_add_ps(high, low), signOf(x));
    }
};

} // namespace

void _qorsAsin_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, arcsineLanes<Arcsine>>(n, a, y);
}
