// _kessRngGaussian: floats of the normal distribution.
#include <kes_kernel/continuous/gaussian/gaussian.hpp>

int _kessRngGaussian(int method, StreamState* stream, int n, float* r, float a,
                     float sigma) {
    return qorkes::gaussians(method, stream, n, r, a, sigma);
}
