// zubs_cFftFwd_Large_32fc, zubs_cFftInv_Large_32fc: complex FFT of 2^11 points and more
// in single precision, in place, on bit-reversed data; its passes and its tables.
//
// Orders 11 and 12 are pieces of 1024 points joined by radix 2; longer transforms are
// split into rows and columns. Between the steps the data stands split.
#include <signal/lanes.hpp>
#include <signal/psfftblkcn.hpp>

#include <initializer_list>

using namespace qorkes;

namespace {

constexpr int pieceOrder = 10;

template <Direction direction>
void core(float* data, int n, const float* table, float* buffer) {
    if constexpr (direction == Direction::forward)
        zubs_cRadix4Fwd_32fc(data, n, table, buffer, 0);
    else
        zubs_cRadix4Inv_32fc(data, n, table, buffer, 0);
}

/// Joins two halves. The second quarter takes the twiddles of the first, turned.
template <Direction direction, Layout layout>
void joinHalves(float* data, int n, const float* w) {
    float* const quarter[4] = {data, data + n / 2, data + n, data + n / 2 * 3};
    for (int k = 0; k < n / 2; k += 8) {
        const auto at = [=](int q) { return load<Layout::split>(quarter[q] + k); };
        const ComplexLanes turn = load<Layout::split>(w + k);
        const ComplexLanes a = at(0), b = times<direction>(at(2), turn);
        const ComplexLanes c = at(1), d = times<direction>(at(3), turn);
        ComplexLanes plus, minus;
        addTurned<direction>(c, d, plus, minus);
        store<layout>(quarter[0] + k, a + b);
        store<layout>(quarter[1] + k, plus);
        store<layout>(quarter[2] + k, a - b);
        store<layout>(quarter[3] + k, minus);
    }
}

template <Direction direction>
void stepR2(float* data, int n, const float* table, int final) {
    if (final)
        joinHalves<direction, Layout::pairs>(data, n, table);
    else
        joinHalves<direction, Layout::split>(data, n, table);
}

/// The twiddles of the halves' joins follow those of the whole.
template <Direction direction>
void cFft_BlkStep_L2(const FftCtxOf<float>& plan, float* data, int length,
                     const float* table, float* buffer, int final) {
    const int half = length / 2;
    for (float* x : {data, data + 2 * half}) {
        if (half > 1 << pieceOrder) {
            cFft_BlkStep_L2<direction>(plan, x, half, table + half, buffer, 0);
        } else {
            core<direction>(x, half, plan.twdL1, buffer);
            if (scales<direction>(plan)) zubs_rbMpy1_32f(plan.normFactor, x, 2 * half);
        }
    }
    stepR2<direction>(data, length, table, final);
}

template <Direction direction>
void gatherColumns(const float* data, float* buffer, const float* twiddles, int columns,
                   int rows) {
    float* const to[4] = {buffer, buffer + 2 * rows, buffer + 4 * rows,
                          buffer + 6 * rows};
    const int64_t step = 2 * int64_t{columns};
    for (int p = 0; p < 2 * rows; p += 2, data += step, twiddles += 8) {
        const ComplexLanes x =
            times<direction>(load<Layout::split>(data), load<Layout::split>(twiddles));
        const __m128 low = _mm_unpacklo_ps(x.re, x.im);
        const __m128 high = _mm_unpackhi_ps(x.re, x.im);
        _mm_storel_pi(reinterpret_cast<__m64*>(to[0] + p), low);
        _mm_storeh_pi(reinterpret_cast<__m64*>(to[1] + p), low);
        _mm_storel_pi(reinterpret_cast<__m64*>(to[2] + p), high);
        _mm_storeh_pi(reinterpret_cast<__m64*>(to[3] + p), high);
    }
}

/// Four columns, each in a buffer of its own in layout `from`, back into their rows.
template <Layout from, Layout to>
void scatterRows(const float* buffer, float* data, int columns, int rows) {
    for (int r = 0; r < rows; r += 4) {
        ComplexLanes v[4];
#pragma GCC unroll 4
        for (int j = 0; j < 4; ++j) v[j] = load<from>(buffer + 2 * (j * rows + r));
        transpose(v);
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k)
            store<to>(data + 2 * int64_t{r + k} * columns, v[k]);
    }
}

