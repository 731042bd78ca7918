// _kessRngGaussianMV: vectors of floats of the normal distribution.
#include <kes_kernel/continuous/gaussianmv/gaussianmv.hpp>

int _kessRngGaussianMV(int method, StreamState* stream, int n, float* r, int dimen,
                       int mstorage, const float* a, const float* t) {
    return qorkes::gaussianVectors<_kessRngGaussian>(method, stream, n, r, dimen,
                                                     mstorage, a, t);
}
