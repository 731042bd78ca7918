// _kesdRngBeta: doubles of the beta distribution.
#include <kes_kernel/continuous/beta/beta.hpp>

int _kesdRngBeta(int, StreamState* stream, int n, double* r, double p, double q,
                 double a, double beta) {
    return qorkes::betas(stream, n, r, p, q, a, beta);
}
