// _kessRngWeibull: floats of the Weibull distribution.
#include <kes_kernel/continuous/weibull/weibull.hpp>

int _kessRngWeibull(int, StreamState* stream, int n, float* r, float alpha, float a,
                    float beta) {
    return qorkes::weibulls(stream, n, r, alpha, a, beta);
}
