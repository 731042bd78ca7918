// _kesdRngLaplace: doubles of the Laplace distribution.
#include <kes_kernel/continuous/laplace/laplace.hpp>

int _kesdRngLaplace(int, StreamState* stream, int n, double* r, double a, double beta) {
    return qorkes::laplaces(stream, n, r, a, beta);
}
