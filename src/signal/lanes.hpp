// Four single-precision complex numbers at a time. In memory they stand as pairs of
// real and imaginary part, or split: four real parts, then four imaginary parts.
#pragma once

#include <signal/psfft.hpp>

#include <xmmintrin.h>

namespace qorkes {

struct ComplexLanes {
    __m128 re, im;
};

/// How the numbers of one array stand in memory.
enum class Layout { split, pairs };

QORKES_INLINE ComplexLanes operator+(ComplexLanes a, ComplexLanes b) {
    return {_mm_add_ps(a.re, b.re), _mm_add_ps(a.im, b.im)};
}
QORKES_INLINE ComplexLanes operator-(ComplexLanes a, ComplexLanes b) {
    return {_mm_sub_ps(a.re, b.re), _mm_sub_ps(a.im, b.im)};
}

QORKES_INLINE ComplexLanes fromPairs(__m128 low, __m128 high) {
    return {_mm_shuffle_ps(low, high, 0x88), _mm_shuffle_ps(low, high, 0xDD)};
}

template <Layout layout> QORKES_INLINE ComplexLanes load(const float* x) {
    const __m128 a = _mm_loadu_ps(x), b = _mm_loadu_ps(x + 4);
    if constexpr (layout == Layout::split)
        return {a, b};
    else
        return fromPairs(a, b);
}

template <Layout layout> QORKES_INLINE void store(float* x, ComplexLanes v) {
    if constexpr (layout == Layout::split) {
        _mm_storeu_ps(x, v.re);
        _mm_storeu_ps(x + 4, v.im);
    } else {
        _mm_storeu_ps(x, _mm_unpacklo_ps(v.re, v.im));
        _mm_storeu_ps(x + 4, _mm_unpackhi_ps(v.re, v.im));
    }
}

/// Four complex numbers from four addresses.
QORKES_INLINE ComplexLanes gather(const float* x0, const float* x1, const float* x2,
                                  const float* x3) {
    const auto two = [](const float* a, const float* b) {
        const __m128 low =
            _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(a));
        return _mm_loadh_pi(low, reinterpret_cast<const __m64*>(b));
    };
    return fromPairs(two(x0, x1), two(x2, x3));
}

/// x * w; the inverse takes the conjugate of w.
template <Direction direction>
QORKES_INLINE ComplexLanes times(ComplexLanes x, ComplexLanes w) {
    const __m128 rr = _mm_mul_ps(x.re, w.re), ii = _mm_mul_ps(x.im, w.im);
    const __m128 ir = _mm_mul_ps(x.im, w.re), ri = _mm_mul_ps(x.re, w.im);
    if constexpr (direction == Direction::forward)
        return {_mm_sub_ps(rr, ii), _mm_add_ps(ir, ri)};
    else
        return {_mm_add_ps(rr, ii), _mm_sub_ps(ir, ri)};
}

/// x * -i forward, x * i inverse.
template <Direction direction> QORKES_INLINE ComplexLanes turned(ComplexLanes x) {
    const __m128 minus = _mm_set1_ps(-0.0f);
    if constexpr (direction == Direction::forward)
        return {x.im, _mm_xor_ps(x.re, minus)};
    else
        return {_mm_xor_ps(x.im, minus), x.re};
}

/// a + turned(b) and a - turned(b) without the sign changes.
template <Direction direction>
QORKES_INLINE void addTurned(ComplexLanes a, ComplexLanes b, ComplexLanes& plus,
                             ComplexLanes& minus) {
    const ComplexLanes one = {_mm_add_ps(a.re, b.im), _mm_sub_ps(a.im, b.re)};
    const ComplexLanes other = {_mm_sub_ps(a.re, b.im), _mm_add_ps(a.im, b.re)};
    plus = direction == Direction::forward ? one : other;
    minus = direction == Direction::forward ? other : one;
}

/// Lane l of vector k becomes lane k of vector l.
QORKES_INLINE void transpose(ComplexLanes (&v)[4]) {
    _MM_TRANSPOSE4_PS(v[0].re, v[1].re, v[2].re, v[3].re);
    _MM_TRANSPOSE4_PS(v[0].im, v[1].im, v[2].im, v[3].im);
}

/// Writes cosines and negated sines of four angles, split.
struct SplitWriter {
    float* place;
    template <class Angle>
    void write(const Sines<float>& sines, int points, Angle angle) {
        for (int j = 0; j < 4; ++j) {
            const Twiddle<float> w = sines.at(points, angle(j));
            place[j] = w.cosine;
            place[j + 4] = w.minusSine;
        }
        place += 8;
    }
};

} // namespace qorkes
