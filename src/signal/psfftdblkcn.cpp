// zubs_cFftFwd_Large_64fc, zubs_cFftInv_Large_64fc: complex FFT of 2^10 points and more
// in place, on bit-reversed data; and its tables.
//
// Orders 10 and 11 are pieces of 512 points joined by radix 2; longer transforms are
// split into rows and columns.
#include <signal/products.hpp>
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

/// Columns [j, j + chunk) of two blocks of `half` points, and those a quarter circle
/// on, whose twiddles are the same times -i.
template <Direction d>
void mergeChunk(double* block, int j, int half, const double* w, int stride) {
    double* a = block + 2 * j;
    double* b = a + 2 * half;
    w += stride * j;
    for (int k = 0; k < chunk; ++k, a += 2, b += 2, w += stride) {
        const auto addAndSubtract = [](double& x, double& y, ext p) {
            const ext sum = x + p;
            y = round64(x - p);
            x = round64(sum);
        };
        const ext pr = productRe<d>(b, w), pi = productIm<d>(b, w);
        forgetLoads();
        addAndSubtract(a[re<d>], b[re<d>], pr);
        addAndSubtract(a[im<d>], b[im<d>], pi);
        forgetLoads();
        double *const c = a + half, *const e = b + half;
        const ext qr = productRe<d>(e, w), qi = productIm<d>(e, w);
        forgetLoads();
        addAndSubtract(c[re<d>], e[re<d>], qi);
        const ext base = c[im<d>];
        c[im<d>] = round64(base - qr);
        e[im<d>] = round64(base + qr);
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

/// In two loads: the parts may just have been stored one by one, and a load that spans
/// two stores waits for both.
QORKES_INLINE void moveNumber(const double* from, double* to) {
    const __m64* const parts = reinterpret_cast<const __m64*>(from);
    const __m128 re = _mm_loadl_pi(_mm_setzero_ps(), parts);
    _mm_storeu_ps(reinterpret_cast<float*>(to), _mm_loadh_pi(re, parts + 1));
}

/// Rows of long transforms stand so far apart that all fall into a few sets of the
/// caches: a line fetched much earlier would be gone again.
QORKES_INLINE void prefetchRow(const double* x, int columns) {
    const char* const row = reinterpret_cast<const char*>(x + 16 * int64_t{columns});
    _mm_prefetch(row, _MM_HINT_T0);
    _mm_prefetch(row + 48, _MM_HINT_T0);
}

template <Direction d>
QORKES_NOINLINE void gatherColumns(const double* x, double* buffer, const double* w,
                                   int columns, int rows) {
    const double* const end = buffer + 2 * rows;
    for (; buffer < end; buffer += 2, x += 2 * columns, w += 8) {
        prefetchRow(x, columns);
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j) {
            double* const y = buffer + 2 * j * rows;
            y[re<d>] = round64(productRe<d>(x + 2 * j, w + 2 * j));
            y[im<d>] = round64(productIm<d>(x + 2 * j, w + 2 * j));
            forgetLoads();
        }
    }
}

/// Four columns, each in a buffer of its own, back into their rows.
QORKES_NOINLINE void scatterRows(const double* buffer, double* y, int columns,
                                 int rows) {
    const double* const end = buffer + 2 * rows;
    for (; buffer < end; buffer += 2, y += 2 * columns) {
        prefetchRow(y, columns);
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j) moveNumber(buffer + 2 * j * rows, y + 2 * j);
    }
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

    template <Direction d>
    static void gather(const double* data, double* buffer, const double* twiddles,
                       int columns, int rows) {
        gatherColumns<d>(data, buffer, twiddles, columns, rows);
    }
    template <Direction direction>
    static void core(double* data, int n, const double* table) {
        ::core<direction>(data, n, table);
    }
    static void scatter(const double* buffer, double* data, int columns, int rows) {
        scatterRows(buffer, data, columns, rows);
    }
    static void scatterColumns(const double* buffer, double* data, int columns,
                               int rows, bool) {
        scatter(buffer, data, columns, rows);
    }
};

} // namespace

void zubs_getSizeTwd_Large_64f(int order, int64_t* table, int64_t* temporary,
                               int64_t* buffer) {
    longSizes<Engine>(order, *table, *temporary, *buffer);
}

void zubs_initTabTwd_Large_64f(FftCtx* plan, int order, const double* base,
                               int baseOrder, double* table, double* temporary) {
    initLongTables<Engine>(plan, order, Sines<double>{base, baseOrder}, table,
                           temporary);
}

void zubs_cFftFwd_Large_64fc(const FftCtx* plan, double* data, int order,
                             double* buffer) {
    cFft_Large<Engine, Direction::forward>(plan, data, order, buffer);
}
void zubs_cFftInv_Large_64fc(const FftCtx* plan, double* data, int order,
                             double* buffer) {
    cFft_Large<Engine, Direction::inverse>(plan, data, order, buffer);
}
