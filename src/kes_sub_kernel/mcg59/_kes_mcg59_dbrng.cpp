// __kesdBRngMCG59: doubles, each rounded once.
#include <kes_sub_kernel/mcg59/mcg59.hpp>

int __kesdBRngMCG59(StreamState* stream, int n, double* r, double a, double b) {
    return qorkes::drawReals(stream, n, r, a, b);
}
