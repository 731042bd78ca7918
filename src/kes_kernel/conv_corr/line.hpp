// Kernels of one dimension: their arguments, the tests of these, and dense copies.
#pragma once

#include <kes_kernel/conv_corr/places.hpp>

namespace qorkes {

/// The arguments of a kernel, in their order.
template <class Data> struct Line {
    const Data* x;
    int xstride;
    const Data* y;
    int ystride;
    Data* z;
    int zstride;
    int nx, ny, start, nz, dec;
};

template <Job job, class Data> int check(const Line<Data>& line) {
    if (!line.x) return KesStatusCcNullX;
    if (line.nx < 1) return KesStatusCcBadXShape;
    if (!line.y) return KesStatusCcNullY;
    if (line.ny < 1) return KesStatusCcBadYShape;
    if (!line.z) return KesStatusCcNullZ;
    if (line.nz < 1) return KesStatusCcBadZShape;
    if (line.zstride == 0) return KesStatusCcBadZStride;
    return checkPlaces<job>(line.nx, line.ny, line.nz, line.start, line.dec);
}

/// Element 0 of an array: behind all others if the stride is negative.
template <class T> T* elementZero(T* array, int n, int stride) {
    return stride < 0 ? array + ptrdiff_t{1 - n} * stride : array;
}

template <class Work, class Data>
void pack(Work* dense, const Data* array, int n, int stride, bool reversed) {
    const Data* const element = elementZero(array, n, stride);
    const ptrdiff_t first = reversed ? n - 1 : 0, step = reversed ? -1 : 1;
    for (ptrdiff_t i = 0; i < n; ++i)
        assign(dense[first + i * step], element[i * stride]);
}

/// Every step-th number from `dense` on goes to the n elements of an array.
template <class Work, class Data>
void unpack(const Work* dense, ptrdiff_t step, Data* array, int n, int stride) {
    Data* const element = elementZero(array, n, stride);
    for (ptrdiff_t i = 0; i < n; ++i) assign(element[i * stride], dense[i * step]);
}

/// The array itself if it serves as it is, a dense copy otherwise, null without memory.
template <class Work, class Data>
const Work* dense(WorkArrays<Work>& work, const Data* array, int n, int stride,
                  bool reversed) {
    if constexpr (std::is_same_v<Work, Data>)
        if (stride == 1 && !reversed) return array;
    Work* const copy = work.add(static_cast<unsigned>(n));
    if (copy) pack(copy, array, n, stride, reversed);
    return copy;
}

/// Fills `work`, with z as takeZ has it. False without memory. What was allocated is
/// for release() in either case.
template <class Work, class Data>
bool prepare(WorkArrays<Work>& work, const Line<Data>& line, bool reversed,
             uint64_t nz) {
    work = {};
    work.x = dense(work, line.x, line.nx, line.xstride, reversed);
    if (!work.x) return false;
    work.y = dense(work, line.y, line.ny, line.ystride, false);
    if (!work.y) return false;
    return takeZ(work, line.z, nz);
}

} // namespace qorkes
