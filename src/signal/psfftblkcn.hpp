// Long complex transforms: rows, twiddles, columns (Bailey, "FFTs in external or
// hierarchical memory", 1990), recursively, down to what the engines of a precision do
// in cache. An Engine gives:
//
//     Real                      double or float
//     tbl_blk_order[]           the split of 2^order points, from order 9 on
//     coreOrder                 the longest transform that `core` does
//     inner<d>(...)             a transform that is not split, scaled if wanted
//     gather<d>, core<d>, scatterColumns   the column step, four columns at a time
//     initCore, initMerge, reverse, scatter   what its tables are made by
//     mergeBytes, innerBuffer   sizes of a table and of a work buffer
#pragma once

#include <signal/psfft.hpp>

namespace qorkes {

constexpr int firstSplitOrder = 9;
constexpr int splitOrders = 22;

/// log2 of the number of rows, 0 for none.
template <class Engine> QORKES_INLINE int rowOrder(int order) {
    return order < firstSplitOrder ? 0 : Engine::tbl_blk_order[order - firstSplitOrder];
}

/// Bytes of one complex number.
template <class T> constexpr int64_t complexSize = 2 * sizeof(T);

/// Bytes of the twiddles of a core of 2^order points.
template <class T> QORKES_INLINE int64_t coreTableBytes(int order) {
    return to16((pointsOf(order) + 1) * complexSize<T>);
}

/// Bytes of the twiddles of four columns at each of `rows` places.
template <class T> QORKES_INLINE int64_t columnsBytes(int64_t rows) {
    return 4 * rows * complexSize<T>;
}

QORKES_INLINE void keepLarger(int64_t& size, int64_t other) {
    if (size < other) size = other;
}

/// Bytes of all tables, of what their making needs, and of a transform's work buffer.
template <class Engine>
void longSizes(int order, int64_t& table, int64_t& temporary, int64_t& buffer) {
    using T = typename Engine::Real;
    table = temporary = buffer = 0;
    for (int blk; (blk = rowOrder<Engine>(order)) != 0; order -= blk) {
        const int64_t rows = pointsOf(blk);
        const int64_t reversal = (rows / 4 + 1) * int64_t{sizeof(int32_t)};
        table += pointsOf(order) * complexSize<T> + coreTableBytes<T>(blk);
        keepLarger(temporary, to16(columnsBytes<T>(rows) + reversal));
        keepLarger(buffer, columnsBytes<T>(rows));
    }
    if (order <= Engine::coreOrder)
        table += coreTableBytes<T>(order);
    else
        table += Engine::mergeBytes(order) + coreTableBytes<T>(Engine::coreOrder);
    keepLarger(buffer, Engine::innerBuffer(order));
}

/// exp(-2 pi i c r / 2^order) for four columns c at a time and, within them, for each
/// place, which holds the row r with its bits reversed.
template <class Engine, class T>
void initColumnTwiddles(const Sines<T>& sines, int order, int blk, T* table,
                        T* temporary) {
    const int64_t rows = pointsOf(blk), columns = pointsOf(order - blk);
    int32_t* const reversal = reinterpret_cast<int32_t*>(temporary + 8 * rows);
    zubs_initTabBitRev(blk, reversal);
    for (int64_t c = 0; c < columns; c += 4, table += 8 * rows) {
        for (int j = 0; j < 4; ++j) {
            T* const column = temporary + 2 * j * rows;
            for (int64_t r = 0; r < rows; ++r) {
                const Twiddle<T> w = sines.at(order, (c + j) * r);
                column[2 * r] = w.cosine;
                column[2 * r + 1] = w.minusSine;
            }
            Engine::reverse(column, static_cast<int>(rows), reversal);
        }
        Engine::scatter(temporary, table, 4, static_cast<int>(rows));
    }
}

/// Fills all tables of a long transform into one block, of the bytes that longSizes
/// gives.
template <class Engine, class T>
void initLongTables(FftCtx* handle, int order, const Sines<T>& sines, T* block,
                    T* temporary) {
    FftCtxOf<T>& plan = *planOf<T>(handle);
    const auto take = [&](int64_t bytes) {
        T* const place = block;
        block += bytes / int64_t{sizeof(T)};
        return place;
    };
    int inner = order;
    while (const int blk = rowOrder<Engine>(inner)) inner -= blk;
    const int core = inner < Engine::coreOrder ? inner : Engine::coreOrder;
    plan.twdL1 = take(coreTableBytes<T>(core));
    Engine::initCore(core, sines, plan.twdL1);
    if (inner > core) {
        plan.twdL2 = take(Engine::mergeBytes(inner));
        Engine::initMerge(inner, sines, plan.twdL2);
    }
    for (int level = 0; const int blk = rowOrder<Engine>(order);
         ++level, order -= blk) {
        plan.rowTwd[level] = take(coreTableBytes<T>(blk));
        plan.stepTwd[level] = take(pointsOf(order) * complexSize<T>);
        Engine::initCore(blk, sines, plan.rowTwd[level]);
        initColumnTwiddles<Engine>(sines, order, blk, plan.stepTwd[level], temporary);
    }
}

/// 2^order points, as rows one after another, each in bit-reversed order.
template <class Engine, Direction direction, class T>
void cFft_BlkStep(const FftCtxOf<T>& plan, T* data, int order, int level, T* buffer) {
    const int blk = rowOrder<Engine>(order), rest = order - blk;
    const int rows = 1 << blk, columns = 1 << rest;
    for (int r = 0; r < rows; ++r) {
        T* const row = data + 2 * int64_t{r} * columns;
        if (rowOrder<Engine>(rest))
            cFft_BlkStep<Engine, direction>(plan, row, rest, level + 1, buffer);
        else
            Engine::template inner<direction>(plan, row, rest, buffer, false);
    }
    const T* twiddles = plan.stepTwd[level];
    for (int c = 0; c < columns; c += 4, twiddles += 8 * rows) {
        Engine::template gather<direction>(data + 2 * c, buffer, twiddles, columns,
                                           rows);
        for (int j = 0; j < 4; ++j)
            Engine::template core<direction>(buffer + 2 * j * rows, rows,
                                             plan.rowTwd[level]);
        Engine::scatterColumns(buffer, data + 2 * c, columns, rows, level == 0);
    }
}

template <class Engine, Direction direction, class T>
void cFft_Large(const FftCtx* handle, T* data, int order, T* buffer) {
    const FftCtxOf<T>& plan = *planOf<T>(handle);
    if (rowOrder<Engine>(order))
        cFft_BlkStep<Engine, direction>(plan, data, order, 0, buffer);
    else
        Engine::template inner<direction>(plan, data, order, buffer, true);
}

/// What the transforms of this direction scale by.
template <Direction direction, class T>
QORKES_INLINE bool scales(const FftCtxOf<T>& plan) {
    return direction == Direction::forward ? plan.fwdNorm : plan.invNorm;
}

} // namespace qorkes
