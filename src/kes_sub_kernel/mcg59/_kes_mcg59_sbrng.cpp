// __kessBRngMCG59: floats, each rounded once.
#include <kes_sub_kernel/mcg59/mcg59.hpp>

int __kessBRngMCG59(StreamState* stream, int n, float* r, float a, float b) {
    return qorkes::drawReals(stream, n, r, a, b);
}
