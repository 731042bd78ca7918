// _kesdRngGamma: doubles of the gamma distribution.
#include <kes_kernel/continuous/gamma/gamma.hpp>

int _kesdRngGamma(int, StreamState* stream, int n, double* r, double alpha, double a,
                  double beta) {
    return qorkes::gammas(stream, n, r, alpha, a, beta);
}
