// _kesdRngGumbel: doubles of the Gumbel distribution.
#include <kes_kernel/continuous/gumbel/gumbel.hpp>

int _kesdRngGumbel(int, StreamState* stream, int n, double* r, double a, double beta) {
    return qorkes::gumbels<_kesdRngExponential>(stream, n, r, a, beta);
}
