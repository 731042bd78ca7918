// _kessRngGumbel: floats of the Gumbel distribution.
#include <kes_kernel/continuous/gumbel/gumbel.hpp>

int _kessRngGumbel(int, StreamState* stream, int n, float* r, float a, float beta) {
    return qorkes::gumbels<_kessRngExponential>(stream, n, r, a, beta);
}
