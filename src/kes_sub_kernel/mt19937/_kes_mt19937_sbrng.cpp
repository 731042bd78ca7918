// __kessBRngMT19937: floats, each rounded once; the scale (b - a) / 2^32 is rounded to
// double once a call.
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

int __kessBRngMT19937(StreamState* stream, int n, float* r, float a, float b) {
    const ext scale = round64(rangeScale(a, b, stepOfWords));
    return drawScaled<__kesiBRngMT19937>(stream, n, r, scale, a);
}
