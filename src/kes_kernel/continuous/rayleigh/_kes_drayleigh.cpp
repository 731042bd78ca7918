// _kesdRngRayleigh: doubles of the Rayleigh distribution.
#include <kes_kernel/continuous/rayleigh/rayleigh.hpp>

int _kesdRngRayleigh(int, StreamState* stream, int n, double* r, double a,
                     double beta) {
    return qorkes::rayleighs(stream, n, r, a, beta);
}
