// zubs_cRadix4Fwd_64fc, zubs_cRadix4Inv_64fc: complex FFT of 4 to 1024 points in place,
// on bit-reversed data; and the tables they read.
//
// Radix 4, decimation in time (Cooley and Tukey, 1965; Singleton, 1969): a pass of
// quarter size m joins four transforms of m points each. With bit-reversed data the
// four quarters hold the residues 0, 2, 1 and 3, hence the crosswise twiddles. All
// values of a butterfly stay on the x87 stack; each result is rounded once a pass.
#include <signal/psfft.hpp>

using namespace qorkes;

namespace {

constexpr double rootOfHalf = 0x1.6a09e667f3bcdp-1;
static_assert(hasPattern(rootOfHalf, 0x3FE6A09E667F3BCD));

/// cos(t), -sin(t), cos(2t), -sin(2t), cos(3t), -sin(3t)
constexpr int recordSize = 6;

struct Number {
    ext re, im;
};

QORKES_INLINE Number load(const double* x) { return {x[0], x[1]}; }
QORKES_INLINE void store(double* x, ext re, ext im) {
    x[0] = round64(re);
    x[1] = round64(im);
}

template <Direction direction>
QORKES_INLINE ext productRe(const double* x, const double* w) {
    const ext a = ext{x[0]} * w[0], b = ext{x[1]} * w[1];
    return direction == Direction::forward ? a - b : a + b;
}
template <Direction direction>
QORKES_INLINE ext productIm(const double* x, const double* w) {
    const ext a = ext{x[1]} * w[0], b = ext{x[0]} * w[1];
    return direction == Direction::forward ? a + b : a - b;
}

/// Joins x0, x2, x1, x3, which stood at x[0], x[m], x[2m], x[3m], in the same places.
template <Direction direction>
QORKES_INLINE void combine(double* x, int m, Number x0, Number x2, Number x1,
                           Number x3) {
    const ext s1r = x1.re + x3.re, d1r = x1.re - x3.re;
    const ext s1i = x1.im + x3.im, d1i = x1.im - x3.im;
    const ext s0r = x0.re + x2.re, d0r = x0.re - x2.re;
    const ext s0i = x0.im + x2.im, d0i = x0.im - x2.im;
    double* const first = direction == Direction::forward ? x + 2 * m : x + 6 * m;
    double* const third = direction == Direction::forward ? x + 6 * m : x + 2 * m;
    store(x, s0r + s1r, s0i + s1i);
    store(x + 4 * m, s0r - s1r, s0i - s1i);
    store(first, d0r + d1i, d0i - d1r);
    store(third, d0r - d1i, d0i + d1r);
}

template <Direction direction> QORKES_INLINE void butterfly(double* x, int m) {
    combine<direction>(x, m, load(x), load(x + 2 * m), load(x + 4 * m),
                       load(x + 6 * m));
}

template <Direction direction>
QORKES_INLINE void butterfly(double* x, int m, const double* w) {
    const auto times = [](const double* y, const double* v) {
        return Number{productRe<direction>(y, v), productIm<direction>(y, v)};
    };
    combine<direction>(x, m, load(x), times(x + 2 * m, w + 2), times(x + 4 * m, w),
                       times(x + 6 * m, w + 4));
}

template <Direction direction> void firstPass(double* x, int n) {
    for (double* const end = x + 2 * n; x < end; x += 8) butterfly<direction>(x, 1);
}

/// The pass of radix 2 that an odd order needs: twice four points to eight.
template <Direction direction> void eightPass(double* x, int n) {
    constexpr ext sign = direction == Direction::forward ? 1 : -1;
    for (double* const end = x + 2 * n; x < end; x += 16) {
        const auto pair = [=](int j, ext re, ext im) {
            const ext ar = x[2 * j], ai = x[2 * j + 1];
            store(x + 2 * j, ar + re, ai + im);
            store(x + 2 * j + 8, ar - re, ai - im);
        };
        const ext r5 = x[10], i5 = x[11], r7 = x[14], i7 = x[15];
        pair(0, x[8], x[9]);
        pair(1, (r5 + sign * i5) * rootOfHalf, (i5 - sign * r5) * rootOfHalf);
        pair(2, sign * x[13], -sign * x[12]);
        pair(3, (sign * i7 - r7) * rootOfHalf, (-sign * r7 - i7) * rootOfHalf);
    }
}

template <Direction direction, int m> void pass(double* x, int n, const double* table) {
    const int step = n / (4 * m) * recordSize;
    for (double* const end = x + 2 * n; x < end; x += 8 * m) {
        butterfly<direction>(x, m);
        const double* w = table + step;
        for (int j = 1; j < m; ++j, w += step) butterfly<direction>(x + 2 * j, m, w);
    }
}

template <Direction direction> void transform(double* x, int n, const double* table) {
    firstPass<direction>(x, n);
    if (n / 4 & 0x2AAAAAAA) {
        eightPass<direction>(x, n);
        if (n >= 32) pass<direction, 8>(x, n, table);
        if (n >= 128) pass<direction, 32>(x, n, table);
        if (n >= 512) pass<direction, 128>(x, n, table);
    } else {
        if (n >= 16) pass<direction, 4>(x, n, table);
        if (n >= 64) pass<direction, 16>(x, n, table);
        if (n >= 256) pass<direction, 64>(x, n, table);
        if (n >= 1024) pass<direction, 256>(x, n, table);
    }
}

} // namespace

void zubs_initTabTwdBase_64f(int order, double* table) { fillSines(order, table); }

void zubs_initTabTwd_L1_64f(int order, const double* base, int baseOrder,
                            double* table) {
    const Sines<double> sines{base, baseOrder};
    const int quarter = static_cast<int>(pointsOf(order) / 4);
    for (int k = 0; k <= quarter; ++k)
        for (int power = 1; power <= 3; ++power) {
            const Twiddle<double> w = sines.at(order, int64_t{k} * power);
            *table++ = w.cosine;
            *table++ = w.minusSine;
        }
}

void zubs_cRadix4Fwd_64fc(double* data, int n, const double* table) {
    transform<Direction::forward>(data, n, table);
}
void zubs_cRadix4Inv_64fc(double* data, int n, const double* table) {
    transform<Direction::inverse>(data, n, table);
}
