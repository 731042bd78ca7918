// _qordAtan_HA: y = atan(a) in double precision.
//
// The angle of a base c near |x| (or pi/2 from 2.4375 on), and the arctangent of
// t = (|x| - c) / (1 + c |x|) by an odd series, all at 53 bits; the sign comes last. No
// argument is special: an infinity has t = 0, and a NaN passes through.
#include <qor_core/_heap/arctangent.hpp>

using namespace qorkes;

namespace {

/// High words of 0.4375, 0.6875, 1.1875 and 2.4375, after which the intervals begin.
constexpr uint32_t bounds[intervals - 1] = {0x3FDC0000, 0x3FE60000, 0x3FF30000,
                                            0x40038000};

/// t = N / D with N = p - c and D = factor N + q. Here p = |x| and q = 1 + c^2, but in
/// the last interval p = 0 and q = |x|, which makes it -1 / |x|.
struct Row {
    double c, factor, q, atanHi, atanLo;
};
constexpr struct {
    Row rows[intervals];
    double zero;
    float signs[2];
} constants = {{{0, 0, 1, atanHi[0], atanLo[0]},
                {0.5, 0.5, 1.25, atanHi[1], atanLo[1]},
                {1, 1, 2, atanHi[2], atanLo[2]},
                {1.5, 1.5, 3.25, atanHi[3], atanLo[3]},
                {1, 0, 0, atanHi[4], atanLo[4]}},
               0,
               {1, -1}};

struct Ratio {
    double t;
    const Row* row;
};

QORKES_INLINE void storeRatio(Ratio& ratio, const double& x) {
    const auto& k = *inRegister(&constants);
    const uint32_t magnitude = highWord(x) & magnitudeBits;
    const uint32_t isLast = isBelow(bounds[3], magnitude);
    const Row& row =
        k.rows[isBelow(bounds[0], magnitude) + isBelow(bounds[1], magnitude) +
               isBelow(bounds[2], magnitude) + isLast];
    const ext N = __builtin_fabsl(loaded(*chosen(isLast, &k.zero, &x))) - row.c;
    const ext D = row.factor * N + __builtin_fabsl(loaded(*chosen(isLast, &x, &row.q)));
    ratio.t = round64(N / D);
    ratio.row = &row;
}

QORKES_INLINE double arctangent(const Ratio& ratio, const double& x) {
    const auto& k = *inRegister(&constants);
    const Row& row = *ratio.row;
    return round64((row.atanHi - minusArctangent(loaded(ratio.t), row.atanLo)) *
                   k.signs[highWord(x) >> 31]);
}

/// In two passes over a block, which keep the chains of dependent operations short.
QORKES_NOINLINE void arctangents(int n, const double* a, double* y) {
    Ratio ratios[blockSize];
    for (int begin = 0; begin < n; begin += blockSize) {
        const int count = n - begin < blockSize ? n - begin : blockSize;
        for (int i = 0; i < count; ++i) storeRatio(ratios[i], a[begin + i]);
        for (int i = 0; i < count; ++i)
            y[begin + i] = arctangent(ratios[i], a[begin + i]);
    }
}

} // namespace

void _qordAtan_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers, arctangents>(n, a, y);
}
