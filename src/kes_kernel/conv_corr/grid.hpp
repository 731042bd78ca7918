// Kernels of several dimensions: their arguments, the tests of these, and dense copies.
#pragma once

#include <kes_kernel/conv_corr/places.hpp>

namespace qorkes {

/// The arguments of a kernel, in their order.
template <class Data> struct Grid {
    int rank;
    const Data* x;
    const int *xshape, *xstride;
    const Data* y;
    const int *yshape, *ystride;
    Data* z;
    const int *zshape, *zstride, *start, *dec;
};

template <Job job, class Data> int check(const Grid<Data>& grid) {
    if (!grid.x) return KesStatusCcNullX;
    if (!grid.y) return KesStatusCcNullY;
    if (!grid.z) return KesStatusCcNullZ;
    for (int d = 0; d < grid.rank; ++d) {
        const int nx = grid.xshape[d], ny = grid.yshape[d], nz = grid.zshape[d];
        if (nx < 1) return KesStatusCcBadXShape;
        if (ny < 1) return KesStatusCcBadYShape;
        if (nz < 1) return KesStatusCcBadZShape;
        if (grid.zstride[d] == 0) return KesStatusCcBadZStride;
        const int status = checkPlaces<job>(nx, ny, nz, grid.start[d], grid.dec[d]);
        if (status != KesStatusOk) return status;
    }
    return KesStatusOk;
}

/// Elements of a dense array; too many count as the largest number.
inline uint64_t elementsOf(int rank, const int* shape) {
    uint64_t count = 1;
    for (int d = 0; d < rank; ++d)
        if (__builtin_mul_overflow(count, static_cast<unsigned>(shape[d]), &count))
            return UINT64_MAX;
    return count;
}

struct DenseStrides {
    ptrdiff_t stride[KesTaskMaxRank];

    DenseStrides(int rank, const int* shape) {
        stride[0] = 1;
        for (int d = 1; d < rank; ++d)
            stride[d] = static_cast<ptrdiff_t>(static_cast<size_t>(stride[d - 1]) *
                                               static_cast<size_t>(shape[d - 1]));
    }
};

/// Dimension 0 is not looked at.
inline bool isDense(int rank, const int* shape, const int* stride) {
    const DenseStrides dense(rank, shape);
    for (int d = 1; d < rank; ++d)
        if (stride[d] != dense.stride[d]) return false;
    return true;
}

/// body(offset) for every element of an array in dense order, element zero first.
template <class Body>
void forEachElement(int rank, const int* shape, const int* stride, Body body) {
    ptrdiff_t line = 0;
    for (int d = 0; d < rank; ++d)
        if (stride[d] < 0) line += ptrdiff_t{1 - shape[d]} * stride[d];
    int index[KesTaskMaxRank] = {};
    for (int d = 0; d < rank;) {
        for (ptrdiff_t i = 0; i < shape[0]; ++i) body(line + i * stride[0]);
        for (d = 1; d < rank; ++d) {
            line += stride[d];
            if (++index[d] < shape[d]) break;
            line -= ptrdiff_t{shape[d]} * stride[d];
            index[d] = 0;
        }
    }
}

/// The array itself if it serves as it is, a dense copy otherwise, reversed in all
/// dimensions if that is wanted; null without memory.
template <class Work, class Data>
const Work* dense(WorkArrays<Work>& work, int rank, const Data* array, const int* shape,
                  const int* stride, bool reversed) {
    if constexpr (std::is_same_v<Work, Data>)
        if (!reversed && isDense(rank, shape, stride)) return array;
    const uint64_t count = elementsOf(rank, shape);
    Work* const copy = work.add(count);
    if (!copy) return nullptr;
    Work* to = reversed ? copy + count - 1 : copy;
    const ptrdiff_t step = reversed ? -1 : 1;
    forEachElement(rank, shape, stride, [&](ptrdiff_t offset) {
        assign(*to, array[offset]);
        to += step;
    });
    return copy;
}

/// Fills `work`, with z as takeZ has it. False without memory. What was allocated is
/// for release() in either case.
template <class Work, class Data>
bool prepare(WorkArrays<Work>& work, const Grid<Data>& grid, bool reversed,
             uint64_t nz) {
    const int rank = grid.rank;
    work = {};
    work.x = dense(work, rank, grid.x, grid.xshape, grid.xstride, reversed);
    if (!work.x) return false;
    work.y = dense(work, rank, grid.y, grid.yshape, grid.ystride, false);
    if (!work.y) return false;
    return takeZ(work, grid.z, nz);
}

template <class Work, class Data> void unpack(const Work* dense, const Grid<Data>& g) {
    forEachElement(g.rank, g.zshape, g.zstride,
                   [&](ptrdiff_t offset) { assign(g.z[offset], *dense++); });
}

} // namespace qorkes
