// _kessRngRayleigh: floats of the Rayleigh distribution.
#include <kes_kernel/continuous/rayleigh/rayleigh.hpp>

int _kessRngRayleigh(int, StreamState* stream, int n, float* r, float a, float beta) {
    return qorkes::rayleighs(stream, n, r, a, beta);
}
