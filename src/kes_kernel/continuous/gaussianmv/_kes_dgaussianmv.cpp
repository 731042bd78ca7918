// _kesdRngGaussianMV: vectors of doubles of the normal distribution.
#include <kes_kernel/continuous/gaussianmv/gaussianmv.hpp>

int _kesdRngGaussianMV(int method, StreamState* stream, int n, double* r, int dimen,
                       int mstorage, const double* a, const double* t) {
    return qorkes::gaussianVectors<_kesdRngGaussian>(method, stream, n, r, dimen,
                                                     mstorage, a, t);
}
