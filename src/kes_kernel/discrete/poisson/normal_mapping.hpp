// Method 1 of Poisson: a curve through the distribution's quantiles, in powers of a
// normal variate (after Cornish and Fisher, Review of the International Statistical
// Institute 5, 1937). Coefficients are formed once for a mean, in extended
// precision, and rounded to floats; variates are mapped in single precision.
#pragma once

#include <common/bits.hpp>
#include <kes_kernel/discrete/in_place.hpp>
#include <kes_kernel/discrete/polynomial.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {
namespace normal_mapping {

#include "_kes_ipoisson_tables.inc"

/// The least mean of the first row, and the rows themselves.
constexpr double largeMean = _kesiPoissonPoisnormD[0];
constexpr const double *largeRow = _kesiPoissonPoisnormD + 1,
                       *binadeRows = _kesiPoissonPoisnormD + 24,
                       *exponentialRow = _kesiPoissonPoisnormD + 185;
constexpr int rowLength = 23;

QORKES_INLINE __m128 lanes(float x) { return _mm_set1_ps(x); }

/// lane * factor + addend, rounded twice.
QORKES_INLINE __m128 timesPlus(__m128 x, __m128 factor, __m128 addend) {
    return _mm_add_ps(_mm_mul_ps(x, factor), addend);
}

/// Means from 100 on: normals come with a mean and a deviation of their own.
struct Large {
    float mean, deviation, b1, b2, b3;

    explicit Large(double lambda) {
        const double* d = largeRow;
        const ext w = 1 / ext{lambda};
        mean = round32(d[0] + ext{lambda} + polynomial<2>(d + 1, w) * w);
        deviation = round32(
            squareRootOf(round64(ext{lambda} + d[4] + w * polynomial<2>(d + 5, w))));
        b1 = round32(w * polynomial<4>(d + 8, w));
        b2 = round32(w * polynomial<4>(d + 13, w));
        b3 = round32(w * polynomial<4>(d + 18, w));
    }

    QORKES_INLINE __m128 operator()(__m128 g) const {
        const __m128 e = _mm_sub_ps(g, lanes(mean));
        const __m128 bend =
            _mm_mul_ps(timesPlus(timesPlus(e, lanes(b3), lanes(b2)), e, lanes(b1)), e);
        const __m128 y = _mm_add_ps(_mm_add_ps(bend, g), lanes(1));
        return _mm_max_ps(y, _mm_setzero_ps());
    }
};

/// Means from 1 to 100, a row for each binary exponent; standard normals.
struct Middle {
    float c[6];

    explicit Middle(double lambda) {
        const auto exponent = (highWord(lambda) >> 20) - 1023;
        const double* row = binadeRows + rowLength * exponent;
        const ext x = round32(significandOf(lambda)) - 1;
        c[0] = round32(polynomial<2>(row, x));
        for (int i = 1; i < 6; ++i) c[i] = round32(polynomial<3>(row + 4 * i - 1, x));
    }

    QORKES_INLINE __m128 operator()(__m128 g) const {
        __m128 t = timesPlus(g, lanes(c[5]), lanes(c[4]));
        t = timesPlus(t, g, lanes(c[3]));
        t = _mm_mul_ps(timesPlus(t, g, lanes(c[2])), g);
        const __m128 y = _mm_add_ps(timesPlus(t, lanes(c[1]), lanes(1)), lanes(c[0]));
        return _mm_max_ps(y, _mm_setzero_ps());
    }
};

/// Means below 1: the partial sums of exp(lambda) that a uniform below it exceeds.
struct Small {
    float end;
    float sums[11];

    explicit Small(double lambda) {
        end = round32(polynomial<7>(exponentialRow, lambda));
        ext term = 1;
        sums[0] = 1;
        for (int k = 1; k < 11; ++k) {
            term = term * lambda / k;
            sums[k] = round32(sums[k - 1] + term);
        }
    }

    QORKES_INLINE __m128 operator()(__m128 u) const {
        __m128 count = _mm_setzero_ps();
        for (const float sum : sums)
            count =
                _mm_add_ps(count, _mm_and_ps(_mm_cmpgt_ps(u, lanes(sum)), lanes(1)));
        return count;
    }
};

/// A mapped float as an integer; it is not negative, and great for an infinite normal.
QORKES_INLINE int truncated(float y) {
    return y < 0x1p31f ? _mm_cvttss_si32(_mm_set_ss(y)) : truncate(ext{y});
}

/// Variates of n floats, in their place.
template <class Map>
QORKES_NOINLINE void mapInPlace(int n, int32_t* r, const Map& map) {
    const auto* x = reinterpret_cast<const FloatInPlace*>(r);
    alignas(16) float y[4];
    int i = 0;
    for (; i < n - 3; i += 4) {
        _mm_store_ps(y, map(_mm_loadu_ps(x + i)));
        for (int k = 0; k < 4; ++k) r[i + k] = truncated(y[k]);
    }
    for (; i < n; ++i) {
        _mm_store_ss(y, map(_mm_load_ss(x + i)));
        r[i] = truncated(y[0]);
    }
}

template <class Map>
QORKES_INLINE int drawMapped(int status, int n, int32_t* r, const Map& map) {
    if (!failed(status)) mapInPlace(n, r, map);
    return status;
}

} // namespace normal_mapping

inline int _viRngPoissonPoisNorm(StreamState* stream, int n, int32_t* r,
                                 double lambda) {
    using namespace normal_mapping;
    auto* x = reinterpret_cast<FloatInPlace*>(r);
    if (lambda >= largeMean) {
        const Large map(lambda);
        return drawMapped(_kessRngGaussian(1, stream, n, x, map.mean, map.deviation), n,
                          r, map);
    }
    if (lambda >= 1) {
        const Middle map(lambda);
        return drawMapped(_kessRngGaussian(1, stream, n, x, 0, 1), n, r, map);
    }
    const Small map(lambda);
    return drawMapped(uniforms(stream, n, x, 0, map.end), n, r, map);
}

} // namespace qorkes
