// _kessRngLognormal: floats of the lognormal distribution.
#include <kes_kernel/continuous/lognormal/lognormal.hpp>

int _kessRngLognormal(int, StreamState* stream, int n, float* r, float a, float sigma,
                      float b, float beta) {
    return qorkes::lognormals<_kessRngGaussian>(stream, n, r, a, sigma, b, beta);
}
