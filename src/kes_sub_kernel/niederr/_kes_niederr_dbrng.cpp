// __kesdBRngNiederr: doubles, each rounded once; the scale (b - a) / 2^32 stays
// extended.
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kesdBRngNiederr(StreamState* stream, int n, double* r, double a, double b) {
    return drawScaled<__kesiBRngNiederr>(stream, n, r, rangeScale(a, b, stepOfWords),
                                         a);
}
