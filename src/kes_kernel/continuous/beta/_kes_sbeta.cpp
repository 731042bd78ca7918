// _kessRngBeta: beta variates in single precision.
#include "beta.hpp"

int _kessRngBeta(int, StreamState* stream, int n, float* r, float p, float q, float a,
                 float beta) {
    return qorkes::betaVariates(stream, n, r, p, q, a, beta);
}
