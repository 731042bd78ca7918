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

/// Where the runs of a box begin: this place of dimension 0, `count` lines of each
/// plane.
struct Lines {
    Overlap run;
    int atX, atY, count;
};

/// body(x, y, i) for every run, i being that of its line.
template <class T, class Body>
QORKES_INLINE void forEachRun(const Plane<T>& plane, const Lines& lines, Body body) {
    if (lines.count < 1) return;
    const Correlation<T>& whole = *plane.whole;
    const ptrdiff_t xstep = whole.xstride.stride[1], ystep = whole.ystride.stride[1];
    const T* x = plane.x + lines.run.atX + lines.atX * xstep;
    const T* y = plane.y + lines.run.atY + lines.atY * ystep;
    int index[KesTaskMaxRank];
    for (int d = 2; d < whole.rank; ++d) index[d] = 0;
    for (int d = 0; d < whole.rank;) {
        const T *xrun = x, *yrun = y;
        for (int i = 0; i < lines.count; ++i) {
            body(xrun, yrun, i);
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

/// One or four outputs that are neighbours in dimension 1, with their lines. From one
/// to the next these begin and end at the same place of x or before that.
struct Rows {
    int count;
    Overlap lines[4];

    int first() const { return lines[count - 1].atX; }
    int firstCommon() const { return lines[0].atX; }
    int endOfCommon() const { return lines[count - 1].endX(); }
    int end() const { return lines[0].endX(); }
};

// The compiler is told to inline the bodies: it would pass what they refer to by way of
// memory, which costs more than a short run.
#define QORKES_BODY __attribute__((always_inline))

/// The lines of one output.
template <class Runs, class T>
QORKES_NOINLINE void addAlone(const Plane<T>& plane, const Overlap& run,
                              const Overlap& lines, typename Runs::Sum& sum) {
    forEachRun(plane, {run, lines.atX, lines.atY, lines.count},
               [&](const T* x, const T* y, int)
                   QORKES_BODY { addRun<Runs, 1>(&sum, x, y, 0, run.count); });
}

/// The lines that four outputs have in common.
template <class Runs, class T>
QORKES_INLINE void addTogether(const Plane<T>& plane, const Overlap& run,
                               const Rows& rows, typename Runs::Sum (&sums)[4]) {
    const ptrdiff_t step = plane.whole->ystride.stride[1];
    const int first = rows.firstCommon();
    forEachRun(plane, {run, first, rows.lines[0].atY, rows.endOfCommon() - first},
               [&](const T* x, const T* y, int)
                   QORKES_BODY { addRun<Runs, 4>(sums, x, y, step, run.count); });
}

/// A run of up to three outputs.
template <class Runs, class T>
QORKES_INLINE void addSome(int outputs, typename Runs::Sum* sums, const T* x,
                           const T* y, ptrdiff_t step, int n) {
    if (outputs == 1)
        addRun<Runs, 1>(sums, x, y, step, n);
    else if (outputs == 2)
        addRun<Runs, 2>(sums, x, y, step, n);
    else
        addRun<Runs, 3>(sums, x, y, step, n);
}

/// The lines before the common ones, which the first output lacks and the last one has,
/// and those behind, which the last one lacks and the first one has.
template <class Runs, class T>
QORKES_INLINE void addEnds(const Plane<T>& plane, const Overlap& run, const Rows& rows,
                           typename Runs::Sum (&sums)[4]) {
    const ptrdiff_t step = plane.whole->ystride.stride[1];
    const int first = rows.first(), end = rows.endOfCommon();
    forEachRun(plane, {run, first, rows.lines[3].atY, rows.firstCommon() - first},
               [&](const T* x, const T* y, int i) QORKES_BODY {
                   int j = 3;
                   while (rows.lines[j - 1].atX <= first + i) --j;
                   addSome<Runs>(4 - j, sums + j, x, y + (j - 3) * step, step,
                                 run.count);
               });
    const int atY = rows.lines[0].atY + end - rows.firstCommon();
    forEachRun(plane, {run, end, atY, rows.end() - end},
               [&](const T* x, const T* y, int i) QORKES_BODY {
                   int j = 1;
                   while (rows.lines[j].endX() > end + i) ++j;
                   addSome<Runs>(j, sums, x, y, step, run.count);
               });
}

#undef QORKES_BODY

/// One output of each row, or as many as a Sum of Runs has.
template <class Runs, class T>
QORKES_INLINE void sumOutputs(const Plane<T>& plane, const Rows& rows,
                              const Overlap& run, T* z) {
    typename Runs::Sum sums[4];
    for (auto& sum : sums) sum = Runs::zero();
    if (rows.count == 1 || rows.firstCommon() >= rows.endOfCommon()) {
        for (int j = 0; j < rows.count; ++j)
            addAlone<Runs>(plane, run, rows.lines[j], sums[j]);
    } else {
        addTogether<Runs>(plane, run, rows, sums);
        addEnds<Runs>(plane, run, rows, sums);
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
            sumOutputs<FloatRuns<Lanes::alongY>>(plane, rows, run, z);
            return 4;
        }
        if (last.count == run.count && last.atY == run.atY) {
            sumOutputs<FloatRuns<Lanes::alongX>>(plane, rows, last, z);
            return 4;
        }
    }
    sumOutputs<FloatRuns<Lanes::one>>(plane, rows, run, z);
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
    const ptrdiff_t planeSize = ptrdiff_t{whole.zshape[0]} * whole.zshape[1];
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
    const bool prepared = prepare(work, grid, isConvolution<job>,
                                  direct ? 0 : elementsOf(rank, grid.zshape));
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
