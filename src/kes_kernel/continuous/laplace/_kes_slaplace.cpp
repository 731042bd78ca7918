// _kessRngLaplace: floats of the Laplace distribution.
#include <kes_kernel/continuous/laplace/laplace.hpp>

int _kessRngLaplace(int, StreamState* stream, int n, float* r, float a, float beta) {
    return qorkes::laplaces(stream, n, r, a, beta);
}
