// Normal variates by the transform of Box and Muller: of a pair of uniforms u, v the
// numbers sqrt(-2 ln(u)) sin(2 pi v) and sqrt(-2 ln(u)) cos(2 pi v).
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

constexpr double _kesdGaussianTab[1] = {0x1.921fb54442d18p+2};
constexpr float _kessGaussianTab[1] = {0x1.921fb6p+2f};
static_assert(hasPattern(_kesdGaussianTab[0], 0x401921FB54442D18));
static_assert(hasPattern(_kessGaussianTab[0], 0x40C90FDB));

/// Two uniforms whose sine value has been delivered and whose cosine value has not. At
/// rest without one both are -1.
template <class T> struct CarriedPair { T u[2]; };

/// What differs by the type of number: 2 pi, and the chunk of the carried pair.
template <class T> struct GaussianTraits;
template <> struct GaussianTraits<double> {
    static constexpr double twoPi = _kesdGaussianTab[0];
    static constexpr int chunk = 2;
};
template <> struct GaussianTraits<float> {
    static constexpr float twoPi = _kessGaussianTab[0];
    static constexpr int chunk = 1;
};

/// y = sqrt(-2 ln(y)).
template <class T> QORKES_INLINE void distances(int n, T* y) {
    logarithm(n, y, y);
    multiply(n, y, T(-2));
    squareRoot(n, y, y);
}

/// count pairs into u, from there the first of each to `first`, the second to the start
/// of u as an angle.
template <class T>
QORKES_INLINE int drawPairs(StreamState* stream, int count, T* u, T* first) {
    const int status = uniforms(stream, 2 * count, u);
    if (failed(status)) return status;
    splitPairs(count, u, first, GaussianTraits<T>::twoPi);
    return status;
}

// ---- Method 0: the sine value of every pair -----------------------------------------

template <class T>
QORKES_NOINLINE int boxMuller(StreamState* stream, int n, T* r, T a, T sigma) {
    constexpr int size = 512;
    T u[2 * size];
    const int status = inBlocks<size>(n, [&](int start, int count) {
        T* const y = r + start;
        const int drawn = drawPairs(stream, count, u, y);
        if (failed(drawn)) return drawn;
        quickSine(count, u, u);
        distances(count, y);
        multiply(count, y, u);
        return drawn;
    });
    if (!failed(status)) scale(n, r, sigma, a);
    return status;
}

// ---- Method 1: both values of every pair --------------------------------------------

/// r[2 i] = distance[i] * sine[i], r[2 i + 1] = distance[i] * cosine[i].
QORKES_INLINE void bothValues(int n, const double* distance, const double* sine,
                              const double* cosine, double* r) {
    for (int i = 0; i < n; ++i) {
        r[2 * i] = round64(ext{distance[i]} * sine[i]);
        r[2 * i + 1] = round64(ext{distance[i]} * cosine[i]);
    }
}
QORKES_INLINE void bothValues(int n, const float* distance, const float* sine,
                              const float* cosine, float* r) {
    int i = 0;
    for (; i < n - 3; i += 4) {
        const __m128 d = _mm_loadu_ps(distance + i);
        const __m128 s = _mm_mul_ps(d, _mm_loadu_ps(sine + i));
        const __m128 c = _mm_mul_ps(d, _mm_loadu_ps(cosine + i));
        _mm_storeu_ps(r + 2 * i, _mm_unpacklo_ps(s, c));
        _mm_storeu_ps(r + 2 * i + 4, _mm_unpackhi_ps(s, c));
    }
    for (; i < n; ++i) {
        r[2 * i] = round32(ext{distance[i]} * sine[i]);
        r[2 * i + 1] = round32(ext{distance[i]} * cosine[i]);
    }
}

/// The cosine value of a pair, or its sine value; the pair is used up.
template <bool ofCosine, class T> QORKES_INLINE T valueOf(CarriedPair<T>& pair) {
    T &distance = pair.u[0], &wave = pair.u[1];
    multiply(1, &wave, GaussianTraits<T>::twoPi);
    if constexpr (ofCosine)
        quickCosine(1, &wave, &wave);
    else
        quickSine(1, &wave, &wave);
    distances(1, &distance);
    return rounded<T>(ext{distance} * wave);
}

template <class T>
QORKES_NOINLINE int boxMuller2(StreamState* stream, int n, T* r, T a, T sigma) {
    constexpr int size = 1024;
    constexpr CarriedPair<T> none = {{-1, -1}};
    T u[size], distance[size / 2], cosine[size / 2];
    CarriedPair<T>* carried;
    int status = chunkOf(stream, GaussianTraits<T>::chunk, carried, none);
    if (failed(status)) return status;

    int done = 0;
    if (carried->u[0] != -1) r[done++] = valueOf<true>(*carried);
    while (n - done >= 2) {
        const int pairs = n - done >= size ? size / 2 : (n - done) / 2;
        status = drawPairs(stream, pairs, u, distance);
        if (failed(status)) return status;
        quickSineCosine(pairs, u, u, cosine);
        distances(pairs, distance);
        bothValues(pairs, distance, u, cosine, r + done);
        done += 2 * pairs;
    }
    if (n == done) {
        *carried = none;
    } else {
        CarriedPair<T> pair;
        status = uniforms(stream, 2, pair.u);
        if (failed(status)) return status;
        *carried = pair;
        r[done] = valueOf<false>(pair);
    }
    scale(n, r, sigma, a);
    return status;
}

template <class T>
QORKES_INLINE int gaussians(int method, StreamState* stream, int n, T* r, T a,
                            T sigma) {
    static constexpr int (*methods[])(StreamState*, int, T*, T, T) = {boxMuller<T>,
                                                                      boxMuller2<T>};
    return methods[method](stream, n, r, a, sigma);
}

} // namespace qorkes
