// __kesdBRngSobol: doubles, each rounded once; the scale (b - a) / 2^32 stays extended.
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kesdBRngSobol(StreamState* stream, int n, double* r, double a, double b) {
    return drawScaled<__kesiBRngSobol>(stream, n, r, rangeScale(a, b, stepOfWords), a);
}
