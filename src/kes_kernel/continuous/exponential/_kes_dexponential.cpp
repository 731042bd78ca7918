// _kesdRngExponential: doubles of the exponential distribution.
#include <kes_kernel/continuous/exponential/exponential.hpp>

int _kesdRngExponential(int, StreamState* stream, int n, double* r, double a,
                        double beta) {
    return qorkes::exponentials(stream, n, r, a, beta);
}
