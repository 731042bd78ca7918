// _kessRngExponential: floats of the exponential distribution.
#include <kes_kernel/continuous/exponential/exponential.hpp>

int _kessRngExponential(int, StreamState* stream, int n, float* r, float a,
                        float beta) {
    return qorkes::exponentials(stream, n, r, a, beta);
}
