// _qordAtan_HA: y = atan(a) in double precision, largest error 0.84 ulp.
//
// The angle of a base c near |x| (or pi/2 from 2.4375 on), and the arctangent of
// t = (|x| - c) / (1 + c |x|) by an odd series, all at 53 bits; the sign comes last. No
// argument is special: an infinity has t = 0, and a NaN passes through.
#include <qor_core/_heap/arctangent.hpp>

using namespace qorkes;

namespace {

/// t = N / D with N = p - c and D = factor N + (q + r). Here p = |x| and r = 0, with
/// q = 1 + c^2; in the last interval p = 0 and r = |x|, which makes it -1 / |x|. Both
/// come by an index and not by a branch, which random arguments would often take
/// unforeseen.
struct Row {
    double c, factor, q, atanHi, atanLo;
    uint32_t p, r; // |x| lies blockSize before its zero
};
constexpr struct {
    Row rows[intervals];
    float signs[2];
    uint32_t bounds[intervals - 1]; // high words of 0.4375, 0.6875, 1.1875 and 2.4375
} constants = {{{0, 0, 1, atanHi[0], atanLo[0], 0, blockSize},
                {0.5, 0.5, 1.25, atanHi[1], atanLo[1], 0, blockSize},
                {1, 1, 2, atanHi[2], atanLo[2], 0, blockSize},
                {1.5, 1.5, 3.25, atanHi[3], atanLo[3], 0, blockSize},
                {1, 0, 0, atanHi[4], atanLo[4], blockSize, 0}},
               {1, -1},
               {0x3FDC0000, 0x3FE60000, 0x3FF30000, 0x40038000}};

struct Ratio {
    double t;
    const Row* row;
};

QORKES_INLINE void storeRatio(Ratio& ratio, const double* x) {
    const auto& k = *inRegister(&constants);
    const uint32_t high = highWord(*x);
    uint32_t interval = k.bounds[0] < high;
    interval += k.bounds[1] < high;
    interval += k.bounds[2] < high;
    interval += k.bounds[3] < high;
    const Row& row = k.rows[interval];
    const ext N = loaded(x[row.p]) - row.c;
    const ext D = row.factor * N + (row.q + loaded(x[row.r]));
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
    alignas(16) double numbers[2 * blockSize]; // magnitudes, and a zero for each
    for (int i = 0; i < blockSize && i < n; ++i) numbers[blockSize + i] = 0;
    for (int begin = 0; begin < n; begin += blockSize) {
        const int count = n - begin < blockSize ? n - begin : blockSize;
        storeMagnitudes(numbers, count, a + begin);
        for (int i = 0; i < count; ++i) storeRatio(ratios[i], numbers + i);
        for (int i = 0; i < count; ++i)
            y[begin + i] = arctangent(ratios[i], a[begin + i]);
    }
}

} // namespace

void _qordAtan_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers, arctangents>(n, a, y);
}
