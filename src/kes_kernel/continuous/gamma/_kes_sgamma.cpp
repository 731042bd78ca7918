// _kessRngGamma: floats of the gamma distribution.
#include <kes_kernel/continuous/gamma/gamma.hpp>

int _kessRngGamma(int, StreamState* stream, int n, float* r, float alpha, float a,
                  float beta) {
    return qorkes::gammas(stream, n, r, alpha, a, beta);
}
