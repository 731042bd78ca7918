// _kesdRngCauchy: doubles of the Cauchy distribution.
#include <kes_kernel/continuous/cauchy/cauchy.hpp>

int _kesdRngCauchy(int, StreamState* stream, int n, double* r, double a, double beta) {
    return qorkes::cauchys(stream, n, r, a, beta, qorkes::_kesdCauchyTab);
}
