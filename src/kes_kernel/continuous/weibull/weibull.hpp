// Weibull variates, a + beta (-ln(u))^(1/alpha): the inverse of their distribution
// function.
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

template <class T>
QORKES_INLINE int weibulls(StreamState* stream, int n, T* r, T alpha, T a, T beta) {
    const int status = uniforms(stream, n, r);
    if (failed(status)) return status;
    logarithm(n, r, r);
    negate(n, r);
    power(n, r, rounded<T>(1.0L / alpha), r);
    scale(n, r, beta, a);
    return status;
}

} // namespace qorkes
