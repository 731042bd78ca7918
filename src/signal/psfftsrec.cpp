// zubs_cRealRecombine_32f, zubs_cCcsRecombine_32f: between the spectrum of n complex
// numbers, n at least 8, and the spectrum of the 2n real ones that they were taken from
// (Cooley, Lewis and Welch, 1970). Places 0 and n, which stand together, are the
// caller's.
//
// Four numbers from place k on are taken with the four that mirror them. The last lane
// of the last group is place n/2, its own mirror, where both results agree. The
// mirrored forms belong to spectra with the positive exponent.
#include <signal/lanes.hpp>

using namespace qorkes;

namespace {

/// Four numbers downwards, the last one first.
QORKES_INLINE ComplexLanes loadDown(const float* x) {
    const __m128 low = _mm_loadu_ps(x), high = _mm_loadu_ps(x + 4);
    return {_mm_shuffle_ps(high, low, _MM_SHUFFLE(0, 2, 0, 2)),
            _mm_shuffle_ps(high, low, _MM_SHUFFLE(1, 3, 1, 3))};
}
QORKES_INLINE void storeDown(float* x, ComplexLanes v) {
    const __m128 re = _mm_shuffle_ps(v.re, v.re, _MM_SHUFFLE(0, 1, 2, 3));
    const __m128 im = _mm_shuffle_ps(v.im, v.im, _MM_SHUFFLE(0, 1, 2, 3));
    store<Layout::pairs>(x, {re, im});
}

/// step(p, q, t, u) returns the new numbers at k and at n - k.
template <class Step>
QORKES_INLINE void inMirroredGroups(const float* x, float* y, int n, const float* table,
                                    Step step) {
    for (int k = 1; k < n / 2; k += 4, table += 8) {
        const int up = 2 * k, down = 2 * (n - k - 3);
        ComplexLanes p = load<Layout::pairs>(x + up), q = loadDown(x + down);
        step(p, q, _mm_load_ps(table), _mm_load_ps(table + 4));
        store<Layout::pairs>(y + up, p);
        storeDown(y + down, q);
    }
}

/// The number at n / 2, which is its own mirror image. It is a part of the last group,
/// whose sums may overflow on the way to what is no more than it or twice it, and is
/// stored again behind that.
struct Middle {
    float re, im;
    Middle(const float* x, int n) : re(x[n]), im(x[n + 1]) {}
};

template <bool mirrored> void toReal(float* x, int n, const float* table) {
    const Middle middle(x, n);
    inMirroredGroups(
        x, x, n, table, [](ComplexLanes& p, ComplexLanes& q, __m128 t, __m128 u) {
            if constexpr (mirrored) u = _mm_sub_ps(_mm_set1_ps(1.0f), u);
            const __m128 dr = _mm_sub_ps(p.re, q.re), si = _mm_add_ps(p.im, q.im);
            const __m128 P = _mm_add_ps(_mm_mul_ps(u, dr), _mm_mul_ps(t, si));
            const __m128 Q = _mm_sub_ps(_mm_mul_ps(u, si), _mm_mul_ps(t, dr));
            const ComplexLanes up = {_mm_add_ps(q.re, P), _mm_sub_ps(Q, q.im)};
            q = {_mm_sub_ps(p.re, P), _mm_sub_ps(Q, p.im)};
            p = up;
        });
    x[n] = middle.re;
    x[n + 1] = mirrored ? middle.im : -middle.im;
}

template <bool mirrored>
void toComplex(const float* x, float* y, int n, const float* table) {
    const Middle middle(x, n);
    inMirroredGroups(
        x, y, n, table, [](ComplexLanes& p, ComplexLanes& q, __m128 t, __m128 u) {
            if constexpr (mirrored) u = _mm_xor_ps(u, _mm_set1_ps(-0.0f));
            const __m128 dr = _mm_sub_ps(p.re, q.re), si = _mm_add_ps(p.im, q.im);
            const __m128 sr = _mm_add_ps(p.re, q.re), di = _mm_sub_ps(p.im, q.im);
            const __m128 P = _mm_sub_ps(_mm_mul_ps(u, dr), _mm_mul_ps(t, si));
            const __m128 R = _mm_add_ps(_mm_mul_ps(t, dr), _mm_mul_ps(u, si));
            p = {_mm_add_ps(sr, P), _mm_add_ps(di, R)};
            q = {_mm_sub_ps(sr, P), _mm_sub_ps(R, di)};
        });
    y[n] = round32(2 * ext{middle.re});
    y[n + 1] = round32((mirrored ? 2 : -2) * ext{middle.im});
}

} // namespace

void zubs_cRealRecombine_32f(float* data, int n, int direction, const float* table) {
    if (direction > 0)
        toReal<false>(data, n, table);
    else
        toReal<true>(data, n, table);
}

void zubs_cCcsRecombine_32f(const float* src, float* dst, int n, int direction,
                            const float* table) {
    if (direction < 0)
        toComplex<false>(src, dst, n, table);
    else
        toComplex<true>(src, dst, n, table);
}
