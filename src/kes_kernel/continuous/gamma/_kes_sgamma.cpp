// _kessRngGamma: gamma variates in single precision.
#include "gamma.hpp"

int _kessRngGamma(int, StreamState* stream, int n, float* r, float alpha, float a,
                  float beta) {
    return qorkes::gammaVariates(stream, n, r, alpha, a, beta);
}
