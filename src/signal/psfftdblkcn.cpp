// zubs_cFftFwd_Large_64fc, zubs_cFftInv_Large_64fc: complex FFT of 2^10 points and more
// in place, on bit-reversed data; and its tables.
//
// Orders 10 and 11 are pieces of 512 points joined by radix 2; longer transforms are
// split into rows and columns.
#include <signal/psfftblkcn.hpp>

#include <xmmintrin.h>

using namespace qorkes;

namespace {

constexpr int pieceOrder = 9;
constexpr int chunk = 64; // columns of a merge that stay in the first-level cache

template <Direction direction> void core(double* x, int n, const double* table) {
    if constexpr (direction == Direction::forward)
        zubs_cRadix4Fwd_64fc(x, n, table);
    else
        zubs_cRadix4Inv_64fc(x, n, table);
}

struct Product {
    ext re, im;
};
template <Direction direction>
QORKES_INLINE Product times(const double* x, const double* w) {
    const ext rr = ext{x[0]} * w[0], ii = ext{x[1]} * w[1];
    const ext ir = ext{x[1]} * w[0], ri = ext{x[0]} * w[1];
    if constexpr (direction == Direction::forward)
        return {rr - ii, ir + ri};
    else
        return {rr + ii, ir - ri};
}

QORKES_INLINE void addAndSubtract(double* a, double* b, ext re, ext im) {
    const ext ar = a[0], ai = a[1];
    a[0] = round64(ar + re);
    a[1] = round64(ai + im);
    b[0] = round64(ar - re);
    b[1] = round64(ai - im);
}

/// Columns [j, j + chunk) of two blocks of `half` points, and those a quarter circle
/// on.
template <Direction direction>
void mergeChunk(double* a, int j, int half, const double* w, int stride) {
    double* const b = a + 2 * half;
    const int turned = half; // half / 2 numbers on
    w += stride * j;
    for (int k = 2 * j; k < 2 * (j + chunk); k += 2, w += stride) {
        const Product p = times<direction>(b + k, w);
        const Product q = times<direction>(b + k + turned, w);
        addAndSubtract(a + k, b + k, p.re, p.im);
        if constexpr (direction == Direction::forward)
            addAndSubtract(a + k + turned, b + k + turned, q.im, -q.re);
        else
            addAndSubtract(a + k + turned, b + k + turned, -q.im, q.re);
    }
}

/// Passes of radix 2 from blocks of `block` points to `length`, whose quarter circle of
/// twiddles the table holds.
template <Direction direction>
void cFft_Blk_R2(double* data, int length, int block, const double* table) {
    for (; block < length; block *= 2)
        for (int j = 0; j < block / 2; j += chunk)
            for (double* x = data; x < data + 2 * length; x += 4 * block)
                mergeChunk<direction>(x, j, block, table, length / block);
}

/// Complex numbers of 16 bytes from one row of a matrix of `columns` to another.
QORKES_INLINE void moveNumber(const double* from, double* to) {
    _mm_storeu_ps(reinterpret_cast<float*>(to),
                  _mm_loadu_ps(reinterpret_cast<const float*>(from)));
}

struct Engine {
    using Real = double;
    static constexpr int coreOrder = pieceOrder;
    static constexpr signed char tbl_blk_order[splitOrders] = {
        0, 0, 0, 4, 5, 6, 7, 7, 8, 9, 9, 9, 8, 8, 9, 9, 9, 9, 9, 9, 9, 9};

    static int64_t innerBuffer(int) { return 0; }
    static int64_t mergeBytes(int order) { return pointsOf(order) / 4 * 16; }

    static void initCore(int order, const Sines<double>& sines, double* table) {
        zubs_initTabTwd_L1_64f(order, sines.table, sines.order, table);
    }
    static void initMerge(int order, const Sines<double>& sines, double* table) {
        for (int64_t k = 0; k < pointsOf(order) / 4; ++k) {
            const Twiddle<double> w = sines.at(order, k);
            table[2 * k] = w.cosine;
            table[2 * k + 1] = w.minusSine;
        }
    }
    static void reverse(double* data, int n, const int32_t* table) {
        zubs_BitRev1_Z(data, n, table);
    }

    template <Direction direction>
    static void inner(const FftCtxOf<double>& plan, double* data, int order, double*,
                      bool) {
        const int length = 1 << order;
        const int piece = order < pieceOrder ? length : 1 << pieceOrder;
        for (int at = length - piece; at >= 0; at -= piece) {
            ::core<direction>(data + 2 * at, piece, plan.twdL1);
            if (scales<direction>(plan))
                zubs_rbMpy1_64f(plan.normFactor, data + 2 * at, 2 * piece);
        }
        cFft_Blk_R2<direction>(data, length, piece, plan.twdL2);
    }

    template <Direction direction>
    static void gather(const double* data, double* buffer, const double* twiddles,
                       int columns, int rows) {
        for (int p = 0; p < rows; ++p, data += 2 * int64_t{columns}, twiddles += 8)
            for (int j = 0; j < 4; ++j) {
                const Product x = times<direction>(data + 2 * j, twiddles + 2 * j);
                double* const place = buffer + 2 * (j * rows + p);
                place[0] = round64(x.re);
                place[1] = round64(x.im);
            }
    }
    template <Direction direction>
    static void core(double* data, int n, const double* table) {
        ::core<direction>(data, n, table);
    }
    static void scatter(const double* buffer, double* data, int columns, int rows) {
        for (int p = 0; p < rows; ++p, data += 2 * int64_t{columns})
            for (int j = 0; j < 4; ++j)
                moveNumber(buffer + 2 * (j * rows + p), data + 2 * j);
    }
    static void scatterColumns(const double* buffer, double* data, int columns,
                               int rows, bool) {
        scatter(buffer, data, columns, rows);
    }
};

} // namespace

void zubs_getSizeTwd_Large_64f(int order, int64_t* table, int64_t* temporary,
                               int64_t* buffer) {
    const LongSizes sizes = longSizes<Engine>(order);
    *table = sizes.table;
    *temporary = sizes.temporary;
    *buffer = sizes.buffer;
}

void zubs_initTabTwd_Large_64f(FftCtx* plan, int order, const double* base,
                               int baseOrder, double* table, double* temporary) {
    initLongTables<Engine>(*planOf<double>(plan), order, Sines<double>{base, baseOrder},
                           table, temporary);
}

void zubs_cFftFwd_Large_64fc(const FftCtx* plan, double* data, int order,
                             double* buffer) {
    cFft_Large<Engine, Direction::forward>(*planOf<double>(plan), data, order, buffer);
}
void zubs_cFftInv_Large_64fc(const FftCtx* plan, double* data, int order,
                             double* buffer) {
    cFft_Large<Engine, Direction::inverse>(*planOf<double>(plan), data, order, buffer);
}
