// _qorsAtan_21: y = atan(a) in single precision, largest error 2.7 ulp.
//
// One series for t = |x| or, above 1, t = 1 / |x| and pi/2 less its result. A group
// with an infinity or a NaN comes from _qorsatan_scalar, at the precision and rounding
// that the caller has in force.
#include <qor_core/_heap/single_arctangent.hpp>

using namespace qorkes;

namespace {

QORKES_INLINE bool areFinite(__m128 x) {
    const __m128 isFinite = _mm_cmple_ps(magnitudeOf(x), _mm_set1_ps(__FLT_MAX__));
    return _mm_movemask_ps(isFinite) == 0xF;
}

/// Above 1 the ratio is -1 / |x|, which saves a change of sign.
QORKES_INLINE __m128 arctangentsOf(__m128 x) {
    const __m128 one = _mm_set1_ps(1.0f), magnitude = magnitudeOf(x);
    const __m128 isLarge = _mm_cmpgt_ps(magnitude, one);
    const __m128 least = _mm_max_ps(magnitude, one), r = _mm_rcp_ps(least);
    const __m128 minusReciprocal =
        _mm_mul_ps(r, _mm_sub_ps(_mm_mul_ps(least, r), _mm_set1_ps(2.0f)));
    const __m128 angle = longArctangent(select(isLarge, minusReciprocal, magnitude));
    const __m128 base = _mm_and_ps(isLarge, _mm_set1_ps(flPiDiv2));
    return _mm_or_ps(_mm_add_ps(base, angle), signOf(x));
}

QORKES_COLD void scalarArctangents(int count, const float* a, float* y) {
    for (int i = 0; i < count; ++i) y[i] = round32(_qorsatan_scalar(a[i]));
}

QORKES_NOINLINE void arctangents(int n, const float* a, float* y) {
    const auto four = [=](int i) {
        const __m128 x = _mm_loadu_ps(a + i);
        if (!areFinite(x)) [[unlikely]]
            return scalarArctangents(4, a + i, y + i);
        _mm_storeu_ps(y + i, arctangentsOf(x));
    };
    const auto one = [=](int i) {
        const __m128 x = _mm_load_ss(a + i);
        if (!areFinite(x)) [[unlikely]]
            return scalarArctangents(1, a + i, y + i);
        _mm_store_ss(y + i, arctangentsOf(x));
    };
    inGroups<4>(n, four, one);
}

} // namespace

void _qorsAtan_21(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, arctangents>(n, a, y);
}
