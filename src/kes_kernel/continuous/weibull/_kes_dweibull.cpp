// _kesdRngWeibull: doubles of the Weibull distribution.
#include <kes_kernel/continuous/weibull/weibull.hpp>

int _kesdRngWeibull(int, StreamState* stream, int n, double* r, double alpha, double a,
                    double beta) {
    return qorkes::weibulls(stream, n, r, alpha, a, beta);
}
