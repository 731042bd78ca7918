// __kesdBRngMT2203: doubles, each rounded once; the scale (b - a) / 2^32 is rounded to
// double once a call.
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kesdBRngMT2203(StreamState* stream, int n, double* r, double a, double b) {
    const ext scale = round64(rangeScale(a, b, stepOfWords));
    return drawScaled<__kesiBRngMT2203>(stream, n, r, scale, a);
}
