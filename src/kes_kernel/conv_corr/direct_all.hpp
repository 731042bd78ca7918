// DirectAll: convolution and correlation in 2 to 7 dimensions by sums of products.
//
// A convolution is a correlation with x reversed in all dimensions. The box of indices
// that an output sums over is walked by runs along dimension 0, then dimension 1, 2 and
// so on. Without decimation in dimensions 0 and 1 four outputs that are neighbours in
// dimension 1 are summed at a time: first the lines that all four have, then for each
// the lines before and behind those. In single precision the lanes of a register do the
// same for four neighbours in dimension 0, which changes no result.
#pragma once

#include <kes_kernel/conv_corr/grid.hpp>
#include <kes_kernel/conv_corr/runs.hpp>

namespace qorkes {

/// A correlation of dense arrays.
template <class T> struct Correlation {
    int rank;
    const T *x, *y;
    T* z;
    const int *xshape, *yshape, *zshape, *dec;
    int lag[KesTaskMaxRank]; // of the first output
    DenseStrides xstride, ystride, zstride;
};

/// What the outputs of one plane (dimensions 0 and 1) share: their box in the higher
/// dimensions, and the planes of x and y where it begins.
template <class T> struct Plane {
    const Correlation<T>* whole;
    const T *x, *y;
    T* z;
    int extent[KesTaskMaxRank]; // of the box

    Overlap overlap(int d, int place) const {
        return overlapAt(whole->lag[d] + place * whole->dec[d], whole->xshape[d],
                         whole->yshape[d]);
    }
};

/// body(x, y) for every run, from line xline of x and yline of y on for `lines` lines,
/// in each plane of the box.
template <class T, class Body>
QORKES_INLINE void forEachRun(const Plane<T>& plane, Overlap run, int xline, int yline,
                              int lines, Body body) {
    const Correlation<T>& whole = *plane.whole;
    const ptrdiff_t xstep = whole.xstride.stride[1], ystep = whole.ystride.stride[1];
    const T* x = plane.x + run.atX + xline * xstep;
    const T* y = plane.y + run.atY + yline * ystep;
    int index[KesTaskMaxRank] = {};
    for (int d = 0; lines > 0 && d < whole.rank;) {
        const T *xrun = x, *yrun = y;
        for (int i = 0; i < lines; ++i) {
            body(xrun, yrun);
            xrun += xstep;
            yrun += ystep;
        }
        for (d = 2; d < whole.rank; ++d) {
            x += whole.xstride.stride[d];
            y += whole.ystride.stride[d];
            if (++index[d] < plane.extent[d]) break;
            x -= plane.extent[d] * whole.xstride.stride[d];
            y -= plane.extent[d] * whole.ystride.stride[d];
            index[d] = 0;
        }
    }
}

/// One or four outputs that are neighbours in dimension 1, with their lines.
struct Rows {
    int count;
    Overlap lines[4];

