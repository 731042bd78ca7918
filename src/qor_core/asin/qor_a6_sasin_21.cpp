// _qorsAsin_21: y = asin(a) in single precision, largest error 3.5 ulp.
//
// Series and root as one float each.
//
//   NaN                     the same NaN, quiet
//   above 1 in magnitude    the default NaN, status 1, infinities included
#include <qor_core/_heap/single_arcsine.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsAsin_21";

struct Arcsine {
    static constexpr auto errorGate = qorkes::errorGate<float, _QOR_THISFUNC_NAME>;

    QORKES_INLINE static __m128 evaluate(__m128 x) {
        const ShortArcsine p = shortArcsine(x);
        const __m128 factor = select(p.isEdge, _mm_set1_ps(-2.0f), _mm_set1_ps(1.0f));
        const __m128 y =
            _mm_add_ps(where(p.isEdge, flPio2), _mm_mul_ps(factor, p.value));
        return _mm_or_ps(y, signOf(x));
    }
};

} // namespace

void _qorsAsin_21(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, arcsineLanes<Arcsine>>(n, a, y);
}
