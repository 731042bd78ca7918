// _kesdRngGaussian: doubles of the normal distribution.
#include <kes_kernel/continuous/gaussian/gaussian.hpp>

int _kesdRngGaussian(int method, StreamState* stream, int n, double* r, double a,
                     double sigma) {
    return qorkes::gaussians(method, stream, n, r, a, sigma);
}
