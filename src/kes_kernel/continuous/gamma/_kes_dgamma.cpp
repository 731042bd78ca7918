// _kesdRngGamma: gamma variates in double precision.
#include "gamma.hpp"

int _kesdRngGamma(int, StreamState* stream, int n, double* r, double alpha, double a,
                  double beta) {
    return qorkes::gammaVariates(stream, n, r, alpha, a, beta);
}
