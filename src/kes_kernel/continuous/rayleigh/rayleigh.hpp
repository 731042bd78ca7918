// Rayleigh variates, a + beta sqrt(-ln(u)): the inverse of their distribution function.
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

template <class T>
QORKES_INLINE int rayleighs(StreamState* stream, int n, T* r, T a, T beta) {
    const int status = uniforms(stream, n, r);
    if (failed(status)) return status;
    logarithm(n, r, r);
    negate(n, r);
    squareRoot(n, r, r);
    scale(n, r, beta, a);
    return status;
}

} // namespace qorkes
