// _kessRngCauchy: floats of the Cauchy distribution.
#include <kes_kernel/continuous/cauchy/cauchy.hpp>

int _kessRngCauchy(int, StreamState* stream, int n, float* r, float a, float beta) {
    return qorkes::cauchys(stream, n, r, a, beta, qorkes::_kessCauchyTab);
}
