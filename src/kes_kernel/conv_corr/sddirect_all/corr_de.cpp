// _kesCorrSDDirectAll_dec: correlation of floats with double arithmetic in several
// dimensions, by direct sums.
#include <kes_kernel/conv_corr/direct_all.hpp>

using namespace qorkes;

int _kesCorrSDDirectAll_dec(int rank, const float* x, const int* xshape,
                            const int* xstride, const float* y, const int* yshape,
                            const int* ystride, float* z, const int* zshape,
                            const int* zstride, const int* start,
                            const int* decimation) {
    return directAll<Job::correlation, float, double>({rank, x, xshape, xstride, y,
                                                       yshape, ystride, z, zshape,
                                                       zstride, start, decimation});
}
