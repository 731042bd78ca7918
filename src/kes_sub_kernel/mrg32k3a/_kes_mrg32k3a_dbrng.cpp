// __kesdBRngMRG32K3A: doubles, each rounded once; the scale (b - a) / m1 is rounded to
// double once a call.
#include <kes_sub_kernel/mrg32k3a/mrg32k3a.hpp>
#include <kes_sub_kernel/reals.hpp>

using namespace qorkes;

static_assert(hasPattern(stepOfMrg32k3a, 0x3DF000000D10000B));

int __kesdBRngMRG32K3A(StreamState* stream, int n, double* r, double a, double b) {
    const ext scale = round64(rangeScale(a, b, stepOfMrg32k3a));
    return drawScaled<__kesiBRngMRG32K3A>(stream, n, r, scale, a);
}
