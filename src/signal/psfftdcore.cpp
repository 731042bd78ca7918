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

// A butterfly joins a, b, c, d, m numbers apart, which hold the residues 0, 2, 1 and 3:
//
//     s0, d0 = a +- b w^2    s1, d1 = c w +- d w^3
//     a = s0 + s1    b = d0 - i d1    c = s0 - s1    d = d0 + i d1
//
// The inverse is the same with the real and imaginary parts exchanged throughout. The
// compiler runs out of registers here and stores 80-bit values at seven cycles each, so
// the order of the steps is spelled out; with it eight registers are enough. Stacks are
// shown with the top first.

/// In: s1r d1r s1i d1i. Out: d0r s0r and those.
#define QORKES_PLAIN_PAIR(part)                                                          \
    "fldl %c[a" part "](%[x])\n\t"                                                       \
    "faddl %c[b" part "](%[x])\n\t"                                                      \
    "fldl %c[a" part "](%[x])\n\t"                                                       \
    "fsubl %c[b" part "](%[x])\n\t"

/// Pushes the real or the imaginary part of `number` times the twiddle at `w`.
#define QORKES_PRODUCT(number, w, first, second, join)                                   \
    "fldl %c[" number first "](%[x])\n\t"                                                \
    "fmull " w "(%[w])\n\t"                                                              \
    "fldl %c[" number second "](%[x])\n\t"                                               \
    "fmull 8+" w "(%[w])\n\t" join " %%st, %%st(1)\n\t"
#define QORKES_PRODUCT_R(number, w) QORKES_PRODUCT(number, w, "r", "i", "fsubrp")
#define QORKES_PRODUCT_I(number, w) QORKES_PRODUCT(number, w, "i", "r", "faddp")

/// In: d c. Out: c + d, c - d.
#define QORKES_SUM_AND_DIFFERENCE                                                        \
    "fld %%st\n\t"                                                                       \
    "fadd %%st(2), %%st\n\t"                                                             \
    "fxch\n\t"                                                                           \
    "fsubrp %%st, %%st(2)\n\t"

/// In: b. Out: a - b, a + b, with a from memory.
#define QORKES_WITH_A(part)                                                              \
    "fld %%st\n\t"                                                                       \
    "faddl %c[a" part "](%[x])\n\t"                                                      \
    "fxch\n\t"                                                                           \
    "fsubrl %c[a" part "](%[x])\n\t"

/// In: d0r s0r s1r d1r s1i d1i. Stores the real parts of a and c. Out: d0r d1r s1i d1i.
#define QORKES_STORE_REAL                                                                \
    "fld %%st(1)\n\t"                                                                    \
    "fsub %%st(3), %%st\n\t"                                                             \
    "fstpl %c[cr](%[x])\n\t"                                                             \
    "fxch\n\t"                                                                           \
    "faddp %%st, %%st(2)\n\t"                                                            \
    "fxch\n\t"                                                                           \
    "fstpl %c[ar](%[x])\n\t"

/// In: d0i s0i d0r d1r s1i d1i. Stores all that is left.
#define QORKES_STORE_REST                                                                \
    "fld %%st(1)\n\t"                                                                    \
    "fsub %%st(5), %%st\n\t"                                                             \
    "fstpl %c[ci](%[x])\n\t"                                                             \
    "fxch\n\t"                                                                           \
    "faddp %%st, %%st(4)\n\t"       /* d0i d0r d1r ai d1i */                             \
    "fld %%st\n\t"                                                                       \
    "fsub %%st(3), %%st\n\t"                                                             \
    "fstpl %c[bi](%[x])\n\t"                                                             \
    "faddp %%st, %%st(2)\n\t"       /* d0r di ai d1i */                                  \
    "fld %%st\n\t"                                                                       \
    "fadd %%st(4), %%st\n\t"                                                             \
    "fstpl %c[br](%[x])\n\t"                                                             \
    "fsubp %%st, %%st(3)\n\t"       /* di ai dr */                                       \
    "fstpl %c[di](%[x])\n\t"                                                             \
    "fstpl %c[ai](%[x])\n\t"                                                             \
    "fstpl %c[dr](%[x])\n\t"

/// Byte offsets of the eight values from `x`.
#define QORKES_PLACES                                                                    \
    [ar] "i"(re), [ai] "i"(im), [br] "i"(16 * m + re), [bi] "i"(16 * m + im),            \
        [cr] "i"(32 * m + re), [ci] "i"(32 * m + im), [dr] "i"(48 * m + re),             \
        [di] "i"(48 * m + im)
#define QORKES_X87_STACK "st", "st(1)", "st(2)", "st(3)", "st(4)", "st(5)", "st(6)", "st(7)"

template <Direction direction, int m> QORKES_INLINE void butterfly(double* x) {
    constexpr int re = direction == Direction::forward ? 0 : 8, im = 8 - re;
    asm volatile("fldl %c[ci](%[x])\n\t"
                 "fsubl %c[di](%[x])\n\t"
                 "fldl %c[ci](%[x])\n\t"
                 "faddl %c[di](%[x])\n\t"
                 "fldl %c[cr](%[x])\n\t"
                 "fsubl %c[dr](%[x])\n\t"
                 "fldl %c[cr](%[x])\n\t"
                 "faddl %c[dr](%[x])\n\t" // s1r d1r s1i d1i
                 QORKES_PLAIN_PAIR("r") QORKES_STORE_REAL
                 QORKES_PLAIN_PAIR("i") QORKES_STORE_REST
                 :
                 : [x] "r"(x), QORKES_PLACES
                 : QORKES_X87_STACK, "memory");
}

/// The same with the record `w` of twiddles.
template <Direction direction, int m>
QORKES_INLINE void butterfly(double* x, const double* w) {
    constexpr int re = direction == Direction::forward ? 0 : 8, im = 8 - re;
    asm volatile(QORKES_PRODUCT_I("c", "0") QORKES_PRODUCT_I("d", "32") // d c
                 QORKES_SUM_AND_DIFFERENCE                              // s1i d1i
                 QORKES_PRODUCT_R("c", "0") QORKES_PRODUCT_R("d", "32")
                 QORKES_SUM_AND_DIFFERENCE // s1r d1r s1i d1i
                 QORKES_PRODUCT_R("b", "16") QORKES_WITH_A("r") QORKES_STORE_REAL
                 QORKES_PRODUCT_I("b", "16") QORKES_WITH_A("i") QORKES_STORE_REST
                 :
                 : [x] "r"(x), [w] "r"(w), QORKES_PLACES
                 : QORKES_X87_STACK, "memory");
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