struct Engine {
    using Real = float;
    static constexpr int coreOrder = pieceOrder;
    static constexpr signed char tbl_blk_order[splitOrders] = {
        0, 0, 0, 0, 5, 6, 7, 8, 8, 8, 10, 10, 10, 10, 8, 8, 10, 10, 10, 10, 10, 10};

    /// For a core on data off the 16-byte boundaries.
    static int64_t innerBuffer(int order) {
        return order > coreOrder ? 8192 : to16(8 * pointsOf(order));
    }
    /// Joins of 2^order points and of all halves above the pieces.
    static int64_t mergeBytes(int order) {
        return (pointsOf(order + 1) - pointsOf(pieceOrder + 1)) / 4 * 8;
    }
    static void initCore(int order, const Sines<float>& sines, float* table) {
        zubs_initTabTwd_L1_32f(order, sines.table, sines.order, table);
    }
    static void initMerge(int order, const Sines<float>& sines, float* table) {
        SplitWriter writer{table};
        for (; order > pieceOrder; --order)
            for (int64_t k = 0; k < pointsOf(order) / 4; k += 4)
                writer.write(sines, order, [=](int lane) { return k + lane; });
    }
    static void reverse(float* data, int n, const int32_t* table) {
        zubs_BitRev1_C(data, n, table);
    }

    template <Direction direction>
    static void inner(const FftCtxOf<float>& plan, float* data, int order,
                      float* buffer, bool last) {
        if (order > pieceOrder)
            return cFft_BlkStep_L2<direction>(plan, data, 1 << order, plan.twdL2,
                                              buffer, last);
        ::core<direction>(data, 1 << order, plan.twdL1, buffer);
        if (scales<direction>(plan)) zubs_rbMpy1_32f(plan.normFactor, data, 2 << order);
    }

    template <Direction direction>
    static void gather(const float* data, float* buffer, const float* twiddles,
                       int columns, int rows) {
        gatherColumns<direction>(data, buffer, twiddles, columns, rows);
    }
    template <Direction direction>
    static void core(float* data, int n, const float* table) {
        ::core<direction>(data, n, table, nullptr);
    }
    static void scatter(const float* buffer, float* data, int columns, int rows) {
        scatterRows<Layout::pairs, Layout::split>(buffer, data, columns, rows);
    }
    static void scatterColumns(const float* buffer, float* data, int columns, int rows,
                               bool last) {
        zubs_cFftBlkSplit_32fc(data, buffer, columns, rows, last);
    }
};

} // namespace

void zubs_getSizesTwd_Large_32f(int order, int64_t* table, int64_t* temporary,
                                int64_t* buffer) {
    longSizes<Engine>(order, *table, *temporary, *buffer);
}

void zubs_initTabTwd_Large_32f(FftCtx* plan, int order, const float* base,
                               int baseOrder, float* table, float* temporary) {
    initLongTables<Engine>(plan, order, Sines<float>{base, baseOrder}, table,
                           temporary);
}

void zubs_cFftFwd_Large_32fc(const FftCtx* plan, float* data, int order,
                             float* buffer) {
    cFft_Large<Engine, Direction::forward>(plan, data, order, buffer);
}
void zubs_cFftInv_Large_32fc(const FftCtx* plan, float* data, int order,
                             float* buffer) {
    cFft_Large<Engine, Direction::inverse>(plan, data, order, buffer);
}

void zubs_cFftFwd_Step_R2_32fc(float* data, int n, const float* table, int final) {
    stepR2<Direction::forward>(data, n, table, final);
}
void zubs_cFftInv_Step_R2_32fc(float* data, int n, const float* table, int final) {
    stepR2<Direction::inverse>(data, n, table, final);
}

void zubs_cFftBlkMergeMpy_32fc(const float* data, float* buffer, const float* twiddles,
                               int mode, int columns, int rows) {
    if (mode > 0)
        gatherColumns<Direction::forward>(data, buffer, twiddles, columns, rows);
    else
        gatherColumns<Direction::inverse>(data, buffer, twiddles, columns, rows);
}
void zubs_cFftBlkSplit_32fc(float* data, const float* buffer, int columns, int rows,
                            int last) {
    if (last)
        scatterRows<Layout::split, Layout::pairs>(buffer, data, columns, rows);
    else
        scatterRows<Layout::split, Layout::split>(buffer, data, columns, rows);
}
