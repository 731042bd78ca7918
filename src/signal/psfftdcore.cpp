// zubs_cRadix4Fwd_64fc, zubs_cRadix4Inv_64fc: complex FFT of 4 to 1024 points in place,
// on bit-reversed data; and the tables they read.
//
// Radix 4, decimation in time (Cooley and Tukey, 1965; Singleton, 1969): a pass of
// quarter size m joins four transforms of m points each. With bit-reversed data the
// four quarters hold the residues 0, 2, 1 and 3, hence the crosswise twiddles. All
// values of a butterfly stay on the x87 stack; each result is rounded once a pass.
#include <signal/products.hpp>

using namespace qorkes;

namespace {

constexpr double rootOfHalf = 0x1.6a09e667f3bcdp-1;
static_assert(hasPattern(rootOfHalf, 0x3FE6A09E667F3BCD));

/// cos(t), -sin(t), cos(2t), -sin(2t), cos(3t), -sin(3t)
constexpr int recordSize = 6;

template <Direction d, int m>
QORKES_INLINE void finish(double* x, ext s1r, ext d1r, ext s1i, ext d1i, auto br,
                          auto bi) {
    constexpr int r = re<d>, i = im<d>;
    const ext b2r = br();
    const ext s0r = x[r] + b2r, d0r = x[r] - b2r;
    x[4 * m + r] = round64(s0r - s1r);
    x[r] = round64(s0r + s1r);
    forgetLoads();
    const ext b2i = bi();
    const ext s0i = x[i] + b2i, d0i = x[i] - b2i;
    x[4 * m + i] = round64(s0i - s1i);
    x[i] = round64(s0i + s1i);
    x[2 * m + i] = round64(d0i - d1r);
    x[6 * m + i] = round64(d0i + d1r);
    x[2 * m + r] = round64(d0r + d1i);
    x[6 * m + r] = round64(d0r - d1i);
}

template <Direction direction, int m> QORKES_INLINE void butterfly(double* x) {
    constexpr int r = re<direction>, i = im<direction>;
    double *const c = x + 4 * m, *const d = x + 6 * m;
    const ext s1i = ext{c[i]} + d[i], d1i = ext{c[i]} - d[i];
    const ext s1r = ext{c[r]} + d[r], d1r = ext{c[r]} - d[r];
    forgetLoads();
    finish<direction, m>(
        x, s1r, d1r, s1i, d1i, [=] { return ext{x[2 * m + r]}; },
        [=] { return ext{x[2 * m + i]}; });
}

template <Direction direction, int m>
QORKES_INLINE void butterfly(double* x, const double* w) {
    double *const b = x + 2 * m, *const c = x + 4 * m, *const d = x + 6 * m;
    const ext ci = productIm<direction>(c, w);
    forgetLoads();
    const ext di = productIm<direction>(d, w + 4);
    const ext s1i = ci + di, d1i = ci - di;
    forgetLoads();
    const ext cr = productRe<direction>(c, w);
    forgetLoads();
    const ext dr = productRe<direction>(d, w + 4);
    const ext s1r = cr + dr, d1r = cr - dr;
    forgetLoads();
    finish<direction, m>(
        x, s1r, d1r, s1i, d1i, [=] { return productRe<direction>(b, w + 2); },
        [=] { return productIm<direction>(b, w + 2); });
}

template <Direction direction> void firstPass(double* x, int n) {
    for (double* const end = x + 2 * n; x < end; x += 8) butterfly<direction, 1>(x);
}

/// The pass of radix 2 that an odd order needs: twice four points to eight.
template <Direction direction> void eightPass(double* x, int n) {
    constexpr ext sign = direction == Direction::forward ? 1 : -1;
    for (double* const end = x + 2 * n; x < end; x += 16) {
        const auto pair = [=](int j, ext re, ext im) {
            const ext ar = x[2 * j], ai = x[2 * j + 1];
            x[2 * j] = round64(ar + re);
            x[2 * j + 1] = round64(ai + im);
            x[2 * j + 8] = round64(ar - re);
            x[2 * j + 9] = round64(ai - im);
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
        butterfly<direction, m>(x);
        const double* w = table + step;
        for (int j = 1; j < m; ++j, w += step) butterfly<direction, m>(x + 2 * j, w);
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
