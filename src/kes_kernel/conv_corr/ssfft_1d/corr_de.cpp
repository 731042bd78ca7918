// _kesCorrSSFft1D_dec: correlation of floats by FFT.
#include <kes_kernel/conv_corr/fft_1d.hpp>

using namespace qorkes;

int _kesCorrSSFft1D_dec(const float* x, int xstride, const float* y, int ystride,
                        float* z, int zstride, int xshape, int yshape, int start,
                        int zshape, int decimation) {
    return fft1d<Job::correlation, float, float>({x, xstride, y, ystride, z, zstride,
                                                  xshape, yshape, start, zshape,
                                                  decimation});
}
