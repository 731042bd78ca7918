// Direct1D: convolution and correlation of lines by sums of products.
//
// A convolution is a correlation with x reversed. Without decimation four outputs are
// summed at a time: first the products that all four have, then for each what lies
// before and behind those. Doubles are summed in extended precision and rounded once.
#pragma once

#include <kes_kernel/conv_corr/float_sums.hpp>
#include <kes_kernel/conv_corr/line.hpp>
#include <kes_kernel/conv_corr/runs.hpp>

namespace qorkes {

/// The type of a sum under way.
template <class Work> using SumOf = std::conditional_t<sizeof(Work) == 8, ext, float>;

/// Of floats, rounded as it is.
QORKES_INLINE void store(float& z, const float& sum) { z = sum; }

QORKES_INLINE void addProducts(ext& sum, const double* x, const double* y, int n) {
    addRun<ExtendedRuns<ext>, 1>(&sum, x, y, 1, n);
}
QORKES_INLINE void addProducts(ext (&sums)[4], const double* x, const double* y,
                               int n) {
    addRun<ExtendedRuns<ext>, 4>(sums, x, y, 1, n);
}

/// Outputs at the lags `lag`, `lag + dec` and so on, one by one.
template <class T>
void correlatePlain(const T* x, int nx, const T* y, int ny, T* z, int nz, int lag,
                    int dec) {
    for (int k = 0; k < nz; ++k) {
        const Overlap part = overlapAt(lag + k * dec, nx, ny);
        SumOf<T> sum = 0;
        if (part.count > 0) addProducts(sum, x + part.atX, y + part.atY, part.count);
        store(z[k], sum);
    }
}

/// Adds what lies before and behind the part from x[first] to x[end - 1].
template <class T>
QORKES_INLINE void finish(SumOf<T> sum, const T* x, int nx, const T* y, int ny, T& z,
                          int lag, int first, int end) {
    const Overlap part = overlapAt(lag, nx, ny);
    addProducts(sum, x + part.atX, y + part.atY, first - part.atX);
    addProducts(sum, x + end, y + end + lag, part.endX() - end);
    store(z, sum);
}

/// Four outputs at neighbouring lags. From one to the next the overlap begins and ends
/// at the same place of x or before that, so the last one ends their common part. False
/// if they have none.
template <class T>
QORKES_INLINE bool correlateTile(const T* x, int nx, const T* y, int ny, T* z,
                                 int lag) {
    const Overlap part = overlapAt(lag, nx, ny);
    const int first = part.atX, end = overlapAt(lag + 3, nx, ny).endX();
    if (first >= end) return false;
    SumOf<T> sums[4] = {};
    addProducts(sums, x + first, y + part.atY, end - first);
    finish(sums[0], x, nx, y, ny, z[0], lag, first, end);
    finish(sums[1], x, nx, y, ny, z[1], lag + 1, first, end);
    finish(sums[2], x, nx, y, ny, z[2], lag + 2, first, end);
    finish(sums[3], x, nx, y, ny, z[3], lag + 3, first, end);
    return true;
}

template <class T>
void correlateByFour(const T* x, int nx, const T* y, int ny, T* z, int nz, int lag) {
    int k = 0;
    for (; k < nz - 3; k += 4)
        if (!correlateTile(x, nx, y, ny, z + k, lag + k))
            correlatePlain(x, nx, y, ny, z + k, 4, lag + k, 1);
    correlatePlain(x, nx, y, ny, z + k, nz - k, lag + k, 1);
}

template <Job job, class Data, class Work> int direct1d(const Line<Data>& line) {
    const int status = check<job>(line);
    if (status != KesStatusOk) return status;
    const bool direct = std::is_same_v<Work, Data> && line.zstride == 1;
    WorkArrays<Work> work;
    const bool prepared = prepare(work, line, isConvolution<job>,
                                  direct ? 0 : static_cast<unsigned>(line.nz));
    if (prepared) {
        const int lag = firstLag<job>(line.start, line.nx);
        if (line.dec == 1)
            correlateByFour(work.x, line.nx, work.y, line.ny, work.z, line.nz, lag);
        else
            correlatePlain(work.x, line.nx, work.y, line.ny, work.z, line.nz, lag,
                           line.dec);
        if (!direct) unpack(work.z, 1, line.z, line.nz, line.zstride);
    }
    release(work);
    return prepared ? KesStatusOk : KesStatusCcNoMemory;
}

} // namespace qorkes
