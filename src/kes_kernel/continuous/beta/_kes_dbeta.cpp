// _kesdRngBeta: beta variates in double precision.
#include "beta.hpp"

int _kesdRngBeta(int, StreamState* stream, int n, double* r, double p, double q,
                 double a, double beta) {
    return qorkes::betaVariates(stream, n, r, p, q, a, beta);
}
