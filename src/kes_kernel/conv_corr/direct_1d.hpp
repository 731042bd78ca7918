// Direct1D: convolution and correlation of lines by sums of products.
//
// A convolution is a correlation with x reversed. Without decimation four outputs are
// summed at a time: first the products that all four have, then for each what lies
// before and behind those. Doubles are summed in extended precision and rounded once.
#pragma once

#include <kes_kernel/conv_corr/float_sums.hpp>
#include <kes_kernel/conv_corr/line.hpp>
#include <kes_kernel/conv_corr/sums.hpp>

namespace qorkes {

/// The type of a sum under way, and its end.
template <class Work> using SumOf = std::conditional_t<sizeof(Work) == 8, ext, float>;

QORKES_INLINE void store(double& z, const ext& sum) { z = round64(sum); }
QORKES_INLINE void store(float& z, const float& sum) { z = sum; }

QORKES_INLINE void addProducts(ext (&sums)[4], const double* x, const double* y,
                               int n) {
    addProducts(sums, x, y, 1, n);
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

/// Four outputs at neighbouring lags. Their overlaps begin earlier in x from one to the
/// next, or where they did, and end likewise. False if all four have nothing in common.
template <class T>
QORKES_INLINE bool correlateTile(const T* x, int nx, const T* y, int ny, T* z,
                                 int lag) {
    Overlap part[4];
    for (int j = 0; j < 4; ++j) part[j] = overlapAt(lag + j, nx, ny);
    const int first = part[0].atX, end = part[3].endX();
    if (first >= end) return false;
    SumOf<T> sums[4] = {};
    addProducts(sums, x + first, y + part[0].atY, end - first);
    for (int j = 0; j < 4; ++j)
        if (part[j].atX < first)
            addProducts(sums[j], x + part[j].atX, y + part[j].atY, first - part[j].atX);
    for (int j = 0; j < 4; ++j)
        if (end < part[j].endX())
            addProducts(sums[j], x + end, y + end + lag + j, part[j].endX() - end);
    for (int j = 0; j < 4; ++j) store(z[j], sums[j]);
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
