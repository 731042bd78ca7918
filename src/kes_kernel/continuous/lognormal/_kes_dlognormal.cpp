// _kesdRngLognormal: doubles of the lognormal distribution.
#include <kes_kernel/continuous/lognormal/lognormal.hpp>

int _kesdRngLognormal(int, StreamState* stream, int n, double* r, double a,
                      double sigma, double b, double beta) {
    return qorkes::lognormals<_kesdRngGaussian>(stream, n, r, a, sigma, b, beta);
}
