// _qorsAcos_21: y = acos(a) in single precision, largest error 2.7 ulp.
//
// As _qorsAcos_HA, with series, root and pi as one float each.
//
//   NaN                     the same NaN, quiet
//   above 1 in magnitude    the default NaN, status 1, infinities included
#include <qor_core/_heap/single_arcsine.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsAcos_21";

struct Arccosine {
    static constexpr auto errorGate = qorkes::errorGate<float, _QOR_THISFUNC_NAME>;

    QORKES_INLINE static __m128 evaluate(__m128 x) {
        const ShortArcsine p = shortArcsine(x);
        const __m128 factor = select(p.isEdge, _mm_set1_ps(2.0f), _mm_set1_ps(-1.0f));
        const __m128 offset =
            select(p.isEdge, where(isNegative(x), flPihiN), _mm_set1_ps(flPio2));
        return _mm_add_ps(offset, _mm_mul_ps(_mm_xor_ps(factor, signOf(x)), p.value));
    }
};

} // namespace

void _qorsAcos_21(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, arcsineLanes<Arccosine>>(n, a, y);
}