    int firstCommon() const { return lines[0].atX; }
    int endOfCommon() const { return lines[count - 1].endX(); }
};

/// One output of each row, or as many as a Sum of Runs has.
template <class Runs, class T>
QORKES_INLINE void sumOutputs(const Plane<T>& plane, const Rows& rows, Overlap run,
                              T* z) {
    using Sum = typename Runs::Sum;
    Sum sums[4] = {};
    const auto alone = [&](int j, int first, int end) {
        const int offset = rows.lines[j].atY - rows.lines[j].atX;
        forEachRun(
            plane, run, first, first + offset, end - first,
            [&](const T* x, const T* y) { Runs::one(sums[j], x, y, run.count); });
    };
    const int first = rows.firstCommon(), end = rows.endOfCommon();
    if (rows.count == 1 || first >= end) {
        for (int j = 0; j < rows.count; ++j)
            alone(j, rows.lines[j].atX, rows.lines[j].endX());
    } else {
        const ptrdiff_t step = plane.whole->ystride.stride[1];
        forEachRun(
            plane, run, first, rows.lines[0].atY, end - first,
            [&](const T* x, const T* y) { Runs::four(sums, x, y, step, run.count); });
        for (int j = 1; j < 4; ++j) alone(j, rows.lines[j].atX, first);
        for (int j = 0; j < 3; ++j) alone(j, end, rows.lines[j].endX());
    }
    for (int j = 0; j < rows.count; ++j)
        Runs::store(z + j * plane.whole->zstride.stride[1], sums[j]);
}

/// The outputs from q on, as many as can be summed at once; returns how many.
QORKES_INLINE int sumSome(const Plane<double>& plane, const Rows& rows, int q,
                          double* z) {
    sumOutputs<DoubleRuns>(plane, rows, plane.overlap(0, q), z);
    return 1;
}
QORKES_INLINE int sumSome(const Plane<float>& plane, const Rows& rows, int q,
                          float* z) {
    const Overlap run = plane.overlap(0, q);
    if (plane.whole->dec[0] == 1 && q + 3 < plane.whole->zshape[0] && run.count > 0) {
        const Overlap last = plane.overlap(0, q + 3);
        if (last.count == run.count && last.atX == run.atX) {
            sumOutputs<FloatRunsAlongY>(plane, rows, run, z);
            return 4;
        }
        if (last.count == run.count && last.atY == run.atY) {
            sumOutputs<FloatRunsAlongX>(plane, rows, last, z);
            return 4;
        }
    }
    sumOutputs<FloatRuns>(plane, rows, run, z);
    return 1;
}

template <class T> void correlatePlane(const Plane<T>& plane) {
    const Correlation<T>& whole = *plane.whole;
    const bool tiled = whole.dec[0] == 1 && whole.dec[1] == 1;
    T* z = plane.z;
    for (int row = 0; row < whole.zshape[1];) {
        Rows rows = {tiled && row + 3 < whole.zshape[1] ? 4 : 1, {}};
        for (int j = 0; j < rows.count; ++j) rows.lines[j] = plane.overlap(1, row + j);
        for (int q = 0; q < whole.zshape[0];) q += sumSome(plane, rows, q, z + q);
        z += rows.count * whole.zstride.stride[1];
        row += rows.count;
    }
}

/// Plane after plane of z. Where a higher dimension has no overlap all sums are empty.
template <class T> void correlate(const Correlation<T>& whole) {
    int place[KesTaskMaxRank] = {};
    T* z = whole.z;
    const int planeSize = whole.zshape[0] * whole.zshape[1];
    for (int d = 0; d < whole.rank;) {
        Plane<T> plane = {&whole, whole.x, whole.y, z, {}};
        bool empty = false;
        for (d = 2; d < whole.rank; ++d) {
            const Overlap part = plane.overlap(d, place[d]);
            plane.x += part.atX * whole.xstride.stride[d];
            plane.y += part.atY * whole.ystride.stride[d];
            plane.extent[d] = part.count;
            empty |= part.count < 1;
        }
        if (empty)
            std::fill_n(z, planeSize, T{0});
        else
            correlatePlane(plane);
        z += planeSize;
        for (d = 2; d < whole.rank; ++d) {
            if (++place[d] < whole.zshape[d]) break;
            place[d] = 0;
        }
    }
}

template <Job job, class Data, class Work> int directAll(const Grid<Data>& grid) {
    const int status = check<job>(grid);
    if (status != KesStatusOk) return status;
    const int rank = grid.rank;
    if (rank < 2 || rank > KesTaskMaxRank) return KesStatusOk;
    const bool direct =
        std::is_same_v<Work, Data> && isDense(rank, grid.zshape, grid.zstride);
    WorkArrays<Work> work;
    const bool prepared = prepare(work, grid, isConvolution<job>, direct);
    if (prepared) {
        Correlation<Work> whole = {rank,
                                   work.x,
                                   work.y,
                                   work.z,
                                   grid.xshape,
                                   grid.yshape,
                                   grid.zshape,
                                   grid.dec,
                                   {},
                                   {rank, grid.xshape},
                                   {rank, grid.yshape},
                                   {rank, grid.zshape}};
        for (int d = 0; d < rank; ++d)
            whole.lag[d] = firstLag<job>(grid.start[d], grid.xshape[d]);
        correlate(whole);
        if (!direct) unpack(work.z, grid);
    }
    release(work);
    return prepared ? KesStatusOk : KesStatusCcNoMemory;
}

} // namespace qorkes
