// Fft1D: convolution and correlation of lines by the convolution primitive, which sums
// or transforms as the lengths advise. It gives the full result; the outputs asked for
// are picked from that. A correlation is a convolution with x reversed.
#pragma once

#include <kes_kernel/conv_corr/line.hpp>
#include <qorkes/zubs.h>

namespace qorkes {

QORKES_INLINE int convolve(const double* x, int nx, const double* y, int ny,
                           double* z) {
    return zubsConv_64f(x, nx, y, ny, z);
}
QORKES_INLINE int convolve(const float* x, int nx, const float* y, int ny, float* z) {
    return zubsConv_32f(x, nx, y, ny, z);
}

template <Job job, class Data, class Work> int fft1d(const Line<Data>& line) {
    int status = check<job>(line);
    if (status != KesStatusOk) return status;
    const int64_t full = int64_t{line.nx} + line.ny - 1;
    const bool direct =
        std::is_same_v<Work, Data> && line.zstride == 1 && line.nz == full;
    WorkArrays<Work> work;
    if (!prepare(work, line, !isConvolution<job>,
                 direct ? 0 : static_cast<uint64_t>(full))) {
        status = KesStatusCcNoMemory;
    } else if (convolve(work.x, line.nx, work.y, line.ny, work.z) != ZubStatusOk) {
        status = KesStatusCcFftFailed;
    } else if (!direct) {
        const int first = isConvolution<job> ? line.start : line.nx + line.start - 1;
        unpack(work.z + first, line.dec, line.z, line.nz, line.zstride);
    }
    release(work);
    return status;
}

} // namespace qorkes
