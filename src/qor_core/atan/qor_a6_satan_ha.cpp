// _qorsAtan_HA: y = atan(a) in single precision, largest error 1.04 ulp.
//
// The angle of a base near |x|, in two parts, and the arctangent of
// t = (|x| - base) / (1 + base |x|); beyond 2.29 of -1 / |x|. No argument is special:
// an infinity has t = 0, and a NaN passes through.
#include <qor_core/_heap/single_arctangent.hpp>

using namespace qorkes;

namespace {

/// Beyond the last bound the base is 1, p = 0 and q = |x|.
QORKES_INLINE __m128 arctangentsOf(__m128 x) {
    const __m128 magnitude = magnitudeOf(x);
    const Intervals lanes = {_mm_cmpgt_ps(magnitude, _mm_set1_ps(flBound1)),
                             _mm_cmpgt_ps(magnitude, _mm_set1_ps(flBound2)),
                             _mm_cmpgt_ps(magnitude, _mm_set1_ps(flBound3))};
    const __m128 base = baseOf(lanes);
    const __m128 p = _mm_andnot_ps(lanes.beyond3, magnitude);
    const __m128 q = select(lanes.beyond3, magnitude, _mm_set1_ps(1.0f));
    const __m128 t =
        _mm_div_ps(_mm_sub_ps(p, base), _mm_add_ps(_mm_mul_ps(base, p), q));
    const __m128 rest =
        _mm_add_ps(_mm_add_ps(arctangentLessRatio(t), t), angleLowOf(lanes));
    return _mm_or_ps(_mm_add_ps(rest, angleHighOf(lanes)), signOf(x));
}

QORKES_NOINLINE void arctangents(int n, const float* a, float* y) {
    inGroups<4>(
        n, [=](int i) { _mm_storeu_ps(y + i, arctangentsOf(_mm_loadu_ps(a + i))); },
        [=](int i) { _mm_store_ss(y + i, arctangentsOf(_mm_load_ss(a + i))); });
}

} // namespace

void _qorsAtan_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, arctangents>(n, a, y);
}
