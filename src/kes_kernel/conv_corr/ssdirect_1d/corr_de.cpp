// _kesCorrSSDirect1D_dec: correlation of floats by direct sums.
#include <kes_kernel/conv_corr/direct_1d.hpp>

using namespace qorkes;

int _kesCorrSSDirect1D_dec(const float* x, int xstride, const float* y, int ystride,
                           float* z, int zstride, int xshape, int yshape, int start,
                           int zshape, int decimation) {
    return direct1d<Job::correlation, float, float>({x, xstride, y, ystride, z, zstride,
                                                     xshape, yshape, start, zshape,
                                                     decimation});
}
