// _kessRngBeta: floats of the beta distribution.
#include <kes_kernel/continuous/beta/beta.hpp>

int _kessRngBeta(int, StreamState* stream, int n, float* r, float p, float q, float a,
                 float beta) {
    return qorkes::betas(stream, n, r, p, q, a, beta);
}
