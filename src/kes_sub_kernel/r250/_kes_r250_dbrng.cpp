// __kesdBRngR250: doubles, each rounded once; the scale (b - a) / 2^32 stays extended.
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kesdBRngR250(StreamState* stream, int n, double* r, double a, double b) {
    return drawScaled<__kesiBRngR250>(stream, n, r, rangeScale(a, b, stepOfWords), a);
}
