// _qorsAtan2_21: y = the angle of the point (b, a) in single precision,
// largest error 2.3 ulp.
//
// One series for the smaller of |a| and |b| over the larger; from pi/2 if |a| is the
// larger, from pi if b is negative. MXCSR stays the caller's.
//
//   below 2^-62 or above 2^62 in magnitude, a or b,
//   infinity, NaN                                      _qorsatan2_scalar
#include <qor_core/_heap/single_arctangent.hpp>

using namespace qorkes;

namespace {

constexpr float pi = 0x1.921fb6p+1f;

QORKES_INLINE __m128 anglesOfPoints(__m128 a, __m128 b) {
    const __m128 ordinate = magnitudeOf(a), abscissa = magnitudeOf(b);
    const __m128 isSteep = _mm_cmpgt_ps(ordinate, abscissa);
    const __m128 isLeft = _mm_cmplt_ps(b, _mm_setzero_ps());
    const __m128 t =
        _mm_div_ps(_mm_min_ps(ordinate, abscissa), _mm_max_ps(ordinate, abscissa));
    const __m128 angle = longArctangent(t);
    const __m128 upper = _mm_add_ps(_mm_and_ps(isSteep, _mm_set1_ps(flPiDiv2)),
                                    _mm_xor_ps(angle, signOf(isSteep)));
    const __m128 whole = _mm_add_ps(_mm_and_ps(isLeft, _mm_set1_ps(pi)),
                                    _mm_xor_ps(upper, signOf(isLeft)));
    return _mm_or_ps(whole, signOf(a));
}

} // namespace

void _qorsAtan2_21(int n, const float* a, const float* b, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, anglesOf<anglesOfPoints>>(n, a, b, y);
}
