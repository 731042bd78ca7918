// _qorsAtan2_HA: y = the angle of the point (b, a) in single precision,
// largest error 0.92 ulp.
//
// As _qorsAtan_HA with the ratio |a| / |b|, which is never formed: its bounds and bases
// are multiplied by |b|. The quotient t that is left comes in two parts. For a negative
// b the angle is taken from pi; the sign of a comes last.
//
//   below 2^-62 or above 2^62 in magnitude, a or b,
//   infinity, NaN                                      _qorsatan2_scalar
#include <qor_core/_heap/single_arctangent.hpp>

using namespace qorkes;

namespace {

constexpr float piHigh = 0x1.921fb4p+1f, piLow = 0x1.4442d2p-23f;

/// The top 12 bits, of which products of two are exact.
QORKES_INLINE __m128 shortPart(__m128 x) {
    alignas(16) static constexpr uint32_t mask[4] = {0xFFFFF000, 0xFFFFF000, 0xFFFFF000,
                                                     0xFFFFF000};
    return _mm_and_ps(x, _mm_load_ps(reinterpret_cast<const float*>(mask)));
}

/// x - f y for a product whose parts are exact.
QORKES_INLINE __m128 lessProduct(__m128 x, __m128 f, __m128 high, __m128 low) {
    return _mm_sub_ps(_mm_sub_ps(x, _mm_mul_ps(f, high)), _mm_mul_ps(f, low));
}

QORKES_INLINE __m128 anglesOfPoints(__m128 a, __m128 b) {
    const __m128 ordinate = magnitudeOf(a), abscissa = magnitudeOf(b);
    const auto isBeyond = [=](float bound) {
        return _mm_cmpgt_ps(ordinate, _mm_mul_ps(abscissa, _mm_set1_ps(bound)));
    };
    const Intervals lanes = {isBeyond(flBound1), isBeyond(flBound2),
                             isBeyond(flBound3)};
    const __m128 base = baseOf(lanes);
    const __m128 p = _mm_andnot_ps(lanes.beyond3, ordinate);
    const __m128 q = select(lanes.beyond3, ordinate, abscissa);
    const __m128 abscissaHigh = shortPart(abscissa);
    const __m128 N =
        lessProduct(p, base, abscissaHigh, _mm_sub_ps(abscissa, abscissaHigh));
    const __m128 D = _mm_add_ps(q, _mm_mul_ps(base, p));

    const __m128 t = _mm_div_ps(N, D);
    const __m128 tHigh = shortPart(t), DHigh = shortPart(D);
    const __m128 tLow = _mm_sub_ps(t, tHigh), DLow = _mm_sub_ps(D, DHigh);
    const __m128 remainder =
        lessProduct(lessProduct(N, tHigh, DHigh, DLow), tLow, DHigh, DLow);
    const __m128 tRest = _mm_div_ps(remainder, D);

    const __m128 series = _mm_add_ps(arctangentLessRatio(t), tRest);
    const __m128 rest = _mm_add_ps(_mm_add_ps(series, t), angleLowOf(lanes));

    const __m128 isLeft = _mm_cmplt_ps(b, _mm_setzero_ps()), flip = signOf(isLeft);
    const __m128 high = _mm_add_ps(_mm_and_ps(isLeft, _mm_set1_ps(piHigh)),
                                   _mm_xor_ps(angleHighOf(lanes), flip));
    const __m128 low =
        _mm_add_ps(_mm_and_ps(isLeft, _mm_set1_ps(piLow)), _mm_xor_ps(rest, flip));
    return _mm_or_ps(_mm_add_ps(high, low), signOf(a));
}

} // namespace

void _qorsAtan2_HA(int n, const float* a, const float* b, float* y) {
    inFrame<Precision::bits53, Mxcsr::cleared, anglesOf<anglesOfPoints>>(n, a, b, y);
}
