// What all kernels share: the two jobs, which places of the full result exist, the
// common part of two lines, and memory for work.
#pragma once

#include <common/ext.hpp>
#include <qorkes/kes.h>

#include <algorithm>
#include <cstdlib>
#include <type_traits>

namespace qorkes {

enum class Job { convolution, correlation };

template <Job job> constexpr bool isConvolution = job == Job::convolution;

/// Whether z lies in the full result, in one dimension.
template <Job job> int checkPlaces(int nx, int ny, int nz, int start, int dec) {
    const int64_t first = isConvolution<job> ? 0 : int64_t{1} - nx;
    const int64_t last = first + nx + ny - 2;
    if (start < first || start > last) return KesStatusCcBadStart;
    if (dec < 1 || start + (int64_t{nz} - 1) * dec > last)
        return KesStatusCcBadDecimation;
    return KesStatusOk;
}

/// The lag of the first output. A convolution is a correlation with x reversed.
template <Job job> int firstLag(int start, int nx) {
    return isConvolution<job> ? start - nx + 1 : start;
}

/// Where x[i] and y[i + lag] both exist: from x[atX] and y[atY] on, `count` times.
struct Overlap {
    int atX, atY, count; // count below 1: nowhere

    int endX() const { return atX + count; }
};

QORKES_INLINE Overlap overlapAt(int lag, int nx, int ny) {
    const int first = std::max(0, -lag);
    return {first, first + lag, std::min(nx, ny - lag) - first};
}

/// Null also for more than there can be.
template <class T> T* allocate(uint64_t count) {
    return count > PTRDIFF_MAX / sizeof(T)
               ? nullptr
               : static_cast<T*>(std::malloc(static_cast<size_t>(count) * sizeof(T)));
}

/// What the arithmetic works on: the caller's arrays or dense copies of them.
template <class Work> struct WorkArrays {
    const Work *x, *y;
    Work* z;
    Work* copies[3];
    int count;

    /// A new array, or null.
    Work* add(uint64_t elements) { return copies[count++] = allocate<Work>(elements); }
};

/// Z is the caller's array or, of a count above 0, one of `count` elements. False
/// without memory.
template <class Work, class Data>
bool takeZ(WorkArrays<Work>& work, Data* z, uint64_t count) {
    if constexpr (std::is_same_v<Work, Data>)
        if (count == 0) {
            work.z = z;
            return true;
        }
    work.z = work.add(count);
    return work.z != nullptr;
}

template <class Work> void release(const WorkArrays<Work>& work) {
    for (Work* copy : work.copies) std::free(copy);
}

/// The same number in the other precision.
QORKES_INLINE void assign(double& to, const double& from) { to = from; }
QORKES_INLINE void assign(double& to, const float& from) { to = round64(ext{from}); }
QORKES_INLINE void assign(float& to, const float& from) { to = from; }
QORKES_INLINE void assign(float& to, const double& from) { to = round32(ext{from}); }

} // namespace qorkes
