// _kesConvDDDirect1D_dec: convolution of doubles by direct sums.
#include <kes_kernel/conv_corr/direct_1d.hpp>

using namespace qorkes;

int _kesConvDDDirect1D_dec(const double* x, int xstride, const double* y, int ystride,
                           double* z, int zstride, int xshape, int yshape, int start,
                           int zshape, int decimation) {
    return direct1d<Job::convolution, double, double>({x, xstride, y, ystride, z,
                                                       zstride, xshape, yshape, start,
                                                       zshape, decimation});
}
