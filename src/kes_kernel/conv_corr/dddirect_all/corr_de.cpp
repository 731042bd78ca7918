// _kesCorrDDDirectAll_dec: correlation of doubles in several dimensions, by direct
// sums.
#include <kes_kernel/conv_corr/direct_all.hpp>

using namespace qorkes;

int _kesCorrDDDirectAll_dec(int rank, const double* x, const int* xshape,
                            const int* xstride, const double* y, const int* yshape,
                            const int* ystride, double* z, const int* zshape,
                            const int* zstride, const int* start,
                            const int* decimation) {
    return directAll<Job::correlation, double, double>({rank, x, xshape, xstride, y,
                                                        yshape, ystride, z, zshape,
                                                        zstride, start, decimation});
}
