// __kessBRngNiederr: floats, each rounded once; the scale (b - a) / 2^32 stays
// extended.
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kessBRngNiederr(StreamState* stream, int n, float* r, float a, float b) {
    return drawScaled<__kesiBRngNiederr>(stream, n, r, rangeScale(a, b, stepOfWords),
                                         a);
}
