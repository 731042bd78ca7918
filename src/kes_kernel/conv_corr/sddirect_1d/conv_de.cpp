// _kesConvSDDirect1D_dec: convolution of floats with double arithmetic by direct sums.
#include <kes_kernel/conv_corr/direct_1d.hpp>

using namespace qorkes;

int _kesConvSDDirect1D_dec(const float* x, int xstride, const float* y, int ystride,
                           float* z, int zstride, int xshape, int yshape, int start,
                           int zshape, int decimation) {
    return direct1d<Job::convolution, float, double>({x, xstride, y, ystride, z,
                                                      zstride, xshape, yshape, start,
                                                      zshape, decimation});
}
