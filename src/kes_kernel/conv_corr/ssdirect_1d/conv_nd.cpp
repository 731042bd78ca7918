// _kesConvSSDirect1D_nodec: convolution of floats by direct sums, without decimation.
#include <qorkes/kes.h>

int _kesConvSSDirect1D_nodec(const float* x, int xstride, const float* y, int ystride,
                             float* z, int zstride, int xshape, int yshape, int start,
                             int zshape) {
    return _kesConvSSDirect1D_dec(x, xstride, y, ystride, z, zstride, xshape, yshape,
                                  start, zshape, 1);
}
