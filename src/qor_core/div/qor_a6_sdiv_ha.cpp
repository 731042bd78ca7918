// _qorsDiv_HA: y = a / b in single precision, correctly rounded by divps.
//
//   b = +-0   a / b as the processor gives it, status 2 unless a is a NaN
#include <qor_core/_heap/lanes.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsDiv_HA";
constexpr auto _ErrorCall = errorCall<float, _QOR_THISFUNC_NAME>;

/// Bit k is set if lane k has a divisor of zero and a dividend that is a number. To be
/// asked before the store, which may overwrite either.
QORKES_INLINE int singularLanes(__m128 a, __m128 b) {
    const __m128 zeroDivisor = _mm_cmpeq_ps(b, _mm_setzero_ps());
    return _mm_movemask_ps(_mm_and_ps(zeroDivisor, _mm_cmpord_ps(a, a)));
}

QORKES_COLD void reportLanes(int lanes, int i, const float* a, const float* b,
                             float* y) {
    forEachLane(lanes, [=](int k) { _ErrorCall(QOR_STATUS_SING, i + k, a, b, y, y); });
}

QORKES_INLINE void divideFour(int i, const float* a, const float* b, float* y) {
    prefetchAhead(b + i, 32);
    const __m128 dividend = _mm_loadu_ps(a + i);
    const __m128 divisor = _mm_loadu_ps(b + i);
    const int singular = singularLanes(dividend, divisor);
    _mm_storeu_ps(y + i, _mm_div_ps(dividend, divisor));
    if (singular) [[unlikely]]
        reportLanes(singular, i, a, b, y);
}

QORKES_INLINE void divideOne(int i, const float* a, const float* b, float* y) {
    const __m128 dividend = _mm_load_ss(a + i);
    const __m128 divisor = _mm_load_ss(b + i);
    const int singular = singularLanes(dividend, divisor) & 1;
    _mm_store_ss(y + i, _mm_div_ss(dividend, divisor));
    if (singular) [[unlikely]]
        reportLanes(singular, i, a, b, y);
}

QORKES_NOINLINE void divide(int n, const float* a, const float* b, float* y) {
    inGroups<4>(
        n, [=](int i) { divideFour(i, a, b, y); },
        [=](int i) { divideOne(i, a, b, y); });
}

} // namespace

void _qorsDiv_HA(int n, const float* a, const float* b, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, divide>(n, a, b, y);
}
