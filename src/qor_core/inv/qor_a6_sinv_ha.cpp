// _qorsInv_HA: y = 1 / a in single precision, correctly rounded by divps.
//
//   a = +-0   the infinity of the same sign, status 2
#include <qor_core/_heap/lanes.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsInv_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

QORKES_COLD void reportLanes(int lanes, int i, const float* a, float* y) {
    forEachLane(lanes, [=](int k) { _ErrorGate(QOR_STATUS_SING, i + k, a, y); });
}

QORKES_INLINE void invertFour(int i, const float* a, float* y) {
    prefetchAhead(a + i, 32);
    const __m128 x = _mm_loadu_ps(a + i);
    const int singular = _mm_movemask_ps(_mm_cmpeq_ps(x, _mm_setzero_ps()));
    _mm_storeu_ps(y + i, _mm_div_ps(_mm_set1_ps(1.0f), x));
    if (singular) [[unlikely]]
        reportLanes(singular, i, a, y);
}

QORKES_INLINE void invertOne(int i, const float* a, float* y) {
    const __m128 x = _mm_load_ss(a + i);
    const int singular = _mm_movemask_ps(_mm_cmpeq_ps(x, _mm_setzero_ps())) & 1;
    _mm_store_ss(y + i, _mm_div_ss(_mm_set_ss(1.0f), x));
    if (singular) [[unlikely]]
        reportLanes(singular, i, a, y);
}

QORKES_NOINLINE void invert(int n, const float* a, float* y) {
    inGroups<4>(
        n, [=](int i) { invertFour(i, a, y); }, [=](int i) { invertOne(i, a, y); });
}

} // namespace

void _qorsInv_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, invert>(n, a, y);
}
